#include "capture/measures.h"

#include "capture/random_capture.h"

#include <vector>

#include <gtest/gtest.h>

namespace tamrix::tests {
namespace {

using namespace capture;

TEST(measures, a_pulse_has_width_period_and_duty)
{
    const std::vector<std::uint8_t> samples{0, 0, 1, 1, 1, 0, 1, 1};
    const change_index index{samples};
    const pulse high = pulse_at(index, 3, 0);
    EXPECT_TRUE(high.high);
    EXPECT_EQ(high.width(), 3u);
    EXPECT_EQ(high.period(), 4u);
    EXPECT_EQ(high.duty(), 0.75);
    const pulse low = pulse_at(index, 5, 0);
    EXPECT_FALSE(low.high);
    EXPECT_EQ(low.width(), 1u);
    EXPECT_EQ(low.period(), std::nullopt);
    EXPECT_EQ(pulse_at(index, 1, 0).width(), std::nullopt);
    EXPECT_EQ(pulse_at(index, 7, 0).end, std::nullopt);
    EXPECT_EQ(pulse_at(index, 7, 3).begin, std::nullopt);
}

TEST(measures, a_square_wave_has_its_frequency_and_duty)
{
    std::vector<std::uint8_t> samples(1000);
    for (std::size_t i = 0; i < samples.size(); ++i) samples[i] = i % 10 < 3 ? 4 : 0;
    const auto found = measures_between(change_index{samples}, 0, 999, 2);
    EXPECT_EQ(found.edges, 199u);
    EXPECT_EQ(found.rises, 99u);
    EXPECT_DOUBLE_EQ(found.frequency(*sample_period::of_hertz(10000)).value(), 1000);
    EXPECT_DOUBLE_EQ(found.duty().value(), 0.3);
    EXPECT_EQ(measures_between(change_index{samples}, 0, 10, 2).duty(), std::nullopt);
}

TEST(measures, equal_a_scan_of_ten_thousand_random_captures)
{
    std::mt19937 random{18};
    for (int round = 0; round < 10000; ++round) {
        const auto samples = random_capture(random, 1 + random() % 400);
        const std::uint64_t from = random() % samples.size(), to = from + random() % (samples.size() - from);
        const unsigned channel = random() % 8;
        std::vector<std::uint64_t> rises;
        std::uint64_t edges = 0, high = 0;
        for (std::uint64_t i = from + 1; i <= to; ++i) {
            const bool now = samples[i] >> channel & 1, before = samples[i - 1] >> channel & 1;
            edges += now != before;
            if (now && !before) rises.push_back(i);
        }
        if (!rises.empty()) {
            for (std::uint64_t i = rises.front(); i < rises.back(); ++i) high += samples[i] >> channel & 1;
        }
        const auto found = measures_between(change_index{samples}, from, to, channel);
        ASSERT_EQ(found.edges, edges);
        ASSERT_EQ(found.rises, rises.size());
        ASSERT_EQ(found.high, high);
        if (rises.empty()) continue;
        ASSERT_EQ(found.first_rise, rises.front());
        ASSERT_EQ(found.last_rise, rises.back());
    }
}

bool holds(const std::vector<std::uint8_t>& samples, std::uint64_t i, const level_pattern& pattern)
{
    for (unsigned channel = 0; channel < 8; ++channel) {
        const bool now = samples[i] >> channel & 1, before = i > 0 ? samples[i - 1] >> channel & 1 : now;
        if (pattern.low >> channel & 1 && now) return false;
        if (pattern.high >> channel & 1 && !now) return false;
        if (pattern.rise >> channel & 1 && !(now && !before)) return false;
        if (pattern.fall >> channel & 1 && !(before && !now)) return false;
    }
    return true;
}

TEST(level_pattern, is_found_where_a_scan_finds_it)
{
    std::mt19937 random{19};
    for (int round = 0; round < 10000; ++round) {
        const auto samples = random_capture(random, 1 + random() % 300, 3);
        level_pattern pattern;
        std::uint8_t* const kinds[] = {&pattern.low, &pattern.high, &pattern.rise, &pattern.fall};
        for (unsigned channel = 0; channel < 3; ++channel) {
            const unsigned kind = random() % 5;
            if (kind < 4) *kinds[kind] |= static_cast<std::uint8_t>(1u << channel);
        }
        const std::uint64_t place = random() % (samples.size() + 1);
        std::optional<std::uint64_t> next, previous;
        for (std::uint64_t i = 1; i < samples.size(); ++i) {
            if (!holds(samples, i, pattern) || holds(samples, i - 1, pattern)) continue;
            if (i < place) previous = i;
            if (i > place && !next) next = i;
        }
        const change_index index{samples};
        ASSERT_EQ(next_match(index, place, pattern), next);
        ASSERT_EQ(previous_match(index, place, pattern), previous);
    }
}

}  // namespace
}  // namespace tamrix::tests
