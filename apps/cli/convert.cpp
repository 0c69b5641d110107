#include "cli/convert.h"

#include "cli/conversion_plan.h"
#include "cli/convert_dialogs.h"
#include "cli/image_input.h"
#include "cli/output_place.h"
#include "files/background_io.h"
#include "formats/formats.h"
#include "image/image_files.h"

#include <algorithm>

namespace tamrix::cli {

namespace {

constexpr std::uint64_t longest_filled_gap = 16 << 20;
constexpr std::uint64_t longest_filled_range = std::uint64_t{4} << 30;
constexpr std::uint8_t erased = 0xFF;

std::string to_format(const convert_options& options)
{
    if (options.to) return std::string{formats()[static_cast<std::size_t>(*options.to)].name};
    const auto named = format_of_extension(options.out);
    return named ? std::string{formats()[static_cast<std::size_t>(*named)].name} : "binary";
}

/// What --save-from and --save-size choose; else what the image fills.
memory_segment range_to_save(const convert_options& options, const memory_image& image)
{
    const memory_segment all = image.extent();
    const std::uint64_t first = options.save_from ? static_cast<std::uint64_t>(*options.save_from) : all.first;
    if (options.save_size) return {first, static_cast<std::uint64_t>(*options.save_size)};
    return {first, std::max(all.end(), first) - first};
}

[[noreturn]] void refuse_gap(const convert_options& options, const memory_image& image, const memory_segment& range)
{
    constexpr std::size_t most_listed = 20;
    std::string text = options.out + ": would be " + bytes_text(range.length) + " long, with gaps of more than 16 MiB:";
    const auto all = image.filled().all();
    for (std::size_t i = 0; i < std::min(all.size(), most_listed); ++i)
        text += "\n  " + range_text(all[i]) + " (" + bytes_text(all[i].length) + ")";
    if (all.size() > most_listed) text += "\n  and " + std::to_string(all.size() - most_listed) + " more";
    refuse(text + "\n--crop FIRST-LAST takes a part of it, --fill-gaps fills them");
}

void add_start(const convert_options& options, const image_inputs& inputs, const std::string& to, image_form& form,
               console& con)
{
    for (const image_file& file : inputs.files) {
        if (!file.found.start_address) continue;
        const std::uint64_t start = *file.found.start_address + static_cast<std::uint64_t>(options.image.offset);
        if (to != "binary" && !form.start_address) {
            form.start_address = start;
        } else {
            con.note(file.name + ": its start address " + address_text(start) +
                     (to == "binary" ? " is left out; a binary file has no place for it"
                                     : " is left out; the first file has one too"));
        }
    }
}

std::size_t record_bytes(const convert_options& options, const std::string& to)
{
    constexpr std::size_t usual = 32;
    const std::size_t most = most_record_bytes(to);
    if (!options.record_bytes) return usual;
    if (most == 0) refuse("--record-bytes: a binary file has no records");
    if (*options.record_bytes > static_cast<std::int64_t>(most))
        refuse("--record-bytes " + std::to_string(*options.record_bytes) + ": at most " + std::to_string(most) +
               " are possible in this format");
    return static_cast<std::size_t>(*options.record_bytes);
}

void tell_begin(const convert_options& options, const memory_segment& range, console& con)
{
    if (range.first != 0 && range.length != 0 && !options.save_from)
        con.note(options.out + ": begins at " + address_text(range.first) +
                 "; --save-from 0 asks for an image from address 0");
}

/// The image with the gaps that are to be filled, and nothing outside the range.
memory_image filled_image(const convert_options& options, const memory_image& image, const memory_segment& range)
{
    if (range.length > longest_filled_range)
        refuse(options.out + ": would be " + bytes_text(range.length) + " long; at most 4 GiB are filled");
    memory_image made = cropped(image, range);
    fill_gaps(made, range, options.image.fill.value_or(erased));
    return made;
}

/// It has a part that goes after the words of a device.
void convert_holtek(const convert_options& options, console& con)
{
    if (options.inputs.size() > 1 || options.inputs.front().is_standard_input() || options.out == "-")
        refuse(options.inputs.front().path + ": a Holtek image goes through a device, which takes one file and no -");
    convert_through_dialogs(options, con);
}

void convert_image(const convert_options& options, console& con)
{
    image_inputs inputs = read_inputs(options.inputs, options.from, options.image.overlap);
    if (inputs.files.front().format == "holtek") return convert_holtek(options, con);
    judge(inputs.files, options.image.accept_damage, con);
    apply(options.image, inputs.image);
    const std::string to = to_format(options);
    const memory_segment range = range_to_save(options, inputs.image);
    image_form form{.record_bytes = record_bytes(options, to)};
    add_start(options, inputs, to, form, con);
    const bool fills = to == "binary" || options.image.fill || options.image.fill_gaps;
    if (fills && !options.image.fill_gaps && !options.save_from && !options.save_size &&
        !gaps_in(inputs.image, range, longest_filled_gap + 1).empty())
        refuse_gap(options, inputs.image, range);
    if (!options.to && options.out != "-" && !format_of_extension(options.out))
        con.note(options.out + ": saved as binary; --to takes another format");
    if (to == "binary") tell_begin(options, range, con);
    const bool ranged = options.save_from || options.save_size;
    if (fills ? !gaps_in(inputs.image, range).empty() || ranged : ranged)
        inputs.image = fills ? filled_image(options, inputs.image, range) : cropped(inputs.image, range);

    output_place place{options.out};
    try {
        write_later target{place.target()};
        image_writer_of(to)(inputs.image, form, target);
        target.finish();
        place.finish();
    } catch (const image_error& error) {
        fail(options.out + ": " + error.what());
    } catch (const file_error& error) {
        fail(error.what());
    }
    for (const image_file& file : inputs.files)
        con.status(file.name + ": " + file.format + ", " + extent_text(file.filled));
    con.status(place.name() + ": " + to + ", " + extent_text(inputs.image.filled()));
}

}  // namespace

void convert(const convert_options& options, console& con)
{
    if (options.out == "-") con.data_on_output();
    if (options.needs_device) {
        convert_through_dialogs(options, con);
    } else {
        convert_image(options, con);
    }
}

}  // namespace tamrix::cli
