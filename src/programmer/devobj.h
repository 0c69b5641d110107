// The device object of a programmer: power, pins and registers.
#pragma once

#include "programmer/operations.h"

namespace tamrix::hw {

/// Pins are socket positions, "pin codes": 1 is the lowest position of the left column, 101 that of the right one. A
/// failed call throws programmer_error. The operations are in operations.h.
class devobj {
public:
    virtual ~devobj() = default;

#define TAMRIX_OPERATION(result, name, parameters, arguments) virtual result name parameters = 0;
    TAMRIX_DEVICE_OPERATIONS(TAMRIX_OPERATION)
#undef TAMRIX_OPERATION
};

}  // namespace tamrix::hw
