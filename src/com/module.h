// What the objects of the loaded library share.
#pragma once

#include "entry/entry_methods.h"

namespace tamrix::com {

/// The plug-in of all objects. The blocks and the variables of its modules live as long as the library is loaded, not
/// as long as an object: a host that creates a second object finds the state that the first one left. May throw.
entry_methods& plug_in();

/// Releases what the next object would create anew: the programmer and what the dialogs needed. False on a thread that
/// cannot do it.
bool rest_plug_in();
/// The library is being unloaded while the process continues.
void forget_plug_in();

}  // namespace tamrix::com
