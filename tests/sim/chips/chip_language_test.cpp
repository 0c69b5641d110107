// What a stanza may say, and what is said of one that is wrong.
#include "chip_socket.h"

namespace tamrix::tests {
namespace {

std::string told(const std::string& text)
{
    try {
        sim::read_chips(text, "x.chip");
    } catch (const sim::chip_error& failed) {
        return failed.what();
    }
    return "nothing";
}

/// A chip of 8 pins, A B C in, Y Z out, and these lines.
std::string with(const std::string& lines) { return "chip T1  a test\npins A B C GND Y Z NC VCC\n" + lines + "\n"; }

TEST(chip_language, operators_bind_as_told)
{
    auto ic = chip_socket::of_text(with("Y = A | B & !C ^ A\nZ = A ? B : C"));
    for (unsigned in = 0; in < 8; ++in) {
        const bool a = (in & 4) != 0, b = (in & 2) != 0, c = (in & 1) != 0;
        ic.put({"A", "B", "C"}, in);
        EXPECT_EQ(ic.at("Y"), (a || ((b && !c) != a)) ? 1 : 0) << in;
        EXPECT_EQ(ic.at("Z"), (a ? b : c) ? 1 : 0) << in;
    }
}

TEST(chip_language, lists_are_numbers_with_the_first_as_the_highest)
{
    auto ic = chip_socket::of_text(with("{Y Z} = {A B} + C"));
    for (unsigned in = 0; in < 8; ++in)
        EXPECT_EQ(ic.put({"A", "B", "C"}, in).read({"Y", "Z"}), ((in >> 1) + (in & 1)) & 3) << in;
    auto less = chip_socket::of_text(with("Y = {A B C} < 5\nZ = {A B C} - 1 == 3"));
    for (unsigned in = 0; in < 8; ++in)
        EXPECT_EQ(less.put({"A", "B", "C"}, in).read({"Y", "Z"}), (in < 5 ? 2u : 0u) + (in == 4 ? 1u : 0u)) << in;
}

TEST(chip_language, decode_select_table_and_reductions)
{
    auto ic = chip_socket::of_text(with("{d0..d3} = decode({A B})\nY = select({0 C d2 1} : {A B})\nZ = d1 | d3 & C"));
    EXPECT_EQ(ic.put({"A", "B", "C"}, 0b011).read({"Y", "Z"}), 3u);
    EXPECT_EQ(ic.put({"A", "B", "C"}, 0b100).read({"Y", "Z"}), 2u);
    EXPECT_EQ(ic.put({"A", "B", "C"}, 0b001).read({"Y", "Z"}), 0u);
    auto other = chip_socket::of_text(with("{Y Z} = table({A B} : 01 10\n    else 11) ^ &{A B C}"));
    EXPECT_EQ(other.put({"A", "B", "C"}, 0b000).read({"Y", "Z"}), 1u);
    EXPECT_EQ(other.put({"A", "B", "C"}, 0b010).read({"Y", "Z"}), 2u);
    EXPECT_EQ(other.put({"A", "B", "C"}, 0b110).read({"Y", "Z"}), 3u);
    EXPECT_EQ(other.put({"A", "B", "C"}, 0b111).read({"Y", "Z"}), 0u);
}

TEST(chip_language, what_holds_goes_before_an_edge_wherever_it_stands)
{
    auto ic = chip_socket::of_text(with("Y : rise(A) -> !Y, set B, clear C\nZ = !Y"));
    ic.set("A", 0).set("B", 0).set("C", 0);
    EXPECT_EQ(ic.set("A", 1).at("Y"), 1);
    EXPECT_EQ(ic.set("C", 1).set("A", 0).set("A", 1).at("Y"), 0);
    EXPECT_EQ(ic.set("B", 1).read({"Y", "Z"}), 2u);  // set stands before clear
}

TEST(chip_language, no_edge_is_seen_when_the_supply_comes_on)
{
    const auto chips = sim::read_chips(with("Y : rise(A & B) -> 1\nZ = C"), "t.chip");
    const auto part = sim::make_part(chips[0]);
    std::vector<sim::level> nodes(8, sim::level::high), drives(8, sim::level::open);
    part->power_up();
    part->settle(nodes, drives);
    EXPECT_EQ(drives[4], sim::level::low);
    nodes[0] = sim::level::low;
    part->settle(nodes, drives);
    nodes[0] = sim::level::high;
    part->settle(nodes, drives);
    EXPECT_EQ(drives[4], sim::level::high);
    part->power_up();
    part->settle(nodes, drives);
    EXPECT_EQ(drives[4], sim::level::low);
}

TEST(chip_language, a_register_that_clocks_another_ripples_in_one_step)
{
    auto ic = chip_socket::of_text(with("Y : fall(A) -> !Y, clear B\nZ : fall(Y) -> !Z, clear B & C"));
    ic.set("A", 0).set("B", 1).set("C", 1).set("B", 0);
    for (const unsigned expected : {0b10u, 0b01u, 0b11u, 0b00u}) EXPECT_EQ(ic.pulse("A").read({"Y", "Z"}), expected);
}

TEST(chip_language, a_part_that_never_rests_is_left_after_a_while)
{
    auto ic = chip_socket::of_text(with("Y : while A -> !Y\nZ = B & C"));
    ic.set("B", 1).set("C", 1).set("A", 1);
    EXPECT_EQ(ic.at("Z"), 1);
}

TEST(chip_language, more_levels_than_pins_or_fewer_are_no_harm)
{
    const auto chips = sim::read_chips(with("Y = A\nZ = B | C"), "t.chip");
    const auto part = sim::make_part(chips[0]);
    std::vector<sim::level> few(3, sim::level::high), many(60, sim::level::open);
    part->power_up();
    part->settle(few, few);
    part->settle(many, many);
    part->settle({}, {});
    EXPECT_EQ(part->pins(), 8);
    EXPECT_EQ(part->gnd_pin(), 3);
    EXPECT_EQ(part->vcc_pin(), 7);
}

TEST(chip_language, a_wrong_statement_is_told_with_its_line)
{
    EXPECT_EQ(told("pins A B"), "x.chip:1: found \"pins\" where \"chip\" was expected");
    EXPECT_EQ(told("chip 74/00\n"),
              "x.chip:1: found \"74/00\" where a name of 1 to 11 letters and digits was expected");
    EXPECT_EQ(told("chip 7400  quad\n"), "x.chip:1: chip 7400 has no pins");
    EXPECT_EQ(told("chip T\npins A GND VCC\n"), "x.chip:2: found 3 pins where an even number was expected");
    EXPECT_EQ(told("chip T\npins A 1 GND VCC\n"), "x.chip:2: found \"1\" where a pin name was expected");
    EXPECT_EQ(told("chip T\npins A Y GND GND\nY = A"), "x.chip:1: chip T has a second pin GND");
    EXPECT_EQ(told("chip T\npins A Y GND Z\nY = A\nZ = A"), "x.chip:1: chip T has no pin VCC or VDD");
    EXPECT_EQ(told("chip T\npins A A GND VCC\n"), "x.chip:1: chip T has a second pin A");
    EXPECT_EQ(told(with("Y A")), "x.chip:3: found \"A\" where \"=\" or \":\" was expected");
    EXPECT_EQ(told(with("Y = (A | B")), "x.chip:3: found the end of the statement where \")\" was expected");
    EXPECT_EQ(told(with("Y = A %")), "x.chip:3: found \"%\", which means nothing here");
    EXPECT_EQ(told(with("Y = A\x80")), "x.chip:3: found the byte 80, which means nothing here");
    EXPECT_EQ(told(with("Y = A B")), "x.chip:3: found \"B\" where the end of the statement was expected");
    EXPECT_EQ(told(with("Y : up(A) -> B")),
              "x.chip:3: found \"up\" where rise, fall, while, clear or set was expected");
    EXPECT_EQ(told(with("Y : rise(A) B")), "x.chip:3: found \"B\" where \"->\" was expected");
    EXPECT_EQ(told(with("{Z..Y} = {A B C}")), "x.chip:3: found 3 bits where 2 were expected");
}

TEST(chip_language, a_wrong_meaning_is_told_with_its_line)
{
    EXPECT_EQ(told(with("Y = D")), "x.chip:3: found \"D\", which is no pin, no wire and no register of the chip");
    EXPECT_EQ(told(with("Y = A\nY = B")), "x.chip:4: Y is driven twice");
    EXPECT_EQ(told(with("Y = A\nZ = A | B")), "x.chip:1: pin C of chip T1 is neither read nor driven (call it NC)");
    EXPECT_EQ(told(with("VCC = A")), "x.chip:3: VCC cannot be driven");
    EXPECT_EQ(told(with("Y = Z\nZ = Y")), "x.chip:3: Y depends on itself without a register between");
    EXPECT_EQ(told(with("w = A when B")), "x.chip:3: w is no pin and cannot be let go");
    EXPECT_EQ(told(with("{Y Z} = {A B C}")), "x.chip:3: found 3 bits where 2 were expected");
    EXPECT_EQ(told(with("{Y Z} = {A B} + 4")), "x.chip:3: found 2 bits where 3 were expected");
    EXPECT_EQ(told(with("Y = table({A B} : 1 0 1)")), "x.chip:3: found 3 rows where 4 were expected");
    EXPECT_EQ(told(with("Y = table({A B} : 1 0 2 1)")), "x.chip:3: found \"2\" where a row of 0 and 1 was expected");
    EXPECT_EQ(told(with("Y = select({A B C} : {A B})")), "x.chip:3: found 3 items for a selection by 2 bits");
    EXPECT_EQ(told(with("use half(A B)")), "x.chip:3: there is no part half");
    EXPECT_EQ(told(with("part p(I O)\n    O = I\nuse p(A)")), "x.chip:5: found 1 names where part p takes 2");
    EXPECT_EQ(told(with("{Y..7} = A")), "x.chip:3: found \"7\" where a name was expected");
    EXPECT_EQ(told(with("{Y1..Z2} = A")),
              "x.chip:3: \"Y1..Z2\" is no range: the names must differ in one number or in the last letter");
    EXPECT_EQ(told(with("Y = A\nZ = B & C\npulse A")), "x.chip:1: pin A of chip T1 is no clock");
    EXPECT_EQ(told(with("Y = " + std::string(5000, '('))), "x.chip:3: the statement is too long");
    EXPECT_EQ(told(with("Y = " + std::string(3000, '(') + ")")), "x.chip:3: the expression is nested too deeply");
}

TEST(chip_language, two_chips_of_one_name_are_refused)
{
    const auto folder = std::filesystem::path{TAMRIX_DATA_FOLDER} / "chips";
    EXPECT_THROW(sim::load_chips({folder / "gates.chip", folder / "gates.chip"}), sim::chip_error);
    EXPECT_THROW(sim::load_chips({folder / "none.chip"}), sim::chip_error);
    EXPECT_THROW(sim::chip_files(folder / "none"), sim::chip_error);
}

TEST(chip_language, a_chip_is_found_by_any_of_its_names)
{
    const auto* found = sim::find_chip(all_chips(), "74132");
    ASSERT_NE(found, nullptr);
    EXPECT_EQ(found->name, "7400");
    EXPECT_EQ(sim::find_chip(all_chips(), "740"), nullptr);
}

/// Whatever a file holds: chips, or an error that names the line.
void expect_chips_or_an_error(const std::string& text)
{
    const auto answer = told(text);
    EXPECT_TRUE(answer == "nothing" || answer.starts_with("x.chip:")) << answer;
}

TEST(chip_language, no_damage_to_a_file_does_more_than_an_error)
{
    const std::string text = "chip T9  all there is\nalias T8\npins A B C 1Y GND 2Y Z W Q VCC\n"
                             "part half(I O)\n    m : rise(I) -> !m, clear C\n    O = m ^ I when B\n"
                             "use half(A 1Y), half(B 2Y)\nlet n = {A B C} + 1\n{Z x1..x7} = decode(n) | 0\n"
                             "W = select({0 1 A B} : {A C}) open collector\nQ : while A -> {A B} < 2,\n    set B & C\n"
                             "avoid A & B\nnever table({A B} : 0 0 0 else 1)\nkeep A B while C\npulse A\n";
    EXPECT_EQ(told(text), "nothing");
    for (std::size_t at = 0; at < text.size(); ++at) {
        expect_chips_or_an_error(text.substr(0, at));
        for (const char other : std::string{"({})|&!^+-<>?:=,.01A \n#\xFF"} + '\0') {
            auto damaged = text;
            damaged[at] = other;
            expect_chips_or_an_error(damaged);
        }
    }
}

TEST(chip_language, deep_chains_of_names_end_in_an_error)
{
    std::string lines = "w0 = A";
    for (int i = 1; i < 3000; ++i) lines += "\nw" + std::to_string(i) + " = w" + std::to_string(i - 1) + " & B";
    lines += "\nY = C\nZ = w2999";
    EXPECT_EQ(told(with(lines)), "nothing");  // each name depends on one that is made already
    std::string backward = "Y = C\nZ = w0";
    for (int i = 0; i < 3000; ++i) backward += "\nw" + std::to_string(i) + " = w" + std::to_string(i + 1) + " & B";
    backward += "\nw3000 = A";
    EXPECT_NE(told(with(backward)).find("too many expressions stand in one another"), std::string::npos);
}

}  // namespace
}  // namespace tamrix::tests
