// What can sit in the simulated socket: a chip, a test board.
#pragma once

#include <cstdint>
#include <span>
#include <utility>

namespace tamrix::sim {

/// `open`: nothing drives; a pull-up or another driver decides.
enum class level : std::uint8_t { low, high, open };

class part {
public:
    virtual ~part() = default;

    /// Pins of the package, an even number; pin 1 is index 0 everywhere.
    virtual int pins() const = 0;
    /// Index of the supply pins; negative where it has none.
    virtual int vcc_pin() const = 0;
    virtual int gnd_pin() const = 0;

    /// The supply came on: registers take their state of that moment.
    virtual void power_up() = 0;
    /// `nodes` holds the level at each pin as the part sees it, never `open`; `drives` receives what the part drives at
    /// each pin, `open` where it does not. Clock edges are differences to the `nodes` of the call before. Called again
    /// until nothing changes, since outputs may be wired to inputs.
    virtual void settle(std::span<const level> nodes, std::span<level> drives) = 0;

    /// Pairs of pins that are one wire inside, as on a test board.
    virtual std::span<const std::pair<int, int>> links() const { return {}; }
    /// What a pin stands without harm.
    virtual std::int32_t highest_millivolts(int /*pin*/) const { return 7000; }
};

}  // namespace tamrix::sim
