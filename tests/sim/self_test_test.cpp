// A self-test's calls, played by hand: what a sound programmer answers.
#include "sim/self_test_player.h"
#include "sim/test_board.h"

#include <gtest/gtest.h>

#include <numeric>

namespace tamrix::tests {

namespace {

using texts = std::vector<std::string>;

/// With and without USB, which models of 40 contacts always have.
std::vector<bool> routes_of(int model)
{
    if (sim::wiring{model}.can_only_pull_low()) return {true};
    return {true, false};
}

constexpr int models[] = {0, 1, 2, 5, 9, 15, 22, 23, 27, 28, 40, 50, 57};

TEST(self_test, a_sound_programmer_passes_the_system_test_without_a_hazard_on_both_routes_in_both_generations)
{
    for (const int model : models) {
        for (const bool usb : routes_of(model)) {
            for (const int generation : {0, 17}) {
                self_test_player p{model, usb, generation};
                EXPECT_EQ(p.system_test(), texts{}) << model << (usb ? " usb" : " registers") << generation;
                p.device.hwreset();
                p.programmer.check_idle();
                EXPECT_EQ(p.hazards(), texts{}) << model;
                EXPECT_EQ(p.notes(), texts{}) << model;
                EXPECT_EQ(p.system_test(), texts{}) << "the second time, on model " << model;
            }
        }
    }
}

TEST(self_test, a_sound_programmer_passes_the_output_test_with_a_board_without_a_hazard)
{
    for (const int model : models) {
        for (const bool usb : routes_of(model)) {
            for (const int generation : {0, 17}) {
                self_test_player p{model, usb, generation};
                p.programmer.insert(std::make_unique<sim::test_board>(p.wires()));
                // Lines without a contact, of models with 40, read what is written.
                const auto counts = p.output_test();
                EXPECT_EQ(std::accumulate(counts.begin(), counts.end(), 0), 0)
                    << model << (usb ? " usb" : " registers");
                EXPECT_EQ(p.wrong, texts{}) << model;
                p.device.hwreset();
                p.programmer.check_idle();
                EXPECT_EQ(p.hazards(), texts{}) << model;
            }
        }
    }
}

TEST(self_test, without_a_board_each_line_fails_once_where_inputs_are_pulled_up)
{
    for (const auto& [model, lines] : {std::pair{9, 20}, {23, 20}, {40, 24}}) {
        self_test_player p{model, true};
        EXPECT_EQ(p.output_test()[0], lines) << model;
    }
}

TEST(self_test, without_a_board_all_others_of_the_side_fail_where_the_system_test_left_the_pull_down)
{
    self_test_player p{40, true};
    p.system_test();
    EXPECT_EQ(p.output_test()[0], 24 * 23);
}

TEST(self_test, the_outermost_pins_are_reached_below_40_by_the_later_generation_or_by_board_7)
{
    const auto reads_low_at_pin_4 = [](int model, int generation, int board) {
        bench b{model, 0, generation};
        b.device.boardsel(static_cast<std::uint8_t>(board));
        b.device.regout(255, 10);  // nobody drives pin 4 of port 5
        b.device.regout(255, 11);
        b.programmer.add_fault("ground driver 4 always on");
        return (b.device.regin(10) & 8) == 0;
    };
    EXPECT_FALSE(reads_low_at_pin_4(9, 0, 0));
    EXPECT_FALSE(reads_low_at_pin_4(9, 0, 3));
    EXPECT_TRUE(reads_low_at_pin_4(9, 0, 7));
    EXPECT_TRUE(reads_low_at_pin_4(9, 17, 0));
    EXPECT_TRUE(reads_low_at_pin_4(40, 0, 3));
}

TEST(self_test, outermost_pins_that_are_cut_off_read_what_is_written_and_drive_nothing)
{
    bench b{9};
    b.programmer.insert(std::make_unique<sim::test_board>(48));
    b.device.regout(0xA5, 10);
    b.device.regout(0xF0, 11);
    EXPECT_EQ(b.device.regin(10), 0xA5) << "the right half mirrors the left one";
    b.device.regout(0xC6, 10);
    EXPECT_EQ(b.device.regin(10), 0x66);
    b.device.boardsel(0);
    EXPECT_EQ(b.device.regin(10), 0xC6);
    b.device.boardsel(7);
    EXPECT_EQ(b.device.regin(10), 0x66);
    b.device.hwreset();
    b.device.regout(0xC6, 10);
    b.device.regout(0xF0, 11);
    EXPECT_EQ(b.device.regin(10), 0x66) << "no board is selected";
}

}  // namespace
}  // namespace tamrix::tests
