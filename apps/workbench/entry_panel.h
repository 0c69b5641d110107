// The faults of the simulated programmer: a line in which a person adds one, and those that there are.
#pragma once

#include "host/simulator.h"

#include <cstddef>
#include <functional>
#include <string>

#include <wx/button.h>
#include <wx/combobox.h>
#include <wx/listbox.h>
#include <wx/panel.h>
#include <wx/stattext.h>

namespace tamrix::workbench {

class fault_panel final : public wxPanel {
public:
    fault_panel(wxWindow* parent, const host::simulator& programmer);

    /// Moves the focus to the line.
    void start_entry();
    /// Call this after the faults have changed.
    void refresh();

    /// The person typed these faults; returns why they are refused, or an empty text.
    std::function<std::string(const std::string&)> on_add;
    /// By its place in the list, from 0.
    std::function<void(std::size_t)> on_remove;
    std::function<void()> on_remove_all;
    /// The panel needs more room or less.
    std::function<void()> on_resize;

private:
    void add();
    void remove();
    void say(const wxString& why);
    void update_buttons();

    const host::simulator& programmer_;
    wxComboBox* line_;
    wxStaticText* why_;  // the last line was refused
    wxListBox* list_;
    wxButton *remove_, *remove_all_;
};

}  // namespace tamrix::workbench
