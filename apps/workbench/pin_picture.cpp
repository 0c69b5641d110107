#include "workbench/pin_picture.h"

#include "workbench/colours.h"
#include "workbench/text.h"

#include <algorithm>
#include <utility>

#include <wx/settings.h>

namespace tamrix::workbench {

namespace {

constexpr int body_width = 132, pin_length = 14, gap = 6;

const char* mark_of(host::pin_state state)
{
    switch (state) {
    case host::pin_state::open: return "open";
    case host::pin_state::stuck_at_0: return "stuck 0";
    case host::pin_state::stuck_at_1: return "stuck 1";
    case host::pin_state::sound: break;
    }
    return "";
}

}  // namespace

wxString words_of(host::pin_state state)
{
    switch (state) {
    case host::pin_state::open: return "open";
    case host::pin_state::stuck_at_0: return "stuck at 0";
    case host::pin_state::stuck_at_1: return "stuck at 1";
    case host::pin_state::sound: break;
    }
    return "sound";
}

pin_picture::pin_picture(wxWindow* parent, const host::simulator& socket)
    : wxPanel{parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxWANTS_CHARS | wxFULL_REPAINT_ON_RESIZE},
      socket_{socket}
{
    Bind(wxEVT_PAINT, [this](wxPaintEvent&) {
        wxPaintDC dc{this};
        paint(dc);
    });
    Bind(wxEVT_LEFT_DOWN, [this](wxMouseEvent& event) {
        SetFocus();
        if (const int hit = pin_at(event.GetPosition()); hit != 0) select(hit);
    });
    Bind(wxEVT_KEY_DOWN, [this](wxKeyEvent& event) { press(event); });
    const auto repaint = [this](wxFocusEvent& event) {
        event.Skip();
        Refresh();
    };
    Bind(wxEVT_SET_FOCUS, repaint);
    Bind(wxEVT_KILL_FOCUS, repaint);
    take_chip();
}

int pin_picture::rows() const
{
    const auto* chip = socket_.chip();
    return chip != nullptr ? (chip->pins() + 1) / 2 : 0;
}

int pin_picture::row_height() const { return GetCharHeight() + FromDIP(2); }

wxRect pin_picture::body() const
{
    const int width = FromDIP(body_width), height = rows() * row_height() + FromDIP(8);
    return {(GetClientSize().x - width) / 2, FromDIP(4), width, height};
}

bool pin_picture::at_left(int pin) const { return pin <= rows(); }

/// Pin 1 is at the top left; the right side is counted from the bottom.
int pin_picture::row_of(int pin) const { return at_left(pin) ? pin - 1 : 2 * rows() - pin; }

int pin_picture::pin_at(wxPoint place) const
{
    if (rows() == 0) return 0;
    const int row = (place.y - body().y - FromDIP(4)) / row_height();
    if (row < 0 || row >= rows()) return 0;
    const int pin = place.x < GetClientSize().x / 2 ? row + 1 : 2 * rows() - row;
    return std::min(pin, socket_.chip()->pins());
}

void pin_picture::take_chip()
{
    pin_ = 1;
    SetMinSize({FromDIP(220), rows() == 0 ? FromDIP(40) : body().GetBottom() + FromDIP(5)});
    Refresh();
}

void pin_picture::mark_failed(std::vector<int> pins)
{
    failed_ = std::move(pins);
    Refresh();
}

void pin_picture::select(int pin)
{
    if (socket_.chip() == nullptr) return;
    pin_ = std::clamp(pin, 1, socket_.chip()->pins());
    Refresh();
    if (on_select) on_select();
}

void pin_picture::paint(wxDC& dc)
{
    dc.SetFont(GetFont());
    dc.SetTextForeground(wxSystemSettings::GetColour(wxSYS_COLOUR_WINDOWTEXT));
    const auto* chip = socket_.chip();
    if (chip == nullptr) {
        dc.SetTextForeground(wxSystemSettings::GetColour(wxSYS_COLOUR_GRAYTEXT));
        const bool empty = socket_.in_socket().empty();
        const wxString words = empty ? "The socket is empty." : "It joins each pin with the one opposite.";
        return dc.DrawLabel(words, wxRect{GetClientSize()}, wxALIGN_CENTER);
    }
    const wxRect outline = body();
    dc.SetPen(wxPen{wxSystemSettings::GetColour(wxSYS_COLOUR_WINDOWTEXT), 1});
    dc.SetBrush(wxBrush{wxSystemSettings::GetColour(wxSYS_COLOUR_WINDOW)});
    dc.DrawRoundedRectangle(outline, FromDIP(3));
    const int notch = FromDIP(6), middle = outline.x + outline.width / 2;
    dc.DrawArc(middle - notch, outline.y, middle + notch, outline.y, middle, outline.y);
    for (int pin = 1; pin <= chip->pins(); ++pin) paint_pin(dc, pin, outline);
}

void pin_picture::paint_pin(wxDC& dc, int pin, const wxRect& outline) const
{
    const host::simulated_chip& chip = *socket_.chip();
    const bool left = at_left(pin);
    const host::pin_state state = socket_.state_of(pin);
    const bool failed = std::ranges::find(failed_, pin) != failed_.end();
    const bool sound = state == host::pin_state::sound && !failed;
    const int y = outline.y + FromDIP(4) + row_of(pin) * row_height(), height = row_height();
    const int half = outline.width / 2 - FromDIP(gap);
    const wxRect name{left ? outline.x + FromDIP(gap) : outline.GetRight() - FromDIP(gap) - half + 1, y, half, height};
    const int length = FromDIP(pin_length), leg_x = left ? outline.x - length : outline.GetRight() + 1;
    const wxColour plain = wxSystemSettings::GetColour(wxSYS_COLOUR_WINDOWTEXT);

    if (pin == pin_) {
        const bool here = HasFocus();
        const wxColour mark = wxSystemSettings::GetColour(wxSYS_COLOUR_HIGHLIGHT);
        dc.SetPen(wxPen{mark, 1});
        dc.SetBrush(here ? wxBrush{mark} : *wxTRANSPARENT_BRUSH);
        dc.DrawRectangle(name);
        dc.SetTextForeground(here ? wxSystemSettings::GetColour(wxSYS_COLOUR_HIGHLIGHTTEXT) : plain);
    } else {
        dc.SetTextForeground(plain);
    }
    dc.DrawLabel(to_wx(chip.pin_names[static_cast<std::size_t>(pin - 1)]), name.Deflate(FromDIP(3), 0),
                 (left ? wxALIGN_LEFT : wxALIGN_RIGHT) | wxALIGN_CENTER_VERTICAL);

    dc.SetPen(wxPen{sound ? plain : trouble_colour(), sound ? 1 : FromDIP(2)});
    const int level = y + height / 2, part = state == host::pin_state::open ? length / 3 : length;
    dc.DrawLine(left ? leg_x : leg_x + length - part, level, left ? leg_x + part : leg_x + length, level);
    dc.SetTextForeground(sound ? plain : trouble_colour());
    const wxString number = wxString::Format("%d", pin);
    wxString fault = mark_of(state);
    if (failed) fault += (fault.empty() ? "" : " ") + wxString{failed_mark};
    const wxString text = sound ? number : left ? fault + "  " + number : number + "  " + fault;
    const int room = FromDIP(70);
    const wxRect side{left ? leg_x - FromDIP(gap) - room : leg_x + length + FromDIP(gap), y, room, height};
    dc.DrawLabel(text, side, (left ? wxALIGN_RIGHT : wxALIGN_LEFT) | wxALIGN_CENTER_VERTICAL);
}

void pin_picture::move_by(int by, bool across)
{
    const int there = row_of(pin_) + by;
    if (there < 0 || there >= rows()) return;
    const bool left = at_left(pin_) != across;
    select(left ? there + 1 : 2 * rows() - there);
}

void pin_picture::press(wxKeyEvent& event)
{
    if (event.GetKeyCode() == WXK_TAB) {
        Navigate(event.ShiftDown() ? wxNavigationKeyEvent::IsBackward : wxNavigationKeyEvent::IsForward);
        return;
    }
    if (event.HasAnyModifiers() || rows() == 0) return event.Skip();
    const auto set = [this](host::pin_state state) {
        if (on_set) on_set(state);
    };
    switch (event.GetKeyCode()) {
    case WXK_UP: return move_by(-1, false);
    case WXK_DOWN: return move_by(1, false);
    case WXK_LEFT: return at_left(pin_) ? void() : move_by(0, true);
    case WXK_RIGHT: return at_left(pin_) ? move_by(0, true) : void();
    case WXK_HOME: return select(1);
    case WXK_END: return select(socket_.chip()->pins());
    case 'O': return set(host::pin_state::open);
    case '0':
    case WXK_NUMPAD0: return set(host::pin_state::stuck_at_0);
    case '1':
    case WXK_NUMPAD1: return set(host::pin_state::stuck_at_1);
    case 'S':
    case WXK_DELETE: return set(host::pin_state::sound);
    default: event.Skip();
    }
}

}  // namespace tamrix::workbench
