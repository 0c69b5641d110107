#include "workbench/device_panel.h"

#include "workbench/device_dialog.h"
#include "workbench/device_size.h"
#include "workbench/text.h"

#include <exception>

#include <wx/msgdlg.h>
#include <wx/sizer.h>

namespace tamrix::workbench {

namespace {

bool matches(const host::device_preset& device, const wxString& words)
{
    const wxString all = to_wx(device.name + " " + device.maker + " " + device.algorithm).Lower();
    for (wxString rest = words.Lower(); !rest.empty(); rest = rest.AfterFirst(' ')) {
        if (!all.Contains(rest.BeforeFirst(' '))) return false;
    }
    return true;
}

}  // namespace

device_panel::device_panel(wxWindow* parent, device_catalogue& devices)
    : wxPanel{parent},
      devices_{devices},
      search_{new wxSearchCtrl{this, wxID_ANY}},
      list_{new wxDataViewListCtrl{this, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                                   wxDV_SINGLE | wxDV_ROW_LINES | wxBORDER_THEME}},
      edit_button_{nullptr},
      remove_button_{nullptr}
{
    search_->SetDescriptiveText("Search devices");
    search_->ShowCancelButton(true);
    list_->AppendTextColumn("Device", wxDATAVIEW_CELL_INERT, FromDIP(130), wxALIGN_LEFT, wxDATAVIEW_COL_RESIZABLE);
    list_->AppendTextColumn("Maker", wxDATAVIEW_CELL_INERT, FromDIP(90), wxALIGN_LEFT, wxDATAVIEW_COL_RESIZABLE);
    list_->AppendTextColumn("Size", wxDATAVIEW_CELL_INERT, FromDIP(80), wxALIGN_LEFT, wxDATAVIEW_COL_RESIZABLE);

    auto* buttons = new wxBoxSizer{wxHORIZONTAL};
    auto* add_button = new wxButton{this, wxID_ANY, L"&New…"};
    edit_button_ = new wxButton{this, wxID_ANY, L"&Values…"};
    remove_button_ = new wxButton{this, wxID_ANY, "Re&move"};
    remove_button_->SetToolTip("Takes the device out of your own list; one that came with the program shows again");
    for (wxButton* button : {add_button, edit_button_, remove_button_}) {
        buttons->Add(button, wxSizerFlags{1}.Border(wxLEFT, button == add_button ? 0 : FromDIP(4)));
    }
    auto* column = new wxBoxSizer{wxVERTICAL};
    column->Add(search_, wxSizerFlags{}.Expand().Border(wxBOTTOM, FromDIP(6)));
    column->Add(list_, wxSizerFlags{1}.Expand());
    column->Add(buttons, wxSizerFlags{}.Expand().Border(wxTOP, FromDIP(6)));
    auto* outer = new wxBoxSizer{wxVERTICAL};
    outer->Add(column, wxSizerFlags{1}.Expand().Border(wxALL, FromDIP(6)));
    SetSizer(outer);

    search_->Bind(wxEVT_TEXT, [this](wxCommandEvent&) { fill(); });
    search_->Bind(wxEVT_SEARCH_CANCEL, [this](wxCommandEvent&) { search_->Clear(); });
    search_->Bind(wxEVT_SEARCH, [this](wxCommandEvent&) {
        if (list_->GetItemCount() == 0) return;
        if (list_->GetSelectedRow() == wxNOT_FOUND) list_->SelectRow(0);
        list_->SetFocus();
        tell_choice();
    });
    list_->Bind(wxEVT_DATAVIEW_SELECTION_CHANGED, [this](wxDataViewEvent&) { tell_choice(); });
    list_->Bind(wxEVT_DATAVIEW_ITEM_ACTIVATED, [this](wxDataViewEvent&) { edit_chosen(); });
    add_button->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { add_device(); });
    edit_button_->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { edit_chosen(); });
    remove_button_->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { remove_chosen(); });
    fill();
}

void device_panel::fill()
{
    const wxString words = search_->GetValue().Trim().Trim(false);
    list_->DeleteAllItems();
    for (const host::device_preset& device : devices_.devices()) {
        if (!matches(device, words)) continue;
        wxVector<wxVariant> line;
        line.push_back(to_wx(device.name));
        line.push_back(to_wx(device.maker));
        line.push_back(to_wx(size_text(device)));
        list_->AppendItem(line);
        if (device.name == chosen_) list_->SelectRow(static_cast<unsigned>(list_->GetItemCount() - 1));
    }
    update_buttons();
}

void device_panel::choose(const std::string& name)
{
    chosen_ = name;
    if (chosen() != nullptr && !matches(*chosen(), search_->GetValue())) search_->ChangeValue("");
    fill();
    if (const int row = list_->GetSelectedRow(); row != wxNOT_FOUND) list_->EnsureVisible(list_->RowToItem(row));
}

void device_panel::start_search()
{
    search_->SetFocus();
    search_->SelectAll();
}

const host::device_preset* device_panel::chosen() const { return host::find_preset(devices_.devices(), chosen_); }

void device_panel::tell_choice()
{
    const int row = list_->GetSelectedRow();
    if (row == wxNOT_FOUND) return;
    const std::string name = to_utf8(list_->GetTextValue(static_cast<unsigned>(row), 0));
    if (name == chosen_) return;
    chosen_ = name;
    update_buttons();
    if (on_choose && chosen() != nullptr) on_choose(*chosen());
}

void device_panel::update_buttons()
{
    edit_button_->Enable(chosen() != nullptr);
    remove_button_->Enable(devices_.is_own(chosen_));
}

void device_panel::edit_chosen()
{
    if (chosen() != nullptr) edit(*chosen(), false);
}

void device_panel::add_device()
{
    host::device_preset start = chosen() != nullptr ? *chosen() : host::device_preset{};
    start.name.clear();
    edit(start, true);
}

void device_panel::edit(const host::device_preset& start, bool fresh)
{
    device_dialog dialog{wxGetTopLevelParent(this), start, fresh, [this](const std::string& name) {
                             return host::find_preset(devices_.devices(), name) != nullptr;
                         }};
    if (dialog.ShowModal() != wxID_OK) return;
    const host::device_preset device = dialog.device();
    try {
        devices_.save(device);
    } catch (const std::exception& error) {
        wxMessageBox(to_wx(error.what()), "The device was not saved", wxOK | wxICON_ERROR, this);
        return;
    }
    choose(device.name);
    if (on_choose) on_choose(device);
}

bool device_panel::asks_to_remove()
{
    wxMessageDialog question{wxGetTopLevelParent(this), "Remove " + to_wx(chosen_) + " from your own list?",
                             "Remove Device", wxYES_NO | wxNO_DEFAULT | wxICON_QUESTION};
    return question.ShowModal() == wxID_YES;
}

void device_panel::remove_chosen()
{
    if (!asks_to_remove()) return;
    try {
        devices_.remove(chosen_);
    } catch (const std::exception& error) {
        wxMessageBox(to_wx(error.what()), "The device was not removed", wxOK | wxICON_ERROR, this);
        return;
    }
    const host::device_preset* next = chosen() != nullptr ? chosen() : &devices_.devices().front();
    const host::device_preset device = *next;
    choose(device.name);
    if (on_choose) on_choose(device);
}

}  // namespace tamrix::workbench
