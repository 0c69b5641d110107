// A strict reading of a text, with everything that came out of it.
#pragma once

#include "verify/verification.h"

#include <cstdint>
#include <map>
#include <string>
#include <string_view>
#include <vector>

namespace tamrix::tests {

struct reading : data_taker {
    verification found{};
    std::map<std::uint64_t, std::uint8_t> bytes{};
    std::uint64_t pieces = 0;

    void take(std::uint64_t address, std::span<const std::uint8_t> taken) override
    {
        ++pieces;
        for (const std::uint8_t byte : taken) bytes[address++] = byte;
    }
    /// The texts of all remarks, one a line.
    std::string remarks() const;
    /// Their lines in the file; 0 for one that has none.
    std::vector<std::uint64_t> lines() const;
    /// "0+20 100+4": first addresses and lengths, hexadecimal.
    std::string segments() const;
};

/// Reads `content` as the file "f". `at_once` is the most that the source gives at a time; 0: all that is asked for.
reading verify(std::string_view format, std::string_view content, std::size_t at_once = 0);

/// An Intel record with its checksum and without a line end.
std::string intel_record(unsigned type, unsigned address, const std::vector<std::uint8_t>& data);
/// A Motorola record S`type`, likewise.
std::string motorola_record(unsigned type, std::uint32_t address, const std::vector<std::uint8_t>& data);
/// A Tektronix record, likewise.
std::string tektronix_record(unsigned address, const std::vector<std::uint8_t>& data);

/// Blank lines that leave room for a record of any length after the others: those are then read the quick way, too.
std::string blank_lines();

/// 0, 1, 2 ...
std::vector<std::uint8_t> counted(std::size_t count);

}  // namespace tamrix::tests
