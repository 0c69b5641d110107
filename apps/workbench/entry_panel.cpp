#include "workbench/fault_panel.h"

#include "host/fault_examples.h"
#include "workbench/colours.h"
#include "workbench/text.h"

#include <algorithm>

#include <wx/sizer.h>
#include <wx/statbox.h>

namespace tamrix::workbench {

namespace {

constexpr int line_width = 120, list_height = 72, gap = 6;

}  // namespace

fault_panel::fault_panel(wxWindow* parent, const host::simulator& programmer) : wxPanel{parent}, programmer_{programmer}
{
    auto* framed = new wxStaticBoxSizer{wxVERTICAL, this, "Faults of the programmer"};
    wxWindow* box = framed->GetStaticBox();
    line_ = new wxComboBox{box,           wxID_ANY, "",      wxDefaultPosition,
                           wxDefaultSize, 0,        nullptr, wxCB_DROPDOWN | wxTE_PROCESS_ENTER};
    for (const char* const example : host::fault_examples()) line_->Append(example);
    line_->SetMinSize({FromDIP(line_width), -1});
    line_->SetHint("vcc driver 7 dead");
    line_->SetToolTip("Type a fault, or choose one and change its pin; several with ; between");
    auto* add_button = new wxButton{box, wxID_ANY, "&Add"};
    why_ = new wxStaticText{box, wxID_ANY, ""};
    why_->SetForegroundColour(trouble_colour());
    why_->Hide();
    list_ = new wxListBox{box, wxID_ANY, wxDefaultPosition, FromDIP(wxSize{-1, list_height})};
    list_->SetMinSize(FromDIP(wxSize{line_width, list_height}));
    remove_ = new wxButton{box, wxID_ANY, "&Remove"};
    remove_all_ = new wxButton{box, wxID_ANY, "Remo&ve All"};

    auto* entry = new wxBoxSizer{wxHORIZONTAL};
    entry->Add(line_, wxSizerFlags{1}.CenterVertical());
    entry->Add(add_button, wxSizerFlags{}.CenterVertical().Border(wxLEFT, FromDIP(gap)));
    auto* buttons = new wxBoxSizer{wxHORIZONTAL};
    buttons->Add(remove_, wxSizerFlags{1});
    buttons->Add(remove_all_, wxSizerFlags{1}.Border(wxLEFT, FromDIP(gap)));
    const wxSizerFlags below = wxSizerFlags{}.Expand().Border(wxLEFT | wxRIGHT | wxBOTTOM, FromDIP(gap));
    framed->Add(entry, wxSizerFlags{}.Expand().Border(wxALL, FromDIP(gap)));
    framed->Add(why_, below);
    framed->Add(list_, below);
    framed->Add(buttons, below);
    SetSizer(framed);

    line_->Bind(wxEVT_TEXT_ENTER, [this](wxCommandEvent&) { add(); });
    line_->Bind(wxEVT_TEXT, [this](wxCommandEvent&) { say(""); });
    add_button->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { add(); });
    list_->Bind(wxEVT_LISTBOX, [this](wxCommandEvent&) { update_buttons(); });
    list_->Bind(wxEVT_KEY_DOWN, [this](wxKeyEvent& event) {
        event.Skip();
        if (event.GetKeyCode() == WXK_DELETE) remove();
    });
    remove_->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { remove(); });
    remove_all_->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { on_remove_all(); });
    refresh();
}

void fault_panel::start_entry()
{
    line_->SetFocus();
    line_->SelectAll();
}

/// A line that is refused stays, so that the person can change it.
void fault_panel::add()
{
    const std::string why = on_add(to_utf8(line_->GetValue()));
    if (why.empty()) line_->ChangeValue("");
    say(to_wx(why));
}

void fault_panel::remove()
{
    if (const int chosen = list_->GetSelection(); chosen != wxNOT_FOUND) on_remove(static_cast<std::size_t>(chosen));
}

void fault_panel::say(const wxString& why)
{
    if (why.empty() && !why_->IsShown()) return;
    why_->SetLabelText(why);
    why_->Wrap(line_->GetContainingSizer()->GetSize().x);
    why_->Show(!why.empty());
    if (on_resize) on_resize();
}

void fault_panel::update_buttons()
{
    remove_->Enable(list_->GetSelection() != wxNOT_FOUND);
    remove_all_->Enable(!list_->IsEmpty());
}

void fault_panel::refresh()
{
    const int chosen = list_->GetSelection();
    wxArrayString names;
    for (const std::string& fault : programmer_.more_faults()) names.Add(to_wx(fault));
    if (names != list_->GetStrings()) {
        list_->Set(names);
        if (chosen != wxNOT_FOUND && !names.empty())
            list_->SetSelection(std::min(chosen, static_cast<int>(names.size()) - 1));
    }
    update_buttons();
}

}  // namespace tamrix::workbench
