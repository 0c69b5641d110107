#include "person.h"

#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <wx/button.h>
#include <wx/textctrl.h>

using namespace tamrix;
using namespace tamrix::tests;

namespace {

class sample final : public scripted_form {
public:
    forms::text_box box{*this};
    forms::combo_box list{*this};
    forms::picture picture{*this};
    forms::progress_bar bar{*this};
    forms::button go{*this};

    sample()
    {
        box.text("text");
        list.items = {"one", "two"};
        go.caption = "Go";
        picture.extent = {3000, 1500};  // 200 by 100 pixels
    }
    forms::layout arrangement() override { return forms::column({box, list, picture, bar, forms::buttons({go})}); }
    forms::button* default_button() override { return &go; }
};

class widgets : public testing::Test {
protected:
    wxui::wx_shell screen;
    sample form;

    static wxWindow& picture_window()
    {
        for (wxWindow* child : dialog().GetChildren()) {
            if (child->GetClientSize().y >= 100) return *child;
        }
        throw std::runtime_error{"no picture"};
    }
    static wxWindow& progress()
    {
        for (wxWindow* child : dialog().GetChildren()) {
            if (child->GetClientSize().y == dialog().FromDIP(8)) return *child;
        }
        throw std::runtime_error{"no progress bar"};
    }
};

}  // namespace

TEST_F(widgets, what_the_program_assigns_is_shown_without_an_event_of_the_person)
{
    int changes = 0;
    form.box.on_change = [&] { ++changes; };
    during(screen, form, [&] {
        form.box.text("assigned");
        EXPECT_EQ(changes, 1);
        shown_as("assigned");
        form.list.index(1);
        shown_as("two");
        form.list.items = {"three", "four"};
        shown_as("four");
        form.go.caption = "Gone";
        shown_as("Gone");
        form.go.enabled = false;
        EXPECT_FALSE(shown_as("Gone").IsEnabled());
        form.go.visible = false;
        EXPECT_THROW(shown_as("Gone"), std::runtime_error);
        EXPECT_EQ(changes, 1);
    });
}

TEST_F(widgets, a_box_that_its_own_handler_mends_shows_the_mended_text)
{
    form.box.on_change = [&] {
        if (form.box.text().size() > 4) form.box.text(form.box.text().substr(0, 4));
    };
    during(screen, form, [&] {
        press("End");
        type("xyz");
        EXPECT_EQ(form.box.text(), "text");
        EXPECT_EQ(focused(), "text");
    });
}

TEST_F(widgets, a_list_is_chosen_from_with_the_mouse)
{
    during(screen, form, [&] {
        form.list.index(0);
        click(shown_as("one"));
        press("Down Return");
        EXPECT_EQ(form.list.index(), 1);
    });
}

TEST_F(widgets, a_picture_shows_its_background_lines_and_texts_in_twips)
{
    form.picture.clear(0x204080);
    form.picture.line({0, 300}, {3000, 300}, 0xFF0000);
    during(screen, form, [&] {
        const wxWindow& picture = picture_window();
        EXPECT_GE(picture.GetClientSize().x, 200);
        EXPECT_TRUE(comes_true([&] { return colour_at(picture, {10, 50}) == "#204080"; }));
        EXPECT_EQ(colour_at(picture, {100, 20}), "#FF0000");
        EXPECT_EQ(colour_at(picture, {100, 21}), "#204080");

        form.picture.line({1500, 0}, {1500, 1500}, 0x00FF00);  // drawn while it is shown
        EXPECT_TRUE(comes_true([&] { return colour_at(picture, {100, 60}) == "#00FF00"; }));
        const std::string before = picture_of(picture);
        form.picture.text({150, 600}, "T", 0xFFFFFF);
        EXPECT_TRUE(comes_true([&] { return picture_of(picture) != before; }));
    });
}

TEST_F(widgets, a_press_on_a_picture_is_told_in_twips)
{
    std::vector<forms::point> pressed;
    form.picture.on_press = [&](forms::point where) { pressed.push_back(where); };
    during(screen, form, [&] {
        click(picture_window(), wxPoint{20, 40});
        EXPECT_EQ(pressed, (std::vector<forms::point>{{300, 600}}));
    });
}

TEST_F(widgets, progress_is_painted_while_the_handler_is_still_at_work)
{
    std::string before, half, full;
    form.go.on_click = [&] {
        before = picture_of(progress());
        form.bar.value = 50;
        half = picture_of(progress());
        form.bar.value = 100;
        full = picture_of(progress());
    };
    during(screen, form, [&] { press("Return"); });
    EXPECT_FALSE(before.empty());
    EXPECT_TRUE(before != half);
    EXPECT_TRUE(half != full);
}

TEST_F(widgets, progress_lets_no_other_event_through)
{
    int changes = 0;
    form.box.on_change = [&] { ++changes; };
    form.go.on_click = [&] {
        EXPECT_EQ(std::system("xdotool key x"), 0);
        for (int percent = 0; percent <= 100; ++percent) form.bar.value = percent;
        EXPECT_EQ(changes, 0);
    };
    during(screen, form, [&] {
        press("Return");
        EXPECT_TRUE(comes_true([&] { return changes == 1; }));
    });
}
