// How the bytes of a file fit into a device, and the load of those that lie outside it.
#pragma once

#include "host/file_report.h"

#include <cstdint>
#include <optional>
#include <span>
#include <string>

namespace tamrix::host {

struct device_fit {
    std::uint64_t outside = 0;            // bytes
    std::optional<std::uint64_t> next{};  // file address at which a load takes some of those; none if place() cannot
    std::string line{};                   // for the log
};

/// For a buffer that has been loaded from file address `start` on; the device has as many bytes as `buffer`.
device_fit fit_of(const file_report& report, std::uint64_t start, std::span<const std::uint8_t> buffer);

/// What a device with `fuses` fuses does not take, for the log; empty if it takes all.
std::string fuses_outside_text(const file_report& report, std::uint64_t fuses);

/// Puts the bytes from file address `start` on to the start of the buffer, as far as it reaches. Gaps stay.
void place(const memory_image& image, std::uint64_t start, std::span<std::uint8_t> buffer);

}  // namespace tamrix::host
