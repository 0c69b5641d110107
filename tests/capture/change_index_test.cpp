#include "capture/change_index.h"

#include "capture/random_capture.h"

#include <algorithm>
#include <cstdint>
#include <optional>
#include <vector>

#include <gtest/gtest.h>

namespace tamrix::tests {
namespace {

using capture::change_index;
using edge_place = std::optional<std::uint64_t>;

bool has_edge(const std::vector<std::uint8_t>& samples, std::uint64_t i, std::uint8_t channels)
{
    return ((samples[i] ^ samples[i - 1]) & channels) != 0;
}

edge_place naive_next(const std::vector<std::uint8_t>& samples, std::uint64_t place, std::uint8_t channels)
{
    for (std::uint64_t i = place + 1; i < samples.size(); ++i) {
        if (has_edge(samples, i, channels)) return i;
    }
    return std::nullopt;
}

edge_place naive_previous(const std::vector<std::uint8_t>& samples, std::uint64_t place, std::uint8_t channels)
{
    for (std::uint64_t i = std::min<std::uint64_t>(place, samples.size()); i-- > 1;) {
        if (has_edge(samples, i, channels)) return i;
    }
    return std::nullopt;
}

std::uint8_t naive_changed(const std::vector<std::uint8_t>& samples, std::uint64_t from, std::uint64_t to)
{
    std::uint8_t all = 0;
    for (std::uint64_t i = from + 1; i <= to && i < samples.size(); ++i) all |= samples[i] ^ samples[i - 1];
    return all;
}

TEST(change_index, finds_what_a_scan_finds_in_ten_thousand_random_captures)
{
    std::mt19937 random{17};
    for (int round = 0; round < 10000; ++round) {
        const auto samples = random_capture(random, random() % (round % 100 == 0 ? 40000 : 700));
        const change_index index{samples};
        for (int question = 0; question < 10; ++question) {
            const std::uint64_t place = random() % (samples.size() + 3), other = random() % (samples.size() + 3);
            const auto channels = static_cast<std::uint8_t>(question == 0 ? random() : 1u << random() % 8);
            ASSERT_EQ(index.next_edge(place, channels), naive_next(samples, place, channels)) << place;
            ASSERT_EQ(index.previous_edge(place, channels), naive_previous(samples, place, channels)) << place;
            ASSERT_EQ(index.changed(place, other), naive_changed(samples, place, other)) << place << " " << other;
        }
    }
}

TEST(change_index, finds_an_edge_far_away_on_both_sides)
{
    std::vector<std::uint8_t> samples(5'000'001);
    for (const std::size_t edge : {std::size_t{1}, std::size_t{4'194'304}, samples.size() - 1}) {
        std::fill(samples.begin(), samples.end(), std::uint8_t{});
        std::fill(samples.begin() + static_cast<std::ptrdiff_t>(edge), samples.end(), std::uint8_t{0x10});
        const change_index index{samples};
        EXPECT_EQ(index.next_edge(0, 0x10), edge);
        EXPECT_EQ(index.next_edge(edge, 0x10), std::nullopt);
        EXPECT_EQ(index.previous_edge(samples.size(), 0xFF), edge);
        EXPECT_EQ(index.previous_edge(edge, 0xFF), std::nullopt);
        EXPECT_EQ(index.next_edge(0, 0xEF), std::nullopt);
        EXPECT_EQ(index.changed(0, samples.size() - 1), 0x10);
    }
}

TEST(change_index, takes_at_most_a_fiftieth_of_the_samples)
{
    const std::vector<std::uint8_t> samples(1 << 20);
    EXPECT_LE(change_index{samples}.memory() * 50, samples.size());
}

}  // namespace
}  // namespace tamrix::tests
