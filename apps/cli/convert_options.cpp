#include "cli/convert_options.h"

#include "base/arith.h"
#include "formats/formats.h"
#include "host/languages.h"
#include "messages/catalogue.h"

#include <algorithm>
#include <charconv>
#include <limits>
#include <span>

namespace tamrix::cli {

namespace {

template <class Names>
std::string joined(const Names& names, std::string_view between)
{
    std::string text;
    for (const std::string_view name : names) text += (text.empty() ? "" : std::string{between}) + std::string{name};
    return text;
}

std::vector<std::string_view> format_names(bool loads)
{
    std::vector<std::string_view> names;
    for (const format& one : formats()) {
        if (loads ? one.read != nullptr : one.write != nullptr) names.push_back(one.name);
    }
    return names;
}

/// The index of a format that this version loads, or saves.
std::optional<int> format_index(std::string_view option, const std::optional<std::string>& word, bool loads)
{
    if (!word) return std::nullopt;
    const auto table = formats();
    const auto found = std::ranges::find(table, *word, &format::name);
    const std::string start = std::string{option} + " " + *word + ": ";
    if (found == table.end()) refuse(start + "one of " + joined(format_names(loads), ", ") + " is expected");
    if (loads ? found->read == nullptr : found->write == nullptr) {
        refuse(start + "files of this format cannot be " + (loads ? "loaded" : "saved") +
               "; these can: " + joined(format_names(loads), ", "));
    }
    return static_cast<int>(found - table.begin());
}

template <std::size_t count>
int name_index(std::string_view option, const std::optional<std::string>& word,
               const std::array<std::string_view, count>& names)
{
    if (!word) return 0;
    const auto found = std::ranges::find(names, *word);
    if (found == names.end()) {
        refuse(std::string{option} + " " + *word + ": one of " + joined(names, ", ") + " is expected");
    }
    return static_cast<int>(found - names.begin());
}

bool strip_prefix(std::string_view& text)
{
    const bool prefixed = text.starts_with("0x") || text.starts_with("0X");
    if (prefixed) text.remove_prefix(2);
    return prefixed;
}

/// A hexadecimal number, as the dialogs take them; "0x" before it is allowed.
std::optional<std::int64_t> hexadecimal(std::string_view option, const std::optional<std::string>& word)
{
    if (!word) return std::nullopt;
    std::string_view digits = *word;
    strip_prefix(digits);
    const auto value = digits.empty() ? std::nullopt : arith::parse_hex(digits);
    if (!value) refuse(std::string{option} + " " + *word + ": not a hexadecimal number");
    return value;
}

/// A decimal number, or a hexadecimal one after "0x".
std::optional<std::int64_t> number(std::string_view option, const std::optional<std::string>& word, std::int64_t least,
                                   std::int64_t most)
{
    if (!word) return std::nullopt;
    std::string_view digits = *word;
    const int base = strip_prefix(digits) ? 16 : 10;
    std::int64_t value = 0;
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), value, base);
    if (error != std::errc{} || end != digits.data() + digits.size() || value < least || value > most) {
        refuse(std::string{option} + " " + *word + ": a number from " + std::to_string(least) + " to " +
               std::to_string(most) + " is expected");
    }
    return value;
}

}  // namespace

std::string loadable_formats() { return joined(format_names(true), "|"); }

std::string savable_formats() { return joined(format_names(false), "|"); }

std::int32_t check_language(const std::optional<std::string>& word)
{
    if (!word) return 0;
    const std::optional<std::int32_t> offset = host::language_offset(*word);
    if (!offset) refuse("--language " + *word + ": one of " + host::language_codes() + " is expected");
    if (!has_language(*offset)) {
        refuse("--language " + *word + ": this version has no texts in " +
               std::string{host::find_language(*offset)->english});
    }
    return *offset;
}

convert_options check(const convert_words& words)
{
    constexpr std::int64_t most = std::numeric_limits<std::int32_t>::max();
    constexpr std::int64_t margin = 2200;  // of the buffer's mapping
    convert_options options;
    options.in = words.in;
    options.out = words.out;
    options.from = format_index("--from", words.from, true);
    options.to = format_index("--to", words.to, false);
    options.from_mode = name_index("--from-mode", words.from_mode, mode_names);
    options.to_mode = name_index("--to-mode", words.to_mode, mode_names);
    options.clear = name_index("--clear", words.clear, clear_names);
    options.device_words = number("--device-words", words.device_words, 0, most);
    options.word_bytes = number("--word-bytes", words.word_bytes, 1, 255);
    options.spare_units = number("--spare-units", words.spare_units, 0, 255);
    options.buffer_bytes = number("--buffer-bytes", words.buffer_bytes, 0, most - margin);
    options.to_buffer = hexadecimal("--to-buffer", words.to_buffer);
    options.from_file = hexadecimal("--from-file", words.from_file);
    options.file_size = hexadecimal("--file-size", words.file_size);
    options.save_from = hexadecimal("--save-from", words.save_from);
    options.save_size = hexadecimal("--save-size", words.save_size);
    options.language = check_language(words.language);
    return options;
}

}  // namespace tamrix::cli
