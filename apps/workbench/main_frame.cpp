#include "workbench/main_frame.h"

#include "host/data_folder.h"
#include "workbench/dropped_files.h"
#include "workbench/text.h"

#include <algorithm>
#include <array>
#include <exception>
#include <filesystem>
#include <memory>
#include <system_error>

#include <wx/artprov.h>
#include <wx/config.h>
#include <wx/msgdlg.h>
#include <wx/persist/toplevel.h>
#include <wx/sizer.h>
#include <wx/splitter.h>
#include <wx/toolbar.h>
#include <wx/utils.h>

namespace tamrix::workbench {

namespace {

constexpr const char* last_device_key = "/Device";

const host::device_preset& device_to_start_with(const device_catalogue& devices, const std::string& wanted)
{
    if (!wanted.empty()) {
        if (const auto* named = host::find_preset(devices.devices(), wanted)) return *named;
        throw std::runtime_error{"There is no device " + wanted + "."};
    }
    const std::string last = to_utf8(wxConfigBase::Get()->Read(last_device_key, "27C256"));
    if (const auto* named = host::find_preset(devices.devices(), last)) return *named;
    return devices.devices().at(0);
}

}  // namespace

main_frame::main_frame(const start_options& options)
    : wxFrame{nullptr, wxID_ANY, "tamrix workbench"},
      session_{options.plug_in},
      document_{[this](const std::string& device) { return make_buffer(device); }},
      data_folder_{host::data_folder() + "/"}
{
    SetName("main");
    SetIcon(wxIcon{to_wx(data_folder_ + "icons/tamrix.png"), wxBITMAP_TYPE_PNG});
    SetSize(FromDIP(wxSize{1080, 720}));
    choose_programmer(options);
    take_language_of_settings();
    build_panels();
    build_menus();
    build_tool_bar();
    const std::array<int, status_fields> widths{-3, -3, -3, -3, -3, -5};
    CreateStatusBar(status_fields)->SetStatusWidths(status_fields, widths.data());
    recent_.Load(*wxConfigBase::Get());
    show_state();

    const host::device_preset& first = device_to_start_with(devices_, options.device);
    device_panel_->choose(first.name);
    select_device(first);
    SetStatusText("No file loaded", format_field);
    attempt("The programmer cannot be attached", [&] { attach_programmer(); });
    show_socket();
    read_last_selftest();

    Bind(wxEVT_CLOSE_WINDOW, &main_frame::on_close, this);
    SetMinSize(FromDIP(wxSize{640, 420}));
    wxPersistenceManager::Get().RegisterAndRestore(this);
    hex_view_->SetFocus();
}

main_frame::~main_frame()
{
    recent_.Save(*wxConfigBase::Get());
    wxConfigBase::Get()->Write(last_device_key, to_wx(session_.device().name));
    hex_view_->show({});  // the buffer goes before its view does
}

void main_frame::build_panels()
{
    auto* sides = new wxSplitterWindow{this, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxSP_LIVE_UPDATE};
    sides_ = new wxNotebook{sides, wxID_ANY};
    device_panel_ = new device_panel{sides_, devices_};
    sides_->AddPage(device_panel_, "Devices");
    build_socket_panel(sides_);
    sides_->AddPage(socket_panel_, "Socket");
    for (wxWindow* page : {static_cast<wxWindow*>(device_panel_), static_cast<wxWindow*>(socket_panel_)}) {
        page->SetSize(FromDIP(wxSize{330, 900}));  // the toolkit complains of lists that first show without any room
        page->Layout();
    }
    auto* right = new wxSplitterWindow{sides, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxSP_LIVE_UPDATE};
    auto* buffer_panel = new wxPanel{right};
    hex_view_ = new hexview::hex_view{buffer_panel};
    auto* around = new wxBoxSizer{wxVERTICAL};
    around->Add(hex_view_, wxSizerFlags{1}.Expand().Border(wxALL, FromDIP(6)));
    values_ = new value_panel{buffer_panel};
    around->Add(values_, wxSizerFlags{}.Expand().Border(wxLEFT | wxRIGHT | wxBOTTOM, FromDIP(6)));
    buffer_panel->SetSizer(around);
    log_ = new log_panel{right};
    right->SetMinimumPaneSize(FromDIP(80));
    right->SetSashGravity(1.0);
    right->SplitHorizontally(buffer_panel, log_, FromDIP(-150));
    sides->SetMinimumPaneSize(FromDIP(200));
    sides->SetSashGravity(0.0);
    sides->SplitVertically(sides_, right, FromDIP(330));

    device_panel_->on_choose = [this](const host::device_preset& device) { choose_device(device); };
    note_timer_.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { note_when_idle(); });
    hex_view_->on_move = [this] { show_caret(); };
    build_editor();
    SetDropTarget(new file_target{[this](const std::vector<std::string>& files) {
        CallAfter([this, files] { load_one_of(files); });  // the drop itself must end before a dialog opens
    }});
}

