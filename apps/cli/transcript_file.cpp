#include "cli/transcript_file.h"

#include "cli/console.h"

#include <CLI/CLI.hpp>

namespace tamrix::cli {

void add_transcript_option(CLI::App& command, std::optional<std::string>& word)
{
    command.add_option("--transcript", word, "write all calls of the programmer, with times, to this file")
        ->type_name("FILE");
}

std::string checked_transcript(const std::optional<std::string>& word)
{
    if (word && word->empty()) refuse("--transcript: the name of a file is expected");
    return word.value_or("");
}

transcript_file::transcript_file(const std::string& path) : path_{path}
{
    if (path.empty()) return;
    file_.open(path, std::ios::binary);
    if (!file_) refuse("--transcript " + path + ": cannot be written");
}

void transcript_file::write(const sim::journal& log)
{
    if (path_.empty()) return;
    file_ << log.transcript(true);
    file_.close();
    if (!file_) refuse("--transcript " + path_ + ": cannot be written");
}

}  // namespace tamrix::cli
