#include "instruments/analyzer/analyzer_page.h"

#include "base/arith.h"

#include <cstddef>

namespace tamrix {

namespace {

using arith::nearest;

constexpr forms::colour black = 0x000000;
constexpr forms::point origin{2800, 2600};  // of the diagram, on the page
constexpr double rows = 8.1;
constexpr int line_height = 240;  // of a page's text

/// What a bar begins below the upper end of its row and ends above the lower one.
struct bar_margins {
    int above, below;
};
constexpr std::array<bar_margins, analyzer_channels> bars{
    {{130, 70}, {130, 70}, {130, 70}, {130, 100}, {110, 90}, {100, 90}, {100, 90}, {100, 120}}};

std::int32_t page_row_height(const analyzer_view& view) { return nearest(view.size.y / rows); }

void add_axes(std::vector<analyzer_line>& lines, int width)
{
    constexpr int foot = 6400;
    for (const auto& [from, to] : {std::pair<forms::point, forms::point>{{0, 0}, {0, foot}},
                                   {{0, 0}, {60, 100}},
                                   {{0, foot}, {width, foot}},
                                   {{0, foot + 10}, {width, foot + 10}},
                                   {{width - 100, foot - 60}, {width, foot}}})
        lines.push_back({from, to, black});
}

void add_bars(std::vector<analyzer_line>& lines, int height)
{
    constexpr int x = 10;
    const double row = height / rows;
    for (std::size_t i = 0; i < bars.size(); ++i) {
        const auto top = static_cast<double>(i) * row;
        lines.push_back(
            {{x, nearest(top + bars[i].above)}, {x, nearest(static_cast<double>(i + 1) * row - bars[i].below)}, black});
    }
}

}  // namespace

std::vector<analyzer_line> page_lines(std::span<const std::uint8_t> samples, const analyzer_view& view)
{
    std::vector<analyzer_line> lines;
    add_axes(lines, view.size.x);
    add_bars(lines, view.size.y);
    const std::int32_t row_height = page_row_height(view);
    add_traces(lines, samples, view, {.row_height = row_height, .first = 1, .coloured = false});
    add_ruler(lines, view, row_height);
    return lines;
}

std::vector<std::string> lines_of(const page_text& text)
{
    const auto tab = [](std::size_t columns) { return std::string(columns, ' '); };
    const std::string all = text.first + tab(30) + text.others[0] + tab(25) + text.others[1] + tab(25) +
                            text.others[2] + "\r\r" + tab(50) + text.heading;
    std::vector<std::string> lines;
    for (std::size_t at = 0; at <= all.size();) {
        const std::size_t end = std::min(all.find('\r', at), all.size());
        lines.push_back(all.substr(at, end - at));
        at = end + 1;
    }
    return lines;
}

void print_page(forms::page& paper, std::span<const std::uint8_t> samples, const analyzer_view& view,
                const page_text& text)
{
    const auto on_page = [](forms::point at) { return forms::point{at.x + origin.x, at.y + origin.y}; };
    for (const analyzer_line& one : page_lines(samples, view)) paper.line(on_page(one.from), on_page(one.to), one.ink);
    forms::point at = on_page({0, nearest(8.9 * page_row_height(view))});
    for (const std::string& line : lines_of(text)) {
        paper.text(at, line, black);
        at.y += line_height;
    }
}

}  // namespace tamrix
