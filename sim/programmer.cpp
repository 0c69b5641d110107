#include "sim/programmer.h"

#include <algorithm>
#include <utility>

namespace tamrix::sim {

namespace {

constexpr int first_model_with_large_memory = 40, small_banks = 4, large_banks = 16;

int banks_of(const setup& wanted)
{
    if (wanted.memory_banks > 0) return std::min(wanted.memory_banks, large_banks);
    return wanted.model < first_model_with_large_memory ? small_banks : large_banks;
}

setup completed(setup wanted)
{
    if (wanted.time == nullptr) wanted.time = std::make_shared<virtual_clock>();
    if (wanted.log == nullptr) wanted.log = std::make_shared<journal>(wanted.time);
    return wanted;
}

parts_of_programmer parts_of(const setup& wanted, reply_place replies)
{
    return parts_of_programmer{wanted.model, banks_of(wanted), wanted.time, wanted.log, std::move(replies)};
}

}  // namespace

programmer::programmer(const setup& wanted, reply_place replies)
    : shared_{parts_of(completed(wanted), std::move(replies))}
{}

programmer::~programmer()
{
    transport_.reset();
    check_idle();
}

void programmer::add_fault(std::string_view text)
{
    sim::add_fault(shared_.faults, text);
    shared_.hardware.update();
}

void programmer::clear_faults()
{
    shared_.faults = {};
    shared_.hardware.update();
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
