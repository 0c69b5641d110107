// The operations of a device object for automation: called by name, with variants.
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
    /// Needs all arguments, in the order of the call. Returns S_OK or the error of the call; `result` is empty before
    /// it. Exceptions of the device pass through.
    HRESULT (*carry_out)(hw::devobj& device, std::span<const VARIANTARG* const> arguments, VARIANT& result);
    UINT arguments;
};

/// All of them. The index of an operation is its identifier less 1.
std::span<const operation> operations();

}  // namespace tamrix::sim
