// A person at the screen: keys and the mouse go through the display, as they do from real ones.
#pragma once

#include "forms/form.h"
#include "wxui/wx_shell.h"

#include <functional>
#include <string>

#include <wx/window.h>

namespace tamrix::tests {

/// A form that runs a script once it is shown, and closes when the script did not close it.
class scripted_form : public forms::form {
public:
    scripted_form();
    std::function<void()> script;

protected:
    void on_load() override;

private:
    forms::timer starter_{*this};
};

/// Shows the form and runs `script` while it is shown. What a handler throws comes out.
void during(forms::shell& screen, scripted_form& shown, const std::function<void()>& script);

// What follows works while a dialog is shown.

/// A key by its name, with others held down: "Tab", "shift+Tab", "alt+n", "Return", or several with blanks between.
void press(const std::string& keys);
/// Letters, as on a keyboard.
void type(const std::string& letters);
/// The left button, at the middle of a window or at a place in it.
void click(const wxWindow& window);
void click(const wxWindow& window, wxPoint inside);
/// Presses the left button at one place of a window and lets it go at another; `held` is a key held down, or none.
void drag(const wxWindow& window, wxPoint from, wxPoint to, const std::string& held = {});
/// The wheel over the middle of a window, so many steps; more than 0 is away from the person.
void turn_wheel(const wxWindow& window, int steps);
/// Puts a text on the clipboard.
void copy(const std::string& text);
/// The text on the clipboard.
std::string copied();

/// Lets the program work until `done` says so, at most five seconds; true where it did.
bool comes_true(const std::function<bool()>& done);

/// What has the keyboard, as a person would name it: the text in a box, the caption of a button or option, "a list".
std::string focused();
/// The dialog in front.
wxWindow& dialog();
/// The widget of the dialog that shows this caption or text. Throws std::runtime_error where there is none.
wxWindow& shown_as(const std::string& words);

/// The picture of a window as it is on the screen at this moment.
std::string picture_of(const wxWindow& window);
/// The colour of one pixel in it, "#RRGGBB".
std::string colour_at(const wxWindow& window, wxPoint inside);

}  // namespace tamrix::tests
