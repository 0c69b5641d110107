#include "workbench/socket_panel.h"

#include "host/fault_examples.h"
#include "workbench/text.h"

#include <array>

#include <wx/sizer.h>
#include <wx/statbox.h>

namespace tamrix::workbench {

namespace {

constexpr const char* empty_row = "(empty)";
constexpr int highest_model = 99;
constexpr entry_words fault_words{"Faults of the programmer",
                                  "vcc driver 7 dead",
                                  "Type a fault, or choose one and change its pin; several with ; between",
                                  "&Add",
                                  nullptr,
                                  "&Remove",
                                  "Remo&ve All"};

wxString description_of(const host::simulated_chip& chip)
{
    return to_wx(chip.description + (chip.same_as.empty() ? "" : ", as " + chip.same_as));
}

wxString title_of(const host::simulator& socket)
{
    if (const auto* const chip = socket.chip()) return to_wx(chip->name) + L" – " + description_of(*chip);
    return socket.in_socket() == host::simulator::test_board ? "Test board" : "No chip";
}

bool matches(const wxString& line, const wxString& words)
{
    const wxString all = line.Lower();
    for (wxString rest = words.Lower(); !rest.empty(); rest = rest.AfterFirst(' ')) {
        if (!all.Contains(rest.BeforeFirst(' '))) return false;
    }
    return true;
}

}  // namespace

socket_panel::socket_panel(wxWindow* parent, const host::simulator* socket, int model, bool usb)
    : wxPanel{parent},
      socket_{socket},
      area_{new wxScrolledWindow{this, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxVSCROLL}}
{
    area_->SetScrollRate(0, FromDIP(10));
    area_->SetMinSize(FromDIP(wxSize{60, 60}));
    auto* column = new wxBoxSizer{wxVERTICAL};
    const wxSizerFlags below = wxSizerFlags{}.Expand().Border(wxTOP, FromDIP(9));
    if (socket_ != nullptr) {
        column->Add(chip_list(), wxSizerFlags{1}.Expand());
        column->Add(chip_in_socket(), below);
    }
    column->Add(programmer_box(model, usb), below);
    column->Add(last_selftest_box(), below);
    if (socket_ != nullptr) {
        faults_ = new entry_panel{area_, fault_words};
        signals_ = new signal_panel{area_, *socket_};
        add_entries(*column, *faults_);
        add_entries(*column, *signals_);
    }
    auto* outer = new wxBoxSizer{wxVERTICAL};
    outer->Add(column, wxSizerFlags{1}.Expand().Border(wxALL, FromDIP(6)));
    area_->SetSizer(outer);
    auto* page = new wxBoxSizer{wxVERTICAL};
    page->Add(area_, wxSizerFlags{1}.Expand());
    SetSizer(page);
    refresh();
}

wxSizer* socket_panel::chip_list()
{
    search_ = new wxSearchCtrl{area_, wxID_ANY};
    search_->SetDescriptiveText("Search chips");
    search_->ShowCancelButton(true);
    list_ = new wxDataViewListCtrl{area_, wxID_ANY, wxDefaultPosition, wxDefaultSize,
                                   wxDV_SINGLE | wxDV_ROW_LINES | wxBORDER_THEME};
    list_->AppendTextColumn("Chip", wxDATAVIEW_CELL_INERT, FromDIP(72), wxALIGN_LEFT, wxDATAVIEW_COL_RESIZABLE);
    list_->AppendTextColumn("Pins", wxDATAVIEW_CELL_INERT, FromDIP(42), wxALIGN_LEFT, wxDATAVIEW_COL_RESIZABLE);
    list_->AppendTextColumn("Function", wxDATAVIEW_CELL_INERT, FromDIP(200), wxALIGN_LEFT, wxDATAVIEW_COL_RESIZABLE);
    list_->SetMinSize({-1, FromDIP(84)});
    search_->Bind(wxEVT_TEXT, [this](wxCommandEvent&) { fill(); });
    search_->Bind(wxEVT_SEARCH_CANCEL, [this](wxCommandEvent&) { search_->Clear(); });
    search_->Bind(wxEVT_SEARCH, [this](wxCommandEvent&) {
        if (list_->GetItemCount() == 0) return;
        list_->SelectRow(0);
        list_->SetFocus();
        tell_choice();
    });
    list_->Bind(wxEVT_DATAVIEW_SELECTION_CHANGED, [this](wxDataViewEvent&) { tell_choice(); });

    auto* column = new wxBoxSizer{wxVERTICAL};
    column->Add(search_, wxSizerFlags{}.Expand().Border(wxBOTTOM, FromDIP(6)));
    column->Add(list_, wxSizerFlags{1}.Expand());
    return column;
}

wxSizer* socket_panel::programmer_box(int model, bool usb)
{
    auto* framed = new wxStaticBoxSizer{wxHORIZONTAL, area_, "Programmer"};
    wxWindow* box = framed->GetStaticBox();
    model_ =
        new wxSpinCtrl{box, wxID_ANY, "", wxDefaultPosition, wxDefaultSize, wxSP_ARROW_KEYS, 0, highest_model, model};
    model_->SetToolTip(
        "The model number that the plug-in is told; below 30 it uses the older library of logic devices");
    const std::array<wxString, 2> routes{"USB", "Device object"};
    route_ =
        new wxChoice{box, wxID_ANY, wxDefaultPosition, wxDefaultSize, static_cast<int>(routes.size()), routes.data()};
    route_->SetSelection(usb ? 0 : 1);
    route_->SetToolTip("USB plays all vectors at a stroke, the device object row by row");
    const wxSizerFlags label = wxSizerFlags{}.CenterVertical().Border(wxTOP | wxBOTTOM | wxLEFT, FromDIP(6));
    framed->Add(new wxStaticText{box, wxID_ANY, "Model:"}, label);
    framed->Add(model_, beside().Border(wxTOP | wxBOTTOM | wxLEFT, FromDIP(6)));
    framed->Add(new wxStaticText{box, wxID_ANY, "Route:"}, wxSizerFlags{label}.Border(wxALL, FromDIP(6)));
    framed->Add(route_, wxSizerFlags{1}.CenterVertical().Border(wxTOP | wxBOTTOM | wxRIGHT, FromDIP(6)));
    model_->Bind(wxEVT_SPINCTRL, [this](wxSpinEvent&) { on_programmer(); });
    route_->Bind(wxEVT_CHOICE, [this](wxCommandEvent&) { on_programmer(); });
    return framed;
}

/// A text box, so that a long list of faults can be scrolled, and copied.
wxSizer* socket_panel::last_selftest_box()
{
    auto* framed = new wxStaticBoxSizer{wxVERTICAL, area_, "Last self-test"};
    last_selftest_ =
        new wxTextCtrl{framed->GetStaticBox(), wxID_ANY,      "",
                       wxDefaultPosition,      wxDefaultSize, wxTE_MULTILINE | wxTE_READONLY | wxBORDER_THEME};
    last_selftest_->SetMinSize({-1, 4 * last_selftest_->GetCharHeight()});
    framed->Add(last_selftest_, wxSizerFlags{}.Expand().Border(wxALL, FromDIP(6)));
    return framed;
}

void socket_panel::add_entries(wxSizer& column, entry_panel& entries)
{
    const auto show_whole = [this, &entries] {
        CallAfter([this, &entries] { bring_into_view(entries); });  // a page that just opened has no layout before
    };
    entries.on_resize = [this, show_whole] {
        make_room();
        show_whole();
    };
    entries.Bind(wxEVT_CHILD_FOCUS, [show_whole](wxChildFocusEvent& event) {
        event.Skip();
        show_whole();
    });
    column.Add(&entries, wxSizerFlags{}.Expand().Border(wxTOP, FromDIP(9)));
}

void socket_panel::make_room()
{
    area_->FitInside();
    if (IsShownOnScreen()) area_->Layout();
}

/// The area itself does so only for its own children.
void socket_panel::bring_into_view(const wxWindow& part)
{
    const wxRect place{area_->ScreenToClient(part.GetScreenPosition()), part.GetSize()};
    const int below = place.GetBottom() - area_->GetClientSize().y + 1;
    int unit = 0;
    area_->GetScrollPixelsPerUnit(nullptr, &unit);
    if (below > 0) area_->Scroll(-1, area_->GetViewStart().y + (below + unit - 1) / unit);
}

void socket_panel::fill()
{
    const wxString words = search_->GetValue().Trim().Trim(false);
    const std::string& there = socket_->in_socket();
    list_->DeleteAllItems();
    const auto add = [&](const wxString& name, const wxString& pins, const wxString& function, bool chosen) {
        if (!matches(name + " " + function, words)) return;
        wxVector<wxVariant> line;
        line.push_back(name);
        line.push_back(pins);
        line.push_back(function);
        list_->AppendItem(line);
        if (chosen) list_->SelectRow(static_cast<unsigned>(list_->GetItemCount() - 1));
    };
    add(empty_row, "", "no chip in the socket", there.empty());
    const wxString board = to_wx(host::simulator::test_board);
    add(board, "", "for the Output Test of the self-test", there == host::simulator::test_board);
    for (const host::simulated_chip& chip : socket_->chips()) {
        add(to_wx(chip.name), wxString::Format("%d", chip.pins()), description_of(chip), there == chip.name);
    }
    if (const int row = list_->GetSelectedRow(); row != wxNOT_FOUND) list_->EnsureVisible(list_->RowToItem(row));
}

std::string socket_panel::name_in_row(int row) const
{
    const wxString name = list_->GetTextValue(static_cast<unsigned>(row), 0);
    return name == empty_row ? std::string{} : to_utf8(name);
}

void socket_panel::tell_choice()
{
    const int row = list_->GetSelectedRow();
    if (row == wxNOT_FOUND) return;
    const std::string name = name_in_row(row);
    if (name != socket_->in_socket()) on_insert(name);
}

void socket_panel::refresh()
{
    if (socket_ == nullptr) return;
    show_failed({}, "");
    const auto faults = host::fault_examples();
    faults_->refresh(socket_->more_faults(), {faults.begin(), faults.end()});
    signals_->refresh();
    const wxString title = title_of(*socket_);
    if (title != title_->GetLabelText() || list_->GetItemCount() == 0) {
        title_->SetLabelText(title);
        picture_->take_chip();
        if (list_->GetSelectedRow() == wxNOT_FOUND || name_in_row(list_->GetSelectedRow()) != socket_->in_socket()) {
            fill();
        }
        make_room();
    }
    show_pin();
}

void socket_panel::start_faults()
{
    if (faults_ == nullptr) return model_->SetFocus();
    faults_->start_entry();
}

void socket_panel::start_signals()
{
    if (signals_ == nullptr) return model_->SetFocus();
    signals_->start_entry();
}

void socket_panel::start_search()
{
    if (search_ == nullptr) return model_->SetFocus();
    search_->SetFocus();
    search_->SelectAll();
}

}  // namespace tamrix::workbench
