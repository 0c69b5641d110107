#include "com/module.h"

#include "base/environment_win32.h"
#include "com/no_screen.h"
#include "entry/all_dialogs.h"
#include "hw/loaded_programmer.h"
#include "hw/windows_programmer_win32.h"
#include "plugin/session.h"

#include <cstdlib>
#include <string>

namespace tamrix::com {

namespace {

std::string name_space_of_environment()
{
    const char* value = std::getenv("TAMRIX_NAMESPACE");
    return value != nullptr ? value : "";
}

/// A library with the C table where one is named, else what the host's installation has.
hw::programmer_source programmer_of_environment()
{
    const std::string library = environment_text(L"TAMRIX_PROGRAMMER");
    return library.empty() ? hw::windows_source() : hw::library_source(library);
}

struct library_state {
    library_state() { state.hardware.source = programmer_of_environment(); }

    no_screen screen;
    session state{screen, name_space_of_environment()};
    entry_methods methods{state, all_dialogs()};
};

}  // namespace

entry_methods& plug_in()
{
    static library_state loaded;
    return loaded.methods;
}

}  // namespace tamrix::com
