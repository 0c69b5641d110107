// The messages of the plug-in, line by line, with those of the host between.
#pragma once

#include <string>

#include <wx/panel.h>
#include <wx/textctrl.h>

namespace tamrix::workbench {

class log_panel final : public wxPanel {
public:
    explicit log_panel(wxWindow* parent);

    /// Status lines, unchanged.
    void status(const std::string& lines);
    /// The host's own words.
    void remark(const std::string& words);
    /// What went wrong.
    void trouble(const std::string& words);
    void clear() { text_->Clear(); }

private:
    void append(const std::string& words, const wxColour& colour);

    wxTextCtrl* text_;
};

}  // namespace tamrix::workbench
