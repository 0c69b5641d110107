#include "base/native_path.h"

namespace tamrix {

// Two separators at the start name a computer of the network, so they stay.
std::string native_path(std::string_view path)
{
    std::string result;
    result.reserve(path.size());
    for (const char c : path) {
        const bool separator = c == '/' || c == '\\';
        if (separator && result.size() > 1 && result.back() == '/') continue;
        result.push_back(separator ? '/' : c);
    }
    // More than two separators count as one.
    const bool computer = path.size() > 2 && result.starts_with("//") && path[2] != '/' && path[2] != '\\';
    if (result.starts_with("//") && !computer) result.erase(0, 1);
    return result;
}

}  // namespace tamrix
