// How the view draws its rows.
#include "files/hex_digits.h"
#include "hexview/hex_view.h"

#include <algorithm>
#include <array>
#include <string>

#include <wx/dcbuffer.h>
#include <wx/settings.h>

namespace tamrix::hexview {

using editing::bytes_in_row;
using editing::column;

namespace {

constexpr std::size_t address_letters = 8;

wxColour mix(const wxColour& one, const wxColour& other, double part_of_other)
{
    const auto part = [&](unsigned char a, unsigned char b) {
        return static_cast<unsigned char>(a + (b - a) * part_of_other);
    };
    return {part(one.Red(), other.Red()), part(one.Green(), other.Green()), part(one.Blue(), other.Blue())};
}

wxColour paper() { return wxSystemSettings::GetColour(wxSYS_COLOUR_WINDOW); }
wxColour ink() { return wxSystemSettings::GetColour(wxSYS_COLOUR_WINDOWTEXT); }
wxColour accent() { return wxSystemSettings::GetColour(wxSYS_COLOUR_HIGHLIGHT); }
wxColour pale_ink() { return mix(ink(), paper(), 0.55); }
/// Of bytes that differ: dark on light paper, light on dark.
wxColour difference_ink()
{
    return wxSystemSettings::GetAppearance().IsDark() ? wxColour{255, 170, 90} : wxColour{176, 60, 0};
}

/// Bytes without content are drawn faintly.
bool is_blank(std::uint8_t byte) { return byte == 0x00 || byte == 0xFF; }

void put_digits(std::string& line, std::size_t place, std::uint8_t byte)
{
    hex_digits::encode_number(byte, 2, line.data() + place);
}

void fill(wxDC& dc, const wxColour& colour, const wxRect& area)
{
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(colour);
    dc.DrawRectangle(area);
}

}  // namespace

std::size_t hex_view::hex_letter(std::size_t index)
{
    return address_letters + 2 + index * 3 + (index >= bytes_in_row / 2 ? 1 : 0);
}

std::size_t hex_view::character_letter(std::size_t index) { return hex_letter(bytes_in_row) + 1 + index; }

void hex_view::paint()
{
    wxAutoBufferedPaintDC dc{this};
    dc.SetBackground(paper());
    dc.Clear();
    dc.SetDeviceOrigin(-left_, 0);
    dc.SetFont(GetFont());
    paint_header(dc);
    const std::size_t last = std::min(rows(), top_ + rows_in_sight() + 1);
    int y = row_ + FromDIP(2);
    for (std::size_t row = top_; row < last; ++row, y += row_) paint_row(dc, row, y);
}

void hex_view::paint_header(wxDC& dc) const
{
    const int width = std::max(whole_width(), GetClientSize().x);
    fill(dc, mix(paper(), ink(), 0.06), {0, 0, width, row_});
    dc.SetTextForeground(pale_ink());
    std::string line(character_letter(0), ' ');
    line.replace(0, 7, "Address");
    for (std::size_t i = 0; i < bytes_in_row; ++i) put_digits(line, hex_letter(i), static_cast<std::uint8_t>(i));
    dc.DrawText(line + "Characters", margin, FromDIP(1));
}

void hex_view::paint_row(wxDC& dc, std::size_t row, int y) const
{
    const bool cursor_here = cursor_.address() / bytes_in_row == row;
    const int width = std::max(whole_width(), GetClientSize().x);
    if (cursor_here) fill(dc, mix(paper(), accent(), 0.10), {0, y, width, row_});
    paint_selection(dc, row, y);
    paint_address(dc, row, y);
    paint_bytes(dc, row, y);
    paint_marks(dc, row, y);
    if (cursor_here) paint_cursor(dc, y);
}

/// A selection is one area in each column, without seams between its bytes.
void hex_view::paint_selection(wxDC& dc, std::size_t row, int y) const
{
    const editing::byte_range selected = cursor_.selection();
    const std::size_t first = row * bytes_in_row;
    const std::size_t begin = std::max(selected.first, first);
    const std::size_t end = std::min({selected.end(), first + bytes_in_row, length_});
    if (selected.empty() || begin >= end) return;
    const bool active = HasFocus();
    const auto area = [&](int left, int right, column side) {
        const double part = active && side == cursor_.side() ? 0.45 : 0.25;
        fill(dc, mix(paper(), accent(), part), {left, y, right - left, row_});
    };
    const std::size_t from = begin - first, to = end - 1 - first;
    area(hex_column(from) - width_of(0.5), hex_column(to) + width_of(2.5), column::hexadecimal);
    area(character_column(from), character_column(to) + width_of(1), column::characters);
}

void hex_view::paint_address(wxDC& dc, std::size_t row, int y) const
{
    std::string address(address_letters, '0');
    hex_digits::encode_number(row * bytes_in_row, static_cast<int>(address_letters), address.data());
    dc.SetTextForeground(cursor_.address() / bytes_in_row == row ? ink() : pale_ink());
    dc.DrawText(address, margin, y + FromDIP(1));
}

/// All bytes of one colour are drawn as one line with blanks between them: to draw them one by one takes ten times as
/// long.
void hex_view::paint_bytes(wxDC& dc, std::size_t row, int y) const
{
    const std::size_t first = row * bytes_in_row;
    const std::size_t count = std::min(bytes_in_row, length_ - first);
    std::array<std::uint8_t, bytes_in_row> bytes{};
    if (read_) {
        read_(first, std::span{bytes}.first(count));
    } else {
        std::ranges::copy(bytes_.subspan(first, count), bytes.begin());
    }
    const row_bits there = present ? present(first) : row_bits{0xFFFF};
    const row_bits others = different ? different(first) : row_bits{0};
    enum look { blank, plain, differs, looks };
    std::array<std::string, looks> lines;
    for (std::size_t i = 0; i < count; ++i) {
        if ((there >> i & 1) == 0) continue;
        const std::uint8_t byte = bytes[i];
        std::string& line = lines[(others >> i & 1) != 0 ? differs : is_blank(byte) ? blank : plain];
        if (line.empty()) line.assign(character_letter(bytes_in_row), ' ');
        put_digits(line, hex_letter(i), byte);
        line[character_letter(i)] = editing::is_printable(byte) ? static_cast<char>(byte) : '.';
    }
    const std::array<wxColour, looks> colours{pale_ink(), ink(), difference_ink()};
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (lines[i].empty()) continue;
        dc.SetTextForeground(colours[i]);
        dc.DrawText(lines[i], margin, y + FromDIP(1));
    }
}

