// What the maker of vectors keeps to, and what it says of its work.
#include "chips/library.h"
#include "library_file.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <stdexcept>

namespace tamrix::tests {
namespace {

const read_record& device(const std::string& name)
{
    static const auto all = records();
    const auto found = std::ranges::find(all, name, &read_record::name);
    if (found == all.end()) throw std::runtime_error{"there is no record " + name};
    return *found;
}

/// The letters of one pin (from 1), row after row.
std::string column(const read_record& from, std::size_t pin)
{
    std::string made;
    for (const auto& row : from.rows) made += row.at(pin - 1);
    return made;
}

unsigned number(const std::string& row, std::initializer_list<std::size_t> pins)
{
    unsigned value = 0;
    for (const auto pin : pins) value = value * 2 + (row.at(pin - 1) == '1' ? 1u : 0u);
    return value;
}

sim::vector_set vectors_of(const std::string& text)
{
    return sim::make_all_vectors(sim::read_chips(text, "x.chip")).at(0);
}

TEST(vectors, a_master_slave_flip_flop_gets_pulses_only)
{
    const std::vector<std::pair<std::string, std::vector<std::size_t>>> clocks{
        {"7473", {1, 5}}, {"7476", {1, 6}}, {"74107", {9, 12}}};
    for (const auto& [name, pins] : clocks)
        for (const auto pin : pins)
            EXPECT_EQ(column(device(name), pin).find_first_not_of("0C"), std::string::npos) << name;
}

TEST(vectors, a_74191_changes_direction_and_enable_while_its_clock_is_high_only)
{
    for (const std::string name : {"74190", "74191"}) {
        const auto& rows = device(name).rows;
        int changes = 0;
        for (std::size_t i = 1; i < rows.size(); ++i) {
            if (rows[i][3] == rows[i - 1][3] && rows[i][4] == rows[i - 1][4]) continue;
            ++changes;
            EXPECT_EQ(rows[i - 1][13], '1') << name << " row " << i;
            EXPECT_EQ(rows[i][13], '1') << name << " row " << i;
        }
        EXPECT_GT(changes, 1) << name;
    }
}

TEST(vectors, the_two_clocks_of_a_74193_are_never_low_together)
{
    for (const std::string name : {"74192", "74193"})
        for (const auto& row : device(name).rows) EXPECT_TRUE(row[3] == '1' || row[4] == '1') << name << " " << row;
}

TEST(vectors, codes_without_an_answer_are_not_applied)
{
    for (const auto& row : device("4028").rows) EXPECT_LE(number(row, {11, 12, 13, 10}), 9u) << row;
}

TEST(vectors, nothing_is_expected_of_a_register_before_it_is_known)
{
    const auto made = vectors_of("chip T1  a test\npins D CLK NC GND Q NC QN VCC\nQ : rise(CLK) -> D\nQN = !Q\n");
    bool clocked = false;
    for (const auto& row : made.rows) {
        clocked = clocked || row[1] == 'C';
        if (clocked) break;
        EXPECT_EQ(row[4], 'X') << row;
    }
    EXPECT_TRUE(clocked);
    EXPECT_EQ(made.found, made.faults);
    EXPECT_TRUE(made.missed.empty());
}

TEST(vectors, data_and_clock_do_not_change_in_one_row)
{
    // A level of the clock may change, but not upward together with the data.
    const auto made = vectors_of("chip T1  a test\npins D CLK NC GND Q NC QN VCC\nQ : rise(CLK) -> D\nQN = !Q\n");
    for (std::size_t i = 1; i < made.rows.size(); ++i) {
        const bool rises = made.rows[i][1] == '1' && made.rows[i - 1][1] != '1';
        EXPECT_TRUE(!rises || made.rows[i][0] == made.rows[i - 1][0]) << i;
    }
}

TEST(vectors, a_pin_that_changes_nothing_is_missed_with_the_proof)
{
    const auto made = vectors_of("chip T1  a test\npins A B C GND Y Z NC VCC\nY = A | A & B\nZ = C ^ A\n");
    ASSERT_EQ(made.missed.size(), 2u);
    EXPECT_EQ(made.missed[0].pin, "B");
    EXPECT_FALSE(made.missed[0].high);
    EXPECT_EQ(made.missed[0].reason, "no input shows it: all of them were tried");
    EXPECT_TRUE(made.missed[1].high);
    EXPECT_EQ(made.faults - made.found, 3u);  // low, high, open
}

TEST(vectors, an_output_that_takes_too_many_clocks_is_missed_with_its_reason)
{
    const auto made = vectors_of(
        "chip T1  a test\npins RST CLK Q9 GND VCC Q1 NC NC\n{Q9..Q1} : clear RST, fall(CLK) -> {Q9..Q1} + 1\n");
    ASSERT_EQ(made.missed.size(), 1u);
    EXPECT_EQ(made.missed[0].pin + " " + made.missed[0].reason,
              "Q9 the pin does not go high within the 254 rows of a record");
}

TEST(vectors, chips_that_read_alike_are_named_and_others_are_told_apart)
{
    const std::string pins = "pins A B NC GND Y NC NC VCC\n";
    const auto sets =
        sim::make_all_vectors(sim::read_chips("chip T1\n" + pins + "Y = A & B\nchip T2\n" + pins +
                                                  "Y = A & B open collector\nchip T3\n" + pins + "Y = A | B\n",
                                              "x.chip"));
    EXPECT_EQ(sets[0].twins, std::vector<std::string>{"T2"});
    EXPECT_EQ(sets[1].twins, std::vector<std::string>{"T1"});
    EXPECT_TRUE(sets[2].twins.empty());
}

TEST(vectors, letters_tell_three_state_from_open_collector)
{
    EXPECT_NE(column(device("74125"), 3).find('Z'), std::string::npos);
    EXPECT_EQ(column(device("7403"), 3).find('Z'), std::string::npos);
}

TEST(vectors, as_many_rows_as_a_line_of_3000_characters_takes)
{
    EXPECT_EQ(sim::most_rows(8), 254u);
    EXPECT_EQ(sim::most_rows(16), 175u);
    for (std::size_t pins = 2; pins <= 40; pins += 2) EXPECT_LE(20 + sim::most_rows(pins) * (pins + 1) + 1, 3000u);
}

}  // namespace
}  // namespace tamrix::tests
