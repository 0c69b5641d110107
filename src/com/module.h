// What the objects of the loaded library share.
#pragma once

#include "entry/entry_methods.h"

namespace tamrix::com {

/// The plug-in behind all objects. The blocks and the variables of its modules live as long as the library is loaded,
/// not as long as an object: a host that makes a second object finds what the first one left. May throw.
entry_methods& plug_in();

}  // namespace tamrix::com
