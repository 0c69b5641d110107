// The rows and columns of a message box.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace tamrix::forms {

struct box_cell {
    std::string words{};     // UTF-8, without blanks before them
    std::size_t blanks = 0;  // before them, where the box is shown as plain text

    bool operator==(const box_cell&) const = default;
};

struct box_row {
    box_cell label{};  // with its colon; empty for a heading
    std::vector<box_cell> cells{};

    bool operator==(const box_row&) const = default;
};

struct box_table {
    std::vector<box_row> rows{};
    std::string row_end = "\n";  // after each row of the plain text
    std::string closing{};       // a line below the rows
    bool letters = false;        // each letter of a cell belongs to those above and below it

    bool operator==(const box_table&) const = default;
};

/// The words without the blanks before them, which are counted.
box_cell cell_of(std::string_view words);
/// A line whose label ends with its first colon; what comes after it is one cell. Without a colon there is no label.
box_row row_of(std::string_view line);
/// The table as one text, lined up by blanks.
std::string plain_text(const box_table& table);

}  // namespace tamrix::forms
