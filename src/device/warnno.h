// Notes on a device that the host shows when it is selected: how its memories lie in the buffer, and whether it needs
// the external supply.
#pragma once

#include "tamrix/types.h"

#include <cstdint>

namespace tamrix {

class session;

/// Shows note `no`, 1 to 25; every other number shows nothing. Bit 7 asks for the line on the external supply on models
/// that can do without it; it is cleared in the caller's variable. `ok` says that
/// the host has found the programmer, `extpower0` that the supply is connected.
void warn(session& plug_in, bool16 ok, std::uint8_t& no, bool16 extpower0);

}  // namespace tamrix
