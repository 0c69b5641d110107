// The commands and options as words: those that nobody knows, and the help on those that there are.
#pragma once

#include <string>
#include <vector>

namespace CLI {
class App;
}

namespace tamrix::cli {

/// A command below `app`, with its --help.
CLI::App* add_command(CLI::App& app, const std::string& name, const std::string& description);

/// Throws command_error for the first word that is no command or option where one is expected; it names the nearest
/// one. Returns where there is no such word.
void refuse_unknown_word(CLI::App& app, const std::vector<std::string>& words);

/// The same for the words after "help", which are commands alone.
void refuse_unknown_topic(CLI::App& app, const std::vector<std::string>& topics);

/// The commands, a line each, and how to learn more. Ends without the end of a line.
std::string short_help(CLI::App& app);

/// Puts the examples of each command at the end of its help.
void add_examples(CLI::App& app);

}  // namespace tamrix::cli
