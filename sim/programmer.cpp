#include "sim/programmer.h"

#include <algorithm>
#include <utility>

namespace tamrix::sim {

namespace {

constexpr int first_model_with_large_memory = 40, small_banks = 4, large_banks = 16;

std::size_t memory_bytes_of(const setup& wanted)
{
    if (wanted.memory_banks > 0)
        return static_cast<std::size_t>(std::min(wanted.memory_banks, large_banks)) * memory::bank_bytes;
    const bool large = wanted.model >= first_model_with_large_memory || modules::belong_to(wanted.model);
    switch (wanted.model) {
    case 23:
    case 24:
    case 28:
    case 29: return 4096;
    case 27: return 57344;
    default: return (large ? large_banks : small_banks) * memory::bank_bytes;
    }
}

setup completed(setup wanted)
{
    if (wanted.time == nullptr) wanted.time = std::make_shared<virtual_clock>();
    if (wanted.log == nullptr) wanted.log = std::make_shared<journal>(wanted.time);
    return wanted;
}

parts_of_programmer parts_of(const setup& wanted, reply_place replies)
{
    return parts_of_programmer{wanted.model,       wanted.generation, memory_bytes_of(wanted), wanted.time, wanted.log,
                               std::move(replies), wanted.chips};
}

}  // namespace

programmer::programmer(const setup& wanted, reply_place replies)
    : chips_{wanted.chips},
      shared_{parts_of(completed(wanted), std::move(replies))},
      device_{shared_, transport_, wanted.read_time}
{}

programmer::~programmer()
{
    transport_.reset();
    check_idle();
}

void programmer::insert(std::unique_ptr<part> what, int module)
{
    if (module != 0) return shared_.slots.insert(std::move(what), module);
    shared_.hardware.insert(std::move(what));
    shared_.tools.update();
}

bool programmer::part_has_power(int module)
{
    return module == 0 ? shared_.hardware.socket().part_has_power() : shared_.slots.part_has_power(module);
}

void programmer::check_idle()
{
    shared_.hardware.check_idle();
    shared_.slots.check_idle();
}

void programmer::add_fault(std::string_view text)
{
    sim::add_fault(shared_.faults, text);
    shared_.update();
}

void programmer::add_faults(std::span<const std::string> texts)
{
    fault_set wanted = shared_.faults;
    for (const std::string& text : texts) sim::add_fault(wanted, text);
    shared_.faults = std::move(wanted);
    shared_.update();
}

void programmer::add_signal(std::string_view text)
{
    signal_set wanted = signals();
    wanted.add(text);
    set_signals(std::move(wanted));
}

void programmer::clear_faults()
{
    shared_.faults = {};
    shared_.update();
}

hw::programmer_source source_of(setup wanted, std::function<void(programmer&)> prepare)
{
    return [wanted = std::move(wanted), prepare = std::move(prepare)](const hw::reply_memory& replies) {
        auto made = std::make_unique<programmer>(wanted, place_in(replies));
        if (prepare) prepare(*made);
        return made;
    };
}

}  // namespace tamrix::sim
