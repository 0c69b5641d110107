#include "capture/sample_period.h"

#include <gtest/gtest.h>

namespace tamrix::tests {
namespace {

using capture::sample_period;

TEST(sample_period, is_exact_in_texts_of_times_and_rates)
{
    EXPECT_EQ(sample_period::of_text("3.5us"), sample_period::of_picoseconds(3'500'000));
    EXPECT_EQ(sample_period::of_text("100 ns"), sample_period::of_hertz(10'000'000));
    EXPECT_EQ(sample_period::of_rate_text("12.5 kHz"), sample_period::of_text("80 us"));
    EXPECT_EQ(sample_period::of_rate_text("3MHz"), sample_period::of_text("1/3000000 s"));
    EXPECT_EQ(sample_period::of_rate_text("285714"), sample_period::of_hertz(285714));
}

TEST(sample_period, has_a_text_that_is_read_again)
{
    EXPECT_EQ(sample_period::of_picoseconds(3'500'000)->text(), "3.5 us");
    EXPECT_EQ(sample_period::of_hertz(10'000'000)->text(), "100 ns");
    EXPECT_EQ(sample_period::of_hertz(1)->text(), "1 s");
    EXPECT_EQ(sample_period::of_hertz(3'000'000)->text(), "1/3000000 s");
    for (const std::uint64_t hertz : {7u, 285714u, 999'999'937u, 48'000u}) {
        const auto period = sample_period::of_hertz(hertz);
        EXPECT_EQ(sample_period::of_text(period->text()), period) << period->text();
        EXPECT_EQ(period->hertz(), hertz);
        EXPECT_TRUE(period->has_whole_hertz());
    }
    EXPECT_EQ(sample_period::of_text("3.5us")->hertz(), 285714u);
    EXPECT_FALSE(sample_period::of_text("3.5us")->has_whole_hertz());
}

TEST(sample_period, refuses_what_is_none)
{
    for (const auto* text : {"", "us", "0us", "0", "3.5", "3.5 parsec", "-1us", "1..5us", "1e3us", "101 s", "0.9ps",
                             "1/0 s", "99999999999999999999us", "1.5/2 s"}) {
        EXPECT_EQ(sample_period::of_text(text), std::nullopt) << text;
    }
    for (const auto* text : {"", "0", "0 Hz", "MHz", "0.001 Hz", "2000 GHz", "1 MHz/2"}) {
        EXPECT_EQ(sample_period::of_rate_text(text), std::nullopt) << text;
    }
}

TEST(sample_period, adds_up_no_error)
{
    const auto period = *sample_period::of_hertz(3'000'000);
    constexpr std::uint64_t nanosecond = 1'000'000;
    EXPECT_EQ(period.time_of(1, nanosecond), 333u);
    EXPECT_EQ(period.time_of(2, nanosecond), 667u);
    EXPECT_EQ(period.time_of(3'000'000'000, nanosecond), 1'000'000'000'000u);
    EXPECT_EQ(period.sample_at(1'000'000'000'000, nanosecond), 3'000'000'000u);
    EXPECT_EQ(period.sample_at(667, nanosecond), 2u);
    EXPECT_EQ(period.sample_at(~std::uint64_t{0}, nanosecond), std::nullopt);
}

}  // namespace
}  // namespace tamrix::tests
