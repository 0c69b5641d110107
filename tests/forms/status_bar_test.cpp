#include "forms/status_bar.h"

#include "base/errors.h"
#include "forms/form.h"
#include "support/scripted_shell.h"

#include <gtest/gtest.h>

namespace tamrix::forms {
namespace {

struct status_form final : form {
    status_bar StatusBar1{*this, 2};
    layout arrangement() override { return StatusBar1; }
};

TEST(a_status_bar, has_its_panels_in_one_row_unless_it_is_told_otherwise)
{
    struct two_rows final : form {
        status_bar one{*this, 3}, two{*this, 5, 2};
        layout arrangement() override { return column({one, two}); }
    } shown;
    EXPECT_EQ(shown.one.in_first_row(), 3);
    EXPECT_EQ(shown.two.in_first_row(), 2);
    EXPECT_EQ(shown.two.panels(), 5);
}

TEST(status_panels, are_numbered_from_1)
{
    status_form dialog;
    dialog.StatusBar1.text(1, "Status:");
    dialog.StatusBar1.text(2, "Rec.Time:");
    EXPECT_EQ(dialog.StatusBar1.panels(), 2);
    EXPECT_EQ(dialog.StatusBar1.text(1), "Status:");
    EXPECT_EQ(dialog.StatusBar1.text(2), "Rec.Time:");
}

TEST(status_panels, that_do_not_exist_are_refused)
{
    status_form dialog;
    EXPECT_THROW(dialog.StatusBar1.text(0), subscript_error);
    EXPECT_THROW(dialog.StatusBar1.text(3, "x"), subscript_error);
}

TEST(status_panels, tell_the_renderer_only_of_a_text_that_differs)
{
    status_form dialog;
    tests::scripted_shell shell;
    shell.during(dialog, [&] {
        dialog.StatusBar1.text(1, "Record....");
        dialog.StatusBar1.text(1, "Record....");
        EXPECT_EQ(shell.changes(dialog.StatusBar1), 1);
    });
}

}  // namespace
}  // namespace tamrix::forms
