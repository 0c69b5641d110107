// What the main window works on: the bytes in the buffer of the device in use, with their history and their file.
#include "host/image_text.h"
#include "host/user_folder.h"
#include "workbench/device_size.h"
#include "workbench/main_frame.h"
#include "workbench/text.h"

#include <filesystem>
#include <memory>
#include <stdexcept>

#include <wx/menu.h>

namespace tamrix::workbench {

void main_frame::build_editor()
{
    editor_ = std::make_unique<byte_editor>(*this, document_, *hex_view_);
    editor_->on_remark = [this](const std::string& words) { log_->remark(words); };
    editor_->on_notice = [this](const wxString& words) { values_->notice(words); };
    editor_->may_lose_changes = [this](const wxString& reason) { return may_lose_changes(reason); };
    keeper_ = std::make_unique<work_keeper>(*this, document_, host::user_data_folder() + "/unsaved");
    keeper_->on_remark = [this](const std::string& words) { log_->remark(words); };
    keeper_->on_trouble = [this](const std::string& words) { log_->trouble(words); };
    document_.on_bytes = [this](std::size_t address, std::size_t length) {
        keeper_->note(address, length);
        hex_view_->refresh();
        show_caret();
    };
    document_.on_device = [this] { show_device(); };
    document_.on_state = [this] { show_state(); };
}

void main_frame::begin(const std::vector<std::string>& files)
{
    attempt("Unsaved work cannot be restored", [&] { keeper_->offer(); });
    if (!files.empty()) load_one_of(files);
}

/// For the document: the buffer before it is gone from here on.
std::span<std::uint8_t> main_frame::make_buffer(const std::string& name)
{
    const host::device_preset* const device = host::find_preset(devices_.devices(), name);
    if (device == nullptr) throw std::runtime_error{"There is no device " + name + " any more."};
    hex_view_->show({});
    session_.select(*device);
    return session_.buffer();
}

void main_frame::select_device(const host::device_preset& device)
{
    attempt("The device cannot be selected", [&] {
        change_buffer([&] { document_.change_device(device.name); });
        log_->remark("Device " + device.name + (device.maker.empty() ? "" : ", " + device.maker) + ": " +
                     buffer_text(device));
        if (const std::size_t end = document_.hidden().end(); end > 0) {
            log_->remark("  the bytes up to " + host::address_text(end - 1) +
                         " are kept; a device with a larger buffer shows them again");
        }
    });
}

/// For steps that make another buffer. After one that failed the bytes are those before, but elsewhere.
void main_frame::change_buffer(const std::function<void()>& step)
{
    try {
        step();
    } catch (...) {
        document_.moved(session_.buffer());
        CallAfter([this] { show_device(); });
        throw;
    }
}

void main_frame::show_device()
{
    offer_rest({});
    device_panel_->show_choice(session_.device().name);
    SetStatusText("Device: " + to_wx(session_.device().name), device_field);
    buffer_changed();
    update_menus();
}

/// A method of the plug-in that may write to the buffer: what it changes can be undone.
outcome main_frame::watched(const std::string& name, const std::function<outcome()>& method)
{
    keeper_->flush();
    outcome told;
    document_.watch(name, [&] {
        told = method();
        return true;
    });
    return told;
}

void main_frame::buffer_changed() { editor_->show(session_.buffer_is_attached()); }

void main_frame::show_caret()
{
    if (GetStatusBar() == nullptr) return;
    const editing::byte_range selected = hex_view_->cursor().selection();
    const std::size_t address = hex_view_->cursor().address();
    SetStatusText(selected.length > 1 ? wxString::Format("%08zX to %08zX, ", selected.first, selected.end() - 1) +
                                            to_wx(host::bytes_text(selected.length))
                                      : wxString::Format("Address: %08zX", address),
                  caret_field);
    values_->show(document_.bytes(), address);
}

/// The mark of what is not saved, and the next steps of undo and redo, whose keys work only while they are enabled.
void main_frame::show_state()
{
    const std::string& file = document_.file();
    const wxString name = file.empty() ? wxString{} : to_wx(std::filesystem::path{file}.filename().string()) + " - ";
    SetTitle((document_.changed() ? "*" : "") + name + "tamrix workbench");
    if (undo_item_ == nullptr) return;
    const auto show_step = [](wxMenuItem& item, const wxString& label, const std::string& step, const wxString& keys) {
        item.Enable(!step.empty());
        item.SetItemLabel(label + (step.empty() ? wxString{} : " " + to_wx(step)) + "\t" + keys);
    };
    show_step(*undo_item_, "&Undo", document_.undo_name(), "Ctrl+Z");
    show_step(*redo_item_, "&Redo", document_.redo_name(), "Ctrl+Shift+Z");
}

}  // namespace tamrix::workbench
