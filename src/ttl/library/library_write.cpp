#include "ttl/library/library.h"

#include "base/arith.h"
#include "files/replace_file.h"
#include "messages/message_numbers.h"
#include "session/session.h"
#include "ttl/library/library_file.h"

#include <algorithm>
#include <stdexcept>

namespace tamrix {

namespace {

constexpr std::string_view line_end = "\r\n";
constexpr std::size_t name_width = 12;
/// A library has to hold this many devices to be changed: its last one can be neither deleted nor joined by another.
constexpr std::int32_t fewest_devices = 2;

std::string four_digits(std::int32_t count) { return arith::hex_fixed(static_cast<std::uint64_t>(count), 4); }

/// Appends the lines behind the header as they are kept, the end line included; those that contain `dropped` are left
/// out.
void append_other_lines(std::string& text, library_lines& lines, std::string_view dropped = {})
{
    for (;;) {
        const auto line = lines.next();
        if (!line) throw std::runtime_error{"the vector library has no end line"};
        if (dropped.empty() || !contains(*line, dropped)) text.append(without_blanks_around(*line)).append(line_end);
        if (is_end_line(*line)) return;
    }
}

/// The name of the directory that holds column `q` of the header; empty where the column is none of the directory's.
std::string name_around(std::string_view header, std::size_t q)
{
    if (q < directory_column) return {};
    std::size_t column = directory_column;
    while (const auto entry = directory_entry_at(header, column)) {
        if (q < entry->next_column) return std::string{entry->name};
        column = entry->next_column;
    }
    return {};
}

/// What was found at `q` is no entry of its own: no length byte goes before it.
[[noreturn]] void refuse_to_delete(const std::string& name, std::string_view header, std::size_t q)
{
    const std::string in_the_way = name_around(header, q);
    const std::string refused = name + " cannot be deleted or replaced";
    if (in_the_way.empty()) throw std::runtime_error{refused + ": the header of the library holds the same letters"};
    throw std::runtime_error{refused + " while " + in_the_way + " is in the library, whose name holds it"};
}

bool asked_to_delete(session& plug_in)
{
    return plug_in.screen.box({.text = plug_in.text(message::delete_pattern),
                               .title = plug_in.text(message::edit_pattern),
                               .picture = forms::icon::question,
                               .buttons = forms::buttons_of_box::yes_no,
                               .enter_refuses = true}) == forms::answer::yes;
}

/// The directory with one name more, from its first length byte to the end of the line.
std::string directory_with(std::string_view header, std::int32_t count, std::string_view name)
{
    const std::string entry = static_cast<char>(name.size()) + std::string{name};
    std::size_t column = directory_column;
    for (std::int32_t i = 0; i < count; ++i) {
        const auto old = directory_entry_at(header, column);
        if (!old) throw std::runtime_error{"the directory of the vector library is damaged"};
        if (!sorts_before(old->name, name)) {
            return std::string{columns(header, directory_column, column - directory_column)} + entry +
                   std::string{columns(header, column)};
        }
        column = old->next_column;
    }
    return std::string{columns(header, directory_column, column - directory_column)} + entry + "*";
}

std::string two_decimal_digits(std::int16_t pins)
{
    return pins < 10 ? arith::hex_fixed(static_cast<std::uint64_t>(pins), 2) : std::to_string(pins);
}

std::string record_line(const ttl_variables& ttl, const std::vector<std::string>& rows)
{
    constexpr char length_of_pin_count = 2;
    std::string line = "$" + ttl.ttlname + std::string(name_width - ttl.ttlname.size(), ' ') +
                       arith::hex_fixed(static_cast<std::uint64_t>(ttl.ttlcnt), 2) + length_of_pin_count +
                       two_decimal_digits(ttl.ttlpin);
    for (int i = 0; i <= ttl.ttlcnt - 2; ++i) {
        std::string row = rows.at(static_cast<std::size_t>(i));
        row.resize(static_cast<std::size_t>(ttl.ttlpin), ' ');
        line += static_cast<char>(ttl.ttlpin) + row;
    }
    return line + "*";
}

}  // namespace

bool name_fits(std::string_view name) { return without_blanks_around(name).size() <= name_width; }

bool ttldelete(session& plug_in, const std::string& name, std::uint8_t silent)
{
    if (silent == 0 && !asked_to_delete(plug_in)) return true;
    const std::string path = library_path(plug_in);
    const std::string content = library_content(path);
    library_lines lines{content};
    const auto header = find_header(lines);
    if (!header) return false;
    const std::int32_t count = device_count(*header);
    if (count < fewest_devices) return false;

    // Intentional: the name is looked for anywhere in the line, so one that is part of an earlier name meets that one.
    const std::size_t q = column_of(*header, name);
    const auto length = q == 0 ? std::nullopt : byte_at(*header, q - 1);
    if (!length) return false;
    if (*length > name_width) refuse_to_delete(name, *header, q);
    std::string text{columns(*header, 1, 11)};
    text += four_digits(count - 1);
    if (q - 1 > directory_column) text += columns(*header, directory_column, q - 1 - directory_column);
    text.append(columns(*header, q + *length)).append(line_end);
    append_other_lines(text, lines, name + std::string(name_width - *length, ' '));
    replace_file(path, text);
    return false;
}

void ttlinsert(session& plug_in, ttl_variables& ttl, std::vector<std::string>& list,
               const std::vector<std::string>& rows)
{
    if (!name_fits(ttl.ttlname)) throw std::runtime_error{"the name of a device has at most 12 letters"};
    const bool listed = std::ranges::find(list, ttl.ttlname) != list.end();
    if (listed) ttldelete(plug_in, ttl.ttlname, 1);

    const std::string path = library_path(plug_in);
    const std::string content = library_content(path);
    library_lines lines{content};
    const auto header = find_header(lines);
    if (!header) return;
    const std::int32_t count = device_count(*header);
    if (count < fewest_devices) return;
    ttl.ttlname = std::string{without_blanks_around(ttl.ttlname)};
    std::string text{columns(*header, 1, 11)};
    text += four_digits(count + 1) + directory_with(*header, count, ttl.ttlname);
    text.append(line_end).append(record_line(ttl, rows)).append(line_end);
    append_other_lines(text, lines);
    replace_file(path, text);
    if (!listed) list.push_back(ttl.ttlname);
}

}  // namespace tamrix
