// Named shared memory between processes: open, create, map, and the rule by which a name goes away. Host and plug-in
// both stand on these calls, which are the same on every system:
//
//     handle                            of an open object; 0 is none
//     open(object)                      opens an object that exists; 0 where there is none or it cannot be opened
//     create(object, length_bytes)      makes one of zero bytes; 0 where the name is taken or it cannot be made
//     open_or_create(object, length)    0 where neither can be done; a length of 0 creates nothing
//     close(handle, object)             releases a handle; the name goes away with its last user
//     map(handle)                       the whole object for reading and writing; null where that fails
//     reach_bytes(handle)               bytes that can be reached through a mapping, whole pages
//     unmap(address, length_bytes)      false where nothing is mapped there
//
// A name lives as long as somebody has it open, also across a crash. On Windows the system sees to that.
#pragma once

#if defined(_WIN32)
#include "tamrix/named_memory_win32.h"
#else
#include "tamrix/named_memory_posix.h"
#endif
