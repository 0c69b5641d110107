// The instruments in real time, where what comes by itself is written on the clock's own thread.
#include "base/other_side.h"
#include "sim/programmer.h"
#include "tamrix/types.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>

namespace tamrix::tests {

namespace {

using namespace std::chrono_literals;

struct wall_bench {
    explicit wall_bench(double speed) : time{std::make_shared<sim::wall_clock>(speed)} {}

    std::shared_ptr<sim::wall_clock> time;
    std::array<std::uint8_t, 20> ibuf1{}, ubuf1{};
    std::int16_t usbpip0readresult = 0;
    sim::programmer programmer{sim::setup{.model = 9, .memory_banks = 1, .time = time},
                               sim::place_in({ibuf1.data(), 20, &usbpip0readresult, ubuf1.data(), 20})};

    void frame(std::array<std::uint8_t, 8> bytes) { programmer.transport().usbcomwrite(bytes.data(), 8); }
    /// Looks on until a reply comes by itself, as a host does.
    bool comes(std::chrono::steady_clock::duration limit = 20s)
    {
        const auto from = std::chrono::steady_clock::now();
        for (;;) {
            if (hw::read_other_side(usbpip0readresult) != bool16_false) {
                hw::write_other_side(usbpip0readresult, bool16_false);
                return true;
            }
            if (std::chrono::steady_clock::now() - from >= limit) return false;
            std::this_thread::sleep_for(100us);
        }
    }
    std::uint8_t reply(std::size_t index) const { return hw::read_other_side(ibuf1[index]); }
};

TEST(wall_clock, a_recording_waits_for_its_trigger_and_replies_while_the_caller_looks_on)
{
    for (int round = 0; round < 3; ++round) {
        wall_bench b{20};
        b.programmer.add_signal("P21 square 2 phase 180");
        b.programmer.add_signal("P22..P28 noise 100000");
        b.programmer.device().hwreset();
        b.frame({33, 1, 1, 1, 1});
        ASSERT_TRUE(b.comes());
        EXPECT_EQ(b.reply(0), 0xAA);
        std::vector<std::uint8_t> samples(32769);
        std::uint8_t status = 0;
        b.frame({10, 0, 64});
        b.programmer.transport().usbbulkread(samples.data(), 32769, &status);
        while (hw::read_other_side(samples[32768]) != 170) std::this_thread::sleep_for(100us);
        EXPECT_EQ(std::count_if(samples.begin(), samples.end() - 1, [](int byte) { return (byte & 1) == 1; }), 32768)
            << "124.5 ms of the 250 ms that the pin is high";
        b.frame({33, 0});
        b.programmer.device().hwreset();
    }
}

TEST(wall_clock, a_recording_can_be_stopped_and_changed_at_any_moment)
{
    wall_bench b{100};
    b.programmer.device().hwreset();
    for (int round = 0; round < 60; ++round) {
        b.frame({33, 1, 1, 1, static_cast<std::uint8_t>(round % 3 == 0 ? 0 : 1)});
        b.time->advance(sim::microseconds{round * 5000});
        b.programmer.clear_signals();
        b.programmer.add_signal(round % 2 == 0 ? "P21 low" : "P21 square 50000");
        b.time->advance(sim::microseconds{round * 5000});
        b.frame({33, 0});
        b.comes(0s);
        ASSERT_FALSE(b.comes(1ms)) << "nothing comes after the stop";
        b.programmer.device().hwreset();
    }
}

TEST(wall_clock, the_counter_refreshes_while_the_caller_looks_on)
{
    wall_bench b{50};
    b.programmer.add_signal("P23 square 1234");
    b.programmer.device().hwreset();
    b.programmer.device().ctlout(0, 141);
    for (int refresh = 0; refresh < 10; ++refresh) ASSERT_TRUE(b.comes());
    EXPECT_NEAR(b.reply(0) + 256 * b.reply(1), 1234, 1);
    EXPECT_NEAR(b.programmer.device().ctlin(45), 1234 % 256, 1);
    b.programmer.clear_signals();
    b.programmer.device().hwreset();
    b.comes(0s);
    EXPECT_FALSE(b.comes(20ms));
}

TEST(wall_clock, a_programmer_can_go_in_the_middle_of_a_recording)
{
    for (int round = 0; round < 20; ++round) {
        auto b = std::make_unique<wall_bench>(100.0);
        b->programmer.add_signal("P23 square 100000");
        b->frame({33, 1, 1, 4, 4});
        b->programmer.device().ctlout(0, 141);
        b->time->advance(sim::microseconds{round * 11'000});
    }
}

TEST(wall_clock, a_read_of_a_register_takes_about_its_time)
{
    wall_bench b{1};
    const auto from = b.time->now();
    for (int i = 0; i < 5000; ++i) b.programmer.device().regin(0);
    const auto took = b.time->now() - from;
    EXPECT_GE(took, 15ms);
    EXPECT_LT(took, 1500ms) << "no read sleeps";
}

}  // namespace
}  // namespace tamrix::tests
