// The buffer in hexadecimal and as characters. It reads only the visible rows, so the size of the buffer does not
// matter.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <span>

#include <wx/dc.h>
#include <wx/window.h>

namespace tamrix::workbench {

class hex_view final : public wxWindow {
public:
    explicit hex_view(wxWindow* parent);

    /// The bytes to show; they must live until the next call. The view does not move.
    void show(std::span<std::uint8_t> bytes);

    std::size_t caret() const { return caret_; }
    /// Moves the caret to an address and makes it visible; an address beyond the end means the last.
    void go_to(std::size_t address);
    /// Marks `length` bytes from the caret on, as the place of what was found.
    void mark(std::size_t length);

    std::function<void()> on_move;
    /// The person typed over a byte.
    std::function<void()> on_edit;

    bool AcceptsFocus() const override { return true; }
    wxSize DoGetBestClientSize() const override;

private:
    static constexpr std::size_t bytes_in_row = 16;
    static constexpr int margin = 8;

    std::size_t rows() const { return (bytes_.size() + bytes_in_row - 1) / bytes_in_row; }
    std::size_t rows_in_sight() const;
    void scroll_to(std::size_t row);
    void keep_caret_in_sight();
    void update_scrollbar();

    void paint();
    void paint_header(wxDC& dc) const;
    void paint_row(wxDC& dc, std::size_t row, int y) const;
    void paint_caret(wxDC& dc, std::size_t address, int y) const;
    int hex_column(std::size_t index) const;
    int character_column(std::size_t index) const;

    void on_scroll(wxScrollWinEvent& event);
    void on_wheel(wxMouseEvent& event);
    void on_click(wxMouseEvent& event);
    void on_key(wxKeyEvent& event);
    void on_char(wxKeyEvent& event);
    void move(std::ptrdiff_t bytes);
    void type_digit(int digit);

    std::span<std::uint8_t> bytes_;
    std::size_t top_ = 0;  // the first visible row
    std::size_t caret_ = 0;
    std::size_t marked_ = 0;     // bytes from the caret on
    bool second_digit_ = false;  // of the byte at the caret is typed next
    int wheel_rest_ = 0;
    int letter_ = 0, row_ = 0;  // pixels of a character and of a row
};

}  // namespace tamrix::workbench
