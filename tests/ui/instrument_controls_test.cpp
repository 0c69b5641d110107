// What the dialogs of instruments are made of, on a real screen.
#include "person.h"

#include "forms/scroll_bar.h"
#include "forms/shape.h"
#include "forms/status_bar.h"
#include "support/temp_files.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <wx/scrolbar.h>

using namespace tamrix;
using namespace tamrix::tests;

namespace {

class instrument final : public scripted_form {
public:
    forms::menu file{*this}, setting{*this};
    forms::menu_item open{file}, save{file}, leave{file};
    forms::picture picture{*this};
    forms::shape outline{picture};
    forms::shape_array lamps{picture, 2};
    forms::scroll_bar scroll{*this};
    forms::button go{*this};
    forms::status_bar status{*this, 3};

    instrument()
    {
        caption("Instrument");
        file.caption = "&File";
        setting.caption = "&Setting";
        open.caption = "&Load";
        save.caption = "Sa&ve";
        leave.caption = "E&xit";
        picture.extent = {6000, 1500};  // 400 by 100 pixels
        picture.clear(0x008080);
        outline.place = {150, 150, 1500, 1200};
        for (int i = 0; i < lamps.count(); ++i) {
            lamps(i).kind = forms::outline::ellipse;
            lamps(i).place = {300 + 600 * i, 300, 450, 450};  // 30 pixels wide
            lamps(i).fill = 0xFFFFFF;
        }
        scroll.max(100);
        scroll.large_change = 10;
        go.caption = "Go";
        status.text(1, "Status:Record OK!");
    }
    forms::layout arrangement() override { return forms::column({picture, scroll, forms::buttons({go}), status}); }
    std::vector<forms::menu*> menus() override { return {&file, &setting}; }
};

class instrument_controls : public testing::Test {
protected:
    wxui::wx_shell screen;
    instrument form;

    static wxWindow& picture_window()
    {
        for (wxWindow* child : dialog().GetChildren()) {
            if (child->GetClientSize().y >= 100) return *child;
        }
        throw std::runtime_error{"no picture"};
    }
    static wxScrollBar& scroll_window()
    {
        for (wxWindow* child : dialog().GetChildren()) {
            if (auto* bar = dynamic_cast<wxScrollBar*>(child)) return *bar;
        }
        throw std::runtime_error{"no scroll bar"};
    }

    /// Opens the first menu, leaves it, and counts the colours where the marks of its items are.
    static int colours_of_marks()
    {
        const temp_folder folder;
        const std::string file = folder.path("count");
        const wxWindow& title = shown_as("File");
        const wxPoint place = title.ClientToScreen(wxPoint{5, title.GetSize().y + 8});
        const std::string area = "16x60+" + std::to_string(place.x) + "+" + std::to_string(place.y);
        EXPECT_EQ(std::system(("(sleep 0.7; import -silent -window root -crop " + area +
                               " png:- | identify -format %k - >" + file + "; xdotool key Escape) &")
                                  .c_str()),
                  0);
        click(title);
        return std::stoi(read_text(file));
    }
};

const wxPoint lamp_0{35, 35}, lamp_1{75, 35};

}  // namespace

TEST_F(instrument_controls, lamps_are_filled_bordered_and_hidden_by_index)
{
    during(screen, form, [&] {
        const wxWindow& picture = picture_window();
        EXPECT_TRUE(comes_true([&] { return colour_at(picture, lamp_0) == "#FFFFFF"; }));
        EXPECT_EQ(colour_at(picture, {10, 40}), "#000000") << "the outline";
        EXPECT_EQ(colour_at(picture, {15, 80}), "#008080") << "is seen through";
        EXPECT_EQ(colour_at(picture, {21, 21}), "#008080") << "the corner of an ellipse";

        form.lamps(1).fill = 0xFF00FF;
        EXPECT_TRUE(comes_true([&] { return colour_at(picture, lamp_1) == "#FF00FF"; }));
        EXPECT_EQ(colour_at(picture, lamp_0), "#FFFFFF");
        form.lamps(0).border = 0xFFFF00;
        EXPECT_TRUE(comes_true([&] { return colour_at(picture, {20, 35}) == "#FFFF00"; }));
        form.lamps(0).visible = false;
        EXPECT_TRUE(comes_true([&] { return colour_at(picture, lamp_0) == "#008080"; }));
    });
}

TEST_F(instrument_controls, status_panels_show_their_texts_whole_while_a_handler_is_at_work)
{
    std::string before, after;
    form.go.on_click = [&] {
        const wxWindow& panel = *shown_as("Status:Record OK!").GetParent();
        before = picture_of(panel);
        form.status.text(1, "Status:Error");
        after = picture_of(panel);
    };
    during(screen, form, [&] {
        click(shown_as("Go"));
        EXPECT_FALSE(before.empty());
        EXPECT_TRUE(before != after);
        form.status.text(3, "When test 14 pins device,connect a line (P27 P28 ).");
        const wxWindow& panel = shown_as(form.status.text(3));
        EXPECT_TRUE(comes_true([&] { return panel.GetSize().x >= panel.GetBestSize().x; }));
    });
}

