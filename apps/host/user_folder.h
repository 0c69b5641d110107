// A person's own files: the libraries of logic devices.
#pragma once

#include <string>

namespace tamrix::host {

/// "tamrix" in XDG_DATA_HOME, or in .local/share of the home folder. Ends without a separator; need not exist.
std::string user_data_folder();

/// The folder that a host passes to the methods of the logic test, ending in "/". It belongs to the person. Libraries
/// that are missing or empty there are copied from the folder `installed`; others do not change. Throws
/// std::runtime_error.
std::string own_logic_libraries(const std::string& installed);

struct library_reset {
    bool changed;         // false: it was the installed one already
    std::string kept_as;  // the file that the person's library went to; empty where there was none
};

/// Puts a copy of the library `installed` in the place of `own`. What was there is kept beside it, under the same
/// name with ".before-reset" and, if that exists, a number. Throws std::runtime_error.
library_reset reset_library(const std::string& installed, const std::string& own);

}  // namespace tamrix::host
