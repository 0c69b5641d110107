#include "ttl/run/supply.h"

#include "session/session.h"
#include "ttl/run/alphabet.h"

namespace tamrix {

namespace {

/// Some models feed a supply pin at this place through the VPP driver of code 108.
constexpr std::uint8_t vpp_feed = 108;

constexpr bool fed_by_vpp_on_newer(std::int16_t modeltype, std::uint8_t vcode)
{
    const bool model = modeltype == 23 || modeltype == 24 || modeltype == 28 || modeltype == 29;
    return model && (vcode == 107 || vcode == 108);
}

constexpr bool fed_by_vpp(std::int16_t modeltype, std::uint8_t vcode)
{
    return fed_by_vpp_on_newer(modeltype, vcode) || ((modeltype == 15 || modeltype == 16) && vcode == 108);
}

void switch_vcc(session& plug_in, std::uint8_t vcode, std::uint8_t state)
{
    hw::devobj& device = plug_in.hardware.device();
    if (fed_by_vpp(plug_in.blocks.modeltype(0), vcode)) {
        device.vpppin(vpp_feed, state);
    } else {
        device.vccpin(vcode, state);
    }
}

}  // namespace

supply_pins supply_of_row(std::string_view row0, int pins)
{
    return {.gcode = pin_code(row0, 'G', pins), .vcode = pin_code(row0, 'V', pins)};
}

void power_on(session& plug_in, const supply_pins& pins)
{
    plug_in.hardware.device().gndpin(pins.gcode, 1);
    switch_vcc(plug_in, pins.vcode, 1);
    plug_in.hardware.device().delayms(1);
}

void power_off(session& plug_in, const supply_pins& pins)
{
    switch_vcc(plug_in, pins.vcode, 0);
    plug_in.hardware.device().gndpin(pins.gcode, 0);
}

void queue_ground(session& plug_in, const supply_pins& pins) { plug_in.hardware.device().vecgnd(pins.gcode, 1); }

void queue_vcc(session& plug_in, const supply_pins& pins)
{
    hw::devobj& device = plug_in.hardware.device();
    if (fed_by_vpp(plug_in.blocks.modeltype(0), pins.vcode)) {
        device.vecvpp(vpp_feed, 1);
    } else {
        device.vecvcc(pins.vcode, 1);
    }
}

// Models 15 and 16 end by vecvcc though they may have begun by vecvpp: meant, the next reset drops the rest.
void queue_power_off(session& plug_in, const supply_pins& pins)
{
    hw::devobj& device = plug_in.hardware.device();
    if (fed_by_vpp_on_newer(plug_in.blocks.modeltype(0), pins.vcode)) {
        device.vecvpp(vpp_feed, 0);
    } else {
        device.vecvcc(pins.vcode, 0);
    }
    device.vecgnd(pins.gcode, 0);
}

}  // namespace tamrix
