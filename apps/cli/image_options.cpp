#include "cli/image_options.h"

#include "cli/console.h"
#include "cli/image_commands.h"
#include "cli/number_word.h"

#include <CLI/CLI.hpp>

#include <stdexcept>
#include <string_view>

namespace tamrix::cli {

namespace {

/// Of an address.
std::optional<std::uint64_t> hexadecimal(std::string_view digits)
{
    const auto value = hexadecimal_in(digits);
    if (!value || static_cast<std::uint64_t>(*value) >= image_address_limit) return std::nullopt;
    return static_cast<std::uint64_t>(*value);
}

memory_segment checked_crop(const std::string& word)
{
    const std::size_t between = word.find_first_of("-+");
    const auto first = hexadecimal(std::string_view{word}.substr(0, between));
    const auto second =
        between == std::string::npos ? std::nullopt : hexadecimal(std::string_view{word}.substr(between + 1));
    const bool is_range = first && second && (word[between] == '-' ? *second >= *first : *second > 0);
    if (!is_range) {
        refuse("--crop " + word +
               ": FIRST-LAST or FIRST+SIZE, both hexadecimal, is expected, such as 8000000-8003FFF or 8000000+4000");
    }
    return {*first, word[between] == '-' ? *second - *first + 1 : *second};
}

std::int64_t checked_offset(const std::string& word)
{
    const bool down = word.starts_with('-');
    const auto value = hexadecimal(std::string_view{word}.substr(down || word.starts_with('+') ? 1 : 0));
    if (!value) refuse("--offset " + word + ": a hexadecimal number, or - and one, is expected");
    return down ? -static_cast<std::int64_t>(*value) : static_cast<std::int64_t>(*value);
}

}  // namespace

void add_image_options(CLI::App& command, image_words& words)
{
    const auto group = "Image";
    command
        .add_option("--crop", words.crop, "take only the addresses FIRST to LAST, or SIZE bytes from FIRST on (HEX)")
        ->type_name("FIRST-LAST|FIRST+SIZE")
        ->group(group);
    command.add_option("--swap", words.swap, "turn the bytes of each 2 or 4 addresses round")
        ->type_name("2|4")
        ->group(group);
    command.add_option("--offset", words.offset, "move all addresses, down where - is before it")
        ->type_name("[-]HEX")
        ->group(group);
    command.add_option("--fill", words.fill, "fill gaps with this byte (in binary files always; default: FF)")
        ->type_name("HEX")
        ->group(group);
    command.add_flag("--fill-gaps", words.fill_gaps, "fill also gaps of more than 16 MiB")->group(group);
    command.add_option("--overlap", words.overlap, "where two files fill the same address, take the last one's bytes")
        ->type_name("last")
        ->group(group);
    command.add_flag("--accept-damage", words.accept_damage, "take damaged files as far as they can be read")
        ->group(group);
}

static void add_from(CLI::App& command, file_words& words)
{
    command.add_option("--from", words.from, "the format of the files (default: detected from their content)")
        ->type_name("FORMAT");
}

void add_info_options(CLI::App& command, file_words& words)
{
    command.add_option("FILE", words.files, "the files to look at; - is standard input")->type_name("")->required();
    add_from(command, words);
    command
        .add_option("--device-bytes", words.device_bytes,
                    "say what of the file lies outside a device of so many bytes, and which --from-file takes it")
        ->type_name("N");
    command.add_flag("--json", words.json, "as one JSON array");
}

void add_compare_options(CLI::App& command, file_words& words)
{
    command
        .add_option("FILE", words.files,
                    "the two files, A and B, in any formats; - is standard input; FILE@HEX moves one")
        ->type_name("")
        ->expected(2)
        ->required();
    add_from(command, words);
    command.add_flag("--list", words.list, "list all addresses that differ, a stretch a line");
    command.add_flag("--accept-damage", words.image.accept_damage, "take damaged files as far as they can be read");
}

void add_dump_options(CLI::App& command, file_words& words)
{
    command.add_option("FILE", words.files, "the file to show; - is standard input")
        ->type_name("")
        ->expected(1)
        ->required();
    add_from(command, words);
    add_image_options(command, words.image);
}

image_options check(const image_words& words)
{
    image_options options;
    if (words.crop) options.crop = checked_crop(*words.crop);
    if (words.offset) options.offset = checked_offset(*words.offset);
    if (words.fill) {
        const auto value = hexadecimal(*words.fill);
        if (!value || *value > 0xFF) refuse("--fill " + *words.fill + ": a byte from 00 to FF is expected");
        options.fill = static_cast<std::uint8_t>(*value);
    }
    if (words.swap) {
        if (*words.swap != "2" && *words.swap != "4") refuse("--swap " + *words.swap + ": 2 or 4 is expected");
        options.swap = *words.swap == "2" ? 2 : 4;
    }
    if (words.overlap) {
        if (*words.overlap != "last") refuse("--overlap " + *words.overlap + ": only last is possible");
        options.overlap = overlap_rule::last;
    }
    options.fill_gaps = words.fill_gaps;
    options.accept_damage = words.accept_damage;
    return options;
}

void apply(const image_options& options, memory_image& image)
{
    if (options.crop) {
        memory_image left = cropped(image, *options.crop);
        if (left.empty()) {
            refuse("--crop: nothing is between " + range_text(*options.crop) + "; there are " +
                   extent_text(image.filled()));
        }
        image = std::move(left);
    }
    if (options.swap != 0) image = swapped(image, options.swap);
    if (options.offset == 0) return;
    try {
        image = moved(image, options.offset);
    } catch (const std::out_of_range&) {
        refuse("--offset: moves " + extent_text(image.filled()) + " below 0 or too high");
    }
}

}  // namespace tamrix::cli
