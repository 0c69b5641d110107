#include "forms/controls.h"

#include "base/errors.h"
#include "support/scripted_shell.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tamrix::forms {
namespace {

struct sample_form final : form {
    button Command1{*this};
    text_box Text1{*this};
    combo_box Combo1{*this};
    option_group Option1{*this, 3};
    progress_bar ProgressBar1{*this};
    label Label1{*this};

    layout arrangement() override { return column({Text1, Combo1, Command1}); }
};

struct controls : testing::Test {
    tests::scripted_shell shell;
    sample_form dialog;
    std::vector<std::string> events;

    void note(const std::string& event) { events.push_back(event); }
    void listen_to_everything()
    {
        dialog.Command1.on_click = [this] { note("button"); };
        dialog.Text1.on_change = [this] { note("change " + dialog.Text1.text()); };
        dialog.Text1.on_leave = [this] { note("leave"); };
        dialog.Combo1.on_click = [this] { note("combo " + std::to_string(dialog.Combo1.index())); };
        dialog.Option1.on_click = [this](int index) { note("option " + std::to_string(index)); };
    }
    void use_everything_as_a_person()
    {
        dialog.Command1.click();
        dialog.Text1.type("typed");
        dialog.Text1.enter("entered");
        dialog.Text1.leave();
        dialog.Combo1.pick(1);
        dialog.Option1(2).click();
    }
    std::vector<control*> everything() { return {&dialog.Command1, &dialog.Text1, &dialog.Combo1, &dialog.Option1(2)}; }
};

using events_of = std::vector<std::string>;

TEST_F(controls, do_what_a_person_asks)
{
    dialog.Combo1.items = {"a", "b"};
    listen_to_everything();
    use_everything_as_a_person();
    EXPECT_EQ(events, (events_of{"button", "change typed", "change entered", "leave", "combo 1", "option 2"}));
}

TEST_F(controls, do_nothing_for_a_person_while_they_are_disabled)
{
    dialog.Combo1.items = {"a", "b"};
    listen_to_everything();
    for (control* one : everything()) one->enabled = false;
    use_everything_as_a_person();
    EXPECT_EQ(events, events_of{});
    EXPECT_EQ(dialog.Text1.text(), "");
    EXPECT_EQ(dialog.Combo1.index(), -1);
    EXPECT_EQ(dialog.Option1.selected(), -1);
}

TEST_F(controls, do_nothing_for_a_person_while_they_are_hidden)
{
    dialog.Combo1.items = {"a", "b"};
    listen_to_everything();
    for (control* one : everything()) one->visible = false;
    use_everything_as_a_person();
    EXPECT_EQ(events, events_of{});
    EXPECT_EQ(dialog.Text1.text(), "");
    EXPECT_EQ(dialog.Combo1.index(), -1);
    EXPECT_EQ(dialog.Option1.selected(), -1);
}

TEST_F(controls, obey_the_program_while_they_are_disabled)
{
    dialog.Combo1.items = {"a", "b"};
    listen_to_everything();
    for (control* one : everything()) one->enabled = false;
    dialog.Text1.text("set");
    dialog.Combo1.index(1);
    dialog.Option1(2).select();
    EXPECT_EQ(events, (events_of{"change set", "combo 1", "option 2"}));
}

TEST_F(controls, without_a_handler_take_a_persons_input_all_the_same)
{
    dialog.Combo1.items = {"a", "b"};
    use_everything_as_a_person();
    EXPECT_EQ(dialog.Text1.text(), "entered");
    EXPECT_EQ(dialog.Combo1.index(), 1);
    EXPECT_EQ(dialog.Option1.selected(), 2);
}

TEST_F(controls, stand_in_the_form_in_the_order_of_their_declaration)
{
    const std::vector<control*> expected{&dialog.Command1,     &dialog.Text1,      &dialog.Combo1,
                                         &dialog.Option1(0),   &dialog.Option1(1), &dialog.Option1(2),
                                         &dialog.ProgressBar1, &dialog.Label1};
    EXPECT_EQ(dialog.controls(), expected);
    EXPECT_EQ(&dialog.Option1(1).owner(), &dialog);
}

TEST_F(controls, tell_the_renderer_only_of_values_that_differ)
{
    shell.during(dialog, [&] {
        dialog.Label1.caption = "a.hex";
        dialog.Label1.caption = "a.hex";
        EXPECT_EQ(shell.changes(dialog.Label1), 1);
        dialog.ProgressBar1.value = 50.0;
        dialog.ProgressBar1.value = 50.0;
        dialog.ProgressBar1.value = 100.0;
        EXPECT_EQ(shell.progress(), (std::vector<double>{50, 100}));
        dialog.Text1.enabled = false;
        dialog.Text1.text("x");
        EXPECT_EQ(shell.changes(dialog.Text1), 2);
    });
    dialog.Label1.caption = "nobody looks";
    EXPECT_EQ(shell.changes(dialog.Label1), 1);
}

TEST_F(controls, an_option_selected_by_the_program_raises_its_click)
{
    listen_to_everything();
    dialog.Option1(1).select();
    EXPECT_EQ(events, events_of{"option 1"});
    EXPECT_EQ(dialog.Option1.selected(), 1);
}

TEST_F(controls, an_option_that_is_selected_already_raises_nothing)
{
    dialog.Option1(1).select();
    listen_to_everything();
    dialog.Option1(1).select();
    dialog.Option1(1).click();
    EXPECT_EQ(events, events_of{});
}

TEST_F(controls, selecting_an_option_clears_the_others_of_its_group)
{
    EXPECT_EQ(dialog.Option1.selected(), -1);
    for (int i = 0; i < 3; ++i) EXPECT_FALSE(dialog.Option1(i).value());
    shell.during(dialog, [&] {
        dialog.Option1(0).click();
        dialog.Option1(2).click();
        EXPECT_FALSE(dialog.Option1(0).value());
        EXPECT_FALSE(dialog.Option1(1).value());
        EXPECT_TRUE(dialog.Option1(2).value());
        EXPECT_EQ(shell.changes(dialog.Option1(0)), 2);
        EXPECT_EQ(shell.changes(dialog.Option1(1)), 0);
        EXPECT_EQ(shell.changes(dialog.Option1(2)), 1);
    });
}

TEST_F(controls, an_option_that_does_not_exist_is_refused)
{
    EXPECT_EQ(dialog.Option1.count(), 3);
    EXPECT_THROW(dialog.Option1(3), subscript_error);
    EXPECT_THROW(dialog.Option1(-1), subscript_error);
}

TEST_F(controls, a_combo_shows_nothing_until_an_entry_is_chosen)
{
    dialog.Combo1.items = {"Normal", "Even", "Odd"};
    EXPECT_EQ(dialog.Combo1.index(), -1);
    listen_to_everything();
    dialog.Combo1.index(0);
    dialog.Combo1.pick(2);
    EXPECT_EQ(events, (events_of{"combo 0", "combo 2"}));
}

TEST_F(controls, a_combo_raises_its_click_only_where_the_entry_changes)
{
    dialog.Combo1.items = {"a", "b"};
    dialog.Combo1.index(1);
    listen_to_everything();
    dialog.Combo1.index(1);
    dialog.Combo1.pick(1);
    EXPECT_EQ(events, events_of{});
    dialog.Combo1.index(-1);
    EXPECT_EQ(events, events_of{"combo -1"});
}

TEST_F(controls, a_combo_refuses_an_entry_outside_its_list_and_keeps_the_old_one)
{
    EXPECT_THROW(dialog.Combo1.index(0), subscript_error) << "the list is empty";
    dialog.Combo1.items = {"a", "b"};
    dialog.Combo1.index(1);
    EXPECT_THROW(dialog.Combo1.index(2), subscript_error);
    EXPECT_THROW(dialog.Combo1.index(-2), subscript_error);
    EXPECT_THROW(dialog.Combo1.pick(2), subscript_error);
    EXPECT_EQ(dialog.Combo1.index(), 1);
}

TEST_F(controls, an_error_of_a_handler_comes_out_of_the_click)
{
    dialog.Command1.on_click = [] { throw subscript_error{"outside"}; };
    EXPECT_THROW(dialog.Command1.click(), subscript_error);
}

}  // namespace
}  // namespace tamrix::forms
