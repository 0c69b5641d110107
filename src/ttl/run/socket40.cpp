#include "ttl/run/socket40.h"

#include <array>
#include <cstddef>
#include <optional>

namespace tamrix {

namespace {

/// A letter, or nothing.
using position = std::optional<char>;

/// Both columns read upward from the bottom.
struct columns {
    std::array<position, 24> left{}, right{};

    position& at(hw::column_place place) { return (place.right ? right : left)[place.up]; }
    const position& at(hw::column_place place) const { return (place.right ? right : left)[place.up]; }
};

std::string_view without_blanks(std::string_view text)
{
    const auto first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

columns columns_of(std::string_view text)
{
    columns both;
    const std::size_t half = text.size() / 2;
    for (std::size_t i = 0; i < half && i < both.left.size(); ++i) {
        both.left[i] = text[half - 1 - i];
        both.right[i] = text[half + i];
    }
    return both;
}

/// Left column downward, right column upward; what is empty adds nothing.
std::string text_of(const columns& both, std::size_t half)
{
    std::string text;
    for (std::size_t k = half; k-- > 0;) {
        if (both.left[k]) text += *both.left[k];
    }
    for (std::size_t k = 0; k < half; ++k) {
        if (both.right[k]) text += *both.right[k];
    }
    return text;
}

/// Both columns up to `half`, each place from where its wire leads.
columns rewired(const columns& from, hw::column_place (&source)(hw::column_place), std::size_t half)
{
    columns to;
    for (const bool right : {false, true}) {
        for (std::size_t up = 0; up < half; ++up) to.at({right, up}) = from.at(source({right, up}));
    }
    return to;
}

/// Half the device's pins from half a socket text. Socket texts of 40 letters reach none of the changed sizes: the
/// table is used for shorter ones.
constexpr std::size_t device_half(std::size_t half)
{
    if (half >= 5 && half <= 9) return half + 4;
    if (half == 10) return 13;
    if (half >= 11 && half <= 14) return half + 2;
    if (half < 5 || half == 15) return half + 1;
    return half;
}

void add_socket_letter(row_bytes& bytes, char letter, const hw::port_bit& bit)
{
    if (letter == unused_position || add_common_letter(bytes, letter, bit)) return;
    if (letter != '1') gain(bytes.drvmask[bit.port], bit.mask);
    gain(bytes.drvdata[bit.port], bit.mask);
    gain(bytes.expect[bit.port], bit.mask);
}

}  // namespace

std::string tosocket40(std::string_view row)
{
    row = without_blanks(row);
    if (row.size() % 2 != 0) return std::string{row};
    columns socket = rewired(columns_of(row), hw::device_place_at, hw::span_of_40.half);
    for (std::size_t k = 0; k < hw::span_of_40.half; ++k) {
        if (!socket.left[k]) socket.left[k] = unused_position;
        if (!socket.right[k]) socket.right[k] = unused_position;
    }
    return text_of(socket, hw::span_of_40.half);
}

std::string fromsocket40(std::string_view text)
{
    text = without_blanks(text);
    if (text.size() % 2 != 0) return std::string{text};
    if (text.size() > 2 * hw::crossed_rows) text = text.substr(4, 2 * hw::crossed_rows);
    columns socket = columns_of(text);
    const std::size_t half = text.size() / 2;
    if (half < hw::crossed_rows) socket.right[15] = unused_position;  // where the lowest left pin would be
    for (std::size_t k = 0; k < half; ++k) {
        if (socket.left[k] == unused_position) socket.left[k].reset();
        if (socket.right[k] == unused_position) socket.right[k].reset();
    }
    const columns device = rewired(socket, hw::socket_place_of, hw::crossed_rows);
    std::size_t shown = 0;
    while (shown < device_half(half) && (device.left[shown] || device.right[shown])) ++shown;
    return text_of(device, shown);
}

row_bytes bytes_of_socket_row(std::string_view ttlmap, forced_position forced)
{
    constexpr std::size_t tied_group = 3;
    constexpr std::uint8_t tied = 32;
    row_bytes bytes;
    if (forced == forced_position::from_the_start)
        bytes.drvmask[tied_group] = bytes.drvdata[tied_group] = bytes.expect[tied_group] = tied;
    for (int i = 0; i < hw::span_of_40.positions; ++i) {
        const char letter = letter_at(ttlmap, i);
        add_socket_letter(bytes, letter, hw::bit_of_position(i, hw::span_of_40.half));
        if (letter == 'V' && forced == forced_position::with_the_v) gain(bytes.drvmask[tied_group], tied);
    }
    return bytes;
}

bool mark_socket_failures(std::string_view ttlmap, const hw::port_bytes& expect, const hw::port_bytes& readback,
                          std::string& result)
{
    std::string seen{ttlmap};
    const bool failed = mark_failures(ttlmap, hw::span_of_40, expect, readback, seen);
    result = fromsocket40(seen);
    return failed;
}

}  // namespace tamrix
