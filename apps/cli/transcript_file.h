// --transcript: the journal of a simulated programmer in a file.
#pragma once

#include "files/replace_file.h"
#include "sim/journal.h"

#include <optional>
#include <string>

namespace CLI {
class App;
}

namespace tamrix::cli {

void add_transcript_option(CLI::App& command, std::optional<std::string>& word);
/// The name of the file; empty: none is wanted. Throws command_error.
std::string checked_transcript(const std::optional<std::string>& word);

/// Written at the end in one step, but begun first, so that no run is lost on a wrong name. All throw command_error.
class transcript_file {
public:
    /// An empty path is no file.
    explicit transcript_file(const std::string& path);
    bool wanted() const { return !path_.empty(); }
    void write(const sim::journal& log);

private:
    template <class Work>
    void refuse_what_fails(const Work& work) const;

    std::string path_;
    std::optional<file_replacement> file_;
};

}  // namespace tamrix::cli
