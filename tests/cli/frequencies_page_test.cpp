// docs/frequencies.md: what the signal generator makes of some frequencies.
#include "channel/model.h"
#include "cli/command_inside.h"
#include "instruments/wave/wave_divider.h"
#include "sim/wave_generator.h"
#include "support/temp_files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fstream>
#include <sstream>

namespace tamrix::tests {
namespace {

struct programmer_of_table {
    std::int16_t model;
    bool usb;
    std::uint8_t generation;
};

struct frequency_table {
    const char* title;
    programmer_of_table example;
};

constexpr std::array tables{
    frequency_table{"Models below 5, over USB", {1, true, 0}},
    frequency_table{"Models 9, 10, 13 and 14, and models below 5 of generation 17, over USB", {9, true, 0}},
    frequency_table{"Other models below 40, over USB", {5, true, 0}},
    frequency_table{"Models below 40, by registers", {1, false, 0}},
    frequency_table{"Models below 40 of generation 17, by registers", {1, false, 17}},
    frequency_table{"Models from 40 on, on either route", {40, true, 0}},
};

constexpr std::array frequencies{1, 10, 100, 440, 1000, 2000, 3000, 10000, 20000, 50000, 100000, 125000};

/// The rest of the first line that begins so.
std::string fact(const std::string& printed, const std::string& start)
{
    const std::size_t at = ("\n" + printed).find("\n" + start + " ");
    return printed.substr(at + start.size() + 1, printed.find('\n', at) - at - start.size() - 1);
}

std::string row_of(int hertz, const programmer_of_table& programmer)
{
    const auto result =
        command_inside({"wave", "generate", std::to_string(hertz), "--model", std::to_string(programmer.model),
                        "--route", programmer.usb ? "usb" : "devobj", "--wfig", std::to_string(programmer.generation)});
    std::string row = "|";
    for (const char* start : {"asked", "shown", "divider", "given", "deviation"})
        row += " " + fact(result.out, start) + " |";
    return row + "\n";
}

std::string page()
{
    std::string text =
        "# Frequencies of the signal generator\n\n"
        "The signal generator takes whole hertz and makes what its output loop can. Below model 40 it calculates in "
        "ticks\n"
        "of 8/9 microseconds for every programmer, so a loop with another clock gives another frequency than the one "
        "that\n"
        "was asked for. From 2202 Hz on, and above 49 kHz from model 40 on, the dialog shows the frequency that it "
        "counts\n"
        "on, below model 40 in whole hundreds; for the shortest loop it always shows 125000, 132500 or 148000.\n\n"
        "[simulator.md](simulator.md#the-generators-loop) has the loops. `tamrix wave generate HZ` prints such a row "
        "for\n"
        "any frequency and programmer. This page is printed by\n"
        "`TAMRIX_WRITE_PAGES=1 build/dev/bin/tests_cli --gtest_filter='frequencies_page.*'`.\n\n"
        "- **Asked**, **Shown**: what is typed, and what the dialog shows after the start.\n"
        "- **Divider**: its low, middle and high byte.\n"
        "- **Given**: what comes out at P23.\n";
    for (const frequency_table& one : tables) {
        text += std::string{"\n## "} + one.title +
                "\n\n| Asked | Shown | Divider | Given | Deviation |\n| --- | --- | --- | --- | --- |\n";
        for (const int hertz : frequencies) text += row_of(hertz, one.example);
    }
    return text;
}

TEST(frequencies_page, says_what_the_command_prints)
{
    const std::string path = TAMRIX_FREQUENCIES_PAGE;
    if (std::getenv("TAMRIX_WRITE_PAGES") != nullptr) std::ofstream{path} << page();
    EXPECT_EQ(read_text(path), page()) << "write it anew with TAMRIX_WRITE_PAGES=1";
}

/// The table that a programmer belongs to by its number.
const frequency_table& table_of(const programmer_of_table& programmer)
{
    const auto [model, usb, generation] = programmer;
    if (model >= 40) return tables[5];
    if (!usb) return tables[generation == 17 ? 4 : 3];
    if (model == 9 || model == 10 || model == 13 || model == 14) return tables[1];
    if (model < 5) return tables[generation == 17 ? 1 : 0];
    return tables[2];
}

/// The divider, and what the simulated programmer makes of it.
std::pair<wave_divider, double> made_of(int hertz, const programmer_of_table& programmer)
{
    const auto [model, usb, generation] = programmer;
    const wave_divider made =
        divide(hertz, {.usb = usb, .loop = hw::model_of(model).generator, .generation = generation});
    return {made, sim::generated_hertz(sim::loop_of(model, !usb), model, generation, {made.lo, made.mid, made.hi})};
}

TEST(frequencies_page, has_each_programmer_in_the_table_that_names_it)
{
    for (std::int16_t model = 0; model <= 99; ++model) {
        for (const bool usb : {true, false}) {
            for (const std::uint8_t generation : {0, 16, 17, 18}) {
                const programmer_of_table programmer{model, usb, generation};
                const frequency_table& table = table_of(programmer);
                for (const int hertz : frequencies) {
                    EXPECT_EQ(made_of(hertz, programmer), made_of(hertz, table.example))
                        << model << ' ' << usb << ' ' << int{generation} << ' ' << hertz;
                }
            }
        }
    }
}

}  // namespace
}  // namespace tamrix::tests
