#include "cli/transcript_file.h"

#include "cli/console.h"
#include "cli/folders.h"
#include "files/file_io.h"

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
    const std::string missing = missing_folder_of(path);
    if (!missing.empty()) refuse("--transcript " + missing);
    refuse_what_fails([this] { file_.emplace(path_); });
}

void transcript_file::write(const sim::journal& log)
{
    if (!file_) return;
    const std::string text = log.transcript(true);
    refuse_what_fails([&] {
        file_->write({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
        file_->take_place(file_replacement::lasts::killed_program);
    });
}

template <class Work>
void transcript_file::refuse_what_fails(const Work& work) const
{
    try {
        work();
    } catch (const file_error& error) {
        refuse("--transcript " + std::string{error.what()});
    }
}

}  // namespace tamrix::cli
