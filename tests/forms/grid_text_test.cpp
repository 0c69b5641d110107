#include "forms/grid_text.h"

#include "forms/form.h"

#include <gtest/gtest.h>

#include <vector>

namespace tamrix::forms {
namespace {

struct grid_form final : form {
    grid_text Text1{*this};
    layout arrangement() override { return Text1; }
};

struct grid_texts : testing::Test {
    grid_form dialog;
    grid_text& grid = dialog.Text1;
    int selections = 0;

    grid_texts()
    {
        grid.text("first\nsecond\nx\nfourth\n");  // lines begin at 0, 6, 13, 15; the last feed is at 21
        grid.on_select = [this] { ++selections; };
    }
    int after(int start, grid_key key)
    {
        grid.select(start);
        grid.key_down(key);
        return grid.selection_start();
    }
    void type(std::string_view letters)
    {
        for (const char letter : letters) grid.type(static_cast<char32_t>(letter));
    }
};

TEST_F(grid_texts, hold_the_selection_within_the_text)
{
    grid.select(-5, 3);
    EXPECT_EQ(grid.selection_start(), 0);
    grid.select(20, 100);
    EXPECT_EQ(grid.selection_length(), 2);
    EXPECT_EQ(grid.selected(), "h\n");
    grid.select(1000, -7);
    EXPECT_EQ(grid.selection_start(), 22);
    EXPECT_EQ(grid.selection_length(), 0);
}

TEST_F(grid_texts, raise_a_selection_only_where_it_differs)
{
    grid.select(0);
    EXPECT_EQ(selections, 0);
    grid.select(3);
    grid.select(3);
    EXPECT_EQ(selections, 1);
    grid.select(3, 1);
    EXPECT_EQ(selections, 2);
}

TEST_F(grid_texts, keep_the_selection_when_the_text_is_replaced_as_far_as_it_reaches)
{
    grid.select(4, 4);
    grid.text("abcdef");
    EXPECT_EQ(grid.selection_start(), 4);
    EXPECT_EQ(grid.selected(), "ef");
    grid.text("ab");
    EXPECT_EQ(grid.selection_start(), 2);
    EXPECT_EQ(selections, 3);
}

TEST_F(grid_texts, put_the_caret_behind_what_replaces_a_selection)
{
    grid.select(6, 6);
    grid.replace_selection("2nd");
    EXPECT_EQ(grid.text(), "first\n2nd\nx\nfourth\n");
    EXPECT_EQ(grid.selection_start(), 9);
    EXPECT_EQ(grid.selection_length(), 0);
}

TEST_F(grid_texts, move_their_caret_as_any_text_does)
{
    EXPECT_EQ(after(0, grid_key::left), 0);
    EXPECT_EQ(after(6, grid_key::left), 5);
    EXPECT_EQ(after(5, grid_key::right), 6);
    EXPECT_EQ(after(21, grid_key::right), 21) << "the last feed opens no further line";
    EXPECT_EQ(after(8, grid_key::up), 2);
    EXPECT_EQ(after(11, grid_key::down), 14) << "the nearest column of a short line";
    EXPECT_EQ(after(3, grid_key::up), 3);
    EXPECT_EQ(after(17, grid_key::down), 17);
    EXPECT_EQ(after(9, grid_key::home), 6);
    EXPECT_EQ(after(9, grid_key::end), 12);
    grid.page_rows = 2;
    EXPECT_EQ(after(17, grid_key::page_up), 8);
    EXPECT_EQ(after(2, grid_key::page_down), 14);
    EXPECT_EQ(after(8, grid_key::page_down), 17);
    EXPECT_EQ(after(4, grid_key::insert), 4);
}

TEST_F(grid_texts, collapse_a_selection_to_the_side_of_the_key)
{
    grid.select(7, 3);
    grid.key_down(grid_key::left);
    EXPECT_EQ(grid.selection_start(), 7);
    grid.select(7, 3);
    grid.key_down(grid_key::right);
    EXPECT_EQ(grid.selection_start(), 10);
}

TEST_F(grid_texts, are_edited_by_a_person_while_they_are_not_locked)
{
    grid.select(5);
    type("ly");
    grid.key_down(grid_key::enter);
    EXPECT_EQ(grid.text(), "firstly\n\nsecond\nx\nfourth\n");
    grid.key_down(grid_key::backspace);
    grid.key_down(grid_key::backspace);
    EXPECT_EQ(grid.text(), "firstl\nsecond\nx\nfourth\n");
    grid.key_down(grid_key::remove);
    EXPECT_EQ(grid.text(), "firstlsecond\nx\nfourth\n");
    grid.select(0, 5);
    grid.key_down(grid_key::remove);
    type("é\x01");
    EXPECT_EQ(grid.text(), "lsecond\nx\nfourth\n");
    grid.key_down(grid_key::backspace);
    EXPECT_EQ(grid.text(), "lsecond\nx\nfourth\n") << "nothing stands before it";
    grid.select(1000);
    grid.key_down(grid_key::remove);
    EXPECT_EQ(grid.text(), "lsecond\nx\nfourth\n") << "nothing stands behind it";
}

TEST_F(grid_texts, change_nothing_while_they_are_locked)
{
    grid.locked = true;
    const std::string before = grid.text();
    grid.select(5);
    type("ly");
    for (const grid_key key : {grid_key::enter, grid_key::backspace, grid_key::remove}) grid.key_down(key);
    EXPECT_EQ(grid.text(), before);
    EXPECT_EQ(grid.selection_start(), 5);
    grid.key_down(grid_key::right);
    EXPECT_EQ(grid.selection_start(), 6);
}

TEST_F(grid_texts, do_nothing_with_what_a_handler_swallows)
{
    std::vector<grid_key> keys;
    std::u32string letters;
    grid.on_key_down = [&](grid_key key) {
        keys.push_back(key);
        return key == grid_key::right;
    };
    grid.on_key_press = [&](char32_t letter) {
        letters += letter;
        return letter == U'a';
    };
    grid.key_down(grid_key::right);
    EXPECT_EQ(grid.selection_start(), 0);
    grid.key_down(grid_key::end);
    EXPECT_EQ(grid.selection_start(), 5);
    type("ab");
    EXPECT_EQ(grid.text().substr(0, 7), "firstb\n");
    EXPECT_EQ(keys, (std::vector{grid_key::right, grid_key::end}));
    EXPECT_EQ(letters, U"ab");
}

TEST_F(grid_texts, tell_of_a_press_before_the_caret_moves)
{
    std::vector<point> presses;
    grid.on_press = [&](point where) {
        presses.push_back(where);
        EXPECT_EQ(grid.selection_start(), 0);
    };
    grid.press({360, 215}, 9);
    EXPECT_EQ(presses, (std::vector<point>{{360, 215}}));
    EXPECT_EQ(grid.selection_start(), 9);
    grid.on_press = nullptr;
    grid.press({0, 5000}, 22);
    EXPECT_EQ(grid.selection_start(), 21);
}

TEST_F(grid_texts, are_deaf_while_they_cannot_be_used)
{
    grid.visible = false;
    grid.on_key_down = [](grid_key) { return false; };
    grid.key_down(grid_key::right);
    type("x");
    grid.press({0, 0}, 9);
    EXPECT_EQ(grid.selection_start(), 0);
    EXPECT_FALSE(grid.takes_keys());
}

TEST_F(grid_texts, want_the_keyboard_only_where_a_key_does_something)
{
    EXPECT_FALSE(grid.takes_keys());
    grid.on_key_press = [](char32_t) { return true; };
    EXPECT_TRUE(grid.takes_keys());
}

TEST_F(grid_texts, stand_any_key_without_a_text)
{
    grid.text("");
    for (int key = 0; key <= static_cast<int>(grid_key::enter); ++key) {
        grid.locked = true;
        grid.key_down(static_cast<grid_key>(key));
        EXPECT_EQ(grid.selection_start(), 0);
    }
    grid.press({9, 9}, 9);
    EXPECT_EQ(grid.selection_start(), 0);
}

}  // namespace
}  // namespace tamrix::forms
