#include "instruments/wave/wave_divider.h"

#include "checksum.h"

#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <sstream>
#include <vector>

namespace tamrix {
namespace {

using hw::output_loop;

TEST(a_typed_frequency, is_a_whole_number_of_hertz_of_31_bits)
{
    EXPECT_EQ(typed_frequency("0"), 0);
    EXPECT_EQ(typed_frequency("1"), 1);
    EXPECT_EQ(typed_frequency("000440"), 440);
    EXPECT_EQ(typed_frequency("2147483647"), 2147483647);
    for (const char* text : {"", "2147483648", "9999999999", "99999999999999999999", "-1", "1x", " 1", "1.5"})
        EXPECT_THROW(typed_frequency(text), frequency_error) << text;
}

TEST(a_divider, of_0_hertz_is_an_error_of_the_loops_and_0_for_the_fixed_set)
{
    for (const output_loop loop : {output_loop::by_generation, output_loop::fast, output_loop::slow})
        EXPECT_THROW(divide(0, {.usb = true, .loop = loop, .generation = 0}), frequency_error);
    EXPECT_EQ(divide(0, {.usb = true, .loop = output_loop::fixed_set, .generation = 0}), wave_divider{});
}

struct expected_divider {
    std::int32_t hertz;
    wave_source source;
    wave_divider divider;
};

constexpr wave_source registers{false, output_loop::by_generation, 0},
    registers_17{false, output_loop::by_generation, 17}, usb{true, output_loop::by_generation, 0},
    usb_17{true, output_loop::by_generation, 17}, fixed{true, output_loop::fixed_set, 0};

TEST(the_limits_of_the_loops, are_shown_from_four_and_a_half_ticks_on)
{
    const std::int32_t edge = 125000;  // 562500 / 4.5
    const expected_divider table[] = {
        {edge, registers, {1, 0, 0, "125000"}},
        {edge, registers_17, {1, 0, 0, "148000"}},
        {edge, usb, {1, 0, 0, "132500"}},
        {edge, usb_17, {1, 0, 0, "132500"}},
        {2147483647, registers, {1, 0, 0, "125000"}},
    };
    for (const auto& [hertz, source, divider] : table) EXPECT_EQ(divide(hertz, source), divider);
    EXPECT_EQ(divide(edge - 1, registers).lo, 2) << "five ticks";
}

TEST(a_short_loop, shows_what_the_hardware_gives_in_whole_hundreds)
{
    // 57 ticks: 500000 / (53 * 8 / 9 + 4).
    EXPECT_EQ(divide(9868, registers), (wave_divider{54, 0, 0, "9700"}));
    EXPECT_EQ(divide(2206, registers).shown, "2200") << "255 ticks";
    EXPECT_EQ(divide(2197, registers).shown, std::nullopt) << "256 ticks: as typed";
}

TEST(a_frequency_of_the_fixed_set, is_shown_as_it_is_given_and_sent_by_its_own_number)
{
    const auto sent = [](std::int32_t hertz) {
        const wave_divider made = divide(hertz, fixed);
        return std::pair{made.shown.value_or("as typed"), made.lo + 256 * made.mid + 65536 * made.hi};
    };
    const std::tuple<std::int32_t, std::string, int> table[] = {
        {600000, "1000000", 600000},      {510001, "1000000", 510001}, {510000, "510000", 500000},
        {500000, "510000", 500000},       {375001, "510000", 500000},  {375000, "247000", 247000},
        {200001, "247000", 247000},       {200000, "161000", 161000},  {140000, "125600", 125000},
        {112500, "100000", 100000},       {90000, "80000", 80000},     {76200, "71400", 71000},
        {67500, "62000", 62000},          {59000, "55900", 55000},     {53000, "50000", 50000},
        {49001, "50000", 50000},          {49000, "as typed", 49000},  {1, "as typed", 1},
        {0x1234567, "1000000", 0x234567},
    };
    for (const auto& [hertz, shown, value] : table) EXPECT_EQ(sent(hertz), std::pair(shown, value)) << hertz;
}

std::string result_of(const std::string& text, const wave_source& source)
{
    const std::string typed = text == "empty" ? "" : text;
    try {
        const wave_divider made = divide(typed_frequency(typed), source);
        char line[80];
        std::snprintf(line, sizeof line, "%s %d %d %d %s", text.c_str(), made.lo, made.mid, made.hi,
                      made.shown ? made.shown->c_str() : text.c_str());
        return line;
    } catch (const frequency_error&) {
        return text + " error";
    }
}

wave_source source_of(const std::string& route, int model, int generation)
{
    return {.usb = route == "usb",
            .loop = hw::model_of(static_cast<std::int16_t>(model)).generator,
            .generation = static_cast<std::uint8_t>(generation)};
}

std::string checksum_of_branch(const wave_source& source)
{
    tests::checksum sum;
    for (int hertz = 0; hertz <= 200000; ++hertz) sum.add(result_of(std::to_string(hertz), source));
    for (int i = 1; i <= 1000; ++i) sum.add(result_of(std::to_string(200000 + 7919 * i), source));
    return sum.text();
}

std::string checksum_of_models(const std::string& route, int generation)
{
    tests::checksum sum;
    for (int model = 0; model <= 60; ++model) {
        for (const char* text : {"3", "440", "2000", "3000", "22222", "60000", "120000", "700000"})
            sum.add(std::to_string(model) + " " + result_of(text, source_of(route, model, generation)));
    }
    return sum.text();
}

TEST(every_divider, is_that_of_the_separate_model)
{
    std::ifstream file{TAMRIX_INSTRUMENT_TRANSCRIPTS "/dividers.txt"};
    std::map<std::string, int> compared;
    for (std::string line; std::getline(file, line);) {
        std::istringstream words{line};
        std::string kind, route, text, wanted;
        int model = 0, generation = 0;
        words >> kind >> route;
        if (kind == "models") {
            words >> generation >> wanted;
            ++compared[kind];
            EXPECT_EQ(checksum_of_models(route, generation), wanted) << line;
            continue;
        }
        words >> model >> generation;
        std::getline(words >> std::ws, wanted);
        ++compared[kind];
        const wave_source source = source_of(route, model, generation);
        const std::string made =
            kind == "branch" ? checksum_of_branch(source) : result_of(wanted.substr(0, wanted.find(' ')), source);
        EXPECT_EQ(made, wanted) << line;
    }
    EXPECT_EQ(compared, (std::map<std::string, int>{{"branch", 12}, {"models", 4}, {"sample", 1044}}));
}

}  // namespace
}  // namespace tamrix
