// How large a device and buffer a conversion needs, and which range of the buffer it saves.
#pragma once

#include "cli/convert_options.h"
#include "formats/formats.h"

#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace tamrix::cli {

/// What is known of IN before it is loaded.
struct source_file {
    int format = 0;                            // option index
    std::optional<address_range> addresses{};  // that it fills; none if it has no data
    bool estimated = false;                    // the addresses may be wrong
};

/// Detects the format unless it is given, and estimates or measures the file. Throws file_error.
source_file look_at(const convert_options& options);
/// Measures the whole file. Throws file_error.
void measure(const convert_options& options, source_file& source);

struct conversion_plan {
    int from = 0, to = 0;           // option indices of the formats
    std::int32_t device_words = 0;  // tlength(0)
    std::uint8_t word_bytes = 1;    // wordmode(0)
    std::uint8_t spare_units = 0;   // wordmode(1)
    std::int32_t buffer_bytes = 0;  // buflength(0)
    std::int64_t save_from = 0, save_size = 0;
    bool file_fills_buffer = false;       // so that there is nothing to clear
    bool through_temporary_file = false;  // the image does not fit the buffer's mapping
    std::vector<std::string> notes{};     // what the person should know in addition to the result

    std::int64_t device_bytes() const { return std::int64_t{device_words} * word_bytes; }
    bool same_device(const conversion_plan& other) const
    {
        return device_words == other.device_words && word_bytes == other.word_bytes &&
               spare_units == other.spare_units && buffer_bytes == other.buffer_bytes;
    }
};

/// Throws command_error if the buffer would have to be larger than possible.
conversion_plan plan_conversion(const convert_options& options, const source_file& source);

/// The one of the formats that can be saved that has the extension of `path`; none if no format has it.
std::optional<int> format_of_extension(const std::string& path);

}  // namespace tamrix::cli
