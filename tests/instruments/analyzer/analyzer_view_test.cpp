// Zoom and scroll bar of the analyzer: which samples are seen, and how wide.
#include "chance.h"
#include "checksum.h"
#include "instrument_bench.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>

namespace tamrix {
namespace {

using forms::form_key;
using tests::instrument_bench;

TEST(a_command, at_the_end_of_the_zoom_does_nothing_at_all)
{
    instrument_bench b;
    b.during_analyzer([&](analyzer& dialog) {
        for (forms::button* zoom : {&dialog.Command1, &dialog.Command2}) {
            double before = 0;
            while (before != dialog.bitwidth()) {
                before = dialog.bitwidth();
                b.transcript.clear();
                zoom->click();
            }
            EXPECT_TRUE(b.transcript.empty());
        }
        EXPECT_LE(dialog.bitwidth(), 4);
        EXPECT_GT(dialog.bitwidth(), 2);
    });
}

/// A step of a person; `number` is for those that have one.
void take(analyzer& dialog, const std::string& name, std::int32_t number, instrument_bench& b)
{
    if (name == "open" || name == "resize") {
        const int other_height = dialog.Picture1.size().y == 5000 ? 5010 : 5000;  // the same size is no resize
        dialog.Picture1.resize({number, other_height});
    }
    if (name == "scroll") dialog.HScroll1.drag(number);
    if (name == "in") dialog.Command1.click();
    if (name == "out") dialog.Command2.click();
    if (name == "first") dialog.press_key(form_key::home);
    if (name == "last") dialog.press_key(form_key::end);
    if (name == "captured") {
        b.reply_at_pass(1);
        dialog.Command3.click();
    }
}

/// The width of a sample, maximum and value of the scroll bar, and the sample at the left edge.
std::string view_of(const analyzer& dialog)
{
    std::ostringstream text;
    text.precision(17);
    text << dialog.bitwidth() << ' ' << dialog.HScroll1.max() << ' ' << dialog.HScroll1.value() << ' '
         << dialog.viewpos();
    return text.str();
}

/// Lines of the separate model's file that begin with this word, without it.
std::vector<std::string> lines_of(const std::string& kind)
{
    std::ifstream file{TAMRIX_INSTRUMENT_TRANSCRIPTS "/views.txt"};
    std::vector<std::string> found;
    for (std::string line; std::getline(file, line);)
        if (line.starts_with(kind + " ")) found.push_back(line.substr(kind.size() + 1));
    return found;
}

/// Which steps the separate model took, and what it saw after each.
template <class Step>
void play(int banks, const Step& step)
{
    instrument_bench b;
    b.session.blocks.rambknum(0) = static_cast<std::uint8_t>(banks);
    b.during_analyzer([&](analyzer& dialog) {
        step(dialog, [&](const std::string& name, std::int32_t number = 0) { take(dialog, name, number, b); });
    });
}

TEST(zoom_and_scroll, move_the_view_as_the_separate_model_has_it)
{
    std::vector<std::string> steps = lines_of("step");
    ASSERT_EQ(steps.size(), 3u * 41);
    auto next = steps.begin();
    for (const int banks : {0, 1, 16}) {
        play(banks, [&](analyzer& dialog, const auto& take_step) {
            for (int i = 0; i < 41; ++i, ++next) {
                std::istringstream words{*next};
                std::string name, wanted;
                std::int32_t number = 0;
                words >> name;
                if (name == "open" || name == "resize" || name == "scroll") words >> number;
                std::getline(words >> std::ws, wanted);
                take_step(name, number);
                EXPECT_EQ(view_of(dialog), wanted) << *next;
            }
        });
    }
}

/// The steps that the separate model takes by the same chance; returns how many, and which.
std::string steps_by_chance(analyzer& dialog, tests::chance& by,
                            const std::function<void(const std::string&, std::int32_t)>& take_step)
{
    constexpr int steps = 40;
    tests::checksum sum;
    const auto step = [&](const std::string& name, std::int32_t number, bool with_number) {
        take_step(name, number);
        sum.add(name + (with_number ? " " + std::to_string(number) : "") + " " + view_of(dialog));
    };
    step("open", 320 + static_cast<std::int32_t>(by.draw() % 12000), true);
    for (int i = 0; i < steps; ++i) {
        const std::uint32_t what = by.draw() % 16, number = by.draw_large();
        const auto range = static_cast<std::uint32_t>(dialog.HScroll1.max()) + 1;
        if (what < 4) {
            step("in", 0, false);
        } else if (what < 9) {
            step("out", 0, false);
        } else if (what < 12) {
            step("scroll", static_cast<std::int32_t>(number % range), true);
        } else if (what == 12) {
            step("last", 0, false);
        } else if (what == 13) {
            step("first", 0, false);
        } else if (what == 14) {
            step("resize", static_cast<std::int32_t>(number % 8 == 0 ? number % 40 : 320 + number % 12000), true);
        } else {
            step("captured", 0, false);
        }
    }
    return std::to_string(sum.lines()) + " " + sum.text();
}

TEST(zoom_and_scroll, by_chance_move_the_view_as_the_separate_model_has_it)
{
    const std::vector<std::string> sequences = lines_of("sequence");
    ASSERT_EQ(sequences.size(), 200u);
    for (const std::string& line : sequences) {
        std::istringstream words{line};
        std::uint32_t number = 0;
        int banks = 0;
        std::string wanted;
        words >> number >> banks;
        std::getline(words >> std::ws, wanted);
        tests::chance by{number};
        by.draw();  // the banks
        play(banks, [&](analyzer& dialog, const auto& take_step) {
            EXPECT_EQ(steps_by_chance(dialog, by, take_step), wanted) << "sequence " << number;
        });
    }
}

TEST(the_last_view, reads_no_further_than_the_end_of_the_capture)
{
    instrument_bench b;
    b.during_analyzer([&](analyzer& dialog) {
        for (int zoom = 0; zoom < 6; ++zoom) {
            dialog.Command2.click();
            dialog.press_key(form_key::end);
            const analyzer_view view{.size = dialog.Picture1.size(), .bitwidth = dialog.bitwidth()};
            EXPECT_LE(dialog.viewpos() + view.samples_across(), 32768);
            EXPECT_GE(dialog.viewpos(), 0);
        }
    });
}

}  // namespace
}  // namespace tamrix
