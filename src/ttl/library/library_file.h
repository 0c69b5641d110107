// The vector library's file as lines and fields. All columns count from 1, as bytes of the line.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace tamrix {

/// The whole file. A missing file is created empty. Throws file_error if it exists and cannot be read.
std::string library_content(const std::string& path);

/// A line ends at CR or CR LF. A lone LF is data: it is the length byte of a 10-pin row or of a name of 10 letters.
class library_lines {
public:
    explicit library_lines(std::string_view content) : rest_{content} {}
    std::optional<std::string_view> next();

private:
    std::string_view rest_;
};

/// The line as most readers hold it: cut or padded with blanks to 3000 characters.
std::string in_line_buffer(std::string_view line);

/// Compares as the library does: ignoring the case of letters.
bool sorts_before(std::string_view left, std::string_view right);
/// Column where `text` begins in `line`, ignoring case; 0 if it is not there.
std::size_t column_of(std::string_view line, std::string_view text);
inline bool contains(std::string_view line, std::string_view text) { return column_of(line, text) != 0; }
bool is_end_line(std::string_view line);

/// Columns `first` on, as far as the line reaches.
std::string_view columns(std::string_view line, std::size_t first, std::size_t count = std::string_view::npos);
/// The byte of one column; none after the end of the line.
std::optional<std::uint8_t> byte_at(std::string_view line, std::size_t column);
std::string_view without_blanks_around(std::string_view text);

/// Reads up to the header and returns it; none if the end line or the end of the file comes first.
std::optional<std::string_view> find_header(library_lines& lines);
/// The header's number of devices, 0 to 65535.
std::int32_t device_count(std::string_view header);

inline constexpr std::size_t directory_column = 16;

/// One entry of the directory.
struct directory_entry {
    std::string_view name;
    std::size_t next_column;
};
/// The entry whose length byte is in `column`; none if it is incomplete.
std::optional<directory_entry> directory_entry_at(std::string_view header, std::size_t column);

/// One device, from a line in the line buffer.
class library_record {
public:
    explicit library_record(std::string_view line) : line_{in_line_buffer(line)} {}

    /// Without the blanks that fill its columns up.
    std::string_view name() const { return without_blanks_around(columns(line_, 2, 12)); }
    std::int16_t n() const;     // rows plus one
    std::int16_t pins() const;  // 0 to 99
    std::string_view row(int k) const;

private:
    std::string line_;
};

}  // namespace tamrix
