#include "sim/clock.h"

#include "base/other_side.h"
#include "sim/bench.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <atomic>
#include <stdexcept>

namespace tamrix::tests {

namespace {

using namespace std::chrono_literals;

TEST(virtual_clock, runs_alarms_in_the_order_of_their_times)
{
    sim::virtual_clock time;
    std::string order;
    time.at(30us, [&] { order += "c" + std::to_string(time.now().count()) + ' '; });
    time.at(10us, [&] { order += "a" + std::to_string(time.now().count()) + ' '; });
    time.at(10us, [&] { order += "b "; });
    const auto gone = time.at(20us, [&] { order += "gone"; });
    time.at(31us, [&] { order += "late"; });
    time.cancel(gone);
    time.advance(30us);
    EXPECT_EQ(order, "a10 b c30 ");
    EXPECT_EQ(time.now(), 30us);
    time.advance(-5us);
    EXPECT_EQ(time.now(), 30us);
}

TEST(virtual_clock, waits_of_the_device_move_it)
{
    bench b{40};
    b.device.delayms(250);
    EXPECT_EQ(b.time->now(), 250ms);
    b.device.delayus(10);
    EXPECT_EQ(b.time->now(), 250ms + 10us);
    b.device.delayms(-1);
    b.device.delayus(-1);
    EXPECT_EQ(b.time->now(), 250ms + 10us);
    EXPECT_FALSE(b.device.replywait(3, 0, 0));
    EXPECT_GT(b.time->now(), 1s);
}

TEST(wall_clock, refuses_a_speed_that_is_none)
{
    EXPECT_THROW(sim::wall_clock{0}, std::invalid_argument);
    EXPECT_THROW(sim::wall_clock{-1}, std::invalid_argument);
}

TEST(wall_clock, lets_time_pass_at_its_speed)
{
    sim::wall_clock time{1000};
    const auto before = std::chrono::steady_clock::now();
    const auto from = time.now();
    time.advance(2s);
    EXPECT_GE(time.now() - from, 2s);
    EXPECT_GE(std::chrono::steady_clock::now() - before, 2ms);
}

TEST(wall_clock, a_cancelled_act_never_runs_and_an_ended_clock_runs_none)
{
    std::atomic<int> runs = 0;
    {
        sim::wall_clock time{1};
        time.cancel(time.at(time.now() + 20ms, [&] { ++runs; }));
        time.at(time.now() + 10s, [&] { runs += 100; });
        time.at(time.now() + 1ms, [&] { runs += 10; });
        while (runs == 0) time.advance(1ms);
        time.advance(30ms);
    }
    EXPECT_EQ(runs, 10);
}

TEST(wall_clock, reads_arrive_while_the_caller_looks_on)
{
    std::vector<std::uint8_t> buffer(32769);  // longer than the programmer, whose last read may still run
    std::uint8_t status = 0;
    const auto time = std::make_shared<sim::wall_clock>(20.0);
    sim::programmer programmer{{.time = time}};
    const std::uint8_t frame[] = {10, 0, 64};
    for (int round = 0; round < 50; ++round) {
        hw::write_other_side(status, 0);
        hw::write_other_side(buffer.back(), 0);
        programmer.transport().usbcomwrite(frame, 3);
        programmer.transport().usbbulkread(buffer.data(), 32769, &status);
        while (hw::read_other_side(status) != 2) std::this_thread::yield();
        ASSERT_EQ(buffer[32767], 0xFF);
        buffer[32767] = 0;             // ours again
        if (round % 2 != 0) continue;  // the next read may begin before the marker has come
        while (hw::read_other_side(buffer.back()) != 170) std::this_thread::yield();
    }
}

TEST(wall_clock, a_read_that_is_given_up_leaves_its_memory_alone)
{
    for (int round = 0; round < 200; ++round) {
        const auto time = std::make_shared<sim::wall_clock>(100.0);
        auto programmer = std::make_unique<sim::programmer>(sim::setup{.time = time});
        std::vector<std::uint8_t> buffer(4097);
        std::uint8_t status = 0;
        const std::uint8_t frame[] = {10, 0, 64};
        programmer->transport().usbcomwrite(frame, 3);
        programmer->transport().usbbulkread(buffer.data(), 4097, &status);
        time->advance(sim::microseconds{round * 40});
        programmer.reset();
        buffer.assign(4097, 1);
        status = 1;
        time->advance(10ms);  // longer than the read takes
        ASSERT_EQ(status, 1) << round;
        ASSERT_EQ(std::ranges::count(buffer, 1), 4097) << round;
    }
}

}  // namespace
}  // namespace tamrix::tests
