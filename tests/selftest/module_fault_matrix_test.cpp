// Every single fault of a programmer with four modules: of the unit, of each module, and of what connects them.
#include "matrix_runs.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tamrix {
namespace {

using tests::expect_found;
using tests::fault_kind;
using tests::outcome;
using tests::single_fault;
using tests::situation;
using tests::situations_of;
using tests::tally;
using enum tests::fault_kind;

constexpr std::int16_t model = 39;
constexpr int modules = 4, pins = 48, banks = 16;

/// Its memory has to be whole: what modules keep passes through it.
std::vector<situation> module_situations()
{
    auto all = situations_of(model);
    for (situation& where : all) where.memory_banks = 0;
    return all;
}

/// Each kind at every pin of the unit and of each module, in as many runs as there are kinds (twice as many with test
/// boards, which join the two columns).
void try_at_every_pin_of_the_modules(const situation& where, std::span<const fault_kind> kinds, bool output,
                                     tally& counts)
{
    for (std::size_t run = 0; run < kinds.size(); ++run) {
        std::vector<single_fault> left, right;
        for (int module = 0; module <= modules; ++module) {
            for (int pin = 1; pin <= pins; ++pin) {
                const std::size_t kind = static_cast<std::size_t>(pin + module) + run;
                (output && pin > pins / 2 ? right : left)
                    .push_back({.kind = kinds[kind % kinds.size()], .at = pin, .module = module});
            }
        }
        expect_found(where, left, output, counts);
        if (output) expect_found(where, right, output, counts);
    }
}

/// Bridges of neighbours that are not neighbours of each other, with all registers: no stage tests them.
void try_bridges_in_the_modules(const situation& where, bool output, tally& counts)
{
    const int step = output ? 6 : 3;
    for (int first = 1; first <= step; ++first) {
        std::vector<single_fault> faults;
        for (int module = 0; module <= modules; ++module) {
            for (int pin = first; pin < pins; pin += step)
                faults.push_back({.kind = bridge, .at = pin, .module = module});
            for (int place = first; place <= 6 * 17 && !output; place += step)
                faults.push_back({.kind = bad_register, .at = place % 6, .board = place % 17, .module = module});
        }
        expect_found(where, faults, output, counts);
    }
}

TEST(a_sound_programmer_with_modules, passes_every_test_without_a_hazard)
{
    for (situation where : module_situations()) {
        for (const bool low_first : {false, true}) {
            where.low_first = low_first;
            for (const bool output : {false, true}) {
                tests::expect_sound(where, output);
            }
        }
    }
}

TEST(every_single_fault_of_a_module, is_found_at_its_pin_by_the_system_test_where_a_stage_can_see_it)
{
    tally counts;
    for (const situation& where : module_situations()) {
        try_at_every_pin_of_the_modules(where, tests::pin_faults_of_system_test, false, counts);
        try_bridges_in_the_modules(where, false, counts);
    }
    tests::expect_on_page(model, "System Test", counts);
}

/// Those of the unit, and those of each module, every second one at once.
TEST(every_bad_bank_of_a_module, is_found_and_lets_the_run_pass)
{
    tally counts;
    for (const situation& where : module_situations()) {
        for (int first = 0; first < 2 && where.generation == 0; ++first) {
            std::vector<single_fault> of_unit, of_modules;
            for (int bank = first; bank < banks; bank += 2) {
                of_unit.push_back({.kind = bad_bank, .at = bank});
                for (int module = 1; module <= modules; ++module)
                    of_modules.push_back({.kind = bad_bank, .at = bank, .module = module});
            }
            expect_found(where, of_unit, false, counts);
            expect_found(where, of_modules, false, counts);
        }
    }
    tests::expect_on_page(model, "System Test, RAM", counts);
}

TEST(a_missing_module_or_an_fpga_that_does_not_start, is_found_by_both_tests_at_its_number)
{
    tally system, output;
    for (const situation& where : module_situations()) {
        std::vector<single_fault> once, twice;
        for (int module = 1; module <= modules; ++module) {
            once.push_back({.kind = fpga_idle_once, .module = module});
            twice.push_back({.kind = fpga_idle_twice, .module = module});
            // These two end the run.
            expect_found(where, {{.kind = fpga_idle, .module = module}}, false, system);
            expect_found(where, {{.kind = module_missing, .module = module}}, false, system);
            expect_found(where, {{.kind = module_missing, .module = module}}, true, output);
        }
        expect_found(where, once, false, system);
        expect_found(where, twice, false, system);
    }
    tests::expect_on_page(model, "System Test, modules", system);
    tests::expect_on_page(model, "Output Test, modules", output);
}

TEST(every_single_fault_of_a_module, is_found_at_its_pin_by_the_output_test_where_a_sweep_can_see_it)
{
    constexpr fault_kind kinds[] = {vpp_on, vcc_on,    ground_on,  high_dead,      high_on,  low_dead,
                                    low_on, stuck_low, stuck_high, pull_down_dead, line_open};
    tally counts;
    for (situation where : module_situations()) {
        // The sweeps are the same on both generations: with the other order of the levels on one.
        where.low_first = where.generation == 17;
        try_at_every_pin_of_the_modules(where, kinds, true, counts);
        try_bridges_in_the_modules(where, true, counts);
    }
    tests::expect_on_page(model, "Output Test", counts);
}

TEST(a_test_board_of_a_module_that_is_missing, is_said_by_the_output_test_with_the_number)
{
    for (situation where : module_situations()) {
        for (int module = 1; module <= modules; ++module) {
            const single_fault missing{.kind = board_missing, .module = module};
            for (const bool low_first : {false, true}) {
                where.low_first = low_first;
                const outcome real = tests::run(where, {&missing, 1}, true);
                EXPECT_EQ(real.result, selftest_result::no_test_board) << name_of(where);
                EXPECT_EQ(real.errors, std::vector<std::string>{"Error! No \"Test Board\" On Socket! ( No " +
                                                                std::to_string(module)})
                    << name_of(where);
            }
        }
    }
}

}  // namespace
}  // namespace tamrix
