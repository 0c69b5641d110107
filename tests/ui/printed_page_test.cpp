// The analyzer's page, as another program finds it in the file that was printed to.
#include "instrument_stage.h"
#include "instruments/analyzer/analyzer_page.h"
#include "program.h"
#include "support/temp_files.h"
#include "window_steps.h"

#include <algorithm>
#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

using namespace tamrix;
using namespace tamrix::tests;

namespace {

constexpr int twips_per_pixel = 10;  // at 144 to the inch

class printed_page : public testing::Test {
protected:
    const temp_folder folder;
    const std::string pdf = folder.path("page.pdf");
    stage on{0};
    instruments with{on};

    /// Prints what the analyzer shows; the view that it has then.
    analyzer_view print()
    {
        analyzer_view view;
        with.show_analyzer([&](analyzer& shown) {
            press("minus minus Right");  // 128 samples
            view = {.size = shown.Picture1.size(), .bitwidth = shown.bitwidth(), .viewpos = shown.viewpos()};
            const auto accept_preview = [](gtk_window) {
                EXPECT_EQ(focused(), "Printer") << "in the words of the plug-in";
                press("Return");
            };
            step_by_step([&] { shown.analyzerprint.click(); }, {accept_preview, print_to(pdf, "pdf")});
        });
        return view;
    }
    picture look_at_page() const
    {
        EXPECT_EQ(output_of("pdfinfo " + pdf + " | grep -c '^Pages: *1$'"), "1\n");
        return picture_in("pdftoppm -r 144 -f 1 -l 1 " + pdf);
    }
};

/// On the page, in pixels.
wxPoint place_of(forms::point at) { return {(at.x + 2800) / twips_per_pixel, (at.y + 2600) / twips_per_pixel}; }

bool is_dark(const picture& page, wxPoint at)
{
    for (int x = at.x - 2; x <= at.x + 2; ++x) {
        for (int y = at.y - 2; y <= at.y + 2; ++y) {
            if ((page.colour(x, y) & 0xFF) < 0x60) return true;
        }
    }
    return false;
}

wxPoint middle_of(const analyzer_line& line)
{
    return place_of({(line.from.x + line.to.x) / 2, (line.from.y + line.to.y) / 2});
}

}  // namespace

TEST_F(printed_page, has_the_lines_of_the_channels_where_they_are_drawn)
{
    const analyzer_view view = print();
    const picture page = look_at_page();
    ASSERT_GT(page.width, 1100);
    int inside = 0;
    for (const analyzer_line& line : page_lines(on.session.blocks.ibuffer.span(), view)) {
        const wxPoint middle = middle_of(line);
        if (middle.x > page.width - 60 || middle.y > page.height - 60) continue;  // where a printer has its margin
        ++inside;
        EXPECT_TRUE(is_dark(page, middle)) << line.from.x << " " << line.from.y;
    }
    EXPECT_GT(inside, 800);
}

TEST_F(printed_page, is_white_between_the_channels)
{
    const analyzer_view view = print();
    const picture page = look_at_page();
    const double row = view.size.y / 8.1;
    for (int channel = 1; channel < 8; ++channel) {
        const wxPoint between = place_of({4000, static_cast<int>((channel + 0.05) * row)});
        EXPECT_FALSE(is_dark(page, between)) << channel;
    }
    EXPECT_FALSE(is_dark(page, {100, 100})) << "the margin";
}

TEST_F(printed_page, has_the_times_and_its_heading_below)
{
    print();
    const std::string words = output_of("pdftotext -layout " + pdf + " -");
    EXPECT_THAT(words, testing::HasSubstr("Oscillogram"));
    EXPECT_THAT(words, testing::ContainsRegex("[0-9]+uS +[0-9]+uS +[0-9]+uS"));
}
