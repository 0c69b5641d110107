// The workbench's window: devices, buffer and log, and a menu entry for each method of the plug-in.
#pragma once

#include "editing/document.h"
#include "hexview/hex_view.h"
#include "host/file_report.h"
#include "host/languages.h"
#include "host/last_selftest.h"
#include "workbench/byte_editor.h"
#include "workbench/device_catalogue.h"
#include "workbench/device_panel.h"
#include "workbench/host_session.h"
#include "workbench/log_panel.h"
#include "workbench/socket_panel.h"
#include "workbench/value_panel.h"
#include "workbench/work_keeper.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <wx/filehistory.h>
#include <wx/frame.h>
#include <wx/notebook.h>
#include <wx/timer.h>

namespace tamrix::workbench {

/// What the command line says; empty is not given.
struct start_options {
    std::string device, plug_in, programmer, programmer_options;
    std::vector<std::string> files;
};

class main_frame final : public wxFrame {
public:
    /// Throws std::runtime_error if the plug-in or the devices cannot be loaded.
    explicit main_frame(const start_options& options);
    ~main_frame() override;

    /// What is done first: offers what a crash left, and loads one of the files of the command line.
    void begin(const std::vector<std::string>& files);
    /// Opens a file according to its content: a file of a logic device at once, any other through the load dialog.
    void load_file(const std::string& path);
    /// Of several files, of which there is at least one, opens the one that the person chooses.
    void load_one_of(const std::vector<std::string>& files);

private:
    /// Bytes of the file in the buffer that lie outside the device.
    struct rest_of_file {
        std::string path, format;
        std::vector<std::string> accepted_remarks;  // on its damage
        std::uint64_t start;                        // file address of the first of them
        std::uint64_t bytes;
    };
    using method_call = std::function<reply(Clstamrix&)>;
    enum status_field {
        device_field,
        buffer_field,
        socket_field,
        format_field,
        mode_field,
        caret_field,
        status_fields
    };

    void build_menus();
    wxMenu* file_menu();
    wxMenu* edit_menu();
    wxMenu* device_menu();
    wxMenu* test_menu();
    wxMenu* tools_menu();
    wxMenu* plug_in_menu();
    wxMenu* language_menu();
    wxMenu* help_menu();
    void build_tool_bar();
    void build_panels();
    void build_editor();

    wxMenuItem* add(wxMenu* menu, const char* label, const wxString& help, std::function<void()> action);
    /// An entry for the plug-in's method of that name, disabled if the plug-in does not offer it.
    wxMenuItem* add_method(wxMenu* menu, const char* label, const wxString& help, const char* method,
                           std::function<void()> action);
    void add_call(wxMenu* menu, const char* label, const wxString& help, const char* method, method_call call);
    using logic_call = std::function<reply(Clstamrix&, std::string& folder, bool16& hardware)>;
    void add_logic_call(wxMenu* menu, const char* label, const wxString& help, const char* method, logic_call call);
    /// The entry is off while the buffer is released.
    void needs_buffer(wxMenuItem* item);
    void update_menus();
    void show_buffer_size();

    /// The programmer: the simulated one, unless the command line or the environment name another.
    void choose_programmer(const start_options& options);
    void attach_programmer();
    void build_socket_panel(wxWindow* parent);
    void build_fault_panel(entry_panel& panel);
    std::string add_faults(const std::string& faults);
    void build_signal_panel(signal_panel& panel);
    void put_kept_signals_on();
    /// Returns why the change is refused; logs `remark` if it is not.
    std::string change_signals(const std::string& remark, const std::function<bool()>& change);
    void insert_chip(const std::string& name);
    void break_pin(int pin, host::pin_state state);
    /// After a change of the socket that came `through` to a programmer that is running, or not.
    void socket_changed(bool through);
    void show_socket();
    void open_page(wxWindow* page);
    /// Calls a method of the logic test with the folder of the person's own libraries.
    void logic_method(const wxString& what, const logic_call& call);
    void propose_chip();
    void tell_logic_tests();
    void find_logic_device();
    void analyze();
    void tell_hazards();

