// The socket and the library file once more, slowly and in other words: what the tests compare with.
#pragma once

#include "support/recording_programmer.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

namespace tamrix::tests::slow {

/// A place in the socket: which column, and how many places above its lowest.
struct place {
    bool right;
    int height;
    int group() const { return height / 4; }
    int weight() const { return right ? 16 << height % 4 : 8 >> height % 4; }
    /// The number by which the supply switches know it.
    int code() const { return height + (right ? 101 : 1); }
};

/// Where pin `number` (from 1) of a device is whose lowest pins are at the socket's bottom.
inline place place_of_pin(int number, int pins)
{
    return number <= pins / 2 ? place{false, pins / 2 - number} : place{true, number - pins / 2 - 1};
}

/// The wiring of the socket with 40 positions: the device's place at each place from the bottom. A is the device's left
/// column, B the right one.
inline const std::vector<std::string> left_wires{"B0", "A1",  "A2",  "A3",  "A7",  "A6",  "A5",  "A4",  "B8",  "B6",
                                                 "B9", "B10", "B14", "A15", "B13", "A14", "A16", "A17", "A18", "A19"};
inline const std::vector<std::string> right_wires{"B1",  "B2",  "B3", "B4", "A8",  "A9", "A10", "A11", "A12", "B11",
                                                  "B12", "A13", "B5", "B7", "B15", "A0", "B16", "B17", "B18", "B19"};

/// The letter of a device row at a wire's end; 'w' where the device has no such pin.
inline char letter_at_wire(std::string_view row, const std::string& wire)
{
    const int height = std::stoi(wire.substr(1)), pins = static_cast<int>(row.size());
    for (int number = 1; number <= pins; ++number) {
        const place here = place_of_pin(number, pins);
        if (here.right == (wire[0] == 'B') && here.height == height) return row[static_cast<std::size_t>(number - 1)];
    }
    return 'w';
}

/// The 40 letters of a device row, left column downward, then right column upward.
inline std::string socket_text(std::string_view row)
{
    std::string text;
    for (auto wire = left_wires.rbegin(); wire != left_wires.rend(); ++wire) text += letter_at_wire(row, *wire);
    for (const std::string& wire : right_wires) text += letter_at_wire(row, wire);
    return text;
}

/// The level that a working device shows for a letter; where nobody asks, and at empty places, `open`.
inline bool level_of(char letter, bool open)
{
    if (letter == '1' || letter == 'H' || letter == 'V' || letter == 'Z') return true;
    if (letter == '0' || letter == 'L' || letter == 'G') return false;
    return open;
}

/// What the six ports read when the places of `row` show their levels.
inline six_bytes ports_of(std::string_view row, bool open = true)
{
    six_bytes bytes{};
    if (open) bytes.fill(0xFF);
    const int pins = static_cast<int>(row.size());
    for (int number = 1; number <= pins; ++number) {
        const place here = place_of_pin(number, pins);
        auto& byte = bytes[static_cast<std::size_t>(here.group())];
        byte = static_cast<std::uint8_t>(byte & ~here.weight());
        if (level_of(row[static_cast<std::size_t>(number - 1)], open))
            byte = static_cast<std::uint8_t>(byte | here.weight());
    }
    return bytes;
}
inline six_bytes ports_of_40(std::string_view row, bool open = true) { return ports_of(socket_text(row), open); }

/// A library that knows only what is in its file.
struct device_record {
    std::string name;
    std::vector<std::string> rows;

    int pins() const { return static_cast<int>(rows.empty() ? 0 : rows[0].size()); }
    std::string line() const
    {
        char counts[16];
        std::snprintf(counts, sizeof counts, "%02X\x02%02d", static_cast<unsigned>(rows.size() + 1), pins());
        std::string text = "$" + name;
        while (text.size() < 13) text += ' ';
        text += counts;
        for (const std::string& row : rows) text += std::string(1, static_cast<char>(row.size())) + row;
        return text + "*";
    }
};

/// A whole library file: `directory` are the entries unchanged, `records` from the top.
inline std::string library_text(const std::vector<std::string>& directory, const std::vector<device_record>& records)
{
    char count[8];
    std::snprintf(count, sizeof count, "%04X", static_cast<unsigned>(directory.size()));
    std::string text = std::string{"$KSM0000000"} + count;
    for (const std::string& name : directory) text += std::string(1, static_cast<char>(name.size())) + name;
    text += "*\r\n";
    for (const device_record& one : records) text += one.line() + "\r\n";
    return text + "end-ksm\r\n";
}
inline std::string library_text(const std::vector<device_record>& records)
{
    std::vector<std::string> names;
    for (const device_record& one : records) names.push_back(one.name);
    std::ranges::sort(names);
    return library_text(names, records);
}

}  // namespace tamrix::tests::slow
