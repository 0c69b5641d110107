// The lines of a text of any length, through one block of memory.
#pragma once

#include "files/byte_source.h"

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>
#include <vector>

namespace tamrix {

/// LF, CR LF and CR end a line; control-Z ends the text, whatever comes after it.
class record_lines {
public:
    /// In characters. A longer line comes in pieces of this length; a multiple of 3, as a byte and its separator are.
    static constexpr std::size_t longest_piece = 0xC000;

    /// `from` has to outlive it.
    explicit record_lines(byte_source& from) : from_{from}, room_(room_bytes), seam_(2 * enough) {}

    /// Goes to the next line, or to the next piece of a long one. False at the end of the text. Throws file_error.
    bool next();
    /// Without the line's end; until next() or ahead().
    std::string_view text() const { return text_; }
    /// From 1.
    std::uint64_t number() const { return number_; }
    /// Whether text() is the first piece of its line.
    bool begins() const { return begins_; }
    /// Whether it is the last one.
    bool ends() const { return !inside_; }

    /// Text after the line, at least a whole piece of it unless the source ends before; empty inside a line. It is for
    /// those who take whole lines by themselves, up to a control-Z at most. Throws file_error.
    std::span<const std::uint8_t> ahead();
    /// The first `bytes` of ahead() are taken: `lines` whole lines.
    void pass(std::size_t bytes, std::uint64_t lines)
    {
        rest_ = rest_.subspan(bytes);
        number_ += lines;
    }

private:
    static constexpr std::size_t room_bytes = 0x40000;
    static constexpr std::size_t enough = longest_piece + 2;  // with both characters of a line's end

    void fill();
    void join_next_block();

    byte_source& from_;
    std::vector<std::uint8_t> room_;       // for a source that has its bytes nowhere
    std::vector<std::uint8_t> seam_;       // the end of one block and the begin of the next
    std::span<const std::uint8_t> rest_;   // what is not read, in block_ or in seam_
    std::span<const std::uint8_t> block_;  // as it was lent
    std::size_t in_both_ = 0;  // of the bytes that block_ begins with, how many end seam_; 0 if rest_ is in block_
    bool source_ended_ = false;
    bool ended_ = false;   // by a control-Z
    bool inside_ = false;  // a line that goes on after text_
    bool begins_ = false;
    std::string_view text_;
    std::uint64_t number_ = 0;
};

}  // namespace tamrix
