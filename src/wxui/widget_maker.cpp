#include "wxui/widget_maker.h"

#include "wxui/text.h"

#include <utility>

namespace tamrix::wxui {

wxWindow* widget_maker::make(forms::control& control, wxWindow* parent, label_use use)
{
    parent_ = parent;
    use_ = use;
    control.accept(*this);
    return widgets_.at(&control)->window();
}

void widget_maker::keep(forms::control& control, widget_ptr made)
{
    made->update();
    if (!control.tip.empty()) made->window()->SetToolTip(to_wx(control.tip));
    widgets_[&control] = std::move(made);
}

void widget_maker::visit(forms::button& control) { keep(control, make_button(control, parent_, guard_)); }

void widget_maker::visit(forms::combo_box& control) { keep(control, make_combo_box(control, parent_, guard_)); }

void widget_maker::visit(forms::frame& control) { keep(control, make_frame(control, parent_)); }

void widget_maker::visit(forms::grid_text& control) { keep(control, make_grid_text(control, parent_, guard_)); }

void widget_maker::visit(forms::label& control) { keep(control, make_label(control, parent_, use_)); }

void widget_maker::visit(forms::list_box& control) { keep(control, make_list_box(control, parent_, guard_)); }

void widget_maker::visit(forms::menu& control) { keep(control, make_menu(control, parent_, guard_)); }

/// Its menu shows it as it is when it is opened.
void widget_maker::visit(forms::menu_item&) {}

/// All options of a group are made in one go: the toolkit takes neighbours for a group.
void widget_maker::visit(forms::option& control)
{
    if (widgets_.contains(&control)) return;
    forms::option_group& group = control.group();
    for (int index = 0; index < group.count(); ++index) {
        keep(group(index), make_option(group(index), parent_, guard_));
    }
}

void widget_maker::visit(forms::picture& control) { keep(control, make_picture(control, parent_, guard_)); }

void widget_maker::visit(forms::progress_bar& control) { keep(control, make_progress_bar(control, parent_)); }

void widget_maker::visit(forms::scroll_bar& control) { keep(control, make_scroll_bar(control, parent_, guard_)); }

void widget_maker::visit(forms::status_bar& control) { keep(control, make_status_bar(control, parent_)); }

void widget_maker::visit(forms::text_box& control) { keep(control, make_text_box(control, parent_, guard_)); }

void widget_maker::visit(forms::timer& control) { keep(control, make_timer(control, guard_)); }

}  // namespace tamrix::wxui
