// On Windows the host's heap is the system's heap of BSTRs, and a handle is the address of one.
#include "blocks/text_heap.h"

#include "base/utf16.h"

#include <new>

#include <windows.h>

#include <oleauto.h>

namespace tamrix::text_heap {

namespace {

static_assert(sizeof(BSTR) == sizeof(std::uint32_t), "a handle holds an address of a 32-bit process");

constexpr std::uint32_t length_prefix_bytes = 4;

/// Bytes from `address` on that can be read.
std::size_t readable_bytes(std::uint32_t address)
{
    MEMORY_BASIC_INFORMATION region{};
    if (::VirtualQuery(reinterpret_cast<const void*>(address), &region, sizeof region) == 0) return 0;
    constexpr DWORD closed = PAGE_NOACCESS | PAGE_EXECUTE | PAGE_GUARD;
    if (region.State != MEM_COMMIT || (region.Protect & closed) != 0) return 0;
    return region.RegionSize - (address - reinterpret_cast<std::uint32_t>(region.BaseAddress));
}

/// The text of a handle; null for 0 and for a handle that cannot be one, such as another process's: blocks outlive
/// the process that wrote them as long as somebody has them open.
BSTR text_of(std::uint32_t handle)
{
    if (handle < length_prefix_bytes || handle % 4 != 0) return nullptr;
    const std::size_t readable = readable_bytes(handle - length_prefix_bytes);
    if (readable < length_prefix_bytes) return nullptr;
    const auto text = reinterpret_cast<BSTR>(handle);
    return ::SysStringByteLen(text) <= readable - length_prefix_bytes ? text : nullptr;
}

}  // namespace

std::uint32_t make(std::string_view text)
{
    if (text.empty()) return 0;
    const std::wstring wide = utf16::from_utf8<wchar_t>(text);
    const BSTR made = ::SysAllocStringLen(wide.data(), static_cast<UINT>(wide.size()));
    if (made == nullptr) throw std::bad_alloc{};
    return reinterpret_cast<std::uint32_t>(made);
}

std::string get(std::uint32_t handle)
{
    const BSTR text = text_of(handle);
    return text == nullptr ? std::string{} : utf16::to_utf8(std::wstring_view{text, ::SysStringLen(text)});
}

void free(std::uint32_t handle) noexcept { ::SysFreeString(text_of(handle)); }

}  // namespace tamrix::text_heap
