// What each key does in the grid of the vector editor.
#include "ttl/dialogs/ttledit_fixture.h"

namespace tamrix {
namespace {

using tests::key;
using tests::lines;
using tests::place;
using tests::ttledit_keys;

TEST_F(ttledit_keys, left_goes_one_letter_and_not_into_the_row_number)
{
    EXPECT_EQ(after(3, {1, 8}, key::left), (place{1, 7}));
    EXPECT_EQ(after(3, {1, 7}, key::left), (place{1, 6}));
    EXPECT_EQ(after(3, {1, 6}, key::left), (place{1, 6}));
    EXPECT_EQ(after(3, {0, 6}, key::left), (place{0, 6}));
}

TEST_F(ttledit_keys, right_goes_one_letter_and_not_beyond_the_end_of_the_row)
{
    EXPECT_EQ(after(3, {1, 6}, key::right), (place{1, 7}));
    EXPECT_EQ(after(3, {1, 9}, key::right), (place{1, 10}));
    EXPECT_EQ(after(3, {1, 10}, key::right), (place{1, 10}));
    EXPECT_EQ(after(3, {2, 10}, key::right), (place{2, 10}));
}

TEST_F(ttledit_keys, up_stays_in_its_column_and_below_the_first_row)
{
    EXPECT_EQ(after(3, {2, 8}, key::up), (place{1, 8}));
    EXPECT_EQ(after(3, {0, 8}, key::up), (place{0, 8}));
}

TEST_F(ttledit_keys, down_stays_in_its_column_and_above_the_last_row)
{
    EXPECT_EQ(after(3, {1, 9}, key::down), (place{2, 9}));
    EXPECT_EQ(after(3, {2, 9}, key::down), (place{2, 9}));
    EXPECT_EQ(after(1, {0, 6}, key::down), (place{0, 6}));
}

TEST_F(ttledit_keys, page_up_goes_twelve_rows_or_none)
{
    EXPECT_EQ(after(30, {20, 7}, key::page_up), (place{8, 7}));
    EXPECT_EQ(after(30, {12, 7}, key::page_up), (place{0, 7}));
    EXPECT_EQ(after(30, {11, 7}, key::page_up), (place{11, 7}));
}

TEST_F(ttledit_keys, page_down_goes_twelve_rows_or_none)
{
    EXPECT_EQ(after(30, {5, 7}, key::page_down), (place{17, 7}));
    EXPECT_EQ(after(30, {17, 7}, key::page_down), (place{29, 7}));
    EXPECT_EQ(after(30, {18, 7}, key::page_down), (place{18, 7}));
}

TEST_F(ttledit_keys, home_goes_to_the_first_letter_of_the_first_row)
{
    EXPECT_EQ(after(3, {2, 9}, key::home), (place{0, 6}));
}

TEST_F(ttledit_keys, end_goes_to_the_start_of_the_last_row_and_takes_no_letter_there)
{
    EXPECT_EQ(after(3, {0, 7}, key::end), (place{2, 0}));
    device_of(3);
    edit([](ttledit& d) {
        const std::string before = d.Text1.text();
        press(d, key::end);
        type(d, "1");
        press(d, key::right);  // is at the end already
        type(d, "1");
        EXPECT_EQ(d.Text1.text(), before);
        EXPECT_EQ(d.Text1.selection_start(), 2 * 11);
    });
}

TEST_F(ttledit_keys, left_after_end_is_at_the_end_of_the_row_above)
{
    device_of(3);
    edit([](ttledit& d) {
        press(d, key::end);
        press(d, key::left);
        EXPECT_EQ((place{row_of(d), column_of(d)}), (place{1, 10}));
        press(d, key::left);
        type(d, "K");
        EXPECT_EQ(d.Text1.text(), "V0001 0000\nV0002 111K\nV0003 HHHH\n");
    });
}

TEST_F(ttledit_keys, left_after_end_of_the_only_row_leaves_its_number_alone)
{
    device_of(1);
    edit([](ttledit& d) {
        press(d, key::end);
        press(d, key::left);
        type(d, "111");
        EXPECT_EQ(d.Text1.text(), "V0001 0000\n");
    });
}

TEST_F(ttledit_keys, backspace_does_nothing) { EXPECT_EQ(after(3, {1, 8}, key::backspace), (place{1, 8})); }

TEST_F(ttledit_keys, insert_puts_the_copied_row_before_the_row_of_the_caret)
{
    device_of(3);
    edit([this](ttledit& d) {
        put_caret(d, 1, 9);
        press(d, key::insert);
        EXPECT_EQ(d.Text1.text(), "V0001 0000\nV0002 XXXX\nV0003 1111\nV0004 HHHH\n");
        EXPECT_EQ((place{row_of(d), column_of(d)}), (place{1, 6}));
        EXPECT_EQ(variables.ttl.ttlcnt, 5);
    });
}

TEST_F(ttledit_keys, enter_puts_the_copied_row_behind_the_row_of_the_caret)
{
    device_of(3);
    edit([this](ttledit& d) {
        put_caret(d, 1, 9);
        press(d, key::enter);
        EXPECT_EQ(d.Text1.text(), "V0001 0000\nV0002 1111\nV0003 XXXX\nV0004 HHHH\n");
        EXPECT_EQ((place{row_of(d), column_of(d)}), (place{2, 6}));
        EXPECT_EQ(variables.ttl.ttlcnt, 5);
    });
}

TEST_F(ttledit_keys, insert_and_enter_both_go_behind_the_last_row)
{
    for (const key pressed : {key::insert, key::enter}) {
        device_of(2);
        edit([&](ttledit& d) {
            put_caret(d, 1, 8);
            press(d, pressed);
            EXPECT_EQ(d.Text1.text(), "V0001 0000\nV0002 1111\nV0003 XXXX\n");
            EXPECT_EQ((place{row_of(d), column_of(d)}), (place{2, 6}));
            EXPECT_EQ(variables.ttl.ttlcnt, 4);
        });
    }
}

TEST_F(ttledit_keys, delete_takes_the_row_out)
{
    device_of(3);
    edit([this](ttledit& d) {
        put_caret(d, 1, 8);
        press(d, key::remove);
        EXPECT_EQ(d.Text1.text(), "V0001 0000\nV0002 HHHH\n");
        EXPECT_EQ((place{row_of(d), column_of(d)}), (place{1, 6}));
        EXPECT_EQ(variables.ttl.ttlcnt, 3);
    });
}

TEST_F(ttledit_keys, a_press_puts_the_caret_on_the_letter_under_the_mouse)
{
    device_of(3);
    edit([](ttledit& d) {
        d.Text1.press({8 * 120 + 100, 1 * 215 + 200}, 1 * 11 + 8);
        type(d, "K");
        EXPECT_EQ(d.Text1.text(), "V0001 0000\nV0002 11K1\nV0003 HHHH\n");
    });
}

TEST_F(ttledit_keys, a_press_where_the_caret_stands_already_still_tells_the_column)
{
    device_of(1);
    edit([](ttledit& d) {
        put_caret(d, 0, 10);
        d.Text1.press({60 * 120, 0}, 10);  // far beyond the row
        press(d, key::right);
        type(d, "1");
        EXPECT_EQ(d.Text1.text(), "V0001 0000\n");
        press(d, key::left);
        type(d, "1");
        EXPECT_EQ(d.Text1.text(), "V0001 0001\n");
    });
}

TEST_F(ttledit_keys, a_press_below_the_rows_means_the_last_one)
{
    device_of(2);
    edit([](ttledit& d) {
        put_caret(d, 1, 10);
        d.Text1.press({10 * 120, 40 * 215}, 1000);
        EXPECT_EQ(row_of(d), 1);
        d.Command2.click();
        EXPECT_EQ(d.Text1.text(), "V0001 0000\nV0002 1111\nV0003 XXXX\n");
        d.Text1.press({10 * 120, 40 * 215}, 1000);
        d.Command4.click();
        d.Text1.press({10 * 120, 40 * 215}, 1000);
        d.Command3.click();
        EXPECT_EQ(d.Text1.selected(), "1111");
    });
}

}  // namespace
}  // namespace tamrix
