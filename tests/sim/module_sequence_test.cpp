// The self-tests of a programmer with modules, played by hand on a sound one.
#include "sim/module_bench.h"
#include "sim/test_board.h"

#include <gtest/gtest.h>

namespace tamrix::tests {

namespace {

struct sequence : module_bench {
    using module_bench::module_bench;

    void prepare(std::uint8_t slot, int wait)
    {
        reset(slot);
        device.delayms(wait);
        start(slot);
        device.delayms(wait);
    }
    int unlike(int level) const
    {
        int count = 0;
        for (std::size_t port = 0; port < 6; ++port) {
            for (int place = 0; place < 8; ++place) count += (ibuf1[port] >> place & 1) != level;
        }
        return count;
    }
    /// Toggles each driver of a kind twice: its pin alone differs from the others, then none does.
    void drivers(std::uint8_t code, int level)
    {
        for (std::uint8_t pin = 1; pin <= 48; ++pin) {
            for (const int differ : {1, 0}) {
                EXPECT_EQ(device.ctlout(pin + 128, code), 0);
                device.delayms(20);
                EXPECT_TRUE(device.replywait(3, 0, 0));
                EXPECT_EQ(unlike(level), differ) << int{code} << ' ' << int{pin};
                device.delayms(50);
            }
        }
    }
    void system_test(std::uint8_t slot)
    {
        prepare(slot, 500);
        EXPECT_TRUE(bad_blocks(slot, data).empty());
        device.delayms(5000);
        EXPECT_EQ(inputs(slot, 0), 0);
        reset(slot);
        device.delayms(200);
        EXPECT_TRUE(load_image(slot, 60000));
        connect();
        device.delayms(1000);
        EXPECT_EQ(inputs(slot, 1), 1);
        for (const std::uint8_t masks : {0, 0, 255}) {
            EXPECT_TRUE(pins(slot, 255, masks));
            device.delayms(2000);
        }
        drivers(138, 1);
        prepare(slot, 500);
        EXPECT_TRUE(pins(slot, 255, 255));
        drivers(135, 0);
        drivers(137, 0);
    }
    /// One line of a sweep of the output test: line and partner differ from the level, all others have it.
    void line(int k, int level, int side)
    {
        const auto bit = static_cast<std::uint8_t>(side == 0 ? 1 << k % 4 : 128 >> k % 4);
        device.regout(level != 0 ? 255 - bit : bit, static_cast<std::uint8_t>(2 * (5 - k / 4)));
        ASSERT_TRUE(device.replywait(3, 0, 0));
        EXPECT_EQ(unlike(level), 2) << k;
        EXPECT_EQ((ibuf1[static_cast<std::size_t>(5 - k / 4)] >> (k % 4) & 1) != level, true) << k;
        EXPECT_EQ((ibuf1[static_cast<std::size_t>(5 - k / 4)] >> (7 - k % 4) & 1) != level, true) << k;
    }
    void sweep(std::uint8_t slot, int level, int side)
    {
        device.boardsel2(7, 0);
        device.setvcc(5000);
        device.delayms(100);
        const std::uint8_t idle = level != 0 ? 255 : 0;
        for (int frames = 0; frames < 2; ++frames) {
            pins(slot, idle, side == 0 ? 240 : 15);
            device.delayms(500);
        }
        for (int k = 0; k < 24; ++k) {
            if (k > 0 && k % 4 == 0) device.regout(idle, static_cast<std::uint8_t>(2 * (6 - k / 4)));
            line(k, level, side);
        }
    }

    bytes data = random_memory(9);
};

TEST(module_sequence, the_system_test_of_a_sound_programmer_meets_no_hazard)
{
    for (const int model : {39, 52, 54}) {
        sequence b{model};
        b.device.hwreset();
        const int last = model == 52 ? 4 : 1;
        for (std::uint8_t slot = 1; slot <= last; ++slot) b.system_test(slot);
        b.programmer.check_idle();
        EXPECT_TRUE(b.hazards().empty() && b.notes().empty()) << model;
    }
}

TEST(module_sequence, the_output_test_with_a_board_in_each_module_passes)
{
    sequence b{54};
    for (std::uint8_t slot = 1; slot <= 4; ++slot) {
        b.programmer.insert(std::make_unique<sim::test_board>(sim::wiring{52}), slot);
        b.prepare(slot, 500);
        b.device.boardsel2(0, 3);
        b.sweep(slot, 1, 0);
        b.sweep(slot, 0, 0);
        b.sweep(slot, 0, 1);
        b.sweep(slot, 1, 1);
        b.frame({6, 1, 54, 6, 80, 1, 0, 0, slot});
    }
    b.device.setvpp(5000, 0);
    b.device.setvpp(5000, 1);
    b.device.hwreset();
    b.programmer.check_idle();
    EXPECT_TRUE(b.hazards().empty() && b.notes().empty());
}

}  // namespace
}  // namespace tamrix::tests
