#include "forms/box_table.h"

#include <algorithm>

namespace tamrix::forms {

namespace {

std::string plain_text(const box_cell& cell) { return std::string(cell.blanks, ' ') + cell.words; }

}  // namespace

box_cell cell_of(std::string_view words)
{
    const std::size_t blanks = std::min(words.find_first_not_of(' '), words.size());
    return {std::string{words.substr(blanks)}, blanks};
}

box_row row_of(std::string_view line)
{
    const std::size_t after_label = line.find(':') + 1;  // 0 where there is no colon
    return {cell_of(line.substr(0, after_label)), {cell_of(line.substr(after_label))}};
}

std::string plain_text(const box_table& table)
{
    std::string text;
    for (const box_row& row : table.rows) {
        text += plain_text(row.label);
        for (const box_cell& cell : row.cells) text += plain_text(cell);
        text += table.row_end;
    }
    return table.closing.empty() ? text : text + "\n" + table.closing;
}

}  // namespace tamrix::forms
