// The one class of tamrix.dll: how it is made, and what the registry has to know of it, its interface and its type
// library.
#include "com/interface.h"
#include "com/module.h"
#include "com/object.h"
#include "com/server/served_class.h"
#include "com/server/stay.h"

#include <string>
#include <vector>

namespace tamrix::com {

namespace {

HRESULT make(REFIID wanted, void** made)
{
    plug_in();  // reports here, not at the first call, that the plug-in cannot be created
    return make_object<object>(wanted, made);
}

/// The keys that belong to us from the top down.
std::vector<std::wstring> own_keys()
{
    return {program_id, L"CLSID\\" + text_of(class_id), L"Interface\\" + text_of(interface_id),
            L"TypeLib\\" + text_of(library_id)};
}

std::vector<registry_entry> entries()
{
    const std::wstring path = module_path(), folder = path.substr(0, path.find_last_of(L"\\/"));
    const std::wstring of_class = L"CLSID\\" + text_of(class_id), of_interface = L"Interface\\" + text_of(interface_id),
                       of_library = L"TypeLib\\" + text_of(library_id) + L"\\1.0", name = program_id;
    return {{name, L"", name},
            {name + L"\\Clsid", L"", text_of(class_id)},
            {of_class, L"", name},
            {of_class + L"\\InprocServer32", L"", path},
            {of_class + L"\\InprocServer32", L"ThreadingModel", L"Apartment"},
            {of_class + L"\\ProgID", L"", name},
            {of_class + L"\\Programmable", L"", L""},
            {of_class + L"\\TypeLib", L"", text_of(library_id)},
            {of_class + L"\\VERSION", L"", L"1.0"},
            {of_interface, L"", L"_Clstamrix"},
            {of_interface + L"\\ProxyStubClsid32", L"", L"{00020424-0000-0000-C000-000000000046}"},
            {of_interface + L"\\TypeLib", L"", text_of(library_id)},
            {of_interface + L"\\TypeLib", L"Version", L"1.0"},
            {of_library, L"", L"tamrix option library"},
            {of_library + L"\\0\\win32", L"", path},
            {of_library + L"\\FLAGS", L"", L"0"},
            {of_library + L"\\HELPDIR", L"", folder}};
}

}  // namespace

const served_class& the_served_class()
{
    static const served_class the_class{class_id, make, entries, own_keys, rest_plug_in, forget_plug_in};
    return the_class;
}

}  // namespace tamrix::com
