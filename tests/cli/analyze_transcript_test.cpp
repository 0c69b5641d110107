// tamrix analyze record --transcript beside the runs that a separate model wrote.
#include "cli/command_inside.h"
#include "cli/reviewed_run.h"
#include "support/reviewed_lines.h"
#include "support/temp_files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <map>
#include <optional>
#include <sstream>

namespace tamrix::tests {
namespace {

/// A line of the list of situations: the name of a run, and what it meets, by key.
using situation = std::map<std::string, std::string>;

situation situation_of(const std::string& line)
{
    std::istringstream words{line};
    situation met;
    words >> met["name"];
    for (std::string word; words >> word;) met[word.substr(0, word.find('='))] = word.substr(word.find('=') + 1);
    return met;
}

std::string value(const situation& met, const std::string& key, const std::string& otherwise)
{
    const auto found = met.find(key);
    return found == met.end() ? otherwise : found->second;
}

/// What a person does otherwise than the command can, or a buffer and a programmer that it does not have.
bool can_be_met(const situation& met)
{
    for (const char* key : {"runs", "buflength", "leftover", "replies", "bulk_fails", "answer", "fails_at"})
        if (met.contains(key)) return false;
    return value(met, "act", "stop") == "stop" && value(met, "wait", "reply") == "reply";
}

struct planned_record {
    std::vector<std::string> arguments;
    int status = 0;
};

planned_record plan_of(const situation& met, const std::string& file, const std::string& transcript)
{
    const bool ext = value(met, "trigger", "in") == "ext";
    const std::string pin = "P" + std::to_string(21 + std::stoi(value(met, "pin", "0"))),
                      level = value(met, "level", "low");
    planned_record plan{.arguments = {"analyze",      "record",
                                      "-o",           file,
                                      "--transcript", transcript,
                                      "--route",      met.at("route") == "usb" ? "usb" : "devobj",
                                      "--model",      met.at("model"),
                                      "--wfig",       value(met, "generation", "0"),
                                      "--banks",      value(met, "banks", "1"),
                                      "--trigger",    ext ? "ext" : "in",
                                      "--level",      level,
                                      "--pin",        pin}};
    const auto add = [&plan](const std::string& option, const std::string& word) {
        plan.arguments.insert(plan.arguments.end(), {option, word});
    };
    if (ext) add("--signal", pin + " " + level);
    if (met.contains("reset")) {
        add("--fault", "no answer");
        plan.status = 3;
    }
    if (met.contains("wait")) {
        add("--fault", ext ? "no trigger" : "lost reply");
        plan.status = 3;
    }
    if (met.contains("bulk_hangs")) {
        add("--fault", "bank " + met.at("bulk_hangs") + " never comes");
        plan.status = 1;
    }
    return plan;
}

/// Without what follows from answers that the separate model chose: times, and how often it looked for the trigger.
run_lines comparable(const run_lines& lines)
{
    run_lines kept;
    for (const std::string& line : lines) {
        if (line.starts_with("sampleus ")) continue;
        const std::size_t count = kept.size();
        const bool again = line.starts_with("status1 Status:Search") && count >= 3 && kept[count - 2] == line;
        if (again) {
            kept.pop_back();  // the read before it
        } else {
            kept.push_back(line.starts_with("status2 Rec.Time:") && line.size() > 17 ? "status2 Rec.Time:TIME" : line);
        }
    }
    return kept;
}

TEST(analyze_transcript, has_the_calls_and_texts_of_the_reviewed_runs)
{
    const temp_folder folder;
    std::ifstream situations{TAMRIX_INSTRUMENT_TRANSCRIPTS "/situations.txt"};
    int compared = 0;
    for (std::string line; std::getline(situations, line);) {
        const situation met = situation_of(line);
        const std::string name = met.at("name");
        if (!name.starts_with("analyzer") || !can_be_met(met)) continue;
        const planned_record plan = plan_of(met, folder.path("capture.bin"), folder.path("calls.txt"));
        EXPECT_EQ(command_inside(plan.arguments).status, plan.status) << name;
        const run_lines wanted = comparable(reviewed_lines(TAMRIX_INSTRUMENT_TRANSCRIPTS "/" + name + ".txt"));
        const run_lines called = comparable(calls_in(read_text(folder.path("calls.txt"))));
        const auto found = std::ranges::search(called, wanted);
        EXPECT_FALSE(found.empty()) << name << testing::PrintToString(called).substr(0, 3000);
        ++compared;
    }
    EXPECT_GT(compared, 45);
}

}  // namespace
}  // namespace tamrix::tests
