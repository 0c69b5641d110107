// An automation object for tests, known to this process under a class identifier. It writes down what arrives and
// answers as the test says.
#pragma once

#include <functional>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include <windows.h>

#include <oaidl.h>
#include <objbase.h>
#include <oleauto.h>

namespace tamrix::tests {

/// One object on the stack that is its own class factory; references do not count.
class fake_device final : public IDispatch, public IClassFactory {
public:
    static constexpr const char* class_name = "{5c5e4d0c-53a8-4c0e-9f4e-2a4f3f6a1b77}";

    fake_device()
    {
        CLSID id{};
        ::CLSIDFromString(L"{5c5e4d0c-53a8-4c0e-9f4e-2a4f3f6a1b77}", &id);
        const HRESULT failed = ::CoRegisterClassObject(id, static_cast<IClassFactory*>(this), CLSCTX_INPROC_SERVER,
                                                       REGCLS_MULTIPLEUSE, &cookie_);
        if (FAILED(failed)) throw std::runtime_error{"the class cannot be served"};
    }
    ~fake_device() { ::CoRevokeClassObject(cookie_); }
    fake_device(const fake_device&) = delete;
    fake_device& operator=(const fake_device&) = delete;

    std::vector<std::string> asked;                    // names whose identifiers were asked for
    std::vector<std::vector<VARIANTARG>> calls;        // arguments in their order
    std::vector<long> numbers;                         // after them, in their order
    std::function<HRESULT(VARIANT&, EXCEPINFO&)> act;  // none: succeeds without a result

    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void** found) override
    {
        *found = wanted == IID_IClassFactory ? static_cast<void*>(static_cast<IClassFactory*>(this))
                                             : static_cast<void*>(static_cast<IDispatch*>(this));
        const bool known = wanted == IID_IClassFactory || wanted == IID_IUnknown || wanted == IID_IDispatch;
        if (!known) *found = nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }

    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID wanted, void** made) override
    {
        return QueryInterface(wanted, made);
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }

    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* ids) override
    {
        const std::wstring name = names[0];
        asked.emplace_back(name.begin(), name.end());
        if (name == L"hwfault") return DISP_E_UNKNOWNNAME;  // the one that this object has not
        ids[0] = static_cast<DISPID>(asked.size());
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID, REFIID, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                                     EXCEPINFO* exception, UINT*) override
    {
        if (flags != DISPATCH_METHOD) return DISP_E_MEMBERNOTFOUND;
        calls.emplace_back();
        for (UINT left = parameters->cArgs; left > 0; --left) {
            const VARIANTARG& one = parameters->rgvarg[left - 1];
            calls.back().push_back(one);
            numbers.push_back(one.vt == (VT_BYREF | VT_I4) ? *one.plVal : *one.pbVal);
        }
        return act ? act(*result, *exception) : S_OK;
    }

private:
    DWORD cookie_ = 0;
};

}  // namespace tamrix::tests
