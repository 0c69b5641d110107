#include "cli/wave_options.h"

#include "cli/help_text.h"
#include "cli/number_word.h"
#include "cli/programmer_options.h"
#include "cli/transcript_file.h"

#include <CLI/CLI.hpp>

#include <algorithm>

namespace tamrix::cli {

namespace {

constexpr int most_readings = 1000;

constexpr const char* statuses =
    "Exit status: 0 done, 1 failed, 2 rejected values or wrong usage, 3 the programmer does not answer.";

constexpr const char* about_meter =
    "It works the dialog of the frequency meter on a simulated programmer, and prints each reading, in hertz, as the\n"
    "dialog shows it, then their mean, the lowest and the highest. A reading comes every 0.8 s of the programmer's\n"
    "time, which takes no real time. The signal is at P23.\n";

constexpr const char* about_generate =
    "It works the dialog of the signal generator on a simulated programmer, and prints what was asked, what the "
    "dialog\n"
    "shows instead, the divider that the programmer got (low, middle, high byte), the frequency that comes out of it\n"
    "and how far that is from the one that was asked for. docs/frequencies.md has examples for all programmers.\n";

/// The dialog drops other keys.
void check_digits(const std::string& option, const std::string& word)
{
    const auto is_digit = [](char c) { return c >= '0' && c <= '9'; };
    if (!std::ranges::all_of(word, is_digit)) refuse(option + " " + word + ": digits alone are expected, in hertz");
}

}  // namespace

void add_meter_options(CLI::App& command, wave_words& words)
{
    command.footer(std::string{about_meter} + "\n" + about_language + statuses);
    command.add_option("--count", words.count, "how many readings, 1 to 1000 (default: 5)")->type_name("N");
    command
        .add_option("--from-generator", words.from_generator,
                    "first starts the signal generator with this frequency, and leads its wave to P23")
        ->type_name("HZ");
    add_transcript_option(command, words.transcript);
    add_programmer_options(command, words.socket, "\"no signal at the counter\", \"generator dead\", \"no answer\"");
    add_signal_option(command, words.socket);
}

void add_generate_options(CLI::App& command, wave_words& words)
{
    command.footer(std::string{about_generate} + "\n" + about_language + statuses);
    command.add_option("HZ", words.hertz, "the frequency, in whole hertz")->type_name("")->required();
    add_transcript_option(command, words.transcript);
    add_programmer_options(command, words.socket, "\"generator dead\", \"no answer\"");
}

wave_options check(const wave_words& words)
{
    wave_options options;
    options.socket = check(words.socket);
    if (words.command == "generate") {
        options.hertz_word = "HZ";
        options.hertz = words.hertz;
    } else if (words.from_generator) {
        options.hertz_word = "--from-generator";
        options.hertz = *words.from_generator;
        options.socket.signals.emplace_back("lead 23 P23");
    }
    check_digits(options.hertz_word, options.hertz);
    if (words.count) options.count = checked_number("--count", *words.count, 1, most_readings);
    options.transcript = checked_transcript(words.transcript);
    return options;
}

}  // namespace tamrix::cli
