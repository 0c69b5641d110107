// Writes what the registry has to know of the class that the DLL serves, and takes it back.
#pragma once

#include <windows.h>

namespace tamrix::com {

enum class audience { machine, user };

/// Writes all keys; where one cannot be written, takes back those that were.
HRESULT register_class(audience who);
/// Removes all keys. Those that are not there are no fault.
HRESULT unregister_class(audience who);

}  // namespace tamrix::com
