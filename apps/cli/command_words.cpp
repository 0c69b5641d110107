#include "cli/command_words.h"

#include "cli/console.h"
#include "cli/help_examples.h"
#include "cli/help_text.h"
#include "cli/nearest_word.h"

#include <CLI/CLI.hpp>

#include <algorithm>

namespace tamrix::cli {

namespace {

std::vector<CLI::App*> commands_of(CLI::App& app)
{
    return app.get_subcommands([](const CLI::App*) { return true; });
}

/// As a person types it: "tamrix ttl".
std::string words_of(const CLI::App& app)
{
    const CLI::App* parent = app.get_parent();
    return parent == nullptr ? app.get_name() : words_of(*parent) + " " + app.get_name();
}

[[noreturn]] void refuse_word(const std::string& what, const std::optional<std::string>& nearest, const CLI::App& app)
{
    refuse(what + (nearest ? "; did you mean " + *nearest + "?" : " (see " + words_of(app) + " --help)"));
}

/// Its own command's, else that of a command above.
const CLI::Option* option_named(const CLI::App& app, const std::string& name)
{
    for (const CLI::App* at = &app; at != nullptr; at = at->get_parent())
        if (const CLI::Option* option = at->get_option_no_throw(name)) return option;
    return nullptr;
}

/// "--from" of "--from=intel", "-o" of "-oFILE".
std::string name_in(const std::string& word)
{
    return word.starts_with("--") ? word.substr(0, word.find('=')) : word.substr(0, 2);
}

[[noreturn]] void refuse_option(const CLI::App& app, const std::string& name)
{
    std::vector<std::string> known;
    for (const CLI::App* at = &app; at != nullptr; at = at->get_parent()) {
        for (const CLI::Option* option : at->get_options())
            known.insert(known.end(), option->get_lnames().begin(), option->get_lnames().end());
    }
    // Dashes that both have would make any two short names near.
    auto nearest = nearest_word(name.substr(std::min(name.find_first_not_of('-'), name.size())), known);
    if (nearest) nearest->insert(0, "--");
    refuse_word(name + ": no such option", nearest, app);
}

/// The command of that name below `app`. Throws command_error if there is none.
CLI::App& command_named(CLI::App& app, const std::string& name)
{
    std::vector<std::string> known;
    for (CLI::App* command : commands_of(app)) {
        if (command->get_name() == name) return *command;
        known.push_back(command->get_name());
    }
    const bool below = app.get_parent() != nullptr;
    refuse_word(name + ": " + (below ? words_of(app) + " has no such command" : "no such command"),
                nearest_word(name, known), app);
}

}  // namespace

CLI::App* add_command(CLI::App& app, const std::string& name, const std::string& description)
{
    CLI::App* command = app.add_subcommand(name, description);
    command->set_help_flag("-h,--help", "prints this help and exits");
    command->fallthrough();
    command->footer(std::string{about_language} + exit_statuses);
    return command;
}

void refuse_unknown_word(CLI::App& app, const std::vector<std::string>& words)
{
    CLI::App* at = &app;
    for (std::size_t i = 0; i < words.size() && words[i] != "--"; ++i) {
        const std::string& word = words[i];
        if (word.size() > 1 && word.front() == '-') {
            const std::string name = name_in(word);
            const CLI::Option* option = option_named(*at, name);
            if (option == nullptr) refuse_option(*at, name);
            const bool value_follows = option->get_items_expected_max() > 0 && name == word;
            i += value_follows ? 1 : 0;
        } else if (!commands_of(*at).empty()) {
            at = &command_named(*at, word);
        }
    }
}

void refuse_unknown_topic(CLI::App& app, const std::vector<std::string>& topics)
{
    CLI::App* at = &app;
    for (const std::string& topic : topics) at = &command_named(*at, topic);
}

std::string short_help(CLI::App& app)
{
    const std::vector<CLI::App*> commands = commands_of(app);
    std::size_t widest = 0;
    for (const CLI::App* command : commands) widest = std::max(widest, command->get_name().size());
    std::string text = "Usage: tamrix COMMAND ...\n";
    for (const CLI::App* command : commands) {
        const std::string name = command->get_name();
        text += "  " + name + std::string(widest - name.size() + 2, ' ') + command->get_description() + "\n";
    }
    return text + "tamrix help COMMAND explains a command, tamrix --help the options of all.";
}

void add_examples(CLI::App& app)
{
    const std::string lines = examples_of(words_of(app));
    if (!lines.empty()) app.footer(app.get_footer() + "\n\nExamples:\n" + lines);
    for (CLI::App* command : commands_of(app)) add_examples(*command);
}

}  // namespace tamrix::cli
