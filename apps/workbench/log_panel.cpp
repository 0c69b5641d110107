#include "workbench/log_panel.h"

#include "workbench/colours.h"
#include "workbench/text.h"

#include <utility>

#include <wx/settings.h>
#include <wx/sizer.h>

namespace tamrix::workbench {

log_panel::log_panel(wxWindow* parent)
    : wxPanel{parent},
      offer_{new wxPanel{this}},
      offer_words_{new wxStaticText{offer_, wxID_ANY, ""}},
      offer_button_{new wxButton{offer_, wxID_ANY, ""}},
      text_{new wxTextCtrl{this, wxID_ANY, "", wxDefaultPosition, wxDefaultSize,
                           wxTE_MULTILINE | wxTE_READONLY | wxTE_RICH2 | wxBORDER_THEME}}
{
    auto* row = new wxBoxSizer{wxHORIZONTAL};
    row->Add(offer_words_, wxSizerFlags{}.CenterVertical().Border(wxRIGHT, FromDIP(6)));
    row->Add(offer_button_);
    offer_->SetSizer(row);
    offer_->Hide();
    offer_button_->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) {
        const std::function<void()> take = take_;  // which may make another offer
        take();
    });
    auto* outer = new wxBoxSizer{wxVERTICAL};
    outer->Add(offer_, wxSizerFlags{}.Expand().Border(wxLEFT | wxRIGHT | wxTOP, FromDIP(6)));
    outer->Add(text_, wxSizerFlags{1}.Expand().Border(wxALL, FromDIP(6)));
    SetSizer(outer);
}

void log_panel::status(const std::string& lines)
{
    append(lines, wxSystemSettings::GetColour(wxSYS_COLOUR_WINDOWTEXT));
}

void log_panel::remark(const std::string& words) { append(words, wxSystemSettings::GetColour(wxSYS_COLOUR_GRAYTEXT)); }

void log_panel::trouble(const std::string& words) { append(words, trouble_colour()); }

void log_panel::offer(const std::string& words, const std::string& button, std::function<void()> take)
{
    take_ = std::move(take);
    offer_words_->SetLabelText(to_wx(words));
    offer_button_->SetLabel(to_wx(button));
    offer_->Show();
    Layout();
    offer_->Layout();
    text_->ShowPosition(text_->GetLastPosition());
}

void log_panel::withdraw_offer()
{
    offer_->Hide();
    Layout();
}

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
