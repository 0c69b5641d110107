#include "programmer/device_object_win32.h"

#include "base/system_message_win32.h"
#include "base/utf16.h"
#include "programmer/programmer.h"

#include <utility>

#include <objbase.h>
#include <oleauto.h>

namespace tamrix::hw {

namespace {

/// Those that a host's developer meets first have words of ours: not every system has its own for them.
std::string message_of(HRESULT failed)
{
    switch (failed) {
    case CO_E_CLASSSTRING:
    case REGDB_E_CLASSNOTREG: return "no such class is registered";
    case CO_E_NOTINITIALIZED: return "COM is not initialised on this thread";
    case DISP_E_UNKNOWNNAME:
    case DISP_E_MEMBERNOTFOUND: return "the object has no such operation";
    default: return system_message(static_cast<unsigned long>(failed));
    }
}

std::string utf8(const BSTR text)
{
    return text == nullptr ? std::string{} : utf16::to_utf8(std::wstring_view{text, ::SysStringLen(text)});
}

/// What a call leaves in memory, freed at the end.
struct outcome {
    VARIANT value;
    EXCEPINFO exception{};

    outcome() { ::VariantInit(&value); }
    ~outcome()
    {
        ::VariantClear(&value);
        for (const BSTR text : {exception.bstrSource, exception.bstrDescription, exception.bstrHelpFile})
            ::SysFreeString(text);
    }
    outcome(const outcome&) = delete;
    outcome& operator=(const outcome&) = delete;

    std::string why(HRESULT failed)
    {
        if (failed != DISP_E_EXCEPTION) return message_of(failed);
        if (exception.pfnDeferredFillIn != nullptr) exception.pfnDeferredFillIn(&exception);
        const std::string told = utf8(exception.bstrDescription);
        return !told.empty() ? told : message_of(exception.scode != 0 ? exception.scode : failed);
    }
};

IDispatch* make(const std::string& class_name, HRESULT& failed)
{
    const std::wstring name = utf16::from_utf8<wchar_t>(class_name);
    CLSID id{};
    failed = name.starts_with(L'{') ? ::CLSIDFromString(name.c_str(), &id) : ::CLSIDFromProgID(name.c_str(), &id);
    void* made = nullptr;
    if (SUCCEEDED(failed)) failed = ::CoCreateInstance(id, nullptr, CLSCTX_SERVER, IID_IDispatch, &made);
    return static_cast<IDispatch*>(made);
}

}  // namespace

device_object::device_object(std::string class_name) : class_name_{std::move(class_name)}
{
    HRESULT failed = S_OK;
    object_ = make(class_name_, failed);
    if (object_ == nullptr) throw programmer_error{"device object " + class_name_ + ": " + message_of(failed)};
}

void device_object::fail(const wchar_t* operation, const std::string& why) const
{
    throw programmer_error{"device object " + class_name_ + ": " + utf16::to_utf8(std::wstring_view{operation}) + ": " +
                           why};
}

VARIANTARG device_object::reference(VARTYPE type, void* number)
{
    VARIANTARG made{};
    made.vt = static_cast<VARTYPE>(VT_BYREF | type);
    made.byref = number;
    return made;
}

DISPID device_object::id_of(const wchar_t* name)
{
    if (const auto known = ids_.find(name); known != ids_.end()) return known->second;
    std::wstring text = name;
    wchar_t* names[] = {text.data()};
    DISPID id = DISPID_UNKNOWN;
    const HRESULT failed = object_->GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &id);
    if (FAILED(failed)) fail(name, message_of(failed));
    ids_.emplace(name, id);
    return id;
}

std::int32_t device_object::invoke(const wchar_t* name, result wanted, VARIANTARG* arguments, UINT count)
{
    DISPPARAMS parameters{arguments, nullptr, count, 0};
    outcome seen;
    HRESULT failed = object_->Invoke(id_of(name), IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_METHOD, &parameters,
                                     &seen.value, &seen.exception, nullptr);
    if (FAILED(failed)) fail(name, seen.why(failed));
    if (wanted == result::ignored) return 0;
    failed = ::VariantChangeType(&seen.value, &seen.value, 0, VT_I4);
    if (FAILED(failed)) fail(name, "its result is no number: " + message_of(failed));
    return seen.value.lVal;
}

}  // namespace tamrix::hw
