#include "person.h"

#include <functional>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

using namespace tamrix;
using namespace tamrix::tests;

namespace {

class one_button final : public scripted_form {
public:
    forms::button go{*this};
    forms::timer clock{*this};

    one_button() { go.caption = "Go"; }
    forms::layout arrangement() override { return forms::column({go}); }
    forms::button* default_button() override { return &go; }
};

class dialogs : public testing::Test {
protected:
    wxui::wx_shell screen;
    one_button form;
};

std::string error_of(const std::function<void()>& action)
{
    try {
        action();
        return "none";
    } catch (const std::runtime_error& error) {
        return error.what();
    }
}

}  // namespace

TEST_F(dialogs, an_error_of_a_handler_closes_the_dialog_and_comes_out_of_it)
{
    form.go.on_click = [] { throw std::runtime_error{"from the handler"}; };
    bool open_after = true;
    const std::string error = error_of([&] {
        during(screen, form, [&] {
            press("Return");
            open_after = form.is_open();
        });
    });
    EXPECT_EQ(error, "from the handler");
    EXPECT_FALSE(open_after);
}

TEST_F(dialogs, an_error_of_a_timer_comes_out_too)
{
    form.clock.on_tick = [] { throw std::runtime_error{"from the timer"}; };
    form.clock.interval_ms = 10;
    form.clock.enabled = true;
    EXPECT_EQ(error_of([&] { during(screen, form, [&] { comes_true([&] { return !form.is_open(); }); }); }),
              "from the timer");
}

TEST_F(dialogs, an_error_passes_through_all_dialogs_that_stand_on_each_other)
{
    one_button inner;
    inner.go.on_click = [] { throw std::runtime_error{"from inside"}; };
    form.go.on_click = [&] { during(screen, inner, [] { press("Return"); }); };
    EXPECT_EQ(error_of([&] { during(screen, form, [] { press("Return"); }); }), "from inside");
    EXPECT_FALSE(form.is_open());
}

TEST_F(dialogs, a_form_can_be_shown_again)
{
    int clicks = 0;
    form.go.on_click = [&] { ++clicks; };
    for (int i = 0; i < 3; ++i) during(screen, form, [] { press("Return"); });
    EXPECT_EQ(clicks, 3);
}

TEST_F(dialogs, a_second_plug_in_of_the_process_shows_dialogs_after_the_first_went)
{
    int clicks = 0;
    form.go.on_click = [&] { ++clicks; };
    for (int i = 0; i < 2; ++i) {
        wxui::wx_shell own;
        during(own, form, [] { press("Return"); });
    }
    EXPECT_EQ(clicks, 2);
}

TEST_F(dialogs, a_timer_ticks_while_it_is_enabled_and_stands_still_after)
{
    int ticks = 0;
    form.clock.on_tick = [&] {
        if (++ticks == 3) form.clock.enabled = false;
    };
    form.clock.interval_ms = 10;
    form.clock.enabled = true;
    during(screen, form, [&] {
        EXPECT_TRUE(comes_true([&] { return ticks == 3; }));
        press("Shift_L");
        EXPECT_EQ(ticks, 3);
    });
}

TEST_F(dialogs, doevents_lets_a_timer_tick_while_a_handler_is_at_work)
{
    int ticks = 0;
    form.clock.on_tick = [&] { ++ticks; };
    form.clock.interval_ms = 5;
    form.go.on_click = [&] {
        form.clock.enabled = true;
        for (int i = 0; i < 1000 && ticks == 0; ++i) {
            std::this_thread::sleep_for(std::chrono::milliseconds{1});
            screen.doevents();
        }
        form.clock.enabled = false;
    };
    during(screen, form, [&] {
        press("Return");
        EXPECT_GE(ticks, 1);
    });
}

TEST_F(dialogs, a_box_answers_with_the_button_that_was_pressed)
{
    struct line {
        forms::buttons_of_box buttons;
        const char* keys;
        forms::answer expected;
    };
    using forms::answer;
    using forms::buttons_of_box;
    const line lines[] = {{buttons_of_box::ok, "Return", answer::ok},
                          {buttons_of_box::ok, "Escape", answer::ok},
                          {buttons_of_box::ok_cancel, "Return", answer::ok},
                          {buttons_of_box::ok_cancel, "Escape", answer::cancel},
                          {buttons_of_box::yes_no, "alt+y", answer::yes},
                          {buttons_of_box::yes_no, "alt+n", answer::no},
                          {buttons_of_box::retry_cancel, "alt+r", answer::retry},
                          {buttons_of_box::retry_cancel, "alt+c", answer::cancel},
                          {buttons_of_box::retry_cancel, "Escape", answer::cancel},
                          {buttons_of_box::abort_retry_ignore, "Return", answer::abort},
                          {buttons_of_box::abort_retry_ignore, "Escape", answer::abort},
                          {buttons_of_box::abort_retry_ignore, "alt+a", answer::abort},
                          {buttons_of_box::abort_retry_ignore, "alt+r", answer::retry},
                          {buttons_of_box::abort_retry_ignore, "alt+i", answer::ignore}};
    during(screen, form, [&] {
        for (const line& one : lines) {
            std::thread person{[&] {
                std::this_thread::sleep_for(std::chrono::milliseconds{600});
                const std::string command = std::string{"xdotool key "} + one.keys;
                EXPECT_EQ(std::system(command.c_str()), 0);
            }};
            EXPECT_EQ(screen.box({.text = "Delete Pattern?", .title = "Question", .buttons = one.buttons}),
                      one.expected)
                << one.keys;
            person.join();
        }
    });
}

TEST_F(dialogs, a_dialog_closed_by_its_program_ends_at_once)
{
    form.go.on_click = [&] { form.close(); };
    during(screen, form, [&] {
        press("Return");
        EXPECT_FALSE(form.is_open());
    });
}
