#include "sim/frequency_counter.h"

#include "sim/instruments_on_sim.h"

#include <gtest/gtest.h>

namespace tamrix::tests {

namespace {

using namespace std::chrono_literals;

TEST(frequency_counter, shows_hertz_at_pin_23_by_itself_and_by_registers)
{
    for (const int hertz : {1, 10, 1000, 65'536, 100'000, 999'999}) {
        instruments_on_sim b{9};
        b.put_on({"P23 square " + std::to_string(hertz), "P22 square 77"});
        b.begin();
        b.device.ctlout(0, 141);
        b.device.delayms(800);
        EXPECT_NEAR(b.hertz_by_itself(), hertz, 1.25) << "the first fifths of a second, scaled";
        for (int reading = 0; reading < 3; ++reading) {
            b.device.delayms(800);
            EXPECT_NEAR(b.hertz_by_itself(), hertz, 1) << hertz;
            EXPECT_EQ(b.hertz_by_registers(), b.hertz_by_itself());
        }
        b.device.hwreset();
    }
}

TEST(frequency_counter, refreshes_its_result_five_times_a_second_until_a_reset)
{
    instruments_on_sim b{40};
    b.put_on({"P23 square 5000"});
    b.begin();
    b.device.ctlout(0, 141);
    for (int refresh = 0; refresh < 12; ++refresh) {
        EXPECT_FALSE(b.wait(199ms)) << refresh;
        b.ibuf1[0] = 0;
        EXPECT_TRUE(b.wait(2ms)) << refresh;
        EXPECT_EQ(b.hertz_by_itself(), 5000);
        EXPECT_EQ(b.ibuf1[3], 0);
        b.time->advance(-1ms);
    }
    b.device.hwreset();
    EXPECT_FALSE(b.wait(2s));
    EXPECT_EQ(b.hertz_by_registers(), 0);
}

TEST(frequency_counter, follows_a_signal_that_is_changed)
{
    instruments_on_sim b{9};
    b.put_on({"P23 square 5000"});
    b.begin();
    b.device.ctlout(0, 141);
    b.device.delayms(1600);
    b.programmer.clear_signals();
    b.device.delayms(800);
    EXPECT_EQ(b.hertz_by_itself(), 0);
    b.put_on({"P23 square 70"});
    b.device.delayms(1000);
    EXPECT_EQ(b.hertz_by_itself(), 70);
    b.programmer.add_fault("input 23 stuck 1");
    b.device.delayms(1000);
    EXPECT_EQ(b.hertz_by_itself(), 0) << "it counts what the input sees";
    b.device.hwreset();
}

TEST(frequency_counter, the_first_register_keeps_the_others)
{
    instruments_on_sim b{9};
    b.put_on({"P23 square 70000"});
    b.begin();
    b.device.ctlout(0, 47);
    b.device.ctlout(0, 46);
    b.device.ctlout(0, 45);
    EXPECT_EQ(b.hertz_by_registers(), 0);
    b.device.ctlout(0, 141);
    EXPECT_EQ(b.hertz_by_registers(), 0);
    b.device.delayms(1000);
    const int low = b.device.ctlin(45);
    b.programmer.clear_signals();
    b.device.delayms(1000);
    EXPECT_EQ(low + 256 * b.device.ctlin(46) + 65536 * b.device.ctlin(47), 70000);
    EXPECT_EQ(b.hertz_by_registers(), 0);
    b.device.hwreset();
}

}  // namespace
}  // namespace tamrix::tests
