// What is on the lines is read back by receivers that know nothing of how it was written.
#include "sim/signals/serial_lines.h"

#include <gtest/gtest.h>

#include "sim/signals/line_reader.h"

#include <cmath>

namespace tamrix::tests {

namespace {

/// Samples in the middle of each bit after the edge of a start bit; "!" where a stop or parity bit is wrong.
std::string heard_by_uart(const sim::signal_set& set, int pin, double baud, int bits, int parity, std::int64_t until)
{
    auto walk = set.walk();
    const auto is_high = [&](double when) {
        return (walk.look(sim::nanoseconds{std::llround(when)}).levels.high >> (pin - 21) & 1) != 0;
    };
    const double bit = 1e9 / baud;
    std::string heard;
    double when = 0;
    while (when < static_cast<double>(until)) {
        if (is_high(when)) {
            when += bit / 16;
            continue;
        }
        unsigned byte = 0, ones = 0;
        for (int i = 0; i < bits; ++i) {
            const unsigned one = is_high(when + bit * (1.5 + i)) ? 1 : 0;
            byte |= one << i;
            ones += one;
        }
        heard += static_cast<char>(byte);
        double place = 1.5 + bits;
        if (parity >= 0) {
            ones += is_high(when + bit * place) ? 1 : 0;
            if (ones % 2 != static_cast<unsigned>(parity)) heard += '!';
            place += 1;
        }
        if (!is_high(when + bit * place)) heard += '!';
        when += bit * place;
    }
    return heard;
}

TEST(signals, a_uart_line_is_heard_by_a_receiver)
{
    EXPECT_EQ(heard_by_uart(signals_of({"P23 uart 9600 \"Hello, world\""}), 23, 9600, 8, -1, 20'000'000),
              "Hello, world");
    EXPECT_EQ(heard_by_uart(signals_of({"P23 uart 115200 7E1 \"even\""}), 23, 115200, 7, 0, 1'000'000), "even");
    EXPECT_EQ(heard_by_uart(signals_of({"P23 uart 300 7O2 \"odd\""}), 23, 300, 7, 1, 200'000'000), "odd");
    EXPECT_EQ(heard_by_uart(signals_of({R"(P23 uart 9600 "a\r\n\x41\"\\")"}), 23, 9600, 8, -1, 20'000'000),
              "a\r\nA\"\\");
    EXPECT_EQ(heard_by_uart(signals_of({"P23 uart 9600 \"x\" every 0.005"}), 23, 9600, 8, -1, 22'000'000), "xxxxx");
    EXPECT_EQ(levels_at(signals_of({"P23 uart 9600 \"x\""}), 23, {0, 100'000, 900'000'000}), "HHH") << "at rest";
}

/// Start and stop conditions as [ and ], bytes as two digits with + or - for the acknowledge bit.
std::string heard_on_i2c(const std::vector<edge>& edges, int clock, int data)
{
    std::string heard;
    bool clock_high = true, data_high = true;
    unsigned bits = 0;
    int count = 0;
    for (const edge& one : edges) {
        if (one.pin == data && clock_high) {
            heard += one.high ? ']' : '[';
            count = 0;
        }
        (one.pin == clock ? clock_high : data_high) = one.high;
        if (one.pin != clock || !one.high) continue;
        bits = bits << 1 | (data_high ? 1 : 0);
        if (++count < 9) continue;
        char text[4];
        std::snprintf(text, sizeof text, "%02X%c", bits >> 1 & 0xFF, (bits & 1) == 0 ? '+' : '-');
        heard += text;
        count = 0;
    }
    return heard;
}

TEST(signals, an_i2c_transfer_is_heard_by_a_receiver)
{
    const auto heard = [](const char* text) { return heard_on_i2c(edges_of(signals_of({text}), 100'000'000), 24, 25); };
    EXPECT_EQ(heard("P24 P25 i2c 100000 write 50 01 02"), "[A0+01+02+]");
    EXPECT_EQ(heard("P24 P25 i2c 400000 write 50 00 read 50 12 FF"), "[A0+00+[A1+12+FF-]");
    EXPECT_EQ(heard("P24..P25 i2c 1000 write 7f"), "[FE+]");
    EXPECT_EQ(heard("P24 P25 i2c 100000 read 3 0 after 0.001 every 0.09"), "[07+00-][07+00-]");
    const auto swapped = signals_of({"P25 P24 i2c 100000 write 50 01"});
    EXPECT_EQ(heard_on_i2c(edges_of(swapped, 100'000'000), 25, 24), "[A0+01+]");
    // Nine clocks a byte, at the frequency that was asked for.
    const auto edges = edges_of(signals_of({"P24 P25 i2c 100000 write 50 01"}), 10'000'000);
    std::vector<std::int64_t> rises;
    for (const edge& one : edges) {
        if (one.pin == 24 && one.high) rises.push_back(one.nanoseconds);
    }
    ASSERT_EQ(rises.size(), 19u);
    EXPECT_EQ(rises[8] - rises[0], 80'000);
}

/// The bytes of both directions while the select line is low, sampled as the mode says.
std::string heard_on_spi(const std::vector<edge>& edges, int mode)
{
    const bool sampled_at_rise = mode == 0 || mode == 3;
    bool sent = true, received = true, selected = false;
    unsigned out = 0, in = 0;
    int count = 0;
    std::string heard;
    for (const edge& one : edges) {
        if (one.pin == 22) sent = one.high;
        if (one.pin == 23) received = one.high;
        if (one.pin == 24) selected = !one.high;
        if (one.pin == 24) heard += one.high ? ']' : '[';
        if (one.pin != 21 || one.high != sampled_at_rise || !selected) continue;
        out = out << 1 | (sent ? 1 : 0);
        in = in << 1 | (received ? 1 : 0);
        if (++count % 8 != 0) continue;
        char text[8];
        std::snprintf(text, sizeof text, "%02X/%02X ", out & 0xFF, in & 0xFF);
        heard += text;
    }
    return heard;
}

TEST(signals, an_spi_transfer_is_heard_in_each_mode)
{
    for (int mode = 0; mode < 4; ++mode) {
        const auto set =
            signals_of({"P21 P22 P23 P24 spi 1000000 mode " + std::to_string(mode) + " send 9F 00 35 receive FF C2"});
        EXPECT_EQ(heard_on_spi(edges_of(set, 1'000'000), mode), "[9F/FF 00/C2 35/FF ]") << mode;
        const int rest = mode < 2 ? 'L' : 'H';
        EXPECT_EQ(levels_at(set, 21, {0, 900'000}), std::string(2, static_cast<char>(rest))) << mode;
        EXPECT_EQ(levels_at(set, 24, {0, 900'000}), "HH") << mode;
    }
    EXPECT_EQ(heard_on_spi(edges_of(signals_of({"P21..P24 spi 1000 receive A5"}), 100'000'000), 0), "[FF/A5 ]");
}

}  // namespace
}  // namespace tamrix::tests
