// The messages of the plug-in, line by line, with those of the host between.
#pragma once

#include <functional>
#include <string>

#include <wx/button.h>
#include <wx/panel.h>
#include <wx/stattext.h>
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

    /// Shows words and a button above the messages; `take` is what the button does. An older offer is gone.
    void offer(const std::string& words, const std::string& button, std::function<void()> take);
    void withdraw_offer();

private:
    void append(const std::string& words, const wxColour& colour);

    wxPanel* offer_;
    wxStaticText* offer_words_;
    wxButton* offer_button_;
    std::function<void()> take_;
    wxTextCtrl* text_;
};

}  // namespace tamrix::workbench
