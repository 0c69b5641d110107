// What a person presses while a self-test runs: at each wait for a decision, and in each round in which the dialog
// lives.
#include "planned_runs.h"

#include <gtest/gtest.h>

#include <utility>

namespace tamrix {
namespace {

using tests::expect_ready;
using tests::form_of_test;
using tests::planned_run;
using tests::sim_bench;
using tests::situation;
using lines = std::vector<std::string>;

enum class press { go_on, stop, leave, cancel, enter };

const char* name_of(press what)
{
    const char* const names[] = {"Continue", "Stop", "Escape", "Cancel", "Enter"};
    return names[static_cast<int>(what)];
}

void carry_out(press what, selftest_frame& dialog)
{
    switch (what) {
    case press::go_on: return dialog.testbutton.click();
    case press::stop: return dialog.teststop.click();
    case press::leave: return dialog.ask_to_leave();  // as the window's close button does
    case press::cancel: return dialog.OKButton.click();
    case press::enter: return dialog.accept();
    }
}

/// Each dialog by each route that its models have, with a fault that is asked about where a pin can have one.
std::vector<situation> programmers()
{
    const lines stuck{"input 20 stuck 0"}, of_module{"input 20 stuck 0 of module 2"};
    return {{.model = 15, .faults = stuck},
            {.model = 15, .usb = false, .faults = stuck},
            {.model = 57, .memory_banks = 1, .faults = stuck},
            {.model = 57, .usb = false, .memory_banks = 1, .faults = stuck},
            {.model = 23, .generation = 17, .faults = stuck},
            {.model = 27, .faults = stuck},
            {.model = 27, .usb = false, .faults = stuck},
            {.model = 11},
            {.model = 11, .usb = false},
            {.model = 39, .faults = of_module},
            {.model = 39, .usb = false, .faults = of_module}};
}

/// Shows the dialog with that option chosen; afterwards the programmer is idle.
template <class Steps>
void with_dialog(sim_bench& b, const planned_run& plan, const Steps& steps)
{
    tests::form_of(plan.where.model).show(b, [&](selftest_frame& dialog) {
        if (plan.option != 0) dialog.Option1(plan.option).click();
        steps(dialog);
    });
    EXPECT_EQ(b.hazards(), lines{});
}

/// The person presses Continue up to the k-th wait, and something else there. Returns how many waits there were.
int press_at_wait(const planned_run& plan, press what, int at)
{
    sim_bench b{plan.where};
    int waits = 0;
    with_dialog(b, plan, [&](selftest_frame& dialog) {
        b.at_wait = [&] {
            EXPECT_TRUE(dialog.testbutton.usable() && dialog.teststop.usable());
            if (++waits == at) carry_out(what, dialog);
            if (waits != at || what == press::cancel) dialog.testbutton.click();
        };
        dialog.testbutton.click();
        const bool ends = at > 0 && (what == press::stop || what == press::leave);
        EXPECT_EQ(b.report().result, ends ? selftest_result::stopped : selftest_result::failed);
        if (ends) {
            EXPECT_EQ(waits, at);
        }
        if (ends || plan.where.model != 39) {
            EXPECT_EQ(b.last_status(), (plan.option == 0 ? "System Test fail!" : "Output Test fail!"));
        }
        EXPECT_EQ(dialog.is_open(), at == 0 || what != press::leave);
        if (dialog.is_open()) expect_ready(dialog);
        if (what != press::stop || at != 1) return;
        dialog.testbutton.click();
        EXPECT_EQ(b.report().result, selftest_result::failed) << "the next run, which finds the same";
        expect_ready(dialog);
    });
    return waits;
}

TEST(a_press_at_each_wait, goes_on_or_ends_the_run_and_leaves_the_programmer_safe)
{
    for (const planned_run& plan : tests::runs_of(programmers())) {
        if (plan.where.faults.empty()) continue;
        const int waits = press_at_wait(plan, press::go_on, 0);
        EXPECT_GE(waits, plan.option == 0 && (plan.where.model == 23 || plan.where.model == 27) ? 1 : 2);
        for (int k = 1; k <= waits; ++k) {
            for (const press what : {press::stop, press::leave, press::cancel, press::enter}) {
                const bool goes_on = what == press::cancel || what == press::enter;
                if (goes_on && k > 2) continue;  // as in the other waits
                SCOPED_TRACE(name_of(plan) + " wait " + std::to_string(k) + " " + name_of(what));
                press_at_wait(plan, what, k);
            }
        }
    }
}

/// `in_round` is called with the number of each round of the pump from the start of the run on.
void with_rounds(sim_bench& b, const std::function<void(int)>& in_round, const std::function<void()>& steps)
{
    int round = 0;
    const auto pump = b.shell.on_doevents;
    b.shell.on_doevents = [&] {
        pump();
        in_round(++round);
    };
    steps();
    b.shell.on_doevents = pump;
}

TEST(the_buttons, do_nothing_in_the_rounds_in_which_a_run_asks_nothing)
{
    for (planned_run plan : tests::runs_of(programmers())) {
        SCOPED_TRACE(name_of(plan));
        plan.where.faults.clear();
        sim_bench b{plan.where};
        bool at_wait = false;  // for the board to be moved to the next module
        with_dialog(b, plan, [&](selftest_frame& dialog) {
            b.at_wait = [&] {
                at_wait = true;
                dialog.testbutton.click();
            };
            const auto press_all = [&](int) {
                if (std::exchange(at_wait, false)) return;
                EXPECT_FALSE(dialog.testbutton.usable() || dialog.teststop.usable() || dialog.Option1(1).usable());
                for (const press what : {press::go_on, press::stop, press::enter}) carry_out(what, dialog);
            };
            with_rounds(b, press_all, [&] { dialog.testbutton.click(); });
            EXPECT_EQ(b.report().result, selftest_result::passed);
            expect_ready(dialog);
        });
    }
}

/// Leaves the dialog in a round of a sound run. Returns the last status before each round.
lines leave_in_round(const planned_run& plan, int at)
{
    sim_bench b{plan.where};
    lines stages;
    with_dialog(b, plan, [&](selftest_frame& dialog) {
        b.at_wait = [&] { dialog.testbutton.click(); };
        const auto leave = [&](int round) {
            if (dialog.is_open()) stages.push_back(b.last_status());
            if (round == at) dialog.ask_to_leave();
        };
        with_rounds(b, leave, [&] { dialog.testbutton.click(); });
        const std::string& stage = stages.back();
        const bool of_all = stage.ends_with(" OK!") || stage.ends_with(" OK! ( No 4");
        const bool finished = at == 0 || of_all;
        EXPECT_EQ(b.report().result, finished ? selftest_result::passed : selftest_result::stopped) << stage;
        EXPECT_EQ(dialog.is_open(), at == 0);
    });
    return stages;
}

/// The first rounds and, of each stage, the first and the last.
std::vector<int> chosen_rounds(const lines& stages, int all_up_to)
{
    std::vector<int> rounds;
    for (std::size_t i = 0; i < stages.size(); ++i) {
        const bool first = i == 0 || stages[i] != stages[i - 1];
        const bool last = i + 1 == stages.size() || stages[i] != stages[i + 1];
        const int round = static_cast<int>(i) + 1;
        if (first || last || round <= all_up_to) rounds.push_back(round);
    }
    return rounds;
}

TEST(escape_in_each_round, ends_the_run_at_its_next_step_and_leaves_the_programmer_safe)
{
    for (planned_run plan : tests::runs_of(programmers())) {
        plan.where.faults.clear();
        const lines stages = leave_in_round(plan, 0);
        EXPECT_GE(stages.size(), 3u) << "at the start and at the end at least";
        for (const int round : chosen_rounds(stages, plan.where.model == 39 ? 0 : 40)) {
            SCOPED_TRACE(name_of(plan) + " round " + std::to_string(round));
            leave_in_round(plan, round);
        }
    }
}

// Calibrations, whose wait is the idle dialog.

TEST(a_press_in_each_calibration, ends_it_or_does_nothing_and_leaves_the_programmer_safe)
{
    for (const situation& where : programmers()) {
        const form_of_test& form = tests::form_of(where.model);
        for (int option = 1; option < form.output_option; ++option) {
            for (const press what : {press::go_on, press::stop, press::leave, press::cancel, press::enter}) {
                SCOPED_TRACE(name_of(where) + " option " + std::to_string(option) + " " + name_of(what));
                sim_bench b{where};
                with_dialog(b, {where, option}, [&](selftest_frame& dialog) {
                    if (dialog.testsel() != option) return;  // this model does not have it
                    dialog.testbutton.click();
                    b.transcript.clear();
                    carry_out(what, dialog);
                    EXPECT_EQ(dialog.is_open(), what != press::leave);
                    if (what == press::stop) {
                        EXPECT_EQ(b.transcript, (lines{"stop", "setvpp 5000 0", "setvpp 5000 1", "hwreset"}));
                        expect_ready(dialog);
                    } else {
                        EXPECT_TRUE(b.transcript.empty());
                        EXPECT_TRUE(dialog.teststop.usable());
                    }
                    b.transcript.clear();
                });
                if (what != press::stop && b.hardware != nullptr) {
                    EXPECT_EQ(b.transcript, (lines{"setvpp 5000 0", "setvpp 5000 1", "hwreset"}));
                }
            }
        }
    }
}

TEST(the_verdict_of_a_run, stays_where_the_person_started_it_while_the_option_was_being_shown)
{
    for (const bool board : {true, false}) {
        sim_bench b{{.model = 40, .test_board = board}};
        const tests::form_of_test& form = tests::form_of(40);
        form.show(b, [&](selftest_frame& dialog) {
            const auto pump = b.shell.on_doevents;
            bool pressed = false;
            b.shell.on_doevents = [&] {
                pump();
                if (!std::exchange(pressed, true)) dialog.testbutton.click();
            };
            dialog.Option1(form.output_option).click();
            b.shell.on_doevents = pump;
            EXPECT_EQ(dialog.StatusBar1.text(1), board ? "Output Test OK!" : "Error! No \"Test Board\" On Socket!");
        });
    }
}

}  // namespace
}  // namespace tamrix
