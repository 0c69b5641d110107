// The library that this code is in.
#pragma once

#include <wx/msw/wrapwin.h>

namespace tamrix::wxui {

inline HMODULE own_module()
{
    HMODULE own = nullptr;
    ::GetModuleHandleExW(GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
                         reinterpret_cast<LPCWSTR>(&own_module), &own);
    return own;
}

}  // namespace tamrix::wxui
