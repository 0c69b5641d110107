// The value types that cross the plug-in's boundary: 16-bit booleans and results of calls.
#pragma once

#include <cstdint>
#include <string>
#include <variant>

namespace tamrix {

/// A boolean of the shared blocks and the entry methods: 0 is false, all bits set is true.
using bool16 = std::int16_t;

inline constexpr bool16 bool16_false = 0;
inline constexpr bool16 bool16_true = -1;

/// True for the one pattern that both sides write as "true".
constexpr bool is_true(bool16 value) { return static_cast<std::uint16_t>(value) > 65534; }

/// What an entry method returns: nothing, or a 16-bit number.
using variant = std::variant<std::monostate, std::int16_t>;

/// The outcome of a call. A call fails only on an error that no dialog or routine handles; `error` then holds a
/// readable text in UTF-8, and `value` is empty.
struct reply {
    variant value;
    std::string error;

    bool ok() const { return error.empty(); }
};

}  // namespace tamrix
