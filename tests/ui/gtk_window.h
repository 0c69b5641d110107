// What wxWidgets does not say of the windows on the screen. Asked of the toolkit under it, whose functions are found
// in the running program, so that no headers of it are needed.
#pragma once

#include <string>

#include <wx/window.h>

namespace tamrix::tests {

class gtk_window {
public:
    /// The modal window in front, also where it is a message box; one with a null widget where there is none.
    static gtk_window in_front();

    /// The number by which the display knows it; 0 while it is on no screen. A later window has another one.
    unsigned long number() const;
    /// True once keys arrive here.
    bool has_keyboard() const;
    /// Asks for the keys, which a window may miss when it comes as another one goes: no window manager hands them on.
    void take_keyboard() const;
    /// Sets a print dialog to print into a file of this format, "ps" or "pdf".
    void print_to(const std::string& file, const char* format) const;

private:
    explicit gtk_window(void* widget) : widget_{widget} {}

    void* widget_;
};

/// How many letters of a text no installed font has, drawn as `window` draws its own texts.
int letters_without_picture(const wxWindow& window, const std::string& text);

}  // namespace tamrix::tests
