#include "cli/programmer_options.h"

#include <CLI/CLI.hpp>

namespace tamrix::cli {

void add_programmer_options(CLI::App& command, socket_words& words, const std::string& examples_of_faults)
{
    command.add_option("--model", words.model, "its model (default: 40)")->type_name("N")->group(programmer_group);
    command.add_option("--route", words.route, "the route to it (default: usb)")
        ->type_name("usb|devobj")
        ->group(programmer_group);
    command.add_option("--wfig", words.wfig, "its hardware generation; 17 differs on most models (default: 0)")
        ->type_name("N")
        ->group(programmer_group);
    command
        .add_option("--fault", words.faults,
                    examples_of_faults + " and so on, see docs/simulator.md; may be given several times")
        ->type_name("TEXT")
        ->allow_extra_args(false)
        ->group(programmer_group);
}

void add_signal_option(CLI::App& command, socket_words& words)
{
    command
        .add_option("--signal", words.signals,
                    "what is at the pins: \"P21 square 1000 duty 25\", \"P21..P24 counter 10000\" and so on, see "
                    "docs/simulator.md; may be given several times")
        ->type_name("TEXT")
        ->allow_extra_args(false)
        ->group(programmer_group);
}

}  // namespace tamrix::cli
