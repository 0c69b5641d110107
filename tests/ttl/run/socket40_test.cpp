#include "ttl/run/socket40.h"

#include "slow_model.h"

#include <gtest/gtest.h>

#include <random>

namespace tamrix::tests {
namespace {

/// Different letters, none of which means anything to the wiring.
std::string letters(std::size_t count)
{
    return std::string{"abcdefghijklmnopqrstuvABCDEFGHIJKLMNOPQRSTUV"}.substr(0, count);
}

TEST(tosocket40, puts_every_pin_of_every_size_where_its_wire_leads)
{
    for (std::size_t pins = 0; pins <= 40; pins += 2)
        EXPECT_EQ(tosocket40(letters(pins)), slow::socket_text(letters(pins))) << pins << " pins";
}

TEST(tosocket40, a_14_pin_device_stands_at_these_places)
{
    // a to g down the left side, h to n up the right one.
    EXPECT_EQ(tosocket40("abcdefghijklmn"), "wwwwwwwwwwnwcbawdefhijklwwwwwwwwmwwgwwww");
}

TEST(tosocket40, takes_blanks_off_both_ends) { EXPECT_EQ(tosocket40("  abcd  "), tosocket40("abcd")); }

TEST(tosocket40, an_odd_row_comes_back_unchanged) { EXPECT_EQ(tosocket40("abc"), "abc"); }

TEST(tosocket40, a_row_that_is_too_long_loses_what_no_wire_reaches)
{
    EXPECT_EQ(tosocket40(std::string(48, 'a')), std::string(40, 'a'));
}

TEST(fromsocket40, undoes_the_wiring_up_to_32_pins)
{
    for (std::size_t pins = 2; pins <= 32; pins += 2)
        EXPECT_EQ(fromsocket40(tosocket40(letters(pins))), letters(pins)) << pins << " pins";
}

TEST(fromsocket40, of_34_to_40_pins_shows_the_middle_32)
{
    for (std::size_t pins = 34; pins <= 40; pins += 2)
        EXPECT_EQ(fromsocket40(tosocket40(letters(pins))), letters(pins).substr((pins - 32) / 2, 32)) << pins;
}

TEST(fromsocket40, an_odd_text_comes_back_unchanged) { EXPECT_EQ(fromsocket40(" abc "), "abc"); }

/// The way back for texts of any length, place by place: A is the text's left column, B its right one.
std::string slow_way_back(std::string text)
{
    if (text.size() > 32) text = text.substr(4, 32);
    const std::size_t h = text.size() / 2;
    const auto left = [&](std::size_t i) { return i < h ? std::string(1, text[h - 1 - i]) : std::string{}; };
    const auto right = [&](std::size_t i) { return i < h ? std::string(1, text[h + i]) : std::string{}; };
    const std::vector<std::string> p{"B15", "A1", "A2", "A3", "A7", "A6",  "A5",  "A4",
                                     "B4",  "B5", "B6", "B7", "B8", "B11", "A15", "A13"};
    const std::vector<std::string> q{"A0", "B0",  "B1",  "B2", "B3",  "B12", "A9",  "B13",
                                     "A8", "A10", "A11", "B9", "B10", "A14", "A12", "B14"};
    const auto column = [&](const std::vector<std::string>& wires, std::size_t k) {
        const auto i = static_cast<std::size_t>(std::stoi(wires[k].substr(1)));
        const std::string letter = wires[k][0] == 'A' ? left(i) : right(i);
        return letter == "w" ? std::string{} : letter;
    };
    static constexpr int half_of[] = {1, 2, 3, 4, 5, 9, 10, 11, 12, 13, 13, 13, 14, 15, 16, 16, 16};
    std::string down, up;
    for (std::size_t k = 0; k < static_cast<std::size_t>(half_of[h]); ++k) {
        const std::string on_the_left = k == 0 && h < 16 ? "w" : column(p, k);
        const std::string on_the_right = column(q, k);
        if (on_the_left.empty() && on_the_right.empty()) break;
        down = on_the_left + down;
        up += on_the_right;
    }
    return down + up;
}

TEST(fromsocket40, of_shorter_texts_keeps_to_its_table_of_widths)
{
    for (std::size_t length = 0; length <= 40; length += 2)
        EXPECT_EQ(fromsocket40(letters(length)), slow_way_back(letters(length))) << length << " letters";
}

TEST(bytes_of_socket_row, is_for_every_row_what_a_slow_reading_gives)
{
    std::mt19937 random{11};
    constexpr std::string_view some_letters = "10HLCKXVGZN";
    for (int turn = 0; turn < 20000; ++turn) {
        const std::size_t pins = 2 * (1 + random() % 20);
        std::string row;
        for (std::size_t i = 0; i < pins; ++i) row += some_letters[random() % some_letters.size()];
        const std::string text = slow::socket_text(row);
        const row_bytes bytes = bytes_of_socket_row(tosocket40(row), forced_position::none);
        for (int group = 0; group < 6; ++group) {
            int written = 0, clocks = 0, expect = 0;
            for (int number = 1; number <= 40; ++number) {
                const slow::place here = slow::place_of_pin(number, 40);
                if (here.group() != group) continue;
                const char letter = text[static_cast<std::size_t>(number - 1)];
                // Only a 0, a clock at rest and an unused place are low.
                if (std::string_view{"0wCK"}.find(letter) == std::string_view::npos) written += here.weight();
                if (letter == 'C' || letter == 'K') clocks += here.weight();
                if (std::string_view{"V1HZXN"}.find(letter) != std::string_view::npos) expect += here.weight();
            }
            const auto b = static_cast<std::size_t>(group);
            ASSERT_EQ(bytes.drvdata[b] | bytes.drvmask[b], written) << row;
            ASSERT_EQ(bytes.clkmask[b], clocks) << row;
            ASSERT_EQ(bytes.expect[b], expect) << row;
        }
    }
}

TEST(bytes_of_socket_row, forces_the_place_that_is_tied_to_the_supply)
{
    const std::string empty(40, 'w');
    const row_bytes started = bytes_of_socket_row(empty, forced_position::from_the_start);
    EXPECT_EQ(started.drvdata[3], 32);
    EXPECT_EQ(started.drvmask[3], 32);
    EXPECT_EQ(started.expect[3], 32);
    EXPECT_EQ(bytes_of_socket_row(empty, forced_position::with_the_v).drvmask[3], 0) << "no V, nothing forced";
    std::string with_v = empty;
    with_v[0] = 'V';
    EXPECT_EQ(bytes_of_socket_row(with_v, forced_position::with_the_v).drvmask[3], 32);
    EXPECT_EQ(bytes_of_socket_row(with_v, forced_position::none).drvmask[3], 0);
}

TEST(bytes_of_socket_row, forces_one_place_only_where_a_pin_stands_there_too)
{
    std::string full(40, 'H');
    EXPECT_EQ(bytes_of_socket_row(full, forced_position::from_the_start).drvmask[3], 255);
}

}  // namespace
}  // namespace tamrix::tests
