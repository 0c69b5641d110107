#include "workbench/byte_search.h"

#include <algorithm>
#include <functional>
#include <string>

namespace tamrix::workbench {

int hex_digit(int letter)
{
    if (letter >= '0' && letter <= '9') return letter - '0';
    if (letter >= 'A' && letter <= 'F') return letter - 'A' + 10;
    if (letter >= 'a' && letter <= 'f') return letter - 'a' + 10;
    return -1;
}

std::vector<std::uint8_t> search_pattern(std::string_view typed)
{
    if (typed.size() >= 2 && typed.front() == '"' && typed.back() == '"') {
        return {typed.begin() + 1, typed.end() - 1};
    }
    std::string digits{typed};
    std::erase(digits, ' ');
    const bool hexadecimal =
        digits.size() % 2 == 0 && std::ranges::all_of(digits, [](char letter) { return hex_digit(letter) >= 0; });
    if (!hexadecimal) return {typed.begin(), typed.end()};
    std::vector<std::uint8_t> bytes;
    for (std::size_t i = 0; i < digits.size(); i += 2) {
        bytes.push_back(static_cast<std::uint8_t>(hex_digit(digits[i]) * 16 + hex_digit(digits[i + 1])));
    }
    return bytes;
}

std::optional<std::size_t> find_bytes(std::span<const std::uint8_t> bytes, std::span<const std::uint8_t> pattern,
                                      std::size_t start)
{
    if (pattern.empty() || pattern.size() > bytes.size()) return std::nullopt;
    const std::boyer_moore_horspool_searcher searcher{pattern.begin(), pattern.end()};
    const auto from = bytes.begin() + static_cast<std::ptrdiff_t>(std::min(start, bytes.size()));
    auto found = std::search(from, bytes.end(), searcher);
    if (found == bytes.end()) found = std::search(bytes.begin(), bytes.end(), searcher);
    if (found == bytes.end()) return std::nullopt;
    return static_cast<std::size_t>(found - bytes.begin());
}

}  // namespace tamrix::workbench
