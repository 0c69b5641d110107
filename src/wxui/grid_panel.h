// The window of a grid text: letters in cells. The control paints them and moves the caret; a text field of the
// platform would handle some keys itself.
#pragma once

#include "forms/grid_text.h"
#include "wxui/callback_guard.h"

#include <optional>
#include <string_view>

#include <wx/dc.h>
#include <wx/scrolwin.h>

namespace tamrix::wxui {

class grid_panel final : public wxScrolledCanvas {
public:
    grid_panel(wxWindow* parent, forms::grid_text& shown, callback_guard& guard);

    /// Shows the current state of the control.
    void show_text();
    /// Where a cell is in the window as it is scrolled now; tests of the screen click there.
    wxRect cell(int line, int column) const;
    bool AcceptsFocus() const override { return shown_.takes_keys(); }

private:
    void paint(wxDC& target);
    void paint_line(wxDC& target, std::string_view letters, int first_offset, int y);
    void key(wxKeyEvent& event);
    void press(wxPoint at);
    int offset_next_to(wxPoint in_text) const;
    void keep_caret_in_sight();
    wxSize size_in_cells() const;

    forms::grid_text& shown_;
    wxSize cell_;
    int caret_shown_ = -1;
};

/// The key of that code of the toolkit; none for a letter.
std::optional<forms::grid_key> grid_key_of(int key_code);

}  // namespace tamrix::wxui
