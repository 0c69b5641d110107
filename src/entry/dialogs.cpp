#include "entry/dialogs.h"

#include "session/session.h"

namespace tamrix {

void dialog_table::show(std::string_view name, session& plug_in, module_variables& variables) const
{
    const auto found = makers_.find(name);
    if (found == makers_.end()) return;
    const std::unique_ptr<forms::form> dialog = found->second(plug_in, variables);
    plug_in.screen.show_modal(*dialog);
}

}  // namespace tamrix
