#include "cli/logic_test.h"

#include "base/native_path.h"
#include "cli/folders.h"
#include "host/data_folder.h"
#include "host/user_folder.h"
#include "messages/message_numbers.h"

#include <filesystem>
#include <stdexcept>

namespace tamrix::cli {

namespace {

/// Why the last test did not reach the chip, and what to do; empty where it did.
std::string obstacle(const attached_plug_in& plug_in)
{
    using kind = run_outcome::kind;
    const std::string error = plug_in.state.text(message::communication_error) + " ";
    const std::string remedy = "; check the cable and the supply of the programmer, then test again";
    switch (plug_in.variables.ttl.outcome.what) {
    case kind::passed:
    case kind::failed:
    case kind::not_played: break;
    case kind::no_answer: return "the programmer does not answer" + remedy;
    case kind::lost_reply: return error + "The reply to a vector did not come" + remedy;
    case kind::refused_frame: return error + "The programmer did not take a command" + remedy;
    case kind::timed_out: return error + "The results did not come" + remedy;
    }
    return {};
}

/// Where the home folder takes no copy, what only reads uses the installed library.
std::string own_folder(const std::string& installed, bool writes, console& con)
{
    try {
        return host::own_logic_libraries(installed);
    } catch (const std::runtime_error& error) {
        if (writes) throw;
        con.note(error.what() + std::string{"; the installed library is used"});
        return installed;
    }
}

std::string folder_of_library(const ttl_words& words, console& con)
{
    if (words.command == "vectors") return {};  // needs none
    const std::string installed = host::data_folder() + "/";
    const bool writes = words.command == "add" || words.command == "delete" || words.command == "reset";
    if (!words.syspath) return own_folder(installed, writes, con);
    const std::string named = folder_word("--syspath", *words.syspath);
    std::error_code none;
    if (writes && std::filesystem::equivalent(native_path(named), installed, none))
        refuse("--syspath " + named + ": the installed library is never changed; without --syspath your own one is");
    return named;
}

}  // namespace

void check_carried_out(const std::string& tested, const attached_plug_in& plug_in, const std::string& nothing_to_play)
{
    const bool played = plug_in.variables.ttl.outcome.what != run_outcome::kind::not_played;
    const std::string why_not = played ? obstacle(plug_in) : nothing_to_play;
    if (!why_not.empty()) throw command_error{exit_not_carried_out, tested + ": " + why_not};
}

void logic_test(const ttl_words& words, std::int32_t language, console& con)
{
    const ttl_options options{
        .syspath = folder_of_library(words, con), .socket = check(words.socket), .language = language};
    if (words.command == "list") return ttl_list(options, con);
    if (words.command == "show") return ttl_show(options, words.name, con);
    if (words.command == "test") return ttl_test(options, words.name, con);
    if (words.command == "find") return ttl_find(options, con);
    if (words.command == "add") return ttl_add(options, words.name, words.pins, words.file, con);
    if (words.command == "delete") return ttl_delete(options, words.name, con);
    if (words.command == "reset") return ttl_reset(options, con);
    vectors(options, words.file, con);
}

}  // namespace tamrix::cli
