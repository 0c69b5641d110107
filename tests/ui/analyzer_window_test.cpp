// The logic analyzer, the frequency meter and the signal generator on a real screen.
#include "instrument_stage.h"
#include "messages/languages.h"
#include "wxui/picture_panel.h"

#include <algorithm>
#include <functional>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <wx/dcmemory.h>
#include <wx/graphics.h>
#include <wx/image.h>
#include <wx/settings.h>

using namespace tamrix;
using namespace tamrix::tests;

namespace {

class instrument_windows : public testing::Test {
protected:
    stage on{0};
    instruments with{on};

    static wxWindow& surface()
    {
        for (wxWindow* child : dialog().GetChildren()) {
            if (child->GetClientSize().y >= 200) return *child;
        }
        throw std::runtime_error{"no picture"};
    }
    /// While a run is at work, which does not come back to a script.
    static void press_soon(const std::string& keys)
    {
        EXPECT_EQ(std::system(("(sleep 0.7; xdotool key " + keys + ") &").c_str()), 0);
    }
    /// How many of its pixels have another colour than the ground.
    static std::ptrdiff_t drawn_pixels()
    {
        const std::string pixels = picture_of(surface());
        std::ptrdiff_t count = 0;
        for (std::size_t at = 0; at + 2 < pixels.size(); at += 3) {
            if (pixels.compare(at, 3, std::string{"\x00\x80\x80", 3}) != 0) ++count;
        }
        return count;
    }
    static bool is_blank()
    {
        return comes_true([] { return drawn_pixels() < 100; });  // the theme rounds its border
    }
    static bool is_drawn()
    {
        return comes_true([] { return drawn_pixels() > 1000; });
    }
};

/// The pixels of a bitmap of this size after `draw`.
std::string pixels_after(wxSize size, const std::function<void(wxDC&)>& draw)
{
    wxBitmap bitmap{size, 24};
    {
        wxMemoryDC dc{bitmap};
        draw(dc);
    }
    const wxImage image = bitmap.ConvertToImage();
    return {reinterpret_cast<const char*>(image.GetData()), static_cast<std::size_t>(size.x * size.y) * 3};
}

constexpr double pixels_per_twip = 1 / 15.0;

void draw_merged(wxDC& dc, wxSize size, const std::vector<analyzer_line>& lines)
{
    wxui::dc_canvas target{dc, pixels_per_twip, size};
    target.clear(0x008080);
    for (const analyzer_line& one : lines) target.line(one.from, one.to, one.ink);
}

/// By the toolkit, without smoothing.
void draw_one_by_one(wxDC& dc, const std::vector<analyzer_line>& lines)
{
    dc.SetBackground(wxColour{0, 128, 128});
    dc.Clear();
    if (wxGraphicsContext* const context = dc.GetGraphicsContext()) context->SetAntialiasMode(wxANTIALIAS_NONE);
    const auto pixel = [](forms::point at) {
        return wxPoint{wxRound(at.x * pixels_per_twip), wxRound(at.y * pixels_per_twip)};
    };
    for (const auto& [from, to, ink] : lines) {
        dc.SetPen(wxColour{static_cast<unsigned char>(ink >> 16), static_cast<unsigned char>(ink >> 8),
                           static_cast<unsigned char>(ink)});
        dc.DrawLine(pixel(from), pixel(to));
    }
}

}  // namespace

TEST_F(instrument_windows, scroll_a_screen_of_the_analyzer_with_each_step_of_the_wheel)
{
    with.show_analyzer([](analyzer& shown) {
        turn_wheel(surface(), -3);
        EXPECT_EQ(shown.HScroll1.value(), 3);
        EXPECT_EQ(shown.viewpos(), 3 * 32);
        EXPECT_TRUE(is_drawn());
        turn_wheel(surface(), 2);
        EXPECT_EQ(shown.HScroll1.value(), 1);
        turn_wheel(surface(), 5);
        EXPECT_EQ(shown.HScroll1.value(), 0) << "there is nothing before the first screen";
    });
}

TEST_F(instrument_windows, work_the_analyzer_with_keys_wherever_the_keyboard_is)
{
    with.show_analyzer([](analyzer& shown) {
        for (int control = 0; control < 4; ++control) {
            press("Home Right Right Right Left");
            EXPECT_EQ(shown.HScroll1.value(), 2) << focused();
            press("End");
            EXPECT_EQ(shown.HScroll1.value(), shown.HScroll1.max());
            const double width = shown.bitwidth();
            press("plus plus minus");
            EXPECT_EQ(shown.bitwidth(), 2 * width);
            press("minus");
            press("Tab");
        }
    });
}

TEST_F(instrument_windows, record_and_stop_with_the_space_bar_again_and_again)
{
    with.show_analyzer([](analyzer& shown) {
        for (int run = 0; run < 3; ++run) {
            press_soon("space");  // the programmer never says that it is ready
            press("space");       // comes back when the run has ended
            EXPECT_TRUE(shown.Command3.usable());
            EXPECT_FALSE(shown.Command4.usable());
            EXPECT_EQ(shown.StatusBar1.text(1), "Status:Record....");
        }
        EXPECT_EQ(focused(), "Record");
    });
}

TEST_F(instrument_windows, close_after_a_run_that_escape_stops)
{
    bool closed = false;
    with.show_analyzer([&](analyzer& shown) {
        press_soon("Escape");
        press("space");
        closed = comes_true([&] { return !shown.is_open(); });
    });
    EXPECT_TRUE(closed);
}

