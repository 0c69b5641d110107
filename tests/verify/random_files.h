// Files of any shape that are sound, and damage to them; the same in every run.
#pragma once

#include <cstdint>
#include <map>
#include <random>
#include <string>

namespace tamrix::tests {

struct random_file {
    std::string content{};
    std::map<std::uint64_t, std::uint8_t> bytes{};
};

/// With all kinds of bases, islands and records, in any order of the addresses.
random_file random_intel_file(std::mt19937& random);
random_file random_motorola_file(std::mt19937& random);

/// Turns bits, changes, drops and doubles characters and lines, once to a few times.
std::string damaged_text(std::string content, std::mt19937& random);

}  // namespace tamrix::tests
