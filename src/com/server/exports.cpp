// What a DLL with a class exports; its .def file names it.
#include "com/server/class_factory.h"
#include "com/server/registration.h"
#include "com/server/run_time_leftovers.h"
#include "com/server/served_class.h"

#include <new>

#include <windows.h>

#include <objbase.h>

namespace {

using namespace tamrix::com;

/// Nothing throws across the boundary.
template <class Body>
HRESULT guarded(Body body) noexcept
{
    try {
        return body();
    } catch (...) {
        return E_OUTOFMEMORY;
    }
}

/// "user" is the one word that DllInstall knows: for the current user alone, which needs no rights.
bool is_user(const wchar_t* words) { return words != nullptr && ::lstrcmpiW(words, L"user") == 0; }

}  // namespace

extern "C" {

BOOL WINAPI DllMain(HINSTANCE module, DWORD why, void* process_ends)
{
    if (why == DLL_PROCESS_ATTACH) {
        remember_module(module);
        ::DisableThreadLibraryCalls(module);
    }
    if (why == DLL_PROCESS_DETACH && process_ends == nullptr) {
        the_served_class().forget();
        give_back_run_time();
    }
    return TRUE;
}

HRESULT WINAPI DllGetClassObject(REFCLSID which, REFIID wanted, void** found)
{
    if (found == nullptr) return E_POINTER;
    *found = nullptr;
    if (which != the_served_class().id) return CLASS_E_CLASSNOTAVAILABLE;
    auto* const factory = new (std::nothrow) class_factory;
    if (factory == nullptr) return E_OUTOFMEMORY;
    const HRESULT result = factory->QueryInterface(wanted, found);
    factory->Release();
    return result;
}

HRESULT WINAPI DllCanUnloadNow()
{
    return guarded([] { return may_unload() && the_served_class().rest() ? S_OK : S_FALSE; });
}

HRESULT WINAPI DllRegisterServer()
{
    return guarded([] { return register_class(audience::machine); });
}

HRESULT WINAPI DllUnregisterServer()
{
    return guarded([] { return unregister_class(audience::machine); });
}

/// regsvr32 /n /i:user registers for the current user, with /u it takes that back; without the word, for the machine.
HRESULT WINAPI DllInstall(BOOL install, const wchar_t* words)
{
    return guarded([&] {
        const audience who = is_user(words) ? audience::user : audience::machine;
        return install != FALSE ? register_class(who) : unregister_class(who);
    });
}
}
