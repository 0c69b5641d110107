// tamrix analyze draw: the picture on the terminal, and the one in a file.
#include "cli/capture_picture.h"
#include "cli/command_inside.h"
#include "support/temp_files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <filesystem>
#include <map>
#include <sstream>

namespace tamrix::tests {
namespace {

using testing::HasSubstr;
using bytes = std::vector<std::uint8_t>;

constexpr int channels = 8;

std::string letters(const bytes& samples, std::int32_t from, std::int32_t count, bool box_letters = false)
{
    return cli::letters_of({samples, from, count, 3.4}, box_letters);
}

std::vector<std::string> lines_of(const std::string& text)
{
    std::vector<std::string> lines;
    std::istringstream in{text};
    for (std::string line; std::getline(in, line);) lines.push_back(line);
    return lines;
}

/// P21 counts 1, 2, 4 samples; P22 is low, then high; the others are low, but P28.
const bytes short_capture{0x80, 0x81, 0x80, 0x80, 0x83, 0x83, 0x82, 0x82, 0x82, 0x82};

TEST(a_picture_of_letters, has_two_rows_a_channel_and_a_ruler)
{
    const std::string low = "______________________________________________________________________\n";
    EXPECT_EQ(letters(short_capture, 0, 10),
              "           _______              ______________\n"
              "P21 _______|      |_____________|             |___________________________\n"
              "                                __________________________________________\n"
              "P22 ____________________________|\n"
              "\nP23 " +
                  low + "\nP24 " + low + "\nP25 " + low + "\nP26 " + low + "\nP27 " + low + "    " + low +
                  "P28\n"
                  "    +-------------+--------------------+-------------+--------------------\n"
                  "    0uS           7uS                  17uS          24uS\n"
                  "    sample 0      2                    5             7\n");
    EXPECT_EQ(lines_of(letters(short_capture, 1, 6, true))[0],
              "    ────────────┐                       ┌───────────────────────┐");
    EXPECT_EQ(lines_of(letters(short_capture, 1, 6, true))[1],
              "P21             └───────────────────────┘                       └───────────");
}

TEST(a_picture_of_letters, shows_a_column_with_several_edges_as_busy)
{
    bytes samples(760, 0);
    for (std::size_t i = 100; i < 200; ++i) samples[i] = i % 2;  // columns 10 to 19
    for (std::size_t i = 305; i < 760; ++i) samples[i] = 2;
    const auto drawn = lines_of(letters(samples, 0, 760));
    EXPECT_EQ(drawn[0], "              ##########");
    EXPECT_EQ(drawn[1], "P21 __________##########|_______________________________________________________");
    EXPECT_EQ(drawn[2], "                                  ______________________________________________");
    EXPECT_EQ(drawn[3], "P22 ______________________________|");
    EXPECT_EQ(lines_of(letters(samples, 0, 760, true))[1].substr(0, 46), "P21 ──────────▒▒▒▒");
}

/// With one sample a column, the picture says each level.
TEST(a_picture_of_letters, has_each_sample_of_random_captures_in_its_column)
{
    for (unsigned turn = 1; turn <= 30; ++turn) {
        const bytes samples = random_bytes(200, turn);
        const auto from = static_cast<std::int32_t>(turn * 4), count = static_cast<std::int32_t>(39 + turn);
        const auto drawn = lines_of(letters(samples, from, count));
        for (std::size_t channel = 0; channel < channels; ++channel) {
            for (std::int32_t i = 0; i < count; ++i) {
                const auto at = static_cast<std::size_t>(from + i), column = static_cast<std::size_t>(i) + 4;
                const bool high = (samples[at] >> channel & 1) != 0,
                           edge = i > 0 && ((samples[at] ^ samples[at - 1]) >> channel & 1) != 0;
                const auto letter = [&](std::size_t row) {
                    return column < drawn[row].size() ? drawn[row][column] : ' ';
                };
                EXPECT_EQ(letter(2 * channel), high ? '_' : ' ');
                EXPECT_EQ(letter(2 * channel + 1), edge ? '|' : high ? ' ' : '_');
            }
        }
    }
}

TEST(a_picture_of_letters, is_never_wider_than_80_columns)
{
    const bytes samples = random_bytes(524288);
    for (const std::int32_t count : {1, 2, 3, 5, 38, 39, 75, 76, 77, 151, 152, 153, 1000, 32768, 524288}) {
        const auto drawn = lines_of(letters(samples, 524288 - count, count));
        EXPECT_EQ(drawn.size(), 2u * channels + 3);
        for (const std::string& line : drawn) EXPECT_LE(line.size(), 80u) << count;
        EXPECT_GE(drawn[2 * channels].size(), 42u) << count << " samples use more than half of it";
    }
}

TEST(analyze_draw, draws_with_the_letters_that_the_terminal_has)
{
    const temp_folder folder;
    const std::string file = folder.write("a.bin", short_capture);
    const std::vector<std::string> draw{"analyze", "draw", file};
    const auto with = [&](const std::string& locale) {
        return tamrix_command(draw, {.environment = {"LC_ALL=" + locale}}).out;
    };
    EXPECT_EQ(with("C.UTF-8"), letters(short_capture, 0, 10, true));
    EXPECT_EQ(with("C"), letters(short_capture, 0, 10));
    EXPECT_EQ(with("no_SUCH.locale"), letters(short_capture, 0, 10));
}

TEST(analyze_draw, begins_and_ends_where_it_is_asked_to)
{
    const temp_folder folder;
    const bytes samples = random_bytes(1000);
    const std::string file = folder.write("a.bin", samples);
    const auto drawn = [&](std::vector<std::string> arguments) {
        arguments.insert(arguments.begin(), {"analyze", "draw", file});
        return tamrix_command(arguments, {.environment = {"LC_ALL=C"}}).out;
    };
    EXPECT_EQ(drawn({}), letters(samples, 0, 76));
    EXPECT_EQ(drawn({"--from", "500", "--samples", "30"}), letters(samples, 500, 30));
    EXPECT_EQ(drawn({"--from", "990"}), letters(samples, 990, 10)) << "as many as there are";
    EXPECT_EQ(drawn({"--samples", "2000"}), letters(samples, 0, 1000));
    EXPECT_EQ(drawn({"--from", "999", "--period", "1000"}), cli::letters_of({samples, 999, 1, 1000}, false));
    const auto beyond = command_inside({"analyze", "draw", file, "--from", "1000"});
    EXPECT_EQ(beyond.status, 2);
    EXPECT_THAT(beyond.err, HasSubstr("tamrix: --from 1000: " + file + " has the samples 0 to 999\n"));
}

TEST(analyze_draw, refuses_what_makes_no_picture)
{
    const temp_folder folder;
    const std::string file = folder.write("a.bin", bytes(32768));
    const std::string same = folder.write("b", bytes(32768));
    const std::pair<std::vector<std::string>, std::string> all[] = {
        {{file, "--from", "-1"}, "--from -1: a number from 0 to 2147483647 is expected"},
        {{file, "--from", "x"}, "--from x: a number from 0 to 2147483647 is expected"},
        {{file, "--samples", "0"}, "--samples 0: a number from 1 to 2147483647 is expected"},
        {{file, "-o", ""}, "-o: the name of a file is expected"},
        {{file, "-o", "a.png"}, "-o a.png: a name that ends in .svg is expected"},
        {{same, "-o", same}, "-o " + same + ": that is FILE itself"},
        {{}, "FILE is required"},
    };
    for (auto [arguments, text] : all) {
        arguments.insert(arguments.begin(), {"analyze", "draw"});
        const auto result = command_inside(arguments);
        EXPECT_EQ(result.status, 2) << text;
        EXPECT_EQ(result.out, "");
        EXPECT_EQ(result.err, "tamrix: " + text + "\n");
    }
}

TEST(analyze_draw, a_disk_that_is_full_leaves_the_old_picture)
{
    const temp_folder folder;
    const std::string file = folder.write("a.bin", random_bytes(32768)), old = folder.write("old.svg", "old");
    const auto device = command_inside({"analyze", "draw", file, "-o", "/dev/full"});
    EXPECT_EQ(device.status, 1);
    EXPECT_EQ(device.err, "tamrix: /dev/full: No space left on device\n");
    EXPECT_TRUE(std::filesystem::is_character_file("/dev/full"));
    const auto disk = run_program({"sh", "-c",
                                   "trap '' XFSZ; ulimit -f 64; exec " TAMRIX_COMMAND
                                   " analyze draw a.bin --samples 32768 -o old.svg"},
                                  {.folder = folder.path("")});
    EXPECT_EQ(disk.status, 1);
    EXPECT_EQ(disk.out, "");
    EXPECT_THAT(disk.err, HasSubstr(": File too large"));
    EXPECT_EQ(read_text(old), "old");
    EXPECT_EQ(std::distance(std::filesystem::directory_iterator{folder.path("")}, {}), 2) << "no third file";
    const auto terminal = tamrix_command({"analyze", "draw", file}, {.standard_output = "/dev/full"});
    EXPECT_EQ(terminal.status, 1);
    EXPECT_EQ(terminal.err, "tamrix: standard output: cannot be written\n");
}

}  // namespace
}  // namespace tamrix::tests
