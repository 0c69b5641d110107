// The fields of a JEDEC fuse file, one after the other: its grammar, which knows neither the buffer nor the device.
#pragma once

#include "files/text_lines.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tamrix {

/// A field, or the part of it on one line. Everything else is skipped.
struct jedec_field {
    enum class kind : std::uint8_t {
        header,       // a line above the first fuse row, as it is in the file
        fuses,        // "L": bits from fuse `number` on
        signature,    // "U": bits
        extra_fuses,  // "E": bits
        more_bits,    // the next line of the last of these three
        vector,       // "V": the levels of vector `number`
    };

    kind what;
    std::string_view text;  // bits are "0" and "1", with any blanks between them
    std::int64_t number = 0;
};

class jedec_fields {
public:
    /// Throws file_error, or std::bad_alloc if the file does not fit.
    explicit jedec_fields(const std::string& path) : lines_{path} {}

    std::int64_t file_length() const { return lines_.file_length(); }
    /// The next field; none at the end of the file. Its text stays valid as long as this object.
    std::optional<jedec_field> next();

private:
    std::optional<jedec_field> field_of(std::string_view line);
    std::optional<jedec_field> vector_of(std::string_view line);
    std::optional<jedec_field> next_row();
    std::string_view take_bits(std::string_view text);

    text_lines lines_;
    std::string_view rows_;    // the rest of a line with fuse rows
    bool bits_go_on_ = false;  // lines of bits belong to the last row
    bool fuses_seen_ = false;  // the header is over
    bool in_vectors_ = false;  // the last line was a vector
    std::int64_t vectors_ = 0;
};

}  // namespace tamrix
