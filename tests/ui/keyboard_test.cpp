#include "person.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <wx/textctrl.h>

using namespace tamrix;
using namespace tamrix::tests;

namespace {

/// Two boxes, a list, two groups of options side by side, two buttons.
class sample final : public scripted_form {
public:
    forms::label name_label{*this}, address_label{*this}, mode_label{*this};
    forms::text_box name{*this}, address{*this};
    forms::combo_box mode{*this};
    forms::option_group size{*this, 3}, colour{*this, 2};
    forms::button accept_button{*this}, leave_button{*this};
    std::vector<std::string> events;

    sample()
    {
        name_label.caption = "&Name:";
        address_label.caption = "      Address(HEX):";
        mode_label.caption = "Mode:";
        name.text("first");
        address.text("0");
        mode.items = {"Normal", "Even", "Odd"};
        mode.index(0);
        for (int i = 0; i < 3; ++i) size(i).caption = "size " + std::to_string(i);
        for (int i = 0; i < 2; ++i) colour(i).caption = "colour " + std::to_string(i);
        size(1).select();
        accept_button.caption = "OK";
        leave_button.caption = "&Cancel";
        address.accepts = [](char32_t key) { return key == 8 || (key < 128 && std::isxdigit(static_cast<int>(key))); };
        address.on_leave = [this] { events.push_back("left " + address.text()); };
        accept_button.on_click = [this] { events.emplace_back("accepted"); };
        leave_button.on_click = [this] {
            events.emplace_back("cancelled");
            if (may_leave) close();
        };
        size.on_click = [this](int index) { events.push_back("size " + std::to_string(index)); };
        colour.on_click = [this](int index) { events.push_back("colour " + std::to_string(index)); };
    }

    bool may_leave = true;

    forms::layout arrangement() override
    {
        using namespace forms;
        return column({fields({name_label, name, address_label, address, mode_label, mode}),
                       row({column({size(0), size(1), size(2)}), column({colour(0), colour(1)})}),
                       buttons({accept_button, leave_button})});
    }
    forms::button* default_button() override { return &accept_button; }
    forms::button* cancel_button() override { return &leave_button; }
};

using events = std::vector<std::string>;

class keyboard : public testing::Test {
protected:
    wxui::wx_shell screen;
    sample form;
};

}  // namespace

TEST_F(keyboard, tab_goes_through_the_controls_in_reading_order)
{
    form.colour(0).select();
    during(screen, form, [] {
        events path{focused()};
        for (int i = 0; i < 6; ++i) {
            press("Tab");
            path.push_back(focused());
        }
        // A group of options is one stop; the buttons are in the platform's order.
        EXPECT_EQ(path, (events{"first", "0", "a list", "size 1", "colour 0", "Cancel", "OK"}));
        press("shift+Tab");
        EXPECT_EQ(focused(), "Cancel");
    });
}

TEST_F(keyboard, enter_is_the_default_button)
{
    during(screen, form, [&] {
        press("Return");
        EXPECT_EQ(form.events, events{"accepted"});
        EXPECT_TRUE(form.is_open());
    });
}

TEST_F(keyboard, enter_in_a_box_leaves_the_box_before_it_accepts)
{
    during(screen, form, [&] {
        press("Tab");
        type("1f");
        press("Return");
        EXPECT_EQ(form.events, (events{"left 1f", "accepted"}));
    });
}

TEST_F(keyboard, enter_on_another_button_presses_that_one)
{
    during(screen, form, [&] {
        press("shift+Tab shift+Tab");
        ASSERT_EQ(focused(), "Cancel");
        press("Return");
        EXPECT_EQ(form.events, events{"cancelled"});
        EXPECT_FALSE(form.is_open());
    });
}

TEST_F(keyboard, escape_is_the_cancel_button)
{
    during(screen, form, [&] {
        press("Escape");
        EXPECT_EQ(form.events, events{"cancelled"});
        EXPECT_FALSE(form.is_open());
    });
}

