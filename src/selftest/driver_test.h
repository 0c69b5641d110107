// The drivers of VPP, VCC and ground, pin by pin: each is switched on, and all pins are read back.
#pragma once

#include "selftest/model_plan.h"
#include "selftest/pin_access.h"

#include <string_view>

namespace tamrix {

/// One kind of driver.
struct driver_kind {
    selftest_stage stage;
    std::uint8_t code;                     // of ctlout
    int idle_level;                        // what a pin reads whose driver is off
    std::string_view prefix;               // of the status
    int not_switched, switched_elsewhere;  // messages: of a driver that does nothing, and of another pin that follows
    forms::colour ink;
};
extern const driver_kind vpp_drivers, vcc_drivers, ground_drivers;

struct driver_timing {
    std::int32_t settle_ms = 20;  // from the switch to the read
};

/// What becomes of a fault.
enum class on_fault : std::uint8_t { ask, keep_quiet };

/// Tests the pins in their order. Where a fault is asked about, Stop ends the stage.
stage_end test_drivers(socket_frame& form, const pin_access& access, const driver_kind& kind, const driver_pins& pins,
                       on_fault then, driver_timing timing = {});

}  // namespace tamrix
