// The smallest host for Windows that calls the plug-in by its binary interface: loads a fuse file, saves it again.
// Needs a registered tamrix.dll. The header comes with it; with the library's type library, #import serves as well.
// Build it, in the folder of the package:
//   i686-w64-mingw32-g++ -I include samples/early_binding.cpp -o early_binding.exe -static -lole32 -loleaut32 -luuid
// Run it:    early_binding.exe, in a folder in which it may write
#include <cstdio>
#include <cstring>
#include <fstream>
#include <string>

#include <initguid.h>  // this file holds the identifiers that the header declares
#include <tamrix.h>

namespace {

/// A text of the system, freed with its owner.
struct text {
    explicit text(const wchar_t* words) : handle{::SysAllocString(words)} {}
    ~text() { ::SysFreeString(handle); }
    text(const text&) = delete;
    text& operator=(const text&) = delete;
    BSTR handle;
};

/// A block of the host. The plug-in opens what exists under the name, so the host makes its blocks first.
template <class T>
struct block {
    block(const char* name, DWORD bytes)
        : mapping{::CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, bytes, name)},
          at{static_cast<T*>(::MapViewOfFile(mapping, FILE_MAP_ALL_ACCESS, 0, 0, 0))}
    {}
    ~block()
    {
        ::UnmapViewOfFile(at);
        ::CloseHandle(mapping);
    }
    block(const block&) = delete;
    block& operator=(const block&) = delete;
    HANDLE mapping;
    T* at;
};

/// The text that a failed call left.
std::wstring why_it_failed()
{
    IErrorInfo* error = nullptr;
    if (::GetErrorInfo(0, &error) != S_OK) return L"no reason told";
    BSTR words = nullptr;
    error->GetDescription(&words);
    std::wstring copy(words, ::SysStringLen(words));
    ::SysFreeString(words);
    error->Release();
    return copy;
}

void tell(const char* method, HRESULT result)
{
    if (SUCCEEDED(result)) {
        std::printf("%s: done\n", method);
    } else {
        std::printf("%s: %ls\n", method, why_it_failed().c_str());
    }
}

void use(_Clstamrix* plug_in)
{
    // 1. The small blocks of instance 1. The host makes those that it uses; the plug-in makes the others.
    short instance = 1;
    const block<LONG> buflength{"qorfanbuflength1", 40}, tlength{"qorfantlength1", 40};
    const block<SHORT> pagelength{"qorfanpagelength1", 40};
    const block<BSTR> wtype{"qorfanwtype1", 40};
    tell("bufcomopt", plug_in->bufcomopt(&instance));

    // 2. The device, and the buffer behind it.
    constexpr LONG buffer_bytes = 1024;
    const block<char> buffer{"qorfanibuffer", buffer_bytes + 2200};  // a margin is part of it
    *buflength.at = buffer_bytes;
    *tlength.at = 16;     // fuses
    *pagelength.at = 16;  // fuses of a row
    *wtype.at = ::SysAllocString(L"EXAMPLE16");
    tell("buffercomopt", plug_in->buffercomopt(&instance));

    // 3. Work: every method that opens no dialog. Arguments go by reference, and stay as they are.
    std::ofstream{"fuses.jed", std::ios::binary} << "\x02QF16*F0*L00000 1111000011110001*\x03";
    std::ofstream{"chain.svf", std::ios::binary} << "SIR 8 TDI (FE);\nSDR 32 TDO (12345678);\n";
    const text fuses{L"fuses.jed"}, saved{L"saved.jed"}, chain{L"chain.svf"}, folder{L".\\"}, nowhere{L"no folder\\"};
    BSTR name = fuses.handle, path = folder.handle;
    VARIANT result;
    ::VariantInit(&result);
    tell("readpldfile", plug_in->readpldfile(&name, &result));
    std::printf("the first fuses: %.16s\n", buffer.at);
    name = saved.handle;
    tell("writepldfile", plug_in->writepldfile(&name, &result));
    name = chain.handle;
    tell("readsvffile", plug_in->readsvffile(&name, &path, &result));
    std::printf("its result: %d\n", result.iVal);
    BYTE no_note = 0;
    VARIANT_BOOL yes = VARIANT_TRUE;
    tell("warn", plug_in->warn(&no_note, &yes));
    path = nowhere.handle;  // without a library of devices there is nothing to find
    tell("mnutestautofind0", plug_in->mnutestautofind0(&path));
    BYTE from_file = 1, two_rows_plus_one = 3, own_supply = 0;
    tell("vecttest0",
         plug_in->vecttest0(&from_file, &two_rows_plus_one, &own_supply, &yes));  // no programmer: it fails

    // 4. The end: the buffer first, then the object.
    tell("freesharebufferopt", plug_in->freesharebufferopt());
    ::SysFreeString(*wtype.at);
    *wtype.at = nullptr;
}

}  // namespace

int main()
{
    if (FAILED(::CoInitialize(nullptr))) return 1;  // one thread, which is also that of the windows
    _Clstamrix* plug_in = nullptr;
    const HRESULT made = ::CoCreateInstance(CLSID_Clstamrix, nullptr, CLSCTX_INPROC_SERVER, IID__Clstamrix,
                                            reinterpret_cast<void**>(&plug_in));
    if (FAILED(made)) {
        std::printf("No plug-in (%08lX): is tamrix.dll registered?\n", static_cast<unsigned long>(made));
    } else {
        use(plug_in);
        plug_in->Release();
    }
    ::CoUninitialize();
    return FAILED(made) ? 1 : 0;
}
