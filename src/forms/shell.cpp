#include "forms/shell.h"

#include "forms/form.h"

namespace tamrix::forms {

void shell::show_modal(form& dialog)
{
    try {
        dialog.load();
        if (dialog.is_open()) run_modal(dialog);
    } catch (...) {
        dialog.unload();  // what a dialog holds is given back on every way out
        throw;
    }
    dialog.unload();
}

}  // namespace tamrix::forms
