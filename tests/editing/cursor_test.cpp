#include "editing/cursor.h"

#include <random>

#include <gtest/gtest.h>

using namespace tamrix::editing;

namespace {

constexpr std::size_t page = 4;

cursor at(std::size_t address, std::size_t bytes = 100)
{
    cursor made;
    made.resize(bytes);
    made.go_to(address);
    return made;
}

std::size_t after(cursor_step to, std::size_t address, std::size_t bytes = 100)
{
    cursor moved = at(address, bytes);
    moved.move(to, false, page);
    EXPECT_TRUE(moved.selection().empty());
    return moved.address();
}

}  // namespace

TEST(a_cursor, stays_in_its_column_where_a_step_of_rows_leaves_the_bytes)
{
    EXPECT_EQ(after(cursor_step::up, 20), 4u);
    EXPECT_EQ(after(cursor_step::up, 4), 4u);
    EXPECT_EQ(after(cursor_step::page_up, 70), 6u);
    EXPECT_EQ(after(cursor_step::page_up, 37), 5u);
    EXPECT_EQ(after(cursor_step::down, 70), 86u);
    EXPECT_EQ(after(cursor_step::down, 82), 98u);
    EXPECT_EQ(after(cursor_step::down, 86), 99u);  // the last row has four bytes
    EXPECT_EQ(after(cursor_step::page_down, 1), 65u);
    EXPECT_EQ(after(cursor_step::page_down, 65), 97u);
    EXPECT_EQ(after(cursor_step::page_down, 97), 97u);
}

TEST(a_cursor, stops_at_the_ends_of_rows_and_bytes)
{
    EXPECT_EQ(after(cursor_step::left, 0), 0u);
    EXPECT_EQ(after(cursor_step::left, 16), 15u);
    EXPECT_EQ(after(cursor_step::right, 99), 99u);
    EXPECT_EQ(after(cursor_step::right, 15), 16u);
    EXPECT_EQ(after(cursor_step::row_start, 30), 16u);
    EXPECT_EQ(after(cursor_step::row_end, 30), 31u);
    EXPECT_EQ(after(cursor_step::row_end, 97), 99u);
    EXPECT_EQ(after(cursor_step::first, 55), 0u);
    EXPECT_EQ(after(cursor_step::last, 55), 99u);
}

TEST(a_cursor, selects_from_where_it_was_to_where_it_is)
{
    cursor moved = at(20);
    EXPECT_EQ(moved.selection_or_byte(), (byte_range{20, 1}));
    moved.move(cursor_step::right, true, page);
    EXPECT_EQ(moved.selection(), (byte_range{20, 2}));
    moved.move(cursor_step::up, true, page);
    EXPECT_EQ(moved.selection(), (byte_range{5, 16}));
    EXPECT_EQ(moved.address(), 5u);
    moved.move(cursor_step::left, false, page);
    EXPECT_EQ(moved.selection(), byte_range{});
    EXPECT_EQ(moved.address(), 4u);
}

TEST(a_cursor, selects_all_and_ranges_as_far_as_there_are_bytes)
{
    cursor moved = at(20);
    moved.select_all();
    EXPECT_EQ(moved.selection(), (byte_range{0, 100}));
    EXPECT_EQ(moved.address(), 0u);
    moved.select({90, 50});
    EXPECT_EQ(moved.selection(), (byte_range{90, 10}));
    moved.select({100, 1});
    EXPECT_EQ(moved.selection(), (byte_range{90, 10}));
    moved.select_nothing();
    EXPECT_EQ(moved.selection_or_byte(), (byte_range{90, 1}));
}

TEST(a_cursor, goes_on_after_the_second_digit_and_after_each_character)
{
    cursor typing = at(98);
    typing.digit_typed();
    EXPECT_TRUE(typing.in_second_digit());
    EXPECT_EQ(typing.address(), 98u);
    typing.digit_typed();
    EXPECT_FALSE(typing.in_second_digit());
    EXPECT_EQ(typing.address(), 99u);
    typing.choose(column::characters);
    typing.character_typed();
    EXPECT_EQ(typing.address(), 99u);
    EXPECT_EQ(typing.side(), column::characters);
}

TEST(a_cursor, begins_a_byte_anew_after_it_was_moved)
{
    cursor typing = at(5);
    typing.digit_typed();
    typing.go_to(5);
    EXPECT_FALSE(typing.in_second_digit());
    typing.digit_typed();
    typing.choose(column::hexadecimal);
    EXPECT_FALSE(typing.in_second_digit());
}

TEST(a_cursor, selects_nothing_any_more_once_one_types)
{
    cursor typing = at(0);
    typing.select_all();
    typing.digit_typed();
    EXPECT_TRUE(typing.selection().empty());
    typing.select_all();
    typing.character_typed();
    EXPECT_TRUE(typing.selection().empty());
    EXPECT_EQ(typing.address(), 1u);
}

TEST(a_cursor, without_bytes_is_at_0_and_stays_there)
{
    cursor nowhere;
    nowhere.go_to(5, true);
    nowhere.move(cursor_step::last, true, page);
    nowhere.select_all();
    EXPECT_EQ(nowhere.address(), 0u);
    EXPECT_TRUE(nowhere.selection_or_byte().empty());
}

TEST(a_cursor, is_among_the_bytes_after_they_became_fewer)
{
    cursor moved = at(99);
    moved.go_to(90, true);
    moved.resize(50);
    EXPECT_EQ(moved.address(), 49u);
    EXPECT_TRUE(moved.selection().empty());
    moved.resize(0);
    EXPECT_EQ(moved.address(), 0u);
}

TEST(a_cursor, never_leaves_the_bytes)
{
    std::mt19937 random{9};
    for (int round = 0; round < 200; ++round) {
        const std::size_t bytes = 1 + random() % 70;
        cursor moved = at(random() % bytes, bytes);
        for (int i = 0; i < 50; ++i) {
            const std::size_t before = moved.address();
            const auto to = static_cast<cursor_step>(random() % 10);
            moved.move(to, random() % 2 == 0, random() % 5);
            ASSERT_LT(moved.address(), bytes);
            ASSERT_LE(moved.selection().end(), bytes);
            if (to == cursor_step::up || to == cursor_step::page_up) {
                ASSERT_EQ(moved.address() % 16, before % 16);
            }
        }
    }
}
