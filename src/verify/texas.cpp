#include "verify/findings.h"
#include "verify/hex_record.h"
#include "verify/record_lines.h"
#include "verify/verifiers.h"

#include "files/hex_digits.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace tamrix {

namespace {

constexpr std::uint64_t address_end = std::uint64_t{1} << 32;

class texas_verifier {
public:
    texas_verifier(byte_source& from, const std::string& name, data_taker& data) : lines_{from}, found_{name, data} {}
    verification read();

private:
    void take_line();
    void take_address(std::string_view text);
    void take_bytes(std::string_view text);
    bool take_byte(std::string_view text, std::size_t at);
    file_place here() const { return in_line(lines_.number()); }

    record_lines lines_;
    findings found_;
    std::optional<std::uint64_t> address_;  // none ahead of the first, and after a damaged one
    bool address_met_ = false;
    bool in_address_ = false;          // in a line that is longer than a piece
    std::vector<std::uint8_t> bytes_;  // of a line
    bool ended_ = false;
};

verification texas_verifier::read()
{
    while (!ended_ && lines_.next()) take_line();
    if (ended_) {
        expect_no_more(lines_, found_);
    } else {
        found_.remark(in_line(lines_.number() + 1), "the end of the file", "a line with \"q\"");
    }
    return found_.result();
}

void texas_verifier::take_line()
{
    const std::string_view text = lines_.text();
    if (lines_.begins()) {
        in_address_ = text.starts_with('@');
        if (in_address_) return take_address(text);
        if (text.starts_with('q')) {
            ended_ = true;
            if (text.size() > 1) found_.remark(here(), character_text(text, 1), "the end of the line");
            return;
        }
    }
    if (!in_address_ && !is_blank(text)) take_bytes(text);
}

/// Four digits, and more where a device has more memory. Damage leaves the data up to the next address without a place.
void texas_verifier::take_address(std::string_view text)
{
    constexpr std::size_t least_digits = 4, most_digits = 8;
    address_met_ = true;
    address_ = std::nullopt;
    std::uint64_t value = 0;
    for (std::size_t at = 1; at < text.size(); ++at) {
        const std::uint8_t digit = hex_digits::digit(static_cast<std::uint8_t>(text[at]));
        if (digit > 15) return found_.remark(here(), character_text(text, at), "a hexadecimal digit");
        value = value << 4 | digit;
    }
    const std::size_t digits = text.size() - 1;
    if (digits >= least_digits && digits <= most_digits) {
        address_ = value;
    } else {
        found_.remark(here(), "an address of " + std::to_string(digits) + " digits", "4 to 8");
    }
}

/// One blank between two bytes; blanks at the end do no harm. After damage the rest of the line is left out, but keeps
/// its place.
void texas_verifier::take_bytes(std::string_view text)
{
    if (!address_) {
        if (!address_met_) found_.remark(here(), "data", "an address ahead of them");
        address_met_ = true;
        return;
    }
    const std::string_view pairs = text.substr(0, text.find_last_not_of(' ') + 1);
    bytes_.clear();
    while (3 * bytes_.size() < pairs.size() && take_byte(pairs, 3 * bytes_.size())) {
    }
    found_.take_in({0, address_end}, here(), *address_, bytes_);
    address_ = (*address_ + (pairs.size() + 2) / 3) % address_end;
}

bool texas_verifier::take_byte(std::string_view text, std::size_t at)
{
    const auto is_digit = [&](std::size_t place) {
        return hex_digits::digit(static_cast<std::uint8_t>(text[place])) < 16;
    };
    for (const std::size_t place : {at, at + 1}) {
        if (place < text.size() && is_digit(place)) continue;
        const std::string found = place < text.size() ? character_text(text, place) : "half a byte";
        found_.remark(here(), found, "a hexadecimal digit");
        return false;
    }
    if (at + 2 < text.size() && text[at + 2] != ' ') {
        found_.remark(here(), character_text(text, at + 2), "' '");
        return false;
    }
    bytes_.push_back(
        static_cast<std::uint8_t>(hex_digits::byte(reinterpret_cast<const std::uint8_t*>(text.data()) + at)));
    return true;
}

}  // namespace

verification verify_texas(byte_source& from, const std::string& name, data_taker& data)
{
    return texas_verifier{from, name, data}.read();
}

}  // namespace tamrix
