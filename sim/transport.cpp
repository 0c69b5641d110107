#include "sim/transport.h"

#include "channel/frames.h"

#include <algorithm>
#include <utility>

namespace tamrix::sim {

namespace {

constexpr std::int32_t sent = 0, failed = 1;
constexpr std::uint8_t script_block = 16;
constexpr int banks_of_large_memory = 16;
constexpr int low_voltage_model = 27;
/// A frame, a round on the pipe, and each byte of a block.
constexpr microseconds frame_time{125}, pipe_time{1000}, byte_time{1};

}  // namespace

parts_of_programmer::parts_of_programmer(int its_model, int generation, std::size_t memory_bytes,
                                         std::shared_ptr<clock> its_time, std::shared_ptr<journal> its_log,
                                         reply_place place_of_replies, part_shelf chips)
    : model{its_model},
      time{std::move(its_time)},
      log{std::move(its_log)},
      hardware{model, generation, faults, *log},
      ram{memory_bytes, faults},
      replies{std::move(place_of_replies), faults, *log},
      slots{model, faults, *log, ram, replies},
      tools{{model, generation, time, *log, faults, hardware, ram, replies}, std::move(chips)}
{}

void parts_of_programmer::settle_down()
{
    tools.look(false);
    hardware.settle_down();
    slots.settle_down();
}

void parts_of_programmer::update()
{
    hardware.update();
    slots.update();
    tools.update();
}

void transport::reset()
{
    pipe_.cancel();
    mode_ = bulk_mode::none;
    shared_.tools.reset();
    shared_.replies.clear();
    shared_.vectors.clear();
    shared_.script_done = shared_.time->now();
}

std::int32_t transport::usbcomwrite(const std::uint8_t* buffer, std::int32_t length)
{
    if (buffer == nullptr || length <= 0) {
        shared_.log->note("a frame of " + std::to_string(length) + " bytes");
        return failed;
    }
    const std::span frame{buffer, static_cast<std::size_t>(length)};
    shared_.tools.store();
    shared_.log->line("usbcomwrite ", length, ": ", hex_word{frame});
    if (shared_.faults.no_answer) return failed;
    shared_.time->advance(frame_time);
    take_frame(frame);
    return sent;
}

void transport::take_frame(std::span<const std::uint8_t> frame)
{
    shared_.replies.clear();
    shared_.slots.begin_frame(frame[0]);
    switch (frame[0]) {
    case 5: return pin_frame(frame);
    case 9: return memory_frame(frame);
    case 10: return bulk_frame(frame);
    case 33: return shared_.tools.take_frame(frame);
    case 51:
        if (shared_.model == low_voltage_model) return low_voltage_memory_frame(frame);
        [[fallthrough]];
    default:
        if (!shared_.slots.take_frame(frame)) shared_.log->note("unknown command " + std::to_string(frame[0]));
    }
}

bool transport::long_enough(std::span<const std::uint8_t> frame, std::size_t needed, const char* what)
{
    if (frame.size() >= needed) return true;
    shared_.log->note(std::string{"a "} + what + " frame of " + std::to_string(frame.size()) + " bytes, which needs " +
                      std::to_string(needed));
    return false;
}

void transport::pin_frame(std::span<const std::uint8_t> frame)
{
    machine::port_bytes data{}, masks{};
    if (!long_enough(frame, 1 + 2 * data.size(), "pin")) return;
    for (std::size_t port = 0; port < data.size(); ++port) {
        data[port] = frame[1 + 2 * port];
        masks[port] = frame[2 + 2 * port];
    }
    shared_.slots.name(frame.size() > hw::slot_byte_of_pin_frame ? frame[hw::slot_byte_of_pin_frame] : 0);
    machine* const there = shared_.reached();
    if (there == nullptr) return;
    shared_.tools.look(true);
    // The self-test's longer frames make masks count also where a port can only pull low. The byte after the masks is
    // a register that nothing reads.
    const std::size_t last_mask = 2 * data.size();
    const bool is_long = frame.size() > last_mask + 1;
    if (is_long) there->write_register(last_mask, frame[last_mask + 1]);
    there->write_ports(data, masks, is_long);
    const auto levels = there->read_ports();
    shared_.replies.send({levels.begin(), levels.end()}, true);
}

void transport::memory_frame(std::span<const std::uint8_t> frame)
{
    if (!long_enough(frame, 2, "memory")) return;
    // 1 asks for the larger memory, 0 chooses the small one and is acknowledged.
    const bool large = shared_.ram.banks() >= banks_of_large_memory;
    shared_.replies.send({static_cast<std::uint8_t>(frame[1] == 1 && large ? 1 : 0)}, true);
}

void transport::bulk_frame(std::span<const std::uint8_t> frame)
{
    if (!long_enough(frame, 3, "bulk")) return;
    pipe_.cancel();
    mode_ = bulk_mode::none;
    bank_ = frame[1];
    if (shared_.slots.take_bulk_frame(frame)) {
        if (frame[2] == hw::bulk_to_ram) mode_ = bulk_mode::write;
        return;
    }
    const bool in_memory = bank_ < shared_.ram.banks();
    switch (frame[2]) {
    case hw::bulk_end: return;
    case hw::bulk_to_ram:
        mode_ = bulk_mode::write;
        shared_.ram.seek(bank_);
        break;
    case hw::bulk_from_ram:
        mode_ = bulk_mode::read;
        if (bank_ != script_block) break;
        mode_ = bulk_mode::script;
        return shared_.vectors.open();
    default: return shared_.log->note("unknown bulk direction " + std::to_string(frame[2]));
    }
    if (!in_memory) shared_.log->note("there is no memory bank " + std::to_string(bank_));
}

/// Chooses the memory of this model, and announces a write to its start. A read has a bulk frame of its own.
void transport::low_voltage_memory_frame(std::span<const std::uint8_t> frame)
{
    if (!long_enough(frame, 3, "memory")) return;
    pipe_.cancel();
    mode_ = frame[2] == hw::bulk_to_ram ? bulk_mode::write : bulk_mode::none;
    shared_.ram.seek(0);
}

std::int32_t transport::usbbulkwrite(const std::uint8_t* buffer, std::int32_t length)
{
    // The last block of an image can be empty.
    const bool empty = length == 0 && mode_ == bulk_mode::write;
    if (!empty && (buffer == nullptr || length <= 0)) {
        shared_.log->note("a bulk write of " + std::to_string(length) + " bytes");
        return failed;
    }
    const std::span data{buffer, static_cast<std::size_t>(length)};
    shared_.log->line("usbbulkwrite ", length, ": ", hex_word{data, 16});
    if (shared_.faults.no_answer) return failed;
    if (mode_ != bulk_mode::write) {
        shared_.log->note("a bulk write that no frame announced");
        return failed;
    }
    shared_.time->advance(pipe_time + length * byte_time);
    if (!shared_.ram.write(shared_.slots.take_data(data))) shared_.log->note("a bulk write beyond the memory's end");
    return sent;
}

std::int32_t transport::usbbulkread(std::uint8_t* buffer, std::int32_t length, std::uint8_t* status)
{
    if (buffer == nullptr || status == nullptr || length <= 0) {
        shared_.log->note("a bulk read of " + std::to_string(length) + " bytes");
        return failed;
    }
    pipe_.cancel();
    const bool announced = mode_ == bulk_mode::read || mode_ == bulk_mode::script;
    const bool silent = mode_ == bulk_mode::read && shared_.faults.silent_banks.contains(bank_);
    if (shared_.faults.no_answer || !announced || silent || shared_.faults.reads_without_end.take()) {
        shared_.log->line("usbbulkread ", length, " -> never ends");
        if (!announced) shared_.log->note("a bulk read that no frame announced");
        return sent;
    }
    const auto count = static_cast<std::size_t>(length - 1);
    auto data = mode_ == bulk_mode::script ? shared_.vectors.results(count) : shared_.ram.read(bank_, count);
    const bool marker = !shared_.faults.lost_markers.take();
    shared_.log->line("usbbulkread ", length, " -> ", hex_word{data, 16}, marker ? "" : ", no marker");
    microseconds start = shared_.time->now();
    if (mode_ == bulk_mode::script) start = std::max(start, shared_.script_done);
    pipe_.start(std::move(data), buffer, status, start + pipe_time + length * byte_time, marker);
    return sent;
}

}  // namespace tamrix::sim
