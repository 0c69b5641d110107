#include "base/native_path.h"

namespace tamrix {

std::string native_path(std::string_view path)
{
    std::string result;
    result.reserve(path.size());
    for (const char c : path) {
        const bool separator = c == '/' || c == '\\';
        if (separator && !result.empty() && result.back() == '/') continue;
        result.push_back(separator ? '/' : c);
    }
    return result;
}

}  // namespace tamrix
