// A text file line by line: CR, LF and both together end a line, so files of every origin load.
#pragma once

#include "files/file_io.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tamrix {

class text_lines {
public:
    /// Throws file_error, or std::bad_alloc where the file does not fit.
    explicit text_lines(const std::string& path) : image_{path}, rest_{as_text(image_.bytes())} {}

    std::int64_t file_length() const { return static_cast<std::int64_t>(image_.bytes().size()); }
    /// The next line without its end; none after the last. A line end at the end of the file starts no further line.
    std::optional<std::string_view> next()
    {
        if (rest_.empty()) return std::nullopt;
        ++number_;
        const std::size_t end = rest_.find_first_of("\r\n");
        const std::string_view line = rest_.substr(0, end);
        rest_.remove_prefix(line.size());
        if (rest_.starts_with("\r\n")) {
            rest_.remove_prefix(2);
        } else if (!rest_.empty()) {
            rest_.remove_prefix(1);
        }
        return line;
    }
    /// Number, from 1, of the line that next() returned last.
    std::uint64_t number() const { return number_; }

private:
    static std::string_view as_text(std::span<const std::uint8_t> bytes)
    {
        return {reinterpret_cast<const char*>(bytes.data()), bytes.size()};
    }

    file_image image_;
    std::string_view rest_;
    std::uint64_t number_ = 0;
};

}  // namespace tamrix
