#include "verify/jedec.h"

#include "base/arith.h"
#include "files/hex_digits.h"
#include "verify/jedec_field_rules.h"
#include "verify/jedec_verifier.h"

#include <algorithm>

namespace tamrix {

using namespace jedec_rules;

jedec_reading jedec_verifier::read()
{
    if (!text_.open()) return std::move(result_);
    read_header();
    while (read_field()) continue;
    line_ = text_.line();
    look_at_whole();
    result_.stated_transmission = text_.close();
    result_.transmission_sum = text_.checksum();
    std::ranges::stable_sort(result_.remarks, {}, &diagnostic::line);  // those on the whole come last so far
    return std::move(result_);
}

/// A file without a header has its first field here: the fuse count is looked for, since nothing works without it.
void jedec_verifier::read_header()
{
    result_.header = text_.to_star(true);
    const std::string_view header = without_blanks_around(result_.header);
    const std::string_view last = header.substr(header.find_last_of("\r\n") + 1);
    if (const auto count = last.starts_with("QF") ? number_of(last.substr(2)) : std::nullopt) {
        line_ = text_.line();
        remark(shown('Q', last.substr(1)) + " in the header", "* ahead of it");
        set_value(result_.stated_count, 'F', *count);
    }
    result_.map.header = std::string{header};
    result_.header = result_.map.header;
}

bool jedec_verifier::read_field()
{
    while (is_blank(text_.peek())) text_.next();
    line_ = text_.line();
    const int letter = text_.next();
    switch (letter) {
    case jedec_text::over: return false;
    case '*': break;  // a field without anything in it
    case 'Q': read_value(); break;
    case 'L': read_rows(); break;
    case 'V': read_vector(); break;
    case 'F': read_default(); break;
    case 'P': read_pins(); break;
    case 'C': read_checksum(); break;
    default:
        if (is_kept_field(letter)) {
            read_kept(static_cast<char>(letter));
        } else {
            const std::string text = text_.to_star(true);
            remark(letter > ' ' && letter < 0x7F ? shown(static_cast<char>(letter), text) : character_name(letter),
                   "a field of the standard");
        }
    }
    return true;
}

void jedec_verifier::read_value()
{
    const std::string text = text_.to_star(false);
    const char which = text.empty() ? '\0' : text.front();
    const auto number = text.empty() ? std::nullopt : number_of(std::string_view{text}.substr(1));
    if (!number || (which != 'F' && which != 'P' && which != 'V')) {
        return remark(shown('Q', text), "QF, QP or QV with a number");
    }
    set_value(which == 'F' ? result_.stated_count : which == 'P' ? stated_pins_ : stated_vectors_, which, *number);
}

void jedec_verifier::set_value(std::optional<std::uint64_t>& value, char which, std::uint64_t number)
{
    constexpr std::uint64_t most_pins = 0xFFFF;
    const std::uint64_t most = which == 'P' ? most_pins : fuse_map::most_fuses;
    if (value) remark(std::string{"a second Q"} + which, "only one");
    if (number > most)
        return remark("Q" + std::string{which} + std::to_string(number), "up to " + std::to_string(most));
    value = number;
    if (which == 'F' && fuses_.size() > fuse_limit()) fuses_.resize(fuse_limit());
}

void jedec_verifier::read_default()
{
    const std::string whole = text_.to_star(false);
    const std::string_view text = without_blanks_around(whole);
    if (text != "0" && text != "1") return remark(shown('F', text), "F0 or F1");
    if (result_.has_default) remark("a second F", "only one");
    if (rows_ != 0) remark("the default of fuses after rows", "F ahead of them");
    result_.has_default = true;
    result_.map.default_fuse = text == "1";
}

void jedec_verifier::read_pins()
{
    const std::string text = text_.to_star(false);
    if (text.find_first_not_of("0123456789 \t\r\n") != std::string::npos)
        return remark(shown('P', text), "a list of pins");
    std::uint64_t count = 0;
    for (std::size_t at = 0; at < text.size(); ++at) {
        const bool ends = at + 1 == text.size() || is_blank(text[at + 1]);
        count += !is_blank(text[at]) && ends;
    }
    if (count != stated_pins_.value_or(0)) remark("pin count " + std::to_string(count), pins_expected());
    result_.map.others.push_back({'P', text});
}

void jedec_verifier::read_checksum()
{
    constexpr std::size_t digits = 4;
    const std::string whole = text_.to_star(false);
    const std::string_view text = without_blanks_around(whole);
    std::uint32_t value = 0;
    bool right = text.size() == digits;
    for (const char one : text) {
        const unsigned digit = hex_digits::digit(static_cast<std::uint8_t>(one));
        right = right && digit < 16;
        value = value * 16 + digit;
    }
    if (!right) return remark(shown('C', text), "C with four digits");
    if (result_.stated_fuse_sum) remark("a second C", "only one");
    result_.stated_fuse_sum = static_cast<std::uint16_t>(value);
    checksum_line_ = line_;
}

void jedec_verifier::read_kept(char letter)
{
    const std::string text = text_.to_star(letter == 'N' || letter == 'U');
    if (const auto expected = expected_of_field(letter, text)) remark(shown(letter, text), *expected);
    result_.map.others.push_back({letter, text});
}

jedec_reading verify_jedec(byte_source& from, const std::string& name) { return jedec_verifier{from, name}.read(); }

}  // namespace tamrix
