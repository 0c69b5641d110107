#include "pld/jedec_fields.h"

#include <algorithm>
#include <charconv>

namespace tamrix {

namespace {

using enum jedec_field::kind;

/// The number that `digits` write; none where one of them is no digit, or there is none.
std::optional<std::int64_t> number_of(std::string_view digits)
{
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value);
    if (digits.empty() || digits.front() == '-' || error != std::errc{} || end != digits.data() + digits.size()) {
        return std::nullopt;
    }
    return value;
}

bool is_bit_or_blank(char character) { return character == '0' || character == '1' || character == ' '; }

bool holds_only_fuses(std::string_view line) { return line.find_first_not_of("*01 ") == std::string_view::npos; }

bool opens_vectors(std::string_view line) { return line.starts_with("V00") || line.starts_with("*V00"); }

}  // namespace

std::optional<jedec_field> jedec_fields::next()
{
    for (;;) {
        if (auto row = next_row()) return row;
        const auto line = lines_.next();
        if (!line) return std::nullopt;
        if (auto field = field_of(*line)) return field;
    }
}

std::optional<jedec_field> jedec_fields::field_of(std::string_view line)
{
    const std::size_t running = line.find("*L");
    if (in_vectors_ || (running == std::string_view::npos && opens_vectors(line))) {
        const auto vector = vector_of(line);
        in_vectors_ = vector.has_value();
        if (vector) return vector;
    }
    if (line.starts_with('L') || running != std::string_view::npos) {
        rows_ = line.starts_with('L') ? line : line.substr(running + 1);
        if (auto row = next_row()) return row;
    } else if (line.starts_with('E')) {
        return jedec_field{extra_fuses, take_bits(line.substr(1))};
    } else if (line.starts_with('U')) {
        return jedec_field{signature, take_bits(line.substr(1))};
    } else if (bits_go_on_ && holds_only_fuses(line)) {
        return jedec_field{more_bits, take_bits(line)};
    }
    if (fuses_seen_) return std::nullopt;
    return jedec_field{header, line};
}

/// The next fuse row of a line, "L" number blank bits. A word that begins with "L" and has no number is passed over.
std::optional<jedec_field> jedec_fields::next_row()
{
    while (!rows_.empty()) {
        const std::size_t blank = std::min(rows_.find(' '), rows_.size());
        const auto number = number_of(rows_.substr(1, blank - 1));
        const std::string_view bits = number ? take_bits(rows_.substr(blank)) : std::string_view{};
        const std::size_t next = rows_.find("*L");
        rows_.remove_prefix(next == std::string_view::npos ? rows_.size() : next + 1);
        if (!number) continue;
        fuses_seen_ = true;
        return jedec_field{fuses, bits, *number};
    }
    return std::nullopt;
}

/// The bits that `text` begins with. The field goes on in the next line where they end with the text.
std::string_view jedec_fields::take_bits(std::string_view text)
{
    const auto end = std::ranges::find_if_not(text, is_bit_or_blank);
    bits_go_on_ = end == text.end();
    return text.substr(0, static_cast<std::size_t>(end - text.begin()));
}

/// A line of the vector section; none where the line ends it, or is no vector.
std::optional<jedec_field> jedec_fields::vector_of(std::string_view line)
{
    constexpr std::int64_t most_vectors = 3000;
    if (line.starts_with('*')) line.remove_prefix(1);
    const std::size_t blank = line.find(' ');
    if (!line.starts_with('V') || blank == std::string_view::npos) return std::nullopt;
    const auto number = number_of(line.substr(1, blank - 1));
    if (!number || ++vectors_ > most_vectors) return std::nullopt;
    const std::string_view levels = line.substr(blank + 1);
    return jedec_field{vector, levels.substr(0, levels.find('*')), *number};
}

}  // namespace tamrix
