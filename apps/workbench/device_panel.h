// The list of devices with a search box over it.
#pragma once

#include "workbench/device_catalogue.h"

#include <functional>
#include <string>

#include <wx/button.h>
#include <wx/dataview.h>
#include <wx/panel.h>
#include <wx/srchctrl.h>

namespace tamrix::workbench {

class device_panel final : public wxPanel {
public:
    device_panel(wxWindow* parent, device_catalogue& devices);

    /// Chooses the device of that name without a call of on_choose; clears a search that hides it.
    void choose(const std::string& name);
    /// As choose(), unless it is chosen already; also from on_choose.
    void show_choice(const std::string& name)
    {
        if (name != chosen_) choose(name);
    }
    /// Moves the focus to the search box.
    void start_search();
    /// Opens the values of the chosen device, or those of a new one, and saves them.
    void edit_chosen();
    void add_device();

    /// The person chose this device, or changed its values.
    std::function<void(const host::device_preset&)> on_choose;

private:
    void fill();
    const host::device_preset* chosen() const;
    void tell_choice();
    void edit(const host::device_preset& start, bool fresh);
    bool asks_to_remove();
    void remove_chosen();
    void update_buttons();

    device_catalogue& devices_;
    std::string chosen_;
    wxSearchCtrl* search_;
    wxDataViewListCtrl* list_;
    wxButton* edit_button_;
    wxButton* remove_button_;
};

}  // namespace tamrix::workbench
