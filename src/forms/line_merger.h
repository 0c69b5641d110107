// Fewer lines for the same pixels: a diagram of many samples has thousands of lines on each column of a screen.
#pragma once

#include "forms/canvas.h"

#include <array>
#include <cstddef>
#include <functional>
#include <span>
#include <vector>

namespace tamrix::forms {

/// Halves go away from 0. A call of the run time for each end of a line would take longer than all the rest.
inline int nearest_pixel(double at) { return static_cast<int>(at < 0 ? at - 0.5 : at + 0.5); }

/// Takes level and upright lines in pixels and passes on those that cover the same pixels in the same colours: lines of
/// one row or column that touch become one, and equal ones side by side a bar. Both ends of a line are pixels of it.
class line_merger {
public:
    struct bar {
        point first, last;  // its corners; the same row, or the same column, for a line
        colour ink;
        bool operator==(const bar&) const = default;
    };

    /// `width` and `height` are those of the surface; what is outside is cut off.
    line_merger(int width, int height, std::function<void(const bar&)> pass_on);

    /// True if the line was taken; one that is neither level nor upright is not.
    bool add(point from, point to, colour ink);
    /// Passes on all lines that were taken. To be called before anything else is drawn, and at the end.
    void flush();

private:
    /// Pixels `low` to `high` of a row or column.
    struct run {
        int low, high;
        colour ink;
    };
    /// What waits on a row or column; in place, since a wide screen has thousands of them.
    struct waiting {
        static constexpr std::size_t most = 8;  // each is compared with the next line

        std::span<run> runs() { return {held.data(), count}; }
        std::span<const run> runs() const { return {held.data(), count}; }

        std::array<run, most> held{};
        std::size_t count = 0;
        colour first_ink = 0;     // of these
        bool other_inks = false;  // have some of them
    };
    /// The rows, or the columns.
    struct lines {
        std::vector<waiting> at{};  // by coordinate
        std::vector<int> used{};    // coordinates with runs
    };

    void add_run(lines& along, lines& across, int at, run added);
    void flush_crossed(lines& across, int at, const run& added);
    void flush_at(lines& of, int at);
    void pass_on(const lines& of, int at, const run& one) const;
    void flush_columns();

    lines rows_, columns_;
    std::function<void(const bar&)> pass_on_;
};

}  // namespace tamrix::forms
