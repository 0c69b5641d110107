#include "com/server/registration.h"

#include "com/server/served_class.h"

#include <string>

#include <objbase.h>

namespace tamrix::com {

namespace {

HKEY root_of(audience who) { return who == audience::machine ? HKEY_LOCAL_MACHINE : HKEY_CURRENT_USER; }

std::wstring full(const std::wstring& key) { return L"Software\\Classes\\" + key; }

LSTATUS write(HKEY root, const registry_entry& one)
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

std::wstring text_of(const GUID& id)
{
    wchar_t text[39];
    ::StringFromGUID2(id, text, 39);
    return text;
}

HRESULT register_class(audience who)
{
    for (const registry_entry& one : the_served_class().entries()) {
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
    for (const std::wstring& key : the_served_class().own_keys()) {
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
