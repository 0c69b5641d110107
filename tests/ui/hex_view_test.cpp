// The view of bytes, by keys and mouse, in a window of its own.
#include "hexview/hex_view.h"
#include "over_host.h"
#include "person.h"
#include "window_steps.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <wx/sizer.h>
#include <wx/textctrl.h>

using namespace tamrix::tests;
using namespace tamrix;
using editing::byte_range;
using editing::column;

namespace {

class hex_views : public testing::Test {
protected:
    /// Runs the script with a view of `bytes` that has the keyboard, between two text boxes.
    void with_view(const std::function<void()>& script, wxSize size = {760, 300})
    {
        host_window host;
        during(screen, host, [&] {
            wxDialog window{&dialog(),         wxID_ANY,      "Bytes",
                            wxDefaultPosition, wxDefaultSize, wxDEFAULT_DIALOG_STYLE | wxRESIZE_BORDER};
            auto* before = new wxTextCtrl{&window, wxID_ANY, "before"};
            view = new hexview::hex_view{&window};
            auto* after = new wxTextCtrl{&window, wxID_ANY, "after"};
            auto* rows = new wxBoxSizer{wxVERTICAL};
            rows->Add(before);
            rows->Add(view, wxSizerFlags{1}.Expand());
            rows->Add(after);
            window.SetSizer(rows);
            window.SetSize(size);
            view->on_type = [this](std::size_t address, std::uint8_t byte) { bytes[address] = byte; };
            view->on_move = [this] { ++moves; };
            prepare();
            view->show(bytes);
            view->SetFocus();
            script_timer run{[&] {
                comes_true([&] { return window.IsActive(); });
                const auto front = gtk_window::in_front();
                if (!front.has_keyboard()) front.take_keyboard();
                comes_true([&] { return view->HasFocus(); });
                script();
                window.EndModal(wxID_OK);
            }};
            window.ShowModal();
        });
    }

    /// The middle of a byte's two digits, in the rows in sight.
    wxPoint digits_of(std::size_t address) const
    {
        const wxSize letter = view->GetTextExtent("0");
        const std::size_t index = address % 16;
        const auto letters = static_cast<int>(10 + index * 3 + (index >= 8 ? 1 : 0) + 1);
        return {8 + letters * letter.x, line_of(address)};
    }
    wxPoint character_of(std::size_t address) const
    {
        const wxSize letter = view->GetTextExtent("0");
        return {8 + static_cast<int>(10 + 16 * 3 + 1 + 1 + address % 16) * letter.x + letter.x / 2, line_of(address)};
    }
    int line_of(std::size_t address) const
    {
        const int row = view->GetCharHeight() + view->FromDIP(3);
        return static_cast<int>(address / 16 - view->top_row() + 1) * row + row / 2 + view->FromDIP(2);
    }
    std::string picture_of_byte(std::size_t address) const
    {
        const std::string whole = picture_of(*view);
        const wxSize size = view->GetClientSize(), letter = view->GetTextExtent("0");
        const wxPoint middle = digits_of(address);
        std::string part;
        for (int y = middle.y - 4; y < middle.y + 4; ++y) {
            const auto begin = static_cast<std::size_t>((y * size.x + middle.x - letter.x) * 3);
            part += whole.substr(begin, static_cast<std::size_t>(2 * letter.x * 3));
        }
        return part;
    }

    wxui::wx_shell screen;
    hexview::hex_view* view = nullptr;
    std::vector<std::uint8_t> bytes = std::vector<std::uint8_t>(1024, 0x41);
    std::function<void()> prepare = [] {};
    int moves = 0;
};

}  // namespace

