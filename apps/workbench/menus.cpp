// The menus of the main window.
#include "workbench/main_frame.h"
#include "workbench/text.h"

#include <utility>

#include <wx/aboutdlg.h>
#include <wx/filedlg.h>
#include <wx/menu.h>

namespace tamrix::workbench {

namespace {

constexpr const char* jedec_files = "JEDEC files (*.jed)|*.jed;*.JED|All files|*";
constexpr const char* vector_files = "SVF files (*.svf)|*.svf;*.SVF|All files|*";

}  // namespace

wxMenuItem* main_frame::add(wxMenu* menu, const char* label, const wxString& help, std::function<void()> action)
{
    wxMenuItem* item = menu->Append(wxID_ANY, to_wx(label), help);
    Bind(
        wxEVT_MENU, [action = std::move(action)](wxCommandEvent&) { action(); }, item->GetId());
    return item;
}

wxMenuItem* main_frame::add_method(wxMenu* menu, const char* label, const wxString& help, const char* method,
                                   std::function<void()> action)
{
    wxMenuItem* item = add(menu, label, help, std::move(action));
    method_items_.push_back({item, method});
    return item;
}

void main_frame::add_call(wxMenu* menu, const char* label, const wxString& help, const char* method, method_call call)
{
    add_method(menu, label, help, method, [this, label, call = std::move(call)] {
        const wxString title = wxMenuItem::GetLabelText(to_wx(label)).BeforeFirst(L'…');
        const std::string name = to_utf8(title);
        const wxString what = title + " failed";
        attempt(what, [&] {
            tell(what, watched(name, [&] { return session_.run(call); }));
            tell_hazards();
            buffer_changed();
        });
    });
}

void main_frame::add_logic_call(wxMenu* menu, const char* label, const wxString& help, const char* method,
                                logic_call call)
{
    add_method(menu, label, help, method, [this, label, call = std::move(call)] {
        logic_method(wxMenuItem::GetLabelText(to_wx(label)) + " failed", call);
    });
}

void main_frame::build_menus()
{
    auto* bar = new wxMenuBar;
    bar->Append(file_menu(), "&File");
    bar->Append(edit_menu(), "&Edit");
    bar->Append(device_menu(), "&Device");
    bar->Append(test_menu(), "&Test");
    bar->Append(tools_menu(), "T&ools");
    bar->Append(language_menu(), "&Language");
    bar->Append(help_menu(), "&Help");
    SetMenuBar(bar);
    Bind(wxEVT_MENU_OPEN, [this](wxMenuEvent& event) {
        event.Skip();
        update_menus();
    });
    Bind(
        wxEVT_MENU,
        [this](wxCommandEvent& event) {
            load_file(to_utf8(recent_.GetHistoryFile(static_cast<std::size_t>(event.GetId() - wxID_FILE1))));
        },
        wxID_FILE1, wxID_FILE9);
}

wxMenu* main_frame::file_menu()
{
    auto* menu = new wxMenu;
    needs_buffer(add_method(menu, "&Load File…\tCtrl+O", "Load a file into the buffer", "readfile0",
                            [this] { ask_for_file_to_load(); }));
    auto* recent = new wxMenu;
    needs_buffer(menu->AppendSubMenu(recent, "&Recent Files"));
    recent_.UseMenu(recent);
    needs_buffer(add_method(menu, "&Save\tCtrl+S", "Save the buffer to its file", "wfile", [this] { save(); }));
    needs_buffer(
        add_method(menu, "Save &As…\tCtrl+Shift+S", "Save the buffer to another file", "wfile", [this] { save_as(); }));
    menu->AppendSeparator();
    const auto with_file = [&](const char* label, const char* help, const char* method, const char* filter, long style,
                               void (main_frame::*take)(const std::string&)) {
        return add_method(menu, label, help, method, [this, label, filter, style, take] {
            const wxString title = wxMenuItem::GetLabelText(to_wx(label)).BeforeFirst(L'…');
            ask_for_file(title, filter, style, [this, take](const std::string& path) { (this->*take)(path); });
        });
    };
    constexpr long open = wxFD_OPEN | wxFD_FILE_MUST_EXIST, save = wxFD_SAVE | wxFD_OVERWRITE_PROMPT;
    needs_buffer(with_file("Load &JEDEC…", "Load the fuses of a logic device", "readpldfile", jedec_files, open,
                           &main_frame::load_jedec));
    needs_buffer(with_file("Save J&EDEC…", "Save the fuses of a logic device in the form of the standard",
                           "writepldfile", jedec_files, save, &main_frame::save_jedec_as));
    needs_buffer(with_file("Save JEDEC as the Plug-in &Writes It…",
                           "Save the fuses of a logic device in the plug-in's own form", "writepldfile", jedec_files,
                           save, &main_frame::save_jedec_as_plug_in));
    with_file("&Import SVF…", "Import a serial vector file", "readsvffile", vector_files, open,
              &main_frame::import_svf);
    menu->AppendSeparator();
    add(menu, "&Quit\tCtrl+Q", "Leave the program", [this] { Close(); });
    return menu;
}

wxMenu* main_frame::device_menu()
{
    auto* menu = new wxMenu;
    add(menu, "&Search…\tCtrl+D", "Search the list of devices", [this] {
        open_page(device_panel_);
        device_panel_->start_search();
    });
    add(menu, "&Values…\tF4", "Look at the device's values, and change them", [this] { device_panel_->edit_chosen(); });
    add(menu, "&New Device…", "Add a device to your own list", [this] { device_panel_->add_device(); });
    menu->AppendSeparator();
    add_call(menu, "Modify &Algorithm Parameters…\tCtrl+M", "Supply, pulse and retries of programming",
             "algoparameter0", [](Clstamrix& plug_in) { return plug_in.algoparameter0(); });
    note_item_ = add_method(menu, "Device N&ote", "How the device's memories lie in the buffer", "warn",
                            [this] { show_note(); });
    add_notes_switch(menu);
    return menu;
}

wxMenu* main_frame::test_menu()
{
    auto* menu = new wxMenu;
    add(menu, "S&ocket…\tCtrl+T", "Choose the chip in the simulated socket", [this] {
        open_page(socket_panel_);
        socket_panel_->start_search();
    });
    add(menu, "Fa&ults…\tF7", "Break the simulated programmer", [this] {
        open_page(socket_panel_);
        socket_panel_->start_faults();
    });
    menu->AppendSeparator();
    add_logic_call(menu, "&TTL && CMOS Test…\tF5", "Test a logic device from the library", "mnutestttltest0",
                   [this](Clstamrix& plug_in, std::string& folder, bool16& hardware) {
                       recall_failed_selftest();
                       std::uint8_t icsum = 0;
                       return plug_in.mnutestttltest0(icsum, hardware, folder);
                   });
    add_logic_call(menu, "&Edit Logic Library…", "Edit the library of logic devices", "mnutesteditttllib0",
                   [](Clstamrix& plug_in, std::string& folder, bool16& hardware) {
                       std::uint8_t icsum = 0;
                       return plug_in.mnutesteditttllib0(icsum, hardware, folder);
                   });
    add_method(menu, "&Find Logic Device…\tF6", "Tell which logic device is in the socket", "mnutestautofind0",
               [this] { find_logic_device(); });
    add_method(menu, "&Vector Test", "Play the test vectors of the selected device on the chip in the socket",
               "vecttest0", [this] { test_vectors(); });
    menu->AppendSeparator();
    add_method(menu, "&Self-Test…", "Test the programmer itself", "mnutesttestksm", [this] { run_selftest(); });
    return menu;
}

wxMenu* main_frame::tools_menu()
{
    auto* menu = new wxMenu;
    needs_buffer(
        add_method(menu, "&Logic Analyzer…", "Record and look at signals", "analyzer0", [this] { analyze(); }));
    const auto wave = [](bool16 meter) {
        return [meter](Clstamrix& plug_in) mutable { return plug_in.recetwave0(meter); };
    };
    add_call(menu, "&Frequency Meter…", "Measure a frequency", "recetwave0", wave(bool16_true));
    add_call(menu, "&Signal Generator…", "Put out a square wave", "recetwave0", wave(bool16_false));
    menu->AppendSeparator();
    add(menu, "Signals at the &Pins…\tF8", "Put signals on P21 to P28 of the simulated programmer", [this] {
        open_page(socket_panel_);
        socket_panel_->start_signals();
    });
    menu->AppendSeparator();
    menu->AppendSubMenu(plug_in_menu(), "For &Developers of Hosts");
    return menu;
}

wxMenu* main_frame::help_menu()
{
    auto* menu = new wxMenu;
    add(menu, "&About", "What this is", [this] { about(); });
    return menu;
}

void main_frame::about()
{
    wxAboutDialogInfo about;
    about.SetName("tamrix workbench");
    about.SetVersion(TAMRIX_VERSION);
    about.SetDescription("A universal device programmer's options:\n"
                         "buffer files, logic tests, instruments and self-tests.");
    about.SetCopyright("MIT licence");
    about.SetIcon(GetIcon());
    wxAboutBox(about, this);
}

}  // namespace tamrix::workbench
