// The text of the vector editor: lines of one width, each "V", the row's number, a blank, the letters of its pins.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace tamrix {

/// How a text of rows is laid out for a number of pins. All of it is arithmetic on offsets; a text that is shorter than
/// it should be gives shorter pieces.
class vector_grid {
public:
    static constexpr int first_column = 6;  // of the letters

    explicit vector_grid(int pins) : pins_{pins > 0 ? pins : 0} {}

    int pins() const { return pins_; }
    /// The column after the last letter, where the line feed is.
    int end_column() const { return pins_ + first_column; }
    int line_length() const { return end_column() + 1; }
    /// The offset of a column of row `row`, which counts from 0.
    int offset(int row, int column) const { return line_length() * row + column; }

    /// The line of a row; its number in the text counts from 1.
    static std::string line(int row, std::string_view letters);
    /// The letters of rows 0 to `count` - 1.
    std::vector<std::string> rows(const std::string& text, int count) const;
    /// Writes the numbers of rows `first` to `last` anew.
    void renumber(std::string& text, int first, int last) const;
    /// The two lines above the grid: tens and units of each pin's number.
    std::string ruler() const;
    /// A stored row as it fills a line: cut to one letter a pin, or filled up with `fill`.
    std::string fitted(std::string_view stored, char fill) const;

    /// "." is a letter that is not filled in yet.
    static constexpr char unfilled = '.';
    static std::string unfilled_row(int pins) { return std::string(static_cast<std::size_t>(pins), unfilled); }

private:
    static std::string number(int row);

    int pins_;
};

}  // namespace tamrix
