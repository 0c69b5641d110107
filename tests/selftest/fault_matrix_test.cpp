// Every single fault of a simulated programmer at every pin, register and bank: what the self-test finds is just what
// the levels at the pins let it see.
#include "seen_faults.h"
#include "self_test_forms.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <map>

namespace tamrix {
namespace {

using tests::fault_kind;
using tests::finding;
using tests::sim_bench;
using tests::single_fault;
using tests::situation;
using enum tests::fault_kind;

constexpr std::int16_t models[] = {1, 2, 9, 15, 40, 50, 57};

struct outcome {
    selftest_result result = selftest_result::none;
    std::vector<finding> found{};
    std::vector<std::string> hazards{};
};

/// A run in which the person presses Continue at every wait.
outcome run(situation where, const std::vector<single_fault>& faults, bool output)
{
    for (const single_fault& one : faults) where.faults.push_back(one.text());
    where.test_board = output;
    where.transcript = false;
    sim_bench b{where};
    const tests::form_of_test& form = tests::form_of(where.model);
    outcome what;
    form.show(b, [&](selftest_frame& dialog) {
        b.at_wait = [&] {
            b.session.blocks.MainRtstr(0) = "";  // thousands of faults make it long, and slow
            dialog.testbutton.click();
        };
        if (output) dialog.Option1(form.output_option).click();
        dialog.testbutton.click();
        what.result = b.report().result;
        for (const selftest_fault& one : b.report().faults) what.found.push_back(tests::finding_of(one));
    });
    std::ranges::sort(what.found);
    what.hazards = b.hazards();
    return what;
}

/// Both routes and both generations; each once on models that are like another one in the list.
std::vector<situation> situations_of(std::int16_t model)
{
    const bool like_another = model == 2 || model == 50 || model == 57;
    std::vector<situation> all;
    for (const int generation : {0, 17}) {
        for (const bool usb : {true, false}) {
            if (like_another && usb == (generation == 17)) continue;
            all.push_back({.model = model, .generation = generation, .usb = usb, .memory_banks = model < 40 ? 0 : 1});
        }
    }
    return all;
}

const std::vector<fault_kind> kinds_of_pins{vpp_dead,  vpp_on,     vcc_dead,      vcc_on,   ground_dead,
                                            ground_on, high_dead,  high_on,       low_dead, low_on,
                                            stuck_low, stuck_high, pull_down_dead};

struct tally {
    int tried = 0, seen = 0;
    std::map<std::string, int> invisible{};
};

/// Faults that do not reach each other are tried in one run.
void expect_found(situation where, const std::vector<single_fault>& faults, bool output, tally& counts)
{
    where.test_board = output;
    const auto expected_of = [&](std::span<const single_fault> of) {
        return output ? seen_by_output_test(where, of) : seen_by_system_test(where, of);
    };
    const auto expected = expected_of(faults);
    const outcome real = run(where, faults, output);
    EXPECT_EQ(real.found, expected) << name_of(where) << ": " << faults.front().text() << ", and so on";
    const bool fails = !expected.empty() && faults.front().kind != bad_bank;
    EXPECT_EQ(real.result, fails ? selftest_result::failed : selftest_result::passed) << name_of(where);
    for (const single_fault& one : faults) {
        ++counts.tried;
        if (!expected_of({&one, 1}).empty()) {
            ++counts.seen;
        } else {
            ++counts.invisible[why_invisible(where, one)];
        }
    }
}

/// Each kind at every pin, in as many runs as there are kinds (twice as many in an Output Test, whose board joins the
/// two columns: there each run has faults in one of them).
void try_at_every_pin(const situation& where, const std::vector<fault_kind>& kinds, bool output, tally& counts)
{
    for (std::size_t run = 0; run < kinds.size(); ++run) {
        std::vector<single_fault> left, right;
        for (int pin = 1; pin <= 48; ++pin)
            (output && pin > 24 ? right : left)
                .push_back({.kind = kinds[(static_cast<std::size_t>(pin) + run) % kinds.size()], .at = pin});
        expect_found(where, left, output, counts);
        if (output) expect_found(where, right, output, counts);
    }
}

/// Bridges of neighbours that are not neighbours of each other, with the registers of one number.
void try_bridges(const situation& where, bool output, tally& counts)
{
    constexpr int step = 6;
    for (int first = 0; first < step; ++first) {
        std::vector<single_fault> faults;
        for (int pin = first == 0 ? step : first; pin <= 47; pin += step) faults.push_back({.kind = bridge, .at = pin});
        for (int board = 0; board <= 16 && !output; ++board)
            faults.push_back({.kind = bad_register, .at = first, .board = board});
        expect_found(where, faults, output, counts);
    }
}

void print(std::int16_t model, const char* test, const tally& counts)
{
    std::printf("| %d | %s | %d | %d |", model, test, counts.tried, counts.seen);
    const char* between = " ";
    for (const auto& [why, count] : counts.invisible) {
        std::printf("%s%d: %s", between, count, why.c_str());
        between = "; ";
    }
    std::printf(" |\n");
    std::fflush(stdout);
}

TEST(a_sound_programmer, passes_every_test_without_a_hazard)
{
    for (const std::int16_t model : models) {
        for (const situation& where : situations_of(model)) {
            for (const bool output : {false, true}) {
                const outcome real = run(where, {}, output);
                EXPECT_EQ(real.result, selftest_result::passed) << name_of(where);
                EXPECT_EQ(real.hazards, std::vector<std::string>{}) << name_of(where);
                EXPECT_TRUE(real.found.empty());
            }
        }
    }
}

TEST(every_single_fault, is_found_at_its_pin_by_the_system_test_where_a_stage_can_see_it)
{
    for (const std::int16_t model : models) {
        tally counts;
        for (const situation& where : situations_of(model)) {
            try_at_every_pin(where, kinds_of_pins, false, counts);
            try_bridges(where, false, counts);
        }
        print(model, "System Test", counts);
    }
}

TEST(every_bad_bank, is_found_and_lets_the_run_pass)
{
    for (const std::int16_t model : models) {
        tally counts;
        for (int bank = 0; bank < 16; ++bank)
            expect_found({.model = model}, {{.kind = bad_bank, .at = bank}}, false, counts);
        print(model, "System Test, RAM", counts);
    }
}

TEST(every_single_fault, is_found_at_its_pin_by_the_output_test_where_a_sweep_can_see_it)
{
    for (const std::int16_t model : models) {
        tally counts;
        for (const situation& where : situations_of(model)) {
            try_at_every_pin(where, {ground_on, high_on, low_dead, low_on, stuck_low, stuck_high, line_open}, true,
                             counts);
            try_bridges(where, true, counts);
        }
        print(model, "Output Test", counts);
    }
}

TEST(a_test_board_that_is_missing, is_said_by_the_output_test)
{
    for (const std::int16_t model : models) {
        for (situation where : situations_of(model)) {
            where.faults = {"test board missing"};
            EXPECT_EQ(run(where, {}, true).result, selftest_result::no_test_board) << name_of(where);
        }
    }
}

}  // namespace
}  // namespace tamrix
