#include "cli/capture_picture.h"
#include "instruments/analyzer/analyzer_drawing.h"

#include <algorithm>
#include <array>

namespace tamrix::cli {

namespace {

constexpr std::int32_t row_height = 10;
constexpr std::size_t name_columns = 4;

/// What is in a column of a channel.
struct cell {
    int edges = 0;
    bool high = false;  // after the last edge
};

/// Of the upper row and the lower one.
struct glyphs {
    const char *upper, *lower;
};
struct letter_set {
    glyphs high, low, rise, fall, busy;
    const char *ruler, *mark;
};
constexpr letter_set boxes{{"─", " "}, {" ", "─"}, {"┌", "┘"}, {"┐", "└"}, {"▒", "▒"}, "─", "┬"};
constexpr letter_set ascii{{"_", " "}, {" ", "_"}, {"_", "|"}, {" ", "|"}, {"#", "#"}, "-", "+"};

const glyphs& glyphs_of(const cell& one, const letter_set& letters)
{
    if (one.edges > 1) return letters.busy;
    if (one.edges == 1) return one.high ? letters.rise : letters.fall;
    return one.high ? letters.high : letters.low;
}

/// How samples lie in columns: one is several wide, or several are in one.
struct scale {
    explicit scale(std::int32_t count)
        : columns_a_sample{std::max(1, letter_columns / count)},
          samples_a_column{(count + letter_columns - 1) / letter_columns}
    {}
    std::size_t column_of(std::int32_t x) const { return static_cast<std::size_t>(x / samples_a_column); }
    std::size_t column_of_sample(std::int32_t sample) const { return column_of(sample * columns_a_sample); }

    std::int32_t columns_a_sample, samples_a_column;
};

using grid = std::array<std::array<cell, letter_columns>, analyzer_channels>;

/// The lines of the screen with a row of 10 twips a channel, and with a twip for a column or for a sample of one.
grid cells_of(const capture_view& seen, const scale& by)
{
    const std::int32_t across = seen.count * by.columns_a_sample;
    const analyzer_view view{
        {across, row_height * analyzer_channels}, static_cast<double>(by.columns_a_sample), seen.from - 1};
    std::vector<analyzer_line> lines;
    add_traces(lines, seen.samples, view, {.row_height = row_height, .first = 0, .coloured = false});
    grid cells{};
    for (const analyzer_line& line : lines) {
        if (line.from.x < 0) continue;
        auto& row = cells[static_cast<std::size_t>(line.from.y / row_height)];
        if (line.from.y != line.to.y) {
            ++row[by.column_of(line.from.x)].edges;
            continue;
        }
        const bool high = line.from.y % row_height < row_height / 2;
        for (std::int32_t x = line.from.x; x < line.to.x; ++x) row[by.column_of(x)].high = high;
    }
    return cells;
}

std::string without_blanks_at_end(std::string line)
{
    line.resize(line.find_last_not_of(' ') + 1);
    return line;
}

/// Words at columns; one that does not fit after the one before it is left out.
class words_line {
public:
    void add(std::size_t column, const std::string& words)
    {
        column += name_columns;
        if (!text_.empty() && column <= text_.size()) return;
        text_.resize(column, ' ');
        text_ += words;
    }
    std::string text() const { return text_ + "\n"; }

private:
    std::string text_;
};

std::string ruler(const capture_view& seen, const scale& by, std::size_t columns, const letter_set& letters)
{
    const analyzer_view view{{seen.count, row_height}, 1, seen.from};
    const auto times = time_labels(view, seen.period_us);
    std::array<bool, letter_columns> marks{};
    words_line shown_times, shown_samples;
    for (std::int32_t i = 0; i < 4; ++i) {
        const std::int32_t sample = i * seen.count / 4;
        const std::size_t column = by.column_of_sample(sample);
        marks[column] = true;
        shown_times.add(column, times[static_cast<std::size_t>(i)]);
        shown_samples.add(column, (i == 0 ? "sample " : "") + std::to_string(seen.from + sample));
    }
    std::string text(name_columns, ' ');
    for (std::size_t i = 0; i < columns; ++i) text += marks[i] ? letters.mark : letters.ruler;
    return text + "\n" + shown_times.text() + shown_samples.text();
}

}  // namespace

std::string letters_of(const capture_view& seen, bool box_letters)
{
    constexpr int first_pin = 21;
    const letter_set& letters = box_letters ? boxes : ascii;
    const scale by{seen.count};
    const std::size_t columns = by.column_of_sample(seen.count - 1) + static_cast<std::size_t>(by.columns_a_sample);
    const grid cells = cells_of(seen, by);
    std::string text;
    for (std::size_t channel = 0; channel < cells.size(); ++channel) {
        std::string upper(name_columns, ' '), lower = "P" + std::to_string(first_pin + channel) + " ";
        for (std::size_t i = 0; i < columns; ++i) {
            const glyphs& drawn = glyphs_of(cells[channel][i], letters);
            upper += drawn.upper;
            lower += drawn.lower;
        }
        text += without_blanks_at_end(upper) + "\n" + without_blanks_at_end(lower) + "\n";
    }
    return text + ruler(seen, by, columns, letters);
}

}  // namespace tamrix::cli
