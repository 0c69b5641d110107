// What of the main window needs the buffer, and the methods of the plug-in that attach and release it.
#include "workbench/device_size.h"
#include "workbench/main_frame.h"
#include "workbench/text.h"

#include <algorithm>

#include <wx/menu.h>
#include <wx/toolbar.h>

namespace tamrix::workbench {

void main_frame::needs_buffer(wxMenuItem* item) { buffer_items_.push_back(item); }

void main_frame::update_menus()
{
    const bool attached = session_.buffer_is_attached();
    for (wxMenuItem* const item : buffer_items_) item->Enable(attached);
    for (const method_item& one : method_items_) {
        const bool lacks_buffer = !attached && std::ranges::find(buffer_items_, one.item) != buffer_items_.end();
        one.item->Enable(session_.offers(one.method) && !lacks_buffer);
    }
    if (session_.device().note == 0) note_item_->Enable(false);
    if (GetToolBar() != nullptr)
        for (const int tool : buffer_tools_) GetToolBar()->EnableTool(tool, attached);
    show_buffer_size();
}

void main_frame::show_buffer_size()
{
    const host::device_preset& device = session_.device();
    std::string size = "released";
    if (session_.buffer_is_attached()) {
        if (has_fuses(device)) return SetStatusText(to_wx(size_text(device)), buffer_field);
        size = size_text(std::int64_t{device.buffer_bytes});
    }
    SetStatusText("Buffer: " + to_wx(size), buffer_field);
}

/// For methods that make the buffer anew: the document goes on with a copy of the bytes if none comes.
outcome main_frame::aside(const std::function<outcome()>& method)
{
    refuge_.assign(document_.bytes().begin(), document_.bytes().end());
    document_.moved(refuge_);
    outcome told = method();
    document_.moved(session_.buffer());
    refuge_.clear();
    return told;
}

wxMenu* main_frame::plug_in_menu()
{
    auto* menu = new wxMenu;
    const auto entry = [&](const char* label, const char* help, const char* method, outcome (host_session::*step)()) {
        add_method(menu, label, help, method, [this, label, step] {
            const wxString what = wxMenuItem::GetLabelText(to_wx(label)) + " failed";
            attempt(what, [&] {
                hex_view_->show({});
                const outcome told = aside([&] { return (session_.*step)(); });
                tell(what, told);
                if (told.result.ok()) log_->remark(to_utf8(wxMenuItem::GetLabelText(to_wx(label))) + ": done");
            });
            if (!session_.buffer_is_attached()) offer_rest({});
            buffer_changed();
            update_menus();
        });
    };
    entry("&Attach Blocks", "Make the shared blocks anew and attach them", "bufcomopt", &host_session::attach_small);
    entry("Attach &Buffer", "Make the buffer anew and attach it", "buffercomopt", &host_session::attach_buffer);
    entry("&Release Buffer", "Let the plug-in release the buffer", "freesharebufferopt", &host_session::release_buffer);
    return menu;
}

}  // namespace tamrix::workbench
