// tamrix.dll as a COM client meets it.
#pragma once

#include <string>
#include <vector>

#include <windows.h>

#include <oleauto.h>

namespace tamrix::tests {

inline constexpr GUID library_id{0x434d7521, 0x5186, 0x4a00, {0xb1, 0x07, 0x72, 0x6c, 0xf8, 0x7c, 0x30, 0xc6}};
inline constexpr GUID class_id{0x0adda2f4, 0x4e2b, 0x4280, {0x90, 0xf8, 0x8b, 0xb9, 0x0f, 0x3d, 0xa3, 0x68}};
inline constexpr GUID interface_id{0x1dd33c8d, 0xa6bd, 0x4fc4, {0xbc, 0xe4, 0xea, 0x6a, 0x65, 0xcc, 0xad, 0x94}};

/// Lets COM unload what it loaded for an earlier test and needs no more.
void let_com_unload();

/// The DLL in the current folder, loaded, with what it exports.
class server {
public:
    server();
    ~server();
    server(const server&) = delete;
    server& operator=(const server&) = delete;

    HRESULT get_class_object(const GUID& which, const GUID& wanted, void** found) const;
    HRESULT can_unload_now() const { return plain("DllCanUnloadNow"); }
    HRESULT register_server() const { return plain("DllRegisterServer"); }
    HRESULT unregister_server() const { return plain("DllUnregisterServer"); }
    HRESULT install(bool on, const wchar_t* words) const;

private:
    HRESULT plain(const char* name) const;
    FARPROC function(const char* name) const;

    HMODULE module_;
};

/// A variant that frees what it holds.
struct value : VARIANT {
    value() { ::VariantInit(this); }
    explicit value(short number) : value{}
    {
        vt = VT_I2;
        iVal = number;
    }
    explicit value(const wchar_t* text) : value{}
    {
        vt = VT_BSTR;
        bstrVal = ::SysAllocString(text);
    }
    ~value() { ::VariantClear(this); }
    value(const value&) = delete;
    value& operator=(const value&) = delete;
};

/// A variant without ownership.
VARIANT plain_variant(VARTYPE type);
VARIANT reference_to(BSTR& text);
VARIANT reference_to(short& number);
VARIANT reference_to(VARIANT& variable);

/// What a late-bound call gave.
struct outcome {
    HRESULT result = E_FAIL;
    VARTYPE type = VT_EMPTY;
    short number = 0;
    std::wstring error, source;
};

/// An object of the class, made by the class factory of a loaded DLL, not by the registry.
class client {
public:
    explicit client(const server& from);
    explicit client(IDispatch* made) : object_{made} {}
    ~client() { object_->Release(); }
    client(const client&) = delete;
    client& operator=(const client&) = delete;

    IDispatch* get() const { return object_; }
    DISPID id_of(const wchar_t* name) const;
    /// Arguments in the order of the method's parameters.
    outcome call(const wchar_t* name, std::vector<VARIANT> arguments = {}) const;

private:
    IDispatch* object_ = nullptr;
};

}  // namespace tamrix::tests
