#include "forms/menu.h"

#include "forms/form.h"
#include "support/scripted_shell.h"

#include <gtest/gtest.h>

#include <vector>

namespace tamrix::forms {
namespace {

struct menu_form final : form {
    menu File{*this};
    menu_item Open{File}, Save{File};
    layout arrangement() override { return column({}); }
    std::vector<menu*> menus() override { return {&File}; }
};

struct menus : testing::Test {
    menu_form dialog;
    int opened = 0;
    menus()
    {
        dialog.Open.on_click = [this] { ++opened; };
    }
};

TEST_F(menus, hold_their_items_in_the_order_of_declaration)
{
    EXPECT_EQ(dialog.File.items(), (std::vector<menu_item*>{&dialog.Open, &dialog.Save}));
}

TEST_F(menus, do_what_a_person_picks)
{
    dialog.Open.click();
    dialog.Save.click();  // has no handler
    EXPECT_EQ(opened, 1);
}

TEST_F(menus, leave_out_an_item_that_is_disabled_or_hidden_or_in_a_menu_that_is)
{
    for (property<bool>* one :
         {&dialog.Open.enabled, &dialog.Open.visible, &dialog.File.enabled, &dialog.File.visible}) {
        *one = false;
        dialog.Open.click();
        *one = true;
    }
    EXPECT_EQ(opened, 0);
}

TEST_F(menus, tell_the_renderer_of_a_mark_at_an_item)
{
    tests::scripted_shell shell;
    shell.during(dialog, [&] {
        EXPECT_FALSE(dialog.Open.checked());
        dialog.Open.checked = true;
        EXPECT_EQ(shell.changes(dialog.Open), 1);
    });
}

}  // namespace
}  // namespace tamrix::forms
