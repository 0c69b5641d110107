// How the view draws its rows.
#include "hexview/hex_view.h"

#include <algorithm>

#include <wx/dcbuffer.h>
#include <wx/settings.h>

namespace tamrix::hexview {

using editing::bytes_in_row;
using editing::column;

namespace {

constexpr int address_letters = 8;

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

void fill(wxDC& dc, const wxColour& colour, const wxRect& area)
{
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(colour);
    dc.DrawRectangle(area);
}

}  // namespace

int hex_view::hex_column(std::size_t index) const
{
    const int letters = address_letters + 2 + static_cast<int>(index) * 3 + (index >= bytes_in_row / 2 ? 1 : 0);
    return margin + letters * letter_;
}

int hex_view::character_column(std::size_t index) const
{
    return hex_column(bytes_in_row) + letter_ + static_cast<int>(index) * letter_;
}

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
    dc.DrawText("Address", margin, FromDIP(1));
    for (std::size_t i = 0; i < bytes_in_row; ++i) {
        dc.DrawText(wxString::Format("%02X", static_cast<unsigned>(i)), hex_column(i), FromDIP(1));
    }
    dc.DrawText("Characters", character_column(0), FromDIP(1));
}

void hex_view::paint_row(wxDC& dc, std::size_t row, int y) const
{
    const bool cursor_here = cursor_.address() / bytes_in_row == row;
    const int width = std::max(whole_width(), GetClientSize().x);
    if (cursor_here) fill(dc, mix(paper(), accent(), 0.10), {0, y, width, row_});
    paint_selection(dc, row, y);
    dc.SetTextForeground(cursor_here ? ink() : pale_ink());
    dc.DrawText(wxString::Format("%08X", static_cast<unsigned>(row * bytes_in_row)), margin, y + FromDIP(1));
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
    const std::size_t end = std::min({selected.end(), first + bytes_in_row, bytes_.size()});
    if (selected.empty() || begin >= end) return;
    const bool active = HasFocus();
    const auto area = [&](int left, int right, column side) {
        const double part = active && side == cursor_.side() ? 0.45 : 0.25;
        fill(dc, mix(paper(), accent(), part), {left, y, right - left, row_});
    };
    const std::size_t from = begin - first, to = end - 1 - first;
    area(hex_column(from) - letter_ / 2, hex_column(to) + 2 * letter_ + letter_ / 2, column::hexadecimal);
    area(character_column(from), character_column(to) + letter_, column::characters);
}

/// Neighbours of one colour are drawn at once: single letters would take several times as long.
void hex_view::paint_bytes(wxDC& dc, std::size_t row, int y) const
{
    const std::size_t first = row * bytes_in_row;
    const std::size_t count = std::min(bytes_in_row, bytes_.size() - first);
    const row_bits there = present ? present(first) : row_bits{0xFFFF};
    const row_bits others = different ? different(first) : row_bits{0};
    const auto look_of = [&](std::size_t i) {
        if ((others >> i & 1) != 0) return look::different;
        return is_blank(bytes_[first + i]) ? look::blank : look::plain;
    };
    for (std::size_t i = 0; i < count;) {
        const look now = look_of(i);
        const std::size_t begin = i;
        wxString digits, letters;
        for (; i < count && look_of(i) == now && (i == begin || i != bytes_in_row / 2); ++i) {
            const std::uint8_t byte = bytes_[first + i];
            const bool here = (there >> i & 1) != 0;
            digits += here ? wxString::Format("%02X ", static_cast<unsigned>(byte)) : wxString{"   "};
            letters += !here ? ' ' : editing::is_printable(byte) ? static_cast<char>(byte) : '.';
        }
        dc.SetTextForeground(now == look::different ? difference_ink() : now == look::blank ? pale_ink() : ink());
        dc.DrawText(digits, hex_column(begin), y + FromDIP(1));
        dc.DrawText(letters, character_column(begin), y + FromDIP(1));
    }
}

/// A line under the byte, in both columns.
void hex_view::paint_marks(wxDC& dc, std::size_t row, int y) const
{
    const row_bits bits = marked ? marked(row * bytes_in_row) : row_bits{0};
    const int thick = FromDIP(3), top = y + row_ - thick;
    for (std::size_t i = 0; i < bytes_in_row; ++i) {
        if ((bits >> i & 1) == 0) continue;
        fill(dc, difference_ink(), {hex_column(i), top, 2 * letter_, thick});
        fill(dc, difference_ink(), {character_column(i), top, letter_, thick});
    }
}

/// A thick frame in the column where typing goes to, a thin one in the other.
void hex_view::paint_cursor(wxDC& dc, int y) const
{
    if (bytes_.empty()) return;
    const std::size_t index = cursor_.address() % bytes_in_row;
    const bool digits = cursor_.side() == column::hexadecimal;
    const auto frame = [&](int x, int width, bool here) {
        dc.SetPen(wxPen{HasFocus() ? accent() : pale_ink(), here && HasFocus() ? FromDIP(2) : 1});
        dc.SetBrush(*wxTRANSPARENT_BRUSH);
        dc.DrawRectangle(x, y, width, row_);
    };
    frame(hex_column(index) - FromDIP(3), 2 * letter_ + FromDIP(6), digits);
    frame(character_column(index) - 1, letter_ + 2, !digits);
    if (!cursor_.in_second_digit()) return;
    const int line = y + row_ - FromDIP(4);
    dc.DrawLine(hex_column(index) + letter_, line, hex_column(index) + 2 * letter_, line);
}

}  // namespace tamrix::hexview
