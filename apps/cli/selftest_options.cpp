#include "cli/selftest_options.h"

#include "cli/console.h"
#include "cli/help_text.h"
#include "cli/number_word.h"
#include "cli/programmer_options.h"
#include "cli/transcript_file.h"

#include <CLI/CLI.hpp>

#include <limits>

namespace tamrix::cli {

namespace {

constexpr const char* details =
    "It goes through the self-test dialog of the model, on a simulated programmer. It prints the texts of the\n"
    "dialog's status bar, each fault, the verdict, and what was not tested and why. A calibration says which voltage\n"
    "is at which pin, waits for Enter, and compares the reading of a meter, if you type one in volts, with the set\n"
    "value. docs/self-test.md explains stages and faults.\n\n";
constexpr const char* statuses =
    "Exit status: 0 passed, 1 failed, 2 rejected values or wrong usage, 3 the test could not be carried out.";

int checked_item(const std::string& word)
{
    const std::optional<int> item = number_in(word, 0, std::numeric_limits<int>::max());
    if (!item) refuse("--item " + word + ": a number from 0 on is expected; tamrix selftest --list shows the items");
    return *item;
}

bool checked_socket(const std::string& word)
{
    if (word != "test board" && word != "empty") refuse("--socket " + word + ": \"test board\" or empty is expected");
    return word == "test board";
}

bool checked_on_fault(const std::string& word)
{
    if (word != "continue" && word != "stop") refuse("--on-fault " + word + ": continue or stop is expected");
    return word == "stop";
}

/// Nothing runs, so that nothing of a run can be chosen.
void check_list(const selftest_words& words)
{
    const std::pair<const char*, bool> given[] = {{"--item", words.item.has_value()},
                                                  {"--socket", words.socket.socket.has_value()},
                                                  {"--fault", !words.socket.faults.empty()},
                                                  {"--on-fault", words.on_fault.has_value()},
                                                  {"--brief", words.brief},
                                                  {"--transcript", words.transcript.has_value()}};
    for (const auto& [name, is_given] : given)
        if (is_given) refuse(std::string{"--list and "} + name + ": only one of the two is expected");
}

}  // namespace

void add_selftest_options(CLI::App& command, selftest_words& words)
{
    command.footer(std::string{details} + about_language + statuses);
    command.add_option("--item", words.item, "what to run, a number from --list (default: 0, the System Test)")
        ->type_name("N");
    command.add_flag("--list", words.list, "shows the items of the model instead of running one");
    command.add_option("--on-fault", words.on_fault, "the button to press after a fault (default: continue)")
        ->type_name("continue|stop");
    command.add_flag("--json", words.json, "prints one JSON object instead of lines");
    command.add_flag("--brief", words.brief, "prints only the faults and the verdict");
    add_transcript_option(command, words.transcript);
    add_programmer_options(command, words.socket,
                           "\"vcc driver 7 dead\", \"input 7 stuck 0\", \"pins 7 and 8 bridged\", \"bad ram bank 3\", "
                           "\"lost reply\", \"no answer\"");
    command
        .add_option("--socket", words.socket.socket,
                    "what is in its socket (default: the test board for an Output Test, else empty)")
        ->type_name("\"test board\"|empty")
        ->group(programmer_group);
}

selftest_options check(const selftest_words& words)
{
    if (words.list) check_list(words);
    if (words.json && words.brief) refuse("--json and --brief: only one of the two is expected");
    selftest_options options;
    socket_words described = words.socket;
    described.socket.reset();  // here it says more than the name of a chip
    options.socket = check(described);
    if (words.item) options.item = checked_item(*words.item);
    if (words.socket.socket) options.test_board = checked_socket(*words.socket.socket);
    options.stop_at_fault = words.on_fault && checked_on_fault(*words.on_fault);
    options.transcript = checked_transcript(words.transcript);
    options.list = words.list;
    options.json = words.json;
    options.brief = words.brief;
    return options;
}

}  // namespace tamrix::cli
