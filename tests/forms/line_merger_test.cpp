#include "forms/line_merger.h"

#include <gtest/gtest.h>

#include <random>

namespace tamrix::forms {
namespace {

constexpr int width = 60, height = 40;
constexpr colour red = 0xFF0000, blue = 0x0000FF;

struct line {
    point from, to;
    colour ink;
};

struct surface {
    std::vector<colour> pixels = std::vector<colour>(std::size_t{width} * height, 0xFFFFFF);

    void fill(point first, point last, colour ink)
    {
        for (int y = std::max(0, std::min(first.y, last.y)); y <= std::min(height - 1, std::max(first.y, last.y)); ++y)
            for (int x = std::max(0, std::min(first.x, last.x)); x <= std::min(width - 1, std::max(first.x, last.x));
                 ++x)
                pixels[static_cast<std::size_t>(y * width + x)] = ink;
    }
    bool operator==(const surface&) const = default;
};

std::vector<line_merger::bar> merged(const std::vector<line>& lines)
{
    std::vector<line_merger::bar> bars;
    line_merger merger{width, height, [&](const line_merger::bar& one) { bars.push_back(one); }};
    for (const line& one : lines) EXPECT_TRUE(merger.add(one.from, one.to, one.ink));
    merger.flush();
    return bars;
}

TEST(lines, that_touch_on_a_row_or_a_column_become_one)
{
    using bars = std::vector<line_merger::bar>;
    EXPECT_EQ(merged({{{0, 5}, {3, 5}, red}, {{4, 5}, {9, 5}, red}, {{9, 5}, {2, 5}, red}}),
              (bars{{{0, 5}, {9, 5}, red}}));
    EXPECT_EQ(merged({{{7, 1}, {7, 4}, red}, {{7, 8}, {7, 5}, red}}), (bars{{{7, 1}, {7, 8}, red}}));
    EXPECT_EQ(merged({{{0, 5}, {3, 5}, red}, {{5, 5}, {9, 5}, red}}).size(), 2u) << "a pixel is between them";
    EXPECT_EQ(merged({{{0, 5}, {3, 5}, red}, {{3, 6}, {9, 6}, red}}).size(), 2u);
}

TEST(columns, that_are_equal_and_side_by_side_become_a_bar)
{
    EXPECT_EQ(merged({{{3, 1}, {3, 9}, red}, {{4, 1}, {4, 9}, red}, {{5, 9}, {5, 1}, red}}),
              (std::vector<line_merger::bar>{{{3, 1}, {5, 9}, red}}));
    EXPECT_EQ(merged({{{3, 1}, {3, 9}, red}, {{5, 1}, {5, 9}, red}}).size(), 2u);
    EXPECT_EQ(merged({{{3, 1}, {3, 9}, red}, {{4, 1}, {4, 9}, blue}}).size(), 2u);
}

TEST(a_slanted_line, is_not_taken)
{
    line_merger merger{width, height, [](const line_merger::bar&) { FAIL(); }};
    EXPECT_FALSE(merger.add({0, 0}, {1, 1}, red));
    merger.flush();
}

TEST(a_line, outside_the_surface_is_cut_off)
{
    EXPECT_EQ(merged({{{-5, 3}, {1000, 3}, red}}), (std::vector<line_merger::bar>{{{0, 3}, {width - 1, 3}, red}}));
    EXPECT_TRUE(merged({{{0, -1}, {9, -1}, red}, {{width, 0}, {width, 9}, red}, {{-9, 2}, {-1, 2}, red}}).empty());
}

TEST(merged_lines, cover_the_same_pixels_in_the_same_colours)
{
    std::mt19937 random{7};
    const auto up_to = [&](int most) { return static_cast<int>(random() % static_cast<unsigned>(most + 1)); };
    for (int round = 0; round < 400; ++round) {
        std::vector<line> lines;
        surface wanted, got;
        for (int i = up_to(60); i > 0; --i) {
            const point from{up_to(width + 10) - 5, up_to(height + 10) - 5};
            const point to = up_to(1) == 0 ? point{from.x, up_to(height)} : point{from.x + up_to(12), from.y};
            lines.push_back({from, to, up_to(1) == 0 ? red : up_to(1) == 0 ? blue : 0U});
            wanted.fill(from, to, lines.back().ink);
        }
        for (const auto& one : merged(lines)) got.fill(one.first, one.last, one.ink);
        ASSERT_EQ(got, wanted) << round;
    }
}

TEST(merged_lines, of_a_dense_diagram_are_few)
{
    std::vector<line> lines;
    for (int i = 0; i < 4 * width; ++i) {
        const int x = i / 4;
        for (int row = 0; row < 4; ++row) {
            lines.push_back({{x, row * 10}, {x, row * 10 + 7}, row % 2 == 0 ? red : blue});
            lines.push_back({{x, row * 10 + (i % 2) * 7}, {x, row * 10 + (i % 2) * 7}, row % 2 == 0 ? red : blue});
        }
    }
    EXPECT_LE(merged(lines).size(), 12u);
}

}  // namespace
}  // namespace tamrix::forms
