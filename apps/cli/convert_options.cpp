#include "cli/convert_options.h"

#include "base/arith.h"
#include "formats/formats.h"
#include "host/languages.h"
#include "messages/catalogue.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <charconv>
#include <limits>
#include <span>

namespace tamrix::cli {

namespace {

constexpr const char* details =
    "Addresses and sizes (HEX) are hexadecimal, counts (N) decimal or hexadecimal after 0x.\n"
    "Without --device-words the file determines the size of the device, and OUT gets what the file filled: in\n"
    "binary an image of the buffer from address 0 on; in a text format from the lowest filled address on, so\n"
    "that addresses do not change. With --device-words the whole device is saved. --save-from and --save-size\n"
    "select another range.\n"
    "What the file does not fill is FF, or what --clear says.\n";

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

void add_format_options(CLI::App& command, convert_words& words)
{
    const auto group = "Formats";
    command.add_option("--from", words.from, "the format of IN (default: detected from its content)")
        ->type_name(joined(format_names(true), "|"))
        ->group(group);
    command.add_option("--to", words.to, "the format of OUT (default: from its extension, else binary)")
        ->type_name(joined(format_names(false), "|"))
        ->group(group);
}

void add_device_options(CLI::App& command, convert_words& words)
{
    const auto group = "Device (default: sized by the file)";
    command.add_option("--device-words", words.device_words, "length of the device in words")
        ->type_name("N")
        ->group(group);
    command.add_option("--word-bytes", words.word_bytes, "width of a word in bytes, 1 to 255")
        ->type_name("N")
        ->group(group);
    command.add_option("--spare-units", words.spare_units, "16-byte units after the main area, 0 to 255")
        ->type_name("N")
        ->group(group);
    command.add_option("--buffer-bytes", words.buffer_bytes, "length of the buffer (default: that of the device)")
        ->type_name("N")
        ->group(group);
}

void add_load_options(CLI::App& command, convert_words& words)
{
    const auto group = "Load";
    const auto modes = "normal|even|odd|1of4|2of4|3of4|4of4";
    command.add_option("--from-mode", words.from_mode, "the bytes of the file to load")->type_name(modes)->group(group);
    command.add_option("--to-mode", words.to_mode, "the bytes of the buffer to fill")->type_name(modes)->group(group);
    command.add_option("--to-buffer", words.to_buffer, "buffer address at which the load starts")
        ->type_name("HEX")
        ->group(group);
    command.add_option("--from-file", words.from_file, "file address at which the load starts")
        ->type_name("HEX")
        ->group(group);
    command.add_option("--file-size", words.file_size, "load at most this many bytes")->type_name("HEX")->group(group);
    command.add_option("--clear", words.clear, "what fills the buffer before the load (default: ff)")
        ->type_name("none|00|ff")
        ->group(group);
}

void add_save_options(CLI::App& command, convert_words& words)
{
    const auto group = "Save";
    command.add_option("--save-from", words.save_from, "buffer address of the first byte")
        ->type_name("HEX")
        ->group(group);
    command.add_option("--save-size", words.save_size, "how many bytes")->type_name("HEX")->group(group);
}

}  // namespace

void add_convert_options(CLI::App& command, convert_words& words, const std::string& end_of_help)
{
    command.add_option("IN", words.in, "the file to load")->type_name("")->required();
    command.add_option("OUT", words.out, "the file to save; an existing file is replaced")->type_name("")->required();
    add_format_options(command, words);
    add_device_options(command, words);
    add_load_options(command, words);
    add_save_options(command, words);
    command.footer(details + ("\n" + end_of_help));
}

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
