#include "programmer/library_symbol.h"

#include <dlfcn.h>

namespace tamrix::hw {

void* load_library(const std::string& path, std::string& why)
{
    void* const library = ::dlopen(path.c_str(), RTLD_NOW | RTLD_LOCAL | RTLD_NODELETE);
    if (library != nullptr) return library;
    const char* const reason = ::dlerror();
    why = reason != nullptr ? reason : "cannot be loaded";
    return nullptr;
}

void* symbol_of(void* library, const char* name) { return ::dlsym(library, name); }

}  // namespace tamrix::hw
