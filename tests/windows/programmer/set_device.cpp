// A second process: writes the device data of a 14-pin chip, and a programmer's model, to the blocks of the instance
// whose number is on the command line. A script cannot reach them itself.
#include "tamrix/blocks.h"

#include <cstdio>
#include <cstdlib>

#include <windows.h>

namespace {

template <class T>
bool set(const char* name, int instance, T number)
{
    const HANDLE mapping =
        ::OpenFileMappingA(FILE_MAP_ALL_ACCESS, FALSE, tamrix::small_block_object(name, instance).c_str());
    T* const view =
        mapping != nullptr ? static_cast<T*>(::MapViewOfFile(mapping, FILE_MAP_ALL_ACCESS, 0, 0, 0)) : nullptr;
    if (view == nullptr) {
        std::printf("there is no block %s of instance %d\n", name, instance);
        return false;
    }
    *view = number;
    return true;
}

}  // namespace

int main(int count, char** words)
{
    const int instance = count > 1 ? std::atoi(words[1]) : 0;
    const bool done = set<SHORT>("modeltype", instance, 40) && set<LONG>("buflength", instance, 100) &&
                      set<SHORT>("bvcc", instance, 500) && set<BYTE>("bgndpin", instance, 1) &&
                      set<BYTE>("bvccpin", instance, 107) && set<SHORT>("chippin", instance, 14);
    return done ? 0 : 1;
}
