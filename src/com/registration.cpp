#include "com/registration.h"

#include "com/interface.h"
#include "com/type_info.h"

#include <string>
#include <vector>

#include <objbase.h>

namespace tamrix::com {

namespace {

struct entry {
    std::wstring key, name, value;  // an empty name is the key's default value
};

std::wstring text_of(const GUID& id)
{
    wchar_t text[39];
    ::StringFromGUID2(id, text, 39);
    return text;
}

/// The keys that belong to us from the top down.
std::vector<std::wstring> own_keys()
{
    return {program_id, L"CLSID\\" + text_of(class_id), L"Interface\\" + text_of(interface_id),
            L"TypeLib\\" + text_of(library_id)};
}

std::vector<entry> entries()
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

HKEY root_of(audience who) { return who == audience::machine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER; }

std::wstring full(const std::wstring& key) { return L"Software\\Classes\\" + key; }

LSTATUS write(HKEY root, const entry& one)
{
    HKEY key = nullptr;
    LSTATUS failed = ::RegCreateKeyExW(root, full(one.key).c_str(), 0, nullptr, REG_OPTION_NON_VOLATILE, KEY_WRITE,
                                       nullptr, &key, nullptr);
    if (failed != ERROR_SUCCESS) return failed;
    const auto bytes = static_cast<DWORD>((one.value.size() + 1) * sizeof(wchar_t));
    failed = ::RegSetValueExW(key, one.name.empty() ? nullptr : one.name.c_str(), 0, REG_SZ,
                              reinterpret_cast<const BYTE*>(one.value.c_str()), bytes);
    ::RegCloseKey(key);
    return failed;
}

/// Removes a key that holds neither keys nor values.
void remove_if_empty(HKEY root, const std::wstring& path)
{
    HKEY key = nullptr;
    if (::RegOpenKeyExW(root, path.c_str(), 0, KEY_READ, &key) != ERROR_SUCCESS) return;
    DWORD keys = 1, values = 1;
    ::RegQueryInfoKeyW(key, nullptr, nullptr, nullptr, &keys, nullptr, nullptr, &values, nullptr, nullptr, nullptr,
                       nullptr);
    ::RegCloseKey(key);
    if (keys == 0 && values == 0) ::RegDeleteKeyW(root, path.c_str());
}

}  // namespace

HRESULT register_class(audience who)
{
    for (const entry& one : entries()) {
        if (const LSTATUS failed = write(root_of(who), one); failed != ERROR_SUCCESS) {
            unregister_class(who);
            return HRESULT_FROM_WIN32(static_cast<DWORD>(failed));
        }
    }
    return S_OK;
}

HRESULT unregister_class(audience who)
{
    HRESULT result = S_OK;
    for (const std::wstring& key : own_keys()) {
        const LSTATUS failed = ::RegDeleteTreeW(root_of(who), full(key).c_str());
        if (failed != ERROR_SUCCESS && failed != ERROR_FILE_NOT_FOUND)
            result = HRESULT_FROM_WIN32(static_cast<DWORD>(failed));
    }
    // A user's profile has these keys only where a class was registered; the machine has them always.
    if (who == audience::user) {
        for (const wchar_t* key : {L"CLSID", L"Interface", L"TypeLib"}) remove_if_empty(root_of(who), full(key));
    }
    return result;
}

}  // namespace tamrix::com
