// Examples at the end of each help.
#pragma once

#include <string>
#include <string_view>

namespace tamrix::cli {

/// The lines of a command, such as "tamrix ttl test": each begins with two blanks. Empty for an unknown command. They
/// work on files with these names: the tests run them.
std::string examples_of(std::string_view command);

}  // namespace tamrix::cli
