// Fields of a binary file, one after the other.
#pragma once

#include "verify/findings.h"

#include "files/byte_source.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace tamrix {

class byte_reader {
public:
    /// `from` has to outlive it.
    explicit byte_reader(byte_source& from) : from_{from} {}

    /// The next `count` bytes, fewer where the file ends; until the next call. Throws file_error.
    std::span<const std::uint8_t> next(std::size_t count)
    {
        field_.resize(count);
        std::size_t held = 0;
        while (held < count) {
            const std::size_t read = from_.read(std::span{field_}.subspan(held));
            if (read == 0) break;
            held += read;
        }
        at_ += held;
        return std::span{field_}.first(held);
    }
    /// The offset after what was read.
    std::uint64_t at() const { return at_; }
    /// A remark where the file goes on.
    void expect_end(findings& found)
    {
        const std::uint64_t end = at_;
        if (!next(1).empty()) found.remark(at_offset(end), "more bytes", "the end of the file");
    }

private:
    byte_source& from_;
    std::vector<std::uint8_t> field_;
    std::uint64_t at_ = 0;
};

}  // namespace tamrix
