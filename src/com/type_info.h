// The description of the class's interface, from the type library inside this DLL.
#pragma once

#include <string>

#include <windows.h>

#include <oaidl.h>

namespace tamrix::com {

/// Full name of this DLL.
std::wstring module_path();

/// The caller releases what it gets.
HRESULT load_type_info(ITypeInfo** info);

}  // namespace tamrix::com
