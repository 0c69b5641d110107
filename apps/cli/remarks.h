// How a command shows what a strict reading found, and what becomes of damage.
#pragma once

#include "cli/console.h"
#include "verify/verification.h"

#include <cstdint>
#include <string>

namespace tamrix::cli {

/// "1 place", "12 places".
std::string places_text(std::uint64_t count);

/// Shows the remarks on file `name`, up to ten, and their count if there are more.
void tell_remarks(const std::string& name, const verification& found, console& con);

/// For damage that has been shown: fails unless it is accepted.
void judge_damage(bool accept_damage, console& con);

/// Shows the remarks on one file and fails unless there are none, or damage is accepted.
inline void judge(const std::string& name, const verification& found, bool accept_damage, console& con)
{
    tell_remarks(name, found, con);
    if (found.damaged()) judge_damage(accept_damage, con);
}

}  // namespace tamrix::cli
