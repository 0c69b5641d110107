// The shared blocks for a host that is a script, which has no pointers: a COM class in the host's process. It stands on
// the system's calls alone. CreateObject("tamrixtests.Blocks"), then
//   Create num, length       makes the blocks of instance num and a buffer of that many bytes
//   Number(block, index)     SetNumber block, index, value
//   Text(block, index)       SetText block, index, value
//   Bytes(first, count)      of the buffer, as hexadecimal digits
//   Fill value               the whole buffer
//   Occupy name              takes the object name for something that is no memory
#include "tamrix/blocks.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <iterator>
#include <map>
#include <string>

#include <windows.h>

#include <oleauto.h>

namespace {

using tamrix::element;

constexpr GUID class_id{0x5d1d3a60, 0x7d0e, 0x4f6e, {0x9b, 0x6f, 0x36, 0x7c, 0x5d, 0x3a, 0x1c, 0x02}};
constexpr wchar_t class_key[] = L"CLSID\\{5D1D3A60-7D0E-4F6E-9B6F-367C5D3A1C02}";
constexpr wchar_t program_key[] = L"tamrixtests.Blocks";

struct mapped_block {
    element kind;
    DWORD count;
    std::byte* bytes;
};

class blocks {
public:
    HRESULT create(int num, int length)
    {
        for (const auto& line : tamrix::small_blocks) {
            if (!map(std::string{line.name}, tamrix::small_block_object(line.name, num), line.mapped_bytes, line.kind,
                     line.count))
                return E_FAIL;
        }
        const DWORD bytes = static_cast<DWORD>(tamrix::ibuffer_bytes(length));
        if (!map("ibuffer", "qorfanibuffer", bytes, element::byte, bytes)) return E_FAIL;
        const mapped_block& buflength = by_name_["buflength"];
        std::memcpy(buflength.bytes, &length, sizeof length);
        return S_OK;
    }

    const mapped_block* find(const std::wstring& name, int index) const
    {
        const auto found = by_name_.find({name.begin(), name.end()});
        const bool inside = found != by_name_.end() && index >= 0 && static_cast<DWORD>(index) < found->second.count;
        return inside ? &found->second : nullptr;
    }

private:
    bool map(const std::string& name, const std::string& object, DWORD bytes, element kind, DWORD count)
    {
        const HANDLE made =
            ::CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, bytes, object.c_str());
        void* const view = made != nullptr ? ::MapViewOfFile(made, FILE_MAP_ALL_ACCESS, 0, 0, 0) : nullptr;
        if (view != nullptr) by_name_[name] = {kind, count, static_cast<std::byte*>(view)};
        return view != nullptr;
    }

    std::map<std::string, mapped_block> by_name_;  // they live as long as the process
};

template <class T>
T get(const mapped_block& block, int index)
{
    T value;
    std::memcpy(&value, block.bytes + static_cast<std::size_t>(index) * sizeof value, sizeof value);
    return value;
}

template <class T>
void put(const mapped_block& block, int index, T value)
{
    std::memcpy(block.bytes + static_cast<std::size_t>(index) * sizeof value, &value, sizeof value);
}

double number(const mapped_block& block, int index)
{
    switch (block.kind) {
    case element::byte: return get<BYTE>(block, index);
    case element::int16:
    case element::boolean: return get<SHORT>(block, index);
    case element::int32: return get<LONG>(block, index);
    case element::real: return get<double>(block, index);
    case element::text: break;
    }
    return 0;
}

void set_number(const mapped_block& block, int index, double value)
{
    switch (block.kind) {
    case element::byte: return put(block, index, static_cast<BYTE>(value));
    case element::int16:
    case element::boolean: return put(block, index, static_cast<SHORT>(value));
    case element::int32: return put(block, index, static_cast<LONG>(value));
    case element::real: return put(block, index, value);
    case element::text: break;
    }
}

constexpr std::array<const wchar_t*, 8> method_names{L"Create",  L"Number", L"SetNumber", L"Text",
                                                     L"SetText", L"Bytes",  L"Fill",      L"Occupy"};
enum method : DISPID { create, number_of, set_number_of, text_of, set_text_of, bytes_of, fill, occupy };

