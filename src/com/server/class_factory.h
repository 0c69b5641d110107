// Creates the objects of the one class that a DLL serves.
#pragma once

#include "com/server/stay.h"

#include <atomic>

#include <windows.h>

#include <unknwn.h>

namespace tamrix::com {

class class_factory final : public IClassFactory {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void** found) override;
    ULONG STDMETHODCALLTYPE AddRef() override;
    ULONG STDMETHODCALLTYPE Release() override;
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown* outer, REFIID wanted, void** made) override;
    HRESULT STDMETHODCALLTYPE LockServer(BOOL lock) override;

private:
    ~class_factory() = default;  // by the last Release only

    stay counted_;
    std::atomic<ULONG> references_ = 1;
};

}  // namespace tamrix::com
