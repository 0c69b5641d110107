// Bytes in hexadecimal and as characters, with a cursor, a selection and typing. It reads only the rows in
// sight, so the number of bytes does not matter.
#pragma once

#include "editing/cursor.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>

#include <wx/dc.h>
#include <wx/timer.h>
#include <wx/window.h>

namespace tamrix::hexview {

/// A bit for each byte of a row; bit 0 is the first one.
using row_bits = std::uint16_t;

class hex_view final : public wxWindow {
public:
    explicit hex_view(wxWindow* parent);

    /// The bytes to show; they must live until the next call. The rows in sight and the cursor stay, as far as there
    /// are bytes. Nothing is selected then, unless they are as many as before.
    void show(std::span<const std::uint8_t> bytes);
    /// Fills a row, or what of it is there, from an address on.
    using row_reader = std::function<void(std::size_t address, std::span<std::uint8_t> row)>;
    /// As above, for so many bytes that do not lie in one piece; they cannot be typed over.
    void show(std::size_t length, row_reader read);
    /// The bytes have other values now.
    void refresh() { Refresh(false); }

    const editing::cursor& cursor() const { return cursor_; }
    /// Moves the cursor to an address and makes it visible; an address beyond the last one is the last one.
    void go_to(std::size_t address);
    /// Selects these bytes and makes the first one visible.
    void select(editing::byte_range range);
    void select_all();

    std::size_t top_row() const { return top_; }
    void scroll_to(std::size_t row);
    /// Has the same rows and columns in sight as the other view of as many bytes, and cursor and selection at the same
    /// place. Calls neither on_move nor on_scrolled, so that two views can follow each other.
    void follow(const hex_view& other);

    /// The cursor or the selection is another one.
    std::function<void()> on_move;
    /// Other rows are in sight.
    std::function<void()> on_scrolled;
    /// The person typed a byte; without this the view is for reading only.
    std::function<void(std::size_t address, std::uint8_t byte)> on_type;
    /// Which bytes of the row that begins with an address are drawn as different; null: none.
    std::function<row_bits(std::size_t address)> different;
    /// Which bytes of that row have a mark of the person; null: none.
    std::function<row_bits(std::size_t address)> marked;
    /// Which bytes of that row are there at all; the others are blank. Null: all.
    std::function<row_bits(std::size_t address)> present;

    bool AcceptsFocus() const override { return true; }
    wxSize DoGetBestClientSize() const override;

private:
    static constexpr int margin = 8;
    struct place {
        std::size_t address;
        editing::column side;
    };
    void show_length(std::size_t length);
    std::size_t rows() const { return (length_ + editing::bytes_in_row - 1) / editing::bytes_in_row; }
    std::size_t rows_in_sight() const;
    void keep_cursor_in_sight();
    void update_scrollbars();
    void moved();

    void paint();
    void paint_header(wxDC& dc) const;
    void paint_row(wxDC& dc, std::size_t row, int y) const;
    void paint_selection(wxDC& dc, std::size_t row, int y) const;
    void paint_address(wxDC& dc, std::size_t row, int y) const;
    void paint_bytes(wxDC& dc, std::size_t row, int y) const;
    void paint_marks(wxDC& dc, std::size_t row, int y) const;
    void paint_cursor(wxDC& dc, int y) const;
    /// Where the letter of that number of a row begins, and how wide so many are, in pixels.
    int place_of_letter(double letter) const { return margin + width_of(letter); }
    int width_of(double letters) const { return static_cast<int>(letters * letter_ + 0.5); }
    /// Which letter of a row the digits of a byte begin with, and which its character is.
    static std::size_t hex_letter(std::size_t index);
    static std::size_t character_letter(std::size_t index);
    int hex_column(std::size_t index) const { return place_of_letter(static_cast<double>(hex_letter(index))); }
    int character_column(std::size_t index) const
    {
        return place_of_letter(static_cast<double>(character_letter(index)));
    }
    int whole_width() const { return character_column(editing::bytes_in_row) + margin; }

    void on_scroll(wxScrollWinEvent& event);
    void on_wheel(wxMouseEvent& event);
    void on_press(wxMouseEvent& event);
    void on_drag(wxMouseEvent& event);
    void end_drag();
    void drag_on();
    place place_at(wxPoint point) const;
    void on_key(wxKeyEvent& event);
    void on_char(wxKeyEvent& event);
    void on_tab(bool backward);
    void type_digit(int digit);
    void type_character(int letter);

    std::span<const std::uint8_t> bytes_;  // empty where read_ fills the rows
    row_reader read_;
    std::size_t length_ = 0;
    editing::cursor cursor_;
    std::size_t top_ = 0;  // the first row in sight
    int left_ = 0;         // pixels that are scrolled out at the left
    int wheel_rest_ = 0;
    wxTimer drag_timer_;  // scrolls on while the mouse is outside with its button down
    wxPoint drag_point_;
    double letter_ = 0;  // pixels of a character, which need not be whole ones
    int row_ = 0;        // and of a row
};

}  // namespace tamrix::hexview
