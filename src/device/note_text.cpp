#include "device/note_text.h"

#include "base/arith.h"
#include "base/utf8.h"
#include "messages/message_numbers.h"

#include <algorithm>
#include <vector>

namespace tamrix::notes {

namespace {

constexpr std::size_t blanks_before_heading = 16, least_widening = 4, least_gap = 4;
constexpr std::string_view row_end = "\r\r";  // an empty line separates the rows
constexpr char32_t wide_colon = 0xFF1A;

/// How wide a letter is, in blanks, in the proportional fonts of message boxes.
std::size_t blanks_for(char32_t letter)
{
    constexpr std::u32string_view narrow = U" -.,:Iijlftr", wide = U"mwMW";
    constexpr char32_t first_east_asian = 0x1100;
    if (narrow.find(letter) != narrow.npos) return 1;
    return letter >= first_east_asian || wide.find(letter) != wide.npos ? 3 : 2;
}

struct width_of_row {
    std::size_t label = 0;  // up to its colon
    std::size_t rest = 0;
};

width_of_row width(std::string_view words)
{
    width_of_row result;
    bool behind_colon = false;
    for (std::size_t at = 0; at < words.size();) {
        const auto [letter, length] = utf8::decode(words, at);
        (behind_colon ? result.rest : result.label) += blanks_for(letter);
        behind_colon |= letter == ':' || letter == wide_colon;
        at += length;
    }
    return result;
}

std::string address_text(const address& one, const device_values& device)
{
    return one.digits.empty() ? arith::hex(one.value.of(device)) : std::string{one.digits};
}

std::string place_text(const place& where, const device_values& device, bool without_start = false)
{
    switch (where.what) {
    case place::kind::none: return {};
    case place::kind::one_address: return address_text(where.from, device) + "H";
    case place::kind::text: return std::string{where.text};
    case place::kind::range: break;
    }
    const std::string end = address_text(where.to, device) + "H";
    return without_start ? end : address_text(where.from, device) + "H---" + end;
}

/// The columns of a heading are two blanks or more apart.
forms::box_row heading_row(std::string_view heading, std::size_t blanks_before)
{
    forms::box_cell device = forms::cell_of(heading);
    device.blanks += blanks_before;
    const std::size_t gap = std::min(device.words.find("  "), device.words.size());
    const forms::box_cell buffer = forms::cell_of(std::string_view{device.words}.substr(gap));
    device.words.resize(gap);
    return {.cells = {device, buffer}};
}

/// Moves the blanks at the end of one cell before the next.
void part(forms::box_cell& from, forms::box_cell& to)
{
    const std::size_t kept = from.words.find_last_not_of(' ') + 1;
    to.blanks += from.words.size() - kept;
    from.words.resize(kept);
}

struct row_text {
    std::string device;  // with the label
    std::string buffer;
    bool brings_gap = false;  // the blanks before the buffer's addresses
};

}  // namespace

/// Labels end in one column and the buffer's addresses begin in one: shorter rows are filled up with blanks, as nearly
/// as that goes in a font whose letters differ in width. The first row sets the column of the buffer.
forms::box_table words_of(const note& which, const device_values& device, const std::function<std::string(int)>& text)
{
    std::vector<row_text> rows;
    std::size_t label_width = 0;
    for (const memory& one : which.rows()) {
        const std::string label = one.label != 0 ? text(one.label) : std::string{one.name};
        rows.push_back({.device = label + place_text(one.device, device, one.starts_in_label),
                        .buffer = place_text(one.buffer, device),
                        .brings_gap = one.device.what == place::kind::text});
        label_width = std::max(label_width, width(label).label);
    }
    const std::size_t labels_of_heading = width(text(message::program_memory)).label;
    const std::size_t widening =
        which.long_rows ? std::max(label_width, labels_of_heading + least_widening) - labels_of_heading : 0;
    forms::box_table result{.row_end = std::string{row_end}};
    result.rows.push_back(heading_row(text(message::device_and_buffer), blanks_before_heading + widening));
    const std::size_t column = width(rows.front().device).rest + least_gap;
    for (const row_text& row : rows) {
        const auto [label, rest] = width(row.device);
        forms::box_row shown = forms::row_of(row.device);
        shown.label.blanks += label_width - label;
        forms::box_cell buffer{.words = row.buffer};
        if (!row.brings_gap && !row.buffer.empty()) buffer.blanks = std::max(column, rest + least_gap) - rest;
        part(shown.cells.front(), buffer);
        shown.cells.push_back(buffer);
        result.rows.push_back(shown);
    }
    return result;
}

}  // namespace tamrix::notes
