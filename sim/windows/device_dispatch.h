// The device object for COM: an automation object over the programmer of serve().
#pragma once

#include "com/server/stay.h"

#include <atomic>

#include <windows.h>

#include <oaidl.h>

namespace tamrix::sim {

class device_dispatch final : public IDispatch {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void** found) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override;
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT index, LCID locale, ITypeInfo** info) override;
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID reserved, LPOLESTR* names, UINT count, LCID locale,
                                            DISPID* ids) override;
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID reserved, LCID locale, WORD flags, DISPPARAMS* parameters,
                                     VARIANT* result, EXCEPINFO* exception, UINT* bad_argument) override;

private:
    ~device_dispatch() = default;  // by the last Release only

    com::stay counted_;
    std::atomic<ULONG> references_ = 1;
};

}  // namespace tamrix::sim
