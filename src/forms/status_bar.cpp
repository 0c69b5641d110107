#include "forms/status_bar.h"

#include "base/errors.h"

#include <utility>

namespace tamrix::forms {

status_bar::status_bar(form& owner, int panels, int in_first_row)
    : control{owner}, texts_(static_cast<std::size_t>(panels)), in_first_row_{in_first_row}
{}

void status_bar::text(int panel, std::string words)
{
    std::string& shown = texts_[place_of(panel)];
    if (shown == words) return;
    shown = std::move(words);
    changed();
}

std::size_t status_bar::place_of(int panel) const
{
    if (panel < 1 || panel > panels()) throw subscript_error{"no status panel " + std::to_string(panel)};
    return static_cast<std::size_t>(panel) - 1;
}

}  // namespace tamrix::forms
