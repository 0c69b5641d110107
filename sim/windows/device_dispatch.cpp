#include "sim/windows/device_dispatch.h"

#include "base/utf16.h"
#include "sim/windows/operations.h"
#include "sim/windows/served.h"

#include <exception>
#include <string>
#include <vector>

#include <oleauto.h>

namespace tamrix::sim {

namespace {

/// The caller frees the texts.
void tell(const std::exception& error, EXCEPINFO* into)
{
    if (into == nullptr) return;
    *into = {};
    into->scode = E_FAIL;
    into->bstrSource = ::SysAllocString(L"lumbat");
    into->bstrDescription = ::SysAllocString(utf16::from_utf8<wchar_t>(error.what()).c_str());
}

HRESULT carry_out(const operation& which, const DISPPARAMS& given, VARIANT& result)
{
    std::vector<const VARIANTARG*> arguments;  // from the last to the first
    for (UINT left = given.cArgs; left > 0; --left) arguments.push_back(&given.rgvarg[left - 1]);
    HRESULT outcome = E_FAIL;
    serve([&](hw::lumbat&, hw::devobj& device) { outcome = which.carry_out(device, arguments, result); });
    return outcome;
}

}  // namespace

HRESULT device_dispatch::QueryInterface(REFIID wanted, void** found)
{
    if (found == nullptr) return E_POINTER;
    *found = nullptr;
    if (wanted != IID_IUnknown && wanted != IID_IDispatch) return E_NOINTERFACE;
    *found = static_cast<IDispatch*>(this);
    AddRef();
    return S_OK;
}

ULONG device_dispatch::AddRef() { return ++references_; }

ULONG device_dispatch::Release()
{
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
}

HRESULT device_dispatch::GetTypeInfoCount(UINT* count)
{
    if (count == nullptr) return E_POINTER;
    *count = 0;
    return S_OK;
}

HRESULT device_dispatch::GetTypeInfo(UINT, LCID, ITypeInfo** info)
{
    if (info == nullptr) return E_POINTER;
    *info = nullptr;
    return DISP_E_BADINDEX;
}

HRESULT device_dispatch::GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID, DISPID* ids)
{
    if (reserved != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
    if (names == nullptr || ids == nullptr) return E_POINTER;
    for (UINT i = 0; i < count; ++i) ids[i] = DISPID_UNKNOWN;  // parameters have no names
    DISPID id = 0;
    for (const operation& one : operations()) {
        ++id;
        if (count == 0 || ::lstrcmpiW(one.name, names[0]) != 0) continue;
        ids[0] = id;
        return count == 1 ? S_OK : DISP_E_UNKNOWNNAME;
    }
    return DISP_E_UNKNOWNNAME;
}

HRESULT device_dispatch::Invoke(DISPID id, REFIID reserved, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                                EXCEPINFO* exception, UINT*)
{
    if (reserved != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
    if (parameters == nullptr) return E_POINTER;
    const auto all = operations();
    const bool known = id >= 1 && static_cast<std::size_t>(id) <= all.size();
    if (!known || (flags & DISPATCH_METHOD) == 0) return DISP_E_MEMBERNOTFOUND;
    const operation& which = all[static_cast<std::size_t>(id) - 1];
    if (parameters->cNamedArgs != 0) return DISP_E_NONAMEDARGS;
    if (parameters->cArgs != which.arguments) return DISP_E_BADPARAMCOUNT;
    try {
        VARIANT answer;
        ::VariantInit(&answer);
        const HRESULT outcome = carry_out(which, *parameters, answer);
        if (result != nullptr) *result = answer;  // a number, which nobody has to free
        return outcome;
    } catch (const std::exception& error) {
        tell(error, exception);
        return DISP_E_EXCEPTION;
    }
}

}  // namespace tamrix::sim