TEST_F(instrument_windows, show_nothing_after_a_resize_until_the_next_command)
{
    with.show_analyzer([](analyzer& shown) {
        EXPECT_TRUE(is_blank());
        press("plus");
        EXPECT_TRUE(is_drawn());
        const auto width = shown.Picture1.size().x;
        const wxSize size = dialog().GetSize();
        dialog().SetSize({size.x + 120, size.y + 60});
        EXPECT_TRUE(comes_true([&] { return shown.Picture1.size().x == width + 120 * 15; }));
        EXPECT_TRUE(is_blank());
        EXPECT_EQ(shown.bitwidth(), shown.Picture1.size().x / 32);
        press("Right");
        EXPECT_TRUE(is_drawn());
        EXPECT_EQ(surface().GetClientSize().x * 15, shown.Picture1.size().x);
    });
}

TEST_F(instrument_windows, keep_their_size_whatever_the_analyzer_says)
{
    for (const language& in : languages) {
        on.session.blocks.Language(0) = in.offset;
        with.show_analyzer([&](analyzer& shown) {
            const wxSize size = dialog().GetSize();
            const auto say = [&](int panel, int before, int after) {
                shown.StatusBar1.text(panel, on.session.text(before) + on.session.text(after));
                EXPECT_EQ(dialog().GetSize(), size) << in.name << ": " << shown.StatusBar1.text(panel);
            };
            for (const int state : {1258, 1259, 1260, 1261, 1134, 1135, 1141, 1142}) say(1, 1257, state);
            for (const int mode : {1248, 1249}) say(3, 1247, mode);
            for (const int level : {1251, 1252}) say(4, 1250, level);
            shown.StatusBar1.text(2, on.session.text(1263) + "0.4456787");
            shown.StatusBar1.text(5, on.session.text(1253) + "P28");
            EXPECT_EQ(dialog().GetSize(), size) << in.name << ": a resize would clear the picture";
        });
    }
}

TEST_F(instrument_windows, have_the_name_of_each_pin_beside_its_trace)
{
    with.show_analyzer([](analyzer&) {
        for (const int more : {0, 200}) {
            const wxSize size = dialog().GetSize();
            dialog().SetSize({size.x, size.y + more});
            comes_true([&] { return dialog().GetClientSize().y >= size.y + more; });
            const wxRect picture{surface().GetScreenPosition(), surface().GetSize()};
            for (int row = 1; row <= 8; ++row) {
                const wxWindow& name = shown_as("P" + std::to_string(20 + row));
                const int middle = name.GetScreenPosition().y + name.GetSize().y / 2;
                EXPECT_NEAR(middle - picture.y, (row - 0.45) * picture.height / 9, 8) << row;
            }
        }
    });
}

TEST_F(instrument_windows, draw_merged_lines_on_the_same_pixels_as_single_ones)
{
    with.show_analyzer([this](analyzer&) {
        std::mt19937 random{5};
        auto samples = on.session.blocks.ibuffer.span();
        for (const double width : {4.0, 4.6875, 9.375, 37.5, 300.0, 950.0}) {
            for (auto& sample : samples) sample = static_cast<std::uint8_t>(random());
            const wxSize size{641 + static_cast<int>(random() % 60), 360 + static_cast<int>(random() % 40)};
            const analyzer_view view{.size = {size.x * 15, size.y * 15}, .bitwidth = width, .viewpos = 1234};
            const auto lines = analyzer_lines(samples, view);
            EXPECT_TRUE(pixels_after(size, [&](wxDC& dc) { draw_merged(dc, size, lines); }) ==
                        pixels_after(size, [&](wxDC& dc) { draw_one_by_one(dc, lines); }))
                << width;
        }
    });
}

TEST_F(instrument_windows, show_the_reading_of_the_meter_as_a_display)
{
    with.show_wave(true, [](recetwave& meter) {
        const wxWindow& display = shown_as("000000");
        const wxColour ground = wxSystemSettings::GetColour(wxSYS_COLOUR_HIGHLIGHT);
        EXPECT_EQ(colour_at(display, {8, display.GetClientSize().y / 2}), ground.GetAsString(wxC2S_HTML_SYNTAX));
        EXPECT_EQ(display.GetForegroundColour(), (wxColour{255, 128, 128}));
        const std::string before = picture_of(display);
        click(display);
        type("7");
        EXPECT_EQ(meter.Text1.text(), "000000");
        meter.Text1.text("012345");
        EXPECT_TRUE(comes_true([&] { return picture_of(display) != before; }));
        for (int control = 0; control < 4; ++control) {
            press("Tab");
            EXPECT_NE(focused(), "012345") << "the keyboard passes it by";
        }
    });
}

TEST_F(instrument_windows, start_the_generator_with_enter_and_leave_it_with_escape)
{
    bool closed = false;
    with.show_wave(false, [&](recetwave& generator) {
        type("12x50");
        EXPECT_EQ(generator.Text1.text(), "1250") << "digits alone";
        press("Return");
        EXPECT_FALSE(generator.bigan.usable());
        EXPECT_FALSE(generator.Text1.usable());
        press("alt+s");
        press("Escape");
        closed = comes_true([&] { return !generator.is_open(); });
    });
    EXPECT_TRUE(closed);
}
