// The simulated socket: the list of chips, the pins of the one that is in it, and how the programmer is reached.
#pragma once

#include "host/simulator.h"
#include "workbench/pin_picture.h"

#include <functional>
#include <string>

#include <wx/button.h>
#include <wx/choice.h>
#include <wx/dataview.h>
#include <wx/panel.h>
#include <wx/scrolwin.h>
#include <wx/spinctrl.h>
#include <wx/srchctrl.h>
#include <wx/stattext.h>

namespace tamrix::workbench {

class socket_panel final : public wxPanel {
public:
    /// `socket` is null where the programmer is not simulated: only its model and route are shown then.
    socket_panel(wxWindow* parent, const host::simulator* socket, int model, bool usb);

    /// Puts the keyboard into the search box, or where there is none to the model.
    void start_search();
    /// After the socket has changed.
    void refresh();

    int model() const { return model_->GetValue(); }
    bool usb() const { return route_->GetSelection() == 0; }

    /// The person wants this chip in the socket, or with an empty name none.
    std::function<void(const std::string&)> on_insert;
    std::function<void(int pin, host::pin_state)> on_break;
    std::function<void()> on_mend;
    /// Model or route are no longer what they were.
    std::function<void()> on_programmer;

private:
    wxSizer* chip_list();
    wxSizer* chip_in_socket();
    wxSizer* programmer_box(int model, bool usb);
    void fill();
    void tell_choice();
    void show_pin();
    std::string name_in_row(int row) const;

    const host::simulator* socket_;
    wxScrolledWindow* area_;  // scrolls where the window is low
    wxSearchCtrl* search_ = nullptr;
    wxDataViewListCtrl* list_ = nullptr;
    wxStaticText* title_ = nullptr;
    pin_picture* picture_ = nullptr;
    wxStaticText* pin_ = nullptr;
    wxChoice* state_ = nullptr;
    wxButton* mend_ = nullptr;
    wxSpinCtrl* model_ = nullptr;
    wxChoice* route_ = nullptr;
};

}  // namespace tamrix::workbench
