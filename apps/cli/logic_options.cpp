#include "cli/logic_options.h"

#include "cli/command_words.h"

#include <CLI/CLI.hpp>

namespace tamrix::cli {

namespace {

void add_socket_options(CLI::App& command, ttl_words& words)
{
    const auto group = "Simulated programmer";
    command.add_option("--model", words.socket.model, "its model (default: 40)")->type_name("N")->group(group);
    command.add_option("--route", words.socket.route, "the route to it (default: usb)")
        ->type_name("usb|devobj")
        ->group(group);
    command.add_option("--socket", words.socket.socket, "the chip in its socket (default: empty)")
        ->type_name("CHIP|empty")
        ->group(group);
    command
        .add_option("--fault", words.socket.faults,
                    "\"pin 3 open\", \"pin 3 stuck 0\", \"pin 3 stuck 1\", \"dead driver 5\", \"vcc driver 7 dead\", "
                    "\"vcc driver 7 always on\" (also vpp, ground, high, low), \"input 7 stuck 0\", \"pins 7 and 8 "
                    "bridged\", \"lost reply\", \"read never ends\", \"no answer\"; may be given several times")
        ->type_name("TEXT")
        ->allow_extra_args(false)
        ->group(group);
}

CLI::App* add_ttl_command(CLI::App& ttl, const std::string& name, const std::string& description, ttl_words& words)
{
    CLI::App* command = add_command(ttl, name, description);
    command->add_option("--syspath", words.syspath, "the folder with the library in it (default: that of your own one)")
        ->type_name("DIR");
    return command;
}

/// Below 30 the model has a library of its own, so that the commands on the library take it too.
void add_model_option(CLI::App& command, ttl_words& words)
{
    command
        .add_option("--model", words.socket.model, "the programmer's model, which determines the library (default: 40)")
        ->type_name("N");
}

}  // namespace

void add_ttl_commands(CLI::App& app, ttl_words& words)
{
    CLI::App* ttl = add_command(app, "ttl", "Tests and identifies logic ICs, and edits the library of their vectors.");
    ttl->require_subcommand(1);
    CLI::App* list = add_ttl_command(*ttl, "list", "Lists the devices in the library.", words);
    CLI::App* show = add_ttl_command(*ttl, "show", "Shows the pins and the vectors of a device.", words);
    CLI::App* test = add_ttl_command(*ttl, "test", "Plays a device's vectors on the chip in the socket.", words);
    CLI::App* find = add_ttl_command(*ttl, "find", "Lists the devices that the chip in the socket could be.", words);
    CLI::App* add = add_ttl_command(*ttl, "add", "Adds a device to the library, or replaces it.", words);
    CLI::App* remove = add_ttl_command(*ttl, "delete", "Deletes a device from the library.", words);
    for (CLI::App* command : {show, test, add, remove}) {
        command->add_option("NAME", words.name, "the name of the device in the library")->type_name("")->required();
    }
    add->add_option("PINS", words.pins, "its pin count, even, up to 40")->type_name("")->required();
    add->add_option(
           "ROWS-FILE", words.file,
           "one row a line, one letter a pin: 1 0 drive, H L expect, C K clock, Z off, X unused, V G supply; # starts "
           "a comment")
        ->type_name("")
        ->required();
    CLI::App* reset = add_ttl_command(
        *ttl, "reset", "Brings the installed library back, and keeps what you had under another name.", words);
    for (CLI::App* command : {list, show, add, remove, reset}) add_model_option(*command, words);
    for (CLI::App* command : {test, find}) add_socket_options(*command, words);

    CLI::App* vectors = add_command(app, "vectors", "Plays the vectors of a JEDEC file on the chip in the socket.");
    vectors->add_option("JEDEC-FILE", words.file, "the file with the vectors")->type_name("")->required();
    add_socket_options(*vectors, words);
}

}  // namespace tamrix::cli
