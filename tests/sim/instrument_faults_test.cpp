#include "sim/instruments_on_sim.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tamrix::tests {

namespace {

using namespace std::chrono_literals;

TEST(instrument_faults, a_wrong_name_is_told)
{
    sim::fault_set faults;
    const auto refusal = [&](const char* text) -> std::string {
        try {
            sim::add_fault(faults, text);
        } catch (const sim::fault_error& error) {
            return error.what();
        }
        return "taken";
    };
    EXPECT_EQ(refusal("wrong reply"), "fault \"wrong reply\": its end where a number from 0 to 255 was expected");
    EXPECT_EQ(refusal("early reply 256"),
              "fault \"early reply 256\": \"256\" where a number from 0 to 255 was expected");
    EXPECT_EQ(refusal("bank 16 never comes"),
              "fault \"bank 16 never comes\": \"16\" where a number from 0 to 15 was expected");
    EXPECT_EQ(refusal("bank 3"), "fault \"bank 3\": its end where \"never comes\" was expected");
    EXPECT_EQ(refusal("no trigger ever"), "fault \"no trigger ever\": \"ever\" where the end was expected");
    for (const char* const name : {"no trigger", "bank 3 never comes", "wrong reply 1", "early reply 1",
                                   "generator dead", "no signal at the counter"}) {
        EXPECT_NE(refusal((std::string{name} + " of module 2").c_str()), "taken") << name;
        EXPECT_EQ(refusal(name), "taken");
    }
}

TEST(instrument_faults, a_trigger_that_is_not_found_is_waited_for)
{
    instruments_on_sim b{9, 1};
    b.programmer.add_fault("no trigger");
    b.begin();
    b.start(1, 1, 1);
    EXPECT_FALSE(b.wait(20s));
    b.stop();
    b.begin();
    b.start(0, 1, 1);
    EXPECT_TRUE(b.wait()) << "a recording without a trigger is not concerned";
    b.stop();
}

TEST(instrument_faults, a_trigger_is_found_as_soon_as_the_fault_is_gone)
{
    instruments_on_sim b{9, 1};
    b.programmer.add_fault("no trigger");
    b.begin();
    b.start(1, 1, 1);
    EXPECT_FALSE(b.wait(2s));
    b.programmer.clear_faults();
    EXPECT_TRUE(b.wait(1s));
    b.stop();
}

TEST(instrument_faults, a_wrong_reply_takes_the_place_of_the_right_one)
{
    instruments_on_sim b{9, 1};
    b.programmer.add_fault("wrong reply 85");
    b.begin();
    b.start();
    EXPECT_EQ(b.wait().value_or(0us) / 1ms, 125);
    EXPECT_EQ(b.ibuf1[0], 85);
    EXPECT_FALSE(b.wait(5s));
    b.stop();
}

TEST(instrument_faults, an_early_reply_comes_before_the_right_one)
{
    instruments_on_sim b{9, 1};
    b.programmer.add_fault("early reply 85");
    b.begin();
    b.start();
    EXPECT_EQ(b.wait().value_or(0us) / 1ms, 10);
    EXPECT_EQ(b.ibuf1[0], 85);
    EXPECT_EQ(b.wait().value_or(0us) / 1ms, 115);
    EXPECT_EQ(b.ibuf1[0], 0xAA);
    b.stop();
}

TEST(instrument_faults, a_reply_that_is_lost_does_not_come)
{
    instruments_on_sim b{9, 1};
    b.programmer.add_fault("lost reply");
    b.begin();
    b.start();
    EXPECT_FALSE(b.wait(5s));
    b.stop();
    b.begin();
    b.start();
    EXPECT_TRUE(b.wait());
    b.stop();
    b.begin();
    b.start();
    b.programmer.add_fault("no answer");
    EXPECT_FALSE(b.wait());
    b.programmer.clear_faults();
    b.device.hwreset();
}

TEST(instrument_faults, a_bank_that_never_comes_is_one_alone)
{
    instruments_on_sim b{9};
    b.programmer.add_fault("bank 2 never comes");
    b.begin();
    b.start();
    ASSERT_TRUE(b.wait());
    for (const int bank : {0, 1, 3}) EXPECT_EQ(b.bank(bank).size(), 32768u) << bank;
    EXPECT_TRUE(b.bank(2).empty());
    b.stop();
}

TEST(instrument_faults, a_counter_without_a_signal_shows_nothing)
{
    instruments_on_sim b{9};
    b.put_on({"P23 square 1000"});
    b.programmer.add_fault("no signal at the counter");
    b.begin();
    b.device.ctlout(0, 141);
    EXPECT_TRUE(b.wait(1s));
    b.device.delayms(2000);
    EXPECT_EQ(b.hertz_by_itself(), 0);
    b.programmer.clear_faults();
    b.device.delayms(2000);
    EXPECT_EQ(b.hertz_by_itself(), 1000);
    b.device.hwreset();
}

TEST(instrument_faults, a_dead_generator_gives_nothing)
{
    instruments_on_sim b{40};
    b.put_on({"lead 23 P21"});
    b.programmer.add_fault("generator dead");
    b.begin();
    b.device.ctlout(100, 140);
    for (int i = 0; i < 10'000; ++i) ASSERT_EQ(b.device.regin(0), 255);
    b.device.hwreset();
}

}  // namespace
}  // namespace tamrix::tests
