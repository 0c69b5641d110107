// How a run powers the device: by the G and V of row 0, at once or as acts of a script.
#pragma once

#include <cstdint>
#include <string_view>

namespace tamrix {

class session;

/// The pin codes of a device's supply; 0 where somebody else powers it. The calls are made with 0 then.
struct supply_pins {
    std::uint8_t gcode = 0, vcode = 0;
};

supply_pins supply_of_row(std::string_view row0, int pins);

void power_on(session& plug_in, const supply_pins& pins);
void power_off(session& plug_in, const supply_pins& pins);

void queue_ground(session& plug_in, const supply_pins& pins);
void queue_vcc(session& plug_in, const supply_pins& pins);
void queue_power_off(session& plug_in, const supply_pins& pins);

}  // namespace tamrix
