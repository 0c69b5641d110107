#include "verify/record_lines.h"

#include <algorithm>
#include <cstring>

namespace tamrix {

namespace {

constexpr std::uint8_t control_z = 0x1A;

bool ends_line(std::uint8_t character)
{
    return character <= control_z && (character == '\n' || character == '\r' || character == control_z);
}

}  // namespace

/// After it there is a whole piece, with both characters of a line's end, unless the source has ended.
void record_lines::fill()
{
    if (source_ended_ || end_ - at_ >= longest_piece + 2) return;
    std::memmove(block_.data(), block_.data() + at_, end_ - at_);
    end_ -= at_;
    at_ = 0;
    while (end_ < block_.size()) {
        const std::size_t count = from_.read(std::span{block_}.subspan(end_));
        source_ended_ = count == 0;
        if (source_ended_) return;
        end_ += count;
    }
}

std::span<const std::uint8_t> record_lines::ahead()
{
    if (inside_ || ended_) return {};
    fill();
    return std::span<const std::uint8_t>{block_}.subspan(at_, end_ - at_);
}

bool record_lines::next()
{
    if (ended_) return false;
    fill();
    if (at_ == end_) return false;
    const std::uint8_t* const begin = block_.data() + at_;
    const std::uint8_t* const limit = begin + std::min(end_ - at_, longest_piece);
    const std::uint8_t* const end = std::find_if(begin, limit, ends_line);
    text_ = {reinterpret_cast<const char*>(begin), static_cast<std::size_t>(end - begin)};
    at_ += text_.size();
    begins_ = !inside_;
    inside_ = end == limit && at_ != end_;
    ended_ = end != limit && *end == control_z;
    if (ended_ && begins_ && text_.empty()) return false;
    if (begins_) ++number_;
    if (end == limit || ended_) return true;
    ++at_;
    if (*end == '\r' && at_ != end_ && block_[at_] == '\n') ++at_;
    return true;
}

}  // namespace tamrix
