#include "workbench/log_panel.h"

#include "workbench/colours.h"
#include "workbench/text.h"

#include <wx/settings.h>
#include <wx/sizer.h>

namespace tamrix::workbench {

log_panel::log_panel(wxWindow* parent)
    : wxPanel{parent},
      text_{new wxTextCtrl{this, wxID_ANY, "", wxDefaultPosition, wxDefaultSize,
                           wxTE_MULTILINE | wxTE_READONLY | wxTE_RICH2 | wxBORDER_THEME}}
{
    auto* outer = new wxBoxSizer{wxVERTICAL};
    outer->Add(text_, wxSizerFlags{1}.Expand().Border(wxALL, FromDIP(6)));
    SetSizer(outer);
}

void log_panel::status(const std::string& lines)
{
    append(lines, wxSystemSettings::GetColour(wxSYS_COLOUR_WINDOWTEXT));
}

void log_panel::remark(const std::string& words) { append(words, wxSystemSettings::GetColour(wxSYS_COLOUR_GRAYTEXT)); }

void log_panel::trouble(const std::string& words) { append(words, trouble_colour()); }

void log_panel::append(const std::string& words, const wxColour& colour)
{
    wxTextAttr style{colour};
    style.SetLeftIndent(15);  // tenths of a millimetre: off the border
    text_->SetDefaultStyle(style);
    text_->AppendText(to_wx(words));
    if (!words.empty() && words.back() != '\n') text_->AppendText("\n");
    if (text_->IsShownOnScreen()) text_->ShowPosition(text_->GetLastPosition());
}

}  // namespace tamrix::workbench
