#include "sim/driver_lists.h"

#include <algorithm>
#include <array>

namespace tamrix::sim {

namespace {

constexpr int most_pins = 48;

constexpr std::array grounds{13, 14, 17, 18, 19, 20, 21, 23, 24, 26, 27, 28, 30, 31, 33, 34};
constexpr std::array vccs{11, 13, 15, 16, 17, 20, 24, 25, 26, 27, 28, 29, 30, 33, 34, 35, 36, 37, 39, 43, 45};
constexpr std::array vpps{4, 8, 10, 11, 12, 13, 14, 15, 16, 17, 18, 20, 23, 31, 32, 33, 34, 37, 38};

bool in_list(driver_kind kind, int pin, bool vpp_is_known)
{
    switch (kind) {
    case driver_kind::ground: return std::ranges::count(grounds, pin) != 0;
    case driver_kind::vcc: return std::ranges::count(vccs, pin) != 0;
    case driver_kind::vpp: return vpp_is_known && std::ranges::count(vpps, pin) != 0;
    default: return false;
    }
}

}  // namespace

bool has_test_switch(int model, driver_kind kind, int pin)
{
    switch (model) {
    case 15:
    case 16: return in_list(kind, pin, true);
    // They have three VCC drivers more than these, and 16 VPP drivers, at pins that are not known.
    case 57:
    case 58: return in_list(kind, pin, false);
    // Sockets of 40 pins: nothing is known.
    case 22:
    case 23:
    case 24:
    case 27:
    case 28:
    case 29: return false;
    default: return pin >= 1 && pin <= most_pins;
    }
}

}  // namespace tamrix::sim
