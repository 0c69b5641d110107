// The numbers of a device note: sums of multiples of what the host says about the device.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace tamrix::notes {

enum unknown : std::size_t { total_length, page_length, vcc_high, option_0, option_3, auxiliary, unknowns };

/// The values of one device, by unknown.
using device_values = std::array<std::int64_t, unknowns>;

struct figure {
    std::array<std::int64_t, unknowns> factors{};
    std::int64_t constant = 0;

    constexpr figure() = default;
    constexpr figure(std::int64_t value) : constant{value} {}  // lets a plain number be a figure
    constexpr explicit figure(unknown one) { factors[one] = 1; }

    constexpr std::int64_t of(const device_values& device) const
    {
        std::int64_t sum = constant;
        for (std::size_t i = 0; i < unknowns; ++i) sum += factors[i] * device[i];
        return sum;
    }
};

constexpr figure operator*(std::int64_t factor, figure of)
{
    for (std::int64_t& each : of.factors) each *= factor;
    of.constant *= factor;
    return of;
}

constexpr figure operator+(figure one, const figure& other)
{
    for (std::size_t i = 0; i < unknowns; ++i) one.factors[i] += other.factors[i];
    one.constant += other.constant;
    return one;
}

constexpr figure operator-(const figure& one, const figure& other) { return one + -1 * other; }

}  // namespace tamrix::notes
