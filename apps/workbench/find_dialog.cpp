#include "workbench/find_dialog.h"

#include <wx/button.h>
#include <wx/sizer.h>

namespace tamrix::workbench {

namespace {

constexpr const char* help = "Bytes in hexadecimal, such as 55 AA, or a text; in quotes it is always a text";

}  // namespace

find_dialog::find_dialog(wxWindow* parent, const search_words& before, editing::byte_range selected, bool replacing)
    : wxDialog{parent,
               wxID_ANY,
               replacing ? "Replace" : "Find",
               wxDefaultPosition,
               wxDefaultSize,
               wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER}
{
    auto* column = new wxBoxSizer{wxVERTICAL};
    const auto gap = wxSizerFlags{}.Expand().Border(wxTOP, FromDIP(6));
    sought_ = add_field(column, "&Find:", before.sought);
    if (replacing) replacement_ = add_field(column, "Replace &with:", before.replacement);
    column->Add(new wxStaticText{this, wxID_ANY, help}, gap);
    in_selection_ = new wxCheckBox{this, wxID_ANY, "&Only in the selection"};
    in_selection_->Enable(selected.length > 1);
    in_selection_->SetValue(selected.length > 1 && before.in_selection);
    column->Add(in_selection_, gap);
    said_ = new wxStaticText{this, wxID_ANY, ""};
    column->Add(said_, gap);
    said_->Show(replacing);

    auto* buttons = new wxBoxSizer{wxHORIZONTAL};
    const auto button = [&](int id, const wxString& label, std::function<void()>* action) {
        auto* made = new wxButton{this, id, label};
        buttons->Add(made, wxSizerFlags{}.Border(wxLEFT, FromDIP(6)));
        if (action != nullptr) made->Bind(wxEVT_BUTTON, [action](wxCommandEvent&) { (*action)(); });
        return made;
    };
    buttons->AddStretchSpacer();
    if (replacing) {
        button(wxID_ANY, "Find &Next", &on_find)->SetDefault();
        button(wxID_ANY, "&Replace", &on_replace);
        button(wxID_ANY, "Replace &All", &on_replace_all);
        button(wxID_CANCEL, "&Close", nullptr);
    } else {
        button(wxID_CANCEL, "&Cancel", nullptr);
        button(wxID_OK, "Find &Next", nullptr)->SetDefault();
    }
    column->Add(buttons, wxSizerFlags{}.Expand().Border(wxTOP, FromDIP(12)));
    auto* outer = new wxBoxSizer{wxVERTICAL};
    outer->Add(column, wxSizerFlags{1}.Expand().Border(wxALL, FromDIP(12)));
    SetSizerAndFit(outer);
    SetEscapeId(wxID_CANCEL);
    sought_->SetFocus();
    sought_->SelectAll();
    CentreOnParent();
}

wxTextCtrl* find_dialog::add_field(wxSizer* column, const wxString& label, const wxString& text)
{
    column->Add(new wxStaticText{this, wxID_ANY, label}, wxSizerFlags{}.Border(wxTOP, FromDIP(6)));
    auto* field = new wxTextCtrl{this, wxID_ANY, text};
    field->SetMinSize(FromDIP(wxSize{360, -1}));
    column->Add(field, wxSizerFlags{}.Expand().Border(wxTOP, FromDIP(3)));
    return field;
}

search_words find_dialog::words() const
{
    return {sought_->GetValue(), replacement_ != nullptr ? replacement_->GetValue() : wxString{},
            in_selection_->GetValue()};
}

void find_dialog::say(const wxString& words)
{
    said_->SetLabelText(words);
    Layout();
}

}  // namespace tamrix::workbench
