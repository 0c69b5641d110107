// Text records for a file, collected so that a file of any length takes few writes.
#pragma once

#include "files/file_io.h"
#include "files/hex_digits.h"
#include "files/hex_record_digits.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tamrix {

class text_output {
public:
    explicit text_output(const std::string& path)
        : file_{std::make_unique<output_file>(path)}, to_{*file_}, text_(capacity)
    {}
    /// `to` has to outlive it.
    explicit text_output(byte_target& to) : to_{to}, text_(capacity) {}

    void text(std::string_view words) { std::memcpy(grow(words.size()), words.data(), words.size()); }
    /// A whole line of any length.
    void line(std::string_view words)
    {
        for (; words.size() > longest_line; words.remove_prefix(longest_line)) {
            text(words.substr(0, longest_line));
            breathe();
        }
        text(words);
        end_line();
    }
    /// `digits` upper-case hexadecimal digits of `value`.
    void number(std::uint64_t value, int digits)
    {
        hex_digits::encode_number(value, digits, grow(static_cast<std::size_t>(digits)));
    }
    /// Two digits a byte; adds the byte sum to `sum`.
    void bytes(std::span<const std::uint8_t> data, unsigned& sum)
    {
        hex_digits::encode(data.data(), data.size(), grow(2 * data.size()), sum);
    }
    /// The two digits of the low byte of `value`.
    void byte(unsigned value)
    {
        const auto low = static_cast<std::uint8_t>(value);
        unsigned none = 0;
        hex_digits::encode(&low, 1, grow(2), none);
    }
    /// A line: `mark`, and the record that hex_digits::encode_record() makes.
    template <std::size_t head_bytes>
    void record(std::string_view mark, std::uint64_t head, std::span<const std::uint8_t> data, unsigned good_sum)
    {
        text(mark);
        char* const begin = text_.data() + used_;
        used_ += static_cast<std::size_t>(hex_digits::encode_record<head_bytes>(head, data, good_sum, begin) - begin);
        end_line();
    }
    /// Ends the line, and writes what is collected when that is much.
    void end_line()
    {
        text("\r\n");
        breathe();
    }
    /// Writes what is collected when that is much. Call it at least every 1024 characters.
    void breathe()
    {
        if (used_ > capacity - 2 * longest_line) flush();
    }
    /// Writes what is collected and closes the file that it opened.
    void close()
    {
        flush();
        if (file_ != nullptr) file_->close();
    }
    /// Writes what is collected, as far as the system accepts it.
    void flush()
    {
        const std::size_t gathered = std::exchange(used_, 0);
        to_.write({reinterpret_cast<const std::uint8_t*>(text_.data()), gathered});
    }

private:
    static constexpr std::size_t capacity = 1 << 18;
    static constexpr std::size_t longest_line = 1024;

    char* grow(std::size_t length)
    {
        char* end = text_.data() + used_;
        used_ += length;
        return end;
    }

    std::unique_ptr<output_file> file_;
    byte_target& to_;
    std::vector<char> text_;
    std::size_t used_ = 0;
};

}  // namespace tamrix
