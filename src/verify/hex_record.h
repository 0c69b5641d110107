// A record in hexadecimal digits on a line.
#pragma once

#include "verify/findings.h"
#include "verify/record_lines.h"

#include "files/hex_digits.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace tamrix {

/// The bytes of a record, as far as it has digits.
class hex_record {
public:
    /// `text` is the line, `digits_at` where its digits begin.
    hex_record(std::string_view text, std::size_t digits_at);

    /// Whole bytes ahead of the first character that is no digit.
    std::size_t size() const { return size_; }
    unsigned operator[](std::size_t at) const { return bytes_[at]; }
    /// `at` + `count` is at most size().
    std::span<const std::uint8_t> bytes(std::size_t at, std::size_t count) const
    {
        return std::span{bytes_}.subspan(at, count);
    }
    /// The number in `count` bytes, the highest first.
    std::uint64_t number(std::size_t at, std::size_t count) const;
    /// The sum of the first `count` bytes.
    unsigned sum(std::size_t count) const;

    /// Whether there are `count` bytes. A remark where there are not.
    bool has(std::size_t count, findings& found, file_place where) const;
    /// Whether the line goes on after `count` bytes.
    bool goes_on_after(std::size_t count) const { return text_.size() > length_of(count); }
    /// A remark where it does.
    void expect_end_after(std::size_t count, findings& found, file_place where) const;
    /// Whether `expected` is the byte at `at`, which is the last one; a remark where it is not.
    bool expect_checksum(unsigned expected, std::size_t at, findings& found, file_place where) const;

private:
    static constexpr std::size_t most_bytes = 4 + 2 * 255 + 1;  // with words as data

    std::size_t length_of(std::size_t count) const { return digits_at_ + 2 * count; }

    std::string_view text_;
    std::size_t digits_at_;
    std::array<std::uint8_t, most_bytes> bytes_{};
    std::size_t size_ = 0;
};

/// "'G' in column 12", from 0 in the call and from 1 in the text.
std::string character_text(std::string_view text, std::size_t at);

/// Blanks and tabs, or nothing.
bool is_blank(std::string_view text);

/// A remark where `lines` has no whole line; there is one for each line.
bool is_whole_line(const record_lines& lines, findings& found);

/// Looks for anything after the end record; one remark.
void expect_no_more(record_lines& lines, findings& found);

}  // namespace tamrix
