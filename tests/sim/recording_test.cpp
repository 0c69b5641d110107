// The firmware's recording as a host sees it: frames, the reply that comes by itself, the banks.
#include "sim/recorder.h"

#include "sim/instruments_on_sim.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tamrix::tests {

namespace {

using namespace std::chrono_literals;

TEST(recording, fills_the_memory_and_says_so_by_itself)
{
    instruments_on_sim b{5};
    b.put_on({"P21 square 1000", "P24 high"});
    b.begin();
    b.start();
    const auto took = b.wait();
    ASSERT_TRUE(took);
    EXPECT_EQ(*took / 1ms, 4 * 32768 * 4700 / 1'000'000 + 1);
    EXPECT_EQ(b.ibuf1[0], 0xAA);
    EXPECT_EQ(b.ibuf1[1], 0);
    EXPECT_FALSE(b.wait(5s)) << "it says so once";
    std::size_t sample = 0;
    for (int number = 0; number < 4; ++number) {
        for (const std::uint8_t byte : b.bank(number)) {
            const bool high = sample++ * 4700 % 1'000'000 < 500'000;
            ASSERT_EQ(byte, high ? 0xFF : 0xFE) << sample;
        }
    }
    EXPECT_EQ(sample, 131072u);
    b.stop();
    EXPECT_TRUE(b.notes().empty());
    EXPECT_TRUE(b.hazards().empty());
}

TEST(recording, has_the_period_of_the_model_and_its_generation)
{
    struct expected {
        int model, generation, nanoseconds;
    };
    const expected all[] = {{2, 0, 3800},  {3, 0, 3800},  {4, 0, 3800},  {9, 0, 3800},   {10, 16, 3800},
                            {13, 0, 3800}, {14, 0, 3800}, {2, 17, 3500}, {4, 17, 3500},  {14, 17, 3500},
                            {5, 17, 4700}, {8, 0, 4700},  {15, 0, 4700}, {19, 17, 4700}, {11, 17, 3400},
                            {12, 0, 3400}, {1, 17, 3400}, {20, 0, 3400}, {40, 0, 3400},  {58, 17, 3400}};
    for (const auto& [model, generation, period] : all) {
        EXPECT_EQ(sim::sample_period(model, generation).count(), period) << model;
        instruments_on_sim b{model, 1, generation};
        b.put_on({"P22 pulse 0.05 10"});
        b.begin();
        b.start();
        const auto took = b.wait();
        ASSERT_TRUE(took) << model;
        EXPECT_NEAR(static_cast<double>(took->count()), 32768 * period / 1000.0, 1000) << model;
        const auto samples = b.bank(0);
        const auto rise = std::ranges::find(samples, 0xFF) - samples.begin();
        EXPECT_EQ(rise, (50'000'000 + period - 1) / period) << model;
        b.device.hwreset();
    }
}

TEST(recording, takes_all_the_memory_that_the_model_has)
{
    for (const auto& [model, bytes] :
         std::vector<std::pair<int, int>>{{9, 131072}, {40, 524288}, {23, 4096}, {27, 57344}}) {
        instruments_on_sim b{model};
        b.put_on({"P28 low"});
        b.begin();
        b.start();
        const auto took = b.wait();
        ASSERT_TRUE(took) << model;
        EXPECT_NEAR(static_cast<double>(took->count()), bytes * sim::sample_period(model, 0).count() / 1000.0, 1001);
        const int last = (bytes - 1) / 32768;
        const auto samples = b.bank(last, bytes - last * 32768);
        EXPECT_EQ(std::ranges::count(samples, 0x7F), bytes - last * 32768) << model;
        b.device.hwreset();
    }
}

TEST(recording, waits_for_the_level_of_a_pin)
{
    for (const int pin : {21, 24, 28}) {
        for (const bool high : {true, false}) {
            instruments_on_sim b{9, 1};
            const int mask = 1 << (pin - 21);
            b.put_on({"P" + std::to_string(pin) + " pulse 1.25 9" + (high ? "" : " low")});
            b.begin();
            b.start(1, mask, high ? mask : 0);
            EXPECT_FALSE(b.wait(1249ms)) << pin;
            const auto took = b.wait();
            ASSERT_TRUE(took) << pin;
            EXPECT_NEAR(static_cast<double>(took->count()), 1000 + 32768 * 3.8, 1001);
            const auto samples = b.bank(0);
            EXPECT_EQ(std::ranges::count(samples, high ? 0xFF : 0xFF & ~mask), 32768) << "it begins at the level";
            b.device.hwreset();
        }
    }
}

TEST(recording, does_not_wait_for_a_level_that_is_there)
{
    instruments_on_sim b{9, 1};
    b.put_on({"P21 square 100"});
    b.begin();
    b.start(1, 1, 1);
    const auto took = b.wait();
    ASSERT_TRUE(took);
    EXPECT_EQ(*took / 1ms, 125);
}

TEST(recording, a_wait_for_a_trigger_ends_by_a_stop)
{
    instruments_on_sim b{9};
    b.put_on({"P21 low"});
    b.begin();
    b.start(1, 1, 1);
    EXPECT_FALSE(b.wait(60s));
    b.frame({33, 0});
    b.programmer.clear_signals();
    EXPECT_FALSE(b.wait(60s));
    EXPECT_EQ(std::ranges::count(b.bank(0), 0xFF), 32768) << "as after switching on";
}

TEST(recording, a_trigger_comes_with_a_signal_that_is_put_on_later)
{
    instruments_on_sim b{9, 1};
    b.put_on({"P21 low"});
    b.begin();
    b.start(1, 1, 1);
    EXPECT_FALSE(b.wait(3s));
    b.programmer.clear_signals();
    const auto took = b.wait();
    ASSERT_TRUE(took) << "a pin with nothing on it is pulled up";
    EXPECT_EQ(*took / 1ms, 125);
}

TEST(recording, an_expected_trigger_that_is_taken_away_does_not_come)
{
    instruments_on_sim b{9, 1};
    b.put_on({"P21 pulse 0.05 5"});
    b.begin();
    b.start(1, 1, 1);
    b.time->advance(20ms);
    sim::signal_set other = b.programmer.no_signals();
    other.add("P21 low");
    b.programmer.set_signals(other);
    EXPECT_FALSE(b.wait(3s));
}

TEST(recording, that_is_stopped_keeps_what_it_has)
{
    instruments_on_sim b{9, 1};
    b.put_on({"P21 low"});
    b.begin();
    b.start();
    b.time->advance(38ms);
    b.stop();
    EXPECT_FALSE(b.wait(1s));
    const auto samples = b.bank(0);
    const auto made = std::ranges::count(samples, 0xFE);
    EXPECT_NEAR(static_cast<double>(made), 10'000, 50);
    EXPECT_EQ(std::ranges::count(samples, 0xFF), 32768 - made);
}

TEST(recording, sees_a_change_of_the_signals_from_then_on)
{
    instruments_on_sim b{9, 1};
    b.put_on({"P21 low"});
    b.begin();
    b.start();
    b.time->advance(38ms);
    b.programmer.clear_signals();
    ASSERT_TRUE(b.wait());
    const auto samples = b.bank(0);
    const auto change = std::ranges::find(samples, 0xFF);
    EXPECT_NEAR(static_cast<double>(change - samples.begin()), 10'000, 2);
    EXPECT_EQ(std::ranges::count(change, samples.end(), 0xFE), 0);
}

TEST(recording, sees_what_the_inputs_of_the_programmer_see)
{
    instruments_on_sim b{9, 1};
    b.put_on({"P21 low", "P22 high", "P23 low"});
    for (const char* const fault : {"input 21 stuck 1", "pins 22 and 24 bridged", "pins 23 and 25 bridged"})
        b.programmer.add_fault(fault);
    b.begin();
    b.device.gndpin(104, 1);  // pin 28
    EXPECT_EQ(b.device.regin(0), 0x6B);
    b.start();
    ASSERT_TRUE(b.wait());
    EXPECT_EQ(std::ranges::count(b.bank(0), 0x6B), 32768);
    b.device.hwreset();
}

TEST(recording, begins_with_the_time_of_the_signals)
{
    for (const int later : {0, 777}) {
        instruments_on_sim b{9, 1};
        b.put_on({"P21 uart 9600 \"tamrix\" after 0.01", "P22 pulse 0.001 0.002"});
        b.time->advance(sim::microseconds{later * 1001});
        b.begin();
        b.start();
        ASSERT_TRUE(b.wait());
        const auto first = b.bank(0);
        EXPECT_EQ(std::ranges::find_if(first, [](int byte) { return (byte & 2) != 0; }) - first.begin(), 264);
        b.stop();
        b.device.delayms(321);
        b.begin();
        b.start();
        ASSERT_TRUE(b.wait());
        EXPECT_EQ(b.bank(0), first) << "each recording sees the same";
        b.stop();
    }
}

TEST(recording, its_frames_have_a_length)
{
    instruments_on_sim b{9};
    b.begin();
    b.frame({33});
    b.frame({33, 1, 0, 0});
    b.frame({33, 2, 0, 0, 0});
    EXPECT_FALSE(b.wait(2s));
    EXPECT_EQ(b.notes().size(), 3u);
    EXPECT_EQ(b.notes()[2], "an analyzer frame of 5 bytes that neither starts nor stops");
}

TEST(recording, is_in_the_transcript_with_its_reply)
{
    instruments_on_sim b{9, 1};
    b.log->record(true);
    b.start(0, 128, 128);
    ASSERT_TRUE(b.wait());
    b.stop();
    EXPECT_EQ(b.log->transcript(),
              "usbcomwrite 5: 21 01 00 80 80\n-> ibuf1 AA\nusbcomwrite 5: 21 00 00 00 00\nhwreset\n");
}

TEST(recording, a_pin_that_the_programmer_drives_against_a_signal_is_a_hazard)
{
    instruments_on_sim b{9, 1};
    b.put_on({"P21 low", "P28 high"});
    b.device.regout(0x7F, 0);
    b.device.regout(0x7E, 1);
    EXPECT_EQ(b.device.regin(0), 0x7E);
    EXPECT_EQ(b.hazards(), (std::vector<std::string>{"contact 104: the programmer drives low, a signal high",
                                                     "contact 4: the programmer drives high, a signal low"}));
    b.device.hwreset();
}

}  // namespace
}  // namespace tamrix::tests
