// The COM object around the plug-in: turns the host's values into ours, and replies into results and error objects.
#pragma once

#include "com/interface.h"
#include "com/server/stay.h"

#include <atomic>

namespace tamrix::com {

class object final : public _Clstamrix, public ISupportErrorInfo {
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

    HRESULT STDMETHODCALLTYPE InterfaceSupportsErrorInfo(REFIID which) override;

    HRESULT STDMETHODCALLTYPE readfile0(BSTR* fname, short* rformat, BSTR* syspath0, VARIANT* result) override;
    HRESULT STDMETHODCALLTYPE wfile(BSTR* fname, BSTR* syspath0, VARIANT* result) override;
    HRESULT STDMETHODCALLTYPE algoparameter0() override;
    HRESULT STDMETHODCALLTYPE analyzer0(VARIANT* result) override;
    HRESULT STDMETHODCALLTYPE recetwave0(VARIANT_BOOL* fwave, VARIANT* result) override;
    HRESULT STDMETHODCALLTYPE mnutesttestksm() override;
    HRESULT STDMETHODCALLTYPE mnutestttltest0(BYTE* icsum0, VARIANT_BOOL* ok0, BSTR* syspath0) override;
    HRESULT STDMETHODCALLTYPE mnuEditeditvector0(BYTE* icsum0, VARIANT_BOOL* ok0, BSTR* syspath0) override;
    HRESULT STDMETHODCALLTYPE mnutesteditttllib0(BYTE* icsum0, VARIANT_BOOL* ok0, BSTR* syspath0) override;
    HRESULT STDMETHODCALLTYPE mnutestautofind0(BSTR* syspath0) override;
    HRESULT STDMETHODCALLTYPE warn(BYTE* no, VARIANT_BOOL* extpower0) override;
    HRESULT STDMETHODCALLTYPE vecttest0(BYTE* mode, BYTE* ttlcnt0, BYTE* wnote0, VARIANT_BOOL* ok0) override;
    HRESULT STDMETHODCALLTYPE readpldfile(BSTR* fname, VARIANT* result) override;
    HRESULT STDMETHODCALLTYPE writepldfile(BSTR* fname, VARIANT* result) override;
    HRESULT STDMETHODCALLTYPE readsvffile(BSTR* fname, BSTR* syspath0, VARIANT* result) override;
    HRESULT STDMETHODCALLTYPE bufcomopt(short* num) override;
    HRESULT STDMETHODCALLTYPE buffercomopt(short* num) override;
    HRESULT STDMETHODCALLTYPE freesharebufferopt() override;

private:
    ~object();  // by the last Release only
    ITypeInfo* type_info();

    stay counted_;
    std::atomic<ULONG> references_ = 1;
    ITypeInfo* type_info_ = nullptr;
};

}  // namespace tamrix::com
