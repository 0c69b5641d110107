// The switches of the driver test, the pull of the inputs, and the registers of the boards, call by call.
#include "sim/bench.h"
#include "sim/test_board.h"

#include <gtest/gtest.h>

namespace tamrix::tests {

namespace {

using texts = std::vector<std::string>;
constexpr std::uint8_t vpp = 135, vcc = 137, ground = 138;
constexpr std::uint8_t switch_of_pin_24 = 24 + 128;  // bit 3 of port 0

bool pin_24_is_high(bench& b) { return (b.device.regin(0) & 8) != 0; }

/// A programmer whose driver test is selected and whose inputs are pulled to a level.
struct driver_bench : bench {
    explicit driver_bench(int its_model, bool pulled_down) : bench{its_model, 0, 17}
    {
        if (model >= 40) {
            device.boardsel2(7, 3);
        } else {
            device.boardsel(7);
        }
        device.regout(pulled_down ? 1 : 0, 50);
    }
};

TEST(driver_test, each_call_turns_a_driver_and_is_answered_by_the_pins)
{
    for (const int model : {9, 15, 40}) {
        for (const auto& [code, high] : {std::pair{vcc, true}, {ground, false}}) {
            driver_bench b{model, high};
            for (const bool on : {true, false, true, false}) {
                EXPECT_EQ(b.device.ctlout(switch_of_pin_24, code), 0);
                EXPECT_TRUE(b.device.replywait(3, 0, 0));
                EXPECT_EQ((b.ibuf1[0] & 8) != 0, on == high);
                EXPECT_EQ(pin_24_is_high(b), on == high);
            }
            b.programmer.check_idle();
            EXPECT_EQ(b.hazards(), texts{});
        }
    }
}

TEST(driver_test, drivers_stay_as_they_are_where_no_board_with_their_test_is_selected)
{
    for (const int selected : {0, 1, 2, 3}) {
        bench b{40};
        if (selected == 1) b.device.boardsel(0);
        if (selected == 2) b.device.boardsel2(3, 0);
        if (selected == 3) b.device.boardsel2(7, 0);
        b.device.ctlout(switch_of_pin_24, ground);
        EXPECT_TRUE(pin_24_is_high(b)) << selected;
        EXPECT_EQ(b.device.ctlin(ground), switch_of_pin_24) << "a control register like any other";
        b.device.boardsel2(0, 3);
        b.device.ctlout(switch_of_pin_24, ground);
        EXPECT_FALSE(pin_24_is_high(b));
        b.device.ctlout(switch_of_pin_24, ground);
    }
}

TEST(driver_test, other_values_are_kept_by_the_control_registers)
{
    driver_bench b{40, false};
    b.device.ctlout(switch_of_pin_24, 136);
    b.device.ctlout(128, ground);
    EXPECT_TRUE(pin_24_is_high(b));
    EXPECT_EQ(b.device.ctlin(136), switch_of_pin_24);
    EXPECT_EQ(b.device.ctlin(ground), 128);
}

TEST(driver_test, a_pin_without_a_switch_is_noted)
{
    for (const auto& [model, code, pin] : {std::tuple{15, vpp, 24},
                                           {57, vpp, 4},
                                           {57, vcc, 12},
                                           {16, ground, 22},
                                           {23, ground, 24},
                                           {27, vcc, 24},
                                           {40, vcc, 49}}) {
        driver_bench b{model, true};
        EXPECT_EQ(b.device.ctlout(pin + 128, code), 0);
        EXPECT_EQ(b.notes(),
                  texts{"model " + std::to_string(model) + " switches no such driver at pin " + std::to_string(pin)});
        for (std::uint8_t port = 0; port < 6; ++port) {
            const bool written_back = port == 5 && b.forty();  // no contact: what was written
            EXPECT_EQ(b.device.regin(static_cast<std::uint8_t>(2 * port)), written_back ? 255 : 0);
        }
    }
}

TEST(driver_test, a_driver_that_is_left_on_is_a_hazard_until_a_reset)
{
    driver_bench b{40, false};
    for (const std::uint8_t code : {vpp, vcc, ground}) b.device.ctlout(code + 1, code);
    b.device.delayms(1);
    b.programmer.check_idle();
    EXPECT_EQ(b.hazards(), (texts{"ground driver left on at contact 14", "VCC driver left on at contact 15",
                                  "VPP driver left on at contact 17"}));
    b.device.hwreset();
    b.programmer.check_idle();
    EXPECT_EQ(b.hazards().size(), 3u);
}

TEST(driver_test, drivers_that_meet_at_a_pin_are_a_hazard)
{
    driver_bench b{40, false};
    b.device.ctlout(switch_of_pin_24, vcc);
    b.device.ctlout(switch_of_pin_24, ground);
    b.device.delayms(1);
    EXPECT_EQ(b.hazards(), texts{"contact 1: supply and ground at once"});
    EXPECT_FALSE(pin_24_is_high(b));
    b.device.ctlout(switch_of_pin_24, ground);
    b.frame({5, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0});
    EXPECT_EQ(b.hazards().back(), "contact 1: supply on a pin that the programmer drives low");
    b.device.hwreset();
}

TEST(driver_test, a_generator_that_is_set_beats_the_resting_rail)
{
    driver_bench b{40, false};
    b.programmer.insert(std::make_unique<quad_nand>());
    b.device.ctlout(switch_of_pin_24 - 1, vpp);  // contact 2, pin 6 of the part
    b.device.delayms(1);
    EXPECT_EQ(b.hazards(), texts{});
    b.device.setvpp(12000, 0);
    b.device.delayms(1);
    EXPECT_EQ(b.hazards(), texts{"pin 6 (contact 2): 12000 mV, made for 7000"});
    b.device.hwreset();
}

TEST(input_pull, follows_register_50_with_board_7_only)
{
    for (const int value : {0, 1, 255}) {
        bench b{40};
        b.device.regout(value, 50);
        EXPECT_TRUE(pin_24_is_high(b)) << "nothing is selected";
        for (const auto& [first, second, follows] :
             {std::tuple{7, 3, true}, {0, 3, false}, {7, 0, true}, {3, 45, false}}) {
            b.device.boardsel2(static_cast<std::uint8_t>(first), static_cast<std::uint8_t>(second));
            EXPECT_EQ(pin_24_is_high(b), value == 0 || !follows) << value << ' ' << first;
        }
        b.device.boardsel(7);
        EXPECT_EQ(pin_24_is_high(b), value == 0);
        b.device.boardsel(3);
        EXPECT_TRUE(pin_24_is_high(b));
    }
}

TEST(input_pull, gives_way_to_whatever_drives)
{
    driver_bench b{40, true};
    EXPECT_FALSE(pin_24_is_high(b));
    b.device.regout(0xF7, 1);
    EXPECT_TRUE(pin_24_is_high(b)) << "the pin driver, high";
    b.device.regout(0xFF, 1);
    EXPECT_FALSE(pin_24_is_high(b));
    b.device.regout(0, 50);
    EXPECT_TRUE(pin_24_is_high(b));
}

TEST(boards, show_their_own_registers_only_after_the_function_switch_and_in_mode_1)
{
    bench b{9};
    b.device.boardsel(9);
    const auto show = [&] {
        b.device.regout(0, 3);
        b.device.regout(0xFF, 8);
        return b.device.regin(8);
    };
    b.device.busmode(1);
    EXPECT_EQ(show(), 255) << "the pins";
    b.device.busmode(0);
    b.device.regout(0, 11);
    b.device.hwreset();
    b.device.boardsel(9);
    EXPECT_EQ(show(), 255) << "still the pins";
    b.device.busmode(1);
    EXPECT_EQ(show(), 56);
    b.device.regout(0x1F, 8);
    EXPECT_EQ(b.device.regin(8), 0x18) << "the bits that are there keep their values";
    b.device.regout(255, 11);
    EXPECT_EQ(show(), 255);
    b.device.regout(0, 11);
    b.device.hwreset();
    b.device.boardsel(9);
    EXPECT_EQ(show(), 255) << "a reset ends mode 1";
}

TEST(boards, keep_the_ports_off_the_pins_while_they_are_read_back)
{
    bench b{9};
    b.programmer.insert(std::make_unique<one_way_wires>(40));  // fights ports that drive its columns apart
    b.device.boardsel(0);
    b.device.busmode(1);
    b.frame({5, 15, 0, 15, 0, 15, 0, 15, 0, 15, 0, 15, 0, 0, 0});
    b.device.delayms(1);
    EXPECT_EQ(b.hazards(), texts{});
    EXPECT_EQ(b.device.regin(2), 15);
    b.device.busmode(0);
    b.device.delayms(1);
    EXPECT_FALSE(b.hazards().empty());
}

}  // namespace
}  // namespace tamrix::tests
