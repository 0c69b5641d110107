// The loaded library: what its objects share, and what keeps it from being unloaded.
#pragma once

#include "entry/entry_methods.h"

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
/// True where nothing keeps the library. What the next object would make anew is let go then: the programmer and what
/// the dialogs needed.
bool may_unload();

void remember_module(HINSTANCE module);
HINSTANCE module();

/// The plug-in behind all objects. The blocks and the variables of its modules live as long as the library is loaded,
/// not as long as an object: a host that makes a second object finds what the first one left. May throw.
entry_methods& plug_in();

/// The library is being unloaded while the process lives on.
void forget_plug_in();

}  // namespace tamrix::com
