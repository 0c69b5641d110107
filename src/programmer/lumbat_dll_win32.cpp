#include "programmer/lumbat_dll_win32.h"

#include "programmer/library_symbol.h"
#include "programmer/programmer.h"

namespace tamrix::hw {

namespace {

[[noreturn]] void fail(const std::string& path, const std::string& why)
{
    throw programmer_error{"programmer library " + path + ": " + why};
}

void* load(const std::string& path)
{
    std::string why;
    void* const library = load_library(path, why);
    if (library == nullptr) fail(path, why);
    return library;
}

/// By its plain name, or by those that compilers make of a stdcall function with arguments of so many bytes.
template <class Function>
Function find(void* library, const std::string& path, const std::string& name, int argument_bytes)
{
    const std::string decorated = name + "@" + std::to_string(argument_bytes);
    for (const std::string& exported : {name, "_" + decorated, decorated}) {
        void* const found = symbol_of(library, exported.c_str());
        if (found != nullptr) return reinterpret_cast<Function>(found);
    }
    fail(path, "has no function " + name);
}

}  // namespace

lumbat_dll::lumbat_dll(const std::string& path)
{
    void* const library = load(path);
    usbcomwrite_ = find<tamrix_usbcomwrite>(library, path, "usbcomwrite", 8);
    usbbulkwrite_ = find<tamrix_usbbulkwrite>(library, path, "usbbulkwrite", 8);
    usbbulkread_ = find<tamrix_usbbulkread>(library, path, "usbbulkread", 12);
}

std::int32_t lumbat_dll::usbcomwrite(const std::uint8_t* buffer, std::int32_t length)
{
    return usbcomwrite_(buffer, length);
}

std::int32_t lumbat_dll::usbbulkwrite(const std::uint8_t* buffer, std::int32_t length)
{
    return usbbulkwrite_(buffer, length);
}

std::int32_t lumbat_dll::usbbulkread(std::uint8_t* buffer, std::int32_t length, std::uint8_t* status)
{
    return usbbulkread_(buffer, length, status);
}

}  // namespace tamrix::hw
