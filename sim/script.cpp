#include "sim/script.h"

#include <algorithm>
#include <utility>

namespace tamrix::sim {

namespace {

/// A register access of the script's player.
constexpr microseconds access_time{1};

}  // namespace

bool script::enter(const act& one)
{
    if (std::exchange(opened_, false)) clear();
    if (acts_.size() + results_.size() >= most_acts) return false;
    acts_.push_back(one);
    return true;
}

microseconds script::start(machine& hardware)
{
    microseconds needed{0};
    for (const act& one : std::exchange(acts_, {})) {
        const bool on = one.value != 0;
        needed += access_time;
        switch (one.kind) {
        case act_kind::out: hardware.write_register(one.address, static_cast<std::uint8_t>(one.value)); break;
        case act_kind::read: results_.push_back(hardware.read_register(one.address)); break;
        case act_kind::wait:
            hardware.settle_down();
            needed += microseconds{std::max(one.value, 0)};
            break;
        case act_kind::ground: hardware.ground(one.address, on); break;
        case act_kind::vcc: hardware.vcc(one.address, on); break;
        case act_kind::vpp: hardware.vpp(one.address, on); break;
        }
    }
    hardware.settle_down();
    return needed;
}

std::vector<std::uint8_t> script::results(std::size_t count) const
{
    std::vector<std::uint8_t> bytes(count, 0);
    std::copy_n(results_.begin(), std::min(count, results_.size()), bytes.begin());
    return bytes;
}

void script::clear()
{
    opened_ = false;
    acts_.clear();
    results_.clear();
}

}  // namespace tamrix::sim
