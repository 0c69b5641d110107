// wxWidgets under the dialogs: the host's where it runs one, else one of our own from the first dialog on.
#pragma once

#include <thread>

namespace tamrix::wxui {

class toolkit {
public:
    toolkit() = default;
    ~toolkit() { end(); }
    toolkit(const toolkit&) = delete;
    toolkit& operator=(const toolkit&) = delete;

    /// Throws std::runtime_error where no window can be opened, and on another thread than that of the first dialog.
    void need_display();
    /// Ends a wxWidgets of our own; the next dialog starts it anew. False on another thread than the one that started
    /// it, which alone can end it.
    bool end();

private:
    void start();

    bool started_ = false;
    std::thread::id thread_;
};

/// Starts wxWidgets with the app that is set. The system's part of toolkit::start().
bool start_wxwidgets();

}  // namespace tamrix::wxui
