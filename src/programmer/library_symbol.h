// Shared libraries that are loaded while the plug-in runs.
#pragma once

#include <string>

namespace tamrix::hw {

/// Loads a library, which is never unloaded. Returns null if it cannot be loaded; `why` is then the system's reason.
void* load_library(const std::string& path, std::string& why);
/// The address of a function that the library exports; null if it has none of that name.
void* symbol_of(void* library, const char* name);

}  // namespace tamrix::hw
