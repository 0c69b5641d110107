#include "com/server/class_factory.h"

#include "com/server/served_class.h"

#include <exception>

namespace tamrix::com {

HRESULT class_factory::QueryInterface(REFIID wanted, void** found)
{
    if (found == nullptr) return E_POINTER;
    *found = nullptr;
    if (wanted != IID_IUnknown && wanted != IID_IClassFactory) return E_NOINTERFACE;
    *found = static_cast<IClassFactory*>(this);
    AddRef();
    return S_OK;
}

ULONG class_factory::AddRef() { return ++references_; }

ULONG class_factory::Release()
{
    const ULONG left = --references_;
    if (left == 0) delete this;
    return left;
}

HRESULT class_factory::CreateInstance(IUnknown* outer, REFIID wanted, void** made)
{
    if (made == nullptr) return E_POINTER;
    *made = nullptr;
    if (outer != nullptr) return CLASS_E_NOAGGREGATION;
    try {
        return the_served_class().make(wanted, made);
    } catch (const std::exception&) {
        return E_OUTOFMEMORY;
    }
}

HRESULT class_factory::LockServer(BOOL lock)
{
    if (lock != FALSE) {
        lock_library();
    } else {
        unlock_library();
    }
    return S_OK;
}

}  // namespace tamrix::com
