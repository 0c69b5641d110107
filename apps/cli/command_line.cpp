#include "cli/command_line.h"

#include "cli/analyze.h"
#include "cli/command_words.h"
#include "cli/convert.h"
#include "cli/detect.h"
#include "cli/folders.h"
#include "cli/fuse_files.h"
#include "cli/help_text.h"
#include "cli/image_commands.h"
#include "cli/logic_options.h"
#include "cli/selftest.h"
#include "cli/tour.h"
#include "cli/wave.h"
#include "host/languages.h"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <exception>

namespace tamrix::cli {

namespace {

constexpr const char* about = "Converts and examines the files of a device programmer, and tests logic ICs.";

struct arguments_of_commands {
    convert_words convert;
    file_words images;
    std::vector<std::string> files;
    jedec_options jedec;
    svf_options svf;
    ttl_words ttl;
    selftest_words selftest;
    analyze_words analyze;
    wave_words wave;
    std::vector<std::string> topics;
    std::optional<std::string> language;
    bool quiet = false;
};

void add_commands(CLI::App& app, arguments_of_commands& arguments)
{
    app.set_help_flag("-h,--help", "prints this help and exits");
    app.set_version_flag("-v,--version", "tamrix " TAMRIX_VERSION, "prints the version and exits");
    app.add_flag("-q,--quiet", arguments.quiet, "prints no status texts and no notes: results and errors alone");
    app.add_option("--language", arguments.language,
                   "the language of the plug-in's messages: " + host::language_codes())
        ->type_name("CODE");
    app.footer("tamrix help COMMAND, or tamrix COMMAND --help, explains a command.\n" + std::string{exit_statuses});

    add_convert_options(
        *add_command(app, "convert",
                     "Reads files, checks them, and writes what they hold into one file of any format."),
        arguments.convert, std::string{about_language} + exit_statuses);

    add_info_options(*add_command(app, "info", "Says what files hold, and whether they are damaged."),
                     arguments.images);
    add_compare_options(*add_command(app, "compare", "Says where two files differ, whatever their formats."),
                        arguments.images);
    add_dump_options(*add_command(app, "dump", "Shows the bytes of a file."), arguments.images);

    CLI::App* detect =
        add_command(app, "detect", "Prints the format of each file: the index that a host passes, and the name.");
    detect->add_option("FILE", arguments.files, "the files to look at")->type_name("")->required();

    CLI::App* jedec =
        add_command(app, "jedec", "Verifies a JEDEC fuse file, says what is in it, and rewrites it with -o.");
    jedec->add_option("IN", arguments.jedec.in, "the file to read")->type_name("")->required();
    jedec->add_option("-o,--output", arguments.jedec.out, "the file to write")->type_name("OUT");
    jedec->add_option("--words", arguments.jedec.words, "fuses of the device (default: what IN says or has)")
        ->type_name("N");
    jedec->add_option("--page", arguments.jedec.page, "fuses in a row of OUT, 10 or more (default: 32)")
        ->type_name("N");
    jedec->add_option("--type", arguments.jedec.type, "type of the device, for OUT")->type_name("T");
    jedec->add_option("--maker", arguments.jedec.maker, "maker of the device, for OUT")->type_name("M");
    jedec->add_flag("--as-plug-in", arguments.jedec.as_plug_in,
                    "writes OUT as the plug-in does, not in the form of the standard");
    jedec->add_flag("--accept-damage", arguments.jedec.accept_damage, "goes on with a damaged file");

    CLI::App* svf = add_command(app, "svf", "Verifies an SVF file and copies it to pldtmp.svf under the system path.");
    svf->add_option("IN", arguments.svf.in, "the file to copy")->type_name("")->required();
    svf->add_option("--syspath", arguments.svf.syspath, "the folder")->type_name("DIR")->required();
    svf->add_flag("--accept-damage", arguments.svf.accept_damage, "goes on with a damaged file");

    add_ttl_commands(app, arguments.ttl);

    add_selftest_options(*add_command(app, "selftest", "Lets the programmer test itself, and calibrates its voltages."),
                         arguments.selftest);

    CLI::App* analyze = add_command(app, "analyze", "Records logic signals with the programmer, and shows recordings.");
    analyze->require_subcommand(1);
    add_record_options(*add_command(*analyze, "record", "Records P21 to P28 into a file."), arguments.analyze);
    add_draw_options(*add_command(*analyze, "draw", "Draws a recording."), arguments.analyze);
    add_info_options(*add_command(*analyze, "info", "Says what is in a recording."), arguments.analyze);

    CLI::App* wave = add_command(app, "wave", "Measures and makes a frequency with the programmer.");
    wave->require_subcommand(1);
    add_meter_options(*add_command(*wave, "meter", "Measures the frequency at P23."), arguments.wave);
    add_generate_options(*add_command(*wave, "generate", "Makes a square wave at P23."), arguments.wave);

    add_command(app, "tour", "Shows what tamrix does, on sample data.");

    CLI::App* help = add_command(app, "help", "Prints the help of tamrix or of a command.");
    help->add_option("COMMAND", arguments.topics, "the command, such as convert or ttl test")->type_name("");
    add_examples(app);
}

/// The library leaves two empty lines between the groups of options, and has one word for all files of `convert`.
std::string tidied(std::string text)
{
    for (const std::string& words : {"[" + std::string{convert_files} + "...]", std::string{convert_files} + " ..."}) {
        if (const auto at = text.find(words); at != std::string::npos) text.replace(at, words.size(), convert_usage);
    }
    for (auto at = text.find("\n\n\n"); at != std::string::npos; at = text.find("\n\n\n", at)) text.erase(at, 1);
    return text;
}

std::string name_of_subcommand(const CLI::App& app)
{
    return app.get_subcommands().front()->get_subcommands().front()->get_name();
}

void analyze(const analyze_words& words, std::int32_t language, console& con)
{
    if (words.command == "record") return analyze_record(checked_record(words), language, con);
    const auto look = words.command == "draw" ? analyze_draw : analyze_info;
    look(checked_capture(words), con);
}

void run_command(const CLI::App& app, arguments_of_commands& arguments, console& con)
{
    const std::string command = app.get_subcommands().front()->get_name();
    arguments.convert.language = arguments.language;
    if (command == "convert") {
        convert(check(arguments.convert), con);
    } else if (command == "info" || command == "compare" || command == "dump") {
        check_language(arguments.language);
        (command == "info" ? info : command == "compare" ? compare : dump)(arguments.images, con);
    } else if (command == "detect") {
        check_language(arguments.language);
        detect(arguments.files, con);
    } else if (command == "jedec") {
        jedec(arguments.jedec, check_language(arguments.language), con);
    } else if (command == "svf") {
        arguments.svf.syspath = folder_word("--syspath", arguments.svf.syspath);
        svf(arguments.svf, check_language(arguments.language), con);
    } else if (command == "ttl" || command == "vectors") {
        arguments.ttl.command = command == "ttl" ? name_of_subcommand(app) : command;
        logic_test(arguments.ttl, check_language(arguments.language), con);
    } else if (command == "selftest") {
        selftest(check(arguments.selftest), check_language(arguments.language), con);
    } else if (command == "analyze") {
        arguments.analyze.command = name_of_subcommand(app);
        analyze(arguments.analyze, check_language(arguments.language), con);
    } else if (command == "wave") {
        arguments.wave.command = name_of_subcommand(app);
        const auto work = arguments.wave.command == "meter" ? wave_meter : wave_generate;
        work(check(arguments.wave), check_language(arguments.language), con);
    } else {
        check_language(arguments.language);
        tour(con);
    }
    con.finish();
}

/// After "help" the names of commands are no commands.
std::vector<std::string> with_topics_apart(std::vector<std::string> words)
{
    std::size_t at = 0;
    while (at < words.size() && words[at].starts_with('-')) at += words[at] == "--language" ? 2 : 1;
    if (at + 1 < words.size() && words[at] == "help" && !words[at + 1].starts_with('-'))
        words.insert(words.begin() + static_cast<std::ptrdiff_t>(at) + 1, "--");
    return words;
}

int parse_and_run(const std::vector<std::string>& typed, console& con)
{
    const std::vector<std::string> words = with_topics_apart(typed);
    CLI::App app{about, "tamrix"};
    arguments_of_commands arguments;
    add_commands(app, arguments);
    try {
        app.parse(std::vector<std::string>{words.rbegin(), words.rend()});
    } catch (const CLI::CallForVersion& version) {
        con.line(version.what());
        return exit_done;
    } catch (const CLI::Success&) {
        con.print(tidied(app.help()));
        return exit_done;
    } catch (const CLI::ParseError& error) {
        refuse_unknown_word(app, words);
        refuse(error.what());
    }
    if (app.get_subcommands().empty()) refuse("a command is expected\n" + short_help(app));
    if (app.get_subcommands().front()->get_name() == "help") {
        refuse_unknown_topic(app, arguments.topics);
        arguments.topics.emplace_back("--help");
        return parse_and_run(arguments.topics, con);
    }
    if (arguments.quiet) con.be_quiet();
    run_command(app, arguments, con);
    return exit_done;
}

}  // namespace

int run(const std::vector<std::string>& arguments, console& con)
{
    try {
        const int status = parse_and_run(arguments, con);
        con.finish();
        return status;
    } catch (const command_error& error) {
        if (*error.what() != '\0') con.error(error.what());
        return error.status();
    } catch (const std::bad_alloc&) {
        con.error("not enough memory");
    } catch (const std::exception& error) {
        con.error(error.what());
    }
    return exit_failed;
}

}  // namespace tamrix::cli
