// Numbers as text.
#pragma once

#include <cstdio>
#include <string>

namespace tamrix::cli {

/// By a format of printf for one double, up to 63 characters long.
inline std::string formatted(const char* format, double value)
{
    char text[64];
    std::snprintf(text, sizeof text, format, value);
    return text;
}

}  // namespace tamrix::cli
