// Controls as widgets: each shows the state of its control and passes on what the person does with it.
#pragma once

#include "forms/form.h"
#include "forms/grid_text.h"
#include "forms/list_box.h"
#include "forms/menu.h"
#include "forms/scroll_bar.h"
#include "forms/status_bar.h"
#include "wxui/callback_guard.h"

#include <memory>

#include <wx/window.h>

namespace tamrix::wxui {

class widget {
public:
    virtual ~widget() = default;
    /// Shows the state of the control, without an event of the toolkit. True if the widget may now need other room.
    virtual bool update() = 0;
    /// Null if there is nothing to see.
    virtual wxWindow* window() const = 0;
};

/// What a label is for; this decides how it shows a long text.
enum class label_use {
    caption,  // names a control; its mnemonic leads there
    value,    // shows a text of any length in the room there is: an ellipsis replaces the middle
    note,     // on its own; wrapped if it is very long
};

using widget_ptr = std::unique_ptr<widget>;

widget_ptr make_label(forms::label& control, wxWindow* parent, label_use use);
widget_ptr make_frame(forms::frame& control, wxWindow* box);
widget_ptr make_button(forms::button& control, wxWindow* parent, callback_guard& guard);
widget_ptr make_text_box(forms::text_box& control, wxWindow* parent, callback_guard& guard);
widget_ptr make_combo_box(forms::combo_box& control, wxWindow* parent, callback_guard& guard);
widget_ptr make_list_box(forms::list_box& control, wxWindow* parent, callback_guard& guard);
widget_ptr make_grid_text(forms::grid_text& control, wxWindow* parent, callback_guard& guard);
widget_ptr make_option(forms::option& control, wxWindow* parent, callback_guard& guard);
widget_ptr make_progress_bar(forms::progress_bar& control, wxWindow* parent);
widget_ptr make_menu(forms::menu& control, wxWindow* parent, callback_guard& guard);
widget_ptr make_scroll_bar(forms::scroll_bar& control, wxWindow* parent, callback_guard& guard);
widget_ptr make_status_bar(forms::status_bar& control, wxWindow* parent);
widget_ptr make_picture(forms::picture& control, wxWindow* parent, callback_guard& guard);
widget_ptr make_timer(forms::timer& control, callback_guard& guard);

}  // namespace tamrix::wxui
