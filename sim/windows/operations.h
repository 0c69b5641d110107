// The operations of a device object as automation calls them: by name, with variants.
#pragma once

#include "programmer/devobj.h"

#include <cstdint>
#include <span>
#include <string_view>

#include <windows.h>

#include <oaidl.h>

namespace tamrix::sim {

struct operation {
    const wchar_t* name;
    /// Arguments in the order of the call, all of them there. S_OK, or what the call fails with; `result` is empty
    /// before it. What the device throws goes through.
    HRESULT (*carry_out)(hw::devobj& device, std::span<const VARIANTARG* const> arguments, VARIANT& result);
    UINT arguments;
};

/// All of them. A place in it is an operation's identifier less 1.
std::span<const operation> operations();

}  // namespace tamrix::sim
