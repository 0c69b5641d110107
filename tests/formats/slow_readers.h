// Slow models of the readers of text files: a character at a time, with none of the readers' own parts, so that model
// and reader can be compared on any text whatever.
#pragma once

#include "load_fixture.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tamrix::tests {

/// One load: what was entered, and what a model leaves.
struct slow_load {
    int from_mode = 0, to_mode = 0;
    std::int64_t start = 0, file_start = 0;
    std::int64_t size = 0;  // when more bytes than these were stored the load ends
    std::int64_t devbytes = 0, buflength = 0;

    std::vector<std::uint8_t> memory{};      // the whole view, at first with what stood in the buffer
    std::vector<double> progress{};          // every new value of the bar
    std::vector<std::int64_t> wrong_sums{};  // numbers of the data records with a wrong checksum
};

status slow_intel(slow_load& load, const std::string& text);
status slow_intel16(slow_load& load, const std::string& text);
status slow_motorola(slow_load& load, const std::string& text);
status slow_tektronix(slow_load& load, const std::string& text);
status slow_texas(slow_load& load, const std::string& text);

}  // namespace tamrix::tests
