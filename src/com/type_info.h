// The description of the class's interface, from the type library inside this DLL.
#pragma once

#include <windows.h>

#include <oaidl.h>

namespace tamrix::com {

/// The caller releases what it gets.
HRESULT load_type_info(ITypeInfo** info);

}  // namespace tamrix::com
