#include "base/system_message_win32.h"

#include "base/utf16.h"

#include <array>
#include <cstdio>
#include <string_view>

#include <windows.h>

namespace tamrix {

std::string system_message(unsigned long error)
{
    std::array<wchar_t, 1024> text{};
    const DWORD length =
        ::FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK,
                         nullptr, error, 0, text.data(), static_cast<DWORD>(text.size()), nullptr);
    std::string told = utf16::to_utf8(std::wstring_view{text.data(), length});
    while (!told.empty() && told.back() == ' ') told.pop_back();
    std::array<char, 16> number{};
    constexpr unsigned long first_hresult = 0x80000000;
    std::snprintf(number.data(), number.size(), error >= first_hresult ? "0x%08lX" : "%lu", error);
    if (told.empty()) return std::string{"error "} + number.data();
    return told + " (" + number.data() + ")";
}

}  // namespace tamrix
