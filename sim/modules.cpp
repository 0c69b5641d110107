#include "sim/modules.h"

#include "channel/frames.h"

#include <algorithm>
#include <stdexcept>
#include <string>
#include <utility>

namespace tamrix::sim {

namespace {

constexpr std::uint8_t reset_command = 4, signal_command = 6, load_command = 92, start_command = 236;
/// Byte 1 of module reset and start, byte 4 of a bulk frame between unit and module.
constexpr std::uint8_t module_mark = 170;
constexpr std::uint8_t image_block_number = 16, image_mark = 3, load_ready = 170, fpga_started = 0x55, first_tag = 91;
constexpr std::size_t load_step_bytes = 5, signal_bytes = 9, most_staged_bytes = 32768;

std::uint8_t byte_at(std::span<const std::uint8_t> frame, std::size_t index)
{
    return index < frame.size() ? frame[index] : std::uint8_t{0};
}

}  // namespace

bool modules::belong_to(int model) { return model == 39 || model == 52 || model == 54; }

modules::modules(int model, fault_set& faults, journal& log, memory& ram_of_unit, reply_pipe& replies)
    : log_{log}, ram_of_unit_{ram_of_unit}, replies_{replies}
{
    for (int number = 1; belong_to(model) && number <= count; ++number)
        all_.push_back(std::make_unique<module>(number, model, faults, log));
}

module* modules::at(int slot)
{
    return slot < 1 || slot > static_cast<int>(all_.size()) ? nullptr : all_[static_cast<std::size_t>(slot - 1)].get();
}

void modules::close()
{
    passages_.clear();
    staging_ = false;
    staged_.clear();
}

void modules::reset()
{
    for (const auto& one : all_) one->power_up();
    named_ = 0;
    announced_.reset();
    close();
}

void modules::begin_frame(std::uint8_t command)
{
    if (command != load_command) announced_.reset();
}

void modules::name(int slot)
{
    if (all_.empty()) return;
    named_ = slot;
    if (slot != 0 && at(slot) == nullptr) log_.note("there is no module " + std::to_string(slot));
}

machine* modules::reachable()
{
    module* const one = at(named_);
    return one == nullptr ? nullptr : one->reachable();
}

bool modules::write_control(std::uint8_t address, std::uint8_t value)
{
    module* const one = at(named_);
    return one != nullptr && one->present() && one->write_control(address, value);
}

bool modules::take_frame(std::span<const std::uint8_t> frame)
{
    if (all_.empty()) return false;
    switch (frame[0]) {
    case reset_command:
    case start_command:
        if (byte_at(frame, 1) != module_mark) return false;
        control(frame);
        return true;
    case signal_command:
        if (frame.size() < signal_bytes) return false;
        name(frame[signal_bytes - 1]);
        log_.line("-> module ", named_, " signals ", frame[1], ' ', frame[3], ' ', frame[4]);
        return true;
    case load_command:
        if (frame.size() < load_step_bytes) return false;
        load_step(frame);
        return true;
    default: return false;
    }
}

void modules::control(std::span<const std::uint8_t> frame)
{
    name(byte_at(frame, 2));
    module* const one = at(named_);
    if (one == nullptr || !one->present()) return;
    if (frame[0] == start_command) return one->start();
    one->reset();
    std::erase_if(passages_, [this](const passage& open) { return open.slot == named_; });
}

bool modules::take_bulk_frame(std::span<const std::uint8_t> frame)
{
    if (all_.empty()) return false;
    const std::uint8_t block = frame[1], direction = frame[2];
    const bool to_module = direction == hw::bulk_to_ram, between = byte_at(frame, 4) == module_mark;
    const bool image = block == image_block_number && to_module && byte_at(frame, 3) == image_mark;
    if (between && (to_module || direction == hw::bulk_from_ram)) {
        name(byte_at(frame, hw::slot_byte_of_bulk_frame));
        announced_ = step{named_, block, image, to_module};
        staging_ = false;
        return true;
    }
    close();
    staging_ = image;
    return image;
}

std::span<const std::uint8_t> modules::take_data(std::span<const std::uint8_t> data)
{
    if (staging_) {
        const auto taken = data.first(std::min(data.size(), most_staged_bytes - staged_.size()));
        staged_.insert(staged_.end(), taken.begin(), taken.end());
        return {};
    }
    while (!data.empty() && !passages_.empty()) {
        passage& open = passages_.front();
        const auto taken = data.first(std::min(data.size(), open.left));
        if (memory* const ram = at(open.slot)->reachable_memory()) {
            if (open.left == open.size) ram->seek(open.block);
            if (!ram->write(taken)) log_.note("a passage beyond the end of a module's memory");
        }
        open.left -= taken.size();
        data = data.subspan(taken.size());
        if (open.left == 0) passages_.pop_front();
    }
    return data;
}

void modules::load_step(std::span<const std::uint8_t> frame)
{
    const auto what = std::exchange(announced_, std::nullopt);
    const bool to_module = frame[1] == 0;
    if (!what || what->to_module != to_module) return log_.note("a load step that no frame announced");
    const std::size_t bytes = std::size_t{frame[2]} << 16 | std::size_t{frame[3]} << 8 | frame[4];
    if (carry_out(*what, bytes)) replies_.send({0}, true);
}

/// False if the module does not answer.
bool modules::carry_out(const step& what, std::size_t bytes)
{
    module* const one = at(what.slot);
    if (one == nullptr || !one->present()) return false;
    if (what.image) {
        loaded_ = what.slot;
        one->load(std::exchange(staged_, {}), bytes);
        return true;
    }
    if (one->reachable_memory() == nullptr) return false;
    if (!what.to_module) return fetch(*one, what.block, bytes);
    if (bytes > 0) passages_.push_back({what.slot, what.block, bytes, bytes});
    return true;
}

/// The bytes wait in the same block of the unit's memory.
bool modules::fetch(module& from, int block, std::size_t bytes)
{
    ram_of_unit_.seek(block);
    if (!ram_of_unit_.write(from.reachable_memory()->read(block, bytes)))
        log_.note("a fetch beyond the end of the unit's memory");
    return true;
}

void modules::answer_load(std::uint8_t tag)
{
    if (all_.empty()) return;
    replies_.clear();
    module* const one = at(loaded_);
    if (one == nullptr || !one->present() || !one->last_answer()) return;
    const module::load_answer& last = *one->last_answer();
    if (static_cast<std::uint8_t>(first_tag + last.block) != tag) return;
    replies_.send({last.taken ? load_ready : std::uint8_t{0}, last.started ? fpga_started : std::uint8_t{0}}, false);
}

void modules::insert(std::unique_ptr<part> what, int slot)
{
    module* const one = at(slot);
    if (one == nullptr) throw std::invalid_argument{"there is no module " + std::to_string(slot)};
    one->insert(std::move(what));
}

bool modules::part_has_power(int slot)
{
    module* const one = at(slot);
    return one != nullptr && one->part_has_power();
}

void modules::update()
{
    for (const auto& one : all_) one->update();
}

void modules::settle_down()
{
    for (const auto& one : all_) one->settle_down();
}

void modules::check_idle()
{
    for (const auto& one : all_) one->check_idle();
}

}  // namespace tamrix::sim
