// How a command shows what a strict reading found, and what becomes of damage.
#pragma once

#include "cli/console.h"
#include "host/image_text.h"
#include "verify/verification.h"

#include <string>

namespace tamrix::cli {

using host::places_text;

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
