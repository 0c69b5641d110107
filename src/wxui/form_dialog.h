// The window of a form: any form, drawn from its arrangement and its controls.
#pragma once

#include "forms/form.h"
#include "wxui/arranger.h"
#include "wxui/callback_guard.h"

#include <wx/dialog.h>

namespace tamrix::wxui {

class form_dialog final : public wxDialog, private forms::form_view {
public:
    form_dialog(forms::form& shown, wxWindow* parent);
    ~form_dialog() override;

    /// Shows the form until it is closed. An error that one of its handlers throws closes it and comes out here.
    void run();

private:
    void control_changed(forms::control& which) override;
    void caption_changed() override;
    void beep() override;
    void focus_moved(forms::control& to) override;
    void closed() override;

    void on_key(wxKeyEvent& event);
    bool takes(const wxKeyEvent& event);
    void open_menu(forms::menu& which);
    void press_enter();
    void take_room();
    void keep_keyboard(forms::control& which, bool had_it);
    forms::control* control_with_focus() const;

    forms::form& shown_;
    forms::form_view* view_before_;
    callback_guard guard_;
    widget_table widgets_;
    wxWindow* key_holder_ = nullptr;     // has the keyboard while the control that had it is off
    forms::control* without_ = nullptr;  // that control
    bool grows_down_ = false;
};

}  // namespace tamrix::wxui
