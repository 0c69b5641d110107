#include "server.h"

#include <algorithm>
#include <stdexcept>

namespace tamrix::tests {

void let_com_unload()
{
    ::CoFreeUnusedLibrariesEx(0, 0);  // notes what is not in use
    ::Sleep(20);
    ::CoFreeUnusedLibrariesEx(0, 0);  // unloads it
}

server::server() : module_{::LoadLibraryA("tamrix.dll")}
{
    if (module_ == nullptr) throw std::runtime_error{"tamrix.dll cannot be loaded"};
}

server::~server() { ::FreeLibrary(module_); }

FARPROC server::function(const char* name) const
{
    const FARPROC found = ::GetProcAddress(module_, name);
    if (found == nullptr) throw std::runtime_error{std::string{"tamrix.dll does not export "} + name};
    return found;
}

HRESULT server::plain(const char* name) const
{
    return reinterpret_cast<HRESULT(WINAPI*)()>(reinterpret_cast<void*>(function(name)))();
}

HRESULT server::install(bool on, const wchar_t* words) const
{
    using type = HRESULT(WINAPI*)(BOOL, const wchar_t*);
    return reinterpret_cast<type>(reinterpret_cast<void*>(function("DllInstall")))(on ? TRUE : FALSE, words);
}

HRESULT server::get_class_object(const GUID& which, const GUID& wanted, void** found) const
{
    using type = HRESULT(WINAPI*)(REFCLSID, REFIID, void**);
    return reinterpret_cast<type>(reinterpret_cast<void*>(function("DllGetClassObject")))(which, wanted, found);
}

VARIANT plain_variant(VARTYPE type)
{
    VARIANT made;
    ::VariantInit(&made);
    made.vt = type;
    return made;
}

VARIANT reference_to(BSTR& text)
{
    VARIANT made = plain_variant(VT_BYREF | VT_BSTR);
    made.pbstrVal = &text;
    return made;
}

VARIANT reference_to(short& number)
{
    VARIANT made = plain_variant(VT_BYREF | VT_I2);
    made.piVal = &number;
    return made;
}

VARIANT reference_to(VARIANT& variable)
{
    VARIANT made = plain_variant(VT_BYREF | VT_VARIANT);
    made.pvarVal = &variable;
    return made;
}

client::client(const server& from)
{
    IClassFactory* factory = nullptr;
    if (FAILED(from.get_class_object(class_id, IID_IClassFactory, reinterpret_cast<void**>(&factory))))
        throw std::runtime_error{"no class factory"};
    const HRESULT made = factory->CreateInstance(nullptr, IID_IDispatch, reinterpret_cast<void**>(&object_));
    factory->Release();
    if (FAILED(made)) throw std::runtime_error{"no object"};
}

DISPID client::id_of(const wchar_t* name) const
{
    DISPID id = DISPID_UNKNOWN;
    std::wstring text = name;
    wchar_t* names[] = {text.data()};
    object_->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id);
    return id;
}

outcome client::call(const wchar_t* name, std::vector<VARIANT> arguments) const
{
    std::ranges::reverse(arguments);  // as the interface wants them
    DISPPARAMS parameters{arguments.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
    value result;
    EXCEPINFO exception{};
    outcome seen;
    seen.result = object_->Invoke(id_of(name), IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters, &result,
                                  &exception, nullptr);
    seen.type = result.vt;
    if (result.vt == VT_I2) seen.number = result.iVal;
    const auto take = [](BSTR text) {
        std::wstring taken(text == nullptr ? L"" : text, ::SysStringLen(text));
        ::SysFreeString(text);
        return taken;
    };
    seen.error = take(exception.bstrDescription);
    seen.source = take(exception.bstrSource);
    take(exception.bstrHelpFile);
    return seen;
}

}  // namespace tamrix::tests
