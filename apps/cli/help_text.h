// What the help of several commands ends with.
#pragma once

namespace tamrix::cli {

inline constexpr const char* about_language =
    "--language CODE, before or after the command, selects the language of messages (see tamrix --help).\n";

}  // namespace tamrix::cli
