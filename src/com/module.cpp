#include "com/module.h"

#include "base/environment_win32.h"
#include "entry/all_dialogs.h"
#include "programmer/loaded_programmer.h"
#include "programmer/windows_programmer_win32.h"
#include "session/session.h"
#include "wxui/wx_shell.h"

#include <mutex>
#include <string>
#include <thread>

namespace tamrix::com {

namespace {

/// A library with the C table where one is named, else what the host's installation has.
hw::programmer_source programmer_of_environment()
{
    const std::string library = environment_text(L"TAMRIX_PROGRAMMER");
    return library.empty() ? hw::windows_source() : hw::library_source(library);
}

struct library_state {
    library_state()
    {
        state.hardware.source = programmer_of_environment();
        screen.name_answers([this](forms::answer which) { return state.text(which); });
    }

    wxui::wx_shell screen;
    session state{screen, environment_text(L"TAMRIX_NAMESPACE")};
    module_variables variables;
    entry_methods methods{state, variables, all_dialogs()};

    /// Lets go what cannot be let go while the library is being unloaded: windows, and what came from COM. False on a
    /// thread that may not.
    bool rest()
    {
        if (std::this_thread::get_id() != thread || !screen.rest()) return false;
        state.hardware.forget();
        return true;
    }

private:
    std::thread::id thread = std::this_thread::get_id();
};

/// Created by the first object. Not a static object: when the process ends, its windows, its other threads and COM end
/// before the library is notified, and nothing may be destroyed after that.
library_state* the_state = nullptr;
std::mutex of_the_state;

}  // namespace

entry_methods& plug_in()
{
    const std::lock_guard held{of_the_state};
    if (the_state == nullptr) the_state = new library_state;
    return the_state->methods;
}

bool rest_plug_in()
{
    const std::lock_guard held{of_the_state};
    return the_state == nullptr || the_state->rest();
}

void forget_plug_in()
{
    delete the_state;
    the_state = nullptr;
}

}  // namespace tamrix::com
