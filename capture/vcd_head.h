// What a VCD file declares before its values. Used by this folder only.
#pragma once

#include "capture/text_reader.h"

#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace tamrix::capture {

struct vcd_head {
    std::uint64_t unit = 1'000'000;         // of times, in femtoseconds
    std::optional<sample_period> period{};  // where the file says it
    std::vector<std::string> names{};       // one a bit
    /// Bits by the code of their variable: places in `names`, the lowest bit first. Variables that are no levels have
    /// none.
    std::unordered_map<std::string, std::vector<std::size_t>> bits{};
};

/// Up to and with $enddefinitions. Throws file_error.
vcd_head read_vcd_head(text_reader& text);

}  // namespace tamrix::capture
