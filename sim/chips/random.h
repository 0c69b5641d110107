// A small generator of random numbers with the same results on every machine.
#pragma once

#include <cstdint>
#include <string_view>

namespace tamrix::sim {

inline std::uint64_t mix(std::uint64_t x)
{
    x += 0x9E3779B97F4A7C15u;
    x = (x ^ (x >> 30)) * 0xBF58476D1CE4E5B9u;
    x = (x ^ (x >> 27)) * 0x94D049BB133111EBu;
    return x ^ (x >> 31);
}

class random_source {
public:
    explicit random_source(std::uint64_t start) : state_{start} {}
    explicit random_source(std::string_view start) : state_{0}
    {
        for (const char c : start) state_ = mix(state_ ^ static_cast<unsigned char>(c));
    }

    std::uint64_t bits() { return mix(state_++); }
    /// 0 to `count` - 1.
    std::size_t below(std::size_t count) { return static_cast<std::size_t>((bits() >> 32) * count >> 32); }
    bool percent(unsigned chance) { return below(100) < chance; }

private:
    std::uint64_t state_;
};

}  // namespace tamrix::sim
