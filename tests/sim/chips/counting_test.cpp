// Chips with memory, step by step from their function.
#include "chip_socket.h"

namespace tamrix::tests {
namespace {

TEST(flip_flops, a_7474_takes_its_input_at_the_rising_edge_only)
{
    chip_socket ic{"7474"};
    ic.set("1CLR", 1).set("1PRE", 1).set("1CLK", 0).set("1D", 1);
    EXPECT_EQ(ic.read({"1Q", "1QN"}), 0b01u);  // registers wake up as 0
    EXPECT_EQ(ic.set("1CLK", 1).read({"1Q", "1QN"}), 0b10u);
    EXPECT_EQ(ic.set("1D", 0).set("1CLK", 0).at("1Q"), 1);
    EXPECT_EQ(ic.set("1CLK", 1).at("1Q"), 0);
    EXPECT_EQ(ic.set("1PRE", 0).read({"1Q", "1QN"}), 0b10u);
    EXPECT_EQ(ic.set("1CLR", 0).read({"1Q", "1QN"}), 0b11u);
    EXPECT_EQ(ic.set("1PRE", 1).read({"1Q", "1QN"}), 0b01u);
}

TEST(flip_flops, a_7476_holds_sets_clears_and_toggles_at_the_falling_edge)
{
    chip_socket ic{"7476"};
    ic.set("2PRE", 1).set("2CLK", 0).set("2CLR", 0).set("2CLR", 1).set("2J", 1).set("2K", 0);
    EXPECT_EQ(ic.set("2CLK", 1).at("2Q"), 0);
    EXPECT_EQ(ic.set("2CLK", 0).at("2Q"), 1);
    EXPECT_EQ(ic.set("2J", 0).pulse("2CLK").at("2Q"), 1);
    EXPECT_EQ(ic.set("2J", 1).set("2K", 1).pulse("2CLK").at("2Q"), 0);
    EXPECT_EQ(ic.pulse("2CLK").at("2Q"), 1);
    EXPECT_EQ(ic.set("2J", 0).pulse("2CLK").read({"2Q", "2QN"}), 0b01u);
}

TEST(flip_flops, a_74109_toggles_when_j_is_high_and_k_is_low)
{
    chip_socket ic{"74109"};
    ic.set("1PRE", 1).set("1CLR", 1).set("1CLK", 0).set("1J", 1).set("1KN", 0);
    EXPECT_EQ(ic.pulse("1CLK").at("1Q"), 1);
    EXPECT_EQ(ic.pulse("1CLK").at("1Q"), 0);
    EXPECT_EQ(ic.set("1KN", 1).pulse("1CLK").at("1Q"), 1);
    EXPECT_EQ(ic.set("1J", 0).pulse("1CLK").at("1Q"), 1);
    EXPECT_EQ(ic.set("1KN", 0).pulse("1CLK").at("1Q"), 0);
}

TEST(latches, a_7475_follows_while_enabled_and_then_holds)
{
    chip_socket ic{"7475"};
    EXPECT_EQ(ic.set("EN34", 1).set("3D", 1).read({"3Q", "3QN"}), 0b10u);
    EXPECT_EQ(ic.set("3D", 0).read({"3Q", "3QN"}), 0b01u);
    EXPECT_EQ(ic.set("EN34", 0).set("3D", 1).at("3Q"), 0);
}

TEST(counters, a_7490_counts_two_and_five_and_sets_to_nine)
{
    chip_socket ic{"7490"};
    ic.put({"R01", "R02", "R91", "R92", "CKA", "CKB"}, 0b110000);
    EXPECT_EQ(ic.read({"QD", "QC", "QB", "QA"}), 0u);
    ic.set("R01", 0);
    for (const auto expected : {1u, 0u}) EXPECT_EQ(ic.pulse("CKA").at("QA"), static_cast<int>(expected));
    for (const auto expected : {1u, 2u, 3u, 4u, 0u, 1u}) EXPECT_EQ(ic.pulse("CKB").read({"QD", "QC", "QB"}), expected);
    ic.set("R91", 1).set("R92", 1).set("R01", 1);  // the nine goes before the zero
    EXPECT_EQ(ic.read({"QD", "QC", "QB", "QA"}), 9u);
}

TEST(counters, a_7492_leaves_out_three_in_its_count_of_six)
{
    chip_socket ic{"7492"};
    ic.put({"R01", "R02", "CKA", "CKB"}, 0b1100).set("R01", 0);
    for (const auto expected : {1u, 2u, 4u, 5u, 6u, 0u}) EXPECT_EQ(ic.pulse("CKB").read({"QD", "QC", "QB"}), expected);
}

TEST(counters, a_74161_counts_loads_carries_and_clears_at_once)
{
    chip_socket ic{"74161"};
    ic.put({"CLR", "CLK", "ENP", "ENT", "LOAD"}, 0b00111);
    ic.set("CLR", 1);
    for (unsigned n = 1; n <= 20; ++n) {
        EXPECT_EQ(ic.pulse("CLK").read({"QD", "QC", "QB", "QA"}), n % 16);
        EXPECT_EQ(ic.at("RCO"), n % 16 == 15 ? 1 : 0);
    }
    ic.put({"D", "C", "B", "A"}, 15).set("LOAD", 0);
    EXPECT_EQ(ic.read({"QD", "QC", "QB", "QA"}), 4u);
    EXPECT_EQ(ic.pulse("CLK").read({"QD", "QC", "QB", "QA", "RCO"}), 31u);
    EXPECT_EQ(ic.set("LOAD", 1).set("ENP", 0).pulse("CLK").read({"QD", "QC", "QB", "QA", "RCO"}), 31u);
    EXPECT_EQ(ic.set("ENT", 0).at("RCO"), 0);
    EXPECT_EQ(ic.set("CLR", 0).read({"QD", "QC", "QB", "QA"}), 0u);
}

TEST(counters, a_74162_goes_from_nine_to_zero_and_clears_with_the_clock)
{
    chip_socket ic{"74162"};
    ic.put({"CLR", "CLK", "ENP", "ENT", "LOAD"}, 0b10111);
    for (unsigned n = 1; n <= 12; ++n) EXPECT_EQ(ic.pulse("CLK").read({"QD", "QC", "QB", "QA"}), n % 10);
    EXPECT_EQ(ic.set("CLR", 0).read({"QD", "QC", "QB", "QA"}), 2u);
    EXPECT_EQ(ic.pulse("CLK").read({"QD", "QC", "QB", "QA"}), 0u);
}

TEST(counters, a_74169_counts_down_when_its_direction_is_low)
{
    chip_socket ic{"74169"};
    ic.put({"UD", "CLK", "ENP", "ENT", "LOAD"}, 0b00001);
    EXPECT_EQ(ic.at("RCO"), 0);  // at 0, going down
    EXPECT_EQ(ic.pulse("CLK").read({"QD", "QC", "QB", "QA", "RCO"}), 0b11111u);
    EXPECT_EQ(ic.set("UD", 1).at("RCO"), 0);
    EXPECT_EQ(ic.pulse("CLK").read({"QD", "QC", "QB", "QA", "RCO"}), 0b00001u);
}

TEST(counters, a_74191_passes_its_clock_to_the_ripple_output_at_the_end)
{
    chip_socket ic{"74191"};
    ic.put({"CTEN", "DU", "LOAD", "CLK"}, 0b0011).put({"D", "C", "B", "A"}, 14).set("LOAD", 0).set("LOAD", 1);
    EXPECT_EQ(ic.at("MAXMIN"), 0);
    ic.set("CLK", 0).set("CLK", 1);
    EXPECT_EQ(ic.read({"QD", "QC", "QB", "QA", "MAXMIN", "RCO"}), 0b111111u);
    EXPECT_EQ(ic.set("CLK", 0).at("RCO"), 0);
    EXPECT_EQ(ic.set("CLK", 1).read({"QD", "QC", "QB", "QA", "MAXMIN", "RCO"}), 0b000001u);
    ic.set("DU", 1);
    EXPECT_EQ(ic.at("MAXMIN"), 1);
    EXPECT_EQ(ic.set("CLK", 0).set("CLK", 1).read({"QD", "QC", "QB", "QA"}), 15u);
}

TEST(counters, a_74193_counts_up_and_down_with_carry_and_borrow)
{
    chip_socket ic{"74193"};
    ic.put({"CLR", "LOAD", "UP", "DOWN"}, 0b0111).put({"D", "C", "B", "A"}, 14).set("LOAD", 0).set("LOAD", 1);
    EXPECT_EQ(ic.set("UP", 0).set("UP", 1).read({"QD", "QC", "QB", "QA", "CO", "BO"}), 0b111111u);
    EXPECT_EQ(ic.set("UP", 0).read({"CO", "BO"}), 0b01u);
    EXPECT_EQ(ic.set("UP", 1).read({"QD", "QC", "QB", "QA", "CO", "BO"}), 0b000011u);
    EXPECT_EQ(ic.set("DOWN", 0).read({"CO", "BO"}), 0b10u);
    EXPECT_EQ(ic.set("DOWN", 1).read({"QD", "QC", "QB", "QA", "CO", "BO"}), 0b111111u);
    EXPECT_EQ(ic.set("CLR", 1).read({"QD", "QC", "QB", "QA"}), 0u);
}

TEST(counters, a_4017_walks_one_high_output_and_carries_for_five)
{
    chip_socket ic{"4017"};
    ic.set("RST", 1).set("EN", 0).set("CLK", 0).set("RST", 0);
    for (unsigned n = 0; n < 23; ++n) {
        EXPECT_EQ(ic.read({"Q9", "Q8", "Q7", "Q6", "Q5", "Q4", "Q3", "Q2", "Q1", "Q0"}), 1u << n % 10);
        EXPECT_EQ(ic.at("CO"), n % 10 < 5 ? 1 : 0);
        ic.pulse("CLK");
    }
    EXPECT_EQ(ic.at("Q3"), 1);
    EXPECT_EQ(ic.set("EN", 1).pulse("CLK").at("Q3"), 1);
    EXPECT_EQ(ic.set("CLK", 1).set("EN", 0).at("Q4"), 1);  // with the clock high, the falling enable counts
}

TEST(counters, a_4520_counts_with_either_edge)
{
    chip_socket ic{"4520"};
    ic.set("2RST", 1).set("2EN", 1).set("2CLK", 0).set("2RST", 0);
    EXPECT_EQ(ic.set("2CLK", 1).read({"2Q4", "2Q3", "2Q2", "2Q1"}), 1u);
    EXPECT_EQ(ic.set("2CLK", 0).read({"2Q4", "2Q3", "2Q2", "2Q1"}), 1u);
    EXPECT_EQ(ic.set("2EN", 0).read({"2Q4", "2Q3", "2Q2", "2Q1"}), 2u);
    EXPECT_EQ(ic.set("2EN", 1).read({"2Q4", "2Q3", "2Q2", "2Q1"}), 2u);
    EXPECT_EQ(ic.set("2CLK", 1).set("2EN", 0).read({"2Q4", "2Q3", "2Q2", "2Q1"}), 3u);
}

TEST(counters, a_4040_reaches_its_last_output)
{
    chip_socket ic{"4040"};
    ic.set("RST", 1).set("CLK", 0).set("RST", 0);
    for (int n = 0; n < 2047; ++n) ic.pulse("CLK");
    EXPECT_EQ(ic.read({"Q12", "Q11", "Q1"}), 0b011u);
    EXPECT_EQ(ic.pulse("CLK").read({"Q12", "Q11", "Q1"}), 0b100u);
}

TEST(shift_registers, a_74165_loads_at_once_and_shifts_out_from_h)
{
    chip_socket ic{"74165"};
    ic.put({"CLK", "INH", "SER", "SHLD"}, 0b0000)
        .put({"A", "B", "C", "D", "E", "F", "G", "H"}, 0b10110010)
        .set("SHLD", 1);
    unsigned out = 0;
    for (int n = 0; n < 8; ++n) {
        out = out << 1 | static_cast<unsigned>(ic.at("QH"));
        ic.pulse("CLK");
    }
    EXPECT_EQ(out, 0b01001101u);  // h first
    ic.set("INH", 1).set("SER", 1);
    for (int n = 0; n < 8; ++n) ic.pulse("CLK");
    EXPECT_EQ(ic.read({"QH", "QHN"}), 0b01u);
}

TEST(shift_registers, a_74194_loads_shifts_both_ways_and_holds)
{
    chip_socket ic{"74194"};
    ic.put({"CLR", "CLK", "S1", "S0", "SR", "SL"}, 0b101110).put({"A", "B", "C", "D"}, 0b0110);
    EXPECT_EQ(ic.pulse("CLK").read({"QA", "QB", "QC", "QD"}), 0b0110u);
    EXPECT_EQ(ic.set("S1", 0).pulse("CLK").read({"QA", "QB", "QC", "QD"}), 0b1011u);  // S0: to the right
    EXPECT_EQ(ic.set("S0", 0).pulse("CLK").read({"QA", "QB", "QC", "QD"}), 0b1011u);
    EXPECT_EQ(ic.set("S1", 1).pulse("CLK").read({"QA", "QB", "QC", "QD"}), 0b0110u);
    EXPECT_EQ(ic.set("CLR", 0).read({"QA", "QB", "QC", "QD"}), 0u);
}

TEST(shift_registers, a_74595_shows_what_was_shifted_after_its_second_clock)
{
    chip_socket ic{"74595"};
    ic.put({"SRCLR", "SRCLK", "RCLK", "OE"}, 0b1000);
    for (const int bit : {1, 0, 1, 1, 0, 0, 1, 0}) ic.set("SER", bit).pulse("SRCLK");
    EXPECT_EQ(ic.read({"QH", "QG", "QF", "QE", "QD", "QC", "QB", "QA"}), 0u);
    EXPECT_EQ(ic.at("QHS"), 1);
    EXPECT_EQ(ic.pulse("RCLK").read({"QH", "QG", "QF", "QE", "QD", "QC", "QB", "QA"}), 0b10110010u);
    EXPECT_EQ(ic.set("SRCLR", 0).at("QHS"), 0);
    EXPECT_EQ(ic.at("QH"), 1);
    EXPECT_TRUE(ic.set("OE", 1).off("QA"));
    EXPECT_FALSE(ic.off("QHS"));
}

TEST(shift_registers, a_4094_repeats_its_last_bit_half_a_clock_later)
{
    chip_socket ic{"4094"};
    ic.put({"OE", "STR", "CLK", "D"}, 0b1101);
    for (int n = 0; n < 7; ++n) ic.pulse("CLK");
    EXPECT_EQ(ic.read({"Q7", "Q8"}), 0b10u);
    EXPECT_EQ(ic.set("CLK", 1).read({"Q8", "QS1", "QS2"}), 0b110u);
    EXPECT_EQ(ic.set("CLK", 0).read({"QS1", "QS2"}), 0b11u);
    EXPECT_EQ(ic.set("STR", 0).set("D", 0).pulse("CLK").at("Q1"), 1);
}

TEST(registers, a_74374_and_a_74573_differ_in_when_they_look)
{
    chip_socket edge{"74374"}, level{"74573"};
    edge.set("OE", 0).set("CLK", 0).set("5D", 1).set("CLK", 1).set("5D", 0);
    EXPECT_EQ(edge.at("5Q"), 1);
    level.set("OE", 0).set("LE", 1).set("5D", 1).set("5D", 0);
    EXPECT_EQ(level.at("5Q"), 0);
    EXPECT_TRUE(level.set("OE", 1).off("5Q"));
}

TEST(registers, a_74259_writes_one_bit_and_decodes_while_cleared)
{
    chip_socket ic{"74259"};
    ic.set("CLR", 0).set("G", 1).set("CLR", 1).set("D", 1);
    for (const unsigned n : {2u, 5u}) ic.put({"C", "B", "A"}, n).set("G", 0).set("G", 1);
    EXPECT_EQ(ic.read({"Q7", "Q6", "Q5", "Q4", "Q3", "Q2", "Q1", "Q0"}), 0b00100100u);
    EXPECT_EQ(
        ic.put({"C", "B", "A"}, 7).set("CLR", 0).set("G", 0).read({"Q7", "Q6", "Q5", "Q4", "Q3", "Q2", "Q1", "Q0"}),
        0b10000000u);
}

}  // namespace
}  // namespace tamrix::tests
