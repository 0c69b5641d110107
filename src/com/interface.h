// The class's default interface for binary callers: its slots have the order of tamrix.idl.
#pragma once

#include <windows.h>

#include <oaidl.h>

namespace tamrix::com {

inline constexpr GUID library_id{0x434d7521, 0x5186, 0x4a00, {0xb1, 0x07, 0x72, 0x6c, 0xf8, 0x7c, 0x30, 0xc6}};
inline constexpr GUID class_id{0x0adda2f4, 0x4e2b, 0x4280, {0x90, 0xf8, 0x8b, 0xb9, 0x0f, 0x3d, 0xa3, 0x68}};
inline constexpr GUID interface_id{0x1dd33c8d, 0xa6bd, 0x4fc4, {0xbc, 0xe4, 0xea, 0x6a, 0x65, 0xcc, 0xad, 0x94}};

inline constexpr const wchar_t* program_id = L"tamrix.Clstamrix";

struct _Clstamrix : IDispatch {
    virtual HRESULT STDMETHODCALLTYPE readfile0(BSTR* fname, short* rformat, BSTR* syspath0, VARIANT* result) = 0;
    virtual HRESULT STDMETHODCALLTYPE wfile(BSTR* fname, BSTR* syspath0, VARIANT* result) = 0;
    virtual HRESULT STDMETHODCALLTYPE algoparameter0() = 0;
    virtual HRESULT STDMETHODCALLTYPE analyzer0(VARIANT* result) = 0;
    virtual HRESULT STDMETHODCALLTYPE recetwave0(VARIANT_BOOL* fwave, VARIANT* result) = 0;
    virtual HRESULT STDMETHODCALLTYPE mnutesttestksm() = 0;
    virtual HRESULT STDMETHODCALLTYPE mnutestttltest0(BYTE* icsum0, VARIANT_BOOL* ok0, BSTR* syspath0) = 0;
    virtual HRESULT STDMETHODCALLTYPE mnuEditeditvector0(BYTE* icsum0, VARIANT_BOOL* ok0, BSTR* syspath0) = 0;
    virtual HRESULT STDMETHODCALLTYPE mnutesteditttllib0(BYTE* icsum0, VARIANT_BOOL* ok0, BSTR* syspath0) = 0;
    virtual HRESULT STDMETHODCALLTYPE mnutestautofind0(BSTR* syspath0) = 0;
    virtual HRESULT STDMETHODCALLTYPE warn(BYTE* no, VARIANT_BOOL* extpower0) = 0;
    virtual HRESULT STDMETHODCALLTYPE vecttest0(BYTE* mode, BYTE* ttlcnt0, BYTE* wnote0, VARIANT_BOOL* ok0) = 0;
    virtual HRESULT STDMETHODCALLTYPE readpldfile(BSTR* fname, VARIANT* result) = 0;
    virtual HRESULT STDMETHODCALLTYPE writepldfile(BSTR* fname, VARIANT* result) = 0;
    virtual HRESULT STDMETHODCALLTYPE readsvffile(BSTR* fname, BSTR* syspath0, VARIANT* result) = 0;
    virtual HRESULT STDMETHODCALLTYPE bufcomopt(short* num) = 0;
    virtual HRESULT STDMETHODCALLTYPE buffercomopt(short* num) = 0;
    virtual HRESULT STDMETHODCALLTYPE freesharebufferopt() = 0;
};

}  // namespace tamrix::com
