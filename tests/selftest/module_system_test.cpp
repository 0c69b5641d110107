// The System Test of a unit with four modules, module by module.
#include "module_programmer.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace tamrix {
namespace {

using tests::lines;
using tests::unit_bench;

/// The status texts of one module in a sound run.
lines statuses_of_module(const std::string& number)
{
    return {"Lomax1  RAM ( No " + number + " )  ",
            "Lomax1  RAM ( No " + number + " ) level= 16",
            " ( No " + number,
            "Input Test....",
            ".Output Test GND .....",
            "",
            ".Output Test VPP .....",
            "",
            ".Output Test VCC .....",
            ""};
}

TEST(the_system_test_of_modules, passes_on_a_sound_programmer_of_every_model_and_route)
{
    lines expected{"TestLomax4  RAM .....", " Lomax4 RAM level  = 16"};
    for (const char* number : {"1", "2", "3", "4"})
        for (const std::string& line : statuses_of_module(number)) expected.push_back(line);
    expected.emplace_back("System Test OK!");
    struct kind {
        std::int16_t model;
        std::uint8_t wfig1;
        bool usb;
    };
    for (const kind& k : {kind{39, 0, true}, kind{39, 17, false}, kind{52, 17, true}, kind{54, 0, false}}) {
        SCOPED_TRACE(k.model);
        unit_bench b{k.model, k.wfig1, k.usb};
        b.run();
        EXPECT_EQ(b.statuses(), expected);
        EXPECT_EQ(b.report().result, selftest_result::passed);
        EXPECT_TRUE(b.report().faults.empty() && b.report().kept_quiet.empty());
        EXPECT_EQ(b.count("runstp"), 0);
        EXPECT_EQ(b.session.blocks.rambknum(0), 16);
        EXPECT_EQ(b.session.blocks.ramlg(0), 16 << 15);
        EXPECT_EQ(b.count("boardsel2 0 3"), k.model > 40 ? 1 : 0);
        EXPECT_EQ(b.count("boardsel 3"), k.model > 40 ? 0 : 1);
    }
}

TEST(the_system_test_of_modules, leads_each_frame_to_the_module_in_work)
{
    unit_bench b;
    b.run();
    for (int slot = 1; slot <= 4; ++slot) {
        const std::string number = "0" + std::to_string(slot);
        EXPECT_EQ(b.count("usbcomwrite 15: 04 AA " + number), 3) << slot;
        EXPECT_EQ(b.count("usbcomwrite 15: EC AA " + number), 2) << slot;
        EXPECT_EQ(b.slot(slot).images, 1);
    }
    int pin_frames[5]{};
    for (const std::string& line : b.transcript)
        if (line.starts_with("usbcomwrite 16: 05")) ++pin_frames[line.back() - '0'];
    for (int slot = 1; slot <= 4; ++slot) EXPECT_EQ(pin_frames[slot], 6) << slot;
}

TEST(the_system_test_of_modules, drives_the_pins_high_twice_and_releases_them_before_the_ground_drivers)
{
    unit_bench b;
    b.run();
    const auto at = b.transcript.begin() + b.place_of("usbcomwrite 16: 05 FF 00");
    EXPECT_EQ((lines{at, at + 8}),
              (lines{"usbcomwrite 16: 05 FF 00 FF 00 FF 00 FF 00 FF 00 FF 00 00 00 01", "delayms 2000",
                     "usbcomwrite 16: 05 FF 00 FF 00 FF 00 FF 00 FF 00 FF 00 00 00 01", "delayms 2000",
                     "usbcomwrite 16: 05 FF FF FF FF FF FF FF FF FF FF FF FF 00 00 01", "delayms 500", "delayms 500",
                     "status .Output Test GND ....."}));
}

TEST(the_system_test_of_modules, starts_the_module_again_and_releases_its_pins_before_the_supply_drivers)
{
    unit_bench b;
    b.run();
    const auto vpp = b.transcript.begin() + b.place_of("status .Output Test VPP");
    EXPECT_EQ(
        (lines{vpp - 8, vpp}),
        (lines{"usbcomwrite 15: 04 AA 01 FF FF FF FF FF FF FF FF FF FF 00 00", "delayms 200",
               "usbcomwrite 15: EC AA 01 FF FF FF FF FF FF FF FF FF FF 00 00", "delayms 500", "delayms 5000",
               "delayms 500", "usbcomwrite 16: 05 FF FF FF FF FF FF FF FF FF FF FF FF 00 00 01", "delayms 1000"}));
}

TEST(the_system_test_of_modules, ends_with_its_result_the_run_time_and_a_beep)
{
    unit_bench b;
    b.run();
    long milliseconds = 0;
    for (const std::string& line : b.transcript)
        if (line.starts_with("delayms ")) milliseconds += std::stol(line.substr(8));
    EXPECT_EQ((lines{b.transcript.end() - 4, b.transcript.end()}),
              (lines{"delayms 1000", "status System Test OK!",
                     "status2 " + std::to_string(milliseconds / 1000) + " Sec ", "beep"}));
}

TEST(the_system_test_of_modules, says_how_many_pins_of_all_modules_it_cannot_look_at)
{
    unit_bench b;
    b.during<pinnote204>([&](pinnote204& dialog) {
        dialog.testbutton.click();
        EXPECT_EQ(dialog.fault_words.caption(), "not tested: 32 input, 32 GND driver, 32 VPP driver, 32 VCC driver");
    });
    unit_bench all{39, 17};
    all.run();
    EXPECT_TRUE(all.report().not_tested.empty());
}

TEST(the_system_test_of_modules, shows_bad_ram_of_the_unit_and_goes_on)
{
    unit_bench b;
    b.hardware.bad_blocks = {4};
    b.run();
    const auto level = b.transcript.begin() + b.place_of("status  Lomax4 RAM level");
    EXPECT_EQ((lines{level, level + 6}),
              (lines{"status  Lomax4 RAM level  = 15", "status !!!!!!!!!!           ", "delayms 10000", "delayms 5000",
                     "delayms 5000", "usbcomwrite 15: 04 AA 01 01 00 00 00 00 00 00 00 00 00 00 00"}));
    EXPECT_EQ(b.session.blocks.ramlg(0), 15 << 15);
    EXPECT_EQ(b.statuses().back(), "System Test OK!");
}

TEST(the_system_test_of_modules, takes_ram_without_a_good_block_as_no_ram)
{
    unit_bench b;
    b.modules.writes_until_refused = 0;
    b.run();
    EXPECT_EQ(b.session.blocks.rambknum(0), 0);
    EXPECT_EQ(b.session.blocks.ramlg(0), 0);
}

TEST(the_system_test_of_modules, shows_bad_ram_of_a_module_starts_it_again_and_goes_on)
{
    unit_bench b;
    b.slot(2).bad_blocks = {7};
    b.run();
    const auto level = b.transcript.begin() + b.place_of("status Lomax1  RAM ( No 2 ) level");
    EXPECT_EQ((lines{level, level + 3}),
              (lines{"status Lomax1  RAM ( No 2 ) level= 15", "status !!!!!!!!!!              ", "delayms 20000"}));
    EXPECT_TRUE(level[3].starts_with("usbcomwrite 15: 04 AA 02"));
    EXPECT_TRUE(level[5].starts_with("usbcomwrite 15: EC AA 02"));
    EXPECT_EQ(level[7], "status  ( No 2");
    EXPECT_EQ(b.statuses().back(), "System Test OK!");
    ASSERT_EQ(b.report().faults.size(), 1u);
    EXPECT_EQ(b.report().faults[0].slot, 2);
    EXPECT_EQ(b.session.blocks.ramlg(0), 16 << 15) << "that of the unit";
}

TEST(the_system_test_of_modules, fails_at_a_module_whose_fpga_does_not_start)
{
    unit_bench b;
    b.slot(3).starts_fpga_after = -1;
    b.run();
    EXPECT_EQ(b.report().result, selftest_result::failed);
    EXPECT_EQ(b.statuses().back(), "System Test fail!");
    EXPECT_EQ(b.count("usbcomwrite 15: 04 AA 04"), 0) << "the next module is left alone";
    ASSERT_EQ(b.report().faults.size(), 1u);
    EXPECT_EQ(words_of(b.report().faults[0]), "module 3 FPGA: not loaded");
    EXPECT_EQ(b.count("runstp"), 0);
}

TEST(the_system_test_of_modules, fails_without_an_image)
{
    unit_bench b;
    std::filesystem::remove_all(b.host_folder.path("lib1"));
    b.run();
    EXPECT_EQ((lines{b.transcript.end() - 10, b.transcript.end() - 3}),
              (lines{"box Warning!  | >> Read fig file err!!  ", "regout 1 55", "delayms 1000", "regout 0 55",
                     "delayms 1000", "regout 1 51", "delayms 1000"}));
    EXPECT_EQ(b.statuses().back(), "System Test fail!");
    EXPECT_EQ(b.session.blocks.prgresult(0), 4);
}

/// One pin of one module that always reads the same.
void stick(unit_bench& b, int slot, std::size_t lamp, bool high)
{
    b.hardware.spoil = [&b, slot, lamp, high](std::vector<bool>& pins) {
        if (b.modules.named == slot) pins[lamp] = high;
    };
}

TEST(a_stuck_pin_of_a_module, is_asked_about_and_told_with_its_module)
{
    for (const bool high : {true, false}) {
        unit_bench b;
        stick(b, 2, 30, high);
        b.run(0, false);
        EXPECT_EQ(b.report().result, selftest_result::stopped);
        ASSERT_EQ(b.report().faults.size(), 1u);
        const selftest_fault& found = b.report().faults[0];
        EXPECT_EQ(found.slot, 2);
        EXPECT_EQ(found.pin, 31);
        const lines texts = b.statuses();
        EXPECT_EQ((lines{texts.end() - 2, texts.end()}),
                  (lines{high ? "Input is HIGH!" : "Input is LOW!", "System Test fail!"}));
        EXPECT_EQ(b.count("usbcomwrite 15: 04 AA 03"), 0);
        EXPECT_FALSE(b.hardware.powered);
    }
}

TEST(continue_at_a_stuck_pin_of_a_module, goes_on_to_the_last_module_and_fails_at_the_end)
{
    unit_bench b;
    stick(b, 4, 30, false);
    b.run();
    // The high read of the inputs, and the two supply drivers of that pin.
    EXPECT_EQ(b.count("runstp"), 3);
    EXPECT_EQ(b.report().result, selftest_result::failed);
    EXPECT_EQ(b.statuses().back(), "System Test fail!");
    EXPECT_FALSE(b.report().kept_quiet.empty()) << "the ground drivers see it too";
}

TEST(a_dead_ground_driver_of_a_module, is_noted_and_does_not_fail_the_run)
{
    unit_bench b;
    b.hardware.spoil = [&](std::vector<bool>& pins) {
        if (b.hardware.driver == 138 && b.hardware.driver_pin == 12) pins[11] = true;
    };
    b.run();
    EXPECT_EQ(b.report().result, selftest_result::passed);
    ASSERT_EQ(b.report().kept_quiet.size(), 4u);
    EXPECT_EQ(b.report().kept_quiet[3].slot, 4);
    EXPECT_EQ(b.count("runstp"), 0);
}

TEST(a_lost_reply_of_a_module, ends_the_run_with_a_communication_error)
{
    for (const int replies : {0, 1, 30, 120}) {
        unit_bench b;
        b.hardware.replies_until_lost = replies;
        b.run();
        EXPECT_EQ(b.report().result, selftest_result::communication_error) << replies;
        EXPECT_EQ(b.statuses().back(), "Communication error!");
        EXPECT_EQ(b.count("hwrelease"), 1);
    }
}

TEST(a_refused_frame_of_a_module, ends_the_run_with_a_communication_error)
{
    unit_bench sound;
    sound.run();
    // The first frames of modules 1 and 2, the pin frames of module 1 and its second start.
    std::vector<int> frames;
    int taken = 0;
    for (const std::string& line : sound.transcript) {
        if (!line.starts_with("usbcomwrite") && !line.starts_with("usbbulkwrite")) continue;
        const bool control = line.starts_with("usbcomwrite 15: 04") || line.starts_with("usbcomwrite 15: EC");
        if ((control || line.starts_with("usbcomwrite 16: 05")) && frames.size() < 12) frames.push_back(taken);
        ++taken;
    }
    ASSERT_EQ(frames.size(), 12u);
    for (const int frame : frames) {
        unit_bench b;
        b.modules.writes_until_refused = frame;
        b.run();
        EXPECT_EQ(b.report().result, selftest_result::communication_error) << frame;
        EXPECT_EQ(b.modules.taken, frame + 1) << "nothing after it";
    }
}

TEST(a_unit_that_does_not_answer, ends_the_run_without_a_word)
{
    unit_bench b{39, 0, false};
    b.hardware.hwreset_result = 1;
    b.run();
    EXPECT_EQ(b.transcript, (lines{"hwinit", "hwreset", "hwrelease"}));
    EXPECT_EQ(b.report().result, selftest_result::not_answered);
}

TEST(closing_the_form_with_modules, while_it_waits_ends_the_run_as_stop)
{
    unit_bench b;
    stick(b, 1, 30, true);
    b.during<pinnote204>([&](pinnote204& dialog) {
        b.at_wait = [&] { dialog.ask_to_leave(); };
        dialog.testbutton.click();
    });
    EXPECT_EQ(b.report().result, selftest_result::stopped);
    EXPECT_EQ(b.count("runstp"), 1);
    EXPECT_EQ(b.hardware.vpp, (std::map<int, int>{})) << "made safe, and reset after it";
    EXPECT_FALSE(b.hardware.powered);
}

TEST(closing_the_form_with_modules, while_ram_is_read_ends_the_run_at_once)
{
    unit_bench b;
    std::size_t closed_at = 0;
    b.during<pinnote204>([&](pinnote204& dialog) {
        b.shell.on_doevents = [&] {
            if (closed_at != 0 || b.count("usbbulkread") != 20) return;
            dialog.ask_to_leave();
            closed_at = b.transcript.size();
        };
        dialog.testbutton.click();
    });
    EXPECT_EQ(b.report().result, selftest_result::stopped);
    EXPECT_EQ((lines{b.transcript.begin() + static_cast<std::ptrdiff_t>(closed_at), b.transcript.end()}),
              (lines{"usbcomwrite 16: 0A 00 00 01 00 00 00 00 01 00 00 00 00 00 00 00",
                     "status Lomax1  RAM ( No 1 ) level= 4", "status System Test fail!",
                     "status2 " + std::to_string(static_cast<int>(b.shell.seconds())) + " Sec ", "beep",
                     "setvpp 5000 0", "setvpp 5000 1", "hwreset"}));
}

TEST(a_run_with_modules, takes_all_its_random_bytes_from_one_seed_and_the_next_run_from_another)
{
    unit_bench b;
    b.run();
    EXPECT_EQ(b.starts, 1u);
    b.with_dialog([&](pinnote204& dialog) {
        dialog.testbutton.click();
        dialog.testbutton.click();
    });
    EXPECT_EQ(b.starts, 3u);
}

}  // namespace
}  // namespace tamrix
