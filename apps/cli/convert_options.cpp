#include "cli/convert_options.h"

#include "cli/number_word.h"
#include "formats/formats.h"
#include "host/languages.h"
#include "messages/catalogue.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <limits>
#include <span>

namespace tamrix::cli {

namespace {

constexpr const char* details =
    "Addresses and sizes (HEX) are hexadecimal, counts (N) decimal or hexadecimal after 0x.\n"
    "Every file is verified first: a damaged one is refused, with the places. Addresses and gaps stay as they are; a\n"
    "binary file has none and holds the bytes from the first one on, --save-from 0 makes it an image from address 0.\n"
    "--crop comes first, then --swap, then --offset.\n"
    "The options of the device and of the load take one file through the buffer of a device, in the steps of the load\n"
    "and save dialogs: with --device-words the whole device is saved, and what the file does not fill is FF, or what\n"
    "--clear says.\n";

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
    const auto group = "Device: its buffer takes the file, by the rules of the dialogs";
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
    const auto group = "Load into the buffer of a device";
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
    command
        .add_option("--save-from", words.save_from, "address of the first byte (in the buffer of a device, with one)")
        ->type_name("HEX")
        ->group(group);
    command.add_option("--save-size", words.save_size, "how many bytes")->type_name("HEX")->group(group);
    command
        .add_option("--record-bytes", words.record_bytes, "bytes in a record of a text file, 1 to 255 (default: 32)")
        ->type_name("N")
        ->group(group);
}

}  // namespace

void add_convert_options(CLI::App& command, convert_words& words, const std::string& end_of_help)
{
    command
        .add_option(
            convert_files, words.files,
            "the files to read, and last the one to write; - is standard input or output. FILE@HEX moves what a "
            "file holds by that address, FILE@HEX:even (odd, 1of4 ... 4of4) puts it on these bytes alone")
        ->type_name("")
        ->expected(1, -1);
    add_format_options(command, words);
    add_device_options(command, words);
    add_load_options(command, words);
    add_image_options(command, words.image);
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

/// A device's buffer is loaded from one file, and saved as it is.
static void check_device_alone(const convert_words& words, const convert_options& options)
{
    constexpr const char* why = "the options of the device and of the load take ";
    if (options.inputs.size() > 1 || options.inputs.front().is_placed())
        refuse(why + std::string{"one file, at its place"});
    if (options.inputs.front().is_standard_input() || options.out == "-") refuse(why + std::string{"files, not -"});
    const image_words& image = words.image;
    if (image.crop || image.offset || image.fill || image.swap || image.fill_gaps || words.record_bytes)
        refuse(why + std::string{"no --crop, --offset, --fill, --fill-gaps, --swap and --record-bytes"});
}

std::optional<int> format_to_load(const std::optional<std::string>& word) { return format_index("--from", word, true); }

convert_options check(const convert_words& words)
{
    constexpr std::int64_t most = std::numeric_limits<std::int32_t>::max();
    constexpr std::int64_t margin = 2200;  // of the buffer's mapping
    convert_options options;
    if (words.files.size() < 2) refuse(words.files.empty() ? "IN is required" : "OUT is required");
    for (std::size_t i = 0; i + 1 < words.files.size(); ++i) options.inputs.push_back(checked_input(words.files[i]));
    options.in = options.inputs.front().path;
    options.out = words.files.back();
    options.image = check(words.image);
    options.from = format_to_load(words.from);
    options.to = format_index("--to", words.to, false);
    options.from_mode = name_index("--from-mode", words.from_mode, mode_names);
    options.to_mode = name_index("--to-mode", words.to_mode, mode_names);
    options.clear = name_index("--clear", words.clear, clear_names);
    options.device_words = checked_count("--device-words", words.device_words, 0, most);
    options.word_bytes = checked_count("--word-bytes", words.word_bytes, 1, 255);
    options.spare_units = checked_count("--spare-units", words.spare_units, 0, 255);
    options.buffer_bytes = checked_count("--buffer-bytes", words.buffer_bytes, 0, most - margin);
    options.to_buffer = checked_hexadecimal("--to-buffer", words.to_buffer);
    options.from_file = checked_hexadecimal("--from-file", words.from_file);
    options.file_size = checked_hexadecimal("--file-size", words.file_size);
    options.save_from = checked_hexadecimal("--save-from", words.save_from);
    options.save_size = checked_hexadecimal("--save-size", words.save_size);
    options.record_bytes = checked_count("--record-bytes", words.record_bytes, 1, 255);
    options.language = check_language(words.language);
    options.needs_device = words.device_words || words.word_bytes || words.spare_units || words.buffer_bytes ||
                           words.from_mode || words.to_mode || words.to_buffer || words.from_file || words.file_size ||
                           words.clear;
    if (options.needs_device) check_device_alone(words, options);
    return options;
}

}  // namespace tamrix::cli
