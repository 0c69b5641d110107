#include "verify/jedec_writer.h"

#include "base/arith.h"

#include <algorithm>
#include <string_view>

namespace tamrix {

namespace {

constexpr std::string_view line_end = "\r\n";

/// A field of its own line.
void add(std::string& text, std::string_view field) { text.append(field).append("*").append(line_end); }

std::string four_digits_or_more(std::size_t number, std::size_t width)
{
    const std::string digits = std::to_string(number);
    return std::string(digits.size() < width ? width - digits.size() : 0, '0') + digits;
}

/// One kind of line end, and none of the characters that end a header.
std::string header_of(const fuse_map& map)
{
    std::string header;
    for (std::size_t at = 0; at < map.header.size(); ++at) {
        const char one = map.header[at];
        const bool is_lf_of_cr = one == '\n' && at != 0 && map.header[at - 1] == '\r';
        if (one == '\r' || (one == '\n' && !is_lf_of_cr)) {
            header += line_end;
        } else if (one != '\n') {
            header += one == '*' || (one >= 0 && one < ' ') ? ' ' : one;
        }
    }
    return header.find_first_not_of(" \r\n") == std::string::npos ? "Fuse map" : header;
}

void add_kept(std::string& text, const fuse_map& map, std::string_view letters)
{
    for (const kept_field& one : map.others) {
        if (letters.find(one.letter) != std::string_view::npos) add(text, one.letter + one.text);
    }
}

void add_counts(std::string& text, const fuse_map& map)
{
    if (map.pins || !map.vectors.empty()) {
        const std::size_t pins = map.pins ? *map.pins : map.vectors.front().size();
        add(text, "QP" + std::to_string(pins));
    }
    if (!map.fuses.empty()) add(text, "QF" + std::to_string(map.fuses.size()));
    if (!map.vectors.empty()) add(text, "QV" + std::to_string(map.vectors.size()));
}

void add_rows(std::string& text, const fuse_map& map, std::size_t row_fuses)
{
    const std::size_t count = map.fuses.size();
    if (count == 0) return;
    const std::size_t width = std::max<std::size_t>(4, std::to_string(count - 1).size());
    for (std::size_t first = 0; first < count; first += row_fuses) {
        text += "L" + four_digits_or_more(first, width) + " ";
        const std::size_t end = std::min(count, first + row_fuses);
        for (std::size_t at = first; at < end; ++at) text.push_back(static_cast<char>('0' + map.fuses[at]));
        add(text, {});
    }
}

void add_vectors(std::string& text, const fuse_map& map)
{
    for (std::size_t at = 0; at < map.vectors.size(); ++at) {
        add(text, "V" + four_digits_or_more(at + 1, 4) + " " + map.vectors[at]);
    }
}

}  // namespace

std::string jedec_file(const fuse_map& map, std::uint32_t row_fuses)
{
    std::string text = "\x02";
    add(text, header_of(map));
    add_kept(text, map, "N");
    add_counts(text, map);
    add_kept(text, map, "DJAG");
    if (!map.fuses.empty()) add(text, map.default_fuse ? "F1" : "F0");
    add_kept(text, map, "X");
    add_rows(text, map, row_fuses);
    add_kept(text, map, "EUP");
    add_vectors(text, map);
    add_kept(text, map, "SRT");
    if (!map.fuses.empty()) add(text, "C" + arith::hex_fixed(fuse_checksum(map.fuses), 4));
    text += '\x03';
    return text + arith::hex_fixed(transmission_checksum(text), 4) + std::string{line_end};
}

}  // namespace tamrix
