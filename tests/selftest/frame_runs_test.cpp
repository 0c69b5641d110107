// What all self-test dialogs do alike in a run: buttons, the wait after a fault, closing. The run has no stages of its
// own.
#include "selftest/pinnote.h"

#include "selftest_bench.h"

#include <gtest/gtest.h>

namespace tamrix {
namespace {

using tests::lines;
using tests::selftest_bench;

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

TEST(closing_the_form, in_the_round_in_which_continue_was_pressed_is_stop)
{
    selftest_bench b;
    frame_with_runs dialog{b};
    decision made = decision::go_on;
    b.at_wait = [&] {
        dialog.testbutton.click();
        dialog.ask_to_leave();
    };
    run_with_one_wait(b, dialog, made);
    EXPECT_EQ(made, decision::stop);
    EXPECT_EQ(b.report().result, selftest_result::stopped);
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

}  // namespace
}  // namespace tamrix
