// Every run of an instrument with a programmer that fails at any one of its calls: it ends, the next one passes, and
// nothing is left on.
#include "simulated_instruments.h"
#include "support/failing_programmer.h"

#include <gtest/gtest.h>

#include <array>
#include <map>
#include <utility>

namespace tamrix {
namespace {

using tests::failing;
using tests::failure;
using tests::simulated_instruments;

struct instrument_run {
    std::int16_t model;
    bool usb;
    bool ext_trigger = false;
    int banks = 3;
};

std::string name_of(const instrument_run& run)
{
    return "model " + std::to_string(run.model) + (run.usb ? " usb" : " registers") +
           (run.ext_trigger ? " ext" : " in");
}

constexpr std::array every_kind{failing::reply, failing::switch_reply, failing::acknowledgement, failing::write,
                                failing::read,  failing::reset,        failing::port_read,       failing::board};

/// Lets the calls of the programmer go through `one`, whose stage is `now`.
void put_failure(simulated_instruments& b, failure& one, const std::string& now)
{
    one.stage = [&now] { return now; };
    b.session.hardware.source = with_failure(std::move(b.session.hardware.source), one);
}

/// What a person sees after a record and after the next one.
struct record_end {
    std::string status, next_status;
    bool can_record, can_stop;
    std::vector<std::string> hazards;
};

record_end record(const instrument_run& run, failure& one)
{
    simulated_instruments b{run.model, run.usb, run.banks, {"P21 square 1000", "P22 square 250"}};
    b.variables.analyzer.trigmode = run.ext_trigger ? -1 : 0;
    b.variables.analyzer.triglevel = -1;
    const std::string stage;
    put_failure(b, one, stage);
    record_end seen;
    b.during_analyzer([&](analyzer& dialog) {
        dialog.Command3.click();
        seen = {dialog.StatusBar1.text(1), "", dialog.Command3.usable(), dialog.Command4.usable(), {}};
        one.at = 0;
        dialog.Command3.click();
        seen.next_status = dialog.StatusBar1.text(1);
    });
    seen.hazards = b.hazards();
    return seen;
}

/// The calls to let fail: all, but of the many reads of a port some.
std::vector<int> calls_of(std::size_t count)
{
    std::vector<int> all;
    for (int at = 1; at <= static_cast<int>(count); ++at)
        if (count < 100 || at <= 3 || at == static_cast<int>(count) || at % 30011 == 0) all.push_back(at);
    return all;
}

/// The calls of the first record alone.
std::map<failing, std::size_t> calls_of_one_record(const instrument_run& run)
{
    failure none;
    simulated_instruments b{run.model, run.usb, run.banks, {"P21 square 1000"}};
    b.variables.analyzer.trigmode = run.ext_trigger ? -1 : 0;
    b.variables.analyzer.triglevel = -1;
    const std::string stage;
    put_failure(b, none, stage);
    std::map<failing, std::size_t> counts;
    b.during_analyzer([&](analyzer& dialog) {
        dialog.Command3.click();
        for (const failing what : every_kind) counts[what] = none.steps[what].size();
    });
    return counts;
}

std::string expected_status(const instrument_run& run, failing what, int at, std::size_t count)
{
    const bool last_frame = what == failing::write && at == static_cast<int>(count);  // it only says stop
    if (what == failing::reset && at == 1) return "Status:";
    if (run.usb && (what == failing::write || what == failing::read) && !last_frame) return "Status:Record Error!";
    return "Status:Record OK!";
}

TEST(a_call_that_fails, ends_a_record_and_lets_the_next_one_pass)
{
    std::map<failing, int> tried;
    for (const instrument_run& run :
         {instrument_run{1, true}, instrument_run{1, true, true}, instrument_run{40, true},
          instrument_run{40, true, true}, instrument_run{9, false, false, 4}, instrument_run{9, false, true, 4}}) {
        SCOPED_TRACE(name_of(run));
        for (const auto& [what, count] : calls_of_one_record(run)) {
            for (const int at : calls_of(count)) {
                SCOPED_TRACE("kind " + std::to_string(static_cast<int>(what)) + ", call " + std::to_string(at));
                failure one{.what = what, .at = at};
                const record_end seen = record(run, one);
                EXPECT_EQ(seen.status, expected_status(run, what, at, count));
                EXPECT_TRUE(seen.can_record);
                EXPECT_FALSE(seen.can_stop);
                EXPECT_EQ(seen.next_status, "Status:Record OK!");
                EXPECT_EQ(seen.hazards, std::vector<std::string>{});
                ++tried[what];
            }
        }
    }
    using enum failing;
    EXPECT_EQ(tried, (std::map<failing, int>{{write, 24}, {read, 12}, {reset, 10}, {port_read, 16}}));
}

/// In a round of the message loop the person does something; the number of rounds that a record has.
template <class Deed>
int record_with(const instrument_run& run, int round, const Deed& deed)
{
    simulated_instruments b{run.model, run.usb, run.banks, {"P21 square 1000"}};
    int rounds = 0;
    b.during_analyzer([&](analyzer& dialog) {
        b.at_pump = [&] {
            if (++rounds == round) deed(dialog);
        };
        dialog.Command3.click();
        const int of_the_first = std::exchange(rounds, 0);
        b.at_pump = nullptr;
        if (dialog.is_open()) {
            EXPECT_TRUE(dialog.Command3.usable());
            EXPECT_FALSE(dialog.Command4.usable());
            dialog.Command3.click();
            EXPECT_EQ(dialog.StatusBar1.text(1), "Status:Record OK!") << "the next one";
        }
        rounds = of_the_first;
    });
    EXPECT_EQ(b.hazards(), std::vector<std::string>{});
    return rounds;
}

TEST(a_person, may_stop_or_leave_in_any_round_of_a_record)
{
    for (const instrument_run& run : {instrument_run{1, true}, instrument_run{40, true}}) {
        const int rounds = record_with(run, 0, [](analyzer&) {});
        EXPECT_GE(rounds, 10);
        for (int round = 1; round <= rounds; ++round) {
            SCOPED_TRACE(name_of(run) + ", round " + std::to_string(round));
            record_with(run, round, [](analyzer& dialog) { dialog.Command4.click(); });
            record_with(run, round, [](analyzer& dialog) { dialog.press_key(forms::form_key::space); });
            record_with(run, round, [](analyzer& dialog) { dialog.Exit.click(); });
            record_with(run, round, [](analyzer& dialog) { dialog.close(); });
        }
    }
}

struct wave_run {
    std::int16_t model;
    bool usb;
    bool meter;
    std::string shown;  // by a sound one
};

/// What Text1 shows after a start with a failure, whether another start is offered then, and what the start after a
/// Stop shows.
struct wave_end {
    std::string shown;
    bool can_start = false;
    std::string next_shown{};
    std::vector<std::string> hazards{};
};

wave_end start(const wave_run& run, failure& one)
{
    const std::vector<std::string> signals =
        run.meter ? std::vector<std::string>{"P23 square 12500"} : std::vector<std::string>{};
    simulated_instruments b{run.model, run.usb, 1, signals};
    const std::string stage;
    wave_end seen;
    put_failure(b, one, stage);
    const auto start_and_wait = [&](recetwave& dialog) {
        if (!run.meter) dialog.Text1.text("12500");
        dialog.bigan.click();
        for (int i = 0; i < 100; ++i) b.shell.on_doevents();
    };
    b.during_wave(run.meter, [&](recetwave& dialog) {
        one.steps.clear();
        start_and_wait(dialog);
        seen.shown = dialog.Text1.text();
        seen.can_start = dialog.bigan.usable();
        const auto calls = one.steps;
        dialog.stopButton.click();
        EXPECT_TRUE(dialog.bigan.usable());
        one.at = 0;
        start_and_wait(dialog);
        seen.next_shown = dialog.Text1.text();
        dialog.stopButton.click();
        one.steps = calls;
    });
    seen.hazards = b.hazards();
    return seen;
}

TEST(a_call_that_fails, leaves_a_meter_and_a_generator_to_a_stop_and_another_start)
{
    std::map<failing, int> tried;
    const wave_run runs[] = {
        {9, true, true, "012500"}, {9, false, true, "012500"}, {40, true, true, "012500"}, {40, false, true, "012500"},
        {9, true, false, "15100"}, {9, false, false, "12300"}, {40, true, false, "12500"}, {40, false, false, "12500"},
    };
    for (const wave_run& run : runs) {
        SCOPED_TRACE("model " + std::to_string(run.model) + (run.usb ? " usb" : " registers") +
                     (run.meter ? " meter" : " generator"));
        failure none;
        const wave_end sound = start(run, none);
        EXPECT_EQ(sound.shown, run.shown);
        EXPECT_EQ(sound.next_shown, sound.shown);
        EXPECT_FALSE(sound.can_start) << "it runs";
        for (const failing what : every_kind) {
            for (const int at : calls_of(none.steps[what].size())) {
                SCOPED_TRACE("kind " + std::to_string(static_cast<int>(what)) + ", call " + std::to_string(at));
                failure one{.what = what, .at = at};
                const wave_end seen = start(run, one);
                const bool ends = (what == failing::reset && at == 1) || what == failing::board;
                EXPECT_EQ(seen.shown, !ends ? sound.shown : run.meter ? "000000" : "12500") << "nothing was started";
                EXPECT_FALSE(seen.can_start) << "until a Stop";
                EXPECT_EQ(seen.next_shown, sound.shown);
                EXPECT_EQ(seen.hazards, sound.hazards);
                ++tried[what];
            }
        }
    }
    using enum failing;
    // The second reset is that of Stop.
    EXPECT_EQ(tried, (std::map<failing, int>{{switch_reply, 16}, {reset, 16}, {board, 3}}));
}

}  // namespace
}  // namespace tamrix
