// The lines of the timing diagram, on the screen and on paper.
#include "instruments/analyzer/analyzer_drawing.h"

#include "chance.h"
#include "checksum.h"
#include "instruments/analyzer/analyzer_page.h"
#include "support/listing.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <functional>
#include <sstream>

namespace tamrix {
namespace {

using samples = std::vector<std::uint8_t>;

std::string text_of(const analyzer_line& line)
{
    char text[80];
    std::snprintf(text, sizeof text, "%06X %d %d %d %d", line.ink, line.from.x, line.from.y, line.to.x, line.to.y);
    return text;
}

int vertical(const std::vector<analyzer_line>& lines, forms::colour ink)
{
    return static_cast<int>(std::ranges::count_if(
        lines, [ink](const analyzer_line& one) { return one.ink == ink && one.from.x == one.to.x; }));
}

constexpr forms::colour blue = 0x0000FF, green = 0x00FF00, red = 0xFF0000, white = 0xFFFFFF;

TEST(channel_colours, repeat_every_three_channels)
{
    const forms::colour expected[] = {blue, green, red, blue, green, red, blue, green};
    for (int channel = 1; channel <= 8; ++channel) EXPECT_EQ(channel_colour(channel), expected[channel - 1]);
}

TEST(a_trace, is_high_or_low_in_its_row_and_begins_left_of_the_surface)
{
    std::vector<analyzer_line> lines;
    add_traces(lines, samples{0x01}, {.size = {300, 900}, .bitwidth = 100},
               {.row_height = 100, .first = 0, .coloured = true});
    ASSERT_EQ(lines.size(), 8u);
    EXPECT_EQ(lines[0], (analyzer_line{{-100, 20}, {0, 20}, blue}));
    EXPECT_EQ(lines[1], (analyzer_line{{-100, 190}, {0, 190}, green}));
    EXPECT_EQ(lines[7], (analyzer_line{{-100, 790}, {0, 790}, green}));
}

TEST(an_edge, between_the_first_two_samples_of_the_view_is_not_drawn)
{
    const analyzer_view view{.size = {300, 900}, .bitwidth = 100};
    const auto edges = [&](const samples& of) {
        std::vector<analyzer_line> lines;
        add_traces(lines, of, view, {.row_height = 100, .first = 0, .coloured = true});
        return vertical(lines, blue);
    };
    EXPECT_EQ(edges({0, 1, 1, 1}), 0);
    EXPECT_EQ(edges({0, 0, 1, 1}), 1);
    EXPECT_EQ(edges({0, 1, 0, 1}), 2);
    EXPECT_EQ(edges({0, 2, 0, 2}), 0) << "another channel";
}

TEST(a_sample, outside_the_buffer_is_not_drawn)
{
    const trace_style style{.row_height = 100, .first = 0, .coloured = true};
    for (const std::int32_t viewpos : {-4, -1, 0, 2, 3}) {
        std::vector<analyzer_line> lines;
        add_traces(lines, samples{1, 0, 1}, {.size = {300, 900}, .bitwidth = 100, .viewpos = viewpos}, style);
        const int seen = std::clamp(3 - std::max(viewpos, 0), 0, std::max(0, 4 + std::min(viewpos, 0)));
        EXPECT_EQ(static_cast<int>(lines.size()) - vertical(lines, blue), 8 * seen) << viewpos;
    }
    std::vector<analyzer_line> none;
    add_traces(none, samples{}, {.size = {300, 900}, .bitwidth = 100}, style);
    EXPECT_TRUE(none.empty());
}

TEST(a_sample, without_a_width_leaves_ruler_and_grid_alone)
{
    for (const double bitwidth : {0.0, 0.5}) {
        const analyzer_view view{.size = {320, 900}, .bitwidth = bitwidth};
        EXPECT_EQ(analyzer_lines(samples(100), view).size(), 33u + 32u);
        EXPECT_EQ(view.samples_across(), 0);
    }
}

TEST(the_grid, is_white_and_the_ruler_has_three_long_marks)
{
    const auto lines = analyzer_lines(samples{}, {.size = {3200, 900}, .bitwidth = 100});
    ASSERT_EQ(lines.size(), 65u);
    for (int mark = 0; mark <= 32; ++mark) {
        const bool is_long = mark == 8 || mark == 16 || mark == 24;
        EXPECT_EQ(lines[static_cast<std::size_t>(mark)],
                  (analyzer_line{{100 * mark, 890}, {100 * mark, is_long ? 820 : 870}, 0}));
    }
    EXPECT_EQ(lines[33], (analyzer_line{{200, 0}, {200, 900}, white}));
    EXPECT_EQ(lines[34], (analyzer_line{{100, 900}, {100, 891}, white}));
}

TEST(time_labels, have_the_unit_of_the_first_so_the_others_may_pass_1000)
{
    analyzer_view view{.size = {3200, 900}, .bitwidth = 10, .viewpos = 290};
    EXPECT_EQ(time_labels(view, 3.4), (std::array<std::string, 4>{"986uS", "1258uS", "1530uS", "1802uS"}));
    view.viewpos = 295;
    EXPECT_EQ(time_labels(view, 3.4), (std::array<std::string, 4>{"1.003mS", "1.275mS", "1.547mS", "1.819mS"}));
    view.viewpos = 294117;
    EXPECT_EQ(time_labels(view, 3.4)[0], "999.998mS");
    view.viewpos = 294118;
    EXPECT_EQ(time_labels(view, 3.4)[0], "1.000001Sec");
    EXPECT_EQ(time_labels(view, 0)[3], "0uS");
}

TEST(a_page, is_as_wide_as_the_screen_and_begins_at_a_fixed_place)
{
    struct : tests::listing<forms::page> {
        forms::point size() const override { return {11906, 16838}; }
    } seen;
    const analyzer_view view{.size = {3200, 4050}, .bitwidth = 100};
    print_page(seen, samples{0, 1, 1}, view,
               {.first = "\r0uS", .others = {"1uS", "2uS", "3uS"}, .heading = "Oscillogram"});
    EXPECT_EQ(seen.calls[0], "line 2800,2600 2800,9000 0");
    EXPECT_EQ(seen.calls[2], "line 2800,9000 6000,9000 0");
    EXPECT_EQ(seen.calls[5], "line 2810,2730 2810,3030 0");
    EXPECT_EQ(std::ranges::count_if(seen.calls, [](const auto& call) { return call.starts_with("line 2700"); }), 0)
        << "the sample left of the screen is not printed";
    const std::size_t texts = seen.calls.size() - 4;
    EXPECT_EQ(seen.calls[texts], "text 2800,7050 0 ");
    EXPECT_EQ(seen.calls[texts + 1], "text 2800,7290 0 0uS" + std::string(30, ' ') + "1uS" + std::string(25, ' ') +
                                         "2uS" + std::string(25, ' ') + "3uS");
    EXPECT_EQ(seen.calls[texts + 3], "text 2800,7770 0 " + std::string(50, ' ') + "Oscillogram");
}

/// A view of the separate model's file, and what it is a view of.
struct written_view {
    analyzer_view view{};
    double sampleus = 0;
    samples mapped{};

