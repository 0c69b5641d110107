// Numbers by chance, as the separate models draw them.
#pragma once

#include <cstdint>

namespace tamrix::tests {

class chance {
public:
    explicit chance(std::uint32_t number) : state_{number}
    {
        for (int i = 0; i < 3; ++i) draw();
    }
    /// 0 to 65535.
    std::uint32_t draw()
    {
        state_ = state_ * 1664525 + 1013904223;
        return state_ >> 16;
    }
    std::uint32_t draw_large()
    {
        const std::uint32_t upper = draw();
        return upper << 16 | draw();
    }

private:
    std::uint32_t state_;
};

}  // namespace tamrix::tests
