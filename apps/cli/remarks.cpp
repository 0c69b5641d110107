#include "cli/remarks.h"

#include <algorithm>

namespace tamrix::cli {

void tell_remarks(const std::string& name, const verification& found, console& con)
{
    constexpr std::size_t most_shown = 10;
    for (std::size_t i = 0; i < std::min(found.remarks.size(), most_shown); ++i) con.error(found.remarks[i].text());
    if (found.remark_count > most_shown)
        con.error(name + ": damaged at " + places_text(found.remark_count) + " in all");
}

void judge_damage(bool accept_damage, console& con)
{
    if (!accept_damage) fail("damaged files are refused; --accept-damage takes what can be read");
    con.note("the damage is accepted");
}

}  // namespace tamrix::cli
