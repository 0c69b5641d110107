// recording_lumbat.dll: a transport library and a device object whose programmer a test hands over.
#pragma once

#include "programmer/programmer.h"

namespace tamrix::tests {

/// Its device object's class.
inline constexpr const char* recording_class = "{a2a0ed49-89a0-4e5c-9f8b-0f9c6f5a7d11}";

/// What the DLL exports as "use_programmer": from now on both halves are `which`; null for none.
using use_programmer_type = void (*)(hw::programmer* which);

}  // namespace tamrix::tests
