#include "forms/canvas.h"

#include "support/scripted_shell.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tamrix::forms {
namespace {

/// Writes down the calls that reach it.
class listing final : public canvas {
public:
    void clear(colour background) override { calls.push_back("clear " + number(background)); }
    void line(point from, point to, colour ink) override
    {
        calls.push_back("line " + place(from) + " " + place(to) + " " + number(ink));
    }
    void text(point at, std::string_view words, colour ink) override
    {
        calls.push_back("text " + place(at) + " " + number(ink) + " " + std::string{words});
    }

    std::vector<std::string> calls;

private:
    static std::string number(colour value) { return std::to_string(value); }
    static std::string place(point at) { return std::to_string(at.x) + "," + std::to_string(at.y); }
};

struct drawing_form final : form {
    picture Picture1{*this};
    layout arrangement() override { return Picture1; }
};

std::vector<std::string> drawn(const picture& source)
{
    listing target;
    source.draw_on(target);
    return target.calls;
}

using calls = std::vector<std::string>;

TEST(picture, is_drawn_again_on_another_canvas_in_the_same_order)
{
    drawing_form dialog;
    dialog.Picture1.line({0, 0}, {1440, 720}, 1);
    dialog.Picture1.text({10, 20}, "P21", 2);
    dialog.Picture1.line({5, 6}, {-7, 8}, 3);

    const calls expected{"clear 16777215", "line 0,0 1440,720 1", "text 10,20 2 P21", "line 5,6 -7,8 3"};
    EXPECT_EQ(drawn(dialog.Picture1), expected);
    EXPECT_EQ(drawn(dialog.Picture1), expected) << "drawing does not use the picture up";
}

TEST(picture, forgets_what_was_drawn_when_it_is_cleared)
{
    drawing_form dialog;
    dialog.Picture1.line({0, 0}, {1, 1}, 1);
    dialog.Picture1.clear(0x000040);
    dialog.Picture1.text({3, 4}, "after", 5);
    EXPECT_EQ(drawn(dialog.Picture1), (calls{"clear 64", "text 3,4 5 after"}));
    EXPECT_EQ(dialog.Picture1.background(), 0x000040u);
}

TEST(picture, copies_itself_onto_another_picture)
{
    drawing_form from, to;
    from.Picture1.clear(7);
    from.Picture1.line({1, 2}, {3, 4}, 5);
    to.Picture1.line({9, 9}, {9, 9}, 9);
    from.Picture1.draw_on(to.Picture1);
    EXPECT_EQ(drawn(to.Picture1), drawn(from.Picture1));
}

TEST(picture, draws_nothing_for_a_text_without_characters)
{
    drawing_form dialog;
    dialog.Picture1.text({10, 20}, "", 2);
    EXPECT_EQ(drawn(dialog.Picture1), calls{"clear 16777215"});
}

TEST(picture, tells_its_renderer_of_every_stroke)
{
    tests::scripted_shell shell;
    drawing_form dialog;
    shell.during(dialog, [&] {
        dialog.Picture1.line({0, 0}, {1, 1}, 1);
        EXPECT_EQ(shell.changes(dialog.Picture1), 1);
        dialog.Picture1.text({0, 0}, "a", 1);
        EXPECT_EQ(shell.changes(dialog.Picture1), 2);
        dialog.Picture1.clear(0xFFFFFF);
        EXPECT_EQ(shell.changes(dialog.Picture1), 3);
    });
}

TEST(picture, reports_where_it_was_pressed_only_while_it_is_usable)
{
    drawing_form dialog;
    std::vector<point> presses;
    dialog.Picture1.press({1, 2});  // nobody listens yet
    dialog.Picture1.on_press = [&](point where) { presses.push_back(where); };
    dialog.Picture1.press({30, 40});
    dialog.Picture1.enabled = false;
    dialog.Picture1.press({50, 60});
    dialog.Picture1.enabled = true;
    dialog.Picture1.visible = false;
    dialog.Picture1.press({70, 80});
    EXPECT_EQ(presses, (std::vector<point>{{30, 40}}));
}

}  // namespace
}  // namespace tamrix::forms
