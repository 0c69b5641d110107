// Paths at the border to Windows.
#pragma once

#include "base/native_path.h"
#include "base/utf16.h"

#include <string>
#include <string_view>

namespace tamrix {

/// A path of the host as the wide calls of the system take it.
inline std::wstring wide_path(std::string_view path) { return utf16::from_utf8<wchar_t>(native_path(path)); }

}  // namespace tamrix
