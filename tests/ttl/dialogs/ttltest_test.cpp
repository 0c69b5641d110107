// The dialog of the logic IC test: what both of its faces do. It opens, lists and finds devices, closes.
#include "ttl/dialogs/ttltest_fixture.h"

namespace tamrix::tests {
namespace {

TEST_F(ttltest_dialog, powers_up_when_it_opens)
{
    in_test_mode([](ttltest&) {});
    EXPECT_EQ(opening, (lines{"hwreset", "boardsel2 3 0", "setvcc 5000"}));
}

TEST_F(ttltest_dialog, selects_no_board_on_models_below_40)
{
    session.blocks.modeltype(0) = 39;
    in_test_mode([](ttltest&) {});
    EXPECT_EQ(opening, (lines{"hwreset", "setvcc 5000"}));
}

TEST_F(ttltest_dialog, goes_on_when_the_reset_at_opening_fails)
{
    programmer.resets = {1};
    in_test_mode([](ttltest& d) { EXPECT_TRUE(d.is_open()); });
    EXPECT_EQ(opening, (lines{"hwreset", "boardsel2 3 0", "setvcc 5000"}));
}

TEST_F(ttltest_dialog, touches_no_hardware_when_it_opens_without_one)
{
    variables.ttl.ok = bool16_false;
    session.hardware.source = {};
    in_test_mode([](ttltest& d) { EXPECT_EQ(d.List1.items().size(), 3U); });
    EXPECT_EQ(opening, lines{});
}

TEST_F(ttltest_dialog, lists_the_names_in_the_order_of_the_directory)
{
    in_test_mode([](ttltest& d) {
        EXPECT_EQ(d.List1.items(), (lines{"74PASS", "74FAIL", "4011"}));
        EXPECT_EQ(d.List1.index(), -1);
    });
}

TEST_F(ttltest_dialog, shows_the_total_of_the_directory_even_where_the_list_is_shorter)
{
    write_library({passing, cmos}, 0x1234);
    in_test_mode([](ttltest& d) {
        EXPECT_EQ(d.Label3.caption(), "Total:4660");
        EXPECT_LT(d.List1.items().size(), 4660U);
    });
}

TEST_F(ttltest_dialog, is_empty_without_a_library)
{
    session.syspath = folder.path("nowhere/");
    in_test_mode([](ttltest& d) {
        EXPECT_EQ(d.Label3.caption(), "Total:0");
        EXPECT_EQ(d.List1.items(), lines{});
    });
}

TEST_F(ttltest_dialog, begins_in_the_search_field)
{
    in_test_mode([](ttltest& d) { EXPECT_EQ(d.focused(), &d.Text1); });
}

TEST_F(ttltest_dialog, selects_a_name_once_it_is_typed_whole)
{
    in_test_mode([](ttltest& d) {
        d.Text1.type("74PAS");
        EXPECT_EQ(d.List1.index(), -1) << "a part of a name";
        d.Text1.type("S");
        EXPECT_EQ(d.List1.index(), 0);
        d.Text1.type("X");
        EXPECT_EQ(d.List1.index(), -1);
        EXPECT_EQ(d.Text1.text(), "74PASSX");
    });
}

TEST_F(ttltest_dialog, selects_nothing_for_a_name_in_lower_case)
{
    in_test_mode([](ttltest& d) {
        d.Text1.enter("74pass");
        EXPECT_EQ(d.List1.index(), -1);
    });
}

TEST_F(ttltest_dialog, selects_the_first_of_two_equal_names)
{
    write_library({passing, cmos, cmos});
    in_test_mode([](ttltest& d) {
        d.Text1.enter("4011");
        EXPECT_EQ(d.List1.index(), 1);
        d.Text1.enter("");
        d.List1.pick(2);
        EXPECT_EQ(d.List1.index(), 1) << "the search field takes the name and finds the first one";
    });
}

TEST_F(ttltest_dialog, shows_a_clicked_name_in_the_search_field)
{
    in_test_mode([](ttltest& d) {
        d.List1.pick(2);
        EXPECT_EQ(d.Text1.text(), "4011");
        EXPECT_EQ(d.List1.index(), 2);
    });
}

TEST_F(ttltest_dialog, does_nothing_on_enter_at_a_known_name)
{
    for (const std::uint8_t mode : {0, 1}) {
        open(mode, [this](ttltest& d) {
            d.Text1.enter("74PASS");
            d.Text1.press_enter();
            EXPECT_EQ(d.List1.index(), 0);
            EXPECT_EQ(calls(), lines{});
        });
    }
    EXPECT_TRUE(boxes().empty());
    EXPECT_EQ(shell.dialogs_shown(), 2) << "the two of this test";
}

TEST_F(ttltest_dialog, is_closed_by_cancel_and_by_escape)
{
    in_test_mode([](ttltest& d) {
        d.CancelButton.click();
        EXPECT_FALSE(d.is_open());
    });
    in_library([](ttltest& d) {
        d.ask_to_leave();
        EXPECT_FALSE(d.is_open());
    });
}

TEST_F(ttltest_dialog, tells_an_error_of_the_programmer_to_the_host)
{
    session.hardware.source = {};
    ttltest dialog{session, variables.ttl, variables.pld};
    EXPECT_THROW(shell.show_modal(dialog), hw::programmer_error);
    EXPECT_FALSE(dialog.is_open());
}

}  // namespace
}  // namespace tamrix::tests
