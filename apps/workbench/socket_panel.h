// The simulated socket: what can be put into it, the pins of the chip in it; the programmer's faults, the signals at
// its instruments' pins, how it is reached, and what its last self-test came to.
#pragma once

#include "host/simulator.h"
#include "workbench/entry_panel.h"
#include "workbench/logic_verdict.h"
#include "workbench/pin_picture.h"
#include "workbench/signal_panel.h"

#include <functional>
#include <string>
#include <vector>

#include <wx/button.h>
#include <wx/choice.h>
#include <wx/dataview.h>
#include <wx/panel.h>
#include <wx/scrolwin.h>
#include <wx/sizer.h>
#include <wx/spinctrl.h>
#include <wx/srchctrl.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

namespace tamrix::workbench {

class socket_panel final : public wxPanel {
public:
    /// `socket` is null if the programmer is not simulated: the panel then shows only its model and route.
    socket_panel(wxWindow* parent, const host::simulator* socket, int model, bool usb);

    /// Moves the focus to the search box, or to the model if there is none.
    void start_search();
    /// Moves the focus to the line for faults, or to the model if there is none.
    void start_faults();
    /// Moves the focus to the line for signals, or to the model if there is none.
    void start_signals();
    /// Call this after the socket, the faults or the signals have changed.
    void refresh();
    /// Marks the pins at which the test of a device failed, until the socket changes.
    void mark_failed(const logic_test& test);
    void show_last_selftest(const wxString& words) { last_selftest_->ChangeValue(words); }
    /// Null if the programmer is not simulated.
    entry_panel* faults() const { return faults_; }
    signal_panel* signals() const { return signals_; }

    int model() const { return model_->GetValue(); }
    bool usb() const { return route_->GetSelection() == 0; }

    /// The person chose this for the socket: a chip, the test board, or with an empty name nothing.
    std::function<void(const std::string&)> on_insert;
    std::function<void(int pin, host::pin_state)> on_break;
    std::function<void()> on_mend;
    /// The model or the route has changed.
    std::function<void()> on_programmer;

private:
    wxSizer* chip_list();
    wxSizer* chip_in_socket();
    wxSizerFlags beside() const;
    wxSizer* programmer_box(int model, bool usb);
    wxSizer* last_selftest_box();
    void add_entries(wxSizer& column, entry_panel& entries);
    void make_room();
    void bring_into_view(const wxWindow& part);
    void fill();
    void tell_choice();
    void show_pin();
    void show_failed(std::vector<int> pins, const wxString& words);
    std::string name_in_row(int row) const;

    const host::simulator* socket_;
    wxScrolledWindow* area_;  // scrolls if the window is low
    wxSearchCtrl* search_ = nullptr;
    wxDataViewListCtrl* list_ = nullptr;
    wxStaticText* title_ = nullptr;
    pin_picture* picture_ = nullptr;
    wxStaticText* failed_ = nullptr;
    wxStaticText* pin_ = nullptr;
    wxChoice* state_ = nullptr;
    wxButton* mend_ = nullptr;
    entry_panel* faults_ = nullptr;
    signal_panel* signals_ = nullptr;
    wxTextCtrl* last_selftest_ = nullptr;
    wxSpinCtrl* model_ = nullptr;
    wxChoice* route_ = nullptr;
};

}  // namespace tamrix::workbench
