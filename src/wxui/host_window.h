// The window of a host that does not use wxWidgets, while a modal window of ours is in front of it.
#pragma once

class wxWindow;

namespace tamrix::wxui {

/// From construction to destruction the host's front window takes no input, and new controls have the system's current
/// look, whatever look the host's have. If the host's windows are those of wxWidgets, wxWidgets does this itself.
class host_window {
public:
    host_window();
    ~host_window();
    host_window(const host_window&) = delete;
    host_window& operator=(const host_window&) = delete;

    /// Keeps `ours` in front of the host's window.
    void put_behind(wxWindow& ours) const;

private:
    void* handle_ = nullptr;  // null: there is none, or it takes no input anyway
    void* look_ = nullptr;
    unsigned long cookie_ = 0;
};

/// Handles the waiting messages of the host's windows, while no loop of wxWidgets runs.
void serve_host_messages();

}  // namespace tamrix::wxui
