#include "editing/byte_search.h"

#include "files/hex_digits.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <string>
#include <utility>

namespace tamrix::editing {

namespace {

constexpr std::size_t places_in_piece = 4 * 1024 * 1024;

}  // namespace

std::vector<std::uint8_t> search_pattern(std::string_view typed)
{
    if (typed.size() >= 2 && typed.front() == '"' && typed.back() == '"') {
        return {typed.begin() + 1, typed.end() - 1};
    }
    std::string digits{typed};
    std::erase(digits, ' ');
    std::vector<std::uint8_t> bytes(digits.size() / 2);
    unsigned sum = 0;
    const auto* text = reinterpret_cast<const std::uint8_t*>(digits.data());
    if (digits.size() % 2 != 0 || !hex_digits::decode(text, bytes.size(), bytes.data(), sum)) {
        return {typed.begin(), typed.end()};
    }
    return bytes;
}

byte_finder::byte_finder(std::span<const std::uint8_t> bytes, std::vector<std::uint8_t> pattern, byte_range where,
                         std::size_t start, direction way)
    : bytes_{bytes}, pattern_{std::move(pattern)}, way_{way}
{
    where = within(where, bytes.size());
    if (pattern_.empty() || pattern_.size() > where.length) return;
    places_ = {where.first, where.length - pattern_.size() + 1};
    left_ = places_.length;
    if (way == direction::forward) {
        wrapped_ = start >= places_.end();
        at_ = wrapped_ ? places_.first : std::max(start, places_.first);
    } else {
        wrapped_ = start < places_.first;
        at_ = wrapped_ ? places_.end() : std::min(start + 1, places_.end());
    }
}

byte_range byte_finder::next_places() const
{
    const std::size_t most = std::min(left_, places_in_piece);
    if (way_ == direction::forward) return {at_, std::min(most, places_.end() - at_)};
    const std::size_t count = std::min(most, at_ - places_.first);
    return {at_ - count, count};
}

std::optional<std::size_t> byte_finder::first_in(byte_range places) const
{
    const auto first = bytes_.begin() + static_cast<std::ptrdiff_t>(places.first);
    const auto last = first + static_cast<std::ptrdiff_t>(places.length + pattern_.size() - 1);
    if (way_ == direction::forward) {
        const auto place =
            std::search(first, last, std::boyer_moore_horspool_searcher{pattern_.begin(), pattern_.end()});
        if (place == last) return std::nullopt;
        return static_cast<std::size_t>(place - bytes_.begin());
    }
    const auto end = std::make_reverse_iterator(first);
    const auto place = std::search(std::make_reverse_iterator(last), end,
                                   std::boyer_moore_horspool_searcher{pattern_.rbegin(), pattern_.rend()});
    if (place == end) return std::nullopt;
    return static_cast<std::size_t>(place.base() - bytes_.begin()) - pattern_.size();
}

bool byte_finder::look()
{
    if (left_ == 0 || found_) return true;
    const byte_range places = next_places();
    found_ = first_in(places);
    left_ -= places.length;
    if (found_ || left_ == 0) return true;
    const bool forward = way_ == direction::forward;
    at_ = forward ? places.end() : places.first;
    if (at_ == (forward ? places_.end() : places_.first)) {
        wrapped_ = true;
        at_ = forward ? places_.first : places_.end();
    }
    return false;
}

int byte_finder::percent() const
{
    return places_.empty() ? 100 : static_cast<int>((places_.length - left_) * 100 / places_.length);
}

std::vector<std::size_t> all_places(std::span<const std::uint8_t> bytes, std::span<const std::uint8_t> pattern,
                                    byte_range where)
{
    std::vector<std::size_t> places;
    if (pattern.empty()) return places;
    where = within(where, bytes.size());
    const auto end = bytes.begin() + static_cast<std::ptrdiff_t>(where.end());
    const std::boyer_moore_horspool_searcher searcher{pattern.begin(), pattern.end()};
    for (auto at = bytes.begin() + static_cast<std::ptrdiff_t>(where.first);;) {
        at = std::search(at, end, searcher);
        if (at == end) return places;
        places.push_back(static_cast<std::size_t>(at - bytes.begin()));
        at += static_cast<std::ptrdiff_t>(pattern.size());
    }
}

}  // namespace tamrix::editing
