#include "hw/lumbat_dll_win32.h"

#include "hw/library_symbol.h"
#include "hw/programmer.h"

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

/// `decorated` is what a compiler makes of a stdcall function's name.
template <class Function>
Function find(void* library, const std::string& path, const char* name, const char* decorated)
{
    void* found = symbol_of(library, name);
    if (found == nullptr) found = symbol_of(library, decorated);
    if (found == nullptr) fail(path, std::string{"has no function "} + name);
    return reinterpret_cast<Function>(found);
}

}  // namespace

lumbat_dll::lumbat_dll(const std::string& path)
{
    void* const library = load(path);
    usbcomwrite_ = find<tamrix_usbcomwrite>(library, path, "usbcomwrite", "_usbcomwrite@8");
    usbbulkwrite_ = find<tamrix_usbbulkwrite>(library, path, "usbbulkwrite", "_usbbulkwrite@8");
    usbbulkread_ = find<tamrix_usbbulkread>(library, path, "usbbulkread", "_usbbulkread@12");
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
