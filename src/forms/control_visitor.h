// One function for each kind of control, so that code that handles them differently forgets none.
#pragma once

namespace tamrix::forms {

class button;
class combo_box;
class frame;
class grid_text;
class label;
class list_box;
class menu;
class menu_item;
class option;
class picture;
class progress_bar;
class scroll_bar;
class status_bar;
class text_box;
class timer;

class control_visitor {
public:
    virtual ~control_visitor() = default;
    virtual void visit(button& control) = 0;
    virtual void visit(combo_box& control) = 0;
    virtual void visit(frame& control) = 0;
    virtual void visit(grid_text& control) = 0;
    virtual void visit(label& control) = 0;
    virtual void visit(list_box& control) = 0;
    virtual void visit(menu& control) = 0;
    virtual void visit(menu_item& control) = 0;
    virtual void visit(option& control) = 0;
    virtual void visit(picture& control) = 0;
    virtual void visit(progress_bar& control) = 0;
    virtual void visit(scroll_bar& control) = 0;
    virtual void visit(status_bar& control) = 0;
    virtual void visit(text_box& control) = 0;
    virtual void visit(timer& control) = 0;
};

}  // namespace tamrix::forms
