#include "sim/wave_generator.h"

#include "sim/instruments_on_sim.h"

#include <gtest/gtest.h>

#include <cmath>

namespace tamrix::tests {

namespace {

using sim::wave_loop;

double hertz(wave_loop loop, int model, int generation, int low, int middle = 0, int high = 0)
{
    return sim::generated_hertz(
        loop, model, generation,
        {static_cast<std::uint8_t>(low), static_cast<std::uint8_t>(middle), static_cast<std::uint8_t>(high)});
}

TEST(wave_generator, its_short_loop_on_usb_takes_cycles_of_the_models_clock)
{
    // (2 * 100 + 7) cycles of 12 clocks are half a period.
    EXPECT_NEAR(hertz(wave_loop::usb, 4, 0, 100), 1e6 * 28.636 / 12 / 207 / 2, 1e-6);
    EXPECT_NEAR(hertz(wave_loop::usb, 4, 17, 100), 1e6 * 33 / 12 / 207 / 2, 1e-6);
    EXPECT_NEAR(hertz(wave_loop::usb, 5, 17, 100), 1e6 * 24 / 12 / 207 / 2, 1e-6);
    for (const int model : {9, 10, 13, 14})
        EXPECT_NEAR(hertz(wave_loop::usb, model, 0, 100), 1e6 * 33 / 12 / 207 / 2, 1e-6) << model;
    EXPECT_NEAR(hertz(wave_loop::usb, 4, 0, 1), 132'574, 1);
    EXPECT_NEAR(hertz(wave_loop::usb, 4, 0, 0), hertz(wave_loop::usb, 4, 0, 255), 10) << "256 rounds";
}

TEST(wave_generator, its_short_loop_by_registers_takes_parts_of_8_microseconds)
{
    EXPECT_NEAR(hertz(wave_loop::registers, 1, 0, 1), 125'000, 1e-6);
    EXPECT_NEAR(hertz(wave_loop::registers, 1, 0, 10), 500'000 / 12.0, 1e-6);
    EXPECT_NEAR(hertz(wave_loop::registers, 1, 17, 12), 500'000 / 12.0, 1e-6);
}

/// What a host sends that wants so many ticks of 8/9 microseconds: the overhead of the loop added, and the stages cut,
/// each but the lowest with one pass more.
struct wanted {
    long long ticks;
    int once, middle_pass;
    double hertz(wave_loop loop, int model, int generation) const
    {
        const long long counts = ticks + once + ticks / 256 % 256 * middle_pass - ticks / 65536 * 514;
        const long long second = counts / 256 + 1, third = second / 256 + 1;
        return tests::hertz(loop, model, generation, static_cast<int>(counts % 256), static_cast<int>(second % 256),
                            static_cast<int>(third % 256));
    }
};

TEST(wave_generator, its_long_loop_undoes_the_overhead_of_its_passes)
{
    struct route {
        wave_loop loop;
        int model, generation, once, middle_pass;
    };
    const route routes[] = {{wave_loop::registers, 1, 0, -4, -2}, {wave_loop::registers, 1, 17, -4, 45},
                            {wave_loop::usb, 4, 0, 0, 15},        {wave_loop::usb, 4, 17, -20, 55},
                            {wave_loop::usb, 9, 0, -20, 55},      {wave_loop::usb, 5, 0, 0, -34}};
    for (const auto& [loop, model, generation, once, middle_pass] : routes) {
        for (long long ticks = 300; ticks < 60'000; ticks += 101) {
            const double ideal = 562'500.0 / static_cast<double>(ticks);
            const double given = wanted{ticks, once, middle_pass}.hertz(loop, model, generation);
            if (middle_pass > 0) {
                EXPECT_NEAR(given, ideal, 1e-6 * ideal) << model << ' ' << generation << ' ' << ticks;
            } else {
                // Two times can have the same count around the end of a pass; the shorter one is taken.
                EXPECT_GE(given, ideal * (1 - 1e-9));
                EXPECT_LE(562'500 / ideal - 562'500 / given, -middle_pass + 1e-6) << ticks;
            }
        }
    }
}

TEST(wave_generator, a_count_beyond_all_passes_is_no_trap)
{
    for (const int middle : {0, 1, 255}) {
        for (const int high : {0, 1, 255}) {
            for (const int low : {0, 1, 255}) {
                const double given = hertz(wave_loop::usb, 5, 0, low, middle, high);
                EXPECT_TRUE(std::isfinite(given) && given > 0) << low << ' ' << middle << ' ' << high;
            }
        }
    }
}

TEST(wave_generator, its_timer_has_few_frequencies_at_the_upper_end)
{
    const auto timer = [](int value) {
        return hertz(wave_loop::timer, 40, 0, value & 255, value >> 8 & 255, value >> 16);
    };
    for (const int value : {1, 440, 49'000}) EXPECT_EQ(timer(value), value);
    EXPECT_EQ(timer(0), 0);
    const std::pair<int, int> outputs[] = {{49'001, 50'000},   {55'000, 55'900},     {62'000, 62'000},
                                           {71'000, 71'400},   {80'000, 80'000},     {100'000, 100'000},
                                           {125'000, 125'600}, {161'000, 161'000},   {247'000, 247'000},
                                           {500'000, 510'000}, {510'001, 1'000'000}, {0xFFFFFF, 1'000'000}};
    for (const auto& [value, output] : outputs) EXPECT_EQ(timer(value), output) << value;
}

TEST(wave_generator, a_model_has_its_loop)
{
    EXPECT_EQ(sim::loop_of(39, true), wave_loop::registers);
    EXPECT_EQ(sim::loop_of(39, false), wave_loop::usb);
    EXPECT_EQ(sim::loop_of(40, true), wave_loop::timer);
    EXPECT_EQ(sim::loop_of(40, false), wave_loop::timer);
}

/// Reads pin 23 every 3 microseconds.
double hertz_at_the_pin(instruments_on_sim& b)
{
    int rises = 0;
    bool was_high = true;
    for (int i = 0; i < 60'000; ++i) {
        const bool is_high = (b.device.regin(0) & 4) != 0;
        rises += is_high && !was_high ? 1 : 0;
        was_high = is_high;
    }
    return rises / 0.18;
}

TEST(wave_generator, drives_pin_23_until_a_reset)
{
    instruments_on_sim b{40};
    b.begin();
    b.device.boardsel(0);
    b.ubuf1[2] = 3000 >> 8;
    b.ubuf1[3] = 0;
    b.device.ctlout(3000 & 255, 140);
    EXPECT_NEAR(hertz_at_the_pin(b), 3000, 6);
    EXPECT_EQ(b.device.regin(0) | 4, 255) << "no other pin";
    b.device.hwreset();
    EXPECT_EQ(hertz_at_the_pin(b), 0);
}

TEST(wave_generator, takes_the_upper_bytes_by_registers_where_they_were_written)
{
    for (const bool by_registers : {true, false}) {
        instruments_on_sim b{9};
        b.begin();
        b.ubuf1[2] = 2;
        b.ubuf1[3] = 1;
        if (by_registers) {
            b.device.ctlout(1, 44);
            b.device.ctlout(2, 43);
        }
        b.device.ctlout(30, 140);
        const double expected = hertz(by_registers ? wave_loop::registers : wave_loop::usb, 9, 0, 30, 2, 1);
        EXPECT_NEAR(hertz_at_the_pin(b), expected, 6);
        b.device.hwreset();
    }
}

TEST(wave_generator, a_lead_keeps_its_wave_for_the_other_instruments)
{
    instruments_on_sim b{9};
    b.put_on({"lead 23 P21 P23"});
    b.begin();
    EXPECT_EQ(b.device.regin(0), 255) << "no wave yet";
    b.device.ctlout(200, 140);
    const double expected = hertz(wave_loop::usb, 9, 0, 200);
    EXPECT_NEAR(hertz_at_the_pin(b), expected, 6);
    b.begin();
    b.device.ctlout(0, 141);
    b.device.delayms(1600);
    EXPECT_NEAR(b.hertz_by_itself(), expected, 1);
    b.begin();
    b.start();
    ASSERT_TRUE(b.wait());
    int rises = 0;
    const auto samples = b.bank(0);
    for (std::size_t i = 1; i < samples.size(); ++i) {
        EXPECT_EQ(samples[i] & 1, samples[i] >> 2 & 1);
        rises += (samples[i] & 1) > (samples[i - 1] & 1) ? 1 : 0;
    }
    EXPECT_NEAR(rises, expected * 32768 * 3.8e-6, 1);
    b.stop();
    EXPECT_TRUE(b.hazards().empty());
}

TEST(wave_generator, a_signal_at_its_pin_is_a_hazard)
{
    instruments_on_sim b{9};
    b.put_on({"P23 square 1000"});
    b.begin();
    b.device.ctlout(200, 140);
    EXPECT_EQ(b.hazards(), (std::vector<std::string>{"the generator and a signal both drive P23"}));
    b.device.hwreset();
}

}  // namespace
}  // namespace tamrix::tests
