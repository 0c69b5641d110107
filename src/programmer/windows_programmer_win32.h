// The programmer as the installation of a Windows host has it: lumbat.dll and the device object.
#pragma once

#include "programmer/programmer.h"

#include <string>

namespace tamrix::hw {

struct windows_names {
    std::string transport_library{};  // empty: lumbat.dll
    std::string device_class{};       // empty: as TAMRIX_DEVOBJ says, else the ProgID of windows_programmer.h
};

/// Both halves are found when they are first needed, each by itself, and stay for the source's life: a programmer that
/// is let go and made anew finds the ones that are there. The memory for replies is not passed on, since neither half
/// asks for it.
programmer_source windows_source(windows_names names = {});

}  // namespace tamrix::hw
