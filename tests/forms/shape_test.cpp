#include "forms/shape.h"

#include "base/errors.h"
#include "forms/form.h"
#include "support/listing.h"
#include "support/scripted_shell.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tamrix::forms {
namespace {

struct socket_form final : form {
    picture Picture1{*this};
    shape Shape3{Picture1};
    shape_array Shape1{Picture1, 2};
    layout arrangement() override { return Picture1; }

    std::vector<std::string> drawn() const
    {
        tests::listing<canvas> target;
        Picture1.draw_on(target);
        return target.calls;
    }
};

using calls = std::vector<std::string>;

struct shapes : testing::Test {
    socket_form dialog;

    shapes()
    {
        dialog.Shape3.place = {100, 200, 3000, 6000};
        dialog.Shape1(0).kind = outline::ellipse;
        dialog.Shape1(0).place = {150, 250, 240, 240};
        dialog.Shape1(0).fill = 0xFFFFFF;
        dialog.Shape1(1).visible = false;
    }
};

TEST_F(shapes, lie_above_what_was_drawn_and_stay_when_the_picture_is_cleared)
{
    const calls lying{"rectangle 100,200 3000,6000 open 0", "ellipse 150,250 240,240 16777215 0"};
    dialog.Picture1.line({0, 0}, {1, 1}, 1);
    EXPECT_EQ(dialog.drawn(), (calls{"clear 16777215", "line 0,0 1,1 1", lying[0], lying[1]}));
    dialog.Picture1.clear(5);
    EXPECT_EQ(dialog.drawn(), (calls{"clear 5", lying[0], lying[1]}));
}

TEST_F(shapes, have_a_fill_and_a_border_of_their_own_by_index)
{
    dialog.Shape1(0).fill = 1;
    dialog.Shape1(1).fill = 2;
    dialog.Shape1(1).border = 3;
    dialog.Shape1(1).visible = true;
    EXPECT_EQ(dialog.drawn(), (calls{"clear 16777215", "rectangle 100,200 3000,6000 open 0",
                                     "ellipse 150,250 240,240 1 0", "rectangle 0,0 0,0 2 3"}));
}

TEST_F(shapes, tell_the_renderer_of_their_picture_of_what_differs)
{
    tests::scripted_shell shell;
    shell.during(dialog, [&] {
        dialog.Shape1(0).fill = 0xFF;
        dialog.Shape1(0).fill = 0xFF;
        EXPECT_EQ(shell.changes(dialog.Picture1), 1);
        dialog.Shape1(0).visible = false;
        EXPECT_EQ(shell.changes(dialog.Picture1), 2);
        dialog.Picture1.draw([&] {
            for (int i = 0; i < dialog.Shape1.count(); ++i) dialog.Shape1(i).border = 7;
        });
        EXPECT_EQ(shell.changes(dialog.Picture1), 3);
    });
}

TEST_F(shapes, that_do_not_exist_are_refused)
{
    EXPECT_EQ(dialog.Shape1.count(), 2);
    EXPECT_THROW(dialog.Shape1(2), subscript_error);
    EXPECT_THROW(dialog.Shape1(-1), subscript_error);
}

TEST_F(shapes, that_are_gone_are_drawn_no_more)
{
    const calls before = dialog.drawn();
    {
        const shape passing{dialog.Picture1};
        EXPECT_NE(dialog.drawn(), before);
    }
    EXPECT_EQ(dialog.drawn(), before);
}

}  // namespace
}  // namespace tamrix::forms
