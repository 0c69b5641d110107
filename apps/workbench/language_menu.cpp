// The main window's language menu: in which language the plug-in's dialogs and messages are.
#include "host/languages.h"
#include "workbench/main_frame.h"
#include "workbench/text.h"

#include <wx/config.h>
#include <wx/menu.h>

namespace tamrix::workbench {

namespace {

constexpr const char* language_key = "/Language";

}  // namespace

wxMenu* main_frame::language_menu()
{
    auto* menu = new wxMenu;
    for (const host::language& one : host::languages()) {
        const bool there = session_.library().has_language(one.offset) != 0;
        wxMenuItem* item = menu->AppendRadioItem(wxID_ANY, to_wx(one.name),
                                                 there ? "The plug-in's dialogs in " + to_wx(one.english)
                                                       : "This plug-in has no texts in " + to_wx(one.english));
        item->Enable(there);
        item->Check(one.offset == session_.language());
        Bind(
            wxEVT_MENU, [this, &one](wxCommandEvent&) { choose_language(one); }, item->GetId());
    }
    return menu;
}

/// The next dialog follows; nothing needs to be started anew.
void main_frame::choose_language(const host::language& chosen)
{
    session_.use_language(chosen.offset);
    wxConfigBase::Get()->Write(language_key, to_wx(chosen.code));
    log_->remark("Language of the plug-in: " + std::string{chosen.name});
}

/// English where the settings name none that the plug-in has.
void main_frame::take_language_of_settings()
{
    const auto offset = host::language_offset(to_utf8(wxConfigBase::Get()->Read(language_key, "en")));
    if (!offset || session_.library().has_language(*offset) == 0) return;
    session_.use_language(host::find_language(*offset)->offset);
}

}  // namespace tamrix::workbench
