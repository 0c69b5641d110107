// The self-test of the programmers with a 40-pin socket that is wired in an order of its own.
#include "selftest/pinnote4.h"

#include "press_test.h"

#include <gtest/gtest.h>

namespace tamrix {
namespace {

using tests::lines;
using tests::press_test;
using tests::selftest_bench;

constexpr std::int16_t small_socket_models[] = {23, 24, 28, 29};

const lines run_to_the_inputs = {
    "hwreset",
    "boardsel 3",
    "delayms 100",
    "status .Test RAM .....",
    "usbcomwrite 4: 0A 00 80 00",
    "delayms 20",
    "usbbulkwrite 4096: crc 4F209C34",
    "usbcomwrite 8: 0A 00 40 00 00 00 00 00",
    "usbbulkread 4097",
    "usbcomwrite 8: 0A 00 00 00 00 00 00 00",
    "status  RAM level= 1",
    "delayms 5000",
    "status Input Test....",
    "usbcomwrite 15: 05 FF 00 FF 00 FF 00 FF 00 FF 00 FF 00 0A 00",
    "delayms 500",
    "delayms 500",
    "usbcomwrite 15: 05 FF FF FF FF FF FF FF FF FF FF FF FF 0A 00",
    "regout 0 50",
    "usbcomwrite 15: 05 FF FF FF FF FF FF FF FF FF FF FF FF 0A 00",
    "replywait 3 0 0",
    "boardsel 7",
    "regout 1 50",
    "usbcomwrite 15: 05 00 FF 00 FF 00 FF 00 FF 00 FF 00 FF 0A 00",
    "replywait 3 0 0",
    "regout 1 50",
};
const lines run_of_drivers = {
    "status .Output Test VPP .....",
    "status",
    "status .Output Test VCC .....",
    "status",
    "boardsel 3",
    "busmode 0",
    "usbcomwrite 15: 05 FF 00 FF 00 FF 00 FF 00 FF 00 FF 00 0A 00",
    "delayms 500",
    "usbcomwrite 15: 05 FF 00 FF 00 FF 00 FF 00 FF 00 FF 00 0A 00",
    "delayms 500",
    "usbcomwrite 15: 05 FF FF FF FF FF FF FF FF FF FF FF FF 0A 00",
    "delayms 500",
    "status .Output Test GND .....",
    "status",
};

lines joined(std::initializer_list<lines> parts)
{
    lines all;
    for (const lines& part : parts) all.insert(all.end(), part.begin(), part.end());
    return all;
}

TEST(a_small_socket, has_options_of_which_two_are_listed_and_cannot_be_chosen)
{
    const lines captions{"System Test",          "VCC Vol. Cal. (5V)",   "VPP Vol. Cal. (12V)", "VPP1 Vol. Cal. (12V)",
                         "VCC Vol. Cal. (3.3V)", "VPP1 Vol. Cal. (25V)", "Output Test"};
    for (const std::int16_t model : small_socket_models) {
        selftest_bench b{model};
        b.during<pinnote4>([&](pinnote4& dialog) {
            ASSERT_EQ(dialog.Option1.count(), 7);
            for (int index = 0; index < 7; ++index) {
                EXPECT_EQ(dialog.Option1(index).caption(), captions[static_cast<std::size_t>(index)]);
                EXPECT_TRUE(dialog.Option1(index).visible());
                EXPECT_EQ(dialog.Option1(index).usable(), index != 3 && index != 5);
            }
            dialog.Option1(3).click();
            dialog.Option1(5).click();
            EXPECT_EQ(dialog.testsel(), 0);
            EXPECT_EQ(dialog.Shape1.count(), 40);
            EXPECT_EQ(dialog.Shape2.count(), 40);
        });
    }
}

TEST(a_small_socket, paints_the_pins_of_a_calibration_and_shows_its_hint)
{
    const char* empty = "Note: Do NOT insert any device in the socket!";
    const char* board = "Note!Need \"Test Board\" On Socket!";
    const std::tuple<int, const char*, const char*> expected[] = {{1, "16 red, 19 blue", empty},
                                                                  {2, "14 cyan, 19 blue", empty},
                                                                  {4, "16 red, 19 blue", empty},
                                                                  {6, "", board},
                                                                  {0, "", empty}};
    selftest_bench b{23};
    b.during<pinnote4>([&](pinnote4& dialog) {
        for (const auto& [option, painted, status] : expected) {
            dialog.Option1(option).click();
            EXPECT_EQ(tests::painted(dialog), painted) << option;
            EXPECT_EQ(dialog.StatusBar1.text(1), status) << option;
            EXPECT_EQ(dialog.Label4.visible(), option > 0 && option < 6);
        }
    });
}

TEST(a_small_socket, is_the_pin_map_before_a_logic_test)
{
    selftest_bench b{23};
    b.variables.selftest.pinmapmode = 4;
    b.during<pinnote4>([&](pinnote4& dialog) {
        EXPECT_EQ(tests::painted(dialog), "26 yellow, 27 yellow");
        EXPECT_EQ(dialog.StatusBar1.text(1), "When test 14 pins device,connect a line (P27 P28 ).");
        EXPECT_EQ(dialog.caption(), "Pins Map");
        EXPECT_FALSE(dialog.testbutton.visible() || dialog.teststop.visible() || dialog.Frame1.visible());
        EXPECT_TRUE(dialog.OKButton.usable());
    });
}

TEST(a_small_socket, calibrates_three_voltages)
{
    const std::pair<int, lines> expected[] = {{1, {"hwreset", "gndpin 1 1", "setvcc 5000", "vccpin 4 1"}},
                                              {2, {"hwreset", "gndpin 1 1", "setvpp 12000 0", "vpppin 6 1"}},
                                              {4, {"hwreset", "gndpin 1 1", "setvcc 3300", "vccpin 4 1"}}};
    for (const std::int16_t model : small_socket_models) {
        for (const auto& [option, calls] : expected) {
            selftest_bench b{model};
            b.during<pinnote4>([&](pinnote4& dialog) {
                dialog.Option1(option).click();
                b.transcript.clear();
                dialog.testbutton.click();
                EXPECT_EQ(b.transcript, calls) << model;
                b.transcript.clear();
                dialog.teststop.click();
                EXPECT_EQ(b.transcript, (lines{"stop", "setvpp 5000 0", "setvpp 5000 1", "hwreset"}));
            });
        }
    }
}

TEST(a_small_socket, tests_ram_inputs_and_the_known_drivers_on_generation_17)
{
    for (const std::int16_t model : small_socket_models) {
        selftest_bench b{model, 17};
        EXPECT_EQ(press_test<pinnote4>(b),
                  joined({run_to_the_inputs, run_of_drivers, {"status System Test OK!", "beep"}}));
        EXPECT_EQ(b.report().result, selftest_result::passed);
        EXPECT_EQ(b.report().not_tested,
                  (std::vector<untested_pins>{{selftest_stage::vpp, 16, "not known on this model"},
                                              {selftest_stage::vcc, 13, "not known on this model"},
                                              {selftest_stage::ground, 11, "not known on this model"}}));
    }
}

TEST(a_small_socket, ends_its_test_at_the_inputs_on_other_generations)
{
    for (const std::uint8_t wfig : {0, 16, 18, 255}) {
        selftest_bench b{23, wfig};
        EXPECT_EQ(press_test<pinnote4>(b), joined({run_to_the_inputs, {"status System Test OK!", "beep"}}));
        EXPECT_EQ(b.report().not_tested,
                  (std::vector<untested_pins>{{selftest_stage::vpp, 16, "only generation 17 tests the drivers"},
                                              {selftest_stage::vcc, 13, "only generation 17 tests the drivers"},
                                              {selftest_stage::ground, 11, "only generation 17 tests the drivers"}}));
        EXPECT_NE(b.status_text().find("16 pins not tested"), std::string::npos);
    }
}

TEST(a_small_socket, is_tested_by_usb_whatever_the_route_flag_says)
{
    selftest_bench b{24, 17, false};
    EXPECT_EQ(press_test<pinnote4>(b), joined({run_to_the_inputs, run_of_drivers, {"status System Test OK!", "beep"}}));
    selftest_bench with_board{24, 17, false};
    with_board.hardware.test_board = true;
    press_test<pinnote4>(with_board, 6);
    EXPECT_EQ(with_board.count("regin"), 0);
    EXPECT_EQ(with_board.count("replywait 3 0 0"), 80);
}

TEST(a_small_socket, has_4096_bytes_of_ram)
{
    selftest_bench b{23};
    press_test<pinnote4>(b);
    EXPECT_EQ(b.session.blocks.rambknum(0), 1);
    EXPECT_EQ(b.session.blocks.ramlg(0), 4096);
}

TEST(a_small_socket, without_good_ram_has_a_length_of_256_and_still_passes)
{
    selftest_bench b{23};
    b.hardware.bad_blocks = {0};
    press_test<pinnote4>(b);
    EXPECT_EQ(b.session.blocks.rambknum(0), 0);
    EXPECT_EQ(b.session.blocks.ramlg(0), 256);
    EXPECT_EQ(b.count("status  RAM level= 0"), 1);
    EXPECT_EQ(b.count("status System Test OK!"), 1);
    ASSERT_EQ(b.report().faults.size(), 1u);
    EXPECT_EQ(b.report().faults[0].stage, selftest_stage::ram);
}

TEST(a_small_socket, does_not_write_its_ram_where_the_first_frame_was_refused)
{
    selftest_bench b{23};
    b.hardware.writes_until_refused = 0;
    const lines ran = press_test<pinnote4>(b);
    EXPECT_EQ(b.count("usbbulkwrite"), 0);
    EXPECT_EQ(b.report().result, selftest_result::communication_error);
    EXPECT_EQ(ran[ran.size() - 3], "status Communication error!");
    EXPECT_EQ(ran[ran.size() - 2], "hwrelease");
}

TEST(a_small_socket, that_refuses_the_second_frame_of_the_inputs_ends_the_run)
{
    selftest_bench b{23};
    b.hardware.writes_until_refused = 5;  // four of the RAM test, and the first of the inputs
    const lines ran = press_test<pinnote4>(b);
    EXPECT_EQ(b.report().result, selftest_result::communication_error);
    EXPECT_EQ(std::ranges::count(ran, "delayms 500"), 2);
    EXPECT_EQ(b.count("regout"), 0);
}

TEST(stop_at_the_inputs_of_a_small_socket, ends_the_run_as_failed)
{
    selftest_bench b{23, 17};
    b.hardware.spoil = [](std::vector<bool>& pins) { pins[10] = false; };
    const lines ran = press_test<pinnote4>(b, 0, [](pinnote4& dialog) { dialog.teststop.click(); });
    EXPECT_EQ(b.report().result, selftest_result::stopped);
    EXPECT_EQ(b.count("status .Output Test"), 0);
    EXPECT_EQ(ran.at(ran.size() - 2), "status System Test fail!");
}

TEST(closing_the_self_test_of_a_small_socket, while_it_waits_leaves_the_programmer_safe)
{
    selftest_bench b{23};
    b.hardware.spoil = [](std::vector<bool>& pins) { pins[10] = false; };
    b.during<pinnote4>([&](pinnote4& dialog) {
        b.at_wait = [&] { dialog.ask_to_leave(); };
        dialog.testbutton.click();
    });
    EXPECT_EQ(b.report().result, selftest_result::stopped);
    EXPECT_EQ(lines(b.transcript.end() - 3, b.transcript.end()), (lines{"setvpp 5000 0", "setvpp 5000 1", "hwreset"}));
}

TEST(a_small_socket, says_so_wherever_a_reply_is_lost_or_a_frame_refused)
{
    for (const auto until :
         {&tests::small_programmer::replies_until_lost, &tests::small_programmer::writes_until_refused}) {
        for (const int option : {0, 6}) {
            for (int good = 0;; ++good) {
                selftest_bench b{23, 17};
                b.hardware.test_board = option != 0;
                b.hardware.*until = good;
                const lines ran = press_test<pinnote4>(b, option);
                if (b.report().result == selftest_result::passed) break;
                ASSERT_EQ(b.report().result, selftest_result::communication_error) << good;
                EXPECT_EQ(lines(ran.end() - 3, ran.end()), (lines{"status Communication error!", "hwrelease", "beep"}));
            }
        }
    }
}

}  // namespace
}  // namespace tamrix
