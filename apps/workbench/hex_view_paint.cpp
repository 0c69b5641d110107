// How the view draws its rows.
#include "workbench/hex_view.h"

#include <algorithm>

#include <wx/dcbuffer.h>
#include <wx/settings.h>

namespace tamrix::workbench {

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

/// Bytes without content are drawn faintly.
bool is_blank(std::uint8_t byte) { return byte == 0x00 || byte == 0xFF; }

wxString hex_of(std::uint8_t byte) { return wxString::Format("%02X", byte); }

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
    dc.SetFont(GetFont());
    paint_header(dc);
    const std::size_t last = std::min(rows(), top_ + rows_in_sight() + 1);
    int y = row_ + FromDIP(2);
    for (std::size_t row = top_; row < last; ++row, y += row_) paint_row(dc, row, y);
}

void hex_view::paint_header(wxDC& dc) const
{
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(mix(paper(), ink(), 0.06));
    dc.DrawRectangle(0, 0, GetClientSize().x, row_);
    dc.SetTextForeground(pale_ink());
    dc.DrawText("Address", margin, FromDIP(1));
    for (std::size_t i = 0; i < bytes_in_row; ++i) {
        dc.DrawText(hex_of(static_cast<std::uint8_t>(i)), hex_column(i), FromDIP(1));
    }
    dc.DrawText("Characters", character_column(0), FromDIP(1));
}

void hex_view::paint_row(wxDC& dc, std::size_t row, int y) const
{
    const std::size_t first = row * bytes_in_row;
    const bool caret_here = caret_ / bytes_in_row == row;
    if (caret_here) {
        dc.SetPen(*wxTRANSPARENT_PEN);
        dc.SetBrush(mix(paper(), accent(), 0.10));
        dc.DrawRectangle(0, y, GetClientSize().x, row_);
    }
    const auto found = [&](std::size_t address) { return address >= caret_ && address < caret_ + marked_; };
    dc.SetTextForeground(caret_here ? ink() : pale_ink());
    dc.DrawText(wxString::Format("%08X", static_cast<unsigned>(first)), margin, y + FromDIP(1));
    for (std::size_t i = 0; i < bytes_in_row && first + i < bytes_.size(); ++i) {
        const std::uint8_t byte = bytes_[first + i];
        if (found(first + i)) {
            dc.SetPen(*wxTRANSPARENT_PEN);
            dc.SetBrush(mix(paper(), accent(), 0.35));
            dc.DrawRectangle(hex_column(i) - letter_ / 2, y, 3 * letter_, row_);
            dc.DrawRectangle(character_column(i), y, letter_, row_);
        }
        const bool printable = byte >= 0x20 && byte < 0x7F;
        dc.SetTextForeground(is_blank(byte) ? pale_ink() : ink());
        dc.DrawText(hex_of(byte), hex_column(i), y + FromDIP(1));
        dc.SetTextForeground(printable ? ink() : pale_ink());
        dc.DrawText(printable ? wxString{static_cast<char>(byte)} : wxString{"."}, character_column(i), y + FromDIP(1));
    }
    if (caret_here && caret_ < bytes_.size()) paint_caret(dc, caret_, y);
}

void hex_view::paint_caret(wxDC& dc, std::size_t address, int y) const
{
    const std::size_t index = address % bytes_in_row;
    dc.SetPen(HasFocus() ? accent() : pale_ink());
    dc.SetBrush(*wxTRANSPARENT_BRUSH);
    dc.DrawRectangle(hex_column(index) - FromDIP(3), y, 2 * letter_ + FromDIP(6), row_);
    dc.DrawRectangle(character_column(index) - 1, y, letter_ + 2, row_);
    if (!second_digit_) return;
    dc.DrawLine(hex_column(index) + letter_, y + row_ - FromDIP(3), hex_column(index) + 2 * letter_,
                y + row_ - FromDIP(3));
}

}  // namespace tamrix::workbench
