#include "forms/form.h"
#include "forms/shell.h"

#include "support/scripted_shell.h"

#include <gtest/gtest.h>

#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

namespace tamrix::forms {
namespace {

/// Writes down what happens to it.
struct recording_form : form {
    explicit recording_form(std::vector<std::string>& record) : log{record} {}

    std::vector<std::string>& log;
    std::function<void()> while_loading, while_unloading;
    button okcom{*this}, exitcom{*this};
    bool has_buttons = true;

    layout arrangement() override { return buttons({okcom, exitcom}); }
    button* default_button() override { return has_buttons ? &okcom : nullptr; }
    button* cancel_button() override { return has_buttons ? &exitcom : nullptr; }

protected:
    void on_load() override
    {
        log.push_back("load");
        if (while_loading) while_loading();
    }
    void on_unload() override
    {
        log.push_back("unload");
        if (while_unloading) while_unloading();
    }
};

struct modal_forms : testing::Test {
    tests::scripted_shell shell;
    std::vector<std::string> log;
    recording_form dialog{log};

    void show(std::function<void()> steps = {})
    {
        shell.during(dialog, [this, steps] {
            log.push_back("shown");
            if (steps) steps();
        });
    }
};

using events = std::vector<std::string>;

TEST_F(modal_forms, are_loaded_shown_and_unloaded)
{
    show([&] {
        EXPECT_TRUE(dialog.is_open());
        EXPECT_NE(dialog.view(), nullptr);
    });
    EXPECT_EQ(log, (events{"load", "shown", "unload"}));
    EXPECT_FALSE(dialog.is_open());
    EXPECT_EQ(dialog.view(), nullptr);
}

TEST_F(modal_forms, run_their_load_handler_at_every_showing)
{
    show();
    show();
    EXPECT_EQ(log, (events{"load", "shown", "unload", "load", "shown", "unload"}));
}

TEST_F(modal_forms, are_closed_by_their_program)
{
    dialog.okcom.on_click = [&] { dialog.close(); };
    show([&] {
        dialog.okcom.click();
        EXPECT_FALSE(dialog.is_open());
    });
    EXPECT_EQ(log, (events{"load", "shown", "unload"})) << "closing twice unloads once";
}

TEST_F(modal_forms, closed_in_their_load_handler_are_not_shown_but_unloaded)
{
    dialog.while_loading = [&] { dialog.close(); };
    show();
    EXPECT_EQ(log, (events{"load", "unload"}));
    EXPECT_EQ(shell.dialogs_shown(), 0);
}

TEST_F(modal_forms, whose_load_handler_throws_are_not_shown_but_unloaded)
{
    dialog.while_loading = [] { throw std::runtime_error{"no text"}; };
    EXPECT_THROW(show(), std::runtime_error);
    EXPECT_EQ(log, (events{"load", "unload"}));
    EXPECT_EQ(shell.dialogs_shown(), 0);
    EXPECT_FALSE(dialog.is_open());
}

TEST_F(modal_forms, are_unloaded_when_a_handler_throws_and_the_error_comes_out)
{
    dialog.okcom.on_click = [] { throw std::runtime_error{"division by zero"}; };
    try {
        show([&] { dialog.okcom.click(); });
        ADD_FAILURE() << "the error was lost";
    } catch (const std::runtime_error& error) {
        EXPECT_STREQ(error.what(), "division by zero");
    }
    EXPECT_EQ(log, (events{"load", "shown", "unload"}));
    EXPECT_FALSE(dialog.is_open());
    EXPECT_EQ(dialog.view(), nullptr);
}

TEST_F(modal_forms, whose_unload_handler_throws_let_the_error_out_after_one_unload)
{
    dialog.while_unloading = [] { throw std::runtime_error{"cannot release"}; };
    EXPECT_THROW(show(), std::runtime_error);
    EXPECT_EQ(log, (events{"load", "shown", "unload"}));
}

TEST_F(modal_forms, press_the_cancel_button_when_the_person_leaves)
{
    dialog.exitcom.on_click = [&] { log.push_back("cancel"); };
    show([&] {
        dialog.ask_to_leave();
        EXPECT_TRUE(dialog.is_open()) << "the button decides";
        dialog.exitcom.enabled = false;
        dialog.ask_to_leave();
        EXPECT_TRUE(dialog.is_open());
    });
    EXPECT_EQ(log, (events{"load", "shown", "cancel", "unload"}));
}

TEST_F(modal_forms, without_a_cancel_button_close_when_the_person_leaves)
{
    dialog.has_buttons = false;
    show([&] {
        dialog.ask_to_leave();
        EXPECT_FALSE(dialog.is_open());
    });
}

TEST_F(modal_forms, press_the_default_button_when_the_person_accepts)
{
    dialog.okcom.on_click = [&] { log.push_back("ok"); };
    show([&] {
        dialog.accept();
        dialog.okcom.enabled = false;
        dialog.accept();
        EXPECT_TRUE(dialog.is_open());
    });
    EXPECT_EQ(log, (events{"load", "shown", "ok", "unload"}));
}

TEST_F(modal_forms, without_a_default_button_ignore_that_the_person_accepts)
{
    dialog.has_buttons = false;
    dialog.okcom.on_click = [&] { log.push_back("ok"); };
    show([&] {
        dialog.accept();
        EXPECT_TRUE(dialog.is_open());
    });
    EXPECT_EQ(log, (events{"load", "shown", "unload"}));
}

TEST_F(modal_forms, open_one_above_the_other)
{
    recording_form upper{log};
    show([&] {
        shell.during(upper, [&] { log.push_back("upper shown"); });
        log.push_back("lower again");
        EXPECT_TRUE(dialog.is_open());
        EXPECT_FALSE(upper.is_open());
    });
    EXPECT_EQ(log, (events{"load", "shown", "load", "upper shown", "unload", "lower again", "unload"}));
}

/// Notes the calls that a renderer gets.
struct noting_view final : form_view {
    events calls;
    void control_changed(control&) override { calls.push_back("control"); }
    void caption_changed() override { calls.push_back("caption"); }
    void beep() override { calls.push_back("beep"); }
    void closed() override { calls.push_back("closed"); }
};

TEST_F(modal_forms, tell_their_renderer_of_the_caption_and_the_end)
{
    noting_view view;
    dialog.caption("before anybody looks");
    dialog.load();
    dialog.show_on(&view);
    dialog.caption("Load A File To Buffer");
    EXPECT_EQ(dialog.caption(), "Load A File To Buffer");
    dialog.okcom.caption = "OK";
    dialog.close();
    dialog.close();
    EXPECT_EQ(view.calls, (events{"caption", "control", "closed"}));
}

}  // namespace
}  // namespace tamrix::forms