/// A line under the byte, in both columns.
void hex_view::paint_marks(wxDC& dc, std::size_t row, int y) const
{
    const row_bits bits = marked ? marked(row * bytes_in_row) : row_bits{0};
    const int thick = FromDIP(3), top = y + row_ - thick;
    for (std::size_t i = 0; i < bytes_in_row; ++i) {
        if ((bits >> i & 1) == 0) continue;
        fill(dc, difference_ink(), {hex_column(i), top, width_of(2), thick});
        fill(dc, difference_ink(), {character_column(i), top, width_of(1), thick});
    }
}

/// A thick frame in the column where typing goes to, a thin one in the other.
void hex_view::paint_cursor(wxDC& dc, int y) const
{
    if (length_ == 0) return;
    const std::size_t index = cursor_.address() % bytes_in_row;
    const bool digits = cursor_.side() == column::hexadecimal;
    const auto frame = [&](int x, int width, bool here) {
        dc.SetPen(wxPen{HasFocus() ? accent() : pale_ink(), here && HasFocus() ? FromDIP(2) : 1});
        dc.SetBrush(*wxTRANSPARENT_BRUSH);
        dc.DrawRectangle(x, y, width, row_);
    };
    frame(hex_column(index) - FromDIP(3), width_of(2) + FromDIP(6), digits);
    frame(character_column(index) - 1, width_of(1) + 2, !digits);
    if (!cursor_.in_second_digit()) return;
    const int line = y + row_ - FromDIP(4);
    dc.DrawLine(hex_column(index) + width_of(1), line, hex_column(index) + width_of(2), line);
}

}  // namespace tamrix::hexview
