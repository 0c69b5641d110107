// The reasons why a fault is not found: each is tried on the simulated programmer, and where the reason is gone the
// fault is found.
#include "seen_faults.h"
#include "self_test_forms.h"

#include <gtest/gtest.h>

#include <map>
#include <optional>
#include <set>

namespace tamrix {
namespace {

using tests::fault_kind;
using tests::sim_bench;
using tests::single_fault;
using tests::situation;
using enum tests::fault_kind;

/// In a System Test, or with the test board in an Output Test.
selftest_report run(situation where, const single_fault& fault)
{
    where.transcript = false;
    where.faults = {fault.text()};
    sim_bench b{where};
    const tests::form_of_test& form = tests::form_of(where.model);
    form.show(b, [&](selftest_frame& dialog) {
        b.at_wait = [&] { dialog.testbutton.click(); };
        if (where.test_board) dialog.Option1(form.output_option).click();
        dialog.testbutton.click();
    });
    return b.report();
}

struct reason {
    const char* words;
    situation where;
    single_fault fault;
    std::optional<situation> otherwise{};  // where the reason does not hold
};

std::vector<reason> reasons()
{
    const situation old{.model = 1}, nine{.model = 9}, nine_17{.model = 9, .generation = 17}, few{.model = 15};
    const situation newer{.model = 40, .memory_banks = 1}, newer_17{.model = 40, .generation = 17, .memory_banks = 1};
    const situation old_board{.model = 1, .test_board = true},
        newer_board{.model = 40, .test_board = true, .memory_banks = 1};
    const char* const generation = "only generation 17 reads this pin";
    return {
        {"the model does not have this bank", old, {.kind = bad_bank, .at = 4}, situation{.model = 40}},
        {"the model does not test this register", old, {.kind = bad_register, .at = 1, .board = 3}, nine},
        {"the model does not test this register", nine, {.kind = bad_register, .at = 5, .board = 0}, {}},
        {"the ground stage shows nothing and asks nothing", nine, {.kind = ground_dead, .at = 20}, {}},
        {"a released pin is pulled up as well", newer, {.kind = high_dead, .at = 20}, {}},
        {"no register test of its port drives this pin low", newer, {.kind = low_dead, .at = 20}, nine},
        {"only an Output Test uses the board", newer, {.kind = line_open, .at = 20}, newer_board},
        {"the model does not switch this driver", few, {.kind = vpp_dead, .at = 5}, nine},
        {"the model does not switch this driver", few, {.kind = vcc_dead, .at = 12}, nine},
        {"a port that drives low is stronger, and others are pulled up",
         newer_board,
         {.kind = high_on, .at = 20},
         newer},
        {"the board joins these pins as well", old_board, {.kind = bridge, .at = 24}, nine},
        {"no stage drives one pin alone", old, {.kind = bridge, .at = 20}, nine},
        {"the model switches no driver at either pin", few, {.kind = bridge, .at = 21}, nine},
        {generation, newer, {.kind = vpp_dead, .at = 1}, newer_17},
        {generation, nine, {.kind = vcc_dead, .at = 48}, nine_17},
        {generation, newer, {.kind = stuck_low, .at = 4}, newer_17},
        {generation, newer, {.kind = high_on, .at = 45}, newer_17},
        {generation, newer, {.kind = bridge, .at = 2}, newer_17},
    };
}

TEST(a_reason_why_a_fault_is_not_found, is_that_of_a_run_that_does_not_find_it)
{
    for (const reason& one : reasons()) {
        SCOPED_TRACE(name_of(one.where) + ": " + one.fault.text());
        EXPECT_EQ(why_invisible(one.where, one.fault), one.words);
        const selftest_report report = run(one.where, one.fault);
        EXPECT_EQ(report.result, selftest_result::passed);
        EXPECT_TRUE(report.faults.empty());
        if (one.fault.kind == ground_dead) {
            EXPECT_FALSE(report.kept_quiet.empty()) << "it compares all the same";
        }
        if (!one.otherwise) continue;
        EXPECT_FALSE(run(*one.otherwise, one.fault).faults.empty()) << "where it does not hold";
    }
}

/// Every fault at every pin, with some banks and registers.
std::vector<single_fault> all_faults()
{
    std::vector<single_fault> all;
    for (int kind = 0; kind <= static_cast<int>(line_open); ++kind)
        for (int pin = 1; pin <= 47; ++pin) all.push_back({.kind = static_cast<fault_kind>(kind), .at = pin});
    for (int bank = 0; bank < 16; ++bank) all.push_back({.kind = bad_bank, .at = bank});
    for (int board = 0; board <= 16; ++board)
        for (int reg = 1; reg <= 5; ++reg) all.push_back({.kind = bad_register, .at = reg, .board = board});
    return all;
}

TEST(a_reason_why_a_fault_is_not_found, is_one_of_those_that_were_tried)
{
    std::set<std::string> tried, given;
    for (const reason& one : reasons()) tried.insert(one.words);
    for (const std::int16_t model : {1, 2, 9, 15, 40, 50, 57}) {
        for (const bool board : {false, true}) {
            const situation where{.model = model, .test_board = board};
            for (const single_fault& one : all_faults()) {
                const std::span<const single_fault> alone{&one, 1};
                if (board && one.kind != bridge && one.kind != high_on && one.kind != line_open) continue;
                if ((board ? seen_by_output_test(where, alone) : seen_by_system_test(where, alone)).empty())
                    given.insert(why_invisible(where, one));
            }
        }
    }
    EXPECT_EQ(given, tried);
}

}  // namespace
}  // namespace tamrix
