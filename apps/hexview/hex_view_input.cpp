// What keys and the mouse do in the view.
#include "files/hex_digits.h"
#include "hexview/hex_view.h"

#include <algorithm>
#include <optional>

#include <wx/utils.h>

namespace tamrix::hexview {

using editing::bytes_in_row;
using editing::column;
using editing::cursor_step;

namespace {

constexpr int rows_a_wheel_click = 3;
constexpr int drag_interval_ms = 40;

std::optional<cursor_step> step_of(int key, bool control)
{
    switch (key) {
    case WXK_LEFT:
    case WXK_NUMPAD_LEFT: return cursor_step::left;
    case WXK_RIGHT:
    case WXK_NUMPAD_RIGHT: return cursor_step::right;
    case WXK_UP:
    case WXK_NUMPAD_UP: return cursor_step::up;
    case WXK_DOWN:
    case WXK_NUMPAD_DOWN: return cursor_step::down;
    case WXK_PAGEUP:
    case WXK_NUMPAD_PAGEUP: return cursor_step::page_up;
    case WXK_PAGEDOWN:
    case WXK_NUMPAD_PAGEDOWN: return cursor_step::page_down;
    case WXK_HOME:
    case WXK_NUMPAD_HOME: return control ? cursor_step::first : cursor_step::row_start;
    case WXK_END:
    case WXK_NUMPAD_END: return control ? cursor_step::last : cursor_step::row_end;
    default: return std::nullopt;
    }
}

}  // namespace

void hex_view::on_scroll(wxScrollWinEvent& event)
{
    const wxEventType kind = event.GetEventType();
    const bool across = event.GetOrientation() == wxHORIZONTAL;
    const auto in_sight = across ? GetClientSize().x : static_cast<long long>(rows_in_sight());
    const long long now = across ? left_ : static_cast<long long>(top_);
    const long long end = across ? whole_width() : static_cast<long long>(rows());
    const long long line = across ? width_of(1) : 1;
    long long target = event.GetPosition();
    if (kind == wxEVT_SCROLLWIN_TOP) target = 0;
    if (kind == wxEVT_SCROLLWIN_BOTTOM) target = end;
    if (kind == wxEVT_SCROLLWIN_LINEUP) target = now - line;
    if (kind == wxEVT_SCROLLWIN_LINEDOWN) target = now + line;
    if (kind == wxEVT_SCROLLWIN_PAGEUP) target = now - in_sight;
    if (kind == wxEVT_SCROLLWIN_PAGEDOWN) target = now + in_sight;
    target = std::max(0LL, target);
    if (across) left_ = static_cast<int>(target);
    scroll_to(across ? top_ : static_cast<std::size_t>(target));
}

void hex_view::on_wheel(wxMouseEvent& event)
{
    wheel_rest_ += event.GetWheelRotation();
    const int clicks = wheel_rest_ / std::max(1, event.GetWheelDelta());
    wheel_rest_ -= clicks * event.GetWheelDelta();
    if (event.GetWheelAxis() == wxMOUSE_WHEEL_HORIZONTAL || event.ShiftDown()) {
        const int to_right = event.GetWheelAxis() == wxMOUSE_WHEEL_HORIZONTAL ? clicks : -clicks;
        left_ += to_right * width_of(3);
        return scroll_to(top_);
    }
    const auto row = static_cast<std::ptrdiff_t>(top_) - clicks * rows_a_wheel_click;
    scroll_to(static_cast<std::size_t>(std::max<std::ptrdiff_t>(0, row)));
}

/// The byte at a point or, outside, the nearest one of the rows in sight.
hex_view::place hex_view::place_at(wxPoint point) const
{
    const int x = point.x + left_;
    const int line = std::clamp(point.y / row_ - 1, 0, static_cast<int>(rows_in_sight()) - 1);
    const column side = x >= character_column(0) - width_of(0.5) ? column::characters : column::hexadecimal;
    std::size_t index = 0;
    while (index + 1 < bytes_in_row &&
           x >= (side == column::characters ? character_column(index + 1) : hex_column(index + 1) - width_of(0.5))) {
        ++index;
    }
    return {(top_ + static_cast<std::size_t>(line)) * bytes_in_row + index, side};
}

void hex_view::on_press(wxMouseEvent& event)
{
    SetFocus();
    if (event.GetY() < row_ || length_ == 0) return;
    const place pressed = place_at(event.GetPosition());
    cursor_.choose(pressed.side);
    cursor_.go_to(pressed.address, event.ShiftDown());
    moved();
    drag_point_ = event.GetPosition();
    if (!HasCapture()) CaptureMouse();
}

void hex_view::on_drag(wxMouseEvent& event)
{
    if (!HasCapture() || !event.LeftIsDown()) return;
    drag_point_ = event.GetPosition();
    const bool outside = drag_point_.y < row_ || drag_point_.y >= GetClientSize().y;
    if (outside && !drag_timer_.IsRunning()) drag_timer_.Start(drag_interval_ms);
    if (!outside) drag_timer_.Stop();
    const place here = place_at(drag_point_);
    if (here.address == cursor_.address()) return;
    cursor_.go_to(here.address, true);
    moved();
}

/// Scrolls by more rows the farther the mouse is outside.
void hex_view::drag_on()
{
    const int above = row_ - drag_point_.y, below = drag_point_.y - GetClientSize().y + 1;
    const auto by = static_cast<std::size_t>(1 + std::max({above, below, 0}) / row_);
    if (above > 0) scroll_to(top_ > by ? top_ - by : 0);
    if (below > 0) scroll_to(top_ + by);
    cursor_.go_to(place_at(drag_point_).address, true);
    moved();
}

void hex_view::end_drag()
{
    drag_timer_.Stop();
    if (HasCapture()) ReleaseMouse();
}

void hex_view::on_key(wxKeyEvent& event)
{
    if (event.AltDown() || length_ == 0) return event.Skip();
    if (event.GetKeyCode() == WXK_TAB && !event.ControlDown()) return on_tab(event.ShiftDown());
    const auto to = step_of(event.GetKeyCode(), event.ControlDown());
    if (!to) return event.Skip();
    cursor_.move(*to, event.ShiftDown(), rows_in_sight());
    keep_cursor_in_sight();
    moved();
}

/// Tab goes through the columns before it leaves the view.
void hex_view::on_tab(bool backward)
{
    const column last = backward ? column::hexadecimal : column::characters;
    if (cursor_.side() == last) {
        Navigate(backward ? 0 : wxNavigationKeyEvent::IsForward);
        return;
    }
    cursor_.choose(last);
    keep_cursor_in_sight();
    moved();
}

void hex_view::on_char(wxKeyEvent& event)
{
    const int letter = event.GetUnicodeKey();
    const bool typed = !event.ControlDown() && !event.AltDown() && !event.MetaDown();
    if (!typed || !on_type || bytes_.empty()) return event.Skip();
    if (cursor_.side() == column::characters) {
        if (letter < 0x20 || letter >= 0x7F) return event.Skip();
        return type_character(letter);
    }
    const int digit = letter < 0x80 ? hex_digits::digit(static_cast<std::uint8_t>(letter)) : 0xFF;
    if (digit > 15) return event.Skip();
    type_digit(digit);
}

void hex_view::type_digit(int digit)
{
    const std::size_t address = cursor_.address();
    const std::uint8_t before = bytes_[address];
    const bool second = cursor_.in_second_digit();
    cursor_.digit_typed();
    on_type(address, static_cast<std::uint8_t>(second ? (before & 0xF0) | digit : (before & 0x0F) | digit << 4));
    keep_cursor_in_sight();
    moved();
}

void hex_view::type_character(int letter)
{
    const std::size_t address = cursor_.address();
    cursor_.character_typed();
    on_type(address, static_cast<std::uint8_t>(letter));
    keep_cursor_in_sight();
    moved();
}

}  // namespace tamrix::hexview
