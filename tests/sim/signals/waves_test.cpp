#include "sim/signals/waves.h"

#include <gtest/gtest.h>

#include "sim/signals/line_reader.h"

#include <set>

namespace tamrix::tests {

namespace {

TEST(signals, a_square_wave_is_high_for_its_duty_and_starts_at_its_phase)
{
    const auto plain = signals_of({"P21 square 1000"});
    EXPECT_EQ(levels_at(plain, 21, {0, 499'999, 500'000, 999'999, 1'000'000, 1'499'999}), "HHLLHH");
    const auto quarter = signals_of({"P23 square 1000 duty 25 phase 90"});
    EXPECT_EQ(levels_at(quarter, 23, {0, 749'999, 750'000, 999'999, 1'000'000}), "LLHHL");
    EXPECT_EQ(levels_at(quarter, 22, {0, 750'000}), "--");
}

TEST(signals, a_square_wave_loses_no_edge_over_a_long_time)
{
    for (const char* const text : {"P21 square 3", "P21 square 132575.3", "P21 square 999983 duty 0.1 phase 359"}) {
        const sim::signal_set set = signals_of({text});
        auto walk = set.walk();
        const double hertz = std::stod(std::string{text}.substr(11));
        const std::int64_t begin = 3'600'000'000'000, length = 1'000'000'000;  // an hour later, a second long
        int rises = 0;
        bool was_high = (walk.look(sim::nanoseconds{begin}).levels.high & 1) != 0;
        for (auto seen = walk.look(sim::nanoseconds{begin}); seen.until.count() < begin + length;) {
            const auto when = seen.until;
            seen = walk.look(when);
            const bool is_high = (seen.levels.high & 1) != 0;
            ASSERT_NE(is_high, was_high) << "a change is a change";
            rises += is_high ? 1 : 0;
            was_high = is_high;
        }
        EXPECT_NEAR(rises, hertz, 1) << text;
    }
}

TEST(signals, a_counter_counts_on_its_pins_from_the_lowest)
{
    const auto set = signals_of({"P22..P24 counter 1000"});
    auto walk = set.walk();
    for (int step = 0; step < 20; ++step) {
        const auto levels = walk.look(sim::nanoseconds{step * 1'000'000 + 10}).levels;
        EXPECT_EQ(levels.driven, 0x0E);
        EXPECT_EQ(levels.high >> 1, step % 8);
    }
}

TEST(signals, noise_is_the_same_for_the_same_start_and_does_not_prefer_a_pin)
{
    const auto read = [](const char* text) {
        auto walk = signals_of({text}).walk();
        std::vector<std::uint8_t> bytes;
        for (int step = 0; step < 4096; ++step)
            bytes.push_back(walk.look(sim::nanoseconds{step * 1'000'000ll + 5}).levels.high);
        return bytes;
    };
    const auto bytes = read("P21..P28 noise 1000 start 7");
    EXPECT_EQ(bytes, read("P21..P28 noise 1000 start 7"));
    EXPECT_NE(bytes, read("P21..P28 noise 1000 start 8"));
    EXPECT_EQ(read("P21..P28 noise 1000"), read("P21..P28 noise 1000 start 1"));
    for (int bit = 0; bit < 8; ++bit) {
        int highs = 0, same = 0;
        for (std::size_t i = 0; i < bytes.size(); ++i) {
            highs += bytes[i] >> bit & 1;
            same += i > 0 && ((bytes[i] ^ bytes[i - 1]) >> bit & 1) == 0 ? 1 : 0;
        }
        EXPECT_NEAR(highs, 2048, 200) << bit;
        EXPECT_NEAR(same, 2048, 200) << bit;
    }
}

TEST(signals, a_pulse_comes_at_its_time_and_again_if_wanted)
{
    const auto once = signals_of({"P22 pulse 0.001 0.002"});
    EXPECT_EQ(edges_of(once, 1'000'000'000), (std::vector<edge>{{1'000'000, 22, true}, {2'000'000, 22, false}}));
    const auto again = signals_of({"P22 pulse 0.001 0.002 low after 0.01 every 0.1"});
    EXPECT_EQ(edges_of(again, 200'000'000),
              (std::vector<edge>{
                  {11'000'000, 22, false}, {12'000'000, 22, true}, {111'000'000, 22, false}, {112'000'000, 22, true}}));
    const auto from_start = signals_of({"P22 pulse 0 0.002"});
    EXPECT_EQ(levels_at(from_start, 22, {0, 1'999'999, 2'000'000}), "HHL");
}

TEST(signals, steady_levels_stay_and_several_signals_go_together)
{
    const auto set = signals_of({"P21 high", "P22 low", "P28 square 1", "P25 P27 high"});
    EXPECT_EQ(set.pins(), 0b11010011);
    auto walk = set.walk();
    EXPECT_EQ(walk.look(sim::nanoseconds{0}).levels, (sim::pin_levels{0b11010011, 0b11010001}));
    EXPECT_EQ(walk.look(sim::nanoseconds{600'000'000}).levels, (sim::pin_levels{0b11010011, 0b01010001}));
}

}  // namespace
}  // namespace tamrix::tests