TEST_F(hex_views, take_digits_in_one_column_and_characters_in_the_other)
{
    with_view([&] {
        type("1f2");
        EXPECT_EQ(bytes[0], 0x1F);
        EXPECT_EQ(bytes[1], 0x21);
        EXPECT_TRUE(view->cursor().in_second_digit());
        press("Right");
        type("xg");  // no digits
        EXPECT_EQ(bytes[2], 0x41);
        press("Tab");
        EXPECT_EQ(view->cursor().side(), column::characters);
        type("x y");
        EXPECT_EQ((std::vector<std::uint8_t>{bytes.begin() + 2, bytes.begin() + 5}),
                  (std::vector<std::uint8_t>{'x', ' ', 'y'}));
        EXPECT_EQ(view->cursor().address(), 5u);
    });
    EXPECT_EQ(bytes.size(), 1024u);
}

TEST_F(hex_views, hand_the_keyboard_on_after_their_last_column)
{
    with_view([&] {
        press("Tab");
        EXPECT_TRUE(view->HasFocus());
        press("Tab");
        EXPECT_EQ(focused(), "after");
        press("shift+Tab");
        EXPECT_TRUE(view->HasFocus());
        EXPECT_EQ(view->cursor().side(), column::characters);
        press("shift+Tab shift+Tab");
        EXPECT_EQ(focused(), "before");
    });
}

TEST_F(hex_views, select_by_keys_with_shift)
{
    with_view([&] {
        press("Down Right shift+Right shift+Right shift+Down");
        EXPECT_EQ(view->cursor().selection(), (byte_range{17, 19}));
        press("ctrl+shift+End");
        EXPECT_EQ(view->cursor().selection(), (byte_range{17, 1007}));
        EXPECT_GT(view->top_row(), 40u);
        press("Left");
        EXPECT_TRUE(view->cursor().selection().empty());
        press("ctrl+Home shift+Next");
        EXPECT_GT(view->cursor().selection().length, 64u);
        type("5");
        EXPECT_TRUE(view->cursor().selection().empty());
    });
}

TEST_F(hex_views, select_by_the_mouse_in_both_columns)
{
    with_view([&] {
        click(*view, character_of(0x25));
        EXPECT_EQ(view->cursor().address(), 0x25u);
        EXPECT_EQ(view->cursor().side(), column::characters);
        click(*view, digits_of(0x1F));
        EXPECT_EQ(view->cursor().address(), 0x1Fu);
        EXPECT_EQ(view->cursor().side(), column::hexadecimal);
        drag(*view, digits_of(0x12), digits_of(0x34));
        EXPECT_EQ(view->cursor().selection(), (byte_range{0x12, 0x23}));
        drag(*view, character_of(0x34), character_of(0x22));
        EXPECT_EQ(view->cursor().selection(), (byte_range{0x22, 0x13}));
        EXPECT_EQ(view->cursor().side(), column::characters);
        drag(*view, character_of(0x40), character_of(0x40), "shift");
        EXPECT_EQ(view->cursor().selection(), (byte_range{0x34, 13}));
        EXPECT_FALSE(view->HasCapture());
    });
}

TEST_F(hex_views, scroll_on_while_the_mouse_is_dragged_below_them)
{
    with_view([&] {
        drag(*view, digits_of(0x12), {digits_of(0).x, view->GetClientSize().y + 40});
        EXPECT_GT(view->top_row(), 2u);
        EXPECT_EQ(view->cursor().selection().first, 0x12u);
        EXPECT_GT(view->cursor().address() / 16, view->top_row() + 3);
        const std::size_t top = view->top_row();
        comes_true([] { return false; });
        EXPECT_EQ(view->top_row(), top);
    });
}

TEST_F(hex_views, show_each_column_where_the_window_is_narrow)
{
    with_view(
        [&] {
            EXPECT_EQ(view->GetScrollPos(wxHORIZONTAL), 0);
            press("End");
            const int at_end_of_digits = view->GetScrollPos(wxHORIZONTAL);
            EXPECT_GT(at_end_of_digits, 0);
            press("Tab");
            EXPECT_GT(view->GetScrollPos(wxHORIZONTAL), at_end_of_digits);
            press("shift+Tab Home");
            EXPECT_EQ(view->GetScrollPos(wxHORIZONTAL), 0);
        },
        {300, 260});
}

