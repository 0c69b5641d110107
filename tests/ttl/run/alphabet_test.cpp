#include "ttl/run/alphabet.h"

#include "slow_model.h"

#include <gtest/gtest.h>

#include <random>

namespace tamrix::tests {
namespace {

constexpr std::string_view some_letters = "10HLCKXVGZNw.";

std::string random_row(std::mt19937& random, int pins)
{
    std::string row;
    for (int i = 0; i < pins; ++i) row += some_letters[random() % some_letters.size()];
    return row;
}

TEST(pin_code, of_20_pins_counts_up_both_columns_from_the_bottom)
{
    const auto code_of = [](int number) {
        std::string row(20, 'X');
        row[static_cast<std::size_t>(number - 1)] = 'V';
        return int{pin_code(row, 'V', 20)};
    };
    EXPECT_EQ(code_of(1), 10);
    EXPECT_EQ(code_of(10), 1);
    EXPECT_EQ(code_of(11), 101);
    EXPECT_EQ(code_of(20), 110);
}

TEST(pin_code, takes_the_first_letter_in_either_case)
{
    EXPECT_EQ(pin_code("XvVX", 'V', 4), slow::place_of_pin(2, 4).code());
    EXPECT_EQ(pin_code("XXgG", 'G', 4), slow::place_of_pin(3, 4).code());
}

TEST(pin_code, of_a_row_without_the_letter_is_the_code_above_the_left_column)
{
    EXPECT_EQ(pin_code("XXXXXXXXXXXXXX", 'G', 14), 8);
}

TEST(bytes_of_row, a_1_takes_along_what_is_expected_high_before_it)
{
    // Pins 3 and 4 of 16 are bits 2 and 3 of group 1: an H before the 1 shows in its data, one after it does not.
    EXPECT_EQ(bytes_of_row("00H1000000000000", 16).drvdata[1], 4 | 8);
    EXPECT_EQ(bytes_of_row("001H000000000000", 16).drvdata[1], 4);
}

TEST(bytes_of_row, is_for_every_row_what_a_slow_reading_gives)
{
    std::mt19937 random{7};
    for (int turn = 0; turn < 20000; ++turn) {
        const int pins = 2 * static_cast<int>(1 + random() % 24);
        const std::string row = random_row(random, pins);
        const row_bytes bytes = bytes_of_row(row, pins);
        for (int group = 0; group < 6; ++group) {
            int data = 0, mask = 0, clocks = 0, expect = 0;
            for (int number = 1; number <= pins; ++number) {
                const slow::place here = slow::place_of_pin(number, pins);
                if (here.group() != group) continue;
                const char letter = row[static_cast<std::size_t>(number - 1)];
                const bool other = std::string_view{"10HLCKVGZ"}.find(letter) == std::string_view::npos;
                // Each 1 and each unknown letter writes the byte anew from what is expected high up to it.
                if (letter == '1' || other) data = expect + here.weight();
                if (std::string_view{"V1HZ"}.find(letter) != std::string_view::npos) expect += here.weight();
                if (letter == 'C' || letter == 'K') clocks += here.weight();
                if (std::string_view{"10CK"}.find(letter) == std::string_view::npos) mask += here.weight();
            }
            const auto b = static_cast<std::size_t>(group);
            ASSERT_EQ(bytes.drvdata[b], data) << row;
            ASSERT_EQ(bytes.drvmask[b], mask) << row;
            ASSERT_EQ(bytes.clkmask[b], clocks) << row;
            ASSERT_EQ(bytes.expect[b], expect) << row;
            ASSERT_EQ(expected_bits(row, hw::span_of_48(pins))[b], expect) << row;
        }
        ASSERT_EQ(bytes.hasc, row.find('C') != std::string::npos);
        ASSERT_EQ(bytes.hask, row.find('K') != std::string::npos);
    }
}

TEST(mark_failures, names_the_level_that_was_seen)
{
    const std::string row = "10HLVGZCKXNw.abc";
    const hw::row_span span = hw::span_of_48(16);
    const hw::port_bytes expect = expected_bits(row, span);
    hw::port_bytes inverted = expect;
    for (auto& byte : inverted) byte = static_cast<std::uint8_t>(~byte);
    std::string result = row;
    EXPECT_TRUE(mark_failures(row, span, expect, inverted, result));
    EXPECT_EQ(result, "LHLHLHLCKXNw.abc");
    result = row;
    EXPECT_FALSE(mark_failures(row, span, expect, expect, result));
    EXPECT_EQ(result, row);
}

TEST(mark_failures, an_X_never_fails_and_a_Z_that_reads_low_does)
{
    const std::string row = "XXZX";
    const hw::row_span span = hw::span_of_48(4);
    std::string result = row;
    EXPECT_TRUE(mark_failures(row, span, expected_bits(row, span), {}, result));
    EXPECT_EQ(result, "XXLX");
    hw::port_bytes high{};
    high.fill(0xFF);
    result = row;
    EXPECT_FALSE(mark_failures(row, span, expected_bits(row, span), high, result));
}

}  // namespace
}  // namespace tamrix::tests
