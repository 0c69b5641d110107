#include "before_a_host.h"

#include "gtk_window.h"

#include <exception>
#include <utility>

#include <gtest/gtest.h>

#include <wx/timer.h>
#include <wx/toplevel.h>

namespace tamrix::tests {

namespace {

class host_window final : public scripted_form {
public:
    forms::label text{*this};
    forms::layout arrangement() override { return forms::column({text}); }
};

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

}  // namespace

void before_a_host(wxui::wx_shell& screen, forms::form& shown, const std::function<void()>& script)
{
    host_window host;
    during(screen, host, [&] {
        wxWindow* const behind = &dialog();
        const script_timer starter{[&] {
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

void box_before_a_host(wxui::wx_shell& screen, const std::function<void()>& asks, const std::function<void()>& script)
{
    host_window host;
    during(screen, host, [&] {
        const void* const behind = gtk_window::in_front().widget();
        const script_timer starter{[&] {
            comes_true([&] { return gtk_window::in_front().widget() != behind; });
            press("shift");
            script();
            press("Escape");
        }};
        asks();
    });
}

}  // namespace tamrix::tests