TEST_F(hex_views, roll_with_the_wheel_and_keep_their_cursor)
{
    with_view([&] {
        turn_wheel(*view, -2);
        EXPECT_EQ(view->top_row(), 6u);
        EXPECT_EQ(view->cursor().address(), 0u);
        press("Right");
        EXPECT_EQ(view->top_row(), 0u);
    });
}

TEST_F(hex_views, draw_bytes_that_differ_in_another_colour_and_missing_ones_not_at_all)
{
    prepare = [this] {
        view->different = [](std::size_t address) { return static_cast<hexview::row_bits>(address == 16 ? 2 : 0); };
        view->present = [](std::size_t address) { return static_cast<hexview::row_bits>(address == 16 ? ~8 : ~0); };
    };
    with_view([&] {
        const std::string usual = picture_of_byte(0x12);
        EXPECT_EQ(picture_of_byte(0x1F), usual);
        EXPECT_NE(picture_of_byte(0x11), usual);
        EXPECT_NE(picture_of_byte(0x13), usual);
        const std::string nothing = picture_of_byte(0x13);
        EXPECT_EQ(nothing, std::string(nothing.size(), nothing[0]));
    });
}

TEST_F(hex_views, without_a_taker_are_for_reading_only)
{
    prepare = [this] { view->on_type = nullptr; };
    with_view([&] {
        type("5");
        EXPECT_EQ(bytes[0], 0x41);
        EXPECT_FALSE(view->cursor().in_second_digit());
        press("Right");
        EXPECT_EQ(view->cursor().address(), 1u);
    });
}

TEST_F(hex_views, read_row_by_row_what_does_not_lie_in_one_piece)
{
    std::size_t highest = 0;
    with_view([&] {
        view->show(std::size_t{1} << 32, [&](std::size_t address, std::span<std::uint8_t> row) {
            highest = std::max(highest, address + row.size());
        });
        press("ctrl+End");
        type("5");
        EXPECT_EQ(view->cursor().address(), 0xFFFFFFFF);
        EXPECT_TRUE(comes_true([&] { return highest == std::size_t{1} << 32; }));
        EXPECT_EQ(bytes[0], 0x41);
    });
}

TEST_F(hex_views, follow_another_without_a_word)
{
    with_view([&] {
        hexview::hex_view other{view->GetParent()};
        other.SetSize(view->GetSize());
        other.show(bytes);
        view->on_scrolled = [] { ADD_FAILURE() << "they would follow each other without end"; };
        other.select({0x3F0, 5});
        const int before = moves;
        view->follow(other);
        EXPECT_EQ(view->cursor().selection(), (byte_range{0x3F0, 5}));
        EXPECT_EQ(view->top_row(), other.top_row());
        EXPECT_GT(view->top_row(), 0u);
        EXPECT_EQ(moves, before);
        view->on_scrolled = nullptr;
    });
}

TEST_F(hex_views, of_nothing_take_every_key)
{
    bytes.clear();
    with_view([&] {
        press("Down shift+End ctrl+End");
        type("5");
        drag(*view, {50, 50}, {90, 90});
        EXPECT_EQ(view->cursor().address(), 0u);
        EXPECT_TRUE(view->cursor().selection().empty());
    });
}

TEST_F(hex_views, keep_their_selection_while_the_bytes_are_as_many)
{
    with_view([&] {
        view->select({5, 10});
        const int before = moves;
        view->show(bytes);
        EXPECT_EQ(view->cursor().selection(), (byte_range{5, 10}));
        EXPECT_GT(moves, before);
        view->show(std::span{bytes}.first(8));
        EXPECT_TRUE(view->cursor().selection().empty());
        EXPECT_EQ(view->cursor().address(), 5u);
    });
}
