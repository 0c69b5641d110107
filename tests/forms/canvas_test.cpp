#include "forms/canvas.h"

#include "support/listing.h"
#include "support/scripted_shell.h"

#include <gtest/gtest.h>

#include <stdexcept>
#include <string>
#include <vector>

namespace tamrix::forms {
namespace {

struct drawing_form final : form {
    picture Picture1{*this};
    layout arrangement() override { return Picture1; }
};

std::vector<std::string> drawn(const picture& source)
{
    tests::listing<canvas> target;
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

TEST(picture, tells_its_renderer_once_of_a_whole_drawing)
{
    tests::scripted_shell shell;
    drawing_form dialog;
    picture& surface = dialog.Picture1;
    shell.during(dialog, [&] {
        surface.draw([&] {
            surface.clear(0x008080);
            for (int x = 0; x < 100; ++x) surface.line({x, 0}, {x, 9}, 1);
            surface.draw([&] { surface.text({0, 0}, "a", 1); });
            EXPECT_EQ(shell.changes(surface), 0);
        });
        EXPECT_EQ(shell.changes(surface), 1);
        surface.draw([] {});
        EXPECT_EQ(shell.changes(surface), 1) << "nothing was drawn";
        EXPECT_THROW(surface.draw([&] {
            surface.line({0, 0}, {1, 1}, 1);
            throw std::runtime_error{"in the midst"};
        }),
                     std::runtime_error);
        EXPECT_EQ(shell.changes(surface), 2);
        surface.line({0, 0}, {1, 1}, 1);
        EXPECT_EQ(shell.changes(surface), 3);
    });
}

TEST(picture, repeats_its_figures)
{
    drawing_form dialog;
    dialog.Picture1.figure(outline::ellipse, {1, 2, 3, 4}, 5, 6);
    dialog.Picture1.figure(outline::rectangle, {1, 2, 3, 4}, {}, 6);
    EXPECT_EQ(drawn(dialog.Picture1), (calls{"clear 16777215", "ellipse 1,2 3,4 5 6", "rectangle 1,2 3,4 open 6"}));
}

TEST(picture, is_as_large_as_its_drawing_until_the_renderer_tells_another_size)
{
    drawing_form dialog;
    int resized = 0;
    dialog.Picture1.on_resize = [&] { ++resized; };
    dialog.Picture1.extent = {3000, 1500};
    EXPECT_EQ(dialog.Picture1.size(), (point{3000, 1500}));
    dialog.Picture1.resize({3000, 1500});
    EXPECT_EQ(resized, 0);
    dialog.Picture1.resize({4500, 1500});
    dialog.Picture1.resize({4500, 1500});
    EXPECT_EQ(resized, 1);
    EXPECT_EQ(dialog.Picture1.size(), (point{4500, 1500}));
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
