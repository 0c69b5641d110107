#include "editing/byte_search.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <random>
#include <vector>

#include <gtest/gtest.h>

using namespace tamrix::editing;

namespace {

using byte_vector = std::vector<std::uint8_t>;

struct result {
    std::optional<std::size_t> place;
    bool wrapped;
    bool operator==(const result&) const = default;
};

result outcome_of(const byte_vector& bytes, const byte_vector& pattern, byte_range where, std::size_t start,
                  direction way = direction::forward)
{
    byte_finder finder{bytes, pattern, where, start, way};
    while (!finder.look()) continue;
    return {finder.found(), finder.wrapped()};
}

result outcome_of(const byte_vector& bytes, const byte_vector& pattern, std::size_t start,
                  direction way = direction::forward)
{
    return outcome_of(bytes, pattern, {0, bytes.size()}, start, way);
}

/// Place by place, with no regard to time.
std::optional<std::size_t> slow_search(const byte_vector& bytes, const byte_vector& pattern, byte_range where,
                                       std::size_t start, direction way)
{
    std::vector<std::size_t> places;
    for (std::size_t i = where.first; i + pattern.size() <= where.end(); ++i) {
        if (std::equal(pattern.begin(), pattern.end(), bytes.begin() + static_cast<std::ptrdiff_t>(i))) {
            places.push_back(i);
        }
    }
    if (places.empty()) return std::nullopt;
    if (way == direction::forward) {
        const auto next = std::ranges::lower_bound(places, start);
        return next == places.end() ? places.front() : *next;
    }
    const auto after = std::ranges::upper_bound(places, start);
    return after == places.begin() ? places.back() : *(after - 1);
}

}  // namespace

TEST(search_pattern, pairs_of_hexadecimal_digits_are_bytes)
{
    EXPECT_EQ(search_pattern("55 AA"), (byte_vector{0x55, 0xAA}));
    EXPECT_EQ(search_pattern("55aa"), (byte_vector{0x55, 0xAA}));
    EXPECT_EQ(search_pattern(""), byte_vector{});
}

TEST(search_pattern, anything_else_is_a_text)
{
    EXPECT_EQ(search_pattern("55A"), (byte_vector{'5', '5', 'A'}));
    EXPECT_EQ(search_pattern("read"), (byte_vector{'r', 'e', 'a', 'd'}));
}

TEST(search_pattern, a_text_in_quotes_is_a_text_even_where_it_looks_like_bytes)
{
    EXPECT_EQ(search_pattern("\"55\""), (byte_vector{'5', '5'}));
}

TEST(byte_finder, goes_on_at_the_other_end_and_says_so)
{
    const byte_vector buffer{1, 2, 3, 1, 2, 9}, pattern{1, 2};
    EXPECT_EQ(outcome_of(buffer, pattern, 0), (result{0, false}));
    EXPECT_EQ(outcome_of(buffer, pattern, 1), (result{3, false}));
    EXPECT_EQ(outcome_of(buffer, pattern, 4), (result{0, true}));
    EXPECT_EQ(outcome_of(buffer, pattern, 99), (result{0, true}));
    EXPECT_EQ(outcome_of(buffer, pattern, 5, direction::backward), (result{3, false}));
    EXPECT_EQ(outcome_of(buffer, pattern, 3, direction::backward), (result{3, false}));
    EXPECT_EQ(outcome_of(buffer, pattern, 2, direction::backward), (result{0, false}));
    const byte_vector late{9, 1, 2};
    EXPECT_EQ(outcome_of(late, pattern, 0, direction::backward), (result{1, true}));
}

TEST(byte_finder, finds_nothing_where_there_is_nothing)
{
    const byte_vector buffer{1, 2, 3};
    EXPECT_EQ(outcome_of(buffer, {3, 4}, 0).place, std::nullopt);
    EXPECT_EQ(outcome_of(buffer, {}, 0).place, std::nullopt);
    EXPECT_EQ(outcome_of(buffer, {1, 2, 3, 4}, 0).place, std::nullopt);
    EXPECT_EQ(outcome_of({}, {1}, 0).place, std::nullopt);
    EXPECT_EQ(outcome_of(buffer, {3}, {3, 10}, 0).place, std::nullopt);
}

TEST(byte_finder, finds_only_what_lies_whole_in_the_range)
{
    const byte_vector buffer{1, 2, 1, 2, 1, 2};
    EXPECT_EQ(outcome_of(buffer, {1, 2}, {1, 4}, 0), (result{2, false}));
    EXPECT_EQ(outcome_of(buffer, {1, 2}, {1, 2}, 0).place, std::nullopt);
    EXPECT_EQ(outcome_of(buffer, {1, 2}, {2, 4}, 1, direction::backward), (result{4, true}));
}

TEST(byte_finder, finds_what_a_slow_search_finds)
{
    std::mt19937 random{5};
    for (int round = 0; round < 3000; ++round) {
        byte_vector buffer(random() % 40), pattern(1 + random() % 4);
        for (auto& byte : buffer) byte = static_cast<std::uint8_t>(random() % 2);
        for (auto& byte : pattern) byte = static_cast<std::uint8_t>(random() % 2);
        const std::size_t first = random() % (buffer.size() + 1);
        const byte_range where{first, random() % (buffer.size() - first + 1)};
        const std::size_t start = random() % 45;
        for (const direction way : {direction::forward, direction::backward}) {
            ASSERT_EQ(outcome_of(buffer, pattern, where, start, way).place,
                      slow_search(buffer, pattern, where, start, way));
        }
    }
}

TEST(byte_finder, looks_at_a_long_buffer_in_pieces)
{
    byte_vector buffer(9 * 1024 * 1024);
    const byte_vector pattern{7, 8, 9};
    std::ranges::copy(pattern, buffer.begin() + 4 * 1024 * 1024);
    for (const auto& [way, start] :
         {std::pair{direction::forward, std::size_t{0}}, std::pair{direction::backward, buffer.size()},
          std::pair{direction::forward, std::size_t{5 * 1024 * 1024}}}) {
        byte_finder finder{buffer, pattern, {0, buffer.size()}, start, way};
        int pieces = 1, last_percent = 0;
        for (; !finder.look(); ++pieces) {
            EXPECT_LT(last_percent, finder.percent());
            last_percent = finder.percent();
        }
        EXPECT_GT(pieces, 1);
        EXPECT_EQ(finder.found(), 4u * 1024 * 1024);
        EXPECT_EQ(finder.wrapped(), start == 5u * 1024 * 1024);
    }
}

TEST(all_places, do_not_overlap_and_lie_whole_in_the_range)
{
    const byte_vector buffer{0, 0, 0, 0, 0, 1, 0, 0};
    EXPECT_EQ(all_places(buffer, byte_vector{0, 0}, {0, 8}), (std::vector<std::size_t>{0, 2, 6}));
    EXPECT_EQ(all_places(buffer, byte_vector{0, 0}, {1, 6}), (std::vector<std::size_t>{1, 3}));
    EXPECT_EQ(all_places(buffer, byte_vector{}, {0, 8}), std::vector<std::size_t>{});
    EXPECT_EQ(all_places(buffer, byte_vector{2}, {0, 100}), std::vector<std::size_t>{});
}
