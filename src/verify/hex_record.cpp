#include "verify/hex_record.h"

#include "base/arith.h"

#include <algorithm>

namespace tamrix {

namespace {

std::string number_text(std::size_t value) { return std::to_string(value); }

}  // namespace

hex_record::hex_record(std::string_view text, std::size_t digits_at) : text_{text}, digits_at_{digits_at}
{
    const std::size_t most = std::min(bytes_.size(), (std::max(text.size(), digits_at) - digits_at) / 2);
    const auto* const digits = reinterpret_cast<const std::uint8_t*>(text.data()) + digits_at;
    while (size_ < most) {
        const int value = hex_digits::byte(digits + 2 * size_);
        if (value < 0) break;
        bytes_[size_++] = static_cast<std::uint8_t>(value);
    }
}

std::uint64_t hex_record::number(std::size_t at, std::size_t count) const
{
    std::uint64_t value = 0;
    for (const std::uint8_t byte : bytes(at, count)) value = value << 8 | byte;
    return value;
}

unsigned hex_record::sum(std::size_t count) const
{
    unsigned total = 0;
    for (const std::uint8_t byte : bytes(0, count)) total += byte;
    return total;
}

bool hex_record::has(std::size_t count, findings& found, file_place where) const
{
    if (size_ >= count) return true;
    std::size_t at = std::min(length_of(size_), text_.size());
    while (at < text_.size() && hex_digits::digit(static_cast<std::uint8_t>(text_[at])) < 16) ++at;
    if (at == text_.size()) {
        found.remark(where, "a line of " + number_text(text_.size()) + " characters", number_text(length_of(count)));
    } else {
        found.remark(where, character_text(text_, at), "a hexadecimal digit");
    }
    return false;
}

void hex_record::expect_end_after(std::size_t count, findings& found, file_place where) const
{
    if (!goes_on_after(count)) return;
    found.remark(where, character_text(text_, length_of(count)), "the end of the line");
}

bool hex_record::expect_checksum(unsigned expected, std::size_t at, findings& found, file_place where) const
{
    if (bytes_[at] == expected) return true;
    if (goes_on_after(at + 1)) {  // then the length is wrong, or what gives it
        found.remark(where, "a line of " + number_text(text_.size()) + " characters", number_text(length_of(at + 1)));
    } else {
        found.remark(where, "checksum " + arith::hex_fixed(bytes_[at], 2), arith::hex_fixed(expected, 2));
    }
    return false;
}

std::string character_text(std::string_view text, std::size_t at)
{
    const auto character = static_cast<unsigned char>(text[at]);
    const bool plain = character >= 0x20 && character < 0x7F;
    const std::string name = plain ? "'" + std::string{text[at]} + "'" : "character " + arith::hex_fixed(character, 2);
    return name + " in column " + number_text(at + 1);
}

bool is_blank(std::string_view text) { return text.find_first_not_of(" \t") == std::string_view::npos; }

bool is_whole_line(const record_lines& lines, findings& found)
{
    if (lines.begins() && lines.ends()) return true;
    if (lines.begins()) {
        found.remark(in_line(lines.number()),
                     "a line of more than " + number_text(record_lines::longest_piece) + " characters", "a record");
    }
    return false;
}

void expect_no_more(record_lines& lines, findings& found)
{
    while (lines.next()) {
        if (is_blank(lines.text())) continue;
        return found.remark(in_line(lines.number()), "a line after the end record", "the end of the file");
    }
}

}  // namespace tamrix
