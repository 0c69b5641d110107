#include "workbench/device_dialog.h"

#include "workbench/colours.h"
#include "workbench/text.h"

#include <algorithm>
#include <utility>

#include <wx/dcclient.h>
#include <wx/statbox.h>

namespace tamrix::workbench {

namespace {

constexpr int trouble_width = 130;

}  // namespace

device_dialog::device_dialog(wxWindow* parent, const host::device_preset& start, bool fresh,
                             std::function<bool(const std::string& name)> is_taken)
    : wxDialog{parent,
               wxID_ANY,
               fresh ? wxString{"New device"} : "Values of " + to_wx(start.name),
               wxDefaultPosition,
               wxDefaultSize,
               wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER},
      is_taken_{std::move(is_taken)},
      fresh_{fresh}
{
    auto* outer = new wxBoxSizer{wxVERTICAL};
    outer->Add(columns(), wxSizerFlags{1}.Expand().Border(wxALL, FromDIP(12)));
    outer->Add(help_line(), wxSizerFlags{}.Expand().Border(wxLEFT | wxRIGHT, FromDIP(12)));
    auto* last = new wxBoxSizer{wxHORIZONTAL};
    last->Add(new wxStaticText{this, wxID_ANY, "Numbers are decimal, or hexadecimal after 0x."},
              wxSizerFlags{1}.CenterVertical());
    last->Add(CreateStdDialogButtonSizer(wxOK | wxCANCEL), wxSizerFlags{});
    outer->Add(last, wxSizerFlags{}.Expand().Border(wxALL, FromDIP(12)));
    SetSizer(outer);
    take_room();
    set_values(start);
    entry_of("name").field->Enable(fresh);
    const entry& first = entry_of(fresh ? "name" : "maker");
    first.field->SetFocus();
    help_->SetLabelText(to_wx(first.what->help));
    Bind(
        wxEVT_BUTTON,
        [this](wxCommandEvent&) {
            if (take_over()) EndModal(wxID_OK);
        },
        wxID_OK);
}

wxSizer* device_dialog::columns()
{
    const wxSizerFlags below = wxSizerFlags{}.Expand().Border(wxTOP, FromDIP(12));
    auto* left = new wxBoxSizer{wxVERTICAL};
    left->Add(group("Device", field_group::device), wxSizerFlags{}.Expand());
    left->Add(group("Memory", field_group::memory), below);
    left->Add(group("Note and options", field_group::note), below);
    auto* right = new wxBoxSizer{wxVERTICAL};
    right->Add(group("Pins", field_group::pins), wxSizerFlags{}.Expand());
    right->Add(group("Programming", field_group::programming), below);
    right->Add(last_group(), below);
    auto* both = new wxBoxSizer{wxHORIZONTAL};
    both->Add(left, wxSizerFlags{1});
    both->Add(right, wxSizerFlags{1}.Border(wxLEFT, FromDIP(12)));
    return both;
}

wxSizer* device_dialog::group(const wxString& title, field_group which)
{
    auto* framed = new wxStaticBoxSizer{wxVERTICAL, this, title};
    wxWindow* box = framed->GetStaticBox();
    auto* grid = new wxFlexGridSizer{3, wxSize{FromDIP(9), FromDIP(3)}};
    grid->AddGrowableCol(1);
    for (const device_field& one : fields_of(which)) {
        grid->Add(new wxStaticText{box, wxID_ANY, to_wx(one.label) + ":"}, wxSizerFlags{}.CenterVertical().Right());
        auto* field = new wxTextCtrl{box, wxID_ANY};
        field->SetMinSize({14 * field->GetCharWidth(), -1});
        field->SetToolTip(to_wx(one.help));
        field->Bind(wxEVT_SET_FOCUS, [this, &one](wxFocusEvent& event) {
            event.Skip();
            help_->SetLabelText(to_wx(one.help));
        });
        grid->Add(field, wxSizerFlags{1}.Expand());
        // One that resized itself would make its box, and so the dialog, wider than its wrapped text is.
        auto* beside =
            new wxStaticText{box, wxID_ANY, to_wx(one.unit), wxDefaultPosition, wxDefaultSize, wxST_NO_AUTORESIZE};
        grid->Add(beside, wxSizerFlags{}.CenterVertical());
        entries_.push_back({&one, field, beside});
    }
    framed->Add(grid, wxSizerFlags{1}.Expand().Border(wxALL, FromDIP(6)));
    return framed;
}

wxSizer* device_dialog::last_group()
{
    auto* framed = new wxStaticBoxSizer{wxHORIZONTAL, this, "A load first fills the buffer with"};
    const wxString choices[] = {"0xFF", "0x00", "nothing"};
    clear_ = new wxChoice{framed->GetStaticBox(), wxID_ANY, wxDefaultPosition, wxDefaultSize, 3, choices};
    framed->Add(clear_, wxSizerFlags{1}.Border(wxALL, FromDIP(6)));
    return framed;
}

/// What the field with the keyboard takes.
wxWindow* device_dialog::help_line()
{
    help_ =
        new wxStaticText{this, wxID_ANY, "", wxDefaultPosition, wxDefaultSize, wxST_NO_AUTORESIZE | wxST_ELLIPSIZE_END};
    help_->SetMinSize({1, help_->GetCharHeight()});
    return help_;
}

void device_dialog::set_values(const host::device_preset& start)
{
    field_texts texts = texts_of(start);
    for (const entry& one : entries_) one.field->ChangeValue(to_wx(texts[one.what->key]));
    entry_of("buffer-bytes").field->SetHint("what it needs");
    clear_->SetSelection(static_cast<int>(start.clear));
}

field_texts device_dialog::texts() const
{
    field_texts texts;
    for (const entry& one : entries_) texts[one.what->key] = to_utf8(one.field->GetValue().Trim().Trim(false));
    return texts;
}

device_dialog::entry& device_dialog::entry_of(const std::string& key)
{
    return *std::ranges::find_if(entries_, [&](const entry& one) { return one.what->key == key; });
}

bool device_dialog::take_over()
{
    const field_texts typed = texts();
    const auto none_is_taken = [](const std::string&) { return false; };
    if (const auto wrong = find_wrong_field(typed, fresh_ ? is_taken_ : none_is_taken)) {
        show_wrong(*wrong);
        return false;
    }
    device_ = device_of(typed, static_cast<host::clear_choice>(clear_->GetSelection()));
    return true;
}

void device_dialog::show_wrong(const wrong_field& wrong)
{
    for (const entry& one : entries_) {
        one.beside->SetForegroundColour(wxNullColour);
        one.beside->SetLabelText(to_wx(one.what->unit));
        one.beside->SetMinSize(wxDefaultSize);
    }
    const entry& found = entry_of(wrong.key);
    found.beside->SetForegroundColour(trouble_colour());
    found.beside->SetLabelText(to_wx("takes " + wrong.expected));
    found.beside->Wrap(FromDIP(trouble_width));
    found.beside->SetMinSize(wxClientDC{found.beside}.GetMultiLineTextExtent(found.beside->GetLabelText()));
    take_room();
    found.field->SetFocus();
    found.field->SelectAll();
}

void device_dialog::take_room()
{
    const wxSize needed = GetSizer()->ComputeFittingWindowSize(this);
    const bool fits = GetSize().x >= needed.x;
    SetSizeHints(needed, {-1, needed.y});
    SetSize({fits ? GetSize().x : needed.x, needed.y});
    Layout();
    if (!fits) CentreOnParent();
}

}  // namespace tamrix::workbench
