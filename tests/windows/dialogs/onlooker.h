// A second thread that waits for a dialog of this process, looks at it and closes it.
#pragma once

#include <functional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <windows.h>

namespace tamrix::tests {

inline std::wstring text_of(HWND window)
{
    std::wstring text(4096, L'\0');
    text.resize(static_cast<std::size_t>(
        ::SendMessageW(window, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()))));
    return text;
}

inline BOOL CALLBACK add_text(HWND child, LPARAM into)
{
    if (::IsWindowVisible(child) != FALSE)
        reinterpret_cast<std::vector<std::wstring>*>(into)->push_back(text_of(child));
    return TRUE;
}

/// The texts of all windows in it that are seen.
inline std::vector<std::wstring> texts_in(HWND parent)
{
    std::vector<std::wstring> texts;
    ::EnumChildWindows(parent, add_text, reinterpret_cast<LPARAM>(&texts));
    return texts;
}

class onlooker {
public:
    onlooker(std::wstring title, std::function<void(HWND)> look)
        : thread_{[title = std::move(title), look = std::move(look)] {
              HWND dialog = nullptr;
              while ((dialog = ::FindWindowW(nullptr, title.c_str())) == nullptr || ::IsWindowVisible(dialog) == FALSE)
                  ::Sleep(20);
              ::Sleep(100);
              look(dialog);
              ::PostMessageW(dialog, WM_CLOSE, 0, 0);
          }}
    {}
    ~onlooker() { thread_.join(); }
    onlooker(const onlooker&) = delete;
    onlooker& operator=(const onlooker&) = delete;

private:
    std::thread thread_;
};

}  // namespace tamrix::tests
