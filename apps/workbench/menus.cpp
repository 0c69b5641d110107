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
    bar->Append(plug_in_menu(), "&Plug-in");
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
    add_method(menu, "&Load File…\tCtrl+O", "Load a file into the buffer", "readfile0",
               [this] { ask_for_file_to_load(); });
    auto* recent = new wxMenu;
    menu->AppendSubMenu(recent, "&Recent Files");
    recent_.UseMenu(recent);
    add_method(menu, "&Save\tCtrl+S", "Save the buffer to its file", "wfile", [this] { save(); });
    add_method(menu, "Save &As…\tCtrl+Shift+S", "Save the buffer to another file", "wfile", [this] { save_as(); });
    menu->AppendSeparator();
    const auto with_file = [&](const char* label, const char* help, const char* method, const char* filter, long style,
                               void (main_frame::*take)(const std::string&)) {
        add_method(menu, label, help, method, [this, label, filter, style, take] {
            const wxString title = wxMenuItem::GetLabelText(to_wx(label)).BeforeFirst(L'…');
            ask_for_file(title, filter, style, [this, take](const std::string& path) { (this->*take)(path); });
        });
    };
    constexpr long open = wxFD_OPEN | wxFD_FILE_MUST_EXIST, save = wxFD_SAVE | wxFD_OVERWRITE_PROMPT;
    with_file("Load &JEDEC…", "Load the fuses of a logic device", "readpldfile", jedec_files, open,
              &main_frame::load_jedec);
    add_method(menu, "Save J&EDEC…", "Save the fuses of a logic device in the form of the standard", "writepldfile",
               [this] {
                   ask_for_file("Save JEDEC", jedec_files, save, [this](const std::string& path) { save_jedec(path); });
               });
    with_file("Save JEDEC as the Plug-in &Writes It…", "Save the fuses of a logic device in the plug-in's own form",
              "writepldfile", jedec_files, save, &main_frame::save_jedec_as_plug_in);
    with_file("&Import SVF…", "Import a serial vector file", "readsvffile", vector_files, open,
              &main_frame::import_svf);
    menu->AppendSeparator();
    add(menu, "&Quit\tCtrl+Q", "Leave the program", [this] { Close(); });
    return menu;
}

wxMenu* main_frame::edit_menu()
{
    auto* menu = new wxMenu;
    undo_item_ = add(menu, "&Undo\tCtrl+Z", "Take the last change of the buffer back",
                     [this] { attempt("Undo failed", [&] { change_buffer([&] { editor_->undo(); }); }); });
    redo_item_ = add(menu, "&Redo\tCtrl+Shift+Z", "Make the change again that was taken back",
                     [this] { attempt("Redo failed", [&] { change_buffer([&] { editor_->redo(); }); }); });
    menu->AppendSeparator();
    using form = byte_editor::form;
    add(menu, "&Copy\tCtrl+C", "Copy the selected bytes as their column shows them", [this] { editor_->copy(); });
    auto* forms = new wxMenu;
    const auto copy_as = [&](const char* label, form as, const char* help) {
        add(forms, label, help, [this, as] { editor_->copy_as(as); });
    };
    copy_as("&Hexadecimal", form::hexadecimal, "Copy as pairs of digits");
    copy_as("&Characters", form::characters, "Copy as text, with a point for what is no character");
    copy_as("C &Array", form::c_array, "Copy as an array for a program in C");
    copy_as("&Intel HEX", form::intel_hex, "Copy as records with the addresses of the buffer");
    menu->AppendSubMenu(forms, "Copy A&s");
    add(menu, "&Paste\tCtrl+V", "Put the bytes of the clipboard over those at the cursor",
        [this] { editor_->paste(); });
    add(menu, "Select &All\tCtrl+A", "Select all bytes", [this] { editor_->select_all(); });
    menu->AppendSeparator();
    add(menu, "&Find…\tCtrl+F", "Find bytes or a text in the buffer", [this] { editor_->find(); });
    add(menu, "Find &Next\tF3", "Find the next place", [this] { editor_->find_next(editing::direction::forward); });
    add(menu, "Find Prev&ious\tShift+F3", "Find the place before",
        [this] { editor_->find_next(editing::direction::backward); });
    add(menu, "R&eplace…\tCtrl+H", "Put bytes or a text in place of others", [this] { editor_->replace(); });
    menu->AppendSeparator();
    add(menu, "&Go to Address…\tCtrl+G", "Go to an address of the buffer", [this] { editor_->go_to(); });
    add(menu, "&Mark\tCtrl+F2", "Mark the byte at the cursor, or take its mark away",
        [this] { editor_->toggle_mark(); });
    add(menu, "Ne&xt Mark\tF2", "Go to the next marked byte", [this] { editor_->next_mark(); });
    menu->AppendSeparator();
    add(menu, "Fi&ll…", "Fill the selection or the buffer with one value", [this] { editor_->fill(); });
    menu->AppendSeparator();
    add_logic_call(menu, "Test &Vectors…", "Edit the test vectors of the device", "mnuEditeditvector0",
                   [](Clstamrix& plug_in, std::string& folder, bool16& hardware) {
                       std::uint8_t icsum = 0;
                       return plug_in.mnuEditeditvector0(icsum, hardware, folder);
                   });
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
    add_method(menu, "&Logic Analyzer…", "Record and look at signals", "analyzer0", [this] { analyze(); });
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
    return menu;
}

wxMenu* main_frame::plug_in_menu()
{
    auto* menu = new wxMenu;
    const auto entry = [&](const char* label, const char* help, const char* method, outcome (host_session::*step)()) {
        add_method(menu, label, help, method, [this, label, step] {
            const wxString what = wxMenuItem::GetLabelText(to_wx(label)) + " failed";
            attempt(what, [&] {
                hex_view_->show({});
                refuge_.assign(document_.bytes().begin(), document_.bytes().end());
                document_.moved(refuge_);
                const outcome told = (session_.*step)();
                document_.moved(session_.buffer());
                refuge_.clear();
                tell(what, told);
                if (told.result.ok()) log_->remark(to_utf8(wxMenuItem::GetLabelText(to_wx(label))) + ": done");
            });
            buffer_changed();
            update_menus();
        });
    };
    entry("&Attach Blocks", "Make the shared blocks anew and attach them", "bufcomopt", &host_session::attach_small);
    entry("Attach &Buffer", "Make the buffer anew and attach it", "buffercomopt", &host_session::attach_buffer);
    entry("&Release Buffer", "Let the plug-in release the buffer", "freesharebufferopt", &host_session::release_buffer);
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
