// Every run with a programmer that fails at any one of its calls: how it ends, and that the next one can begin.
#include "planned_runs.h"
#include "support/failing_programmer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdlib>
#include <map>
#include <set>

namespace tamrix {
namespace {

using tests::expect_ready;
using tests::failing;
using tests::failure;
using tests::planned_run;
using tests::sim_bench;
using tests::situation;
using tests::step;

/// Each dialog by each route that its models have, with as many stages as it can have.
std::vector<situation> programmers()
{
    return {{.model = 15},
            {.model = 15, .usb = false},
            {.model = 57, .generation = 17, .memory_banks = 1},
            {.model = 57, .usb = false, .memory_banks = 1},
            {.model = 23, .generation = 17},
            {.model = 27},
            {.model = 27, .usb = false},
            {.model = 11},
            {.model = 11, .usb = false},
            {.model = 39, .generation = 17},
            {.model = 39, .usb = false}};
}

/// A run, and what the person sees of its end.
struct ending {
    selftest_result result = selftest_result::none;
    std::string status{};
    std::vector<selftest_fault> faults{};
    std::vector<std::string> boxes{};
    int good_banks = 0;
};

/// Presses Test, and Continue where a run asks. `again`: a second time, when nothing fails any more.
ending play(const planned_run& plan, failure& one, bool again)
{
    sim_bench b{plan.where};
    one.stage = [&b] { return b.last_status(); };
    b.session.hardware.source = with_failure(std::move(b.session.hardware.source), one);
    ending seen;
    tests::form_of(plan.where.model).show(b, [&](selftest_frame& dialog) {
        b.at_wait = [&] { dialog.testbutton.click(); };
        if (plan.option != 0) dialog.Option1(plan.option).click();
        dialog.testbutton.click();
        const auto boxes = b.shell.boxes();
        seen = {b.report().result, b.last_status(), b.report().faults, boxes, b.session.blocks.rambknum(0)};
        expect_ready(dialog);
        if (!again) return;
        dialog.testbutton.click();
        EXPECT_EQ(b.report().result, selftest_result::passed) << "the next run";
        EXPECT_TRUE(b.report().faults.empty());
        expect_ready(dialog);
    });
    EXPECT_EQ(b.hazards(), std::vector<std::string>{});
    return seen;
}

/// A call to let fail, and whether it is the first of its kind.
struct chosen_call {
    int at;
    bool first;
};

/// The stages of all modules alike.
std::vector<step> of_any_module(std::vector<step> steps)
{
    for (step& one : steps)
        if (const auto number = one.stage.find("( No "); number != std::string::npos)
            one.stage.replace(number, 6, "( No");
    return steps;
}

/// With this variable of the environment, which takes a minute and a half more, each call of a run with modules fails.
bool every_call_wanted() { return std::getenv("TAMRIX_EVERY_CALL") != nullptr; }

/// All calls. Of a long run with modules the first of each stage and command and some between, and by USB the last.
std::vector<chosen_call> choose(const planned_run& plan, const std::vector<step>& all)
{
    constexpr int stride = 211;
    const bool whole = !has_modules(plan) || every_call_wanted(), lasts = plan.where.usb;
    const std::vector<step> steps = of_any_module(all);
    std::map<step, int> last;
    for (std::size_t i = 0; i < steps.size(); ++i) last[steps[i]] = static_cast<int>(i) + 1;
    std::vector<chosen_call> calls;
    std::set<step> met;
    for (std::size_t i = 0; i < steps.size(); ++i) {
        const int at = static_cast<int>(i) + 1;
        const bool first = met.insert(steps[i]).second;
        if (whole || first || (lasts && last[steps[i]] == at) || at % stride == 0) calls.push_back({at, first});
    }
    return calls;
}

bool in_ram_stage(const step& one)
{
    return one.stage.find("RAM") != std::string::npos && one.stage.find("level") == std::string::npos;
}

bool loads_fpga(const step& one)
{
    const bool data = one.command.starts_with("10 ") || one.command.starts_with("92 ") || one.command == "data";
    return !in_ram_stage(one) && data;
}

selftest_result expected_result(const planned_run& plan, failing what, const step& one, int at)
{
    using enum selftest_result;
    switch (what) {
    case failing::reply: return loads_fpga(one) ? failed : communication_error;
    case failing::switch_reply: return at % 2 == 1 ? communication_error : passed;  // on, and off again
    case failing::write:
        if (in_ram_stage(one) || one.command == "6") return passed;
        return loads_fpga(one) ? failed : communication_error;
    case failing::reset: return !plan.where.usb && at == 1 && plan.option == 0 ? not_answered : passed;
    default: return passed;
    }
}

std::string expected_status(const planned_run& plan, selftest_result result, const step& one)
{
    const std::string name = plan.option == 0 ? "System Test" : "Output Test";
    const std::string module = plan.option != 0 && has_modules(plan) ? " ( No 4" : "";
    switch (result) {
    case selftest_result::passed: return name + " OK!" + module;
    case selftest_result::failed: return name + " fail!";
    case selftest_result::communication_error: return "Communication error!";
    default: return one.stage;
    }
}

/// What the memory shows of a failure that it survives.
void expect_memory(failing what, const step& one, const ending& sound, const ending& seen)
{
    const bool lost = what == failing::write && in_ram_stage(one) && one.command != "51" &&
                      !one.command.starts_with("9 ") && !one.command.starts_with("10 0");
    if (lost || what == failing::read) {
        ASSERT_FALSE(seen.faults.empty());
        for (const selftest_fault& fault : seen.faults) EXPECT_EQ(fault.stage, selftest_stage::ram);
    }
    if (what == failing::read) {
        EXPECT_EQ(seen.faults.size(), 1u);
    }
    EXPECT_LE(seen.good_banks, sound.good_banks);
}

/// Whether the next run may find something that this one has left. A run with modules is a long one: there only frames
/// about a module's memory and its FPGA can leave anything.
bool leaves_something(const planned_run& plan, failing what, const step& one)
{
    return !has_modules(plan) || (plan.where.usb && plan.option == 0 && what == failing::write && one.command != "5");
}

/// Lets one call fail and compares how the run ends.
void fail_at(const planned_run& plan, failing what, const chosen_call& call, const step& one, const ending& sound)
{
    SCOPED_TRACE("call " + std::to_string(call.at) + ", " + one.command + " in \"" + one.stage + "\"");
    const selftest_result expected = expected_result(plan, what, one, call.at);
    failure failing_once{.what = what, .at = call.at};
    const bool ends_early = call.first && expected != selftest_result::passed;
    const ending seen = play(plan, failing_once, ends_early && leaves_something(plan, what, one));
    EXPECT_EQ(seen.result, expected);
    EXPECT_EQ(seen.status, expected_status(plan, expected, one));
    EXPECT_EQ(seen.boxes.size(), expected == selftest_result::failed ? 1u : 0u) << "of the load";
    expect_memory(what, one, sound, seen);
}

/// In each run of the models, each kind of failure at each of its calls, in a run of its own. Returns how many runs
/// that took, by kind.
std::map<failing, int> fail_everywhere(std::initializer_list<std::int16_t> models)
{
    using enum failing;
    std::map<failing, int> tried;
    for (const planned_run& plan : tests::runs_of(programmers())) {
        if (std::ranges::count(models, plan.where.model) == 0) continue;
        SCOPED_TRACE(name_of(plan));
        failure none;
        const ending sound = play(plan, none, false);
        EXPECT_EQ(sound.result, selftest_result::passed);
        EXPECT_TRUE(sound.faults.empty());
        for (const failing what : {reply, switch_reply, acknowledgement, write, read, reset}) {
            const std::vector<step>& steps = none.steps[what];
            for (const chosen_call& call : choose(plan, steps)) {
                fail_at(plan, what, call, steps[static_cast<std::size_t>(call.at) - 1], sound);
                ++tried[what];
                if (testing::Test::HasFailure()) return tried;  // more of the same would follow
            }
        }
    }
    return tried;
}

// Each ends with the words for it, leaves the buttons usable and nothing on, and lets the next run pass.

TEST(a_call_that_fails, ends_a_run_of_pinnote_or_costs_memory)
{
    using enum failing;
    EXPECT_EQ(fail_everywhere({15, 57}),
              (std::map<failing, int>{
                  {reply, 305}, {switch_reply, 372}, {acknowledgement, 4}, {write, 106}, {read, 10}, {reset, 6}}));
}

TEST(a_call_that_fails, ends_a_run_of_a_40_pin_dialog_or_costs_memory)
{
    using enum failing;
    EXPECT_EQ(fail_everywhere({23, 27}), (std::map<failing, int>{{reply, 182}, {write, 70}, {read, 5}, {reset, 6}}));
}

TEST(a_call_that_fails, ends_a_run_of_pinnoteISP_or_costs_memory)
{
    using enum failing;
    EXPECT_EQ(fail_everywhere({11}), (std::map<failing, int>{{write, 10}, {read, 4}, {reset, 2}}));
}

TEST(a_call_that_fails, ends_a_run_of_pinnote204_or_costs_memory)
{
    using enum failing;
    const std::map<failing, int> some{{reply, 21},  {switch_reply, 19}, {acknowledgement, 11},
                                      {write, 104}, {read, 6},          {reset, 2}};
    const std::map<failing, int> all{{reply, 1368}, {switch_reply, 2304}, {acknowledgement, 210},
                                     {write, 1030}, {read, 160},          {reset, 2}};
    EXPECT_EQ(fail_everywhere({39}), every_call_wanted() ? all : some);
}

/// Nothing but the reset of a calibration has an answer.
TEST(a_reset_that_is_not_answered, changes_nothing_in_a_calibration)
{
    for (const situation& where : programmers()) {
        const int limit = tests::form_of(where.model).output_option;
        for (int option = 1; option < limit; ++option) {
            SCOPED_TRACE(name_of(where) + " option " + std::to_string(option));
            std::vector<std::string> calls[3];
            for (const int at : {0, 1, 2}) {
                sim_bench b{where};
                failure one{.what = failing::reset, .at = at, .stage = [&b] { return b.last_status(); }};
                b.session.hardware.source = with_failure(std::move(b.session.hardware.source), one);
                tests::form_of(where.model).show(b, [&](selftest_frame& dialog) {
                    dialog.Option1(option).click();
                    if (dialog.testsel() != option) return;  // this model does not have it
                    dialog.testbutton.click();
                    dialog.teststop.click();
                    expect_ready(dialog);
                });
                EXPECT_EQ(b.hazards(), std::vector<std::string>{});
                calls[at] = b.transcript;
                EXPECT_TRUE(one.steps.empty() || one.steps.size() == 1) << "other calls that can fail";
            }
            EXPECT_EQ(calls[1], calls[0]);
            EXPECT_EQ(calls[2], calls[0]);
        }
    }
}

}  // namespace
}  // namespace tamrix
