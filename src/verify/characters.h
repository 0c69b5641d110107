// The characters of a text file one after the other, with their line.
#pragma once

#include "files/byte_source.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>
#include <string>

namespace tamrix {

class characters {
public:
    static constexpr int end = -1;

    /// The source has to outlive it.
    explicit characters(byte_source& from) : from_{from} {}
    /// The next character, 0 to 255, which stays the next one; `end` after the last. Throws file_error, as get() does.
    int peek()
    {
        if (at_ == count_ && !fill()) return end;
        return block_[at_];
    }
    /// The next character. CR, LF and both together end a line.
    int get()
    {
        if (at_ == count_ && !fill()) return end;
        const int one = block_[at_++];
        if (one <= '\r') count_line(one);
        return one;
    }
    /// The next characters, as far as they are in memory; none says nothing.
    std::span<const std::uint8_t> ahead() const { return std::span{block_}.subspan(at_, count_ - at_); }
    /// Passes over `count` characters of ahead(), none of which ends a line.
    void pass(std::size_t count) { at_ += count; }
    /// From 1: the line of the character that get() returns next.
    std::uint64_t line() const { return line_; }

private:
    bool fill()
    {
        before_block_ += count_;
        at_ = 0;
        count_ = ended_ ? 0 : from_.read(block_);
        ended_ = count_ == 0;
        return !ended_;
    }
    void count_line(int one)
    {
        const std::uint64_t place = before_block_ + at_;
        if (one == '\r') after_cr_ = place + 1;
        if (one == '\r' || (one == '\n' && place != after_cr_)) ++line_;
    }

    byte_source& from_;
    std::array<std::uint8_t, 65536> block_;
    std::size_t at_ = 0, count_ = 0;
    std::uint64_t line_ = 1, before_block_ = 0;
    std::uint64_t after_cr_ = 0;  // the place after the last CR
    bool ended_ = false;
};

inline bool is_blank(int one) { return one == ' ' || one == '\n' || one == '\r' || one == '\t'; }

/// As a remark names it: "character X", or by its value where it cannot be seen; "the end of the file".
std::string character_name(int character);

}  // namespace tamrix
