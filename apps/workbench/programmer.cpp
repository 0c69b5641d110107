// The main window's programmer: attaching it, its socket, the methods of the logic test.
#include "host/data_folder.h"
#include "host/user_folder.h"
#include "workbench/main_frame.h"
#include "workbench/text.h"

#include <cstdlib>
#include <exception>
#include <functional>
#include <utility>

#include <wx/config.h>
#include <wx/timer.h>
#include <wx/utils.h>

namespace tamrix::workbench {

namespace {

constexpr const char* chip_key = "/Socket/Chip";
constexpr const char* model_key = "/Socket/Model";
constexpr const char* route_key = "/Socket/USB";
constexpr long default_model = 40;

class ticker final : public wxTimer {
public:
    explicit ticker(std::function<void()> on_tick) : on_tick_{std::move(on_tick)} { Start(100); }
    void Notify() override { on_tick_(); }

private:
    std::function<void()> on_tick_;
};

bool environment_names_programmer()
{
    const char* path = std::getenv("TAMRIX_PROGRAMMER");
    return path != nullptr && *path != '\0';
}

}  // namespace

void main_frame::choose_programmer(const start_options& options)
{
    programmer_choice choice{.library = options.programmer, .options = options.programmer_options};
    const wxConfigBase& kept = *wxConfigBase::Get();
    choice.model = static_cast<std::int16_t>(kept.ReadLong(model_key, default_model));
    choice.usb = kept.ReadBool(route_key, true);
    has_programmer_ = !choice.library.empty() || environment_names_programmer();
    if (!has_programmer_) {
        try {
            socket_ = std::make_unique<host::simulator>("", data_folder_ + "chips");
            choice.library = socket_->library_path();
            const std::string chip = to_utf8(kept.Read(chip_key, ""));
            if (socket_->find(chip) != nullptr || chip == host::simulator::test_board) socket_->insert(chip);
            put_kept_signals_on();
            has_programmer_ = true;
        } catch (const std::exception& error) {
            programmer_trouble_ = error.what();
        }
    }
    session_.use_programmer(choice);
}

void main_frame::attach_programmer()
{
    programmer_choice choice = session_.programmer();
    choice.model = static_cast<std::int16_t>(socket_panel_->model());
    choice.usb = socket_panel_->usb();
    if (socket_ != nullptr) choice.options = socket_->options(choice.model);
    session_.use_programmer(choice);
    wxConfigBase::Get()->Write(model_key, static_cast<long>(choice.model));
    wxConfigBase::Get()->Write(route_key, choice.usb);
    if (!programmer_trouble_.empty()) log_->trouble(programmer_trouble_);
    programmer_trouble_.clear();
}

void main_frame::build_socket_panel(wxWindow* parent)
{
    const programmer_choice& now = session_.programmer();
    socket_panel_ = new socket_panel{parent, socket_.get(), now.model, now.usb};
    socket_panel_->on_insert = [this](const std::string& name) { insert_chip(name); };
    socket_panel_->on_break = [this](int pin, host::pin_state state) { break_pin(pin, state); };
    socket_panel_->on_mend = [this] {
        attempt("The pins cannot be mended", [&] {
            socket_changed(socket_->mend());
            log_->remark("Socket: all pins are sound");
        });
    };
    if (socket_panel_->faults() != nullptr) build_fault_panel(*socket_panel_->faults());
    if (socket_panel_->signals() != nullptr) build_signal_panel(*socket_panel_->signals());
    socket_panel_->on_programmer = [this] {
        attempt("The programmer cannot be changed", [&] { attach_programmer(); });
        update_menus();
    };
}

void main_frame::build_fault_panel(entry_panel& panel)
{
    panel.on_add = [this](const std::string& faults) { return add_faults(faults); };
    panel.on_remove = [this](std::size_t index) {
        attempt("The fault cannot be removed", [&] {
            log_->remark("Programmer: without the fault \"" + socket_->more_faults().at(index) + "\"");
            socket_changed(socket_->remove_fault(index));
        });
    };
    panel.on_remove_all = [this] {
        attempt("The faults cannot be removed", [&] {
            socket_changed(socket_->remove_faults());
            log_->remark("Programmer: without faults");
        });
    };
}

/// Returns why they are refused.
std::string main_frame::add_faults(const std::string& faults)
{
    bool through = false;
    try {
        through = socket_->add_faults(faults);
    } catch (const std::exception& error) {
        return error.what();
    }
    attempt("The programmer cannot be changed", [&] {
        socket_changed(through);
        log_->remark("Programmer: with the fault \"" + faults + "\"");
    });
    return {};
}

void main_frame::insert_chip(const std::string& name)
{
    attempt("The chip does not go into the socket", [&] {
        socket_changed(socket_->insert(name));
        const host::simulated_chip* const chip = socket_->chip();
        const std::string description = chip != nullptr ? ", " + chip->description : "";
        log_->remark("Socket: " + (name.empty() ? "empty" : name) + description);
        wxConfigBase::Get()->Write(chip_key, to_wx(name));
    });
}

void main_frame::break_pin(int pin, host::pin_state state)
{
    attempt("The pin stays as it is", [&] {
        socket_changed(socket_->set(pin, state));
        log_->remark("Socket: pin " + std::to_string(pin) + " is " + to_utf8(words_of(state)));
    });
}

void main_frame::socket_changed(bool through)
{
    if (through) {
        session_.remember_options(socket_->options(session_.programmer().model));
    } else {
        attach_programmer();
    }
    show_socket();
}

void main_frame::show_socket()
{
    socket_panel_->refresh();
    if (socket_ == nullptr) {
        return SetStatusText(has_programmer_ ? "Programmer: attached" : "No programmer", socket_field);
    }
    const std::string& there = socket_->in_socket();
    wxString text = "Socket: " + (there.empty() ? wxString{"empty"} : to_wx(there));
    if (const std::size_t count = socket_->faults(); count != 0)
        text += wxString::Format(count == 1 ? ", %zu bad pin" : ", %zu bad pins", count);
    if (const std::size_t count = socket_->more_faults().size(); count != 0)
        text += wxString::Format(count == 1 ? ", %zu fault" : ", %zu faults", count);
    if (const std::size_t count = socket_->signals().size(); count != 0)
        text += wxString::Format(count == 1 ? ", %zu signal" : ", %zu signals", count);
    SetStatusText(text, socket_field);
}

void main_frame::open_page(wxWindow* page)
{
    sides_->ChangeSelection(static_cast<std::size_t>(sides_->FindPage(page)));
}

void main_frame::logic_method(const wxString& what, const logic_call& call)
{
    attempt(what, [&] {
        std::string folder = host::own_logic_libraries(data_folder_);
        bool16 hardware = has_programmer_ ? bool16_true : bool16_false;
        propose_chip();
        tell(what, watched(to_utf8(what.BeforeFirst(' ')), [&] {
                 return session_.run([&](Clstamrix& plug_in) { return call(plug_in, folder, hardware); });
             }));
        tell_logic_tests();
        tell_hazards();
        buffer_changed();
    });
}

/// The method has no dialog while it works. It lets the window listen, so the window must not call the plug-in again.
void main_frame::find_logic_device()
{
    const wxString what = "Find Logic Device failed";
    const wxString before = GetStatusBar()->GetStatusText(format_field);
    wxWindow* const focus = FindFocus();
    attempt(what, [&] {
        std::string folder = host::own_logic_libraries(data_folder_);
        recall_failed_selftest();
        outcome told;
        {
            const wxWindowDisabler one_call_at_a_time;
            const ticker progress{[&] {
                SetStatusText(wxString::Format("Tried %d %% of the library", session_.progress()), format_field);
            }};
            told = session_.run([&](Clstamrix& plug_in) { return plug_in.mnutestautofind0(folder); });
        }
        // Vectors of other devices drive the outputs of this one, which is how it works: these hazards are not
        // reported.
        if (socket_ != nullptr) socket_->take_hazards();
        tell(what, told);
    });
    SetStatusText(before, format_field);
    if (focus != nullptr) focus->SetFocus();
}

void main_frame::tell_hazards()
{
    if (socket_ == nullptr) return;
    for (const std::string& hazard : socket_->take_hazards()) log_->trouble("This could have done harm: " + hazard);
}

void main_frame::analyze()
{
    const wxString what = "Logic Analyzer failed";
    attempt(what, [&] {
        hex_view_->show({});
        tell(what, aside([&] { return session_.analyze(); }));
        tell_hazards();
    });
    buffer_changed();
}

}  // namespace tamrix::workbench