void main_frame::build_tool_bar()
{
    wxToolBar* bar = CreateToolBar(wxTB_HORIZONTAL | wxTB_HORZ_TEXT | wxTB_FLAT);
    // What is here works on the buffer.
    const auto tool = [&](const char* label, const wxArtID& art, const char* help, std::function<void()> action) {
        const auto* made = bar->AddTool(wxID_ANY, label, wxArtProvider::GetBitmapBundle(art, wxART_TOOLBAR), help);
        Bind(
            wxEVT_TOOL, [action = std::move(action)](wxCommandEvent&) { action(); }, made->GetId());
        buffer_tools_.push_back(made->GetId());
    };
    tool("Load", wxART_FILE_OPEN, "Load a file into the buffer (Ctrl+O)", [this] { ask_for_file_to_load(); });
    tool("Save", wxART_FILE_SAVE, "Save the buffer to its file (Ctrl+S)", [this] { save(); });
    bar->AddSeparator();
    tool("Find", wxART_FIND, "Find bytes or a text in the buffer (Ctrl+F)", [this] { editor_->find(); });
    tool("Go to", wxART_GO_FORWARD, "Go to an address (Ctrl+G)", [this] { editor_->go_to(); });
    bar->Realize();
}

/// Runs a routine that leaves no status lines, and logs that it was done. False if it failed.
bool main_frame::run_routine(const wxString& name, const std::function<outcome()>& routine)
{
    bool done = false;
    attempt(name + " failed", [&] {
        const outcome told = routine();
        tell(name + " failed", told);
        done = !told.failed();
        if (done) log_->remark(to_utf8(name) + ": done");
        if (!told.note.empty()) log_->remark(printable("Note:" + told.note));
        buffer_changed();
    });
    return done;
}

void main_frame::show_load(const std::string& path, const wxString& detected, bool done)
{
    show_state();
    SetStatusText(done ? "Detected: " + detected : wxString{"Load failed"}, format_field);
    SetStatusText("", mode_field);
    if (done) remember(path);
}

void main_frame::remember(const std::string& path)
{
    std::error_code no_current_folder;
    const std::filesystem::path whole = std::filesystem::absolute(path, no_current_folder);
    if (!no_current_folder) recent_.AddFileToHistory(to_wx(whole.string()));
}

void main_frame::show_mode(const variant& from_mode)
{
    static constexpr const char* modes[] = {"Normal", "Even", "Odd", "1st of 4", "2nd of 4", "3rd of 4", "4th of 4"};
    const auto* mode = std::get_if<std::int16_t>(&from_mode);
    if (mode == nullptr || *mode < 0 || *mode >= static_cast<int>(std::size(modes))) return;
    SetStatusText(wxString{"From file: "} + modes[*mode], mode_field);
}

void main_frame::attempt(const wxString& what, const std::function<void()>& action)
{
    try {
        action();
    } catch (const std::exception& error) {
        fail(what, error.what());
    }
}

/// Shows the status lines as the plug-in wrote them, and below them why it failed. An error that no dialog handled has
/// not been seen by anybody yet, so it is shown in a box as well.
void main_frame::tell(const wxString& what, const outcome& told)
{
    log_->status(told.lines);
    if (!told.diagnostic.empty()) log_->trouble(told.diagnostic);
    if (!told.result.ok()) fail(what, told.result.error);
}

void main_frame::fail(const wxString& what, const std::string& why)
{
    log_->trouble(to_utf8(what) + ": " + why);
    wxMessageDialog{this, to_wx(why), what, wxOK | wxICON_ERROR}.ShowModal();
}

}  // namespace tamrix::workbench
