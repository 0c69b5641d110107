// Every dialog and message box of the plug-in, each with contents as a person meets them.
#pragma once

#include "entry/module_variables.h"
#include "forms/form.h"
#include "session/session.h"
#include "support/temp_files.h"
#include "wxui/wx_shell.h"

#include <functional>
#include <string_view>
#include <vector>

namespace tamrix::tests {

/// A plug-in in one language, at the screen.
class stage {
public:
    explicit stage(int language);

    /// Shows a dialog; `fill` brings its contents after it is shown, then `look` is called.
    void show(
        forms::form& shown, const std::function<void()>& fill = [] {});
    /// Calls `asks`, which shows a message box, and `look` while the box is shown.
    void ask(const std::function<void()>& asks);

    wxui::wx_shell screen;
    tamrix::session session;
    module_variables variables;
    temp_folder folder;
    std::function<void()> look = [] {};
};

struct scene {
    std::string_view name;  // of the dialog, in letters that serve for a file's name
    void (*play)(stage& on);
    bool small_screen = false;  // is used on small screens too
};

std::vector<scene> scenes();

}  // namespace tamrix::tests
