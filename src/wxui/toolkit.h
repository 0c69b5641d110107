// wxWidgets for the dialogs: the host's if it runs one, else one of our own from the first dialog on.
#pragma once

#include <thread>

namespace tamrix::wxui {

class toolkit {
public:
    toolkit() = default;
    ~toolkit() { end(); }
    toolkit(const toolkit&) = delete;
    toolkit& operator=(const toolkit&) = delete;

    /// Throws std::runtime_error if no window can be opened, or on another thread than that of the first dialog.
    void need_display();
    /// Ends a wxWidgets of our own; the next dialog starts it anew. Only the thread that started it can end it; false
    /// on any other.
    bool end();

private:
    void start();

    bool started_ = false;
    std::thread::id thread_;
};

/// Starts wxWidgets with the app that is set. The system's part of toolkit::start().
bool start_wxwidgets();

}  // namespace tamrix::wxui
