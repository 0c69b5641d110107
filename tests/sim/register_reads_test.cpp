// Reads of a register take time, in which signals and chips go on.
#include "sim/instruments_on_sim.h"

#include <gtest/gtest.h>

namespace tamrix::tests {

namespace {

using namespace std::chrono_literals;

TEST(register_reads, take_time)
{
    bench b{1};
    for (int i = 0; i < 1000; ++i) b.device.regin(0);
    EXPECT_EQ(b.time->now(), 3ms);
    const auto time = std::make_shared<sim::virtual_clock>();
    sim::programmer slow{sim::setup{.time = time, .read_time = sim::microseconds{7}}};
    slow.device().regin(50);
    EXPECT_EQ(time->now(), 7us);
}

TEST(register_reads, see_signals_go_on)
{
    instruments_on_sim b{1};
    b.put_on({"P22 pulse 0.0003 0.0006"});
    b.begin();
    int highs = 0;
    for (int i = 0; i < 1000; ++i) {
        const bool high = (b.device.regin(0) & 2) != 0;
        EXPECT_EQ(high, i >= 100 && i < 200) << "time begins at the first read";
        highs += high ? 1 : 0;
    }
    EXPECT_EQ(highs, 100);
}

TEST(register_reads, a_frame_sees_them_too)
{
    instruments_on_sim b{9};
    b.put_on({"P21 square 1000"});
    for (const int expected : {255, 254, 255}) {
        b.frame({5, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255, 255});
        b.device.replywait(3, 0, 0);
        EXPECT_EQ(b.ibuf1[0], expected);
        b.time->advance(375us);  // the frame took 125, the reply a whole period
    }
}

/// Of 8 pins: halves what comes to pin 5, which is P25, and gives it out at pin 6, P26.
class halver final : public sim::part {
public:
    int pins() const override { return 8; }
    int vcc_pin() const override { return -1; }
    int gnd_pin() const override { return -1; }
    void power_up() override {}
    void settle(std::span<const sim::level> nodes, std::span<sim::level> drives) override
    {
        if (nodes[4] == sim::level::high && before_ == sim::level::low) high_ = !high_;
        before_ = nodes[4];
        drives[5] = high_ ? sim::level::high : sim::level::low;
    }

private:
    sim::level before_ = sim::level::high;
    bool high_ = false;
};

TEST(register_reads, a_part_in_the_socket_sees_every_edge_between_two_of_them)
{
    instruments_on_sim b{1};
    b.programmer.insert(std::make_unique<halver>());
    b.put_on({"P25 square 50000 phase 180"});
    b.begin();
    // Rises at 10, 30, 50 us and so on; reads in between.
    EXPECT_EQ(b.device.regin(0) >> 5 & 1, 0);
    int edges = 0;
    for (const int periods : {1, 2, 3, 10, 501, 77}) {
        const auto from = b.time->now();
        b.time->advance(sim::microseconds{20 * periods - 3});
        edges += periods;
        EXPECT_EQ(b.device.regin(0) >> 5 & 1, edges % 2) << periods;
        EXPECT_EQ(b.time->now() - from, sim::microseconds{20 * periods});
    }
}

}  // namespace
}  // namespace tamrix::tests
