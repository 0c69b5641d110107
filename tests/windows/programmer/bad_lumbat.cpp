// A transport library with something odd about its names, which the build says by a definition.
#include <cstdint>

#if !defined(EMPTY)
#if defined(UNDERSCORED)
#define EXPORTED  // by the .def file, under another name
#else
#define EXPORTED __declspec(dllexport)
#endif

extern "C" {
EXPORTED std::int32_t __stdcall usbcomwrite(const std::uint8_t*, std::int32_t length) { return length + 2; }
EXPORTED std::int32_t __stdcall usbbulkwrite(const std::uint8_t*, std::int32_t length) { return length + 3; }
#if !defined(LACKING)
EXPORTED std::int32_t __stdcall usbbulkread(std::uint8_t*, std::int32_t length, std::uint8_t*) { return length + 4; }
#endif
}
#endif
