// Writes an image in the formats of files.
#pragma once

#include "files/byte_target.h"
#include "image/memory_image.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace tamrix {

struct image_form {
    std::size_t record_bytes = 32;                 // of data in a record, at most; within most_record_bytes()
    std::optional<std::uint64_t> start_address{};  // of the program, for its record; not in binary files
};

/// An image that a format cannot hold: an address is too high for it.
class image_error : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Writes the bytes where they are, with their gaps; a binary file has none, so that it holds the bytes alone. Throws
/// image_error before anything is written, and file_error.
using write_image_routine = void (*)(const memory_image& image, const image_form& form, byte_target& to);

/// By the format's name on the command line: binary, intel, motorola, tektronix. Null for any other name.
write_image_routine image_writer_of(std::string_view format);
/// How long a record of data can be; 0 for a format without records.
std::size_t most_record_bytes(std::string_view format);

}  // namespace tamrix
