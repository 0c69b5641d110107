// A dialog of the plug-in in front of a host's window, and what is asked of it there.
#pragma once

#include "forms/form.h"
#include "person.h"

#include <functional>

namespace tamrix::tests {

/// Shows a host's window and, while it stands there, a dialog before it. `script` runs while the dialog is shown, which
/// is then closed. What goes wrong in it fails the test.
void before_a_host(wxui::wx_shell& screen, forms::form& shown, const std::function<void()>& script);

/// The same for a message box: `asks` shows it and returns with the answer; Escape closes it after the script.
void box_before_a_host(wxui::wx_shell& screen, const std::function<void()>& asks, const std::function<void()>& script);

}  // namespace tamrix::tests
