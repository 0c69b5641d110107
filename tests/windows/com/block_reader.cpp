// A second process: tells of each mapping named on the command line how many bytes it reaches and what its first four
// hold, a line each. "-" stands for one that is not there.
#include <cstdio>

#include <windows.h>

int main(int count, char** names)
{
    for (int i = 1; i < count; ++i) {
        const HANDLE mapping = ::OpenFileMappingA(FILE_MAP_READ, FALSE, names[i]);
        const void* const view = mapping != nullptr ? ::MapViewOfFile(mapping, FILE_MAP_READ, 0, 0, 0) : nullptr;
        MEMORY_BASIC_INFORMATION region{};
        if (view != nullptr && ::VirtualQuery(view, &region, sizeof region) != 0) {
            std::printf("%s %lu %ld\n", names[i], static_cast<unsigned long>(region.RegionSize),
                        static_cast<long>(*static_cast<const LONG*>(view)));
        } else {
            std::printf("%s -\n", names[i]);
        }
    }
}
