#include "instruments/analyzer/analyzer_drawing.h"

#include "base/arith.h"

#include <cstddef>

namespace tamrix {

namespace {

using arith::nearest;

constexpr forms::colour black = 0x000000, white = 0xFFFFFF;
constexpr int rows = 9;  // of the screen: eight channels and the room of the labels
constexpr int ruler_marks = 32, grid_lines = 16;
constexpr double high_level = 0.8, low_level = 0.1;  // of a row, up from its foot

/// The two levels and the colour of a channel's trace.
struct trace {
    std::int32_t high, low;
    forms::colour ink;
};

std::array<trace, analyzer_channels> traces_of(const trace_style& style)
{
    std::array<trace, analyzer_channels> made{};
    for (int channel = 1; channel <= analyzer_channels; ++channel) {
        made[static_cast<std::size_t>(channel) - 1] = {nearest((channel - high_level) * style.row_height),
                                                       nearest((channel - low_level) * style.row_height),
                                                       style.coloured ? channel_colour(channel) : black};
    }
    return made;
}

}  // namespace

std::int32_t analyzer_view::samples_across() const
{
    const std::int32_t width = nearest(bitwidth);
    return width == 0 ? 0 : size.x / width;
}

forms::colour channel_colour(int channel)
{
    constexpr forms::colour blue = 0x0000FF, green = 0x00FF00, red = 0xFF0000;
    constexpr std::array repeated{blue, green, red};
    return repeated[static_cast<std::size_t>(channel - 1) % repeated.size()];
}

/// Intentional: an edge between the first two samples of the view is not drawn, and the first sample's trace is left of
/// the surface.
void add_traces(std::vector<analyzer_line>& lines, std::span<const std::uint8_t> samples, const analyzer_view& view,
                const trace_style& style)
{
    if (nearest(view.bitwidth) == 0) return;
    const auto traces = traces_of(style);
    const auto has = [&samples](std::int64_t at) { return at >= 0 && at < static_cast<std::int64_t>(samples.size()); };
    const std::int32_t across = view.samples_across();
    for (std::int32_t i = style.first; i <= across; ++i) {
        const std::int64_t at = std::int64_t{i} + view.viewpos;
        if (!has(at)) continue;
        const std::uint8_t sample = samples[static_cast<std::size_t>(at)];
        const unsigned edges = i > 1 && has(at - 1) ? sample ^ samples[static_cast<std::size_t>(at) - 1] : 0U;
        const std::int32_t left = nearest((i - 1) * view.bitwidth), right = nearest(i * view.bitwidth);
        for (std::size_t bit = 0; bit < traces.size(); ++bit) {
            const trace& one = traces[bit];
            if ((edges >> bit & 1U) != 0) lines.push_back({{left, one.low}, {left, one.high}, one.ink});
            const std::int32_t level = (sample >> bit & 1U) != 0 ? one.high : one.low;
            lines.push_back({{left, level}, {right, level}, one.ink});
        }
    }
}

void add_ruler(std::vector<analyzer_line>& lines, const analyzer_view& view, std::int32_t row_height)
{
    constexpr int long_mark_each = 8;
    const double foot = 8.9 * row_height;
    for (int mark = 0; mark <= ruler_marks; ++mark) {
        const std::int32_t x = view.size.x / ruler_marks * mark;
        const bool is_long = mark % long_mark_each == 0 && mark != 0 && mark != ruler_marks;
        lines.push_back({{x, nearest(foot)}, {x, nearest(foot - (is_long ? 70 : 20))}, black});
    }
}

namespace {

void add_grid(std::vector<analyzer_line>& lines, const analyzer_view& view)
{
    const auto [width, height] = view.size;
    for (int k = 1; k <= grid_lines; ++k) {
        const std::int32_t x = nearest(1.0 * k * width / grid_lines);
        const std::int32_t between = nearest((2.0 * k - 1) * width / (2 * grid_lines));
        lines.push_back({{x, 0}, {x, height}, white});
        lines.push_back({{between, height}, {between, nearest(height * 99.0 / 100)}, white});
    }
}

}  // namespace

std::vector<analyzer_line> analyzer_lines(std::span<const std::uint8_t> samples, const analyzer_view& view)
{
    std::vector<analyzer_line> lines;
    lines.reserve(std::size_t{2} * analyzer_channels * static_cast<std::size_t>(view.samples_across() + 1) + 65);
    const std::int32_t row_height = nearest(double(view.size.y) / rows);
    add_traces(lines, samples, view, {.row_height = row_height, .first = 0, .coloured = true});
    add_ruler(lines, view, row_height);
    add_grid(lines, view);
    return lines;
}

std::array<std::string, 4> time_labels(const analyzer_view& view, double sampleus)
{
    const std::int32_t width = view.size.x;
    const std::int32_t offsets[] = {0, width / nearest(4 * view.bitwidth), width / nearest(2 * view.bitwidth),
                                    3 * width / nearest(4 * view.bitwidth)};
    const double first = view.viewpos;
    std::array<std::string, 4> labels;
    for (std::size_t i = 0; i < labels.size(); ++i) {
        const double at = first + offsets[i];
        if (first * sampleus < 1000) {
            labels[i] = arith::fixed(at * sampleus, 0) + "uS";
        } else if (first < 1000000 / sampleus) {
            labels[i] = arith::fixed(at / 1000 * sampleus, 3) + "mS";
        } else {
            labels[i] = arith::fixed(at / 1000000 * sampleus, 6) + "Sec";
        }
    }
    return labels;
}

}  // namespace tamrix
