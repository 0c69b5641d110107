// A menu as a button that opens it: the toolkit has menu bars for other windows than dialogs only.
#include "forms/menu.h"

#include "wxui/text.h"
#include "wxui/widgets.h"

#include <wx/button.h>
#include <wx/menu.h>

namespace tamrix::wxui {

namespace {

class menu_widget final : public widget {
public:
    menu_widget(forms::menu& control, wxWindow* parent, callback_guard& guard)
        : control_{control},
          button_{new wxButton{parent, wxID_ANY, " ", wxDefaultPosition, wxDefaultSize, wxBORDER_NONE | wxBU_EXACTFIT}},
          guard_{guard}
    {
        button_->SetCanFocus(false);  // the Tab key passes by, as it does in any window with menus
        button_->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { open(); });
    }

    bool update() override
    {
        button_->Enable(control_.enabled());
        const bool other_room = button_->Show(control_.visible());
        const wxString caption = shown_caption(control_.caption());
        if (caption == button_->GetLabel()) return other_room;
        button_->SetLabel(caption);
        button_->InvalidateBestSize();
        button_->SetMinSize(button_->GetBestSize() + wxSize{2 * button_->GetCharWidth(), button_->GetCharWidth()});
        return true;
    }
    wxWindow* window() const override { return button_; }

private:
    /// Made anew each time, so that it shows its items as they are now.
    void open()
    {
        wxMenu shown;
        for (forms::menu_item* item : control_.items()) {
            if (!item->visible()) continue;
            // An item without its mark is a plain one: some toolkits draw an empty box at each that could have one.
            const wxItemKind kind = item->checked() ? wxITEM_CHECK : wxITEM_NORMAL;
            wxMenuItem* const made = shown.Append(wxID_ANY, shown_caption(item->caption()), "", kind);
            if (item->checked()) made->Check();
            made->Enable(item->enabled());
            shown.Bind(
                wxEVT_MENU, [this, item](wxCommandEvent&) { chosen_ = item; }, made->GetId());
        }
        chosen_ = nullptr;
        button_->PopupMenu(&shown, 0, button_->GetSize().y);
        if (chosen_ != nullptr) guard_([this] { chosen_->click(); });
    }

    forms::menu& control_;
    wxButton* button_;
    callback_guard& guard_;
    forms::menu_item* chosen_ = nullptr;
};

}  // namespace

widget_ptr make_menu(forms::menu& control, wxWindow* parent, callback_guard& guard)
{
    return std::make_unique<menu_widget>(control, parent, guard);
}

}  // namespace tamrix::wxui
