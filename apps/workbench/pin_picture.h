// A chip from above with its pins, of which one is selected.
#pragma once

#include "host/simulator.h"

#include <functional>
#include <vector>

#include <wx/dcclient.h>
#include <wx/panel.h>

namespace tamrix::workbench {

/// On the keyboard, the arrows select a pin, "o", "0" and "1" break it, "s" and Delete repair it.
class pin_picture final : public wxPanel {
public:
    pin_picture(wxWindow* parent, const host::simulator& socket);

    /// Shows the chip that is in the socket now, and selects its pin 1.
    void take_chip();
    int pin() const { return pin_; }
    /// Marks the pins that failed a test; they are counted from 1.
    void mark_failed(std::vector<int> pins);
    void select(int pin);

    /// The person selected another pin.
    std::function<void()> on_select;
    /// The person chose this state for the selected pin.
    std::function<void(host::pin_state)> on_set;

    bool AcceptsFocus() const override { return socket_.chip() != nullptr; }

private:
    void paint(wxDC& dc);
    void paint_pin(wxDC& dc, int pin, const wxRect& body) const;
    void press(wxKeyEvent& event);
    void move_by(int rows, bool across);
    int rows() const;
    int row_height() const;
    wxRect body() const;
    int row_of(int pin) const;
    bool at_left(int pin) const;
    int pin_at(wxPoint place) const;

    const host::simulator& socket_;
    int pin_ = 1;
    std::vector<int> failed_;
};

/// What goes beside the number of a pin that failed a test.
inline constexpr const wchar_t* failed_mark = L"×";

/// "sound", "open", "stuck at 0", "stuck at 1": in the order of pin_state.
wxString words_of(host::pin_state state);

}  // namespace tamrix::workbench
