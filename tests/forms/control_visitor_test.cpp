#include "forms/control_visitor.h"

#include "forms/form.h"
#include "forms/grid_text.h"
#include "forms/list_box.h"
#include "forms/scroll_bar.h"
#include "forms/status_bar.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tamrix::forms {
namespace {

struct every_kind final : form {
    button Command1{*this};
    combo_box Combo1{*this};
    frame Frame1{*this};
    grid_text RichTextBox1{*this};
    label Label1{*this};
    list_box List1{*this};
    menu File{*this};
    menu_item Open{File};
    option_group Option1{*this, 1};
    picture Picture1{*this};
    progress_bar ProgressBar1{*this};
    scroll_bar HScroll1{*this};
    status_bar StatusBar1{*this, 1};
    text_box Text1{*this};
    timer Timer1{*this};

    layout arrangement() override { return Label1; }
};

struct naming_visitor final : control_visitor {
    std::vector<std::string> names;
    void visit(button&) override { names.push_back("button"); }
    void visit(combo_box&) override { names.push_back("combo_box"); }
    void visit(frame&) override { names.push_back("frame"); }
    void visit(grid_text&) override { names.push_back("grid_text"); }
    void visit(label&) override { names.push_back("label"); }
    void visit(list_box&) override { names.push_back("list_box"); }
    void visit(menu&) override { names.push_back("menu"); }
    void visit(menu_item&) override { names.push_back("menu_item"); }
    void visit(option&) override { names.push_back("option"); }
    void visit(picture&) override { names.push_back("picture"); }
    void visit(progress_bar&) override { names.push_back("progress_bar"); }
    void visit(scroll_bar&) override { names.push_back("scroll_bar"); }
    void visit(status_bar&) override { names.push_back("status_bar"); }
    void visit(text_box&) override { names.push_back("text_box"); }
    void visit(timer&) override { names.push_back("timer"); }
};

TEST(a_visitor, is_told_the_kind_of_each_control)
{
    every_kind dialog;
    naming_visitor visitor;
    for (control* one : dialog.controls()) one->accept(visitor);
    EXPECT_EQ(visitor.names, (std::vector<std::string>{"button", "combo_box", "frame", "grid_text", "label", "list_box",
                                                       "menu", "menu_item", "option", "picture", "progress_bar",
                                                       "scroll_bar", "status_bar", "text_box", "timer"}));
}

}  // namespace
}  // namespace tamrix::forms
