// What the tests of changes of a library share.
#pragma once

#include "ttl/ttl_fixture.h"

#include <functional>
#include <stdexcept>
#include <string>

namespace tamrix::tests {

inline slow::device_record named(const std::string& name) { return {name, nand_rows}; }

/// What a change says that the library refuses; empty where it took place.
inline std::string refusal(const std::function<void()>& change)
{
    try {
        change();
    } catch (const std::runtime_error& error) {
        return error.what();
    }
    return {};
}

}  // namespace tamrix::tests
