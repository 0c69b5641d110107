#include "workbench/device_dialog.h"

#include "host/preset_text.h"
#include "workbench/text.h"

#include <exception>
#include <map>
#include <sstream>
#include <vector>

#include <wx/msgdlg.h>
#include <wx/statbox.h>
#include <wx/stattext.h>

namespace tamrix::workbench {

namespace {

/// The values of a device by key, as in a file of devices; those with their default are missing.
std::map<std::string, std::string> values_by_key(const host::device_preset& device)
{
    std::map<std::string, std::string> values;
    std::istringstream text{host::print_presets(std::vector{device})};
    for (std::string line; std::getline(text, line);) {
        std::istringstream words{line};
        std::string key, value;
        words >> key >> std::ws;
        std::getline(words, value);
        values[key] = value;
    }
    return values;
}

/// Numbers of words and bytes read better in hexadecimal.
std::string hexadecimal(long value)
{
    return wxString::Format("0x%lX", static_cast<unsigned long>(value)).utf8_string();
}

std::string default_of(const std::string& key)
{
    static const std::map<std::string, std::string> defaults{{"maker", ""},   {"algorithm", ""}, {"word-bytes", "1"},
                                                             {"vcc", "5.00"}, {"vpp", "0.00"},   {"pulse-us", "100"},
                                                             {"retries", "1"}};
    const auto found = defaults.find(key);
    return found != defaults.end() ? found->second : "0";
}

}  // namespace

device_dialog::device_dialog(wxWindow* parent, const host::device_preset& start, bool fresh)
    : wxDialog{parent,
               wxID_ANY,
               fresh ? wxString{"New device"} : "Values of " + to_wx(start.name),
               wxDefaultPosition,
               wxDefaultSize,
               wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER}
{
    auto* left = new wxBoxSizer{wxVERTICAL};
    left->Add(group("Device", {{"name", "Name", ""}, {"maker", "Maker", ""}, {"algorithm", "Algorithm", ""}}),
              wxSizerFlags{}.Expand());
    left->Add(group("Memory", {{"words", "Length", "words"},
                               {"word-bytes", "Width of a word", "bytes"},
                               {"spare-units", "Behind the main area", "× 16 bytes"},
                               {"buffer-bytes", "Buffer", "bytes"}}),
              wxSizerFlags{}.Expand().Border(wxTOP, FromDIP(12)));
    left->Add(group("Note and options", {{"note", "Note", ""},
                                         {"option-0", "Option 0", ""},
                                         {"option-1", "Option 1", ""},
                                         {"option-2", "Option 2", ""},
                                         {"option-3", "Option 3", ""},
                                         {"vcc-high", "VCC high", ""}}),
              wxSizerFlags{}.Expand().Border(wxTOP, FromDIP(12)));
    auto* right = new wxBoxSizer{wxVERTICAL};
    right->Add(group("Pins", {{"pins", "Number of pins", ""}, {"vcc-pin", "VCC pin", ""}, {"gnd-pin", "GND pin", ""}}),
               wxSizerFlags{}.Expand());
    right->Add(group("Programming", {{"vcc", "VCC", "V"},
                                     {"vpp", "VPP", "V"},
                                     {"pulse-us", "Pulse", "µs"},
                                     {"retries", "Retries", ""},
                                     {"page", "Page", ""},
                                     {"mode", "Mode", ""},
                                     {"family", "Family class", ""}}),
               wxSizerFlags{}.Expand().Border(wxTOP, FromDIP(12)));
    right->Add(last_group(), wxSizerFlags{}.Expand().Border(wxTOP, FromDIP(12)));
    auto* columns = new wxBoxSizer{wxHORIZONTAL};
    columns->Add(left, wxSizerFlags{1});
    columns->Add(right, wxSizerFlags{1}.Border(wxLEFT, FromDIP(12)));
    auto* outer = new wxBoxSizer{wxVERTICAL};
    outer->Add(columns, wxSizerFlags{1}.Expand().Border(wxALL, FromDIP(12)));
    auto* note = new wxStaticText{this, wxID_ANY, "Numbers are decimal, or hexadecimal after 0x."};
    outer->Add(note, wxSizerFlags{}.Border(wxLEFT | wxRIGHT, FromDIP(12)));
    outer->Add(CreateStdDialogButtonSizer(wxOK | wxCANCEL), wxSizerFlags{}.Expand().Border(wxALL, FromDIP(12)));
    SetSizerAndFit(outer);
    SetSizeHints(GetSize(), {-1, GetSize().y});
    set_values(start);
    name_->SetEditable(fresh);
    name_->Enable(fresh);
    entries_[fresh ? 0 : 1].field->SetFocus();
    CentreOnParent();
    Bind(
        wxEVT_BUTTON,
        [this](wxCommandEvent&) {
            if (take_over()) EndModal(wxID_OK);
        },
        wxID_OK);
}

wxSizer* device_dialog::group(const wxString& title, const std::vector<line>& lines)
{
    auto* framed = new wxStaticBoxSizer{wxVERTICAL, this, title};
    wxWindow* box = framed->GetStaticBox();
    auto* grid = new wxFlexGridSizer{3, wxSize{FromDIP(9), FromDIP(6)}};
    grid->AddGrowableCol(1);
    for (const line& one : lines) {
        grid->Add(new wxStaticText{box, wxID_ANY, wxString::FromUTF8(one.label) + ":"},
                  wxSizerFlags{}.CenterVertical().Right());
        auto* field = new wxTextCtrl{box, wxID_ANY};
        field->SetMinSize({14 * field->GetCharWidth(), -1});
        grid->Add(field, wxSizerFlags{1}.Expand());
        grid->Add(new wxStaticText{box, wxID_ANY, wxString::FromUTF8(one.unit)}, wxSizerFlags{}.CenterVertical());
        if (std::string_view{one.key} == "name") name_ = field;
        entries_.push_back({one.key, field});
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

void device_dialog::set_values(const host::device_preset& start)
{
    std::map<std::string, std::string> values = values_by_key(start);
    values["name"] = start.name;
    values["words"] = hexadecimal(start.words);
    values["buffer-bytes"] = hexadecimal(start.buffer_bytes);
    for (const entry& one : entries_) {
        const auto found = values.find(one.key);
        one.field->ChangeValue(to_wx(found != values.end() ? found->second : default_of(one.key)));
    }
    clear_->SetSelection(static_cast<int>(start.clear));
}

std::string device_dialog::stanza() const
{
    static constexpr const char* clear_words[] = {"ff", "00", "none"};
    std::string text = "device " + to_utf8(name_->GetValue());
    for (const entry& one : entries_) {
        const std::string value = to_utf8(one.field->GetValue());
        if (one.field != name_ && !value.empty()) text.append("\n").append(one.key).append(" ").append(value);
    }
    return text + "\nclear " + clear_words[clear_->GetSelection()] + "\n";
}

bool device_dialog::take_over()
{
    try {
        device_ = host::parse_presets(stanza(), "device").at(0);
        return true;
    } catch (const std::exception& error) {
        // "device:3: word-bytes 300 where a number from 1 to 255 was expected": the line says nothing here.
        wxString why = to_wx(error.what());
        why = why.AfterFirst(' ');
        wxMessageBox("This value does not fit: " + why + ".", "Device", wxOK | wxICON_WARNING, this);
        return false;
    }
}

}  // namespace tamrix::workbench
