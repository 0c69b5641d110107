#include "wxui/grid_panel.h"

#include "wxui/letters.h"
#include "wxui/text.h"
#include "wxui/widgets.h"

#include <algorithm>
#include <string>

#include <wx/dcbuffer.h>
#include <wx/settings.h>

namespace tamrix::wxui {

namespace {

constexpr int pad = 4;  // between the edge and the letters

wxColour to_wx_colour(forms::colour value)
{
    const auto part = [value](int shift) { return static_cast<unsigned char>(value >> shift & 0xFF); };
    return {part(16), part(8), part(0)};
}

}  // namespace

std::optional<forms::grid_key> grid_key_of(int key_code)
{
    using forms::grid_key;
    switch (key_code) {
    case WXK_LEFT:
    case WXK_NUMPAD_LEFT: return grid_key::left;
    case WXK_RIGHT:
    case WXK_NUMPAD_RIGHT: return grid_key::right;
    case WXK_UP:
    case WXK_NUMPAD_UP: return grid_key::up;
    case WXK_DOWN:
    case WXK_NUMPAD_DOWN: return grid_key::down;
    case WXK_PAGEUP:
    case WXK_NUMPAD_PAGEUP: return grid_key::page_up;
    case WXK_PAGEDOWN:
    case WXK_NUMPAD_PAGEDOWN: return grid_key::page_down;
    case WXK_HOME:
    case WXK_NUMPAD_HOME: return grid_key::home;
    case WXK_END:
    case WXK_NUMPAD_END: return grid_key::end;
    case WXK_BACK: return grid_key::backspace;
    case WXK_INSERT:
    case WXK_NUMPAD_INSERT: return grid_key::insert;
    case WXK_DELETE:
    case WXK_NUMPAD_DELETE: return grid_key::remove;
    default: return std::nullopt;
    }
}

grid_panel::grid_panel(wxWindow* parent, forms::grid_text& shown, callback_guard& guard)
    : wxScrolledCanvas{parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxBORDER_SIMPLE | wxWANTS_CHARS | wxVSCROLL},
      shown_{shown}
{
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    SetFont(letters_of_one_width());
    GetTextExtent("M", &cell_.x, &cell_.y);
    cell_.y += 1;
    DisableKeyboardScrolling();
    SetScrollRate(0, cell_.y);
    const wxSize cells = size_in_cells();
    const int scroll_bar = std::max(0, wxSystemSettings::GetMetric(wxSYS_VSCROLL_X, this));
    SetMinClientSize({(cells.x + 1) * cell_.x + 2 * pad + scroll_bar, shown_.page_rows() * cell_.y + 2 * pad});
    ShowScrollbars(wxSHOW_SB_NEVER, wxSHOW_SB_DEFAULT);

    Bind(wxEVT_PAINT, [this](wxPaintEvent&) {
        wxAutoBufferedPaintDC target{this};
        paint(target);
    });
    Bind(wxEVT_CHAR, [this, &guard](wxKeyEvent& event) { guard([&] { key(event); }); });
    Bind(wxEVT_LEFT_DOWN, [this, &guard](wxMouseEvent& event) {
        if (AcceptsFocus()) SetFocus();
        guard([&] { press(event.GetPosition()); });
    });
    const auto repaint = [this](wxFocusEvent& event) {
        event.Skip();
        Refresh(false);
    };
    Bind(wxEVT_SET_FOCUS, repaint);
    Bind(wxEVT_KILL_FOCUS, repaint);
}

void grid_panel::show_text()
{
    const wxSize cells = size_in_cells();
    const wxSize whole{1, cells.y * cell_.y + 2 * pad};
    if (GetVirtualSize().y != whole.y) SetVirtualSize(whole);
    if (caret_shown_ != shown_.selection_start()) keep_caret_in_sight();
    caret_shown_ = shown_.selection_start();
    Refresh(false);
}

wxRect grid_panel::cell(int line, int column) const
{
    return {CalcScrolledPosition(wxPoint{pad + column * cell_.x, pad + line * cell_.y}), cell_};
}

wxSize grid_panel::size_in_cells() const
{
    const std::string& text = shown_.text();
    wxSize cells;
    for (std::size_t start = 0; start < text.size(); ++cells.y) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        cells.x = std::max(cells.x, static_cast<int>(end - start));
        start = end + 1;
    }
    return cells;
}

void grid_panel::paint(wxDC& target)
{
    target.SetBackground(wxBrush{to_wx_colour(shown_.background())});
    target.Clear();
    DoPrepareDC(target);
    target.SetFont(GetFont());
    const std::string& text = shown_.text();
    int line = 0;
    for (std::size_t start = 0; start <= text.size(); ++line) {
        const std::size_t end = std::min(text.find('\n', start), text.size());
        const int top = CalcScrolledPosition(wxPoint{0, pad + line * cell_.y}).y;
        const bool seen = top + cell_.y > 0 && top < GetClientSize().y;
        const std::string_view letters = std::string_view{text}.substr(start, end - start);
        if (seen) paint_line(target, letters, static_cast<int>(start), pad + line * cell_.y);
        start = end + 1;
    }
}

