// What all self-test dialogs do alike: options, lamps, buttons, the wait after a fault, closing.
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

// A run of the frame without stages of its own.

class frame_with_runs final : public socket_frame {
public:
    explicit frame_with_runs(selftest_bench& b)
        : socket_frame{b.session, b.variables.selftest, pinnote_plan(selftest_model_of(1)), lamps::socket_of_48}
    {}

    std::function<stage_end()> body;
    stage_end last = stage_end::passed;

private:
    stage_end system_test() override { return body(); }
    stage_end output_test() override { return body(); }
    void show_end(stage_end end) override { last = end; }
};

/// Presses Test on option 0; what runstp() gives goes into `made`.
void run_with_one_wait(selftest_bench& b, frame_with_runs& dialog, decision& made, int option = 0)
{
    dialog.body = [&] {
        made = dialog.runstp();
        return made == decision::go_on ? stage_end::passed : stage_end::stopped;
    };
    b.shell.during(dialog, [&] {
        dialog.Option1(option).click();
        b.transcript.clear();
        dialog.testbutton.click();
    });
}

TEST(runstp, offers_continue_and_stop_with_a_beep)
{
    selftest_bench b;
    frame_with_runs dialog{b};
    decision made = decision::stop;
    b.at_wait = [&] {
        EXPECT_EQ(b.shell.beeps(), 1);
        EXPECT_EQ(dialog.teststep(), 1);
        EXPECT_EQ(dialog.testbusy(), 1);
        EXPECT_EQ(dialog.testbutton.caption(), "Continue");
        EXPECT_TRUE(dialog.testbutton.usable() && dialog.teststop.usable());
        EXPECT_FALSE(dialog.OKButton.usable());
        EXPECT_FALSE(dialog.Option1(1).usable());
        dialog.testbutton.click();
    };
    run_with_one_wait(b, dialog, made);
    EXPECT_EQ(made, decision::go_on);
    EXPECT_EQ(b.transcript, (lines{"beep", "runstp", "continue", "beep"}));
    EXPECT_EQ(b.report().result, selftest_result::failed) << "a run that had to ask";
}

TEST(runstp, ends_by_stop_after_the_reset)
{
    selftest_bench b;
    frame_with_runs dialog{b};
    decision made = decision::go_on;
    b.at_wait = [&] { dialog.teststop.click(); };
    run_with_one_wait(b, dialog, made);
    EXPECT_EQ(made, decision::stop);
    EXPECT_EQ(b.transcript, (lines{"beep", "runstp", "stop", "hwreset", "beep"}));
    EXPECT_EQ(dialog.last, stage_end::stopped);
}

TEST(runstp, of_an_output_test_makes_vpp_safe_on_stop)
{
    selftest_bench b;
    frame_with_runs dialog{b};
    decision made = decision::go_on;
    b.at_wait = [&] { dialog.teststop.click(); };
    run_with_one_wait(b, dialog, made, 6);
    EXPECT_EQ(made, decision::stop);
    EXPECT_EQ(b.transcript, (lines{"beep", "runstp", "stop", "setvpp 5000 0", "setvpp 5000 1", "hwreset", "beep",
                                   "setvpp 5000 0", "setvpp 5000 1"}))
        << "the last two are those of the unload";
}

TEST(runstp, takes_stop_where_both_buttons_were_pressed_in_one_round)
{
    selftest_bench b;
    frame_with_runs dialog{b};
    decision made = decision::go_on;
    b.at_wait = [&] {
        dialog.testbutton.click();
        dialog.teststop.click();
    };
    run_with_one_wait(b, dialog, made);
    EXPECT_EQ(made, decision::stop);
}

