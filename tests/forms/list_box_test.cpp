#include "forms/list_box.h"

#include "base/errors.h"
#include "forms/form.h"
#include "support/scripted_shell.h"

#include <gtest/gtest.h>

namespace tamrix::forms {
namespace {

struct list_form final : form {
    list_box List1{*this};
    layout arrangement() override { return List1; }
};

struct list_boxes : testing::Test {
    tests::scripted_shell shell;
    list_form dialog;
    list_box& list = dialog.List1;
    int clicks = 0;

    list_boxes()
    {
        list.items({"a", "b", "c"});
        list.on_click = [this] { ++clicks; };
    }
};

TEST_F(list_boxes, begin_without_a_selection)
{
    EXPECT_EQ(list.index(), -1);
    EXPECT_EQ(list.text(), "");
}

TEST_F(list_boxes, raise_a_click_where_the_program_changes_the_selection)
{
    list.index(1);
    EXPECT_EQ(list.text(), "b");
    EXPECT_EQ(clicks, 1);
    list.index(1);
    EXPECT_EQ(clicks, 1);
    list.index(-1);
    EXPECT_EQ(clicks, 2);
}

TEST_F(list_boxes, raise_a_click_each_time_a_person_picks)
{
    list.pick(2);
    list.pick(2);
    EXPECT_EQ(clicks, 2);
    list.enabled = false;
    list.pick(0);
    EXPECT_EQ(clicks, 2);
    EXPECT_EQ(list.text(), "c");
}

TEST_F(list_boxes, refuse_an_entry_that_is_not_there)
{
    EXPECT_THROW(list.index(3), subscript_error);
    EXPECT_THROW(list.index(-2), subscript_error);
    EXPECT_THROW(list.remove(3), subscript_error);
    EXPECT_THROW(list.remove(-1), subscript_error);
    EXPECT_EQ(list.index(), -1);
    EXPECT_EQ(list.items().size(), 3U);
}

TEST_F(list_boxes, keep_the_selection_on_its_entry_when_another_one_goes)
{
    list.index(1);
    list.remove(0);
    EXPECT_EQ(list.text(), "b");
    list.remove(1);
    EXPECT_EQ(list.text(), "b");
    list.remove(0);
    EXPECT_EQ(list.index(), -1);
    EXPECT_EQ(clicks, 1) << "taking out is no click";
}

TEST_F(list_boxes, keep_the_selection_in_a_longer_list_and_lose_it_in_one_that_is_too_short)
{
    list.index(2);
    list.items({"a", "b", "c", "d"});
    EXPECT_EQ(list.text(), "c");
    list.items({"a"});
    EXPECT_EQ(list.index(), -1);
}

TEST_F(list_boxes, tell_the_renderer_of_each_change)
{
    shell.during(dialog, [&] {
        list.index(1);
        list.remove(1);
        list.items({});
        EXPECT_EQ(shell.changes(list), 3);
    });
}

struct form_of_two_buttons final : form {
    button first{*this}, second{*this};
    layout arrangement() override { return column({first, second}); }
};

TEST(forms_focus, goes_where_the_program_hands_it_before_and_while_the_form_is_shown)
{
    form_of_two_buttons dialog;
    EXPECT_EQ(dialog.focused(), nullptr);
    dialog.focus(dialog.second);
    EXPECT_EQ(dialog.focused(), &dialog.second);
}

TEST(text_boxes_with_an_enter_key, raise_it_while_they_can_be_used)
{
    struct text_form final : form {
        text_box Text1{*this};
        layout arrangement() override { return Text1; }
    } dialog;
    int pressed = 0;
    dialog.Text1.press_enter();
    dialog.Text1.on_enter_key = [&] { ++pressed; };
    dialog.Text1.press_enter();
    dialog.Text1.enabled = false;
    dialog.Text1.press_enter();
    EXPECT_EQ(pressed, 1);
}

}  // namespace
}  // namespace tamrix::forms
