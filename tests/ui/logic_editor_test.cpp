// The vector editor on a real screen.
#include "logic_dialogs_fixture.h"

#include "ttl/dialogs/ttledit.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

using namespace tamrix;
using namespace tamrix::tests;

TEST_F(logic_dialogs, the_editor_is_worked_by_keyboard)
{
    device(4, {"0000", "1111"});
    ttledit editor{session, variables.ttl, variables.pld};
    with(editor, [&] {
        type("hl");
        EXPECT_EQ(editor.Text1.text(), "V0001 HL00\nV0002 1111\n");
        press("Return");
        type("gv");
        press("Right Up");
        type("k");
        EXPECT_EQ(editor.Text1.text(), "V0001 HL0K\nV0002 GVXX\nV0003 1111\n");
        press("Home Delete Insert");
        EXPECT_EQ(editor.Text1.text(), "V0001 XXXX\nV0002 GVXX\nV0003 1111\n");
        press("End BackSpace Next Prior");
        EXPECT_EQ(editor.Text1.selection_start(), 22);
        press("alt+i");
        EXPECT_TRUE(comes_true([&] { return variables.ttl.ttlcnt == 5; }));
        EXPECT_EQ(editor.Text1.text(), "V0001 XXXX\nV0002 GVXX\nV0003 1111\nV0004 XXXX\n");
        type("1");
        EXPECT_TRUE(editor.Text1.text().ends_with("V0004 1XXX\n")) << "the keyboard is back in the grid";
        press("alt+t");
        EXPECT_TRUE(comes_true([&] { return variables.ttl.ttlcnt == 4; }));
        press("Escape");
        EXPECT_FALSE(editor.is_open());
    });
}

TEST_F(logic_dialogs, tab_leaves_the_grid_and_comes_back)
{
    device(4, {"0000"});
    ttledit editor{session, variables.ttl, variables.pld};
    with(editor, [&] {
        EXPECT_TRUE(grid().HasFocus());
        press("Tab");
        EXPECT_EQ(focused(), "Insert");
        press("shift+Tab");
        EXPECT_TRUE(grid().HasFocus());
    });
}

TEST_F(logic_dialogs, a_click_in_the_grid_puts_the_caret_on_that_letter)
{
    device(14, std::vector<std::string>(40, std::string(14, 'X')));
    ttledit editor{session, variables.ttl, variables.pld};
    with(editor, [&] {
        const auto click_cell = [](int row, int column) {
            const wxRect cell = grid().cell(row, column);
            click(grid(), {cell.x + cell.width * 3 / 4, cell.y + cell.height / 2});
        };
        click_cell(3, 9);
        EXPECT_EQ(editor.Text1.selection_start(), 3 * 21 + 9);
        type("L");
        EXPECT_EQ(editor.Text1.text()[3 * 21 + 9], 'L');
        press("Next Next");  // scrolls
        EXPECT_EQ(editor.Text1.selection_start(), 27 * 21 + 10);
        EXPECT_TRUE(grid().GetClientRect().Contains(grid().cell(27, 10))) << "the caret is seen";
        click_cell(26, 6);
        press("Return");
        EXPECT_EQ(variables.ttl.ttlcnt, 42);
        EXPECT_EQ(editor.Text1.selection_start(), 27 * 21 + 6) << "behind the row that was clicked";
    });
}

TEST_F(logic_dialogs, the_fields_of_the_editor_have_their_colours_and_one_width)
{
    device(14, {std::string(14, 'X')});
    ttledit editor{session, variables.ttl, variables.pld};
    with(editor, [&] {
        EXPECT_TRUE(comes_true([] { return colour_at(grid(), {2, 2}) == "#FF80FF"; })) << colour_at(grid(), {2, 2});
        EXPECT_EQ(colour_at(ruler(), {2, 2}), "#8080FF");
        EXPECT_EQ(ruler().cell(0, 6).x, grid().cell(0, 6).x);
        EXPECT_EQ(ruler().cell(0, 6).width, grid().cell(0, 6).width);
        const std::string before = picture_of(grid());
        type("1");
        EXPECT_TRUE(comes_true([&] { return picture_of(grid()) != before; }));
    });
}

TEST_F(logic_dialogs, forty_pins_are_seen_without_scrolling)
{
    device(40, std::vector<std::string>(3, std::string(40, 'H')));
    ttledit editor{session, variables.ttl, variables.pld};
    with(editor, [&] { EXPECT_GE(grid().GetClientSize().x, grid().cell(0, 46).GetRight()); });
}

TEST_F(logic_dialogs, a_larger_window_shows_more_rows)
{
    device(14, std::vector<std::string>(40, std::string(14, 'X')));
    ttledit editor{session, variables.ttl, variables.pld};
    with(editor, [&] {
        const wxSize before = grid().GetClientSize();
        dialog().SetSize(dialog().GetSize() + wxSize{100, 200});
        EXPECT_TRUE(comes_true([&] { return grid().GetClientSize() == before + wxSize{100, 200}; }));
    });
}