TEST(closing_the_form, while_runstp_waits_ends_the_run_as_stop_does_and_leaves_the_programmer_safe)
{
    for (const int option : {0, 6}) {
        selftest_bench b;
        frame_with_runs dialog{b};
        decision made = decision::go_on;
        b.at_wait = [&] { dialog.ask_to_leave(); };
        run_with_one_wait(b, dialog, made, option);
        EXPECT_EQ(made, decision::stop);
        EXPECT_EQ(b.report().result, selftest_result::stopped);
        EXPECT_EQ(b.transcript, (lines{"beep", "runstp", "beep", "setvpp 5000 0", "setvpp 5000 1", "hwreset"}))
            << option;
        EXPECT_EQ(dialog.teststep(), 0);
        EXPECT_FALSE(dialog.is_open());
    }
}

TEST(a_run, restores_the_buttons_and_clears_its_state_at_every_end)
{
    for (const stage_end end : {stage_end::passed, stage_end::failed, stage_end::stopped, stage_end::not_answered,
                                stage_end::communication_error, stage_end::no_test_board}) {
        selftest_bench b;
        frame_with_runs dialog{b};
        dialog.body = [&] {
            EXPECT_FALSE(dialog.testbutton.usable()) << "a second press starts no second run";
            EXPECT_FALSE(dialog.OKButton.usable());
            b.at_wait = [&] { dialog.testbutton.click(); };
            dialog.runstp();
            EXPECT_FALSE(dialog.testbutton.usable());
            return end;
        };
        b.shell.during(dialog, [&] {
            dialog.testbutton.click();
            EXPECT_EQ(dialog.testbutton.caption(), "Test");
            EXPECT_TRUE(dialog.testbutton.usable() && dialog.OKButton.usable() && dialog.Option1(6).usable());
            EXPECT_FALSE(dialog.teststop.usable());
            EXPECT_EQ(dialog.teststep() + dialog.testbusy() + dialog.teststopped(), 0);
        });
        EXPECT_EQ(b.shell.beeps(), end == stage_end::not_answered ? 1 : 2);
    }
}

TEST(a_run, begins_with_a_report_of_its_own)
{
    selftest_bench b{40};
    frame_with_runs dialog{b};
    dialog.body = [&] {
        dialog.add({.pin = 7, .port = 3, .bit = 2, .expected = 1, .read = 0});
        return stage_end::failed;
    };
    b.shell.during(dialog, [&] {
        dialog.testbutton.click();
        EXPECT_EQ(b.report().faults.size(), 1u);
        EXPECT_EQ(dialog.fault_words.caption(), "pin 7 (port 3 bit 2): input: expected high, read low");
        dialog.body = [] { return stage_end::passed; };
        dialog.Option1(6).click();
        EXPECT_EQ(dialog.fault_words.caption(), "");
        dialog.testbutton.click();
    });
    EXPECT_EQ(b.report().faults.size(), 0u);
    EXPECT_EQ(b.report().item, 6);
    EXPECT_EQ(b.report().model, 40);
    EXPECT_EQ(b.status_text(), ">> Self_test: fault: pin 7 (port 3 bit 2): input: expected high, read low\n");
}

TEST(a_run, that_an_error_of_the_programmer_ends_leaves_the_buttons_to_the_closing_dialog)
{
    selftest_bench b;
    frame_with_runs dialog{b};
    dialog.body = []() -> stage_end { throw hw::programmer_error{"gone"}; };
    EXPECT_THROW(b.shell.during(dialog, [&] { dialog.testbutton.click(); }), hw::programmer_error);
    EXPECT_EQ(b.transcript.back(), "hwreset") << "what still answers is left safe";
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
    EXPECT_EQ(words_of(selftest_fault{.stage = selftest_stage::vpp, .pin = 1, .driven_pin = 1}),
              "pin 1 (port 0 bit 0): VPP driver: expected low, read low");
    EXPECT_EQ(words_of(selftest_fault{.stage = selftest_stage::ground, .pin = 1}),
              "pin 1 (port 0 bit 0): GND driver: expected low, read low");
    EXPECT_EQ(words_of(untested_pins{.count = 8, .reason = "why"}), "input: 8 pins not tested (why)");
    EXPECT_EQ(words_of(untested_pins{.count = 1, .reason = "why"}), "input: 1 pin not tested (why)");
}

}  // namespace
}  // namespace tamrix
