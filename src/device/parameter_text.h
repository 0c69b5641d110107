// Numbers as a person types them into the parameter dialog, and as it shows them. The decimal point is always ".".
#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace tamrix {

struct typed_number {
    double value = 0;
    bool found = false;  // false if the text has no digit; the value is then 0
    bool whole = false;  // the number is all of the text
};

/// The number at the start of the text, up to a second point or anything else that does not belong to it.
typed_number read_number(std::string_view text);

/// The nearest whole number within the limits; halves round to even.
std::int32_t whole_number(double value, std::int32_t least, std::int32_t most);

/// Microseconds as milliseconds with as many decimals as necessary: "10", "1.5", "2.048".
std::string milliseconds_text(std::int32_t microseconds);

}  // namespace tamrix
