// The dialogs of the logic IC test on a real screen.
#include "logic_dialogs_fixture.h"

#include "ttl/dialogs/ttladd.h"
#include "ttl/dialogs/ttlautotest.h"
#include "ttl/dialogs/ttltest.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <wx/textctrl.h>

using namespace tamrix;
using namespace tamrix::tests;

TEST_F(logic_dialogs, the_test_finds_a_device_by_keyboard)
{
    ttltest test{session, variables.ttl, variables.pld};
    with(test, [&] {
        EXPECT_EQ(dialog().GetLabel(), "TTL & CMOS Test");
        EXPECT_EQ(list().GetCount(), 60U);
        type("7455");
        EXPECT_EQ(test.List1.index(), 55);
        EXPECT_EQ(list().GetSelection(), 55);
        EXPECT_GT(list().GetTopItem(), 0) << "the list goes there";
        press("Return");  // a known name: nothing happens
        EXPECT_TRUE(test.is_open());
        type("0");
        EXPECT_EQ(list().GetSelection(), wxNOT_FOUND);
        press("Escape");
        EXPECT_FALSE(test.is_open());
    });
}

TEST_F(logic_dialogs, a_click_in_the_list_shows_the_name_in_the_search_field)
{
    ttltest test{session, variables.ttl, variables.pld};
    with(test, [&] {
        click(list(), wxPoint{30, 30});
        EXPECT_GE(test.List1.index(), 0);
        EXPECT_EQ(shown_as(test.List1.text()).GetLabel(), "");
        press("Down");
        EXPECT_EQ(test.Text1.text(), test.List1.text());
    });
}

TEST_F(logic_dialogs, the_list_shows_as_selected_what_is_selected)
{
    ttltest test{session, variables.ttl, variables.pld};
    with(test, [&] {
        press("Tab");
        EXPECT_EQ(list().GetSelection(), test.List1.index());
        press("Down Down");
        EXPECT_EQ(list().GetSelection(), test.List1.index());
        EXPECT_EQ(test.Text1.text(), test.List1.text());
        press("Return");  // as a double click: there is no button for it here
        EXPECT_TRUE(test.is_open());
        press("shift+Tab");
        type("x");
        EXPECT_EQ(list().GetSelection(), wxNOT_FOUND);
        EXPECT_EQ(test.List1.index(), -1);
    });
}

TEST_F(logic_dialogs, the_library_loses_an_entry_of_its_list)
{
    variables.ttl.ttleditlib = 1;
    ttltest test{session, variables.ttl, variables.pld};
    with(test, [&] {
        EXPECT_EQ(dialog().GetLabel(), "Edit Pattern");
        shown_as("Add");
        shown_as("Del");
        type("7402");
        test.List1.remove(2);
        EXPECT_EQ(list().GetCount(), 59U);
        EXPECT_EQ(list().GetSelection(), wxNOT_FOUND);
    });
}

TEST_F(logic_dialogs, a_new_device_is_not_entered_by_escape_or_the_close_button)
{
    ttladd left_by_key{session, variables.ttl}, left_by_button{session, variables.ttl};
    with(left_by_key, [&] {
        press("Escape");
        EXPECT_FALSE(left_by_key.is_open());
    });
    with(left_by_button, [&] {
        EXPECT_TRUE(dialog().HasFlag(wxCLOSE_BOX));
        dialog().Close();
        EXPECT_FALSE(left_by_button.is_open());
    });
    EXPECT_FALSE(left_by_key.accepted());
    EXPECT_FALSE(left_by_button.accepted());
}

TEST_F(logic_dialogs, the_field_of_a_new_device_that_is_wrong_is_typed_over_after_the_box)
{
    ttladd ask{session, variables.ttl};
    variables.ttl.ttlname = "7499";
    with(ask, [&] {
        auto& pins = find<wxTextCtrl>(dialog(), 1);
        EXPECT_EQ(pins.GetToolTipText(), "An even number from 2 to 40");
        press("Tab");
        type("13");
        const wxWindow* const below = &dialog();
        const script_timer person{[&] {
            comes_true([&] { return &dialog() != below && static_cast<wxTopLevelWindow&>(dialog()).IsActive(); });
            press("shift");
            press("Return");
        }};
        ask.accept();
        EXPECT_TRUE(comes_true([&] { return pins.HasFocus() && pins.GetStringSelection() == "13"; }));
        type("14");
        press("Return");
        EXPECT_FALSE(ask.is_open());
    });
    EXPECT_EQ(variables.ttl.ttlpin, 14);
}

TEST_F(logic_dialogs, a_new_device_is_entered_by_keyboard)
{
    ttladd ask{session, variables.ttl};
    with(ask, [&] {
        EXPECT_EQ(dialog().GetLabel(), "New Pattern:");
        type("7499");
        press("Tab");
        type("14");
        press("Return");
        EXPECT_FALSE(ask.is_open());
    });
    EXPECT_EQ(variables.ttl.ttlname, "7499");
    EXPECT_EQ(variables.ttl.ttlpin, 14);
}

TEST_F(logic_dialogs, the_result_of_auto_find_is_closed_by_enter)
{
    variables.ttl.hits = {"7400", "74132"};
    ttlautotest result{session, variables.ttl};
    with(result, [&] {
        EXPECT_EQ(dialog().GetLabel(), "Auto Find Device Result");
        EXPECT_EQ(list().GetCount(), 2U);
        EXPECT_EQ(list().GetSelection(), wxNOT_FOUND);
        press("Return");
        EXPECT_FALSE(result.is_open());
    });
}

TEST_F(logic_dialogs, enter_in_a_list_is_the_default_button)
{
    variables.ttl.hits = {"7400", "74132"};
    ttlautotest result{session, variables.ttl};
    with(result, [&] {
        list().SetFocus();
        press("Return");
        EXPECT_FALSE(result.is_open());
    });
}
