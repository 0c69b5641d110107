// tamrix ttl and tamrix vectors: logic ICs and the vectors of programmable devices, on the simulated programmer.
#pragma once

#include "cli/console.h"
#include "cli/simulated_socket.h"

#include <cstdint>
#include <string>

namespace tamrix::cli {

/// The words of the command line as typed; none for an option that was not given.
struct ttl_words {
    std::string command;  // "list", "show", "test", "find", "add", "delete", "reset" or "vectors"
    std::string name, pins, file;
    std::optional<std::string> syspath;
    socket_words socket{};
};

/// Checks the words and runs the command. Throws command_error.
void logic_test(const ttl_words& words, std::int32_t language, console& con);

struct ttl_options {
    std::string syspath;  // of the library; ends with a separator, empty for vectors
    socket_options socket{};
    std::int32_t language = 0;
};

/// All throw command_error. The model determines the library.
void ttl_list(const ttl_options& options, console& con);
void ttl_show(const ttl_options& options, const std::string& name, console& con);
/// Uses the test dialog. Prints failing rows; they fail the command.
void ttl_test(const ttl_options& options, const std::string& name, console& con);
void ttl_find(const ttl_options& options, console& con);
/// `rows_file`: one row a line, one letter a pin; "#" starts a comment.
void ttl_add(const ttl_options& options, const std::string& name, const std::string& pins, const std::string& rows_file,
             console& con);
void ttl_delete(const ttl_options& options, const std::string& name, console& con);
/// Brings the installed library back and keeps the one that was there.
void ttl_reset(const ttl_options& options, console& con);
/// Ends the command with status 3 where the test could not be carried out. `tested` begins the text; `nothing_to_play`
/// is the rest of it where no vectors were found.
void check_carried_out(const std::string& tested, const attached_plug_in& plug_in, const std::string& nothing_to_play);
/// Plays the vectors of a JEDEC file on the chip in the socket.
void vectors(const ttl_options& options, const std::string& jedec_file, console& con);

}  // namespace tamrix::cli
