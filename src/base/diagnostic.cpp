#include "base/diagnostic.h"

#include "base/arith.h"

namespace tamrix {

std::string diagnostic::text() const
{
    if (empty()) return {};
    std::string result = file;
    if (line) result += ":" + std::to_string(*line);
    if (!result.empty()) result += ": ";
    if (offset) result += "offset " + arith::hex(static_cast<std::int64_t>(*offset)) + ": ";
    result += found;
    if (!expected.empty()) result += " where " + expected + " was expected";
    return result;
}

}  // namespace tamrix
