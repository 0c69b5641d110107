#include "com/module.h"

#include "com/no_screen.h"
#include "entry/all_dialogs.h"
#include "plugin/session.h"

#include <atomic>
#include <cstdlib>
#include <string>

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
    no_screen screen;
    session state{screen, name_space_of_environment()};
    entry_methods methods{state, all_dialogs()};
};

}  // namespace

void lock_library() { ++reasons_to_stay; }

void unlock_library() { --reasons_to_stay; }

bool may_unload() { return reasons_to_stay == 0; }

stay::stay() { lock_library(); }

stay::~stay() { unlock_library(); }

void remember_module(HINSTANCE module) { the_module = module; }

HINSTANCE module() { return the_module; }

entry_methods& plug_in()
{
    static library_state loaded;
    return loaded.methods;
}

}  // namespace tamrix::com
