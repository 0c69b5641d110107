#include "verify/record_lines.h"

#include <algorithm>
#include <cstddef>

namespace tamrix {

namespace {

constexpr std::uint8_t control_z = 0x1A;

bool ends_line(std::uint8_t character)
{
    return character <= control_z && (character == '\n' || character == '\r' || character == control_z);
}

}  // namespace

/// After it there is enough for a whole piece, unless the source has ended.
void record_lines::fill()
{
    while (rest_.size() < enough && !source_ended_) {
        if (in_both_ != 0 && rest_.size() <= in_both_) {
            rest_ = block_.subspan(in_both_ - rest_.size());
            in_both_ = 0;
        } else {
            join_next_block();
        }
    }
}

/// A line may begin in one block and end in the next; only there are bytes copied.
void record_lines::join_next_block()
{
    const std::size_t left = rest_.size();
    if (rest_.data() != seam_.data()) std::ranges::copy(rest_, seam_.begin());
    block_ = from_.lend(room_);
    source_ended_ = block_.empty();
    in_both_ = std::min(block_.size(), enough);
    std::ranges::copy(block_.first(in_both_), seam_.begin() + static_cast<std::ptrdiff_t>(left));
    rest_ = std::span{seam_}.first(left + in_both_);
}

std::span<const std::uint8_t> record_lines::ahead()
{
    if (inside_ || ended_) return {};
    fill();
    return rest_;
}

bool record_lines::next()
{
    if (ended_) return false;
    fill();
    if (rest_.empty()) return false;
    const std::uint8_t* const begin = rest_.data();
    const std::uint8_t* const limit = begin + std::min(rest_.size(), longest_piece);
    const std::uint8_t* const end = std::find_if(begin, limit, ends_line);
    text_ = {reinterpret_cast<const char*>(begin), static_cast<std::size_t>(end - begin)};
    rest_ = rest_.subspan(text_.size());
    begins_ = !inside_;
    inside_ = end == limit && !rest_.empty();
    ended_ = end != limit && *end == control_z;
    if (ended_ && begins_ && text_.empty()) return false;
    if (begins_) ++number_;
    if (end == limit || ended_) return true;
    rest_ = rest_.subspan(*end == '\r' && rest_.size() > 1 && rest_[1] == '\n' ? 2 : 1);
    return true;
}

}  // namespace tamrix
