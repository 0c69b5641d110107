// How many handles this process has open.
#pragma once

#include <vector>

#include <windows.h>

#include <winternl.h>

namespace tamrix::tests {

/// Counted in the system's table of all handles: under wine GetProcessHandleCount always says 0.
inline long open_handles()
{
    struct entry {
        ULONG process;
        BYTE type, flags;
        USHORT handle;
        void* object;
        ULONG access;
    };
    constexpr auto all_handles = static_cast<SYSTEM_INFORMATION_CLASS>(16);
    constexpr NTSTATUS too_short = static_cast<NTSTATUS>(0xC0000004);
    using query = NTSTATUS(WINAPI*)(SYSTEM_INFORMATION_CLASS, void*, ULONG, ULONG*);
    const auto ask = reinterpret_cast<query>(
        reinterpret_cast<void*>(::GetProcAddress(::GetModuleHandleA("ntdll.dll"), "NtQuerySystemInformation")));
    std::vector<BYTE> table(1 << 16);
    NTSTATUS status = too_short;
    while ((status = ask(all_handles, table.data(), static_cast<ULONG>(table.size()), nullptr)) == too_short)
        table.resize(table.size() * 2);
    if (status != 0) return -1;
    const ULONG count = *reinterpret_cast<const ULONG*>(table.data());
    const auto* const entries = reinterpret_cast<const entry*>(table.data() + sizeof(ULONG));
    long own = 0;
    for (ULONG i = 0; i < count; ++i) own += entries[i].process == ::GetCurrentProcessId() ? 1 : 0;
    return own;
}

}  // namespace tamrix::tests
