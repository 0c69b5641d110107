#include "programmer/library_symbol.h"

#include "base/system_message_win32.h"
#include "base/wide_path_win32.h"

#include <windows.h>

namespace tamrix::hw {

void* load_library(const std::string& path, std::string& why)
{
    const HMODULE library = ::LoadLibraryW(wide_path(path).c_str());
    if (library == nullptr) why = system_message(::GetLastError());
    return library;
}

void* symbol_of(void* library, const char* name)
{
    return reinterpret_cast<void*>(::GetProcAddress(static_cast<HMODULE>(library), name));
}

}  // namespace tamrix::hw
