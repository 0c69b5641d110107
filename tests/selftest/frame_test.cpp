// What all self-test dialogs do alike: options, lamps, closing while nothing runs, faults in words.
#include "selftest/pinnote.h"

#include "selftest_bench.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tamrix {
namespace {

using tests::lines;
using tests::painted;
using tests::selftest_bench;

bool has_single_vpp(int model) { return model == 15 || model == 16 || model == 57 || model == 58; }

lines captions_of(pinnote& dialog)
{
    lines captions;
    for (int index = 0; index < dialog.Option1.count(); ++index) captions.push_back(dialog.Option1(index).caption());
    return captions;
}

TEST(pinnote, names_its_options_by_model)
{
    for (std::int16_t model = 0; model <= 60; ++model) {
        selftest_bench b{model};
        b.during([&](pinnote& dialog) {
            EXPECT_EQ(captions_of(dialog),
                      has_single_vpp(model)
                          ? (lines{"System Test", "VCC Vol. Cal. (5V)", "VPP Vol. Cal. (12V)", "VPP1 Vol. Cal. (12V)",
                                   "VPP Vol. Cal. (21V)", "VPP1 Vol. Cal. (21V)", "Output Test"})
                          : (lines{"System Test", "VCC Vol. Cal. (3V)", "VPP0 Vol. Cal. (12V)", "VPP1 Vol. Cal. (12V)",
                                   "VPP0 Vol. Cal. (25V)", "VPP1 Vol. Cal. (25V)", "Output Test"}))
                << model;
        });
    }
}

TEST(pinnote, opens_as_the_self_test_with_the_system_test_selected)
{
    selftest_bench b;
    b.during([&](pinnote& dialog) {
        EXPECT_EQ(dialog.caption(), "Self_test");
        EXPECT_EQ(dialog.testbutton.caption(), "Test");
        EXPECT_EQ(dialog.teststop.caption(), "Stop");
        EXPECT_EQ(dialog.OKButton.caption(), "Cancel");
        EXPECT_EQ(dialog.Option1.selected(), 0);
        EXPECT_EQ(dialog.StatusBar1.text(1), "Note: Do NOT insert any device in the socket!");
        EXPECT_TRUE(dialog.Frame1.visible() && dialog.testbutton.usable() && dialog.teststop.visible());
        EXPECT_FALSE(dialog.teststop.enabled());
        EXPECT_FALSE(dialog.Label2.visible() || dialog.Label3.visible() || dialog.Label4.visible());
        EXPECT_EQ(painted(dialog), "");
        EXPECT_EQ(tests::marked(dialog), "");
    });
    EXPECT_EQ(b.transcript, lines{"status Note: Do NOT insert any device in the socket!"})
        << "no call of the programmer";
}

TEST(an_option, that_is_chosen_while_another_clears_the_map_is_the_one_that_counts)
{
    selftest_bench b;
    b.during([&](pinnote& dialog) {
        bool chosen = false;
        b.shell.on_doevents = [&] {
            if (!std::exchange(chosen, true)) dialog.Option1(2).click();
        };
        dialog.Option1(1).click();
        EXPECT_EQ(dialog.testsel(), 2);
        EXPECT_EQ(painted(dialog), "22 cyan, 23 blue");
        EXPECT_EQ(dialog.StatusBar1.text(1), "Note: Do NOT insert any device in the socket!");
    });
}

struct shown_option {
    const char *lamps, *status;
    bool label4;
};

TEST(an_option, paints_its_lamps_and_shows_its_hint_on_every_model)
{
    const char* empty = "Note: Do NOT insert any device in the socket!";
    const char* adaptor = "Note! Need AC adaptor!";
    const char* board = "Note!Need \"Test Board\" On Socket!";
    const shown_option two[] = {{"", empty, false},
                                {"22 red, 23 blue", adaptor, true},
                                {"22 cyan, 23 blue", empty, true},
                                {"21 cyan, 23 blue", empty, true},
                                {"22 green, 23 blue", adaptor, true},
                                {"21 green, 23 blue", adaptor, true},
                                {"", board, false}};
    const shown_option one[] = {{"", empty, false},
                                {"20 red, 23 blue", empty, true},
                                {"18 cyan, 23 blue", empty, true},
                                {},
                                {"18 green, 23 blue", empty, true},
                                {},
                                {"", board, false}};
    for (std::int16_t model = 0; model <= 60; ++model) {
        selftest_bench b{model};
        b.during([&](pinnote& dialog) {
            for (int index = 6; index >= 0; --index) {
                const shown_option& expected = (has_single_vpp(model) ? one : two)[index];
                if (expected.lamps == nullptr) continue;
                dialog.Option1(index).click();
                SCOPED_TRACE("model " + std::to_string(model) + " option " + std::to_string(index));
                EXPECT_EQ(dialog.testsel(), index);
                EXPECT_EQ(painted(dialog), expected.lamps);
                EXPECT_EQ(tests::marked(dialog), "");
                EXPECT_EQ(dialog.StatusBar1.text(1), expected.status);
                EXPECT_EQ(dialog.Label4.visible(), expected.label4);
                EXPECT_EQ(dialog.Label4.caption(), "GND");
            }
        });
    }
}

TEST(an_option_that_is_not_offered, is_listed_and_cannot_be_chosen)
{
    for (const std::int16_t model : {15, 16, 57, 58}) {
        selftest_bench b{model};
        b.during([&](pinnote& dialog) {
            for (const int index : {3, 5}) {
                dialog.Option1(index).click();
                EXPECT_EQ(dialog.testsel(), 0) << model;
                EXPECT_TRUE(dialog.Option1(index).visible());
            }
            dialog.Option1(1).click();
            dialog.testbutton.click();
            dialog.teststop.click();
            EXPECT_TRUE(dialog.Option1(2).usable());
            EXPECT_FALSE(dialog.Option1(3).usable()) << "not after a calibration either";
        });
    }
}

TEST(clearpins, paints_the_map_idle_and_pumps_twice)
{
    selftest_bench b;
    b.during([&](pinnote& dialog) {
        for (int lamp = 0; lamp < lamps::count; ++lamp) {
            dialog.socket.paint_lamp(lamp, lamps::red);
            dialog.socket.paint_mark(lamp, lamps::green);
        }
        const int before = b.shell.pumps();
        dialog.clearpins();
        EXPECT_EQ(b.shell.pumps() - before, 2);
        EXPECT_EQ(painted(dialog), "");
        EXPECT_EQ(tests::marked(dialog), "");
        for (int item = 0; item < 48; ++item) {
            EXPECT_EQ(dialog.Shape1(item).fill(), lamps::white);
            EXPECT_EQ(dialog.Shape2(item).fill(), lamps::black);
            EXPECT_EQ(dialog.Shape2(item).border(), lamps::black);
        }
    });
}

TEST(unloading_an_idle_form, makes_its_own_steps_only)
{
    selftest_bench b;
    b.during([](pinnote&) {});
    EXPECT_EQ(b.count("setvpp") + b.count("hwreset"), 0);
    b.during([](pinnote& dialog) { dialog.Option1(2).click(); });
    EXPECT_EQ(b.count("setvpp"), 2);
    EXPECT_EQ(b.count("hwreset"), 0);
}

TEST(unloading_an_idle_form, asks_nothing_of_a_programmer_that_is_not_there)
{
    selftest_bench b;
    b.session.hardware.source = {};
    EXPECT_NO_THROW(b.during([](pinnote& dialog) { dialog.Option1(2).click(); }));
}

TEST(a_fault_in_words, names_pin_port_and_bit_and_what_was_driven)
{
    EXPECT_EQ(
        words_of(selftest_fault{
            .stage = selftest_stage::vcc, .pin = 7, .driven_pin = 7, .port = 3, .bit = 2, .expected = 1, .read = 0}),
        "pin 7 (port 3 bit 2): VCC driver: expected high, read low");
    EXPECT_EQ(words_of(selftest_fault{.stage = selftest_stage::output,
                                      .pin = 42,
                                      .driven_pin = 8,
                                      .port = 4,
                                      .bit = 5,
                                      .slot = 2,
                                      .expected = 0,
                                      .read = 1}),
              "module 2 pin 42 (port 4 bit 5): output of pin 8: expected low, read high");
    EXPECT_EQ(words_of(selftest_fault{
                  .stage = selftest_stage::registers, .board = 12, .place = 3, .expected = 127, .read = 15}),
              "board 12 register 3: expected 7F, read F");
    EXPECT_EQ(words_of(selftest_fault{.stage = selftest_stage::ram, .place = 3, .expected = 16, .read = 0}),
              "RAM block 3: expected 10, read 0");
    EXPECT_EQ(words_of(selftest_fault{.stage = selftest_stage::ram, .place = 3}), "RAM block 3: could not be tested");
    EXPECT_EQ(words_of(selftest_fault{.stage = selftest_stage::vpp, .pin = 1, .driven_pin = 1}),
              "pin 1 (port 0 bit 0): VPP driver: expected low, read low");
    EXPECT_EQ(words_of(selftest_fault{.stage = selftest_stage::ground, .pin = 1}),
              "pin 1 (port 0 bit 0): GND driver: expected low, read low");
    EXPECT_EQ(words_of(untested_pins{.count = 8, .reason = "why"}), "input: 8 pins not tested (why)");
    EXPECT_EQ(words_of(untested_pins{.count = 1, .reason = "why"}), "input: 1 pin not tested (why)");
}

}  // namespace
}  // namespace tamrix
