// File dialogs and the printer on a real screen.
#include "dialog_checks.h"
#include "window_steps.h"

#include "support/temp_files.h"
#include "wxui/printing.h"

#include <algorithm>
#include <cctype>
#include <functional>
#include <iterator>
#include <memory>
#include <optional>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <wx/bitmap.h>
#include <wx/dcmemory.h>
#include <wx/image.h>
#include <wx/timer.h>

using namespace tamrix;
using namespace tamrix::tests;

namespace {

class questions : public testing::Test {
protected:
    wxui::wx_shell screen;
    const std::string filter = "All Files (*.*)|*.*|Binary File (*.BIN)|*.bin";

    /// Calls `asks`, which shows a dialog of the system, and leaves that by Escape.
    void cancelled(const std::function<void()>& asks)
    {
        host_window host;
        during(screen, host, [&] {
            const escape_timer leave;
            asks();
        });
    }

    /// Calls `asks`, which shows a dialog of the system, and works it with `does` once it listens. Escape ends a dialog
    /// that is still there long after that.
    void worked(const std::function<void()>& asks, const std::function<void(gtk_window)>& does)
    {
        host_window host;
        during(screen, host, [&] {
            const unsigned long below = gtk_window::in_front().number();
            const escape_timer leave{20000};
            const script_timer person{[&] {
                comes_true([&] {
                    const gtk_window front = gtk_window::in_front();
                    return front.number() != below && front.has_keyboard();
                });
                does(gtk_window::in_front());
            }};
            asks();
        });
    }

    forms::print_end printed(const forms::print_job& job, const std::vector<window_step>& steps)
    {
        auto end = forms::print_end::printed;
        host_window host;
        during(screen, host, [&] { step_by_step([&] { end = screen.print(job); }, steps); });
        return end;
    }

    static void enter(const std::string& name)
    {
        type(name);
        press("Return");
    }

    forms::file_question named(const std::string& name) const
    {
        return {.title = "A File", .filter = filter, .name = name};
    }
};

}  // namespace

TEST_F(questions, for_a_file_that_are_cancelled_have_no_answer)
{
    std::optional<std::string> opened = "none", saved = "none";
    cancelled([&] { opened = screen.open_file(named("*.*")); });
    cancelled([&] { saved = screen.save_file(named("*.*")); });
    EXPECT_EQ(opened, std::nullopt);
    EXPECT_EQ(saved, std::nullopt);
}

TEST_F(questions, for_a_file_to_open_are_answered_with_the_name_of_an_existing_one)
{
    const temp_folder folder;
    const std::string file = folder.write("chosen.bin", std::string_view{"data"});
    std::optional<std::string> opened;
    worked([&] { opened = screen.open_file(named("*.*")); }, [&](gtk_window) { enter(file); });
    EXPECT_EQ(opened, file);
}

TEST_F(questions, for_a_file_to_save_are_answered_with_a_new_name)
{
    const temp_folder folder;
    std::optional<std::string> saved;
    worked([&] { saved = screen.save_file(named("old.bin")); }, [&](gtk_window) { enter(folder.path("new")); });
    EXPECT_EQ(saved, folder.path("new.bin")) << "the extension is not selected and stays";
}

TEST_F(questions, for_a_printer_that_are_cancelled_print_nothing)
{
    const forms::print_job job{.title = "page", .draw = [](forms::page&) {}};
    EXPECT_EQ(printed(job, {leave_it}), forms::print_end::cancelled);
    EXPECT_EQ(printed(job, {accept_it, leave_it}), forms::print_end::cancelled);
}

TEST_F(questions, for_a_printer_send_one_page_with_its_lines_and_readable_texts)
{
    const temp_folder folder;
    const std::string file = folder.path("page.ps");
    const forms::print_job job{.title = "page", .draw = [](forms::page& page) {
                                   page.line({0, 1440}, {page.size().x, 1440}, 0xFF0000);
                                   page.text({1440, 5000}, "Trace", 0x0000FF);
                               }};
    EXPECT_EQ(printed(job, {accept_it, print_to(file, "ps")}), forms::print_end::printed);
    int pages = 0;
    bool red_line = false;
    double letter_points = 0;
    std::string ink, words;
    std::istringstream paper{read_text(file)};
    for (std::string row; std::getline(paper, row);) {
        if (row == "showpage") ++pages;
        if (row.ends_with(" rg")) ink = row;
        red_line |= row.starts_with("0 72 m ") && ink == "1 0 0 rg";
        if (row.ends_with(" Tm")) letter_points = std::stod(row);
        if (row.ends_with("]TJ"))
            std::ranges::copy_if(row.substr(0, row.size() - 2), std::back_inserter(words), isalpha);
    }
    EXPECT_EQ(pages, 1);
    EXPECT_TRUE(red_line) << "an inch down";
    EXPECT_EQ(words, "Trace");
    EXPECT_NEAR(letter_points, 10, 1);
}

