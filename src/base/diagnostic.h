// Why a load or save failed: where, what was found, what was expected.
#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace tamrix {

/// Empty if nothing failed.
struct diagnostic {
    std::string file{};                     // as the host gave it
    std::optional<std::uint64_t> line{};    // from 1, in text files
    std::optional<std::uint64_t> offset{};  // in bytes from 0, in binary files
    std::string found{};
    std::string expected{};  // may be empty

    bool empty() const { return found.empty(); }
    /// "boot.hex:217: record type 07 where 00 to 05 was expected", "image.cds: offset 1F0: end of the file where ...
    /// was expected".
    std::string text() const;
};

}  // namespace tamrix
