#include "cli/analyze_options.h"

#include "base/native_path.h"
#include "cli/help_text.h"
#include "cli/number_word.h"
#include "cli/programmer_options.h"
#include "cli/transcript_file.h"

#include <CLI/CLI.hpp>

#include <charconv>
#include <filesystem>
#include <limits>

namespace tamrix::cli {

namespace {

constexpr int most_banks = 16, longest_wait = 1000;
constexpr double shortest_period = 0.001, longest_period = 1e6;
constexpr std::int32_t most_samples = std::numeric_limits<std::int32_t>::max();

constexpr const char* about_record =
    "It works the dialog of the logic analyzer on a simulated programmer, which samples P21 to P28, and saves the raw\n"
    "samples: a byte a sample, bit 0 is P21. FILE is written after a recording that succeeded, in one step.\n\n";
constexpr const char* statuses_of_record =
    "Exit status: 0 recorded, 1 the recording failed or FILE cannot be written, 2 rejected values or wrong usage,\n"
    "3 the programmer does not answer, or nothing triggered.";

constexpr const char* about_draw =
    "It draws raw samples as the logic analyzer shows them, into an SVG file or on the terminal; there a column with\n"
    "more than one edge is grey (# where the terminal has no such letters). The file does not hold the sample\n"
    "period: pass on the one that \"tamrix analyze record\" printed.\n\n";
constexpr const char* about_info =
    "Frequency and duty are those of the whole periods of a channel, from its first rise to its last. The file does\n"
    "not hold the sample period: pass on the one that \"tamrix analyze record\" printed.\n\n";
constexpr const char* statuses_of_files =
    "Exit status: 0 done, 1 a file cannot be read or written, 2 rejected values or wrong usage.";

/// Whether `word` is the first one of two.
bool first_of(const std::string& option, const std::string& word, const std::string& first, const std::string& second)
{
    if (word != first && word != second) refuse(option + " " + word + ": " + first + " or " + second + " is expected");
    return word == first;
}

std::uint8_t checked_pin(const std::string& word)
{
    constexpr int first_pin = 21, last_pin = 28;
    const auto number =
        word.starts_with('P') ? number_in(std::string_view{word}.substr(1), first_pin, last_pin) : std::nullopt;
    if (!number) refuse("--pin " + word + ": one of P21 to P28 is expected");
    return static_cast<std::uint8_t>(*number - first_pin);
}

double checked_period(const std::string& word)
{
    double period = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), period, std::chars_format::fixed);
    const bool number = error == std::errc{} && end == word.data() + word.size();
    if (!number || !(period >= shortest_period) || period > longest_period)
        refuse("--period " + word + ": a time from 0.001 to 1000000, in microseconds, is expected");
    return period;
}

std::string checked_name(const std::optional<std::string>& word)
{
    if (word.value_or("").empty()) refuse("-o: the name of a file is expected");
    return *word;
}

/// A name that says another kind of picture would not get that.
std::string checked_picture(const std::string& name, const std::string& capture)
{
    const std::size_t dot = name.find_last_of("./");
    const std::string ending = dot == std::string::npos || name[dot] == '/' ? "" : name.substr(dot);
    if (ending != "" && ending != ".svg" && ending != ".SVG")
        refuse("-o " + name + ": a name that ends in .svg is expected");
    std::error_code none;
    if (std::filesystem::equivalent(native_path(name), native_path(capture), none))
        refuse("-o " + name + ": that is FILE itself");
    return name;
}

void add_file_options(CLI::App& command, analyze_words& words)
{
    command.add_option("FILE", words.file, "the raw samples")->type_name("")->required();
    command
        .add_option("--period", words.period, "the time from one sample to the next, in microseconds (default: 3.4)")
        ->type_name("US");
}

}  // namespace

void add_record_options(CLI::App& command, analyze_words& words)
{
    command.footer(std::string{about_record} + about_language + statuses_of_record);
    command.add_option("-o,--output", words.out, "the file for the samples; an existing file is replaced")
        ->type_name("FILE")
        ->required();
    command
        .add_option("--banks", words.banks,
                    "how many banks of 32768 samples the file gets, 0 to 16 (default: 4, as most programmers have)")
        ->type_name("N");
    command.add_option("--trigger", words.trigger, "in begins at once, ext waits for the level of a pin (default: in)")
        ->type_name("in|ext");
    command.add_option("--level", words.level, "that level (default: low)")->type_name("high|low");
    command.add_option("--pin", words.pin, "that pin (default: P21)")->type_name("P21..P28");
    command
        .add_option("--wait", words.wait,
                    "how long the trigger may take, 1 to 1000 seconds of the programmer's time (default: 10)")
        ->type_name("SECONDS");
    add_transcript_option(command, words.transcript);
    add_programmer_options(command, words.socket, "\"no trigger\", \"bank 3 never comes\", \"no answer\"");
    add_signal_option(command, words.socket);
}

void add_draw_options(CLI::App& command, analyze_words& words)
{
    command.footer(std::string{about_draw} + about_language + statuses_of_files);
    add_file_options(command, words);
    command.add_option("-o,--output", words.out, "the SVG file to write; without it the terminal gets a picture")
        ->type_name("PICTURE.svg");
    command.add_option("--from", words.from, "the sample at the left edge (default: 0)")->type_name("SAMPLE");
    command.add_option("--samples", words.samples, "how many samples (default: 76 on the terminal, 600 in a file)")
        ->type_name("N");
}

void add_info_options(CLI::App& command, analyze_words& words)
{
    command.footer(std::string{about_info} + about_language + statuses_of_files);
    add_file_options(command, words);
    command.add_flag("--json", words.json, "prints one JSON object instead of lines");
}

record_options checked_record(const analyze_words& words)
{
    record_options options;
    options.out = checked_name(words.out);
    options.socket = check(words.socket);
    if (words.banks) options.banks = checked_number("--banks", *words.banks, 0, most_banks);
    if (words.trigger) options.waits = !first_of("--trigger", *words.trigger, "in", "ext");
    if (words.level) options.high = first_of("--level", *words.level, "high", "low");
    if (words.pin) options.pin = checked_pin(*words.pin);
    if (words.wait) options.wait_seconds = checked_number("--wait", *words.wait, 1, longest_wait);
    options.transcript = checked_transcript(words.transcript);
    return options;
}

capture_options checked_capture(const analyze_words& words)
{
    capture_options options;
    options.file = words.file;
    if (words.out) options.out = checked_picture(checked_name(words.out), words.file);
    if (words.from) options.from = checked_number("--from", *words.from, 0, most_samples);
    if (words.samples) options.count = checked_number("--samples", *words.samples, 1, most_samples);
    if (words.period) options.period_us = checked_period(*words.period);
    options.json = words.json;
    return options;
}

}  // namespace tamrix::cli
