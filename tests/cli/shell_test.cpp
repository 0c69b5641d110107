#include "cli/shell.h"

#include <optional>

#include <gtest/gtest.h>

namespace tamrix::cli {

namespace {

struct question final : forms::form {
    forms::button okcom{*this}, exitcom{*this};
    int confirmed = 0, cancelled = 0;

    question()
    {
        okcom.on_click = [this] {
            ++confirmed;
            close();
        };
        exitcom.on_click = [this] {
            ++cancelled;
            close();
        };
    }
    forms::layout arrangement() override { return forms::buttons({okcom, exitcom}); }
    forms::button* default_button() override { return &okcom; }
    forms::button* cancel_button() override { return &exitcom; }
};

}  // namespace

TEST(cli_shell, the_person_answers_a_dialog)
{
    shell screen;
    question dialog;
    screen.person = [](forms::form& shown) { shown.accept(); };
    screen.show_modal(dialog);
    EXPECT_EQ(dialog.confirmed, 1);
    EXPECT_EQ(dialog.cancelled, 0);
    EXPECT_FALSE(dialog.is_open());
}

TEST(cli_shell, a_dialog_that_is_left_open_is_cancelled)
{
    shell screen;
    question dialog;
    screen.person = [](forms::form&) {};
    screen.show_modal(dialog);
    EXPECT_EQ(dialog.confirmed, 0);
    EXPECT_EQ(dialog.cancelled, 1);
}

TEST(cli_shell, a_dialog_without_a_person_is_cancelled)
{
    shell screen;
    question dialog;
    screen.show_modal(dialog);
    EXPECT_EQ(dialog.cancelled, 1);
}

TEST(cli_shell, boxes_are_kept_in_their_order)
{
    shell screen;
    screen.box({.text = "one"});
    screen.box({.text = "two", .title = "Warning"});
    ASSERT_EQ(screen.boxes().size(), 2u);
    EXPECT_EQ(screen.boxes()[0].text, "one");
    EXPECT_EQ(screen.boxes()[1].title, "Warning");
}

TEST(cli_shell, nobody_names_a_file_or_a_printer)
{
    shell screen;
    bool drawn = false;
    EXPECT_EQ(screen.open_file({.title = "Load File"}), std::nullopt);
    EXPECT_EQ(screen.save_file({.title = "Save"}), std::nullopt);
    EXPECT_EQ(screen.print({.title = "page", .draw = [&](forms::page&) { drawn = true; }}),
              forms::print_end::cancelled);
    EXPECT_FALSE(drawn);
}

TEST(cli_shell, a_question_gets_the_answer_that_changes_the_least)
{
    using forms::answer;
    using enum forms::buttons_of_box;
    shell screen;
    EXPECT_EQ(screen.box({.text = "told", .buttons = ok}), answer::ok);
    EXPECT_EQ(screen.box({.text = "go on?", .buttons = ok_cancel}), answer::cancel);
    EXPECT_EQ(screen.box({.text = "delete?", .buttons = yes_no}), answer::no);
    EXPECT_EQ(screen.box({.text = "again?", .buttons = retry_cancel}), answer::cancel);
    EXPECT_EQ(screen.box({.text = "it fails", .buttons = abort_retry_ignore}), answer::abort);
}

TEST(cli_shell, the_clock_does_not_go_back)
{
    shell screen;
    double last = screen.seconds();
    for (int i = 0; i < 1000; ++i) {
        const double now = screen.seconds();
        ASSERT_GE(now, last);
        last = now;
    }
}

}  // namespace tamrix::cli