TEST_F(instrument_controls, a_menu_is_worked_with_the_mouse_and_with_its_letters)
{
    std::vector<std::string> picked;
    form.open.on_click = [&] { picked.push_back("open"); };
    form.save.on_click = [&] { picked.push_back("save"); };
    form.leave.on_click = [&] { form.close(); };
    during(screen, form, [&] {
        // The menu has a loop of its own, so that a click returns when its item was picked.
        form.save.enabled = false;
        EXPECT_EQ(std::system("(sleep 0.7; xdotool key v; sleep 0.2; xdotool key l) &"), 0);
        click(shown_as("File"));
        EXPECT_TRUE(comes_true([&] { return !picked.empty(); }));
        form.save.enabled = true;
        EXPECT_EQ(std::system("(sleep 0.7; xdotool key v) &"), 0);
        press("alt+f");
        EXPECT_TRUE(comes_true([&] { return picked.size() == 2; }));
        EXPECT_EQ(picked, (std::vector<std::string>{"open", "save"}));
    });
}

TEST_F(instrument_controls, a_menu_without_a_letter_is_opened_with_f10_and_worked_with_the_arrows)
{
    std::vector<std::string> picked;
    form.file.caption = "File";
    form.save.on_click = [&] { picked.push_back("save"); };
    during(screen, form, [&] {
        EXPECT_EQ(std::system("(sleep 0.7; xdotool key Down Down Return) &"), 0);
        press("F10");
        EXPECT_TRUE(comes_true([&] { return !picked.empty(); }));
        EXPECT_EQ(picked, (std::vector<std::string>{"save"}));
    });
}

TEST_F(instrument_controls, a_menu_shows_a_box_only_at_an_item_that_is_checked)
{
    during(screen, form, [&] {
        EXPECT_EQ(colours_of_marks(), 1) << "nothing but the ground";
        form.save.checked = true;
        EXPECT_GT(colours_of_marks(), 1);
    });
}

TEST_F(instrument_controls, a_scroll_bar_is_moved_with_the_keyboard)
{
    std::vector<int> values;
    form.scroll.on_change = [&] { values.push_back(form.scroll.value()); };
    form.focus(form.scroll);
    during(screen, form, [&] {
        press("Right");
        press("Right");
        press("Page_Down");
        press("Left");
        press("End");
        press("Page_Up");
        press("Home");
        EXPECT_EQ(values, (std::vector<int>{1, 2, 12, 11, 100, 90, 0}));
        EXPECT_EQ(scroll_window().GetThumbPosition(), 0);
    });
}

TEST_F(instrument_controls, a_scroll_bar_shows_what_the_program_assigns)
{
    during(screen, form, [&] {
        form.scroll.value(42);
        EXPECT_EQ(scroll_window().GetThumbPosition(), 42);
        EXPECT_EQ(scroll_window().GetRange(), 110);
        form.scroll.max(20);
        EXPECT_EQ(scroll_window().GetThumbPosition(), 20);
        form.scroll.max(0x7FFFFFFF);
        form.scroll.value(0x7FFFFFFF);
        EXPECT_EQ(scroll_window().GetThumbPosition() + scroll_window().GetThumbSize(), scroll_window().GetRange());
    });
}

TEST_F(instrument_controls, a_scroll_bar_is_moved_with_the_mouse)
{
    during(screen, form, [&] {
        const wxSize size = scroll_window().GetSize();
        click(scroll_window(), wxPoint{size.x * 9 / 10, size.y / 2});
        EXPECT_GT(form.scroll.value(), 0);
        EXPECT_EQ(scroll_window().GetThumbPosition(), form.scroll.value());
    });
}

TEST_F(instrument_controls, a_picture_knows_its_size_and_hears_of_another_one)
{
    int resized = 0;
    form.picture.on_resize = [&] { ++resized; };
    during(screen, form, [&] {
        const wxWindow& picture = picture_window();
        const auto agree = [&] {
            const wxSize pixels = picture.GetClientSize();
            return form.picture.size() == forms::point{pixels.x * 15, pixels.y * 15};
        };
        EXPECT_TRUE(comes_true(agree)) << form.picture.size().x << " " << picture.GetClientSize().x;
        const int before = resized;
        const wxSize size = dialog().GetSize();
        dialog().SetSize({size.x + 100, size.y + 60});
        EXPECT_TRUE(comes_true([&] { return resized > before && agree(); }));
    });
}

TEST_F(instrument_controls, what_a_resize_draws_and_says_is_seen)
{
    form.picture.on_resize = [&] {
        form.picture.clear(0x204080);
        form.go.caption = "Resized";
    };
    during(screen, form, [&] {
        const wxSize size = dialog().GetSize();
        dialog().SetSize({size.x + 100, size.y + 60});
        EXPECT_TRUE(comes_true([&] { return colour_at(picture_window(), {200, 90}) == "#204080"; }));
        shown_as("Resized");
    });
}
