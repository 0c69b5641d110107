// The run-time array descriptor in its published layout: a header, and the bounds of each dimension right after it.
#pragma once

#include <cstdint>

namespace tamrix {

struct array_header {
    std::uint16_t dimensions = 1;
    std::uint16_t features = 0;
    std::uint32_t element_bytes = 0;
    std::uint32_t locks = 0;
    void* data = nullptr;
};

struct array_bounds {
    std::uint32_t count = 0;
    std::int32_t lower = 0;
};

/// A descriptor of `Dimensions` dimensions.
template <int Dimensions>
struct array_descriptor {
    array_header header{.dimensions = Dimensions};
    array_bounds bounds[Dimensions];
};

/// The bounds that follow a header in memory.
inline array_bounds* bounds_behind(array_header* header)
{
    return reinterpret_cast<array_bounds*>(reinterpret_cast<unsigned char*>(header) + sizeof(array_header));
}

}  // namespace tamrix
