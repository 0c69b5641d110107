// The 18 methods of the COM object.
#include "base/utf16.h"
#include "com/module.h"
#include "com/object.h"

#include <exception>
#include <new>
#include <string>

#include <oleauto.h>

namespace tamrix::com {

namespace {

constexpr HRESULT method_failed = MAKE_HRESULT(SEVERITY_ERROR, FACILITY_ITF, 0x200);

/// Leaves the text where the host looks for the reason of a failed call.
HRESULT fail_with(const std::string& why)
{
    ICreateErrorInfo* fresh = nullptr;
    if (FAILED(::CreateErrorInfo(&fresh))) return method_failed;
    std::wstring text = utf16::from_utf8<wchar_t>(why), source = program_id;
    fresh->SetGUID(interface_id);
    fresh->SetSource(source.data());
    fresh->SetDescription(text.data());
    IErrorInfo* error = nullptr;
    if (SUCCEEDED(fresh->QueryInterface(IID_IErrorInfo, reinterpret_cast<void**>(&error)))) {
        ::SetErrorInfo(0, error);
        error->Release();
    }
    fresh->Release();
    return method_failed;
}

/// A text of the host, which keeps its copy unchanged.
std::string text_of(const BSTR* text)
{
    return *text == nullptr ? std::string{} : utf16::to_utf8(std::wstring_view{*text, ::SysStringLen(*text)});
}

template <class Body>
HRESULT call(Body body, VARIANT* result = nullptr)
{
    try {
        if (result != nullptr) ::VariantInit(result);
        const reply outcome = body(plug_in());
        if (!outcome.ok()) return fail_with(outcome.error);
        const auto* number = std::get_if<std::int16_t>(&outcome.value);
        if (result != nullptr && number != nullptr) {
            result->vt = VT_I2;
            result->iVal = *number;
        }
        return S_OK;
    } catch (const std::bad_alloc&) {
        return E_OUTOFMEMORY;
    } catch (...) {
        return E_UNEXPECTED;
    }
}

template <class... Pointers>
bool any_null(Pointers... pointers)
{
    return (... || (pointers == nullptr));
}

}  // namespace

HRESULT object::readfile0(BSTR* fname, short* rformat, BSTR* syspath0, VARIANT* result)
{
    if (any_null(fname, rformat, syspath0, result)) return E_POINTER;
    return call(
        [&](entry_methods& plug_in) {
            std::string file = text_of(fname), folder = text_of(syspath0);
            return plug_in.readfile0(file, *rformat, folder);
        },
        result);
}

HRESULT object::wfile(BSTR* fname, BSTR* syspath0, VARIANT* result)
{
    if (any_null(fname, syspath0, result)) return E_POINTER;
    return call(
        [&](entry_methods& plug_in) {
            std::string file = text_of(fname), folder = text_of(syspath0);
            return plug_in.wfile(file, folder);
        },
        result);
}

HRESULT object::algoparameter0()
{
    return call([](entry_methods& plug_in) { return plug_in.algoparameter0(); });
}

HRESULT object::analyzer0(VARIANT* result)
{
    if (result == nullptr) return E_POINTER;
    return call([](entry_methods& plug_in) { return plug_in.analyzer0(); }, result);
}

HRESULT object::recetwave0(VARIANT_BOOL* fwave, VARIANT* result)
{
    if (any_null(fwave, result)) return E_POINTER;
    return call([&](entry_methods& plug_in) { return plug_in.recetwave0(*fwave); }, result);
}

HRESULT object::mnutesttestksm()
{
    return call([](entry_methods& plug_in) { return plug_in.mnutesttestksm(); });
}

HRESULT object::mnutestttltest0(BYTE* icsum0, VARIANT_BOOL* ok0, BSTR* syspath0)
{
    if (any_null(icsum0, ok0, syspath0)) return E_POINTER;
    return call([&](entry_methods& plug_in) {
        std::string folder = text_of(syspath0);
        return plug_in.mnutestttltest0(*icsum0, *ok0, folder);
    });
}

HRESULT object::mnuEditeditvector0(BYTE* icsum0, VARIANT_BOOL* ok0, BSTR* syspath0)
{
    if (any_null(icsum0, ok0, syspath0)) return E_POINTER;
    return call([&](entry_methods& plug_in) {
        std::string folder = text_of(syspath0);
        return plug_in.mnuEditeditvector0(*icsum0, *ok0, folder);
    });
}

HRESULT object::mnutesteditttllib0(BYTE* icsum0, VARIANT_BOOL* ok0, BSTR* syspath0)
{
    if (any_null(icsum0, ok0, syspath0)) return E_POINTER;
    return call([&](entry_methods& plug_in) {
        std::string folder = text_of(syspath0);
        return plug_in.mnutesteditttllib0(*icsum0, *ok0, folder);
    });
}

HRESULT object::mnutestautofind0(BSTR* syspath0)
{
    if (syspath0 == nullptr) return E_POINTER;
    return call([&](entry_methods& plug_in) {
        std::string folder = text_of(syspath0);
        return plug_in.mnutestautofind0(folder);
    });
}

HRESULT object::warn(BYTE* no, VARIANT_BOOL* extpower0)
{
    if (any_null(no, extpower0)) return E_POINTER;
    return call([&](entry_methods& plug_in) { return plug_in.warn(*no, *extpower0); });
}

HRESULT object::vecttest0(BYTE* mode, BYTE* ttlcnt0, BYTE* wnote0, VARIANT_BOOL* ok0)
{
    if (any_null(mode, ttlcnt0, wnote0, ok0)) return E_POINTER;
    return call([&](entry_methods& plug_in) { return plug_in.vecttest0(*mode, *ttlcnt0, *wnote0, *ok0); });
}

HRESULT object::readpldfile(BSTR* fname, VARIANT* result)
{
    if (any_null(fname, result)) return E_POINTER;
    return call(
        [&](entry_methods& plug_in) {
            std::string file = text_of(fname);
            return plug_in.readpldfile(file);
        },
        result);
}

HRESULT object::writepldfile(BSTR* fname, VARIANT* result)
{
    if (any_null(fname, result)) return E_POINTER;
    return call(
        [&](entry_methods& plug_in) {
            std::string file = text_of(fname);
            return plug_in.writepldfile(file);
        },
        result);
}

HRESULT object::readsvffile(BSTR* fname, BSTR* syspath0, VARIANT* result)
{
    if (any_null(fname, syspath0, result)) return E_POINTER;
    return call(
        [&](entry_methods& plug_in) {
            std::string file = text_of(fname), folder = text_of(syspath0);
            return plug_in.readsvffile(file, folder);
        },
        result);
}

HRESULT object::bufcomopt(short* num)
{
    if (num == nullptr) return E_POINTER;
    return call([&](entry_methods& plug_in) { return plug_in.bufcomopt(*num); });
}

HRESULT object::buffercomopt(short* num)
{
    if (num == nullptr) return E_POINTER;
    return call([&](entry_methods& plug_in) { return plug_in.buffercomopt(*num); });
}

HRESULT object::freesharebufferopt()
{
    return call([](entry_methods& plug_in) { return plug_in.freesharebufferopt(); });
}

}  // namespace tamrix::com
