// A second process: says of each mapping named on the command line how many bytes it reaches and what its first four
// hold, a line each. "-" is one that is not there. NAME=NUMBER puts the number there first.
#include <cstdio>
#include <cstdlib>
#include <string>

#include <windows.h>

namespace {

void tell_of(const std::string& word)
{
    const std::size_t sign = word.find('=');
    const std::string name = word.substr(0, sign);
    const HANDLE mapping = ::OpenFileMappingA(FILE_MAP_ALL_ACCESS, FALSE, name.c_str());
    void* const view = mapping != nullptr ? ::MapViewOfFile(mapping, FILE_MAP_ALL_ACCESS, 0, 0, 0) : nullptr;
    MEMORY_BASIC_INFORMATION region{};
    if (view == nullptr || ::VirtualQuery(view, &region, sizeof region) == 0) {
        std::printf("%s -\n", name.c_str());
        return;
    }
    auto& first = *static_cast<LONG*>(view);
    if (sign != std::string::npos) first = std::atol(word.c_str() + sign + 1);
    std::printf("%s %lu %ld\n", name.c_str(), static_cast<unsigned long>(region.RegionSize), static_cast<long>(first));
}

}  // namespace

int main(int count, char** words)
{
    for (int i = 1; i < count; ++i) tell_of(words[i]);
}