/// A printer that is not there ends in the same way.
TEST_F(questions, for_a_printer_say_what_is_wrong_when_nothing_is_printed)
{
    bool said = false;
    const auto read_box = [&](gtk_window) {
        said = shows("The page was not printed: the printer is not there, or the file cannot be written.");
        press("Escape");
    };
    const forms::print_job job{.title = "page", .draw = [](forms::page&) {}};
    EXPECT_EQ(printed(job, {accept_it, print_to("/nowhere/page.pdf", "pdf"), read_box}), forms::print_end::failed);
    EXPECT_TRUE(said);
}

TEST_F(questions, for_a_printer_show_the_page_first_and_zoom_it)
{
    forms::point size{};
    int drawn = 0;
    const forms::print_job job{
        .title = "Preview", .captions = {.print = "Drucker", .leave = "&Nein"}, .draw = [&](forms::page& page) {
            size = page.size();
            ++drawn;
            page.figure(forms::outline::rectangle, {0, 0, size.x, size.y}, 0x00FF00, 0x00FF00);
        }};
    const auto look = [](gtk_window) {
        EXPECT_EQ(dialog().GetLabel(), "Preview");
        EXPECT_EQ(focused(), "Drucker");
        expect_nothing_clipped(dialog());
        expect_fits_small_screen(dialog().GetSize());
        const auto green = [] {
            const std::string pixels = picture_of(dialog());
            int count = 0;
            for (std::size_t at = 0; at + 2 < pixels.size(); at += 3)
                count += pixels.compare(at, 3, std::string{"\x00\xFF\x00", 3}) == 0 ? 1 : 0;
            return count;
        };
        const int whole = green();
        EXPECT_GT(whole, 80000) << "most of a page of 300 x 424 pixels";
        press("plus");
        EXPECT_TRUE(comes_true([&] { return green() > whole; }));
        press("minus minus");
        EXPECT_TRUE(comes_true([&] { return green() == whole; })) << "it gets no smaller";
        press("alt+n");
    };
    EXPECT_EQ(printed(job, {look}), forms::print_end::cancelled);
    EXPECT_GT(drawn, 0);
    EXPECT_NEAR(1.0 * size.y / size.x, 1.4, 0.15) << "upright paper";
}

TEST_F(questions, for_a_printer_put_lines_and_texts_on_a_page_of_known_size)
{
    during(screen, *std::make_unique<host_window>(), [&] {
        wxBitmap paper{595, 842};  // A4 at 72 dots to the inch
        wxMemoryDC target{paper};
        target.SetBackground(*wxWHITE_BRUSH);
        target.Clear();
        forms::point size;
        const forms::print_job job{.title = "page", .draw = [&](forms::page& page) {
                                       size = page.size();
                                       page.line({0, 1440}, {size.x, 1440}, 0xFF0000);
                                       page.figure(forms::outline::rectangle, {1440, 2880, 1440, 1440}, 0x00FF00, 0);
                                   }};
        wxui::job_printout printout{job};
        printout.SetDC(&target);
        printout.SetPageSizeMM(210, 297);
        printout.SetPageSizePixels(595, 842);
        EXPECT_TRUE(printout.HasPage(1));
        EXPECT_FALSE(printout.HasPage(2));
        EXPECT_TRUE(printout.OnPrintPage(1));
        target.SelectObject(wxNullBitmap);
        EXPECT_NEAR(size.x, 11906, 2);
        EXPECT_NEAR(size.y, 16838, 2);
        const wxImage image = paper.ConvertToImage();
        const auto green = [&](int x, int y) { return static_cast<int>(image.GetGreen(x, y)); };
        const auto red = [&](int x, int y) { return static_cast<int>(image.GetRed(x, y)); };
        EXPECT_EQ(red(300, 72), 255);
        EXPECT_EQ(green(300, 72), 0) << "the line lies an inch below the edge";
        EXPECT_EQ(green(300, 80), 255);
        EXPECT_EQ(red(100, 180), 0) << "the rectangle";
    });
}

TEST_F(questions, for_a_printer_let_the_error_of_a_job_out)
{
    const forms::print_job job{.title = "page", .draw = [](forms::page&) { throw std::runtime_error{"no ink"}; }};
    during(screen, *std::make_unique<host_window>(), [&] {
        wxBitmap paper{100, 100};
        wxMemoryDC target{paper};
        wxui::job_printout printout{job};
        printout.SetDC(&target);
        printout.SetPageSizeMM(10, 10);
        printout.SetPageSizePixels(100, 100);
        EXPECT_FALSE(printout.OnPrintPage(1));
        EXPECT_THROW(printout.rethrow(), std::runtime_error);
    });
}
