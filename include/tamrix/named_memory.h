// Named shared memory between processes. Host and plug-in both use these calls, which are the same on every system:
//
//     handle                            of an open object; 0 is none
//     open(object)                      opens an existing object; 0 if there is none or it cannot be opened
//     create(object, length_bytes)      creates an object of zero bytes; 0 if the name is taken or it fails
//     open_or_create(object, length)    0 if neither is possible; a length of 0 creates nothing
//     close(handle, object)             releases a handle; the last user removes the name
//     map(handle)                       maps the whole object for reading and writing; null on failure
//     reach_bytes(handle)               bytes that can be reached through a mapping: whole pages
//     unmap(address, length_bytes)      false if nothing is mapped there
//
// A name exists while somebody has it open, even if a process crashes. On Windows the system ensures that.
#pragma once

#if defined(_WIN32)
#include "tamrix/named_memory_win32.h"
#else
#include "tamrix/named_memory_posix.h"
#endif
