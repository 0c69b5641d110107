// Environment variables at the border to Windows.
#pragma once

#include "base/utf16.h"

#include <string>
#include <string_view>

#include <windows.h>

namespace tamrix {

/// A variable as UTF-8; empty where there is none.
inline std::string environment_text(const wchar_t* name)
{
    std::wstring value(::GetEnvironmentVariableW(name, nullptr, 0), L'\0');  // counts the NUL
    value.resize(::GetEnvironmentVariableW(name, value.data(), static_cast<DWORD>(value.size())));
    return utf16::to_utf8(std::wstring_view{value});
}

}  // namespace tamrix
