// The values of a device, to look at and to change.
#pragma once

#include "host/device_preset.h"
#include "workbench/device_fields.h"

#include <functional>
#include <string>
#include <vector>

#include <wx/choice.h>
#include <wx/dialog.h>
#include <wx/sizer.h>
#include <wx/stattext.h>
#include <wx/textctrl.h>

namespace tamrix::workbench {

class device_dialog final : public wxDialog {
public:
    /// A device that is not `fresh` keeps its name. `is_taken` says whether a device has a name.
    device_dialog(wxWindow* parent, const host::device_preset& start, bool fresh,
                  std::function<bool(const std::string& name)> is_taken);

    /// The entered values, after the dialog ended with OK.
    const host::device_preset& device() const { return device_; }

private:
    struct entry {
        const device_field* what;
        wxTextCtrl* field;
        wxStaticText* beside;  // its unit, or what is wrong
    };

    wxSizer* columns();
    wxSizer* group(const wxString& title, field_group which);
    wxSizer* last_group();
    wxWindow* help_line();
    void set_values(const host::device_preset& start);
    field_texts texts() const;
    entry& entry_of(const std::string& key);
    /// False if a value is refused; the dialog then shows which.
    bool take_over();
    void show_wrong(const wrong_field& wrong);
    void take_room();

    const std::function<bool(const std::string& name)> is_taken_;
    const bool fresh_;
    host::device_preset device_;
    wxChoice* clear_ = nullptr;
    wxStaticText* help_ = nullptr;
    std::vector<entry> entries_;
};

}  // namespace tamrix::workbench
