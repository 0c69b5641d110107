// A programmer in a shared library with the C interface of tamrix/hardware.h.
#pragma once

#include "programmer/programmer.h"

#include <string>

namespace tamrix::hw {

/// Loads the library when the programmer is first needed and never unloads it. `options` goes to the library as it is.
/// What the source throws, programmer_error, names the file and tells what is wrong with it.
programmer_source library_source(std::string path, std::string options = {});

}  // namespace tamrix::hw