TEST_F(keyboard, the_close_button_of_the_window_is_the_cancel_button)
{
    during(screen, form, [&] {
        dialog().Close();
        EXPECT_EQ(form.events, events{"cancelled"});
        EXPECT_FALSE(form.is_open());
    });
}

TEST_F(keyboard, a_form_that_does_not_want_to_close_stays_open)
{
    form.may_leave = false;
    during(screen, form, [&] {
        press("Escape");
        dialog().Close();
        EXPECT_EQ(form.events, (events{"cancelled", "cancelled"}));
        EXPECT_TRUE(form.is_open());
        EXPECT_TRUE(dialog().IsShown());
    });
}

TEST_F(keyboard, a_mnemonic_presses_its_button)
{
    during(screen, form, [&] {
        press("alt+c");
        EXPECT_TRUE(comes_true([&] { return !form.is_open(); }));
        EXPECT_EQ(form.events, events{"cancelled"});
    });
}

TEST_F(keyboard, a_mnemonic_of_a_label_leads_to_the_field_behind_it)
{
    during(screen, form, [&] {
        press("Tab Tab");
        ASSERT_EQ(focused(), "a list");
        press("alt+n");
        EXPECT_EQ(focused(), "first");
    });
}

TEST_F(keyboard, arrows_choose_within_a_group_of_options)
{
    during(screen, form, [&] {
        press("Tab Tab Tab");
        ASSERT_EQ(focused(), "size 1");
        press("Down");
        EXPECT_EQ(focused(), "size 2");
        EXPECT_EQ(form.size.selected(), 2);
        press("Up Up");
        EXPECT_EQ(form.size.selected(), 0);
        EXPECT_EQ(form.colour.selected(), -1);
        EXPECT_EQ(form.events.back(), "size 0");
    });
}

TEST_F(keyboard, the_blank_bar_chooses_the_first_option_of_a_group_without_a_choice)
{
    during(screen, form, [&] {
        press("Tab Tab Tab Tab");
        ASSERT_EQ(focused(), "colour 0");
        EXPECT_EQ(form.colour.selected(), -1);
        press("space");
        EXPECT_EQ(form.colour.selected(), 0);
        EXPECT_EQ(form.size.selected(), 1);
    });
}

TEST_F(keyboard, arrows_choose_from_a_list)
{
    during(screen, form, [&] {
        press("Tab Tab");
        press("space");  // opens it
        press("Down Return");
        EXPECT_EQ(form.mode.index(), 1);
        EXPECT_TRUE(form.is_open());
        press("space");
        press("Escape");  // closes the list, not the dialog
        EXPECT_TRUE(form.is_open());
        EXPECT_EQ(form.mode.index(), 1);
    });
}

TEST_F(keyboard, letters_that_a_box_does_not_take_are_dropped)
{
    during(screen, form, [&] {
        press("Tab");
        type("1xg2 F-");
        EXPECT_EQ(form.address.text(), "12F");
        EXPECT_EQ(focused(), "12F");
        press("BackSpace Left");
        type("z9");
        EXPECT_EQ(form.address.text(), "192");
        EXPECT_EQ(focused(), "192");
    });
}

TEST_F(keyboard, what_a_box_does_not_take_of_a_pasted_text_is_dropped)
{
    during(screen, form, [&] {
        press("Tab");
        copy("0x1F, or\n20h");
        press("ctrl+v");
        EXPECT_EQ(form.address.text(), "01F20");
        EXPECT_EQ(focused(), "01F20");
    });
}

TEST_F(keyboard, a_box_tells_when_the_keyboard_leaves_it)
{
    during(screen, form, [&] {
        press("Tab");
        EXPECT_EQ(form.events, events{});
        type("2");
        press("Tab");
        EXPECT_EQ(form.events, events{"left 2"});
    });
}

TEST_F(keyboard, disabled_and_hidden_controls_are_passed_over)
{
    form.address.enabled = false;
    form.mode.visible = false;
    during(screen, form, [&] {
        press("Tab");
        EXPECT_EQ(focused(), "size 1");
    });
}