class script_blocks final : public IDispatch {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void** found) override
    {
        *found = wanted == IID_IUnknown || wanted == IID_IDispatch ? this : nullptr;
        if (*found == nullptr) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return ++references_; }
    ULONG STDMETHODCALLTYPE Release() override
    {
        const ULONG left = --references_;
        if (left == 0) delete this;
        return left;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfoCount(UINT* count) override
    {
        *count = 0;
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
    HRESULT STDMETHODCALLTYPE GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override
    {
        const auto found =
            std::ranges::find_if(method_names, [&](const wchar_t* name) { return ::lstrcmpiW(name, names[0]) == 0; });
        if (count != 1 || found == method_names.end()) return DISP_E_UNKNOWNNAME;
        *ids = static_cast<DISPID>(found - method_names.begin());
        return S_OK;
    }
    HRESULT STDMETHODCALLTYPE Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* given, VARIANT* result, EXCEPINFO*,
                                     UINT*) override
    {
        given_ = given;
        switch (id) {
        case create: return blocks_.create(whole(0), whole(1));
        case bytes_of: return bytes(whole(0), whole(1), result);
        case fill: return fill_with(whole(0));
        case occupy: return ::CreateEventW(nullptr, TRUE, FALSE, text(0).c_str()) != nullptr ? S_OK : E_FAIL;
        default: return access(id, result);
        }
    }

private:
    ~script_blocks() = default;

    VARIANT converted(UINT index, VARTYPE type) const
    {
        VARIANT made;
        ::VariantInit(&made);
        if (index < given_->cArgs) ::VariantChangeType(&made, &given_->rgvarg[given_->cArgs - 1 - index], 0, type);
        return made;
    }
    int whole(UINT index) const { return static_cast<int>(real(index)); }
    double real(UINT index) const
    {
        const VARIANT made = converted(index, VT_R8);
        return made.vt == VT_R8 ? made.dblVal : 0;
    }
    std::wstring text(UINT index) const
    {
        VARIANT made = converted(index, VT_BSTR);
        std::wstring taken{made.vt == VT_BSTR ? made.bstrVal : L""};
        ::VariantClear(&made);
        return taken;
    }

    HRESULT access(DISPID id, VARIANT* result)
    {
        const int index = whole(1);
        const mapped_block* const block = blocks_.find(text(0), index);
        const bool of_text = id == text_of || id == set_text_of;
        if (block == nullptr || (block->kind == element::text) != of_text) return DISP_E_BADINDEX;
        if (id == set_number_of) {
            set_number(*block, index, real(2));
        } else if (id == set_text_of) {
            ::SysFreeString(get<BSTR>(*block, index));
            put(*block, index, ::SysAllocString(text(2).c_str()));
        } else if (result != nullptr) {
            result->vt = of_text ? VT_BSTR : VT_R8;
            if (of_text) {
                result->bstrVal = ::SysAllocString(get<BSTR>(*block, index));
            } else {
                result->dblVal = number(*block, index);
            }
        }
        return S_OK;
    }

    HRESULT bytes(int first, int count, VARIANT* result) const
    {
        const mapped_block* const buffer = blocks_.find(L"ibuffer", first + count - 1);
        if (buffer == nullptr || first < 0 || count < 1 || result == nullptr) return DISP_E_BADINDEX;
        std::wstring digits;
        for (int i = first; i < first + count; ++i) {
            for (const int half : {get<BYTE>(*buffer, i) >> 4, get<BYTE>(*buffer, i) & 15})
                digits += L"0123456789ABCDEF"[half];
        }
        result->vt = VT_BSTR;
        result->bstrVal = ::SysAllocString(digits.c_str());
        return S_OK;
    }

    HRESULT fill_with(int value) const
    {
        const mapped_block* const buffer = blocks_.find(L"ibuffer", 0);
        if (buffer == nullptr) return DISP_E_BADINDEX;
        std::memset(buffer->bytes, value, buffer->count);
        return S_OK;
    }

    ULONG references_ = 0;
    DISPPARAMS* given_ = nullptr;  // of the call that runs
    blocks blocks_;
};

class factory final : public IClassFactory {
public:
    HRESULT STDMETHODCALLTYPE QueryInterface(REFIID wanted, void** found) override
    {
        *found = wanted == IID_IUnknown || wanted == IID_IClassFactory ? this : nullptr;
        return *found != nullptr ? S_OK : E_NOINTERFACE;
    }
    ULONG STDMETHODCALLTYPE AddRef() override { return 2; }
    ULONG STDMETHODCALLTYPE Release() override { return 1; }
    HRESULT STDMETHODCALLTYPE CreateInstance(IUnknown*, REFIID wanted, void** made) override
    {
        auto* const fresh = new script_blocks;
        fresh->AddRef();
        const HRESULT result = fresh->QueryInterface(wanted, made);
        fresh->Release();
        return result;
    }
    HRESULT STDMETHODCALLTYPE LockServer(BOOL) override { return S_OK; }
};

void write(const std::wstring& key, const std::wstring& value)
{
    ::RegSetValueW(HKEY_CLASSES_ROOT, key.c_str(), REG_SZ, value.c_str(), 0);
}

}  // namespace

extern "C" {

HRESULT WINAPI DllGetClassObject(REFCLSID which, REFIID wanted, void** found)
{
    static factory the_factory;
    return which == class_id ? the_factory.QueryInterface(wanted, found) : CLASS_E_CLASSNOTAVAILABLE;
}

HRESULT WINAPI DllCanUnloadNow() { return S_FALSE; }

HRESULT WINAPI DllRegisterServer()
{
    wchar_t path[MAX_PATH];
    ::GetModuleFileNameW(::GetModuleHandleW(L"script_blocks.dll"), path, MAX_PATH);
    write(std::wstring{program_key} + L"\\CLSID", std::wstring{class_key}.substr(6));
    write(std::wstring{class_key} + L"\\InprocServer32", path);
    return S_OK;
}

HRESULT WINAPI DllUnregisterServer()
{
    ::RegDeleteTreeW(HKEY_CLASSES_ROOT, program_key);
    ::RegDeleteTreeW(HKEY_CLASSES_ROOT, class_key);
    return S_OK;
}
}