/// Each letter goes into its own cell: drawn in one go they drift apart from the ruler by fractions of a pixel.
void grid_panel::paint_line(wxDC& target, std::string_view letters, int first_offset, int y)
{
    const int caret = shown_.selection_start();
    const int last_selected = caret + shown_.selection_length();
    const bool has_focus = HasFocus();
    for (int column = 0; column <= static_cast<int>(letters.size()); ++column) {
        const int offset = first_offset + column;
        const wxRect place{{pad + column * cell_.x, y}, cell_};
        const bool caret_here = offset == caret && shown_.takes_keys();
        const bool marked = (offset >= caret && offset < last_selected) || (caret_here && has_focus);
        if (marked) {
            target.SetPen(*wxTRANSPARENT_PEN);
            target.SetBrush(*wxBLACK_BRUSH);
            target.DrawRectangle(place);
        } else if (caret_here) {
            target.SetPen(*wxBLACK_PEN);
            target.SetBrush(*wxTRANSPARENT_BRUSH);
            target.DrawRectangle(place);
        }
        if (column == static_cast<int>(letters.size())) break;
        target.SetTextForeground(marked ? to_wx_colour(shown_.background()) : *wxBLACK);
        target.DrawText(wxString{letters[static_cast<std::size_t>(column)]}, place.GetPosition());
    }
}

void grid_panel::key(wxKeyEvent& event)
{
    const int code = event.GetKeyCode();
    if (code == WXK_TAB) {
        Navigate(event.ShiftDown() ? wxNavigationKeyEvent::IsBackward : wxNavigationKeyEvent::IsForward);
    } else if (event.AltDown() || event.ControlDown() || event.MetaDown()) {
        event.Skip();
    } else if (const auto known = grid_key_of(code)) {
        shown_.key_down(*known);
    } else if (event.GetUnicodeKey() >= ' ') {
        shown_.type(static_cast<char32_t>(event.GetUnicodeKey()));
    } else {
        event.Skip();
    }
}

void grid_panel::press(wxPoint at)
{
    const wxPoint in_text = CalcUnscrolledPosition(at) - wxPoint{pad, pad};
    const auto scaled = [](int pixels, int cell, int twips) { return std::max(0, pixels) * twips / cell; };
    shown_.press({scaled(in_text.x, cell_.x, forms::grid_text::cell_width),
                  scaled(in_text.y, cell_.y, forms::grid_text::cell_height)},
                 offset_next_to(in_text));
}

/// The caret covers the letter after it, so a press on a letter, on either half, means that letter.
int grid_panel::offset_next_to(wxPoint in_text) const
{
    const std::string& text = shown_.text();
    const int last_line = size_in_cells().y - 1;
    const int line = std::clamp(in_text.y / cell_.y, 0, std::max(0, last_line));
    std::size_t start = 0;
    for (int i = 0; i < line; ++i) start = text.find('\n', start) + 1;
    const std::size_t end = std::min(text.find('\n', start), text.size());
    return static_cast<int>(std::min(start + static_cast<std::size_t>(std::max(0, in_text.x) / cell_.x), end));
}

void grid_panel::keep_caret_in_sight()
{
    const std::string& text = shown_.text();
    const auto before = text.begin() + shown_.selection_start();
    const int line = static_cast<int>(std::count(text.begin(), before, '\n'));
    int first = 0;
    GetViewStart(nullptr, &first);
    const int seen = std::max(1, (GetClientSize().y - 2 * pad) / cell_.y);
    if (line < first) Scroll(-1, line);
    if (line >= first + seen) Scroll(-1, line - seen + 1);
}

namespace {

class grid_text_widget final : public widget {
public:
    grid_text_widget(forms::grid_text& control, wxWindow* parent, callback_guard& guard)
        : control_{control}, panel_{new grid_panel{parent, control, guard}}
    {}

    bool update() override
    {
        panel_->Enable(control_.enabled());
        const bool other_room = panel_->Show(control_.visible());
        panel_->show_text();
        return other_room;
    }
    wxWindow* window() const override { return panel_; }

private:
    forms::grid_text& control_;
    grid_panel* panel_;
};

}  // namespace

widget_ptr make_grid_text(forms::grid_text& control, wxWindow* parent, callback_guard& guard)
{
    return std::make_unique<grid_text_widget>(control, parent, guard);
}

}  // namespace tamrix::wxui
