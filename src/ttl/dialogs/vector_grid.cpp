#include "ttl/dialogs/vector_grid.h"

#include <algorithm>
#include <array>
#include <cstdio>

namespace tamrix {

std::string vector_grid::number(int row)
{
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "V%04d ", row + 1);
    return text.data();
}

std::string vector_grid::line(int row, std::string_view letters) { return number(row) + std::string{letters} + '\n'; }

std::vector<std::string> vector_grid::rows(const std::string& text, int count) const
{
    std::vector<std::string> letters;
    for (int row = 0; row < count; ++row) {
        const auto start = std::min(static_cast<std::size_t>(offset(row, first_column)), text.size());
        letters.push_back(text.substr(start, static_cast<std::size_t>(pins_)));
    }
    return letters;
}

void vector_grid::renumber(std::string& text, int first, int last) const
{
    for (int row = first; row <= last; ++row) {
        const auto start = static_cast<std::size_t>(offset(row, 0));
        if (start >= text.size()) return;
        text.replace(start, first_column, number(row));
    }
}

std::string vector_grid::ruler() const
{
    std::string tens(first_column, ' '), units = tens;
    for (int pin = 1; pin <= pins_; ++pin) {
        tens += static_cast<char>('0' + pin / 10 % 10);
        units += static_cast<char>('0' + pin % 10);
    }
    return tens + '\n' + units;
}

std::string vector_grid::fitted(std::string_view stored, char fill) const
{
    stored = stored.substr(0, stored.find('\0'));  // nothing was ever stored after one
    while (stored.starts_with(' ')) stored.remove_prefix(1);
    while (stored.ends_with(' ')) stored.remove_suffix(1);
    std::string letters{stored};
    letters.resize(static_cast<std::size_t>(pins_), fill);
    return letters;
}

}  // namespace tamrix
