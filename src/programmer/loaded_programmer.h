// A programmer in a shared library with the C interface of tamrix/hardware.h.
#pragma once

#include "programmer/programmer.h"

#include <string>

namespace tamrix::hw {

/// Loads the library when the programmer is first needed and never unloads it. Passes `options` to it unchanged, UTF-8.
/// The source throws programmer_error, which names the file and says what is wrong with it.
programmer_source library_source(std::string path, std::string options = {});

}  // namespace tamrix::hw
