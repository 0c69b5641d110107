#include "cli/console.h"

#include <cstdlib>

#include <unistd.h>

namespace tamrix::cli {

namespace {

bool takes_colours(std::FILE* stream)
{
    const char* const unwanted = std::getenv("NO_COLOR");
    const char* const terminal = std::getenv("TERM");
    if ((unwanted != nullptr && *unwanted != '\0') || terminal == nullptr) return false;
    return std::string_view{terminal} != "dumb" && ::isatty(::fileno(stream)) != 0;
}

}  // namespace

console::console(std::FILE* out, std::FILE* err) : out_{out}, err_{err}, colours_{takes_colours(err)} {}

void console::tell(std::string_view before, const char* colour, std::string_view text)
{
    std::fflush(out_);  // keeps the order of lines if both go to one place
    std::string line;
    const bool coloured = colours_ && *colour != '\0';
    if (coloured) line += colour;
    line += before;
    if (coloured) line += usual;
    line += text;
    line += '\n';
    std::fwrite(line.data(), 1, line.size(), err_);
}

}  // namespace tamrix::cli
