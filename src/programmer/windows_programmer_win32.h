// The programmer as the installation of a Windows host has it: lumbat.dll and the device object.
#pragma once

#include "programmer/programmer.h"

#include <string>

namespace tamrix::hw {

struct windows_names {
    std::string transport_library{};  // empty: lumbat.dll
    std::string device_class{};       // empty: as TAMRIX_DEVOBJ says, else the ProgID of windows_programmer.h
};

/// Each half is found when it is first needed and lives as long as the source, so that a new programmer uses the same
/// halves again. The memory for replies is not passed on, since neither half asks for it.
programmer_source windows_source(windows_names names = {});

}  // namespace tamrix::hw
