// Registers and unregisters the class that the DLL serves.
#pragma once

#include <windows.h>

namespace tamrix::com {

enum class audience { machine, user };

/// Writes all keys; if one cannot be written, removes those that were.
HRESULT register_class(audience who);
/// Removes all keys. A missing key is no error.
HRESULT unregister_class(audience who);

}  // namespace tamrix::com
