// The rows and the vectors of a JEDEC file, and what is right only of the whole.
#include "base/arith.h"
#include "verify/jedec_field_rules.h"
#include "verify/jedec_verifier.h"

#include <algorithm>
#include <span>

namespace tamrix {

using namespace jedec_rules;

/// The number that a row or a vector begins with, and the blank after it.
std::optional<std::uint64_t> jedec_verifier::leading_number(std::string& digits)
{
    constexpr std::size_t most_digits = 9;
    while (text_.peek() >= '0' && text_.peek() <= '9' && digits.size() <= most_digits) {
        digits.push_back(static_cast<char>(text_.next()));
    }
    if (digits.empty() || digits.size() > most_digits || !is_blank(text_.peek())) return std::nullopt;
    return number_of(digits);
}

void jedec_verifier::read_rows()
{
    const bool is_first = rows_++ == 0;
    std::string digits;
    const auto fuse = leading_number(digits);
    if (!fuse) {
        const std::string rest = text_.to_star(false);
        return remark(shown('L', digits + rest), "a fuse number and a blank");
    }
    if (is_first && result_.stated_count.value_or(0) == 0) remark("a row of fuses", "the fuse count QF ahead of it");
    read_bits(*fuse);
}

void jedec_verifier::read_bits(std::uint64_t fuse)
{
    const std::uint64_t first = fuse, limit = fuse_limit();
    if (result_.stated_count.value_or(0) != 0) fuses_.resize(limit, not_given);
    bool outside = false, again = false, strange = false;
    const auto store = [&](int bit) {
        std::uint8_t& state = fuses_[fuse];
        if (state == not_given) {
            ++result_.in_rows;
        } else if (!std::exchange(again, true)) {
            text_.remark(text_.line(), "fuse " + std::to_string(fuse) + " again", "each fuse once");
        }
        state = static_cast<std::uint8_t>(bit - '0');
        ++fuse;
    };
    for (;;) {
        if (fuse < fuses_.size()) {
            const auto bits = text_.next_bits(fuses_.size() - fuse);
            const auto states = std::span{fuses_}.subspan(fuse, bits.size());
            if (std::ranges::all_of(states, [](std::uint8_t state) { return state == not_given; })) {
                std::ranges::transform(bits, states.begin(), [](std::uint8_t bit) { return bit & 1; });
                result_.in_rows += bits.size();
                fuse += bits.size();
            } else {
                std::ranges::for_each(bits, store);
            }
        }
        const int one = text_.next();
        if (one == '*') break;
        if (one == jedec_text::over) return text_.remark_no_star();
        if (one != '0' && one != '1') {
            if (is_blank(one) || std::exchange(strange, true)) continue;
            text_.remark(text_.line(), character_name(one), "0 or 1");
        } else if (fuse < limit) {
            if (fuse >= fuses_.size()) fuses_.resize(fuse + 1, not_given);
            store(one);
        } else {
            if (!std::exchange(outside, true)) {
                text_.remark(text_.line(), "fuse " + std::to_string(fuse), "0 to " + std::to_string(limit - 1));
            }
            ++fuse;
        }
    }
    if (fuse == first && !strange) remark("row " + std::to_string(first) + " without fuses", "0 or 1");
}

void jedec_verifier::read_vector()
{
    std::string digits;
    const auto number = leading_number(digits);
    std::string conditions = text_.to_star(false);
    if (!number) return remark(shown('V', digits + conditions), "a vector number and a blank");
    if (*number != last_vector_ + 1) {
        remark("vector " + std::to_string(*number), "vector " + std::to_string(last_vector_ + 1));
    }
    last_vector_ = *number;
    std::erase_if(conditions, [](char one) { return is_blank(one); });
    if (const auto wrong = wrong_condition(conditions)) {
        remark("vector " + std::to_string(*number) + ": " + character_name(static_cast<unsigned char>(*wrong)),
               "a test condition");
    }
    if (conditions.size() != stated_pins_.value_or(0)) {
        remark("vector " + std::to_string(*number) + ": condition count " + std::to_string(conditions.size()),
               pins_expected());
    }
    result_.map.vectors.push_back(std::move(conditions));
}

std::string jedec_verifier::pins_expected() const
{
    return stated_pins_ ? std::to_string(*stated_pins_) : "the count of pins QP ahead of it";
}

void jedec_verifier::look_at_whole()
{
    const auto count = result_.stated_count.value_or(0);
    const bool filled = result_.has_default && count != 0;
    if (rows_ == 0 && result_.map.vectors.empty() && !filled) remark("no fuses and no vectors", "");
    if (!stated_vectors_ && !result_.map.vectors.empty()) remark("vectors without their count", "QV");
    if (stated_vectors_ && *stated_vectors_ != result_.map.vectors.size()) {
        remark("vector count " + std::to_string(result_.map.vectors.size()), std::to_string(*stated_vectors_));
    }
    if (stated_pins_) result_.map.pins = static_cast<std::uint32_t>(*stated_pins_);
    finish_fuses();
    result_.fuse_sum = fuse_checksum(fuses_);
    if (result_.stated_fuse_sum && *result_.stated_fuse_sum != result_.fuse_sum) {
        text_.remark(checksum_line_, "fuse checksum " + arith::hex_fixed(*result_.stated_fuse_sum, 4),
                     arith::hex_fixed(result_.fuse_sum, 4));
    }
}

/// Gives the default to the fuses that no row has.
void jedec_verifier::finish_fuses()
{
    if (const auto count = result_.stated_count.value_or(0)) fuses_.resize(count, not_given);
    const auto first = std::ranges::find(fuses_, not_given);
    if (first == fuses_.end()) return;
    if (!result_.has_default) {
        result_.missing = static_cast<std::uint64_t>(std::ranges::count(fuses_, not_given));
        const std::string from = std::to_string(first - fuses_.begin());
        if (rows_ != 0 || !result_.map.vectors.empty()) {
            remark("fuses without a state: " + std::to_string(result_.missing) + ", the first of them " + from,
                   "a row or F");
        }
    }
    std::replace(first, fuses_.end(), not_given, static_cast<std::uint8_t>(result_.map.default_fuse));
}

}  // namespace tamrix
