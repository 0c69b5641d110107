// What a form does with keys, and a picture with the wheel.
#include "forms/form.h"
#include "support/scripted_shell.h"

#include <gtest/gtest.h>

namespace tamrix::forms {
namespace {

struct plain_form : form {
    picture view{*this};
    text_box box{*this};
    layout arrangement() override { return column({view, box}); }
};

TEST(a_form, leaves_every_key_to_its_controls_unless_it_says_otherwise)
{
    plain_form shown;
    for (int key = 0; key <= static_cast<int>(form_key::space); ++key)
        EXPECT_FALSE(shown.press_key(static_cast<form_key>(key)));
}

TEST(a_form, may_decide_itself_when_it_is_left)
{
    struct stubborn : plain_form {
        int asked = 0;
        void ask_to_leave() override
        {
            if (++asked == 2) close();
        }
    } shown;
    tests::scripted_shell shell;
    shell.during(shown, [&] {
        form& as_renderer_sees_it = shown;
        as_renderer_sees_it.ask_to_leave();
        EXPECT_TRUE(shown.is_open());
        as_renderer_sees_it.ask_to_leave();
        EXPECT_FALSE(shown.is_open());
    });
}

TEST(the_wheel, turns_over_a_picture_that_can_be_used)
{
    plain_form shown;
    shown.view.turn_wheel(1);  // nobody listens
    int turned = 0;
    shown.view.on_wheel = [&](int steps) { turned += steps; };
    shown.view.turn_wheel(3);
    shown.view.turn_wheel(-1);
    EXPECT_EQ(turned, 2);
    shown.view.enabled = false;
    shown.view.turn_wheel(1);
    EXPECT_EQ(turned, 2);
}

TEST(a_readout, takes_no_letters_of_a_person)
{
    plain_form shown;
    shown.box.readout = true;
    shown.box.text("000000");
    shown.box.type("1");
    shown.box.enter("7");
    EXPECT_EQ(shown.box.text(), "000000");
}

}  // namespace
}  // namespace tamrix::forms
