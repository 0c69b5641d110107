// The letters that the grid of the vector editor takes.
#include "ttl/dialogs/ttledit_fixture.h"

#include <string>
#include <string_view>

namespace tamrix {
namespace {

using tests::place;
using tests::ttledit_keys;

TEST_F(ttledit_keys, every_letter_of_the_library_is_taken_in_either_case_as_a_capital)
{
    device("7400", 18, {std::string(18, '.')});
    edit([](ttledit& d) {
        type(d, "01HLXCKGVhlxckgv");
        EXPECT_EQ(d.Text1.text(), "V0001 01HLXCKGVHLXCKGV..\n");
        EXPECT_EQ(column_of(d), 22);
        type(d, "NZnz");
        EXPECT_EQ(d.Text1.text(), "V0001 01HLXCKGVHLXCKGV..\n");
    });
    EXPECT_EQ(shell.beeps(), 4);
}

TEST_F(ttledit_keys, every_letter_of_a_programmable_device_is_taken_in_either_case_as_a_capital)
{
    programmable_device(18, {std::string(18, 'N')});
    edit([](ttledit& d) {
        type(d, "01HLXCKNZhlxcknz");
        EXPECT_EQ(d.Text1.text(), "V0001 01HLXCKNZHLXCKNZNN\n");
        type(d, "GVgv");
        EXPECT_EQ(column_of(d), 22);
    });
    EXPECT_EQ(shell.beeps(), 4);
}

TEST_F(ttledit_keys, any_other_character_beeps_and_changes_nothing)
{
    device_of(1);
    edit([](ttledit& d) {
        for (char32_t letter = U' '; letter < 0x250; ++letter) {
            constexpr std::u32string_view taken = U"01HLXCKGVhlxckgv";
            if (taken.find(letter) == taken.npos) d.Text1.type(letter);
        }
        d.Text1.type(U'电');
        EXPECT_EQ(d.Text1.text(), "V0001 0000\n");
        EXPECT_EQ(column_of(d), 6);
    });
    EXPECT_EQ(shell.beeps(), 0x250 - 0x20 - 16 + 1);
}

TEST_F(ttledit_keys, a_letter_overwrites_and_the_caret_goes_on)
{
    device_of(2);
    edit([](ttledit& d) {
        put_caret(d, 1, 7);
        type(d, "cK");
        EXPECT_EQ(d.Text1.text(), "V0001 0000\nV0002 1CK1\n");
        EXPECT_EQ((place{row_of(d), column_of(d)}), (place{1, 9}));
    });
}

TEST_F(ttledit_keys, the_last_column_takes_a_letter_and_what_follows_is_dropped_in_silence)
{
    device_of(2);
    edit([](ttledit& d) {
        put_caret(d, 0, 9);
        type(d, "LHH1");
        EXPECT_EQ(d.Text1.text(), "V0001 000L\nV0002 1111\n");
        EXPECT_EQ((place{row_of(d), column_of(d)}), (place{0, 10}));
    });
    EXPECT_EQ(shell.beeps(), 0);
}

TEST_F(ttledit_keys, a_letter_on_the_row_number_is_dropped_in_silence)
{
    device_of(2);
    edit([](ttledit& d) {
        for (int column = 0; column < 6; ++column) {
            put_caret(d, 1, column);
            type(d, "1");
        }
        EXPECT_EQ(d.Text1.text(), "V0001 0000\nV0002 1111\n");
    });
    EXPECT_EQ(shell.beeps(), 0);
}

TEST_F(ttledit_keys, a_letter_over_a_selection_replaces_its_first_letter_only)
{
    device_of(2);
    edit([](ttledit& d) {
        put_caret(d, 1, 6);
        d.Command3.click();
        ASSERT_EQ(d.Text1.selected(), "1111");
        type(d, "L");
        EXPECT_EQ(d.Text1.text(), "V0001 0000\nV0002 L111\n");
    });
}

}  // namespace
}  // namespace tamrix
