// The window of a host that knows nothing of wxWidgets, while a modal one of ours stands before it.
#pragma once

class wxWindow;

namespace tamrix::wxui {

/// From construction to destruction the host's window in front takes no input, and controls that are made have the
/// system's present look, whatever the host's are made to look like. Where the host's windows are wxWidgets'
/// own, that does all this itself and nothing is left to do here.
class host_window {
public:
    host_window();
    ~host_window();
    host_window(const host_window&) = delete;
    host_window& operator=(const host_window&) = delete;

    /// Keeps `ours` before the host's window.
    void put_behind(wxWindow& ours) const;

private:
    void* handle_ = nullptr;  // null: there is none, or it takes no input anyway
    void* look_ = nullptr;
    unsigned long cookie_ = 0;
};

/// Serves the messages that wait for the host's windows, while no loop of wxWidgets' runs.
void serve_host_messages();

}  // namespace tamrix::wxui
