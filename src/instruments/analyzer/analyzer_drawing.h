// The timing diagram as a list of lines: from the samples and the view, for every surface alike. All lengths are twips.
#pragma once

#include "forms/canvas.h"

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

namespace tamrix {

inline constexpr int analyzer_channels = 8;

/// Which samples are seen, and how wide.
struct analyzer_view {
    forms::point size{};       // of the surface
    double bitwidth = 0;       // of one sample
    std::int32_t viewpos = 0;  // the sample at the left edge

    /// Samples from edge to edge; 0 where a sample has no width.
    std::int32_t samples_across() const;
};

struct analyzer_line {
    forms::point from, to;
    forms::colour ink;
    bool operator==(const analyzer_line&) const = default;
};

/// Of a channel from 1 to 8.
forms::colour channel_colour(int channel);

/// How the traces lie on a surface.
struct trace_style {
    std::int32_t row_height;
    std::int32_t first;  // the place in the view where they begin
    bool coloured;       // by channel; else black
};

/// Adds the traces of what the view shows of `samples`, which begin with the buffer's first one. A place of the view
/// outside the samples stays empty.
void add_traces(std::vector<analyzer_line>& lines, std::span<const std::uint8_t> samples, const analyzer_view& view,
                const trace_style& style);
/// Adds the black scale below the traces.
void add_ruler(std::vector<analyzer_line>& lines, const analyzer_view& view, std::int32_t row_height);

/// What the screen shows: traces, ruler and grid, in this order. Where a sample has no width, the traces are missing.
std::vector<analyzer_line> analyzer_lines(std::span<const std::uint8_t> samples, const analyzer_view& view);

/// The times at 0, 1/4, 1/2 and 3/4 of the view, `sampleus` microseconds a sample. All have the unit that fits the
/// first. Only for a view whose samples have a width.
std::array<std::string, 4> time_labels(const analyzer_view& view, double sampleus);

}  // namespace tamrix
