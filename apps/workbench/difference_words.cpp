#include "workbench/difference_words.h"

#include "host/image_text.h"

namespace tamrix::workbench {

namespace {

std::string differing(std::uint64_t bytes) { return host::bytes_text(bytes) + (bytes == 1 ? " differs" : " differ"); }

}  // namespace

std::string difference_words(const editing::difference_counts& counts)
{
    std::string words = "No byte differs";
    if (counts.different_bytes > 0)
        words = differing(counts.different_bytes) + " at " + host::places_text(counts.different_places);
    if (counts.only_in_buffer > 0) words += "; " + host::bytes_text(counts.only_in_buffer) + " only in the buffer";
    if (counts.only_in_file > 0) words += "; " + host::bytes_text(counts.only_in_file) + " only in the file";
    if (counts.above > 0) {
        words += ", " + host::bytes_text(counts.above) + " of them not shown, from " +
                 host::address_text(editing::shown_addresses) + " on";
    }
    return words;
}

std::string place_words(const std::optional<editing::different_place>& place)
{
    if (!place) return "No other difference there";
    const std::uint64_t first = place->where.first, length = place->where.length;
    const std::string where = length == 1 ? host::address_text(first) : host::range_text({first, length});
    switch (place->kind) {
    case editing::difference::only_in_buffer: return where + ": " + host::bytes_text(length) + " only in the buffer";
    case editing::difference::only_in_file: return where + ": " + host::bytes_text(length) + " only in the file";
    case editing::difference::bytes_differ:
    case editing::difference::none: break;
    }
    return where + ": " + differing(length);
}

}  // namespace tamrix::workbench
