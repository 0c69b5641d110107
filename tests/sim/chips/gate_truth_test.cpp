// Truth tables of chips without memory, written by hand from their function.
#include "chip_socket.h"

#include <array>

namespace tamrix::tests {
namespace {

/// The four answers of a gate to 00, 01, 10, 11.
void expect_gate(const std::string& chip, const std::string& a, const std::string& b, const std::string& y,
                 const std::string& answers)
{
    chip_socket ic{chip};
    for (unsigned in = 0; in < 4; ++in)
        EXPECT_EQ(ic.put({a, b}, in).at(y), answers[in] - '0') << chip << " " << y << " at " << in;
}

TEST(gates, the_four_nands_of_a_7400_answer_at_their_pins)
{
    for (const std::string gate : {"1", "2", "3", "4"}) expect_gate("7400", gate + "A", gate + "B", gate + "Y", "1110");
}

TEST(gates, or_nor_and_xor_of_both_families)
{
    expect_gate("7402", "1A", "1B", "1Y", "1000");
    expect_gate("7408", "3A", "3B", "3Y", "0001");
    expect_gate("7432", "2A", "2B", "2Y", "0111");
    expect_gate("7486", "4A", "4B", "4Y", "0110");
    expect_gate("4001", "2A", "2B", "2Y", "1000");
    expect_gate("4011", "3A", "3B", "3Y", "1110");
    expect_gate("4077", "1A", "1B", "1Y", "1001");
}

TEST(gates, an_open_collector_output_is_low_or_open)
{
    chip_socket ic{"7403"};
    ic.set("1A", 1).set("1B", 1);
    EXPECT_EQ(ic.at("1Y"), 0);
    EXPECT_FALSE(ic.off("1Y"));
    ic.set("1A", 0);
    EXPECT_TRUE(ic.off("1Y"));
    EXPECT_EQ(ic.at("1Y"), 1);  // the pull-up
}

TEST(buffers, a_74125_lets_go_of_its_output_when_its_enable_is_high)
{
    chip_socket ic{"74125"};
    EXPECT_EQ(ic.set("2OE", 0).set("2A", 0).at("2Y"), 0);
    EXPECT_TRUE(ic.set("2OE", 1).off("2Y"));
    EXPECT_FALSE(chip_socket{"74126"}.set("2OE", 1).off("2Y"));
}

TEST(buffers, a_74245_sends_the_way_that_its_direction_says)
{
    chip_socket ic{"74245"};
    ic.set("G", 0).set("DIR", 1).set("A3", 0).set("A4", 1);
    EXPECT_EQ(ic.read({"B3", "B4"}), 0b01u);
    EXPECT_TRUE(ic.off("A3"));
    ic.release("A3").release("A4").set("DIR", 0).set("B8", 0);
    EXPECT_EQ(ic.at("A8"), 0);
    EXPECT_TRUE(ic.off("B8"));
    ic.set("G", 1);
    EXPECT_TRUE(ic.off("A8"));
    EXPECT_TRUE(ic.off("B1"));
}

TEST(decoders, a_74138_pulls_one_output_low_while_all_enables_agree)
{
    chip_socket ic{"74138"};
    ic.set("G1", 1).set("G2A", 0).set("G2B", 0);
    for (unsigned n = 0; n < 8; ++n)
        EXPECT_EQ(ic.put({"C", "B", "A"}, n).read({"Y7", "Y6", "Y5", "Y4", "Y3", "Y2", "Y1", "Y0"}),
                  0xFFu & ~(1u << n));
    for (const std::string pin : {"G2A", "G2B"}) {
        EXPECT_EQ(ic.set(pin, 1).at("Y7"), 1);
        ic.set(pin, 0);
    }
    EXPECT_EQ(ic.at("Y7"), 0);
    EXPECT_EQ(ic.set("G1", 0).at("Y7"), 1);
}

TEST(decoders, a_7442_and_a_7445_pick_no_output_above_nine)
{
    for (const std::string chip : {"7442", "7445"}) {
        chip_socket ic{chip};
        for (unsigned n = 0; n < 16; ++n)
            EXPECT_EQ(
                ic.put({"D", "C", "B", "A"}, n).read({"Y9", "Y8", "Y7", "Y6", "Y5", "Y4", "Y3", "Y2", "Y1", "Y0"}),
                0x3FFu & ~(1u << n))
                << chip << ' ' << n;
    }
}

TEST(decoders, the_first_half_of_a_74155_wants_its_data_high_the_second_low)
{
    chip_socket ic{"74155"};
    ic.set("1G", 0).set("2G", 0).put({"B", "A"}, 2).set("1C", 1).set("2C", 1);
    EXPECT_EQ(ic.read({"1Y3", "1Y2", "1Y1", "1Y0"}), 0b1011u);
    EXPECT_EQ(ic.read({"2Y3", "2Y2", "2Y1", "2Y0"}), 0b1111u);
    EXPECT_EQ(ic.set("2C", 0).read({"2Y3", "2Y2", "2Y1", "2Y0"}), 0b1011u);
}

TEST(encoders, a_74147_gives_the_highest_key_in_inverted_bcd)
{
    chip_socket ic{"74147"};
    for (const std::string key : {"I1", "I2", "I3", "I4", "I5", "I6", "I7", "I8", "I9"}) ic.set(key, 1);
    EXPECT_EQ(ic.read({"D", "C", "B", "A"}), 0b1111u);
    EXPECT_EQ(ic.set("I3", 0).read({"D", "C", "B", "A"}), 0b1100u);
    EXPECT_EQ(ic.set("I9", 0).read({"D", "C", "B", "A"}), 0b0110u);
}

TEST(encoders, a_74148_tells_the_group_and_enables_the_next)
{
    chip_socket ic{"74148"};
    for (const std::string key : {"I0", "I1", "I2", "I3", "I4", "I5", "I6", "I7"}) ic.set(key, 1);
    EXPECT_EQ(ic.set("EI", 0).read({"A2", "A1", "A0", "GS", "EO"}), 0b11110u);
    EXPECT_EQ(ic.set("I5", 0).read({"A2", "A1", "A0", "GS", "EO"}), 0b01001u);
    EXPECT_EQ(ic.set("EI", 1).read({"A2", "A1", "A0", "GS", "EO"}), 0b11111u);
}

TEST(displays, a_7447_shows_the_ten_digits_without_tails)
{
    //                                    abcdefg, lit is 1
    constexpr std::array<unsigned, 10> lit{0b1111110, 0b0110000, 0b1101101, 0b1111001, 0b0110011,
                                           0b1011011, 0b0011111, 0b1110000, 0b1111111, 0b1110011};
    chip_socket ic{"7447"};
    ic.set("LT", 1).set("RBI", 1);
    for (unsigned n = 0; n < 10; ++n)
        EXPECT_EQ(ic.put({"D", "C", "B", "A"}, n).read({"a", "b", "c", "d", "e", "f", "g"}), lit[n] ^ 0x7Fu) << n;
}

TEST(displays, above_nine_a_7447_shows_signs_of_its_own_and_a_4543_nothing)
{
    constexpr std::array<unsigned, 6> lit{0b0001101, 0b0011001, 0b0100011, 0b1001011, 0b0001111, 0};
    chip_socket ttl{"7447"}, cmos{"4543"};
    ttl.set("LT", 1).set("RBI", 1);
    cmos.set("LD", 1).set("BI", 0).set("PH", 0);
    for (unsigned n = 10; n < 16; ++n) {
        EXPECT_EQ(ttl.put({"D", "C", "B", "A"}, n).read({"a", "b", "c", "d", "e", "f", "g"}), lit[n - 10] ^ 0x7Fu) << n;
        EXPECT_EQ(cmos.put({"D", "C", "B", "A"}, n).read({"a", "b", "c", "d", "e", "f", "g"}), 0u) << n;
    }
}

TEST(displays, a_7447_blanks_a_leading_zero_and_passes_it_on)
{
    chip_socket ic{"7447"};
    ic.set("LT", 1).set("RBI", 0).put({"D", "C", "B", "A"}, 0);
    EXPECT_EQ(ic.at("BI"), 0);
    EXPECT_EQ(ic.read({"a", "b", "c", "d", "e", "f", "g"}), 0x7Fu);
    EXPECT_EQ(ic.set("LT", 0).read({"a", "b", "c", "d", "e", "f", "g"}), 0u);  // the lamp test goes before
    EXPECT_EQ(ic.set("LT", 1).set("A", 1).at("BI"), 1);
    EXPECT_EQ(ic.set("BI", 0).read({"a", "b", "c", "d", "e", "f", "g"}), 0x7Fu);
}

TEST(displays, a_4511_holds_its_digit_and_blanks_what_is_none)
{
    chip_socket ic{"4511"};
    ic.set("LT", 1).set("BI", 1).set("LE", 0).put({"D", "C", "B", "A"}, 4);
    EXPECT_EQ(ic.read({"a", "b", "c", "d", "e", "f", "g"}), 0b0110011u);
    EXPECT_EQ(ic.set("LE", 1).put({"D", "C", "B", "A"}, 9).read({"a", "b", "c", "d", "e", "f", "g"}), 0b0110011u);
    EXPECT_EQ(ic.set("LE", 0).read({"a", "b", "c", "d", "e", "f", "g"}), 0b1110011u);
    EXPECT_EQ(ic.set("B", 1).read({"a", "b", "c", "d", "e", "f", "g"}), 0u);
    EXPECT_EQ(ic.set("BI", 0).set("LT", 0).read({"a", "b", "c", "d", "e", "f", "g"}), 0x7Fu);
}

TEST(multiplexers, a_74151_picks_one_of_eight_and_its_inverse)
{
    chip_socket ic{"74151"};
    ic.set("G", 0);
    for (unsigned n = 0; n < 8; ++n) {
        for (unsigned other = 0; other < 8; ++other) ic.set("D" + std::to_string(other), other == n ? 1 : 0);
        EXPECT_EQ(ic.put({"C", "B", "A"}, n).read({"Y", "W"}), 0b10u);
        EXPECT_EQ(ic.set("C", n >= 4 ? 0 : 1).read({"Y", "W"}), 0b01u);
    }
    EXPECT_EQ(ic.set("G", 1).read({"Y", "W"}), 0b01u);
}

TEST(arithmetic, a_7483_adds_every_pair_of_numbers)
{
    chip_socket ic{"7483"};
    for (unsigned a = 0; a < 16; ++a)
        for (unsigned b = 0; b < 16; ++b)
            for (unsigned carry = 0; carry < 2; ++carry)
                EXPECT_EQ(ic.put({"A4", "A3", "A2", "A1"}, a)
                              .put({"B4", "B3", "B2", "B1"}, b)
                              .set("C0", static_cast<int>(carry))
                              .read({"C4", "S4", "S3", "S2", "S1"}),
                          a + b + carry);
}

/// `in`: the cascade inputs for greater, equal and less; the outputs likewise.
void compare_all(const std::string& chip, const std::map<unsigned, unsigned>& when_equal)
{
    chip_socket ic{chip};
    for (unsigned a = 0; a < 16; ++a)
        for (unsigned b = 0; b < 16; ++b) {
            const auto unequal = a > b ? 0b100u : 0b001u;
            ic.put({"A3", "A2", "A1", "A0"}, a).put({"B3", "B2", "B1", "B0"}, b);
            for (const auto& [in, out] : when_equal)
                EXPECT_EQ(ic.put({"IGT", "IEQ", "ILT"}, in).read({"OGT", "OEQ", "OLT"}), a == b ? out : unequal)
                    << chip << ' ' << a << ' ' << b << ' ' << in;
        }
}

TEST(arithmetic, a_7485_compares_and_looks_at_the_cascade_when_equal)
{
    const std::map<unsigned, unsigned> one_high{{0b100, 0b100}, {0b001, 0b001}, {0b010, 0b010}};
    const std::map<unsigned, unsigned> equal_wins{{0b110, 0b010}, {0b011, 0b010}, {0b111, 0b010}};
    compare_all("7485", one_high);
    compare_all("7485", equal_wins);
    compare_all("7485", {{0b101, 0b000}, {0b000, 0b101}});
}

TEST(arithmetic, a_4063_hands_the_one_cascade_input_on_that_is_high)
{
    compare_all("4063", {{0b100, 0b100}, {0b001, 0b001}, {0b010, 0b010}});
}

/// The function table of the 74181 for data of which high is 1, logic side: M is high.
unsigned logic_of_74181(unsigned select, unsigned a, unsigned b)
{
    const std::array<unsigned, 16> table{~a,     ~(a | b), ~a & b, 0u,    ~(a & b), ~b,     a ^ b, a & ~b,
                                         ~a | b, ~(a ^ b), b,      a & b, ~0u,      a | ~b, a | b, a};
    return table[select] & 15u;
}

/// The same, arithmetic side without carry (CN high); numbers above 15 have a carry.
unsigned sum_of_74181(unsigned select, unsigned a, unsigned b)
{
    const auto nb = ~b & 15u;
    const std::array<unsigned, 16> table{
        a,      a | b,          a | nb,       15u,    a + (a & nb),       (a | b) + (a & nb),
        a + nb, (a & nb) + 15u, a + (a & b),  a + b,  (a | nb) + (a & b), (a & b) + 15u,
        a + a,  (a | b) + a,    (a | nb) + a, a + 15u};
    return table[select];
}

TEST(arithmetic, a_74181_does_its_sixteen_logic_functions)
{
    chip_socket ic{"74181"};
    ic.set("M", 1).set("CN", 1);
    for (unsigned s = 0; s < 16; ++s)
        for (unsigned a = 0; a < 16; ++a)
            for (unsigned b = 0; b < 16; ++b) {
                ic.put({"S3", "S2", "S1", "S0"}, s).put({"A3", "A2", "A1", "A0"}, a).put({"B3", "B2", "B1", "B0"}, b);
                EXPECT_EQ(ic.read({"F3", "F2", "F1", "F0"}), logic_of_74181(s, a, b)) << s << " " << a << " " << b;
            }
}

TEST(arithmetic, a_74181_does_its_sixteen_sums_with_and_without_carry)
{
    chip_socket ic{"74181"};
    ic.set("M", 0);
    for (unsigned s = 0; s < 16; ++s)
        for (unsigned a = 0; a < 16; ++a)
            for (unsigned b = 0; b < 16; ++b)
                for (unsigned carry = 0; carry < 2; ++carry) {
                    ic.set("CN", carry != 0 ? 0 : 1).put({"S3", "S2", "S1", "S0"}, s);
                    ic.put({"A3", "A2", "A1", "A0"}, a).put({"B3", "B2", "B1", "B0"}, b);
                    const auto sum = sum_of_74181(s, a, b) + carry;
                    EXPECT_EQ(ic.read({"F3", "F2", "F1", "F0"}), sum & 15u) << s << " " << a << " " << b;
                    EXPECT_EQ(ic.at("CN4"), sum < 16 ? 1 : 0) << s << " " << a << " " << b;
                    EXPECT_EQ(ic.at("AEQB"), (sum & 15u) == 15u ? 1 : 0);
                }
}

TEST(arithmetic, a_74182_looks_ahead_as_four_carries_in_a_row_would)
{
    chip_socket ic{"74182"};
    for (unsigned in = 0; in < 512; ++in) {
        ic.put({"CN", "G0", "P0", "G1", "P1", "G2", "P2", "G3", "P3"}, in);
        const auto low = [&](unsigned bit) { return (in >> bit & 1u) == 0; };
        const bool x = low(7) || (low(6) && !low(8)), y = low(5) || (low(4) && x), z = low(3) || (low(2) && y);
        const bool all_generate = low(1) || (low(0) && (low(3) || (low(2) && (low(5) || (low(4) && low(7))))));
        EXPECT_EQ(ic.read({"CNX", "CNY", "CNZ"}), (x ? 4u : 0u) + (y ? 2u : 0u) + (z ? 1u : 0u)) << in;
        EXPECT_EQ(ic.at("G"), all_generate ? 0 : 1) << in;
        EXPECT_EQ(ic.at("P"), low(0) && low(2) && low(4) && low(6) ? 0 : 1) << in;
    }
}

TEST(arithmetic, a_74180_and_a_74280_count_the_ones)
{
    chip_socket eight{"74180"}, nine{"74280"};
    eight.set("EVEN", 1).set("ODD", 0);
    for (unsigned in = 0; in < 512; ++in) {
        const auto ones = static_cast<unsigned>(__builtin_popcount(in));
        EXPECT_EQ(nine.put({"A", "B", "C", "D", "E", "F", "G", "H", "I"}, in).read({"SE", "SO"}),
                  ones % 2 == 0 ? 2u : 1u);
        if (in >= 256) continue;
        eight.put({"A", "B", "C", "D", "E", "F", "G", "H"}, in);
        EXPECT_EQ(eight.read({"SE", "SO"}), ones % 2 == 0 ? 2u : 1u);
    }
    EXPECT_EQ(eight.set("ODD", 1).read({"SE", "SO"}), 0u);
    EXPECT_EQ(eight.set("EVEN", 0).set("ODD", 0).read({"SE", "SO"}), 3u);
}

}  // namespace
}  // namespace tamrix::tests
