// A dialog of the plug-in over the window of a host, worked by a script.
#pragma once

#include "person.h"

#include <exception>
#include <functional>
#include <stdexcept>
#include <string>
#include <utility>

#include <gtest/gtest.h>

#include <wx/dialog.h>
#include <wx/timer.h>
#include <wx/toplevel.h>

namespace tamrix::tests {

/// Below the dialogs, as a host's window would be.
class host_window final : public scripted_form {
public:
    forms::label text{*this};
    forms::layout arrangement() override { return forms::column({text}); }
};

/// Whether a control with these words is there and not off.
inline bool shows(const std::string& words)
{
    try {
        return shown_as(words).IsEnabled();
    } catch (const std::runtime_error&) {
        return false;
    }
}

/// Runs a script once, soon after it was made.
class script_timer final : public wxTimer {
public:
    explicit script_timer(std::function<void()> script) : script_{std::move(script)} { StartOnce(20); }
    void Notify() override
    {
        try {
            script_();
        } catch (const std::exception& error) {
            ADD_FAILURE() << error.what();
        }
    }

private:
    std::function<void()> script_;
};

/// Runs a script five times a second, also while a dialog works.
class onlooker final : public wxTimer {
public:
    explicit onlooker(std::function<void()> look) : look_{std::move(look)} { Start(200); }
    void Notify() override { look_(); }

private:
    std::function<void()> look_;
};

/// Shows a dialog and runs `script` once it has the keyboard; closes it where the script did not.
inline void over_host(forms::shell& screen, forms::form& shown, const std::function<void()>& script)
{
    host_window host;
    during(screen, host, [&] {
        wxWindow* const behind = &dialog();
        script_timer starter{[&] {
            comes_true([&] { return &dialog() != behind && static_cast<wxTopLevelWindow&>(dialog()).IsActive(); });
            press("shift");  // and lets the keyboard arrive
            try {
                script();
            } catch (const std::exception& error) {
                ADD_FAILURE() << error.what();
            }
            shown.close();
        }};
        screen.show_modal(shown);
    });
}

/// The same for a message box: `asks` shows it and returns with the answer; Escape closes it after the script.
inline void box_over_host(forms::shell& screen, const std::function<void()>& asks, const std::function<void()>& script)
{
    host_window host;
    during(screen, host, [&] {
        wxWindow* const behind = &dialog();
        script_timer starter{[&] {
            comes_true([&] { return &dialog() != behind; });
            const auto* const box = dynamic_cast<const wxDialog*>(&dialog());
            press("shift");
            try {
                script();
            } catch (const std::exception& error) {
                ADD_FAILURE() << error.what();
            }
            // On a busy machine the keyboard may arrive after the key.
            for (int attempt = 0; attempt < 50 && box != nullptr && box->IsModal(); ++attempt) press("Escape");
        }};
        asks();
    });
}

}  // namespace tamrix::tests
