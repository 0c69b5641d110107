// What the objects of the loaded library share.
#pragma once

#include "entry/entry_methods.h"

namespace tamrix::com {

/// The plug-in behind all objects. The blocks and the variables of its modules live as long as the library is loaded,
/// not as long as an object: a host that makes a second object finds what the first one left. May throw.
entry_methods& plug_in();

/// Lets go what the next object would make anew: the programmer and what the dialogs needed. False on a thread that may
/// not.
bool rest_plug_in();
/// The library is being unloaded while the process lives on.
void forget_plug_in();

}  // namespace tamrix::com
