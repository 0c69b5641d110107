// A second thread that waits for a dialog of this process, looks at it and closes it.
#pragma once

#include "dialogs/window_texts.h"

#include <functional>
#include <string>
#include <thread>
#include <utility>

#include <windows.h>

namespace tamrix::tests {

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
