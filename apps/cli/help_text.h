// What the help of several commands ends with.
#pragma once

namespace tamrix::cli {

inline constexpr const char* about_language =
    "--language CODE and --quiet may be before or after the command (see tamrix --help).\n";

inline constexpr const char* exit_statuses =
    "Exit status: 0 done, 1 failed, 2 rejected values or wrong usage, 3 a test could not be carried out.";

}  // namespace tamrix::cli
