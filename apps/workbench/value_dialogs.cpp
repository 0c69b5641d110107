#include "workbench/value_dialogs.h"

#include "editing/addresses.h"
#include "workbench/colours.h"
#include "workbench/text.h"

#include <functional>

#include <wx/button.h>
#include <wx/combobox.h>
#include <wx/dialog.h>
#include <wx/radiobut.h>
#include <wx/sizer.h>
#include <wx/stattext.h>

namespace tamrix::workbench {

namespace {

wxString address_of(std::size_t address)
{
    return wxString::Format("%08llX", static_cast<unsigned long long>(address));
}

/// One field that must be right, with room for more.
class question : public wxDialog {
public:
    question(wxWindow* parent, const wxString& title, const wxString& label, const wxString& text)
        : wxDialog{parent, wxID_ANY, title}
    {
        field = new wxComboBox{this, wxID_ANY, text};
        field->SetMinSize(FromDIP(wxSize{280, -1}));
        column->Add(new wxStaticText{this, wxID_ANY, label});
        column->Add(field, wxSizerFlags{}.Expand().Border(wxTOP, FromDIP(3)));
        wrong_->SetForegroundColour(trouble_colour());
    }

    /// `check` returns what is wrong with the text; empty if nothing is. True once it is right.
    bool ask(const std::function<wxString(const wxString& typed)>& check)
    {
        column->Add(wrong_, wxSizerFlags{}.Expand().Border(wxTOP, FromDIP(6)));
        column->Add(CreateSeparatedButtonSizer(wxOK | wxCANCEL), wxSizerFlags{}.Expand().Border(wxTOP, FromDIP(6)));
        auto* outer = new wxBoxSizer{wxVERTICAL};
        outer->Add(column, wxSizerFlags{1}.Expand().Border(wxALL, FromDIP(12)));
        SetSizerAndFit(outer);
        CentreOnParent();
        Bind(
            wxEVT_BUTTON,
            [this, check](wxCommandEvent& event) {
                const wxString trouble = check(field->GetValue());
                if (trouble.empty()) return event.Skip();
                wrong_->SetLabelText(trouble);
                wrong_->InvalidateBestSize();
                Fit();
                field->SetFocus();
                field->SelectAll();
            },
            wxID_OK);
        field->SetFocus();
        field->SelectAll();
        return ShowModal() == wxID_OK;
    }

    wxBoxSizer* column = new wxBoxSizer{wxVERTICAL};
    wxComboBox* field;

private:
    wxStaticText* wrong_ = new wxStaticText{this, wxID_ANY, ""};
};

}  // namespace

std::optional<fill_choice> ask_for_fill(wxWindow* parent, editing::byte_range selected, std::uint8_t before)
{
    question dialog{parent, "Fill", "&Value of every byte (hexadecimal, 00 to FF):",
                    wxString::Format("%02X", static_cast<unsigned>(before))};
    dialog.field->Append("FF");
    dialog.field->Append("00");
    wxRadioButton* selection = nullptr;
    if (selected.length > 1) {
        const wxString range = address_of(selected.first) + " to " + address_of(selected.end() - 1);
        selection = new wxRadioButton{&dialog,           wxID_ANY,      "The &selection, " + range,
                                      wxDefaultPosition, wxDefaultSize, wxRB_GROUP};
        auto* whole = new wxRadioButton{&dialog, wxID_ANY, "The whole &buffer"};
        selection->SetValue(true);
        dialog.column->Add(selection, wxSizerFlags{}.Border(wxTOP, dialog.FromDIP(9)));
        dialog.column->Add(whole, wxSizerFlags{}.Border(wxTOP, dialog.FromDIP(3)));
    }
    const bool answered = dialog.ask([](const wxString& typed) -> wxString {
        const auto value = editing::hexadecimal_in(to_utf8(typed));
        return value && *value <= 0xFF ? "" : "A value from 00 to FF is needed.";
    });
    if (!answered) return std::nullopt;
    const auto value = static_cast<std::uint8_t>(*editing::hexadecimal_in(to_utf8(dialog.field->GetValue())));
    return fill_choice{value, selection != nullptr && selection->GetValue()};
}

std::optional<std::size_t> ask_for_address(wxWindow* parent, std::size_t here, std::size_t bytes,
                                           const std::set<std::size_t>& marks)
{
    question dialog{parent, "Go to Address", "&Address (hexadecimal; +10 and -10 count from the cursor):", ""};
    for (const std::size_t mark : marks) dialog.field->Append(address_of(mark));
    const auto address_typed = [&](const wxString& typed) { return editing::address_in(to_utf8(typed), here, bytes); };
    const bool answered = dialog.ask([&](const wxString& typed) -> wxString {
        if (address_typed(typed)) return "";
        return wxString::Format("The buffer has the addresses 0 to %llX.", static_cast<unsigned long long>(bytes) - 1);
    });
    if (!answered) return std::nullopt;
    return address_typed(dialog.field->GetValue());
}

}  // namespace tamrix::workbench