    void run_selftest();
    void take_selftest();
    void read_last_selftest();
    void show_last_selftest();
    /// Logs that the programmer failed its last self-test, if it did. Call this before a test that needs a sound one.
    void recall_failed_selftest();

    std::span<std::uint8_t> make_buffer(const std::string& device);
    void select_device(const host::device_preset& device);
    void change_buffer(const std::function<void()>& step);
    void show_device();
    void choose_device(const host::device_preset& device);
    void note_when_idle();
    void show_note();
    void add_notes_switch(wxMenu* menu);
    void test_vectors();
    void choose_language(const host::language& chosen);
    void take_language_of_settings();
    host::file_report inspect(const std::string& path, const char* format);
    bool accepts(const host::file_report& report, const wxString& use = "Load it", const char* refused = "not loaded");
    void compare_with(const std::string& path);
    void load_buffer_file(const std::string& path);
    void tell_content(const host::file_report& report);
    void tell_fit(const host::file_report& report, std::uint64_t start);
    void offer_rest(std::optional<rest_of_file> rest);
    void load_rest();
    void load_jedec(const std::string& path);
    void save_jedec_as(const std::string& path) { save_jedec(path); }
    bool save_jedec(const std::string& path);
    void save_jedec_as_plug_in(const std::string& path);
    void import_svf(const std::string& path);
    bool run_routine(const wxString& name, const std::function<outcome()>& routine);
    outcome aside(const std::function<outcome()>& method);
    outcome watched(const std::string& name, const std::function<outcome()>& method);
    void show_load(const std::string& path, const wxString& detected, bool done);
    void show_mode(const variant& from_mode);
    void remember(const std::string& path);
    void ask_for_file_to_load();
    bool may_lose_changes(const wxString& reason);
    void on_close(wxCloseEvent& event);
    bool save();
    bool save_as();
    bool save_to(const std::string& path);
    void tell_saved(const std::string& path);
    void ask_for_file(const wxString& title, const wxString& filter, long style,
                      const std::function<void(const std::string&)>& take);
    wxString load_filter() const;
    wxString save_filter() const;
    void about();

    /// Runs an action of the session; what it throws is shown, never passed on to the toolkit.
    void attempt(const wxString& what, const std::function<void()>& action);
    void tell(const wxString& what, const outcome& told);
    void fail(const wxString& what, const std::string& why);
    void buffer_changed();
    void show_caret();
    void show_state();

    device_catalogue devices_;
    host_session session_;
    editing::document document_;
    std::unique_ptr<byte_editor> editor_;
    std::unique_ptr<work_keeper> keeper_;
    std::vector<std::uint8_t> refuge_;  // of the bytes while the blocks are made anew
    struct method_item {
        wxMenuItem* item;
        const char* method;
    };
    std::vector<method_item> method_items_;
    std::vector<wxMenuItem*> buffer_items_;
    std::vector<int> buffer_tools_;
    wxMenuItem* note_item_ = nullptr;
    wxMenuItem *undo_item_ = nullptr, *redo_item_ = nullptr;
    wxTimer note_timer_;
    wxFileHistory recent_;
    std::string data_folder_;           // ends with "/"
    std::set<std::string> fuse_files_;  // that were loaded or saved as such
    std::optional<rest_of_file> rest_;
    std::unique_ptr<host::simulator> socket_;  // null where the programmer is not simulated
    std::optional<host::last_selftest> last_selftest_;
    std::string programmer_trouble_;  // shown as soon as there is a log
    bool has_programmer_ = false;
    wxNotebook* sides_ = nullptr;
    device_panel* device_panel_ = nullptr;
    socket_panel* socket_panel_ = nullptr;
    hexview::hex_view* hex_view_ = nullptr;
    log_panel* log_ = nullptr;
    value_panel* values_ = nullptr;
};

}  // namespace tamrix::workbench
