#include "verify/jedec_text.h"

#include "base/arith.h"
#include "files/hex_digits.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace tamrix {

bool jedec_text::open()
{
    while (is_blank(in_.peek())) in_.get();
    if (in_.peek() == stx) {
        next();
        return true;
    }
    remark(line(), character_name(in_.peek()), "STX");
    return in_.peek() != characters::end;
}

/// The end of the file, ETX, STX, and characters that no text has. The checksum begins with the first STX.
int jedec_text::special(int one)
{
    if (one == over) {
        at_end_ = true;
        return over;
    }
    if (one == stx && !stx_seen_) {
        stx_seen_ = true;
        sum_ = parity_bits_ = 0;
    }
    sum_ += static_cast<std::uint32_t>(one);
    if (one != etx) return one;
    etx_seen_ = at_end_ = true;
    return over;
}

std::span<const std::uint8_t> jedec_text::next_bits(std::size_t most)
{
    if (at_end_) return {};
    const auto ahead = in_.ahead();
    const auto bits = ahead.first(std::min(most, ahead.size()));
    const auto end = std::ranges::find_if(bits, [](std::uint8_t one) { return (one | 1) != '1'; });
    const auto found = bits.first(static_cast<std::size_t>(end - bits.begin()));
    sum_ = std::accumulate(found.begin(), found.end(), sum_);
    in_.pass(found.size());
    return found;
}

std::string jedec_text::to_star(bool any_letters)
{
    std::string text;
    bool told = false;
    int one = next();
    for (; one != '*' && one != over; one = next()) {
        const bool seen = (one >= ' ' && one < 0x7F) || is_blank(one) || (any_letters && one > 0x7F);
        if (!seen && !told) remark(line(), character_name(one), "text");
        told = told || !seen;
        text.push_back(static_cast<char>(one));
    }
    if (one == over) remark_no_star();
    return text;
}

std::optional<std::uint16_t> jedec_text::close()
{
    if (!etx_seen_) {
        remark(line(), character_name(characters::end), "ETX");
        return std::nullopt;
    }
    const auto stated = stated_checksum();
    if (stated) look_after_checksum();
    // Some tools add up all eight bits of letters beyond ASCII.
    if (stated && *stated != 0 && stx_seen_ && *stated != checksum() && *stated != static_cast<std::uint16_t>(sum_)) {
        remark(line(), "transmission checksum " + arith::hex_fixed(*stated, 4), arith::hex_fixed(checksum(), 4));
    }
    return stated;
}

std::optional<std::uint16_t> jedec_text::stated_checksum()
{
    unsigned value = 0;
    for (int digit = 0; digit < 4; ++digit) {
        const int one = in_.peek();
        const unsigned nibble = one == characters::end ? 0xFF : hex_digits::digit(static_cast<std::uint8_t>(one));
        if (nibble > 0xF) {
            remark(line(), character_name(one), "a transmission checksum of four digits");
            return std::nullopt;
        }
        value = value * 16 + nibble;
        in_.get();
    }
    return static_cast<std::uint16_t>(value);
}

/// Blanks and the end mark of old systems are no text.
void jedec_text::look_after_checksum()
{
    constexpr int control_z = 0x1A;
    while (is_blank(in_.peek()) || in_.peek() == control_z) in_.get();
    if (in_.peek() != characters::end) remark(line(), character_name(in_.peek()), "the end of the file");
}

}  // namespace tamrix
