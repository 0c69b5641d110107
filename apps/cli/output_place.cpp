#include "cli/output_place.h"

#include "cli/folders.h"

namespace tamrix::cli {

output_place::output_place(const std::string& word) : name_{word == "-" ? "standard output" : word}
{
    if (word == "-") return;
    check_folder_of(word);
    try {
        file_ = std::make_unique<file_replacement>(word);
    } catch (const file_error& error) {
        fail(error.what());
    }
}

}  // namespace tamrix::cli
