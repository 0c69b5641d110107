// The open list.
#include "wxui/text.h"
#include "wxui/widgets.h"

#include <wx/listbox.h>

namespace tamrix::wxui {

namespace {

constexpr int least_entries = 12, least_letters = 22;  // that are seen at once

class list_box_widget final : public widget {
public:
    list_box_widget(forms::list_box& control, wxWindow* parent, callback_guard& guard)
        : control_{control},
          list_{new wxListBox{parent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxArrayString{},
                              wxLB_SINGLE | wxLB_NEEDED_SB}}
    {
        list_->SetMinSize({least_letters * list_->GetCharWidth(), least_entries * (list_->GetCharHeight() + 4)});
        list_->Bind(wxEVT_LISTBOX, [this, &guard](wxCommandEvent& event) {
            if (event.IsSelection()) guard([&] { control_.pick(event.GetInt()); });
        });
        // Some platforms make Enter in a list this event too.
        list_->Bind(wxEVT_LISTBOX_DCLICK, [this, &guard](wxCommandEvent&) {
            guard([this] {
                if (control_.owner().is_open()) control_.owner().accept();
            });
        });
    }

    bool update() override
    {
        list_->Enable(control_.enabled());
        const bool other_room = list_->Show(control_.visible());
        if (items_ != control_.items()) fill();
        if (list_->GetSelection() != control_.index()) select();
        return other_room;
    }
    wxWindow* window() const override { return list_; }

private:
    void fill()
    {
        items_ = control_.items();
        wxArrayString shown;
        for (const std::string& item : items_) shown.push_back(to_wx(item));
        list_->Set(shown);
    }

    void select()
    {
        list_->SetSelection(control_.index());
        if (control_.index() >= 0) list_->EnsureVisible(control_.index());
    }

    forms::list_box& control_;
    wxListBox* list_;
    std::vector<std::string> items_;
};

}  // namespace

widget_ptr make_list_box(forms::list_box& control, wxWindow* parent, callback_guard& guard)
{
    return std::make_unique<list_box_widget>(control, parent, guard);
}

}  // namespace tamrix::wxui
