#include "workbench/hex_view.h"

#include "workbench/byte_search.h"

#include <algorithm>

#include <wx/settings.h>
#include <wx/utils.h>

namespace tamrix::workbench {

namespace {

constexpr int rows_a_wheel_click = 3;
constexpr int smallest_rows = 8, usual_rows = 20;

}  // namespace

hex_view::hex_view(wxWindow* parent)
    : wxWindow{parent, wxID_ANY, wxDefaultPosition, wxDefaultSize,
               wxVSCROLL | wxWANTS_CHARS | wxBORDER_THEME | wxFULL_REPAINT_ON_RESIZE}
{
    SetBackgroundStyle(wxBG_STYLE_PAINT);
    SetFont(wxFont{wxFontInfo(GetFont().GetPointSize()).Family(wxFONTFAMILY_TELETYPE)});
    letter_ = GetTextExtent("0").x;
    row_ = GetCharHeight() + FromDIP(3);
    SetMinClientSize({DoGetBestClientSize().x, smallest_rows * row_});

    Bind(wxEVT_PAINT, [this](wxPaintEvent&) { paint(); });
    Bind(wxEVT_SIZE, [this](wxSizeEvent& event) {
        event.Skip();
        scroll_to(top_);
    });
    for (const auto& kind :
         {wxEVT_SCROLLWIN_TOP, wxEVT_SCROLLWIN_BOTTOM, wxEVT_SCROLLWIN_LINEUP, wxEVT_SCROLLWIN_LINEDOWN,
          wxEVT_SCROLLWIN_PAGEUP, wxEVT_SCROLLWIN_PAGEDOWN, wxEVT_SCROLLWIN_THUMBTRACK, wxEVT_SCROLLWIN_THUMBRELEASE}) {
        Bind(kind, &hex_view::on_scroll, this);
    }
    Bind(wxEVT_MOUSEWHEEL, &hex_view::on_wheel, this);
    Bind(wxEVT_LEFT_DOWN, &hex_view::on_click, this);
    Bind(wxEVT_KEY_DOWN, &hex_view::on_key, this);
    Bind(wxEVT_CHAR, &hex_view::on_char, this);
    const auto repaint = [this](wxFocusEvent& event) {
        event.Skip();
        Refresh(false);
    };
    Bind(wxEVT_SET_FOCUS, repaint);
    Bind(wxEVT_KILL_FOCUS, repaint);
}

wxSize hex_view::DoGetBestClientSize() const
{
    return {character_column(bytes_in_row) + margin + wxSystemSettings::GetMetric(wxSYS_VSCROLL_X),
            (usual_rows + 1) * row_};
}

void hex_view::show(std::span<std::uint8_t> bytes)
{
    bytes_ = bytes;
    caret_ = bytes.empty() ? 0 : std::min(caret_, bytes.size() - 1);
    marked_ = 0;
    second_digit_ = false;
    scroll_to(top_);
    update_scrollbar();
    Refresh(false);
    if (on_move) on_move();
}

void hex_view::go_to(std::size_t address)
{
    if (bytes_.empty()) return;
    caret_ = std::min(address, bytes_.size() - 1);
    marked_ = 0;
    second_digit_ = false;
    keep_caret_in_sight();
    Refresh(false);
    if (on_move) on_move();
}

void hex_view::mark(std::size_t length)
{
    marked_ = length;
    Refresh(false);
}

std::size_t hex_view::rows_in_sight() const
{
    return static_cast<std::size_t>(std::max(1, (GetClientSize().y - row_) / std::max(1, row_)));
}

void hex_view::scroll_to(std::size_t row)
{
    const std::size_t in_sight = rows_in_sight();
    top_ = std::min(row, rows() > in_sight ? rows() - in_sight : 0);
    update_scrollbar();
    Refresh(false);
}

void hex_view::keep_caret_in_sight()
{
    const std::size_t row = caret_ / bytes_in_row;
    if (row < top_) return scroll_to(row);
    if (row >= top_ + rows_in_sight()) scroll_to(row - rows_in_sight() + 1);
}

void hex_view::update_scrollbar()
{
    SetScrollbar(wxVERTICAL, static_cast<int>(top_), static_cast<int>(rows_in_sight()), static_cast<int>(rows()));
}

void hex_view::on_scroll(wxScrollWinEvent& event)
{
    const auto up = [this](std::size_t by) { scroll_to(top_ > by ? top_ - by : 0); };
    const wxEventType kind = event.GetEventType();
    if (kind == wxEVT_SCROLLWIN_TOP) return scroll_to(0);
    if (kind == wxEVT_SCROLLWIN_BOTTOM) return scroll_to(rows());
    if (kind == wxEVT_SCROLLWIN_LINEUP) return up(1);
    if (kind == wxEVT_SCROLLWIN_LINEDOWN) return scroll_to(top_ + 1);
    if (kind == wxEVT_SCROLLWIN_PAGEUP) return up(rows_in_sight());
    if (kind == wxEVT_SCROLLWIN_PAGEDOWN) return scroll_to(top_ + rows_in_sight());
    scroll_to(static_cast<std::size_t>(std::max(0, event.GetPosition())));
}

void hex_view::on_wheel(wxMouseEvent& event)
{
    wheel_rest_ += event.GetWheelRotation();
    const int clicks = wheel_rest_ / std::max(1, event.GetWheelDelta());
    wheel_rest_ -= clicks * event.GetWheelDelta();
    const auto row = static_cast<std::ptrdiff_t>(top_) - clicks * rows_a_wheel_click;
    scroll_to(static_cast<std::size_t>(std::max<std::ptrdiff_t>(0, row)));
}

void hex_view::on_click(wxMouseEvent& event)
{
    SetFocus();
    const int line = event.GetY() / row_ - 1;
    if (line < 0 || bytes_.empty()) return;
    const bool characters = event.GetX() >= character_column(0);
    std::size_t index = 0;
    while (index + 1 < bytes_in_row &&
           event.GetX() >= (characters ? character_column(index + 1) : hex_column(index + 1) - letter_ / 2)) {
        ++index;
    }
    go_to((top_ + static_cast<std::size_t>(line)) * bytes_in_row + index);
}

void hex_view::move(std::ptrdiff_t bytes)
{
    const auto target = static_cast<std::ptrdiff_t>(caret_) + bytes;
    const auto last = static_cast<std::ptrdiff_t>(bytes_.size()) - 1;
    if (target < 0 || target > last) {
        // A step of rows stays in its column, so that the way back leads to the same place.
        const auto column = target % static_cast<std::ptrdiff_t>(bytes_in_row);
        if (std::abs(bytes) == 1) return;
        return go_to(static_cast<std::size_t>(target < 0 ? (column + static_cast<std::ptrdiff_t>(bytes_in_row)) %
                                                               static_cast<std::ptrdiff_t>(bytes_in_row)
                                                         : last));
    }
    go_to(static_cast<std::size_t>(target));
}

void hex_view::on_key(wxKeyEvent& event)
{
    constexpr auto row = static_cast<std::ptrdiff_t>(bytes_in_row);
    const auto page = row * static_cast<std::ptrdiff_t>(rows_in_sight());
    const auto column = static_cast<std::ptrdiff_t>(caret_ % bytes_in_row);
    if (event.AltDown() || bytes_.empty()) return event.Skip();
    switch (event.GetKeyCode()) {
    case WXK_LEFT: return move(-1);
    case WXK_RIGHT: return move(1);
    case WXK_UP: return move(-row);
    case WXK_DOWN: return move(row);
    case WXK_PAGEUP: return move(-page);
    case WXK_PAGEDOWN: return move(page);
    case WXK_HOME: return event.ControlDown() ? go_to(0) : move(-column);
    case WXK_END: return event.ControlDown() ? go_to(bytes_.size()) : go_to(caret_ - caret_ % bytes_in_row + row - 1);
    case WXK_TAB: Navigate(event.ShiftDown() ? 0 : wxNavigationKeyEvent::IsForward); return;
    default: event.Skip();
    }
}

void hex_view::on_char(wxKeyEvent& event)
{
    const int digit = hex_digit(event.GetKeyCode());
    if (digit < 0 || event.HasModifiers() || bytes_.empty()) return event.Skip();
    type_digit(digit);
}

/// The first digit of a byte is its upper half; after the second the caret goes on.
void hex_view::type_digit(int digit)
{
    std::uint8_t& byte = bytes_[caret_];
    byte = static_cast<std::uint8_t>(second_digit_ ? (byte & 0xF0) | digit : (byte & 0x0F) | digit << 4);
    const bool done = second_digit_;
    if (done) {
        move(1);
        second_digit_ = false;
    } else {
        second_digit_ = true;
    }
    Refresh(false);
    if (on_edit) on_edit();
}

}  // namespace tamrix::workbench
