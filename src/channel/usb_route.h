// By which of its two routes the programmer is reached. The host says so in `usbable(0)`; the library chooses nothing.
#pragma once

#include "tamrix/types.h"

namespace tamrix::hw {

/// The question of the logic IC test and of the instruments: USB only where the flag is exactly true (0xFFFF). Any
/// other value is the device object's route.
constexpr bool usb_is_true(bool16 usbable) { return is_true(usbable); }

/// The question of the self-tests: USB unless the flag is 0. Intentional: the two differ on every other value.
constexpr bool usb_is_not_zero(bool16 usbable) { return usbable != 0; }

}  // namespace tamrix::hw
