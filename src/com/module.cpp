#include "com/module.h"

#include "entry/all_dialogs.h"
#include "plugin/session.h"
#include "wxui/wx_shell.h"

#include <atomic>
#include <cstdlib>
#include <mutex>
#include <string>
#include <thread>

namespace tamrix::com {

namespace {

std::atomic<long> reasons_to_stay = 0;
HINSTANCE the_module = nullptr;

std::string name_space_of_environment()
{
    const char* value = std::getenv("TAMRIX_NAMESPACE");
    return value != nullptr ? value : "";
}

struct library_state {
    wxui::wx_shell screen;
    session state{screen, name_space_of_environment()};
    entry_methods methods{state, all_dialogs()};

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

/// Made by the first object. Not a static object: when the process ends, its windows, its other threads and COM are
/// gone before the library is told, and then nothing may be taken apart any more.
library_state* the_state = nullptr;
std::mutex of_the_state;

}  // namespace

void lock_library() { ++reasons_to_stay; }

void unlock_library() { --reasons_to_stay; }

bool may_unload()
{
    if (reasons_to_stay != 0) return false;
    const std::lock_guard held{of_the_state};
    return the_state == nullptr || the_state->rest();
}

stay::stay() { lock_library(); }

stay::~stay() { unlock_library(); }

void remember_module(HINSTANCE module) { the_module = module; }

HINSTANCE module() { return the_module; }

entry_methods& plug_in()
{
    const std::lock_guard held{of_the_state};
    if (the_state == nullptr) the_state = new library_state;
    return the_state->methods;
}

void forget_plug_in()
{
    delete the_state;
    the_state = nullptr;
}

}  // namespace tamrix::com
