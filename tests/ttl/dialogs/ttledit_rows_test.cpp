// Rows of the vector editor: inserted, copied and deleted.
#include "ttl/dialogs/ttledit_fixture.h"

#include <random>
#include <string>

namespace tamrix {
namespace {

using tests::key;
using tests::lines;
using tests::ttledit_dialog;

TEST_F(ttledit_dialog, inserts_before_the_caret_by_its_button)
{
    device_of(2);
    edit([](ttledit& d) {
        d.Command2.click();
        EXPECT_EQ(d.Text1.text(), "V0001 XXXX\nV0002 0000\nV0003 1111\n");
        EXPECT_EQ(d.focused(), &d.Text1);
    });
    programmable_device(4, {"0000", "1111"});
    edit([](ttledit& d) {
        d.Command2.click();
        EXPECT_EQ(d.Text1.text(), "V0001 NNNN\nV0002 0000\nV0003 1111\n");
    });
}

TEST_F(ttledit_dialog, copies_the_row_of_the_caret_for_the_next_insert)
{
    device_of(3);
    edit([](ttledit& d) {
        put_caret(d, 1, 8);
        d.Command3.click();
        EXPECT_EQ(d.Text1.selected(), "1111");
        EXPECT_EQ(row_of(d), 1);
        press(d, key::enter);
        press(d, key::enter);
        EXPECT_EQ(d.Text1.text(), "V0001 0000\nV0002 1111\nV0003 1111\nV0004 1111\nV0005 HHHH\n");
    });
}

TEST_F(ttledit_dialog, inserts_an_empty_row_again_when_it_is_opened_anew)
{
    device_of(2);
    edit([](ttledit& d) { d.Command3.click(); });
    edit([](ttledit& d) {
        d.Command2.click();
        EXPECT_EQ(d.Text1.text().substr(0, 11), "V0001 XXXX\n");
    });
}

TEST_F(ttledit_dialog, deletes_the_last_row_and_goes_one_up)
{
    device_of(3);
    edit([this](ttledit& d) {
        put_caret(d, 2, 8);
        d.Command4.click();
        EXPECT_EQ(d.Text1.text(), "V0001 0000\nV0002 1111\n");
        EXPECT_EQ(row_of(d), 1);
        EXPECT_EQ(column_of(d), 6);
        EXPECT_EQ(variables.ttl.ttlcnt, 3);
    });
}

TEST_F(ttledit_dialog, leaves_dots_in_place_of_the_only_row_and_saves_nothing_then)
{
    const std::string before = library();
    device_of(1);
    edit([this](ttledit& d) {
        d.Command4.click();
        EXPECT_EQ(d.Text1.text(), "V0001 ....\n");
        EXPECT_EQ(variables.ttl.ttlcnt, 2);
        EXPECT_EQ(d.Text1.selection_start(), 6);
        d.OKButton.click();
        EXPECT_FALSE(d.is_open());
    });
    EXPECT_EQ(library(), before);
    EXPECT_TRUE(boxes().empty());
}

TEST_F(ttledit_dialog, has_its_rows_back_after_insert_and_cut)
{
    for (const int row : {0, 1, 2}) {
        device_of(3);
        edit([&](ttledit& d) {
            const std::string before = d.Text1.text();
            put_caret(d, row, 6);
            d.Command2.click();
            EXPECT_EQ(variables.ttl.ttlcnt, 5);
            d.Command4.click();
            EXPECT_EQ(d.Text1.text(), before);
            EXPECT_EQ(variables.ttl.ttlcnt, 4);
        });
    }
}

TEST_F(ttledit_dialog, keeps_its_row_numbers_consecutive_whatever_is_done)
{
    device_of(5);
    std::mt19937 random{5};
    edit([&](ttledit& d) {
        int rows = 5;
        for (int turn = 0; turn < 2000; ++turn) {
            put_caret(d, static_cast<int>(random() % static_cast<unsigned>(rows)), 6);
            const auto act = random() % 4;
            if (act == 0) press(d, key::insert);
            if (act == 1) press(d, key::enter);
            if (act < 2) ++rows;
            if (act == 2) d.Command3.click();
            if (act == 3) press(d, key::remove, 1);
            if (act == 3 && rows > 1) --rows;
            ASSERT_EQ(variables.ttl.ttlcnt, rows + 1);
            ASSERT_EQ(d.Text1.text().size(), static_cast<std::size_t>(rows) * 11);
        }
        for (int row = 0; row < rows; ++row) {
            const std::string number = std::to_string(row + 1);
            ASSERT_EQ(d.Text1.text().substr(static_cast<std::size_t>(row) * 11, 6),
                      "V" + std::string(4 - number.size(), '0') + number + " ");
        }
    });
}

TEST_F(ttledit_dialog, renumbers_across_a_hundred_rows)
{
    device_of(120);
    edit([](ttledit& d) {
        d.Command2.click();
        EXPECT_EQ(d.Text1.text().substr(120 * 11, 5), "V0121");
        d.Command4.click();
        EXPECT_EQ(d.Text1.text().substr(119 * 11), "V0120 XXXX\n");
    });
}

}  // namespace
}  // namespace tamrix
