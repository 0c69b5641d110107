// Intel and Motorola records by their rules once more: slow, line by line, with nothing of the product.
#pragma once

#include <cstdint>
#include <map>
#include <string>
#include <vector>

namespace tamrix::tests {

struct plain_reading {
    std::vector<std::uint64_t> lines{};  // of the remarks
    std::map<std::uint64_t, std::uint8_t> bytes{};
};

plain_reading read_intel_plainly(const std::string& content);
plain_reading read_motorola_plainly(const std::string& content);

}  // namespace tamrix::tests