    void add_screen(const std::function<void(const std::string&)>& add) const
    {
        const auto lines = analyzer_lines(mapped, view);
        const std::size_t before_grid = lines.size() - 32;
        for (std::size_t i = 0; i < lines.size(); ++i) {
            if (i == before_grid && view.samples_across() > 0) add_labels(add);
            add(text_of(lines[i]));
        }
    }
    void add_paper(const std::function<void(const std::string&)>& add) const
    {
        for (const analyzer_line& one : page_lines(mapped, view)) add(text_of(one));
        std::array<std::string, 4> at;
        if (view.samples_across() > 0) at = time_labels(view, sampleus);
        add("text " + at[0] + "|30|" + at[1] + "|25|" + at[2] + "|25|" + at[3] + "|50|Oscillogram");
    }

private:
    void add_labels(const std::function<void(const std::string&)>& add) const
    {
        int number = 0;
        for (const std::string& label : time_labels(view, sampleus))
            add("label" + std::to_string(++number) + " " + label);
    }
};

std::istream& operator>>(std::istream& text, written_view& read)
{
    std::size_t mapped = 0;
    text >> read.view.size.x >> read.view.size.y >> read.view.bitwidth >> read.view.viewpos >> mapped >> read.sampleus;
    read.mapped.resize(mapped);
    return text;
}

/// How many and which texts.
struct summary {
    tests::checksum sum;
    std::string text() const { return std::to_string(sum.lines()) + " " + sum.text(); }
};

/// The first draws of a case are those of its view.
samples pattern_of_case(std::uint32_t number, std::uint32_t hold)
{
    tests::chance by{number};
    for (int draws = 0; draws < 12; ++draws) by.draw();
    samples made;
    std::uint8_t byte = 0;
    for (int i = 0; i < 1021; ++i) {
        if (by.draw() % 8 >= hold) byte = static_cast<std::uint8_t>(by.draw() >> 8);
        made.push_back(byte);
    }
    return made;
}

TEST(a_drawing_by_chance, is_that_of_the_separate_model_on_screen_and_paper)
{
    std::ifstream file{TAMRIX_INSTRUMENT_TRANSCRIPTS "/drawings.txt"};
    int compared = 0;
    for (std::string line; std::getline(file, line);) {
        std::istringstream words{line};
        std::string kind, wanted;
        std::uint32_t number = 0, hold = 0;
        written_view drawn;
        words >> kind;
        if (kind != "case") continue;
        words >> number >> drawn >> hold;
        std::getline(words >> std::ws, wanted);
        const samples pattern = pattern_of_case(number, hold);
        for (std::size_t i = 0; i < drawn.mapped.size(); i += pattern.size())
            std::copy_n(pattern.begin(), std::min(pattern.size(), drawn.mapped.size() - i),
                        drawn.mapped.begin() + static_cast<std::ptrdiff_t>(i));
        summary screen, paper;
        drawn.add_screen([&](const std::string& text) { screen.sum.add(text); });
        drawn.add_paper([&](const std::string& text) { paper.sum.add(text); });
        EXPECT_EQ(screen.text() + " " + paper.text(), wanted) << line;
        ++compared;
    }
    EXPECT_EQ(compared, 1000);
}

TEST(a_small_drawing, has_each_line_of_the_separate_model)
{
    std::ifstream file{TAMRIX_INSTRUMENT_TRANSCRIPTS "/drawings.txt"};
    std::vector<std::string> wanted, drawn_lines;
    for (std::string line; std::getline(file, line);) {
        if (line.starts_with("case ")) break;
        if (!line.starts_with("view ")) {
            wanted.push_back(line);
            continue;
        }
        std::istringstream words{line.substr(5)};
        written_view drawn;
        std::string bytes;
        words >> drawn >> bytes;
        for (std::size_t i = 0; i < drawn.mapped.size(); ++i)
            drawn.mapped[i] = static_cast<std::uint8_t>(std::stoi(bytes.substr(2 * i, 2), nullptr, 16));
        drawn.add_screen([&](const std::string& text) { drawn_lines.push_back("screen " + text); });
        drawn.add_paper([&](const std::string& text) { drawn_lines.push_back("paper " + text); });
    }
    EXPECT_GT(wanted.size(), 900u);
    EXPECT_EQ(drawn_lines, wanted);
}

}  // namespace
}  // namespace tamrix
