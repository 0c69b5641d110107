#include "ttl/run/supply.h"

#include "channel/model.h"
#include "session/session.h"
#include "ttl/run/alphabet.h"

namespace tamrix {

namespace {

/// Some models feed a supply pin at this place through the VPP driver of code 108.
constexpr std::uint8_t vpp_feed = 108;

constexpr bool fed_by_vpp(const hw::model& model, std::uint8_t vcode)
{
    return (model.vpp_feeds_107 && vcode == 107) || (model.vpp_feeds_108 && vcode == 108);
}

hw::model model_in_use(const session& plug_in) { return hw::model_of(plug_in.blocks.modeltype(0)); }

void switch_vcc(session& plug_in, std::uint8_t vcode, std::uint8_t state)
{
    hw::devobj& device = plug_in.hardware.device();
    if (fed_by_vpp(model_in_use(plug_in), vcode)) {
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
    if (fed_by_vpp(model_in_use(plug_in), pins.vcode)) {
        device.vecvpp(vpp_feed, 1);
    } else {
        device.vecvcc(pins.vcode, 1);
    }
}

// Some models end by vecvcc though they began by vecvpp. Intentional: the next reset drops the rest.
void queue_power_off(session& plug_in, const supply_pins& pins)
{
    hw::devobj& device = plug_in.hardware.device();
    const hw::model model = model_in_use(plug_in);
    if (model.scripts_end_vpp_feed && fed_by_vpp(model, pins.vcode)) {
        device.vecvpp(vpp_feed, 0);
    } else {
        device.vecvcc(pins.vcode, 0);
    }
    device.vecgnd(pins.gcode, 0);
}

}  // namespace tamrix
