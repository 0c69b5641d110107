// Every single fault of a simulated programmer at every pin, register and bank: what the self-test finds is just what
// the levels at the pins let it see.
#include "matrix_runs.h"
#include "tested_model.h"

#include <gtest/gtest.h>

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

// Those with modules have a matrix of their own.
constexpr std::int16_t models[] = {1, 2, 9, 11, 15, 23, 25, 27, 40, 50, 57};

bool tests_pins(std::int16_t model) { return !tests::tested_model_of(model).memory_alone; }
int pins_of(std::int16_t model) { return tests::tested_model_of(model).socket.pins; }

/// Each kind at every pin, in as many runs as there are kinds (twice as many in an Output Test, whose board joins the
/// two columns: there each run has faults in one of them).
void try_at_every_pin(const situation& where, std::span<const fault_kind> kinds, bool output, tally& counts)
{
    const int pins = pins_of(where.model);
    for (std::size_t run = 0; run < kinds.size(); ++run) {
        std::vector<single_fault> left, right;
        for (int pin = 1; pin <= pins; ++pin)
            (output && pin > pins / 2 ? right : left)
                .push_back({.kind = kinds[(static_cast<std::size_t>(pin) + run) % kinds.size()], .at = pin});
        expect_found(where, left, output, counts);
        if (output) expect_found(where, right, output, counts);
    }
}

/// Bridges of neighbours that are not neighbours of each other, with the registers of one number.
void try_bridges(const situation& where, bool output, tally& counts)
{
    // One by one on model 23, where several have as many faults in a sweep as a missing board.
    const int step = output && where.model == 23 ? 39 : 6;
    for (int first = 0; first < step; ++first) {
        std::vector<single_fault> faults;
        for (int pin = first == 0 ? step : first; pin < pins_of(where.model); pin += step)
            faults.push_back({.kind = bridge, .at = pin});
        for (int board = 0; board <= 16 && !output; ++board)
            faults.push_back({.kind = bad_register, .at = first, .board = board});
        expect_found(where, faults, output, counts);
    }
}

/// On a model that has no stage for pins and registers: all at once, but for those that exclude each other.
void try_without_a_stage(const situation& where, std::span<const fault_kind> kinds, tally& counts)
{
    for (std::size_t first = 0; first < 2; ++first) {
        std::vector<single_fault> faults;
        for (std::size_t kind = first; kind < kinds.size(); kind += 2)
            for (int pin = 1; pin <= pins_of(where.model); ++pin) faults.push_back({.kind = kinds[kind], .at = pin});
        for (int pin = 1; pin < pins_of(where.model) && first == 0; ++pin)
            faults.push_back({.kind = bridge, .at = pin});
        for (int place = 0; place < 6 * 17 && first == 0; ++place)
            faults.push_back({.kind = bad_register, .at = place % 6, .board = place % 17});
        expect_found(where, faults, false, counts);
    }
}

TEST(a_sound_programmer, passes_every_test_without_a_hazard)
{
    for (const std::int16_t model : models) {
        for (const situation& where : situations_of(model)) {
            for (const bool output : {false, true}) {
                if (output && !tests_pins(model)) continue;
                tests::expect_sound(where, output);
            }
        }
    }
}

TEST(every_single_fault, is_found_at_its_pin_by_the_system_test_where_a_stage_can_see_it)
{
    for (const std::int16_t model : models) {
        tally counts;
        for (const situation& where : situations_of(model)) {
            if (!tests_pins(model)) {
                try_without_a_stage(where, tests::pin_faults_of_system_test, counts);
                continue;
            }
            try_at_every_pin(where, tests::pin_faults_of_system_test, false, counts);
            try_bridges(where, false, counts);
        }
        tests::expect_on_page(model, "System Test", counts);
    }
}

/// Every second bank at once.
TEST(every_bad_bank, is_found_and_lets_the_run_pass)
{
    for (const std::int16_t model : models) {
        tally counts;
        for (situation where : situations_of(model)) {
            where.memory_banks = 0;
            for (int first = 0; first < 2 && where.generation == 0; ++first) {
                std::vector<single_fault> faults;
                for (int bank = first; bank < 16; bank += 2) faults.push_back({.kind = bad_bank, .at = bank});
                expect_found(where, faults, false, counts);
            }
        }
        tests::expect_on_page(model, "System Test, RAM", counts);
    }
}

TEST(every_single_fault, is_found_at_its_pin_by_the_output_test_where_a_sweep_can_see_it)
{
    constexpr fault_kind kinds[] = {vpp_on, vcc_on,    ground_on,  high_dead,      high_on,  low_dead,
                                    low_on, stuck_low, stuck_high, pull_down_dead, line_open};
    for (const std::int16_t model : models) {
        if (!tests_pins(model)) continue;
        tally counts;
        for (const situation& where : situations_of(model)) {
            try_at_every_pin(where, kinds, true, counts);
            try_bridges(where, true, counts);
        }
        tests::expect_on_page(model, "Output Test", counts);
    }
}

TEST(a_test_board_that_is_missing, is_said_by_the_output_test)
{
    for (const std::int16_t model : models) {
        if (!tests_pins(model)) continue;
        for (situation where : situations_of(model)) {
            where.faults = {"test board missing"};
            EXPECT_EQ(tests::run(where, {}, true).result, selftest_result::no_test_board) << name_of(where);
        }
    }
}

}  // namespace
}  // namespace tamrix
