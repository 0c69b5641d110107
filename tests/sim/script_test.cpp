#include "sim/bench.h"

#include <gtest/gtest.h>

namespace tamrix::tests {

namespace {

struct script_bench : bench {
    explicit script_bench(int its_model = 40) : bench{its_model} {}

    void script_frame() { frame({10, 16, 64, 0, 0, 0, 0, 0}); }
    /// Fetches the results: the data, and whether they came within `limit`.
    std::vector<std::uint8_t> fetch(std::int32_t length, std::chrono::milliseconds limit = std::chrono::seconds{4})
    {
        std::vector<std::uint8_t> buffer(static_cast<std::size_t>(length), 0x77);
        std::uint8_t status = 0;
        script_frame();
        usb.usbbulkread(buffer.data(), length, &status);
        time->advance(limit);
        if (status != 2) buffer.clear();
        return buffer;
    }
    /// One row as the engines queue it, with its six reads.
    void queue(const ports& data, const ports& masks)
    {
        for (std::uint8_t port = 0; port < 6; ++port) {
            device.vecout(data[port], static_cast<std::uint8_t>(2 * port));
            device.vecout(masks[port], static_cast<std::uint8_t>(2 * port + 1));
        }
        device.vecdelay(20);
        for (std::uint8_t port = 0; port < 6; ++port) device.vecbyte(static_cast<std::uint8_t>(2 * port));
    }
};

TEST(script, the_byte_of_a_port_of_a_row_stands_at_its_place_in_the_stream)
{
    script_bench b;
    b.script_frame();
    for (std::uint8_t row = 0; row < 20; ++row) {
        ports data{};
        for (std::uint8_t port = 0; port < 6; ++port) data[port] = static_cast<std::uint8_t>(6 * row + port);
        b.queue(data, {});
    }
    b.device.vecstart();
    b.device.delayms(200);
    const std::int32_t length = 64 * (20 * 6 / 64) + 129;
    const auto results = b.fetch(length);
    ASSERT_EQ(results.size(), static_cast<std::size_t>(length));
    for (std::size_t i = 0; i < 120; ++i) EXPECT_EQ(results[i], i);
    for (std::size_t i = 120; i < results.size() - 1; ++i) EXPECT_EQ(results[i], 0);
    EXPECT_EQ(results.back(), 170);
}

TEST(script, nothing_happens_before_it_is_started)
{
    script_bench b;
    b.programmer.insert(std::make_unique<quad_nand>());
    b.script_frame();
    b.device.vecgnd(1, 1);
    b.device.vecvcc(107, 1);
    b.device.vecdelay2(10);
    b.device.setvcc(5000);
    EXPECT_FALSE(b.programmer.part_has_power());
    b.device.vecstart();
    EXPECT_TRUE(b.programmer.part_has_power());
    b.device.vecvcc(107, 0);
    b.device.vecgnd(1, 0);
    b.device.vecstart();
    EXPECT_FALSE(b.programmer.part_has_power());
}

TEST(script, results_of_two_starts_follow_one_another)
{
    script_bench b;
    b.script_frame();
    b.device.vecout(0, 1);
    b.device.vecout(1, 0);
    b.device.vecbyte(0);
    b.device.vecstart();
    b.device.vecout(2, 0);
    b.device.vecbyte(0);
    b.device.vecstart();
    EXPECT_EQ(b.fetch(4), (std::vector<std::uint8_t>{1, 2, 0, 170}));
}

TEST(script, results_can_be_asked_for_again_until_a_new_script_begins)
{
    script_bench b;
    b.programmer.add_fault("read never ends 2");
    b.script_frame();
    b.device.vecbyte(0);
    b.device.vecstart();
    EXPECT_TRUE(b.fetch(2).empty());
    EXPECT_TRUE(b.fetch(2).empty());
    EXPECT_EQ(b.fetch(2), (std::vector<std::uint8_t>{255, 170}));
    b.script_frame();
    b.device.vecout(0, 1);
    b.device.vecout(0x21, 0);
    b.device.vecbyte(0);
    b.device.vecstart();
    EXPECT_EQ(b.fetch(2), (std::vector<std::uint8_t>{0x21, 170}));
}

TEST(script, results_are_not_there_before_the_hardware_has_played_it)
{
    script_bench b;
    b.script_frame();
    b.device.vecdelay2(50);
    b.device.vecbyte(0);
    b.device.vecstart();
    EXPECT_TRUE(b.fetch(2, std::chrono::milliseconds{40}).empty());
    EXPECT_EQ(b.fetch(2, std::chrono::milliseconds{40}), (std::vector<std::uint8_t>{255, 170}));
}

TEST(script, it_has_an_end_to_its_room)
{
    script_bench b;
    b.script_frame();
    for (int i = 0; i < (1 << 20) + 10; ++i) b.device.vecbyte(0);
    EXPECT_EQ(b.notes().size(), 10u);
    b.device.vecstart();
    EXPECT_EQ(b.fetch(65).size(), 65u);
}

TEST(script, a_gate_answers_in_a_script_as_it_does_in_frames)
{
    for (const int model : {40, 23}) {
        script_bench b{model};
        b.programmer.insert(std::make_unique<quad_nand>());
        b.power(1, 107, 1);
        for (const std::string row : {"00X01XGX10X11V", "11X10XGX11X00V"}) {
            const std::string by_frame = b.run(row);
            // The registers hold what the frame drove; a script that only reads sees the same.
            b.script_frame();
            for (std::uint8_t port = 0; port < 6; ++port) b.device.vecbyte(static_cast<std::uint8_t>(2 * port));
            b.device.vecstart();
            const auto results = b.fetch(65);
            b.drive(row);
            ASSERT_TRUE(b.device.replywait(3, 0, 0));
            for (std::size_t port = 0; port < 6; ++port) EXPECT_EQ(results[port], b.ibuf1[port]) << by_frame;
        }
    }
}

}  // namespace
}  // namespace tamrix::tests
