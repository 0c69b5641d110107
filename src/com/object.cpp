#include "com/object.h"

#include "com/arguments.h"
#include "com/type_info.h"

#include <new>

#include <oleauto.h>

namespace tamrix::com {

object::~object()
{
    if (type_info_ != nullptr) type_info_->Release();
}

HRESULT object::QueryInterface(REFIID wanted, void** found)
{
    if (found == nullptr) return E_POINTER;
    *found = nullptr;
    if (wanted == IID_IUnknown || wanted == IID_IDispatch || wanted == interface_id) {
        *found = static_cast<_Clstamrix*>(this);
    } else if (wanted == IID_ISupportErrorInfo) {
        *found = static_cast<ISupportErrorInfo*>(this);
    } else {
        return E_NOINTERFACE;
    }
    AddRef();
    return S_OK;
}

ULONG object::AddRef() { return ++references_; }

ULONG object::Release()
{
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
}

HRESULT object::InterfaceSupportsErrorInfo(REFIID which)
{
    return which == interface_id || which == IID_IDispatch ? S_OK : S_FALSE;
}

ITypeInfo* object::type_info()
{
    if (type_info_ == nullptr) load_type_info(&type_info_);
    return type_info_;
}

HRESULT object::GetTypeInfoCount(UINT* count)
{
    if (count == nullptr) return E_POINTER;
    *count = 1;
    return S_OK;
}

HRESULT object::GetTypeInfo(UINT index, LCID, ITypeInfo** info)
{
    if (info == nullptr) return E_POINTER;
    *info = nullptr;
    if (index != 0) return DISP_E_BADINDEX;
    if (type_info() == nullptr) return TYPE_E_CANTLOADLIBRARY;
    *info = type_info();
    (*info)->AddRef();
    return S_OK;
}

HRESULT object::GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID, DISPID* ids)
{
    if (reserved != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
    if (names == nullptr || ids == nullptr) return E_POINTER;
    for (UINT i = 0; i < count; ++i) {
        if (names[i] == nullptr) return E_POINTER;
    }
    if (type_info() == nullptr) return TYPE_E_CANTLOADLIBRARY;
    return type_info()->GetIDsOfNames(names, count, ids);
}

HRESULT object::Invoke(DISPID id, REFIID reserved, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                       EXCEPINFO* exception, UINT* bad_argument)
{
    if (reserved != IID_NULL) return DISP_E_UNKNOWNINTERFACE;
    if (parameters == nullptr) return E_POINTER;
    if (type_info() == nullptr) return TYPE_E_CANTLOADLIBRARY;
    ::SetErrorInfo(0, nullptr);  // what is found after the call is the call's own
    try {
        arguments taken;
        if (const HRESULT failed = taken.take(type_info(), id, *parameters, bad_argument); FAILED(failed))
            return failed;
        const HRESULT outcome = type_info()->Invoke(static_cast<_Clstamrix*>(this), id, flags, taken.parameters(),
                                                    result, exception, bad_argument);
        if (SUCCEEDED(outcome)) taken.give_back(*parameters);
        return outcome;
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    }
}

}  // namespace tamrix::com
