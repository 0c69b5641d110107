// The SVG file of tamrix analyze draw.
#include "cli/capture_picture.h"
#include "cli/command_inside.h"
#include "support/temp_files.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <array>
#include <regex>

namespace tamrix::tests {
namespace {

using testing::HasSubstr;

constexpr int traces = 8, row_height = 600, high_level = 120, low_level = 540;

/// What another reader of the file finds in it: each text and each line, in order.
std::string read_by_python(const std::string& file)
{
    const char* const reader = R"(
import re, sys
import xml.etree.ElementTree as tree
root = tree.parse(sys.argv[1]).getroot()
name = lambda one: one.tag.rpartition('}')[2]
print(root.tag, root.get('viewBox'))
for one in root.iter():
    if name(one) in ('title', 'text'):
        print(name(one), one.get('x'), one.get('y'), one.text)
    if name(one) == 'path':
        assert re.fullmatch(r'(M-?\d+ \d+[HV]\d+)+', one.get('d'))
        for x, y, way, end in re.findall(r'M(-?\d+) (\d+)([HV])(\d+)', one.get('d')):
            print(one.get('stroke'), x, y, *((end, y) if way == 'H' else (x, end)))
)";
    const auto result = run_program({"python3", "-c", reader, file});
    EXPECT_EQ(result.err, "");
    return result.out;
}

TEST(an_svg_file, has_channel_names_times_and_sample_numbers)
{
    const temp_folder folder;
    const std::string capture = folder.write("a.bin", random_bytes(32768)), picture = folder.path("a.svg");
    const auto result =
        tamrix_command({"analyze", "draw", capture, "-o", picture, "--from", "1000", "--samples", "400"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, picture + ": samples 1000 to 1399 of " + capture + "\n");
    const std::string read = read_by_python(picture);
    EXPECT_THAT(read, testing::StartsWith("{http://www.w3.org/2000/svg}svg -700 -150 15600 6000\n"
                                          "title None None samples 1000 to 1399, 3.4 us each\n"));
    for (int channel = 1; channel <= traces; ++channel)
        EXPECT_THAT(read, HasSubstr("text -620 " + std::to_string(600 * channel - 200) + " P2" +
                                    std::to_string(channel) + "\n"));
    EXPECT_THAT(read, HasSubstr("text 30 5080 3.400mS\ntext 0 5700 sample 1000\ntext 3630 5080 3.740mS\n"
                                "text 3600 5700 1100\ntext 7230 5080 4.080mS\ntext 7200 5700 1200\n"
                                "text 10830 5080 4.420mS\ntext 10800 5700 1300\n"));
}

TEST(an_svg_file, has_the_ruler_and_the_grid_of_the_screen)
{
    const temp_folder folder;
    const std::vector<std::uint8_t> samples(32768);
    const std::string read = read_by_python(folder.write("a.svg", cli::svg_of({samples, 0, 400, 3.4})));
    for (int mark = 0; mark <= 32; ++mark) {
        const bool is_long = mark == 8 || mark == 16 || mark == 24;
        const std::string x = std::to_string(450 * mark);
        EXPECT_THAT(read, HasSubstr("#000000 " + x + " 5340 " + x + " " + (is_long ? "5270" : "5320") + "\n"));
    }
    for (int k = 1; k <= 16; ++k) {
        const std::string x = std::to_string(900 * k);
        EXPECT_THAT(read, HasSubstr("#ffffff " + x + " 0 " + x + " 5400\n"));
    }
}

struct drawn_line {
    std::string ink;
    int x1, y1, x2, y2;
};

std::vector<drawn_line> traces_in(const std::string& read)
{
    std::vector<drawn_line> lines;
    std::istringstream in{read};
    for (std::string line; std::getline(in, line);) {
        if (!line.starts_with('#') || line.starts_with("#000000") || line.starts_with("#ffffff")) continue;
        std::istringstream words{line};
        drawn_line& one = lines.emplace_back();
        words >> one.ink >> one.x1 >> one.y1 >> one.x2 >> one.y2;
    }
    return lines;
}

/// What the traces say of each sample's level, and of the edge before it.
struct drawn_levels {
    std::vector<std::array<int, traces>> high, low, edges;

    drawn_levels(const std::vector<drawn_line>& lines, int count, int width) : high(size(count)), low(high), edges(high)
    {
        for (const drawn_line& one : lines) {
            const auto channel = static_cast<std::size_t>(one.y1 / row_height);
            EXPECT_EQ(one.ink, channel % 3 == 0 ? "#0000ff" : channel % 3 == 1 ? "#00ff00" : "#ff0000");
            const int base = static_cast<int>(channel) * row_height;
            if (one.y1 != one.y2) {
                EXPECT_EQ(std::pair(one.y1 - base, one.y2 - base), std::pair(low_level, high_level));
                ++edges.at(static_cast<std::size_t>(one.x1 / width))[channel];
                continue;
            }
            auto& level = one.y1 - base == high_level ? high : low;
            EXPECT_EQ(one.y1 - base, &level == &low ? low_level : high_level);
            for (int x = one.x1; x < one.x2; x += width) ++level.at(static_cast<std::size_t>(x / width))[channel];
        }
    }

private:
    static std::size_t size(int count) { return static_cast<std::size_t>(count); }
};

std::vector<std::uint8_t> slow_counter(std::size_t count)
{
    std::vector<std::uint8_t> samples(count);
    for (std::size_t i = 0; i < count; ++i) samples[i] = static_cast<std::uint8_t>(i / 100);
    return samples;
}

TEST(an_svg_file, has_each_sample_once_and_each_edge)
{
    const temp_folder folder;
    for (const auto& [from, count] : {std::pair{0, 1}, {0, 7}, {5, 300}, {32000, 768}, {1, 32767}}) {
        const std::vector<std::uint8_t> samples = count < 1000 ? random_bytes(32768) : slow_counter(32768);
        const std::string file = folder.write("a.svg", cli::svg_of({samples, from, count, 3.4}));
        const int width = std::max(1, 14400 / count);
        const drawn_levels drawn{traces_in(read_by_python(file)), count, width};
        int wrong = 0;
        for (std::size_t i = 0; i < static_cast<std::size_t>(count); ++i) {
            const std::size_t at = static_cast<std::size_t>(from) + i;
            for (std::size_t channel = 0; channel < traces; ++channel) {
                const int high = samples[at] >> channel & 1;
                const int edge = i > 0 ? (samples[at] ^ samples[at - 1]) >> channel & 1 : 0;
                wrong += drawn.high[i][channel] != high || drawn.low[i][channel] != 1 - high ||
                         drawn.edges[i][channel] != edge;
            }
        }
        EXPECT_EQ(wrong, 0) << from << ' ' << count;
    }
}

}  // namespace
}  // namespace tamrix::tests
