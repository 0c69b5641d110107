// Whole runs on simulated programmers, call by call, compared with the files that a separate model wrote.
#include "self_test_forms.h"
#include "sim_bench.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <sstream>

namespace tamrix {
namespace {

using tests::form_of_test;
using tests::sim_bench;
using tests::situation;

/// What the names of the odd runs say.
struct odd_run {
    std::vector<std::string> faults{};
    int memory_banks = 0;
    bool test_board = true, image = true, presses_stop = false;
};
const std::map<std::string, odd_run> odd_runs = {
    {"small_ram", {.memory_banks = 1}},
    {"no_image", {.image = false}},
    {"input_7_stuck_low", {.faults = {"input 7 stuck 0"}}},
    {"vcc_30_dead_stop", {.faults = {"vcc driver 30 dead"}, .presses_stop = true}},
    {"board_5_register_2", {.faults = {"bad register 2 of board 5"}}},
    {"board_8_register_2", {.faults = {"bad register 2 of board 8"}}},
    {"output_no_board", {.test_board = false}},
    // Lines count from 0.
    {"output_line_7_open", {.faults = {"test board line 8 open"}}},
};

struct recorded_run {
    std::string form, run;
    situation where{};
    bool presses_stop = false;
};

/// FORM-ROUTE-MODEL[-gen17]-RUN.
recorded_run run_of(const std::string& name)
{
    std::vector<std::string> words;
    std::istringstream text{name};
    for (std::string word; std::getline(text, word, '-');) words.push_back(word);
    recorded_run made{.form = words.at(0), .run = words.back()};
    made.where.usb = words.at(1) == "usb";
    made.where.model = static_cast<std::int16_t>(std::stoi(words.at(2)));
    made.where.generation = words.size() == 5 ? 17 : 0;
    made.where.test_board = made.run.starts_with("output");
    if (const auto odd = odd_runs.find(made.run); odd != odd_runs.end()) {
        made.where.faults = odd->second.faults;
        made.where.memory_banks = odd->second.memory_banks;
        made.where.image = odd->second.image;
        made.where.test_board = made.where.test_board && odd->second.test_board;
        made.presses_stop = odd->second.presses_stop;
    }
    return made;
}

std::vector<std::string> lines_of(const std::filesystem::path& file)
{
    std::vector<std::string> lines;
    std::ifstream text{file, std::ios::binary};
    for (std::string line; std::getline(text, line);) lines.push_back(line);
    return lines;
}

void play_calibrations(sim_bench& b, selftest_frame& dialog, int limit)
{
    for (int option = 1; option < limit; ++option) {
        if (!dialog.Option1(option).usable()) continue;
        b.transcript.push_back("== option " + std::to_string(option));
        dialog.Option1(option).click();
        dialog.testbutton.click();
        dialog.teststop.click();
    }
}

std::vector<std::string> play(const recorded_run& what, const form_of_test& form)
{
    sim_bench b{what.where};
    std::vector<std::string> played;
    form.show(b, [&](selftest_frame& dialog) {
        b.at_wait = [&] { (what.presses_stop ? dialog.teststop : dialog.testbutton).click(); };
        b.transcript.clear();
        if (what.run.starts_with("output"))
            dialog.Option1(what.run == "output_isp" ? form.output_option + 1 : form.output_option).click();
        if (what.run == "calibrations") {
            play_calibrations(b, dialog, form.output_option);
        } else {
            dialog.testbutton.click();
        }
        played = b.transcript;  // without what closing the dialog does
    });
    return played;
}

/// How long a run took depends on how fast the programmer answers, which the files do not know.
void forget_seconds(std::vector<std::string>& lines)
{
    for (std::string& line : lines)
        if (line.starts_with("status2 ") && line.ends_with(" Sec ")) line = "status2 (some) Sec ";
}

/// The first difference, with the lines before it.
std::string difference(std::vector<std::string> wanted, std::vector<std::string> played)
{
    forget_seconds(wanted);
    forget_seconds(played);
    const auto differs = std::ranges::mismatch(wanted, played);
    if (differs.in1 == wanted.end() && differs.in2 == played.end()) return {};
    const auto at = differs.in1 - wanted.begin();
    std::string text = "line " + std::to_string(at + 1) + "\n";
    for (auto line = at < 3 ? 0 : at - 3; line < at; ++line)
        text += "  " + wanted[static_cast<std::size_t>(line)] + "\n";
    const auto shown = [](auto from, auto end) { return from == end ? std::string{"(the end)"} : *from; };
    return text + "file " + shown(differs.in1, wanted.end()) + "\nplay " + shown(differs.in2, played.end());
}

TEST(a_run, makes_each_call_and_shows_each_text_that_the_separate_model_wrote)
{
    int compared = 0;
    for (const auto& file : std::filesystem::directory_iterator{TAMRIX_SELFTEST_TRANSCRIPTS}) {
        if (file.path().extension() != ".txt") continue;
        const recorded_run what = run_of(file.path().stem().string());
        const form_of_test* const form = tests::form_named(what.form);
        if (form == nullptr) continue;
        ++compared;
        EXPECT_EQ(difference(lines_of(file.path()), play(what, *form)), "") << file.path().filename();
    }
    EXPECT_EQ(compared, 104);
}

}  // namespace
}  // namespace tamrix
