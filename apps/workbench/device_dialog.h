// The values of a device, to look at and to change.
#pragma once

#include "host/device_preset.h"

#include <string>
#include <vector>

#include <wx/choice.h>
#include <wx/dialog.h>
#include <wx/sizer.h>
#include <wx/textctrl.h>

namespace tamrix::workbench {

class device_dialog final : public wxDialog {
public:
    /// A device that is not `fresh` keeps its name.
    device_dialog(wxWindow* parent, const host::device_preset& start, bool fresh);

    /// The entered values, after the dialog ended with OK.
    const host::device_preset& device() const { return device_; }

private:
    struct entry {
        std::string key;
        wxTextCtrl* field;
    };
    struct line {
        const char* key;
        const char* label;
        const char* unit;
    };

    wxSizer* group(const wxString& title, const std::vector<line>& lines);
    wxSizer* last_group();
    void set_values(const host::device_preset& start);
    std::string stanza() const;
    /// False if a value is refused; the person has then seen a message.
    bool take_over();

    host::device_preset device_;
    wxTextCtrl* name_ = nullptr;
    wxChoice* clear_ = nullptr;
    std::vector<entry> entries_;
};

}  // namespace tamrix::workbench
