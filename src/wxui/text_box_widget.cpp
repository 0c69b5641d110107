// The text box: what a person types passes the control's filter before it is shown.
#include "wxui/text.h"
#include "wxui/widgets.h"

#include <algorithm>

#include <wx/clipbrd.h>
#include <wx/settings.h>
#include <wx/textctrl.h>
#include <wx/utils.h>

namespace tamrix::wxui {

namespace {

wxString clipboard_text()
{
    wxTextDataObject text;
    wxClipboardLocker open;
    return !!open && wxTheClipboard->GetData(text) ? text.GetText() : wxString{};
}

bool types_a_character(const wxKeyEvent& event)
{
    const wxChar key = event.GetUnicodeKey();
    return key >= ' ' && key != WXK_DELETE && !event.AltDown() && !event.ControlDown();
}

/// The keyboard passes a display by.
class text_field final : public wxTextCtrl {
public:
    text_field(wxWindow* parent, bool readout)
        : wxTextCtrl{parent, wxID_ANY, "", wxDefaultPosition, wxDefaultSize, readout ? wxTE_READONLY | wxTE_CENTRE : 0},
          readout_{readout}
    {
        if (!readout) return;
        SetForegroundColour({forms::text_box::readout_ink >> 16, forms::text_box::readout_ink >> 8 & 0xFF,
                             forms::text_box::readout_ink & 0xFF});
        SetBackgroundColour(wxSystemSettings::GetColour(wxSYS_COLOUR_HIGHLIGHT));
    }
    bool AcceptsFocusFromKeyboard() const override { return !readout_ && wxTextCtrl::AcceptsFocusFromKeyboard(); }

private:
    bool readout_;
};

class text_box_widget final : public widget {
public:
    text_box_widget(forms::text_box& control, wxWindow* parent, callback_guard& guard)
        : control_{control}, field_{new text_field{parent, control.readout()}}, guard_{guard}
    {
        field_->SetMinSize({16 * field_->GetCharWidth(), -1});
        field_->Bind(wxEVT_CHAR, [this](wxKeyEvent& event) { guard_([&] { type(event); }); });
        field_->Bind(wxEVT_TEXT_PASTE, [this](wxClipboardTextEvent&) { guard_([this] { paste(); }); });
        field_->Bind(wxEVT_TEXT, [this](wxCommandEvent&) { guard_([this] { take_over(); }); });
        field_->Bind(wxEVT_KILL_FOCUS, [this](wxFocusEvent& event) {
            event.Skip();
            guard_([this] { leave(); });
        });
    }

    bool update() override
    {
        field_->Enable(control_.enabled());
        const bool other_room = field_->Show(control_.visible());
        mend();
        return other_room;
    }
    wxWindow* window() const override { return field_; }

private:
    void type(wxKeyEvent& event)
    {
        const bool dropped = types_a_character(event) && control_.accepts &&
                             !control_.accepts(static_cast<char32_t>(event.GetUnicodeKey()));
        if (dropped) {
            wxBell();
        } else {
            event.Skip();
        }
    }

    void paste() { field_->WriteText(to_wx(control_.filtered(to_utf8(clipboard_text())))); }

    /// The text is different now, by whatever way it came. What does not pass the filter goes out again.
    void take_over()
    {
        control_.enter(to_utf8(field_->GetValue()));
        mend();
    }

    void mend()
    {
        const wxString text = to_wx(control_.text());
        if (field_->GetValue() == text) return;
        const long behind_caret = field_->GetLastPosition() - field_->GetInsertionPoint();
        field_->ChangeValue(text);
        field_->SetInsertionPoint(std::max(0L, field_->GetLastPosition() - behind_caret));
    }

    void leave()
    {
        if (control_.owner().is_open()) control_.leave();
    }

    forms::text_box& control_;
    wxTextCtrl* field_;
    callback_guard& guard_;
};

}  // namespace

widget_ptr make_text_box(forms::text_box& control, wxWindow* parent, callback_guard& guard)
{
    return std::make_unique<text_box_widget>(control, parent, guard);
}

}  // namespace tamrix::wxui
