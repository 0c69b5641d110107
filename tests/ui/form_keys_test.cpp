// Keys that a form uses itself, and who has the keyboard when a control goes off, on a real screen.
#include "person.h"

#include "forms/scroll_bar.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <wx/scrolbar.h>

using namespace tamrix;
using namespace tamrix::tests;

namespace {

class keyed_form final : public scripted_form {
public:
    forms::scroll_bar scroll{*this};
    forms::text_box box{*this};
    forms::button go{*this}, stop{*this};
    std::vector<forms::form_key> keys{};
    bool takes = true;
    int left = 0;

    keyed_form()
    {
        caption("Keys");
        go.caption = "Go";
        stop.caption = "Stop";
        scroll.max(100);
        go.on_click = [this] {
            go.enabled = false;
            box.enabled = false;
        };
        stop.on_click = [this] {
            box.enabled = true;
            go.enabled = true;
        };
    }
    forms::layout arrangement() override { return forms::column({scroll, box, forms::buttons({go, stop})}); }
    forms::button* default_button() override { return &go; }
    bool press_key(forms::form_key key) override
    {
        keys.push_back(key);
        return takes;
    }
    void ask_to_leave() override { ++left; }
};

class form_keys : public testing::Test {
protected:
    wxui::wx_shell screen;
    keyed_form form;

    void with_keyboard_at(forms::control& which, const std::function<void()>& script)
    {
        form.focus(which);
        during(screen, form, script);
    }
};

using enum forms::form_key;
const std::vector<forms::form_key> each_key{left, right, page_up, page_down, home,  end,
                                            plus, plus,  plus,    minus,     minus, space};
constexpr const char* each_key_pressed =
    "Left Right Page_Up Page_Down Home End plus equal KP_Add minus KP_Subtract space";

}  // namespace

TEST_F(form_keys, come_to_the_form_before_a_button_takes_them)
{
    with_keyboard_at(form.go, [&] {
        press(each_key_pressed);
        EXPECT_EQ(form.keys, each_key);
        EXPECT_TRUE(form.go.enabled) << "space pressed nothing";
        EXPECT_EQ(focused(), "Go") << "the arrows moved nothing";
    });
}

TEST_F(form_keys, come_to_the_form_before_a_scroll_bar_and_a_text_box_take_them)
{
    with_keyboard_at(form.scroll, [&] { press(each_key_pressed); });
    EXPECT_EQ(form.keys, each_key);
    EXPECT_EQ(form.scroll.value(), 0);
    form.keys.clear();
    with_keyboard_at(form.box, [&] { press(each_key_pressed); });
    EXPECT_EQ(form.keys, each_key);
    EXPECT_EQ(form.box.text(), "");
}

TEST_F(form_keys, go_on_to_the_control_where_the_form_leaves_them)
{
    form.takes = false;
    with_keyboard_at(form.box, [&] {
        press("minus 4 space 2 Home plus");
        EXPECT_EQ(form.box.text(), "+-4 2");
        EXPECT_EQ(form.keys.size(), 4u);
    });
}

TEST_F(form_keys, with_control_or_alt_are_not_for_the_form)
{
    with_keyboard_at(form.box, [&] {
        press("ctrl+Left alt+minus ctrl+Home");
        EXPECT_EQ(form.keys.size(), 0u);
    });
}

TEST_F(form_keys, reach_the_form_while_the_control_that_had_them_is_off)
{
    with_keyboard_at(form.go, [&] {
        press("Return");
        ASSERT_FALSE(form.go.enabled);
        press("space Right Escape");
        EXPECT_EQ(form.keys, (std::vector{space, right}));
        EXPECT_EQ(form.left, 1);
        press("Return");  // presses what is off
        EXPECT_FALSE(form.go.enabled);
        press("Tab");
        EXPECT_TRUE(dynamic_cast<wxScrollBar*>(wxWindow::FindFocus()) != nullptr) << focused();
    });
}

TEST_F(form_keys, come_back_to_a_control_that_is_on_again)
{
    with_keyboard_at(form.box, [&] {
        press("Return");
        ASSERT_FALSE(form.box.enabled);
        form.box.enabled = true;
        type("7");
        EXPECT_EQ(form.box.text(), "7");
    });
}

TEST_F(form_keys, stay_where_the_person_took_them_when_a_control_is_on_again)
{
    with_keyboard_at(form.go, [&] {
        press("Return Tab Tab");
        EXPECT_EQ(focused(), "Stop");
        press("Return");
        EXPECT_TRUE(form.go.enabled);
        EXPECT_EQ(focused(), "Stop");
    });
}
