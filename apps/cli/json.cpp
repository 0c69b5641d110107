#include "cli/json.h"

#include <cstdio>

namespace tamrix::cli::json {

std::string string(std::string_view text)
{
    constexpr unsigned char first_that_needs_no_code = 0x20;
    std::string out = "\"";
    for (const char c : text) {
        if (static_cast<unsigned char>(c) < first_that_needs_no_code) {
            char code[8];
            std::snprintf(code, sizeof code, "\\u%04x", static_cast<unsigned>(c));
            out += code;
            continue;
        }
        if (c == '"' || c == '\\') out += '\\';
        out += c;
    }
    return out + "\"";
}

std::string object(std::initializer_list<std::pair<std::string_view, std::string>> members)
{
    std::string out;
    for (const auto& [name, value] : members) {
        if (value.empty()) continue;
        if (!out.empty()) out += ", ";
        out += string(name) + ": " + value;
    }
    return "{" + out + "}";
}

std::string array(const std::vector<std::string>& elements)
{
    std::string out;
    for (const std::string& element : elements) out += (out.empty() ? "" : ", ") + element;
    return "[" + out + "]";
}

}  // namespace tamrix::cli::json
