// Faults of the pin electronics, the boards and the test board, as a self-test's calls see them.
#include "sim/self_test_player.h"
#include "sim/test_board.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tamrix::tests {

namespace {

using texts = std::vector<std::string>;

texts system_test_with(const char* fault, int model = 40, bool usb = true, int generation = 17)
{
    self_test_player p{model, usb, generation};
    p.programmer.add_fault(fault);
    return p.system_test();
}

texts hazards_with(const char* fault)
{
    self_test_player p{40, true, 17};
    p.programmer.add_fault(fault);
    p.system_test();
    p.device.hwreset();
    return p.hazards();
}

int wrong_bits_of_output_test(int model, const char* fault, bool after_system_test = false)
{
    self_test_player p{model, true, 17};
    if (after_system_test) p.system_test();
    p.programmer.add_fault(fault);
    p.programmer.insert(std::make_unique<sim::test_board>(p.wires()));
    p.wrong.clear();
    p.output_test();
    return static_cast<int>(p.wrong.size());
}

TEST(electronics_faults, a_dead_supply_driver_fails_at_its_own_pin_and_stage_alone)
{
    for (const bool usb : {true, false}) {
        EXPECT_EQ(system_test_with("vpp driver 7 dead", 40, usb), texts{"VPP at pin 7: pin 7"});
        EXPECT_EQ(system_test_with("vcc driver 7 dead", 40, usb), texts{"VCC at pin 7: pin 7"});
        EXPECT_EQ(system_test_with("ground driver 48 dead", 40, usb), texts{"GND at pin 48: pin 48"});
    }
    EXPECT_EQ(system_test_with("vpp driver 31 dead", 15), texts{"VPP at pin 31: pin 31"});
    EXPECT_EQ(system_test_with("vpp driver 30 dead", 15), texts{}) << "the model has no switch there";
    EXPECT_EQ(system_test_with("vcc driver 2 dead", 9, true, 0), texts{}) << "nobody looks at the outermost pins";
}

TEST(electronics_faults, come_many_at_once_and_none_of_them_where_one_is_wrong)
{
    self_test_player p{40, true, 17};
    EXPECT_THROW(p.programmer.add_faults(texts{"vpp driver 7 dead", "vpp driver 8 deaf"}), sim::fault_error);
    EXPECT_EQ(p.system_test(), texts{});
    p.programmer.add_faults(texts{"vpp driver 7 dead", "vcc driver 9 dead"});
    EXPECT_EQ(p.system_test(), (texts{"VPP at pin 7: pin 7", "VCC at pin 9: pin 9"}));
}

TEST(electronics_faults, a_driver_that_is_always_on_shows_when_the_inputs_are_read_and_at_every_other_pin)
{
    for (const char* const kind : {"vpp", "vcc", "high"}) {
        const texts found = system_test_with((std::string{kind} + " driver 7 always on").c_str());
        ASSERT_EQ(found.size(), 95u) << kind;
        EXPECT_EQ(found[0], "pin 7 is not 0");
        EXPECT_EQ(found[1], "VPP at pin 1: pin 7");
        EXPECT_EQ(found[48], "VCC at pin 1: pin 7");
    }
    for (const char* const kind : {"ground", "low"}) {
        const texts found = system_test_with((std::string{kind} + " driver 7 always on").c_str());
        ASSERT_FALSE(found.empty()) << kind;
        EXPECT_EQ(found[0], "pin 7 is not 1");
        EXPECT_EQ(std::ranges::count(found, "GND at pin 8: pin 7"), 1) << kind;
    }
}

TEST(electronics_faults, a_driver_that_is_always_on_is_a_hazard_once_another_works_against_it)
{
    EXPECT_EQ(hazards_with("vcc driver 7 always on"), texts{"contact 18: supply and ground at once"});
    EXPECT_EQ(hazards_with("low driver 7 always on"),
              (texts{"contact 18: supply on a pin that the programmer drives low",
                     "contact 18: supply on a pin that the programmer drives low",
                     "contact 18: two drivers of the programmer fight"}));
    EXPECT_EQ(hazards_with("high driver 7 always on"),
              texts{"contact 18: ground on a pin that the programmer drives high"});
    EXPECT_EQ(hazards_with("vpp driver 7 dead"), texts{});
}

TEST(electronics_faults, pin_drivers_that_are_dead_show_in_the_output_test)
{
    EXPECT_EQ(wrong_bits_of_output_test(9, "low driver 7 dead"), 2 * 24) << "it and its partner, at each line";
    EXPECT_EQ(wrong_bits_of_output_test(23, "low driver 7 dead"), 2 * 20);
    EXPECT_EQ(wrong_bits_of_output_test(9, "high driver 7 dead"), 0) << "the pull-up does its work";
    EXPECT_GT(wrong_bits_of_output_test(40, "high driver 7 dead", true), 0) << "there is a pull-down";
}

TEST(electronics_faults, an_input_that_is_stuck_reads_so_whatever_drives_the_pin)
{
    const texts low = system_test_with("input 7 stuck 0"), high = system_test_with("input 7 stuck 1");
    ASSERT_EQ(low.size(), 50u);
    EXPECT_EQ(low[0], "pin 7 is not 1");
    EXPECT_EQ(low[1], "VPP at pin 7: pin 7");
    EXPECT_EQ(low[3], "GND at pin 1: pin 7");
    ASSERT_EQ(high.size(), 96u);
    EXPECT_EQ(high[0], "pin 7 is not 0");
    EXPECT_EQ(high.back(), "GND at pin 7: pin 7");
    EXPECT_TRUE(hazards_with("input 7 stuck 0").empty());
}

TEST(electronics_faults, pins_that_are_bridged_follow_each_other)
{
    EXPECT_EQ(system_test_with("pins 7 and 30 bridged"),
              (texts{"VPP at pin 7: pin 30", "VPP at pin 30: pin 7", "VCC at pin 7: pin 30", "VCC at pin 30: pin 7",
                     "GND at pin 7: pin 30", "GND at pin 30: pin 7"}));
    EXPECT_EQ(system_test_with("pins 7 and 7 bridged"), texts{});
    EXPECT_EQ(system_test_with("pins 7 and 48 bridged", 27), texts{}) << "a socket of 40 pins has no 48th";
}

TEST(electronics_faults, a_chain_of_bridges_is_one_node)
{
    self_test_player p{40, true, 17};
    for (const char* const one : {"pins 1 and 2 bridged", "pins 3 and 4 bridged", "pins 2 and 3 bridged"})
        p.programmer.add_fault(one);
    p.begin();
    p.driver_stage("GND", 138, 1);
    EXPECT_EQ(p.wrong.size(), 12u);
}

TEST(electronics_faults, a_dead_pull_down_leaves_pins_high_that_nobody_drives)
{
    EXPECT_EQ(system_test_with("pull-down 7 dead").front(), "pin 7 is not 0");
    EXPECT_EQ(system_test_with("pull-down 7 dead").size(), 1u + 47 + 47);
    self_test_player p{9, false, 17};
    p.programmer.add_fault("pull-down dead");
    p.begin();
    p.input_stage();
    EXPECT_EQ(p.wrong.size(), 48u);
    EXPECT_EQ(p.wrong.back(), "pin 48 is not 0");
}

TEST(electronics_faults, a_bad_register_differs_in_both_passes_of_its_board_alone)
{
    for (const bool usb : {true, false}) {
        EXPECT_EQ(system_test_with("bad register 3 of board 2", 9, usb),
                  (texts{"board 2 register 3 zeroes", "board 2 register 3 ones"}));
        EXPECT_EQ(system_test_with("bad register 5 of board 8", 9, usb),
                  (texts{"board 8 register 5 zeroes", "board 8 register 5 ones"}));
        EXPECT_EQ(system_test_with("bad register 3 of board 3", 1, usb), texts{}) << "the board is not looked at";
        EXPECT_EQ(system_test_with("bad register 3 of board 7", 9, usb, 0).size(), 2u);
        EXPECT_EQ(system_test_with("bad register 3 of board 7", 40, usb), texts{});
    }
}

TEST(electronics_faults, a_test_board_may_be_missing_or_have_an_open_line)
{
    self_test_player p{40, true};
    p.programmer.insert(std::make_unique<sim::test_board>(p.wires()));
    p.programmer.add_fault("test board missing");
    EXPECT_EQ(p.output_test()[0], 24);
    p.programmer.clear_faults();
    p.device.hwreset();
    p.wrong.clear();
    for (const char* const line : {"test board line 7 open", "test board line 42 open"}) {
        p.programmer.clear_faults();
        p.programmer.add_fault(line);
        p.device.hwreset();
        p.wrong.clear();
        p.sweep(0, 24, 1, 0);
        EXPECT_EQ(p.wrong, texts{"line 6 level 1: pin 42"}) << line;
    }
}

TEST(electronics_faults, a_fault_that_comes_or_goes_during_a_run_counts_from_then_on)
{
    self_test_player p{40, true, 17};
    p.begin();
    p.input_stage();
    p.programmer.add_fault("high driver 7 always on");
    p.driver_stage("VPP", 135, 0);
    EXPECT_EQ(p.wrong.size(), 47u);
    p.programmer.clear_faults();
    p.driver_stage("VCC", 137, 0);
    EXPECT_EQ(p.wrong.size(), 47u);
}

TEST(electronics_faults, pins_count_as_they_are_numbered_on_the_socket)
{
    EXPECT_EQ(system_test_with("input 1 stuck 0", 27)[0], "pin 5 is not 1") << "of 48";
    EXPECT_EQ(system_test_with("input 40 stuck 0", 27)[0], "pin 44 is not 1");
    EXPECT_EQ(system_test_with("input 48 stuck 0", 27), texts{});
    bench b{23};
    b.programmer.add_fault("input 20 stuck 0");
    EXPECT_EQ(b.run(std::string(40, 'X')), std::string(19, 'H') + 'L' + std::string(20, 'H'));
}

}  // namespace
}  // namespace tamrix::tests
