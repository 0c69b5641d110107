#include "cli/conversion_plan.h"

#include "base/arith.h"
#include "formats/binary.h"
#include "formats/byte_selection.h"

#include <algorithm>
#include <limits>

namespace tamrix::cli {

namespace {

constexpr int binary = 0;
constexpr std::int64_t largest_mapped = large_image_bytes - 1;  // a longer buffer is mapped in part only
constexpr std::int64_t largest_device =
    std::numeric_limits<std::int32_t>::max() / large_chunk_bytes * large_chunk_bytes;
constexpr std::int64_t largest_text_device = 8400000;  // in words; above it the save dialog offers "Binary" only

std::int64_t divided_up(std::int64_t value, std::int64_t by) { return (value + by - 1) / by; }

int address_bytes(const source_file& source)
{
    return formats()[static_cast<std::size_t>(source.format)].address_bytes;
}

/// From which byte of the file the load starts.
std::int64_t file_start(const convert_options& options, const source_file& source)
{
    return address_bytes(source) * options.from_file.value_or(0);
}

/// The buffer addresses that the file's bytes reach under the byte selections.
address_range in_buffer(const convert_options& options, const source_file& source)
{
    const byte_selection& from = byte_selections.at(static_cast<std::size_t>(options.from_mode));
    const byte_selection& to = byte_selections.at(static_cast<std::size_t>(options.to_mode));
    const std::int64_t bufstart = options.to_buffer.value_or(0);
    const std::int64_t filestart = file_start(options, source);
    const address_range file = source.addresses.value_or(address_range{});
    const std::int64_t before = std::max<std::int64_t>(file.begin - filestart, 0) / from.step;
    const std::int64_t length = std::max<std::int64_t>(file.end - filestart, 0);
    std::int64_t taken = source.format == binary ? length / from.step : divided_up(length, from.step);
    taken = std::min(taken, options.file_size.value_or(taken));
    return {bufstart + to.step * std::min(before, taken), bufstart + to.step * taken};
}

/// True where the load is of the kind that a large image can do: whole, from start to start.
bool takes_whole_file(const convert_options& options)
{
    return options.to_buffer.value_or(0) == 0 && options.from_file.value_or(0) == 0 && !options.file_size &&
           options.from_mode == 0 && options.to_mode == 0 && options.spare_units.value_or(0) == 0 &&
           !options.word_bytes;
}

[[noreturn]] void refuse_size(const convert_options& options, const source_file& source, std::int64_t needed)
{
    const address_range file = source.addresses.value_or(address_range{});
    const bool starts_high = file.begin > file_start(options, source) && file.end - file.begin <= largest_mapped;
    std::string text = options.in + ": needs a buffer of " + arith::hex(needed) + " bytes, more than there can be (" +
                       arith::hex(largest_mapped) + "); ";
    refuse(text + (starts_high ? "--from-file " + arith::hex(file.begin / address_bytes(source)) +
                                     " leaves out the empty bytes before its data"
                               : "--from-file and --file-size take a part of it"));
}

void size_by_hand(conversion_plan& plan, const convert_options& options)
{
    const std::int64_t image = *options.device_words * plan.word_bytes + 16 * std::int64_t{plan.spare_units};
    const std::int64_t buffer = options.buffer_bytes.value_or(image);
    constexpr std::int64_t margin = 2200;
    if (buffer > std::numeric_limits<std::int32_t>::max() - margin) {
        refuse("--device-words " + std::to_string(*options.device_words) + ": a device of " + std::to_string(image) +
               " bytes, less than 2 GiB is expected");
    }
    plan.device_words = static_cast<std::int32_t>(*options.device_words);
    plan.buffer_bytes = static_cast<std::int32_t>(buffer);
}

/// A device whose image is too large for the buffer's mapping: whole parts, since a part that is not whole is not
/// loaded.
void size_large(conversion_plan& plan, std::int64_t image)
{
    plan.device_words = static_cast<std::int32_t>(divided_up(image, large_chunk_bytes) * large_chunk_bytes);
    plan.buffer_bytes = plan.device_words;
}

void size_by_file(conversion_plan& plan, const convert_options& options, const source_file& source, std::int64_t end)
{
    const std::int64_t spare = 16 * std::int64_t{plan.spare_units};
    if (end + spare > largest_mapped && !options.buffer_bytes) {
        const bool large = source.format == binary && plan.to == binary && takes_whole_file(options);
        if (!large || end > largest_device) refuse_size(options, source, end + spare);
        return size_large(plan, end);
    }
    const std::int64_t buffer = options.buffer_bytes.value_or(end + spare);
    const std::int64_t image = std::clamp<std::int64_t>(end, 0, std::max<std::int64_t>(buffer - spare, 0));
    if (!options.word_bytes) {
        // Wider words keep the count where text formats can still be saved.
        while (divided_up(image, plan.word_bytes) > largest_text_device && plan.word_bytes < 128) plan.word_bytes *= 2;
    }
    plan.device_words = static_cast<std::int32_t>(divided_up(image, plan.word_bytes));
    plan.buffer_bytes =
        static_cast<std::int32_t>(std::max(buffer, options.buffer_bytes ? 0 : plan.device_bytes() + spare));
}

void plan_save(conversion_plan& plan, const convert_options& options, const address_range& filled)
{
    const std::int64_t image = plan.device_bytes() + 16 * std::int64_t{plan.spare_units};
    const std::int64_t limit = std::min<std::int64_t>(image, plan.buffer_bytes);
    const std::int64_t end = options.device_words ? limit : std::min(filled.end, limit);
    const bool keep_start = plan.to == binary || options.device_words;
    plan.save_from = options.save_from.value_or(keep_start ? 0 : std::min(filled.begin, end));
    plan.save_size = options.save_size.value_or(std::max<std::int64_t>(end - plan.save_from, 0));
    plan.through_temporary_file = plan.device_words >= large_image_bytes && plan.buffer_bytes >= large_chunk_bytes;
    if (!plan.through_temporary_file) return;
    if (options.save_from) refuse("--save-from: an image of this size is saved whole");
    if (options.save_size) refuse("--save-size: an image of this size is saved whole");
}

void add_notes(conversion_plan& plan, const convert_options& options, const source_file& source,
               const address_range& filled)
{
    if (!source.addresses || source.addresses->begin == source.addresses->end) {
        plan.notes.push_back(options.in + ": no data in it");
        return;
    }
    const std::int64_t limit = plan.device_bytes() + 16 * std::int64_t{plan.spare_units};
    if (filled.end > limit) {
        plan.notes.push_back(options.in + ": reaches to " + arith::hex(filled.end - 1) +
                             " in the buffer; what lies beyond the end of the device (" + arith::hex(limit) +
                             ") is left out");
    }
    const address_range& file = *source.addresses;
    const bool mostly_empty = file.begin > file.end - file.begin && file.begin >= 0x1000;
    if (plan.to == binary && mostly_empty && !options.from_file && !options.save_from) {
        plan.notes.push_back(options.in + ": its data start at " + arith::hex(file.begin) + "; --from-file " +
                             arith::hex(file.begin / address_bytes(source)) +
                             " leaves out the empty bytes before them");
    }
    if (!options.to && !format_of_extension(options.out)) {
        plan.notes.push_back(options.out + ": saved as binary; --to takes another format");
    }
}

}  // namespace

source_file look_at(const convert_options& options)
{
    source_file source;
    source.format = options.from ? *options.from : detect_format(options.in).index;
    const format& which = formats()[static_cast<std::size_t>(source.format)];
    if (which.estimate != nullptr) source.addresses = which.estimate(options.in);
    source.estimated = source.addresses.has_value();
    if (!source.estimated) measure(options, source);
    return source;
}

void measure(const convert_options& options, source_file& source)
{
    source.addresses = formats()[static_cast<std::size_t>(source.format)].measure(options.in);
    source.estimated = false;
}

std::optional<int> format_of_extension(const std::string& path)
{
    for (int index = 0; const format& one : formats()) {
        if (one.write != nullptr && has_extension(one, path)) return index;
        ++index;
    }
    return std::nullopt;
}

conversion_plan plan_conversion(const convert_options& options, const source_file& source)
{
    conversion_plan plan;
    plan.from = source.format;
    plan.to = options.to ? *options.to : format_of_extension(options.out).value_or(binary);
    plan.word_bytes = static_cast<std::uint8_t>(options.word_bytes.value_or(1));
    plan.spare_units = static_cast<std::uint8_t>(options.spare_units.value_or(0));
    const address_range filled = in_buffer(options, source);
    if (formats()[static_cast<std::size_t>(plan.from)].name == "holtek" && !options.device_words) {
        refuse(options.in +
               ": --device-words is expected; a Holtek image has a part that goes after the device's words");
    }
    if (options.device_words) {
        size_by_hand(plan, options);
    } else {
        size_by_file(plan, options, source, filled.end);
    }
    plan.file_fills_buffer = source.format == binary && takes_whole_file(options) && plan.buffer_bytes == filled.end;
    plan_save(plan, options, filled);
    add_notes(plan, options, source, filled);
    return plan;
}

}  // namespace tamrix::cli
