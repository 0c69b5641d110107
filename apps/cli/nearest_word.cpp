#include "cli/nearest_word.h"

#include <algorithm>
#include <vector>

namespace tamrix::cli {

namespace {

char lower(char letter) { return letter >= 'A' && letter <= 'Z' ? static_cast<char>(letter - 'A' + 'a') : letter; }

}  // namespace

int letters_apart(std::string_view one, std::string_view other)
{
    const auto same = [&](std::size_t in_one, std::size_t in_other) {
        return lower(one[in_one]) == lower(other[in_other]);
    };
    std::vector<int> before_last(other.size() + 1), last(other.size() + 1), row(other.size() + 1);
    for (std::size_t j = 0; j <= other.size(); ++j) row[j] = static_cast<int>(j);
    for (std::size_t i = 1; i <= one.size(); ++i) {
        before_last.swap(last);
        last.swap(row);
        row[0] = static_cast<int>(i);
        for (std::size_t j = 1; j <= other.size(); ++j) {
            row[j] = std::min({last[j] + 1, row[j - 1] + 1, last[j - 1] + (same(i - 1, j - 1) ? 0 : 1)});
            if (i > 1 && j > 1 && same(i - 1, j - 2) && same(i - 2, j - 1))
                row[j] = std::min(row[j], before_last[j - 2] + 1);
        }
    }
    return row[other.size()];
}

std::optional<std::string> nearest_word(std::string_view word, std::span<const std::string> known)
{
    constexpr std::size_t longest_name = 40;  // the table grows with both words, and nothing longer is near
    if (word.size() > longest_name) return std::nullopt;
    std::optional<std::string> nearest;
    int least = static_cast<int>(word.size()) / 3 + 1;
    for (const std::string& name : known) {
        const int apart = letters_apart(word, name);
        if (apart >= least) continue;
        least = apart;
        nearest = name;
    }
    return nearest;
}

}  // namespace tamrix::cli
