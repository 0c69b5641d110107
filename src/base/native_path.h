// The one place where a path of the host becomes a path of this system.
#pragma once

#include <string>
#include <string_view>

namespace tamrix {

/// "\" and "/" both separate folders, and repeats of them collapse into one. On Windows two at the
/// very start stay: they name a computer.
std::string native_path(std::string_view path);

}  // namespace tamrix
