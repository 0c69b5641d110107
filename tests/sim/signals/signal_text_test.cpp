#include "sim/signals/signal_set.h"

#include <gtest/gtest.h>

#include <filesystem>

#include "chips/chip.h"
#include "sim/signals/line_reader.h"
#include "support/temp_files.h"

namespace tamrix::tests {

namespace {

sim::part_shelf library_chips() { return sim::shelf_of_folder(TAMRIX_CHIPS); }

TEST(signals, a_wrong_text_is_told_with_its_place_and_what_can_be_there)
{
    EXPECT_EQ(refusal_of_signal(""), "signal \"\", column 1: its end where a pin from P21 to P28, several as P21..P28, "
                                     "\"chip\" or \"lead\" was expected");
    EXPECT_EQ(
        refusal_of_signal("P20 high"),
        "signal \"P20 high\", column 1: \"P20\" where a pin from P21 to P28, or several as P21..P28 was expected");
    EXPECT_EQ(refusal_of_signal("P24..P22 high"), "signal \"P24..P22 high\", column 1: \"P24..P22\" where a pin from "
                                                  "P21 to P28, or several as P21..P28 was expected");
    EXPECT_EQ(
        refusal_of_signal("P21  sqare 10"),
        "signal \"P21  sqare 10\", column 6: \"sqare\" where a pin, \"square\", \"counter\", \"pulse\", \"uart\", "
        "\"i2c\", \"spi\", \"noise\", \"file\", \"high\" or \"low\" was expected");
    EXPECT_EQ(refusal_of_signal("P21 square"),
              "signal \"P21 square\", column 11: its end where a number from 0.001 to 1000000 was expected");
    EXPECT_EQ(refusal_of_signal("P21 square 10x"),
              "signal \"P21 square 10x\", column 12: \"10x\" where a number from 0.001 to 1000000 was expected");
    EXPECT_EQ(refusal_of_signal("P21 square nan"),
              "signal \"P21 square nan\", column 12: \"nan\" where a number from 0.001 to 1000000 was expected");
    EXPECT_EQ(refusal_of_signal("P21 square 10 duty 100"),
              "signal \"P21 square 10 duty 100\", column 20: \"100\" where a number from 0.1 to 99.9 was expected");
    EXPECT_EQ(refusal_of_signal("P21 square 10 phase 90 duty 10"),
              "signal \"P21 square 10 phase 90 duty 10\", column 24: \"duty\" where the end was expected");
    EXPECT_EQ(refusal_of_signal("P21 P21 high"), "signal \"P21 P21 high\", column 5: P21 has a signal already");
    EXPECT_EQ(refusal_of_signal("P21 pulse 0.002 0.001"),
              "signal \"P21 pulse 0.002 0.001\", column 17: the end of the pulse has to be after its beginning");
    EXPECT_EQ(refusal_of_signal("P21 pulse 0 0.5 every 0.4"),
              "signal \"P21 pulse 0 0.5 every 0.4\", column 23: the signal takes 500000000 ns and cannot come more "
              "often");
    EXPECT_EQ(refusal_of_signal("P21 noise 1000 start -1"),
              "signal \"P21 noise 1000 start -1\", column 22: \"-1\" where "
              "a whole number from 0 to 1000000000 was expected");
    EXPECT_EQ(refusal_of_signal("lead P21"),
              "signal \"lead P21\", column 6: \"P21\" where \"23\", the pin of the generator, was expected");
    EXPECT_EQ(refusal_of_signal("lead 23"), "signal \"lead 23\", column 8: its end where a pin from P21 to P28 was "
                                            "expected");
}

TEST(signals, a_wrong_text_of_a_bus_is_told)
{
    EXPECT_EQ(
        refusal_of_signal("P21 uart 9600 Hello"),
        "signal \"P21 uart 9600 Hello\", column 15: \"Hello\" where 8N1 or the like, or a text in quotation marks, "
        "was expected");
    EXPECT_EQ(refusal_of_signal("P21 uart 9600 \"Hello"),
              "signal \"P21 uart 9600 \"Hello\", column 15: the quotation mark is not closed");
    for (const char* const escape : {"\\q", "\\x", "\\x4", "\\xg1"}) {
        const std::string text = "P21 uart 9600 \"ab" + std::string{escape} + "\"";
        EXPECT_EQ(refusal_of_signal(text), "signal \"" + text +
                                               "\", column 18: \\r, \\n, \\t, \\\\, \\\" or \\x with "
                                               "two hexadecimal digits was expected");
    }
    EXPECT_EQ(refusal_of_signal("P21 i2c 1000 write 50"),
              "signal \"P21 i2c 1000 write 50\", column 5: I2C needs two pins, clock and data");
    EXPECT_EQ(refusal_of_signal("P21 P22 i2c 1000 write 80"),
              "signal \"P21 P22 i2c 1000 write 80\", column 24: \"80\" where an address from 0 to 7F was expected");
    EXPECT_EQ(refusal_of_signal("P21 P22 i2c 1000 50"),
              "signal \"P21 P22 i2c 1000 50\", column 18: \"50\" where \"read\" or \"write\" was expected");
    EXPECT_EQ(refusal_of_signal("P21 P22 i2c 1000 write 50 1g"),
              "signal \"P21 P22 i2c 1000 write 50 1g\", column 27: \"1g\" where the end was expected");
    EXPECT_EQ(
        refusal_of_signal("P21..P23 spi 1000 send 1"),
        "signal \"P21..P23 spi 1000 send 1\", column 10: SPI needs four pins, clock, data to the device, data from "
        "it, and select");
    EXPECT_EQ(refusal_of_signal("P21..P24 spi 1000 mode 4 send 1"),
              "signal \"P21..P24 spi 1000 mode 4 send 1\", column 24: \"4\" where a whole number from 0 to 3 was "
              "expected");
    EXPECT_EQ(refusal_of_signal("P21..P24 spi 1000 send"),
              "signal \"P21..P24 spi 1000 send\", column 23: its end where \"send\" or \"receive\" with bytes was "
              "expected");
}

TEST(signals, a_pin_has_one_signal)
{
    sim::signal_set set = signals_of({"P21..P23 low", "lead 23 P25"});
    for (const char* const text : {"P23 high", "P25 high", "lead 23 P22", "lead 23 P25", "P20..P28 high"})
        EXPECT_THROW(set.add(text), sim::signal_error) << text;
    EXPECT_EQ(set.pins(), 7);
    EXPECT_EQ(set.leads(), 16);
    set.add("P24 high");
    EXPECT_EQ(set.pins(), 15);
}

TEST(signals, a_file_is_played_as_it_was_recorded)
{
    const temp_folder folder;
    std::vector<std::uint8_t> bytes(10'000, 0x81);
    bytes[0] = 0x80;
    bytes[9'998] = 0x42;
    bytes[9'999] = 0x40;
    // A backslash between quotation marks begins a special character.
    const std::string path = std::filesystem::path{folder.write("my capture.bin", bytes)}.generic_string();
    auto once = signals_of({"P21..P28 file \"" + path + "\" period 3.4"}).walk();
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        const auto seen = once.look(sim::nanoseconds{static_cast<std::int64_t>(i) * 3400 + 3399});
        ASSERT_EQ(seen.levels, (sim::pin_levels{255, bytes[i]})) << i;
    }
    EXPECT_EQ(once.look(sim::nanoseconds{3'400'000'000}).levels.high, 0x40) << "the last sample stays";
    const auto again = signals_of({"P22 P28 file \"" + path + "\" period 3.4 again"});
    auto walk = again.walk();
    EXPECT_EQ(walk.look(sim::nanoseconds{3 * 34'000'000}).levels, (sim::pin_levels{0x82, 0x80}));
    EXPECT_EQ(edges_of(again, 68'000'000), (std::vector<edge>{{9998 * 3400, 22, true},
                                                              {9998 * 3400, 28, false},
                                                              {9999 * 3400, 22, false},
                                                              {34'000'000, 28, true},
                                                              {34'000'000 + 9998 * 3400, 22, true},
                                                              {34'000'000 + 9998 * 3400, 28, false},
                                                              {34'000'000 + 9999 * 3400, 22, false}}));
}

TEST(signals, a_file_that_cannot_be_played_is_told)
{
    const temp_folder folder;
    const auto refused = [&](const std::string& path) {
        const std::string told = refusal_of_signal("P21 file " + path + " period 1");
        return told.substr(told.find("column"));
    };
    EXPECT_EQ(refused("/nowhere"), "column 10: /nowhere: the file cannot be read");
    EXPECT_EQ(refused(folder.path("")), "column 10: " + folder.path("") + ": the file cannot be read");
    const std::string empty = folder.write("empty", std::string_view{});
    EXPECT_EQ(refused(empty), "column 10: " + empty + ": the file is empty");
    const std::string good = folder.write("good", std::string_view{"x"});
    EXPECT_EQ(refusal_of_signal("P21 file " + good + " period 0").substr(0, 6), "signal");
    EXPECT_EQ(refusal_of_signal("P21 file " + good).substr(0, 6), "signal");
    EXPECT_EQ(refusal_of_signal("P21 file " + good + " period 1"), "taken");
}

TEST(signals, a_chip_is_clocked_by_them)
{
    // The decade counter 7490 with its halves joined: the pins 14 and 1 are its clocks, 12, 9, 8 and 11 its outputs.
    const auto set = signals_of({"P21 square 1000", "chip 7490 14=P21 1=12 2=low 3=low 6=low 7=low 12=P22 9=P23 8=P24 "
                                                    "11=P25"},
                                library_chips());
    auto walk = set.walk();
    for (int period = 0; period < 25; ++period) {
        // It counts at the falling edge, in the middle of the period.
        const auto levels = walk.look(sim::nanoseconds{period * 1'000'000 + 600'000}).levels;
        EXPECT_EQ(levels.driven, 0x1F);
        EXPECT_EQ(levels.high >> 1, (period + 1) % 10) << period;
    }
    auto jumping = set.walk();
    EXPECT_EQ(jumping.look(sim::nanoseconds{23'600'000}).levels.high >> 1, 4) << "no change on the way is missed";
}

TEST(signals, chips_can_be_wired_to_each_other)
{
    // Two inverters in a row, each in a chip of its own.
    const auto set =
        signals_of({"P21 square 1000", "chip 7404 1=P21 2=P22", "chip 7404 13=P22 12=P23"}, library_chips());
    EXPECT_EQ(levels_at(set, 22, {0, 500'000, 1'000'000}), "LHL");
    EXPECT_EQ(levels_at(set, 23, {0, 500'000, 1'000'000}), "HLH");
}

TEST(signals, a_wrong_chip_or_wire_is_told)
{
    const auto refused = [](const char* text) {
        const std::string told = refusal_of_signal(text, library_chips());
        return told.substr(told.find("column"));
    };
    EXPECT_EQ(refused("chip moon 1=P21"), "column 6: there is no chip \"moon\"");
    EXPECT_EQ(refused("chip 7404"), "column 10: its end where a wire like 14=P21 was expected");
    EXPECT_EQ(refused("chip 7404 P21"), "column 11: \"P21\" where a wire like 14=P21 was expected");
    EXPECT_EQ(refused("chip 7404 15=P21"),
              "column 11: \"15\" where a pin of the chip from 1 to 14, P21 to P28, high or "
              "low was expected");
    EXPECT_EQ(refused("chip 7404 1=P29"),
              "column 11: \"P29\" where a pin of the chip from 1 to 14, P21 to P28, high or "
              "low was expected");
    EXPECT_EQ(refused("chip 7404 1=P21 14=high"), "column 17: this pin of the chip is for its supply");
    EXPECT_EQ(refusal_of_signal("chip 7404 1=P21"), "signal \"chip 7404 1=P21\", column 6: there are no chips here");
}

}  // namespace
}  // namespace tamrix::tests
