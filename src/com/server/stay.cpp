#include "com/server/stay.h"

#include <atomic>

namespace tamrix::com {

namespace {

std::atomic<long> reasons_to_stay = 0;
HINSTANCE the_module = nullptr;

}  // namespace

void lock_library() { ++reasons_to_stay; }

void unlock_library() { --reasons_to_stay; }

bool may_unload() { return reasons_to_stay == 0; }

stay::stay() { lock_library(); }

stay::~stay() { unlock_library(); }

void remember_module(HINSTANCE module) { the_module = module; }

HINSTANCE module() { return the_module; }

std::wstring module_path()
{
    std::wstring path(32768, L'\0');  // the longest that there is
    path.resize(::GetModuleFileNameW(module(), path.data(), static_cast<DWORD>(path.size())));
    return path;
}

}  // namespace tamrix::com
