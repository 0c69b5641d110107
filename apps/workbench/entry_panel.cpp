#include "workbench/entry_panel.h"

#include "workbench/colours.h"
#include "workbench/text.h"

#include <algorithm>

#include <wx/sizer.h>

namespace tamrix::workbench {

namespace {

constexpr int line_width = 120, list_height = 72, gap = 6;

wxArrayString strings_of(const std::vector<std::string>& texts)
{
    wxArrayString strings;
    for (const std::string& one : texts) strings.Add(to_wx(one));
    return strings;
}

}  // namespace

entry_panel::entry_panel(wxWindow* parent, const entry_words& words)
    : wxPanel{parent}, framed_{new wxStaticBoxSizer{wxVERTICAL, this, words.title}}
{
    wxSizer* const entry = line_and_button(words);
    why_ = new wxStaticText{box(), wxID_ANY, ""};
    why_->SetForegroundColour(trouble_colour());
    why_->Hide();
    list_ = new wxListBox{box(), wxID_ANY, wxDefaultPosition, FromDIP(wxSize{-1, list_height})};
    list_->SetMinSize(FromDIP(wxSize{line_width, list_height}));
    framed_->Add(entry, wxSizerFlags{}.Expand().Border(wxALL, FromDIP(gap)));
    add_row(why_);
    add_row(list_);
    add_row(list_buttons(words));
    SetSizer(framed_);
    listen();
    update_buttons();
}

wxSizer* entry_panel::line_and_button(const entry_words& words)
{
    line_ = new wxComboBox{box(),         wxID_ANY, "",      wxDefaultPosition,
                           wxDefaultSize, 0,        nullptr, wxCB_DROPDOWN | wxTE_PROCESS_ENTER};
    line_->SetMinSize({FromDIP(line_width), -1});
    line_->SetHint(words.hint);
    line_->SetToolTip(words.tip);
    add_ = new wxButton{box(), wxID_ANY, words.add};
    auto* row = new wxBoxSizer{wxHORIZONTAL};
    row->Add(line_, wxSizerFlags{1}.CenterVertical());
    row->Add(add_, wxSizerFlags{}.CenterVertical().Border(wxLEFT, FromDIP(gap)));
    return row;
}

wxSizer* entry_panel::list_buttons(const entry_words& words)
{
    auto* row = new wxBoxSizer{wxHORIZONTAL};
    const auto button = [&](const char* caption) -> wxButton* {
        if (caption == nullptr) return nullptr;
        auto* made = new wxButton{box(), wxID_ANY, caption};
        row->Add(made, wxSizerFlags{1}.Border(wxLEFT, row->IsEmpty() ? 0 : FromDIP(gap)));
        return made;
    };
    change_ = button(words.change);
    remove_ = button(words.remove);
    remove_all_ = button(words.remove_all);
    return row;
}

void entry_panel::listen()
{
    line_->Bind(wxEVT_TEXT_ENTER, [this](wxCommandEvent&) { add(); });
    line_->Bind(wxEVT_TEXT, [this](wxCommandEvent&) { say(""); });
    add_->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { add(); });
    list_->Bind(wxEVT_LISTBOX, [this](wxCommandEvent&) { choose(); });
    list_->Bind(wxEVT_KEY_DOWN, [this](wxKeyEvent& event) {
        event.Skip();
        if (event.GetKeyCode() == WXK_DELETE) remove();
    });
    remove_->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { remove(); });
    if (change_ != nullptr) change_->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { change(); });
    if (remove_all_ != nullptr) remove_all_->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { on_remove_all(); });
}

void entry_panel::add_row(wxSizer* row)
{
    framed_->Add(row, wxSizerFlags{}.Expand().Border(wxLEFT | wxRIGHT | wxBOTTOM, FromDIP(gap)));
}

void entry_panel::add_row(wxWindow* row)
{
    framed_->Add(row, wxSizerFlags{}.Expand().Border(wxLEFT | wxRIGHT | wxBOTTOM, FromDIP(gap)));
}

void entry_panel::start_entry()
{
    line_->SetFocus();
    line_->SelectAll();
}

/// A line that is refused stays, so that the person can change it.
void entry_panel::add()
{
    const std::string why = on_add(to_utf8(line_->GetValue()));
    if (why.empty()) line_->ChangeValue("");
    say(why);
}

void entry_panel::change()
{
    const int chosen = list_->GetSelection();
    if (chosen != wxNOT_FOUND) say(on_change(static_cast<std::size_t>(chosen), to_utf8(line_->GetValue())));
}

void entry_panel::remove()
{
    if (const int chosen = list_->GetSelection(); chosen != wxNOT_FOUND) on_remove(static_cast<std::size_t>(chosen));
}

/// What can be changed goes to the line, unless the line has something that would be lost.
void entry_panel::choose()
{
    const wxString line = line_->GetValue();
    const bool spare = line.empty() || list_->FindString(line, true) != wxNOT_FOUND;
    if (change_ != nullptr && spare && list_->GetSelection() != wxNOT_FOUND)
        line_->SetValue(list_->GetStringSelection());
    update_buttons();
}

void entry_panel::say(const std::string& why)
{
    if (why.empty() && !why_->IsShown()) return;
    why_->SetLabelText(to_wx(why));
    why_->Wrap(line_->GetContainingSizer()->GetSize().x);
    why_->Show(!why.empty());
    if (on_resize) on_resize();
}

void entry_panel::update_buttons()
{
    const bool chosen = list_->GetSelection() != wxNOT_FOUND;
    remove_->Enable(chosen);
    if (change_ != nullptr) change_->Enable(chosen);
    if (remove_all_ != nullptr) remove_all_->Enable(!list_->IsEmpty());
}

void entry_panel::refresh(const std::vector<std::string>& entries, const std::vector<std::string>& examples)
{
    const wxArrayString offered = strings_of(examples), names = strings_of(entries);
    if (offered != line_->GetStrings()) {
        const wxString typed = line_->GetValue();
        line_->Set(offered);
        line_->ChangeValue(typed);
    }
    const int chosen = list_->GetSelection();
    if (names != list_->GetStrings()) {
        list_->Set(names);
        if (chosen != wxNOT_FOUND && !names.empty())
            list_->SetSelection(std::min(chosen, static_cast<int>(names.size()) - 1));
    }
    update_buttons();
}

}  // namespace tamrix::workbench
