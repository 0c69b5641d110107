// How a DLL describes its one class to the exported functions, the class factory and the registration.
#pragma once

#include <string>
#include <vector>

#include <windows.h>

namespace tamrix::com {

/// A value of the registry below Software\Classes. An empty name is the key's default value.
struct registry_entry {
    std::wstring key, name, value;
};

struct served_class {
    GUID id;
    /// Makes an object with one reference, for the caller. May throw std::exception.
    HRESULT (*make)(REFIID wanted, void** made);
    /// What is written when the class is registered.
    std::vector<registry_entry> (*entries)();
    /// The keys that belong to the class, from the top down: removed with all that is below.
    std::vector<std::wstring> (*own_keys)();
    /// Called when the DLL is no longer in use: releases what cannot be released while it is being unloaded. False: not
    /// now.
    bool (*rest)() = [] { return true; };
    /// The DLL is being unloaded while the process lives on.
    void (*forget)() = [] {};
};

/// Defined by each DLL.
const served_class& the_served_class();

/// A `make` for a class of objects that begin with one reference.
template <class Object>
HRESULT make_object(REFIID wanted, void** made)
{
    auto* const fresh = new Object;
    const HRESULT result = fresh->QueryInterface(wanted, made);
    fresh->Release();
    return result;
}

/// "{01234567-...}".
std::wstring text_of(const GUID& id);

}  // namespace tamrix::com
