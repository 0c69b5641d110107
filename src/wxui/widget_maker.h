// Makes the widget of any control.
#pragma once

#include "forms/control_visitor.h"
#include "wxui/callback_guard.h"
#include "wxui/widgets.h"

#include <map>

namespace tamrix::wxui {

using widget_table = std::map<forms::control*, widget_ptr>;

class widget_maker final : private forms::control_visitor {
public:
    widget_maker(callback_guard& guard, widget_table& widgets) : guard_{guard}, widgets_{widgets} {}

    /// Puts the widget into the table and yields its window, which is null where there is nothing to see. The parent of
    /// a frame is its own box.
    wxWindow* make(forms::control& control, wxWindow* parent, label_use use);

private:
    void visit(forms::button& control) override;
    void visit(forms::combo_box& control) override;
    void visit(forms::frame& control) override;
    void visit(forms::grid_text& control) override;
    void visit(forms::label& control) override;
    void visit(forms::list_box& control) override;
    void visit(forms::menu& control) override;
    void visit(forms::menu_item& control) override;
    void visit(forms::option& control) override;
    void visit(forms::picture& control) override;
    void visit(forms::progress_bar& control) override;
    void visit(forms::scroll_bar& control) override;
    void visit(forms::status_bar& control) override;
    void visit(forms::text_box& control) override;
    void visit(forms::timer& control) override;
    void keep(forms::control& control, widget_ptr made);

    callback_guard& guard_;
    widget_table& widgets_;
    wxWindow* parent_ = nullptr;
    label_use use_ = label_use::caption;
};

}  // namespace tamrix::wxui
