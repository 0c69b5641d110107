// tamrix wave beside what separate models wrote, and the generator beside the meter.
#include "channel/model.h"
#include "cli/command_inside.h"
#include "cli/reviewed_run.h"
#include "instruments/wave/wave_divider.h"
#include "sim/wave_generator.h"
#include "support/reviewed_lines.h"
#include "support/temp_files.h"

#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <sstream>

namespace tamrix::tests {
namespace {

std::string route_word(const std::string& route) { return route == "usb" ? "usb" : "devobj"; }

/// The words after the first one of each line, by the first one.
std::map<std::string, std::string> facts_of(const std::string& printed)
{
    std::map<std::string, std::string> facts;
    std::istringstream text{printed};
    for (std::string line; std::getline(text, line);)
        facts[line.substr(0, line.find(' '))] = line.substr(line.find(' ') + 1);
    return facts;
}

TEST(wave_models, each_divider_and_shown_text_is_that_of_the_separate_model)
{
    std::ifstream file{TAMRIX_INSTRUMENT_TRANSCRIPTS "/dividers.txt"};
    int samples = 0, compared = 0, refused = 0, rounded = 0;
    for (std::string line; std::getline(file, line);) {
        std::istringstream words{line};
        std::string kind, route, model, generation, text, low, middle, high, shown;
        words >> kind >> route >> model >> generation >> text >> low >> middle >> high >> shown;
        if (kind != "sample" || ++samples % 2 == 0) continue;
        const auto result = command_inside({"wave", "generate", text == "empty" ? "" : text, "--route",
                                            route_word(route), "--model", model, "--wfig", generation});
        if (low == "error") {
            EXPECT_EQ(result.status, 2) << line;
            ++refused;
            continue;
        }
        ++compared;
        const auto facts = facts_of(result.out);
        EXPECT_EQ(facts.at("asked"), text);
        EXPECT_EQ(facts.at("shown"), shown) << line;
        EXPECT_EQ(facts.at("divider"), low + " " + middle + " " + high) << line;
        // Where the dialog shows another frequency than the typed one, that is the given one in whole hundreds.
        if (std::stoi(model) >= 40 || shown == text || low == "1") continue;
        const double given = std::stod(facts.at("given"));
        EXPECT_NEAR(given, std::stod(shown) + 50, 51) << line;
        ++rounded;
    }
    EXPECT_GT(compared, 450);
    EXPECT_GT(refused, 20);
    EXPECT_GT(rounded, 100);
}

/// How the command meets what a reviewed run met; nothing where it cannot.
std::vector<std::string> arguments_for(const std::vector<std::string>& name)
{
    const bool meter = name[0] == "meter", is_17 = name[3] == "gen17";
    const std::string what = name[is_17 ? 4 : 3], last = name.back();
    std::vector<std::string> arguments{"wave",    meter ? "meter" : "generate",
                                       "--route", route_word(name[1]),
                                       "--model", name[2],
                                       "--wfig",  is_17 ? "17" : "0"};
    if (last == "no_board" || last == "stale_bytes" || last == "edges") return {};
    if (meter) arguments.insert(arguments.end(), {"--count", "3"});
    if (!meter) arguments.push_back(what == "empty" ? "" : what);
    if (last == "no_answer") arguments.insert(arguments.end(), {"--fault", "no answer"});
    return arguments;
}

/// Without the counts, which the separate model chose, and what the generator finds in its frame.
run_lines comparable(run_lines lines, bool meter)
{
    std::erase_if(lines, [](const std::string& line) { return line.starts_with("frame bytes") || line == "error"; });
    for (std::string& line : lines)
        if (meter && line.starts_with("text1 ")) line = "text1 COUNT";
    return lines;
}

/// A transcript's part from Start on; after an error without what the close does.
run_lines from_start(run_lines lines, bool ends_in_error)
{
    lines.erase(lines.begin(), std::ranges::find(lines, "enabled bigan 0"));
    if (ends_in_error) lines.resize(lines.size() - 2);
    return lines;
}

TEST(wave_models, the_transcript_has_the_calls_and_texts_of_the_reviewed_runs)
{
    const temp_folder folder;
    int compared = 0;
    for (const bool meter : {true, false}) {
        for (const auto& file : reviewed_runs(meter ? "meter-" : "generator-")) {
            std::vector<std::string> arguments = arguments_for(parts_of_name(file));
            if (arguments.empty()) continue;
            arguments.insert(arguments.end(), {"--transcript", folder.path("calls.txt")});
            const auto result = command_inside(arguments);
            const run_lines wanted = reviewed_lines(file);
            const bool ends_in_error = wanted.back() == "error";
            EXPECT_EQ(result.status, ends_in_error ? 2 : file.stem().string().ends_with("no_answer") ? 3 : 0) << file;
            const run_lines called = from_start(calls_in(read_text(folder.path("calls.txt"))), ends_in_error);
            EXPECT_EQ(comparable(called, meter), comparable(wanted, meter)) << file;
            ++compared;
        }
    }
    EXPECT_GT(compared, 80);
}

struct led_wave {
    std::int16_t model;
    bool usb;
    std::uint8_t generation;
    std::int32_t hertz;
};

double given_to(const led_wave& wave)
{
    const wave_divider made = divide(
        wave.hertz, {.usb = wave.usb, .loop = hw::model_of(wave.model).generator, .generation = wave.generation});
    return sim::generated_hertz(sim::loop_of(wave.model, !wave.usb), wave.model, wave.generation,
                                {made.lo, made.mid, made.hi});
}

/// The meter counts the rises of a second, at first of four fifths of one.
void expect_agreement(const led_wave& wave)
{
    constexpr double resolution = 1.25;
    const std::vector<std::string> arguments{"wave",
                                             "meter",
                                             "--count",
                                             "3",
                                             "--from-generator",
                                             std::to_string(wave.hertz),
                                             "--model",
                                             std::to_string(wave.model),
                                             "--route",
                                             wave.usb ? "usb" : "devobj",
                                             "--wfig",
                                             std::to_string(wave.generation)};
    const auto measured = command_inside(arguments);
    const auto facts = facts_of(measured.out);
    const std::string where = testing::PrintToString(arguments);
    EXPECT_NEAR(std::stod(facts.at("lowest")), given_to(wave), resolution) << where;
    EXPECT_NEAR(std::stod(facts.at("highest")), given_to(wave), resolution) << where;
    EXPECT_EQ(measured.err, "") << where;
}

TEST(wave_models, the_generator_led_into_the_meter_agrees_within_the_meters_resolution_on_every_model)
{
    constexpr std::int16_t last_model = 60, first_without_generations = 40;
    for (std::int16_t model = 0; model <= last_model; ++model) {
        for (const bool usb : {true, false}) {
            for (const std::uint8_t generation : {0, 17}) {
                if (generation == 17 && model >= first_without_generations) continue;
                for (const std::int32_t hertz : {440, 60000}) expect_agreement({model, usb, generation, hertz});
            }
        }
    }
}

}  // namespace
}  // namespace tamrix::tests
