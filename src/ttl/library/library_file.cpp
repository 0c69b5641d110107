#include "ttl/library/library_file.h"

#include "base/arith.h"
#include "base/ascii.h"
#include "files/file_io.h"

#include <algorithm>

namespace tamrix {

namespace {

constexpr std::size_t line_buffer = 3000;

constexpr unsigned char lower(char c) { return static_cast<unsigned char>(ascii::lower(c)); }

std::int64_t hex_value(std::string_view digits) { return arith::parse_hex(without_blanks_around(digits)).value_or(0); }

std::int16_t decimal_value(std::string_view digits)
{
    digits = without_blanks_around(digits);
    int value = 0;
    for (const char c : digits) {
        if (c < '0' || c > '9') return 0;
        value = value * 10 + (c - '0');
    }
    return static_cast<std::int16_t>(value);
}

}  // namespace

std::string library_content(const std::string& path)
{
    if (!exists_or_is_made(path)) return {};
    input_file file{path};
    std::string content(static_cast<std::size_t>(file.length()), '\0');
    content.resize(file.read_at(0, {reinterpret_cast<std::uint8_t*>(content.data()), content.size()}));
    return content;
}

std::optional<std::string_view> library_lines::next()
{
    if (rest_.empty()) return std::nullopt;
    const std::size_t end = rest_.find('\r');
    const std::string_view line = rest_.substr(0, end);
    rest_.remove_prefix(end == std::string_view::npos ? rest_.size() : end + 1);
    if (end != std::string_view::npos && rest_.starts_with('\n')) rest_.remove_prefix(1);
    return line;
}

std::string in_line_buffer(std::string_view line)
{
    std::string whole{line.substr(0, line_buffer)};
    whole.resize(line_buffer, ' ');
    return whole;
}

bool sorts_before(std::string_view left, std::string_view right)
{
    return std::ranges::lexicographical_compare(left, right, {}, lower, lower);
}

std::size_t column_of(std::string_view line, std::string_view text)
{
    const auto same = [](char one, char other) { return lower(one) == lower(other); };
    const auto found = std::search(line.begin(), line.end(), text.begin(), text.end(), same);
    if (found == line.end() && !text.empty()) return 0;
    return static_cast<std::size_t>(found - line.begin()) + 1;
}

bool is_end_line(std::string_view line) { return contains(line, "end-ksm"); }

std::string_view columns(std::string_view line, std::size_t first, std::size_t count)
{
    return first == 0 || first > line.size() ? std::string_view{} : line.substr(first - 1, count);
}

std::optional<std::uint8_t> byte_at(std::string_view line, std::size_t column)
{
    if (column == 0 || column > line.size()) return std::nullopt;
    return static_cast<std::uint8_t>(line[column - 1]);
}

std::string_view without_blanks_around(std::string_view text) { return ascii::trimmed(text, " "); }

std::optional<std::string_view> find_header(library_lines& lines)
{
    while (const auto line = lines.next()) {
        if (contains(*line, "$KSM")) return line;
        if (is_end_line(*line)) break;
    }
    return std::nullopt;
}

std::int32_t device_count(std::string_view header)
{
    return static_cast<std::int32_t>(hex_value(columns(header, 12, 4)));
}

std::optional<directory_entry> directory_entry_at(std::string_view header, std::size_t column)
{
    const auto length = byte_at(header, column);
    if (!length) return std::nullopt;
    const std::string_view name = columns(header, column + 1, *length);
    if (name.size() < *length) return std::nullopt;
    return directory_entry{name, column + 1 + *length};
}

std::int16_t library_record::n() const { return static_cast<std::int16_t>(hex_value(columns(line_, 14, 2))); }

std::int16_t library_record::pins() const { return decimal_value(columns(line_, 17, 2)); }

std::string_view library_record::row(int k) const
{
    const auto pin_count = static_cast<std::size_t>(pins());
    return columns(line_, 20 + static_cast<std::size_t>(k) * (pin_count + 1), pin_count);
}

}  // namespace tamrix
