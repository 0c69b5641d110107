// What files hold, and their damage.
#include "cli/image_commands.h"

#include "base/arith.h"
#include "cli/convert_options.h"
#include "cli/json.h"
#include "cli/number_word.h"

#include <algorithm>

namespace tamrix::cli {

namespace {

std::string hex(std::uint64_t value, int digits) { return "0x" + arith::hex_fixed(value, digits); }

struct file_facts {
    image_file file;
    image_sums sums{};
};

file_facts facts_of(const std::string& word, std::optional<int> format)
{
    memory_image image;
    file_facts facts{
        .file = read_image(checked_input(word), format, image),
    };
    facts.sums = sums_of(image);
    return facts;
}

/// How many of the bytes are in a device from address 0 on.
std::uint64_t bytes_below(const segment_list& filled, std::uint64_t device_bytes)
{
    std::uint64_t count = 0;
    for (const memory_segment& one : filled.all()) {
        if (one.first < device_bytes) count += std::min(one.end(), device_bytes) - one.first;
    }
    return count;
}

void tell_device(const file_facts& facts, std::uint64_t device_bytes, console& con)
{
    const segment_list& filled = facts.file.filled;
    const std::uint64_t inside = bytes_below(filled, device_bytes), outside = filled.bytes() - inside;
    con.line("  in a device of " + bytes_text(device_bytes) + ": " + bytes_text(inside));
    if (outside == 0) return;
    const auto all = filled.all();
    const auto first = std::ranges::find_if(all, [&](const memory_segment& one) { return one.end() > device_bytes; });
    const std::uint64_t start = std::max(first->first, device_bytes);
    con.line("  outside it: " + bytes_text(outside) + ", from " + address_text(start) + " on; --from-file " +
             arith::hex(static_cast<std::int64_t>(start)) + " takes them");
}

void tell(const file_facts& facts, const std::optional<std::uint64_t>& device_bytes, console& con)
{
    const image_file& file = facts.file;
    con.line(file.name + ":");
    con.line("  format: " + file.format);
    con.line("  data: " + extent_text(file.filled));
    if (file.filled.all().size() > 1) {
        for (const memory_segment& one : file.filled.all())
            con.line("    " + range_text(one) + " (" + bytes_text(one.length) + ")");
    }
    if (file.found.start_address) con.line("  start address: " + address_text(*file.found.start_address));
    if (!file.found.header.empty()) con.line("  header: " + file.found.header);
    con.line("  sum of bytes: " + hex(facts.sums.sum, 8) + " (16 bits: " + hex(facts.sums.sum & 0xFFFF, 4) + ")");
    con.line("  CRC-32: " + hex(facts.sums.crc32, 8));
    if (device_bytes) tell_device(facts, *device_bytes, con);
    con.line("  damage: " + (file.found.damaged() ? places_text(file.found.remark_count) : "none"));
}

std::string object_of(const file_facts& facts)
{
    const image_file& file = facts.file;
    std::vector<std::string> segments, remarks;
    for (const memory_segment& one : file.filled.all())
        segments.push_back(
            json::object({{"address", std::to_string(one.first)}, {"length", std::to_string(one.length)}}));
    for (const diagnostic& one : file.found.remarks) remarks.push_back(json::string(one.text()));
    return json::object({{"file", json::string(file.name)},
                         {"format", json::string(file.format)},
                         {"bytes", std::to_string(file.filled.bytes())},
                         {"segments", json::array(segments)},
                         {"start_address", file.found.start_address ? std::to_string(*file.found.start_address) : ""},
                         {"header", file.found.header.empty() ? "" : json::string(file.found.header)},
                         {"sum", std::to_string(facts.sums.sum)},
                         {"crc32", json::string(arith::hex_fixed(facts.sums.crc32, 8))},
                         {"damaged_places", std::to_string(file.found.remark_count)},
                         {"remarks", json::array(remarks)}});
}

std::optional<std::uint64_t> device_bytes_of(const file_words& words)
{
    if (!words.device_bytes) return std::nullopt;
    constexpr std::int64_t most = std::int64_t{1} << 40;
    return static_cast<std::uint64_t>(*checked_count("--device-bytes", words.device_bytes, 1, most));
}

}  // namespace

void info(const file_words& words, console& con)
{
    const auto format = format_to_load(words.from);
    const auto device_bytes = device_bytes_of(words);
    std::vector<std::string> objects;
    int unsound = 0;
    for (const std::string& word : words.files) {
        try {
            const file_facts facts = facts_of(word, format);
            if (words.json) {
                objects.push_back(object_of(facts));
            } else {
                tell(facts, device_bytes, con);
                tell_remarks(facts.file.name, facts.file.found, con);
            }
            if (facts.file.found.damaged()) ++unsound;
        } catch (const command_error& error) {
            con.error(error.what());
            ++unsound;
        }
    }
    if (words.json) con.line(json::array(objects));
    if (unsound != 0) throw command_error{exit_failed, ""};  // each has been reported
}

}  // namespace tamrix::cli
