// What can be in the simulated socket: a chip, a test board.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <span>
#include <string_view>
#include <utility>

namespace tamrix::sim {

/// `open`: nothing drives; a pull-up or another driver decides.
enum class level : std::uint8_t { low, high, open };

class part {
public:
    virtual ~part() = default;

    /// Pins of the package, an even number; pin 1 is index 0 everywhere.
    virtual int pins() const = 0;
    /// Indices of the supply pins; negative if there is none.
    virtual int vcc_pin() const = 0;
    virtual int gnd_pin() const = 0;

    /// The supply was switched on: registers get their state at power up.
    virtual void power_up() = 0;
    /// `nodes` is the level at each pin as the part sees it, never `open`; `drives` receives what the part drives at
    /// each pin, `open` if nothing. Clock edges are differences to the `nodes` of the previous call. Called again until
    /// nothing changes, since outputs may be wired to inputs.
    virtual void settle(std::span<const level> nodes, std::span<level> drives) = 0;

    /// Pairs of pins that are connected inside, as on a test board.
    virtual std::span<const std::pair<int, int>> links() const { return {}; }
    /// The highest voltage that a pin tolerates.
    virtual std::int32_t highest_millivolts(int /*pin*/) const { return 7000; }
};

/// Makes parts of one kind, each a new one.
using part_source = std::function<std::unique_ptr<part>()>;
/// Finds a kind of part by name. Throws std::exception with the reason if there is none of that name.
using part_shelf = std::function<part_source(std::string_view name)>;

}  // namespace tamrix::sim
