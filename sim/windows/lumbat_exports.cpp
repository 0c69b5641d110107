// The three functions of a transport library; a .def file exports them.
#include "sim/windows/served.h"
#include "tamrix/windows_programmer.h"

#include <exception>
#include <type_traits>

namespace {

using namespace tamrix;

/// A call that breaks down is one that failed.
template <class Act>
std::int32_t transfer(Act&& carry_out) noexcept
{
    constexpr std::int32_t failed = 1;
    try {
        std::int32_t result = failed;
        sim::serve([&](hw::lumbat& transport, hw::devobj&) { result = carry_out(transport); });
        return result;
    } catch (const std::exception&) {
        return failed;
    }
}

}  // namespace

extern "C" {

std::int32_t __stdcall usbcomwrite(const std::uint8_t* buffer, std::int32_t length)
{
    return transfer([&](hw::lumbat& transport) { return transport.usbcomwrite(buffer, length); });
}

std::int32_t __stdcall usbbulkwrite(const std::uint8_t* buffer, std::int32_t length)
{
    return transfer([&](hw::lumbat& transport) { return transport.usbbulkwrite(buffer, length); });
}

std::int32_t __stdcall usbbulkread(std::uint8_t* buffer, std::int32_t length, std::uint8_t* status)
{
    return transfer([&](hw::lumbat& transport) { return transport.usbbulkread(buffer, length, status); });
}

// They are what the header promises.
static_assert(std::is_same_v<decltype(&usbcomwrite), tamrix_usbcomwrite>);
static_assert(std::is_same_v<decltype(&usbbulkwrite), tamrix_usbbulkwrite>);
static_assert(std::is_same_v<decltype(&usbbulkread), tamrix_usbbulkread>);
}
