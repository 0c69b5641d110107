// Shared libraries that are loaded while the plug-in runs.
#pragma once

#include <string>

namespace tamrix::hw {

/// Loads a library that is never unloaded; null where it cannot be loaded, and `why` tells the system's reason.
void* load_library(const std::string& path, std::string& why);
/// Address of a function that the library exports; null where it has none of that name.
void* symbol_of(void* library, const char* name);

}  // namespace tamrix::hw
