// The loaded DLL: where it is, and what keeps it from being unloaded.
#pragma once

#include <string>

#include <windows.h>

namespace tamrix::com {

/// Counts one reason for the library to stay, for as long as it lives: an object, a lock of the class factory.
class stay {
public:
    stay();
    ~stay();
    stay(const stay&) = delete;
    stay& operator=(const stay&) = delete;
};

void lock_library();
void unlock_library();
bool may_unload();

void remember_module(HINSTANCE module);
HINSTANCE module();
/// Full name of this DLL.
std::wstring module_path();

}  // namespace tamrix::com
