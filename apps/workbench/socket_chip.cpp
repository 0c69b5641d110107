// The chip in the simulated socket: its picture, its bad pins, those that failed a test.
#include "workbench/colours.h"
#include "workbench/socket_panel.h"
#include "workbench/text.h"

#include <utility>

#include <wx/statbox.h>

namespace tamrix::workbench {

wxSizerFlags socket_panel::beside() const { return wxSizerFlags{}.CenterVertical().Border(wxLEFT, FromDIP(6)); }

wxSizer* socket_panel::chip_in_socket()
{
    auto* framed = new wxStaticBoxSizer{wxVERTICAL, area_, "In the socket"};
    wxWindow* box = framed->GetStaticBox();
    title_ = new wxStaticText{box, wxID_ANY, "", wxDefaultPosition, wxDefaultSize, wxST_ELLIPSIZE_END};
    picture_ = new pin_picture{box, *socket_};
    picture_->SetToolTip("A click or the arrows select a pin; o, 0 and 1 break it, s mends it");
    failed_ = new wxStaticText{box, wxID_ANY, "", wxDefaultPosition, wxDefaultSize, wxST_ELLIPSIZE_END};
    failed_->SetForegroundColour(trouble_colour());
    failed_->Hide();
    pin_ = new wxStaticText{box, wxID_ANY, ""};
    state_ = new wxChoice{box, wxID_ANY};
    for (const auto state :
         {host::pin_state::sound, host::pin_state::open, host::pin_state::stuck_at_0, host::pin_state::stuck_at_1}) {
        state_->Append(words_of(state));
    }
    mend_ = new wxButton{box, wxID_ANY, "&Mend All"};
    auto* pin_row = new wxBoxSizer{wxHORIZONTAL};
    pin_row->Add(pin_, wxSizerFlags{}.CenterVertical());
    pin_row->Add(state_, beside().Proportion(1));
    pin_row->Add(mend_, beside());
    framed->Add(title_, wxSizerFlags{}.Expand().Border(wxALL, FromDIP(6)));
    framed->Add(picture_, wxSizerFlags{}.Expand().Border(wxLEFT | wxRIGHT, FromDIP(6)));
    framed->Add(failed_, wxSizerFlags{}.Expand().Border(wxLEFT | wxRIGHT | wxTOP, FromDIP(6)));
    framed->Add(pin_row, wxSizerFlags{}.Expand().Border(wxALL, FromDIP(6)));

    picture_->on_select = [this] { show_pin(); };
    picture_->on_set = [this](host::pin_state state) { on_break(picture_->pin(), state); };
    state_->Bind(wxEVT_CHOICE, [this](wxCommandEvent&) {
        on_break(picture_->pin(), static_cast<host::pin_state>(state_->GetSelection()));
    });
    mend_->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { on_mend(); });
    return framed;
}

void socket_panel::show_pin()
{
    const host::simulated_chip* const chip = socket_->chip();
    state_->Enable(chip != nullptr);
    mend_->Enable(socket_->faults() != 0);
    const int pin = picture_->pin();
    pin_->SetLabelText(chip != nullptr ? wxString::Format("Pin %d, ", pin) +
                                             to_wx(chip->pin_names[static_cast<std::size_t>(pin - 1)]) + ":"
                                       : wxString{"Pin:"});
    state_->SetSelection(static_cast<int>(socket_->state_of(pin)));
    pin_->GetContainingSizer()->Layout();
    picture_->Refresh();
}

void socket_panel::mark_failed(const logic_test& test)
{
    if (socket_ == nullptr) return;
    const host::simulated_chip* const chip = socket_->chip();
    // The pins of another package are others.
    if (chip == nullptr || chip->pins() != test.pins || test.failed_pins.empty()) return show_failed({}, "");
    show_failed(test.failed_pins, wxString{failed_mark} + " failed in the test of " + to_wx(test.device));
}

void socket_panel::show_failed(std::vector<int> pins, const wxString& words)
{
    picture_->mark_failed(std::move(pins));
    if (words == failed_->GetLabelText()) return;
    failed_->SetLabelText(words);
    failed_->Show(!words.empty());
    make_room();
}

}  // namespace tamrix::workbench
