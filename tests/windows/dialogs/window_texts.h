// What a person reads in a window.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include <windows.h>

namespace tamrix::tests {

/// Also of a control in another process, into which GetWindowText does not look.
inline std::wstring text_of(HWND window)
{
    std::wstring text(4096, L'\0');
    text.resize(static_cast<std::size_t>(
        ::SendMessageW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()))));
    return text;
}

inline BOOL CALLBACK add_seen(HWND child, LPARAM into)
{
    if (::IsWindowVisible(child) != FALSE) reinterpret_cast<std::vector<HWND>*>(into)->push_back(child);
    return TRUE;
}

/// All windows in it that are seen.
inline std::vector<HWND> seen_in(HWND parent)
{
    std::vector<HWND> children;
    ::EnumChildWindows(parent, add_seen, reinterpret_cast<LPARAM>(&children));
    return children;
}

}  // namespace tamrix::tests
