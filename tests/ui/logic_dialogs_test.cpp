// The dialogs of the logic IC test on a real screen.
#include "over_host.h"

#include "session/session.h"
#include "support/plug_in_fixture.h"
#include "support/temp_files.h"
#include "ttl/dialogs/ttladd.h"
#include "ttl/dialogs/ttlautotest.h"
#include "ttl/dialogs/ttledit.h"
#include "ttl/dialogs/ttltest.h"
#include "wxui/grid_panel.h"

#include <filesystem>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <wx/listbox.h>

using namespace tamrix;
using namespace tamrix::tests;

namespace {

template <class Window>
Window& find(wxWindow& parent, int which)
{
    std::function<Window*(wxWindow&)> below = [&](wxWindow& window) -> Window* {
        for (wxWindow* child : window.GetChildren()) {
            auto* const found = dynamic_cast<Window*>(child);
            if (found != nullptr && which-- == 0) return found;
            if (Window* deeper = below(*child)) return deeper;
        }
        return nullptr;
    };
    Window* found = below(parent);
    if (found == nullptr) throw std::runtime_error{"no such window"};
    return *found;
}

class logic_dialogs : public testing::Test {
protected:
    wxui::wx_shell screen;
    tamrix::session session{screen, fresh_name_space()};
    module_variables variables;
    temp_folder folder;

    logic_dialogs()
    {
        session.blocks.attachsmall(1);
        session.blocks.modeltype(0) = 40;
        session.syspath = folder.path("");
        write_library(60);
    }

    void write_library(int devices)
    {
        std::string directory, records;
        for (int i = 0; i < devices; ++i) {
            const std::string name = std::to_string(7400 + i);
            directory += static_cast<char>(name.size()) + name;
            records += "$" + name + "        02\x02" + "04\x04GHLV*\r\n";
        }
        std::filesystem::create_directories(folder.path("lib"));
        folder.write("lib/test.lib", "$KSM LIB001003C" + directory + "*\r\n" + records + "end-ksm\r\n");
    }

    /// Shows a dialog of the plug-in and runs `script` meanwhile.
    void with(forms::form& shown, const std::function<void()>& script) { over_host(screen, shown, script); }
    static wxui::grid_panel& ruler() { return find<wxui::grid_panel>(dialog(), 0); }
    static wxui::grid_panel& grid() { return find<wxui::grid_panel>(dialog(), 1); }
    static wxListBox& list() { return find<wxListBox>(dialog(), 0); }

    void device(int pins, const std::vector<std::string>& rows)
    {
        variables.ttl.ttlname = "7400";
        variables.ttl.ttlpin = static_cast<std::int16_t>(pins);
        variables.ttl.ttlcnt = static_cast<std::int16_t>(rows.size() + 1);
        for (std::size_t i = 0; i < rows.size(); ++i) variables.ttl.ttlvect.store(i, rows[i]);
    }
};

}  // namespace

TEST_F(logic_dialogs, the_test_finds_a_device_by_keyboard)
{
    ttltest test{session, variables.ttl, variables.pld};
    with(test, [&] {
        EXPECT_EQ(dialog().GetLabel(), "TTL & CMOS Test");
        EXPECT_EQ(list().GetCount(), 60U);
        type("7455");
        EXPECT_EQ(test.List1.index(), 55);
        EXPECT_EQ(list().GetSelection(), 55);
        EXPECT_GT(list().GetTopItem(), 0) << "the list goes there";
        press("Return");  // a known name: nothing happens
        EXPECT_TRUE(test.is_open());
        type("0");
        EXPECT_EQ(list().GetSelection(), wxNOT_FOUND);
        press("Escape");
        EXPECT_FALSE(test.is_open());
    });
}

TEST_F(logic_dialogs, a_click_in_the_list_shows_the_name_in_the_search_field)
{
    ttltest test{session, variables.ttl, variables.pld};
    with(test, [&] {
        click(list(), wxPoint{30, 30});
        EXPECT_GE(test.List1.index(), 0);
        EXPECT_EQ(shown_as(test.List1.text()).GetLabel(), "");
        press("Down");
        EXPECT_EQ(test.Text1.text(), test.List1.text());
    });
}

TEST_F(logic_dialogs, the_list_shows_as_selected_what_is_selected)
{
    ttltest test{session, variables.ttl, variables.pld};
    with(test, [&] {
        press("Tab");
        EXPECT_EQ(list().GetSelection(), test.List1.index());
        press("Down Down");
        EXPECT_EQ(list().GetSelection(), test.List1.index());
        EXPECT_EQ(test.Text1.text(), test.List1.text());
        press("Return");  // as a double click: no button stands for it here
        EXPECT_TRUE(test.is_open());
        press("shift+Tab");
        type("x");
        EXPECT_EQ(list().GetSelection(), wxNOT_FOUND);
        EXPECT_EQ(test.List1.index(), -1);
    });
}

TEST_F(logic_dialogs, the_library_loses_an_entry_of_its_list)
{
    variables.ttl.ttleditlib = 1;
    ttltest test{session, variables.ttl, variables.pld};
    with(test, [&] {
        EXPECT_EQ(dialog().GetLabel(), "Edit Pattern");
        shown_as("Add");
        shown_as("Del");
        type("7402");
        test.List1.remove(2);
        EXPECT_EQ(list().GetCount(), 59U);
        EXPECT_EQ(list().GetSelection(), wxNOT_FOUND);
    });
}

TEST_F(logic_dialogs, a_new_device_is_not_entered_by_escape_or_the_close_button)
{
    ttladd left_by_key{session, variables.ttl}, left_by_button{session, variables.ttl};
    with(left_by_key, [&] {
        press("Escape");
        EXPECT_FALSE(left_by_key.is_open());
    });
    with(left_by_button, [&] {
        EXPECT_TRUE(dialog().HasFlag(wxCLOSE_BOX));
        dialog().Close();
        EXPECT_FALSE(left_by_button.is_open());
    });
    EXPECT_FALSE(left_by_key.accepted());
    EXPECT_FALSE(left_by_button.accepted());
}

TEST_F(logic_dialogs, a_new_device_is_entered_by_keyboard)
{
    ttladd ask{session, variables.ttl};
    with(ask, [&] {
        EXPECT_EQ(dialog().GetLabel(), "New Pattern:");
        type("7499");
        press("Tab");
        type("14");
        press("Return");
        EXPECT_FALSE(ask.is_open());
    });
    EXPECT_EQ(variables.ttl.ttlname, "7499");
    EXPECT_EQ(variables.ttl.ttlpin, 14);
}

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

TEST_F(logic_dialogs, the_result_of_auto_find_is_closed_by_enter)
{
    variables.ttl.hits = {"7400", "74132"};
    ttlautotest result{session, variables.ttl};
    with(result, [&] {
        EXPECT_EQ(dialog().GetLabel(), "Auto Find Device Result");
        EXPECT_EQ(list().GetCount(), 2U);
        EXPECT_EQ(list().GetSelection(), wxNOT_FOUND);
        press("Return");
        EXPECT_FALSE(result.is_open());
    });
}

TEST_F(logic_dialogs, enter_in_a_list_is_the_default_button)
{
    variables.ttl.hits = {"7400", "74132"};
    ttlautotest result{session, variables.ttl};
    with(result, [&] {
        list().SetFocus();
        press("Return");
        EXPECT_FALSE(result.is_open());
    });
}
