// The self-test of the programmer with a 40-pin socket and VCC alone to calibrate.
#include "selftest/pinnote_sepm.h"

#include "press_test.h"

#include <gtest/gtest.h>

namespace tamrix {
namespace {

using tests::lines;
using tests::press_test;
using tests::selftest_bench;

constexpr int output_test_option = 4;

TEST(a_low_voltage_socket, has_five_options)
{
    selftest_bench b{27};
    b.during<pinnote_sepm>([&](pinnote_sepm& dialog) {
        lines captions;
        for (int index = 0; index < dialog.Option1.count(); ++index) {
            captions.push_back(dialog.Option1(index).caption());
            EXPECT_TRUE(dialog.Option1(index).usable());
        }
        EXPECT_EQ(captions, (lines{"System Test", "VCC Vol. Cal. (1.8V)", "VCC Vol. Cal. (3V)", "VCC Vol. Cal. (5V)",
                                   "Output Test"}));
        EXPECT_EQ(dialog.Shape1.count(), 40);
    });
}

TEST(a_low_voltage_socket, calibrates_vcc_at_one_pin)
{
    const lines supplies{"setvcc 1800", "setvcc 3000", "setvcc 5000"};
    for (int option = 1; option <= 3; ++option) {
        selftest_bench b{27};
        b.during<pinnote_sepm>([&](pinnote_sepm& dialog) {
            dialog.Option1(option).click();
            EXPECT_EQ(tests::painted(dialog), "17 red, 19 blue");
            EXPECT_TRUE(dialog.Label4.visible());
            EXPECT_EQ(dialog.StatusBar1.text(1), "Note: Do NOT insert any device in the socket!");
            b.transcript.clear();
            dialog.testbutton.click();
            EXPECT_EQ(b.transcript,
                      (lines{"hwreset", "gndpin 1 1", supplies[static_cast<std::size_t>(option - 1)], "vccpin 3 1"}));
            b.transcript.clear();
            dialog.teststop.click();
            EXPECT_EQ(b.transcript, (lines{"stop", "setvpp 5000 0", "setvpp 5000 1", "hwreset"}));
        });
    }
}

TEST(the_last_option_of_a_low_voltage_socket, asks_for_the_test_board)
{
    selftest_bench b{27};
    b.during<pinnote_sepm>([&](pinnote_sepm& dialog) {
        dialog.Option1(output_test_option).click();
        EXPECT_EQ(dialog.StatusBar1.text(1), "Note!Need \"Test Board\" On Socket!");
        EXPECT_EQ(tests::painted(dialog), "");
        EXPECT_FALSE(dialog.Label4.visible());
    });
}

TEST(a_low_voltage_socket, tests_its_stages_in_order_by_usb)
{
    selftest_bench b{27};
    EXPECT_EQ(press_test<pinnote_sepm>(b), (lines{
                                               "hwreset",
                                               "boardsel 3",
                                               "delayms 100",
                                               "status .Test RAM .....",
                                               "delayms 200",
                                               "usbcomwrite 4: 33 01 80 00",
                                               "delayms 200",
                                               "usbbulkwrite 57344: crc C0430E3D",
                                               "usbcomwrite 8: 33 01 80 00 00 00 00 00",
                                               "usbcomwrite 8: 0A 00 40 00 00 00 00 00",
                                               "usbbulkread 32769",
                                               "usbcomwrite 8: 0A 01 40 00 00 00 00 00",
                                               "usbbulkread 24577",
                                               "usbcomwrite 8: 0A 00 00 00 00 00 00 00",
                                               "status  RAM level= 1",
                                               "delayms 5000",
                                               "status Input Test....",
                                               "regout 0 50",
                                               "usbcomwrite 15: 05 FF FF FF FF FF FF FF FF FF FF FF FF 00 00",
                                               "replywait 3 0 0",
                                               "boardsel 7",
                                               "regout 1 50",
                                               "usbcomwrite 15: 05 00 FF 00 FF 00 FF 00 FF 00 FF 00 FF 00 00",
                                               "replywait 3 0 0",
                                               "regout 1 50",
                                               "status .Output Test VPP .....",
                                               "status",
                                               "status .Output Test VCC .....",
                                               "status",
                                               "boardsel 3",
                                               "busmode 0",
                                               "usbcomwrite 15: 05 FF 00 FF 00 FF 00 FF 00 FF 00 FF 00 00 00",
                                               "delayms 500",
                                               "usbcomwrite 15: 05 FF 00 FF 00 FF 00 FF 00 FF 00 FF 00 00 00",
                                               "delayms 500",
                                               "usbcomwrite 15: 05 FF FF FF FF FF FF FF FF FF FF FF FF 00 00",
                                               "delayms 500",
                                               "status .Output Test GND .....",
                                               "status",
                                               "status .Test IC .....",
                                               "regout 0 11",
                                               "hwreset",
                                               "boardsel 0",
                                               "busmode 0",
                                               "usbcomwrite 15: 05 00 00 00 00 00 00 00 00 00 00 00 00 00 00",
                                               "delayms 1",
                                               "replywait 3 0 0",
                                               "busmode 1",
                                               "usbcomwrite 15: 05 FF 00 FF 00 FF 00 FF 00 FF 00 FF 00 00 00",
                                               "delayms 1",
                                               "replywait 3 0 0",
                                               "hwrelease",
                                               "status",
                                               "status System Test OK!",
                                               "beep",
                                           }));
    EXPECT_EQ(b.report().result, selftest_result::passed);
    EXPECT_EQ(b.report().not_tested,
              (std::vector<untested_pins>{{selftest_stage::vpp, 40, "not known on this model"},
                                          {selftest_stage::vcc, 40, "not known on this model"},
                                          {selftest_stage::ground, 40, "not known on this model"}}));
}

TEST(a_low_voltage_socket, is_tested_by_registers_too)
{
    selftest_bench b{27, 0, false};
    const lines ran = press_test<pinnote_sepm>(b);
    EXPECT_EQ(lines(ran.begin(), ran.begin() + 3), (lines{"hwinit", "hwreset", "boardsel 3"}));
    EXPECT_EQ(b.count("replywait"), 0);
    EXPECT_EQ(b.count("usbcomwrite 15"), 0);
    EXPECT_EQ(b.report().result, selftest_result::passed);
    selftest_bench silent{27, 0, false};
    silent.hardware.hwreset_result = 1;
    EXPECT_EQ(press_test<pinnote_sepm>(silent), (lines{"hwinit", "hwreset", "hwrelease"}));
}

TEST(a_low_voltage_socket, has_a_ram_level_of_1_or_0)
{
    selftest_bench good{27};
    press_test<pinnote_sepm>(good);
    EXPECT_EQ(good.session.blocks.rambknum(0), 1);
    EXPECT_EQ(good.session.blocks.ramlg(0), 32768);
    for (const int block : {0, 1}) {
        selftest_bench bad{27};
        bad.hardware.bad_blocks = {block};
        press_test<pinnote_sepm>(bad);
        EXPECT_EQ(bad.session.blocks.rambknum(0), 0);
        EXPECT_EQ(bad.session.blocks.ramlg(0), 256) << "not 0";
        EXPECT_EQ(bad.count("usbbulkread"), 2) << "the other block is read nevertheless";
        EXPECT_EQ(bad.count("status  RAM level= 0"), 1);
        EXPECT_EQ(bad.count("status System Test OK!"), 1) << "bad RAM does not make the run fail";
        ASSERT_EQ(bad.report().faults.size(), 1u);
        EXPECT_EQ(bad.report().faults[0].place, block);
    }
}

TEST(a_low_voltage_socket, does_not_write_its_ram_where_the_first_frame_was_refused)
{
    selftest_bench b{27};
    b.hardware.writes_until_refused = 0;
    press_test<pinnote_sepm>(b);
    EXPECT_EQ(b.count("usbbulkwrite"), 0);
    EXPECT_EQ(b.report().result, selftest_result::communication_error);
}

TEST(a_low_voltage_socket, reads_no_second_block_after_one_that_did_not_come)
{
    selftest_bench b{27};
    b.hardware.reads_end = false;
    b.shell.on_doevents = [&] { b.shell.advance(1); };
    press_test<pinnote_sepm>(b);
    EXPECT_EQ(b.count("usbbulkread"), 1);
    EXPECT_EQ(b.session.blocks.ramlg(0), 256);
}

TEST(a_stuck_pin_of_a_low_voltage_socket, is_painted_at_its_lamp)
{
    for (int lamp = 4; lamp < 44; ++lamp) {
        selftest_bench b{27};
        b.hardware.spoil = [&](std::vector<bool>& pins) { pins[static_cast<std::size_t>(lamp)] = false; };
        std::string seen;
        b.during<pinnote_sepm>([&](pinnote_sepm& dialog) {
            b.at_wait = [&] {
                seen = tests::painted(dialog) + "|" + dialog.StatusBar1.text(1);
                dialog.teststop.click();
            };
            dialog.testbutton.click();
        });
        EXPECT_EQ(seen, std::to_string(lamp - 4) + " magenta|Input is LOW!");
        ASSERT_EQ(b.report().faults.size(), 1u);
        EXPECT_EQ(b.report().faults[0].pin, lamp - 3);
        EXPECT_EQ(b.report().result, selftest_result::stopped);
    }
}

TEST(a_driver_of_a_low_voltage_socket, settles_for_20_ms_before_its_pins_are_read)
{
    constexpr std::uint8_t some_pins[] = {9};
    selftest_model tested = selftest_model_of(27);
    tested.vpp.pins = tested.vcc.pins = tested.ground.pins = some_pins;
    selftest_bench b{27};
    pinnote_sepm dialog{b.session, b.variables.selftest, tested};
    b.shell.during(dialog, [&] { dialog.testbutton.click(); });
    for (const char* code : {"135", "137", "138"}) {
        const std::string call = std::string{"ctlout 137 "} + code;
        const auto at = std::ranges::find(b.transcript, call);
        ASSERT_GE(b.transcript.end() - at, 5) << code;
        EXPECT_EQ(lines(at, at + 5), (lines{call, "delayms 20", "replywait 3 0 0", call, "delayms 50"}));
    }
}

TEST(a_bad_register_of_a_low_voltage_socket, fails_the_test)
{
    selftest_bench b{27};
    b.hardware.spoil_register = [](int, int reg, int value) { return reg == 2 ? value ^ 4 : value; };
    press_test<pinnote_sepm>(b);
    EXPECT_EQ(b.count("status Device Test Fail!Address:"), 1);
    EXPECT_EQ(b.report().result, selftest_result::failed);
}

TEST(the_output_test_of_a_low_voltage_socket, sweeps_the_inner_and_the_outermost_lines)
{
    for (const bool usb : {true, false}) {
        selftest_bench b{27, 0, usb};
        b.hardware.test_board = true;
        const lines ran = press_test<pinnote_sepm>(b, output_test_option);
        EXPECT_EQ(lines(ran.begin(), ran.begin() + 2), (lines{"boardsel 0", "status .Output Test....."}));
        EXPECT_EQ(b.count(usb ? "replywait" : "regin 10"), 4 * (20 + 4));
        EXPECT_EQ(b.count("boardsel 7"), 1);
        EXPECT_EQ(b.report().result, selftest_result::passed);
        EXPECT_EQ(ran.at(ran.size() - 2), "status Output Test OK!");
    }
}

TEST(the_output_test_of_a_low_voltage_socket, without_a_board_says_so)
{
    selftest_bench b{27};
    press_test<pinnote_sepm>(b, output_test_option);
    EXPECT_EQ(b.report().result, selftest_result::no_test_board);
    EXPECT_EQ(b.count("runstp"), 0);
}

TEST(a_low_voltage_socket, says_so_wherever_a_reply_is_lost_or_a_frame_refused)
{
    for (const auto until :
         {&tests::small_programmer::replies_until_lost, &tests::small_programmer::writes_until_refused}) {
        for (const int option : {0, 4}) {
            for (int good = 0;; ++good) {
                selftest_bench b{27, 17};
                b.hardware.test_board = option != 0;
                b.hardware.*until = good;
                const lines ran = press_test<pinnote_sepm>(b, option);
                if (b.report().result == selftest_result::passed) break;
                ASSERT_EQ(b.report().result, selftest_result::communication_error) << good;
                EXPECT_EQ(lines(ran.end() - 3, ran.end()), (lines{"status Communication error!", "hwrelease", "beep"}));
            }
        }
    }
}

}  // namespace
}  // namespace tamrix
