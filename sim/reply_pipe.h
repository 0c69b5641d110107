// The pipe by which replies to command frames arrive in `ibuf1`.
#pragma once

#include "programmer/lumbat.h"
#include "sim/faults.h"
#include "sim/journal.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <span>
#include <utility>
#include <vector>

namespace tamrix::sim {

/// What a programmer knows of its host's memory. An empty function: the host has none.
struct reply_place {
    /// Takes a reply that comes in: `ibuf1` first, after it the flag of pipe 0 for one that is `unasked`.
    std::function<void(std::span<const std::uint8_t> reply, bool unasked)> put{};
    /// A byte of `ubuf1`; 0 beyond its end.
    std::function<std::uint8_t(std::size_t index)> ubuf1{};
};

/// Where the memory was handed over; what does not fit is dropped.
reply_place place_in(const hw::reply_memory& memory);

class reply_pipe {
public:
    reply_pipe(reply_place place, fault_set& faults, journal& log)
        : place_{std::move(place)}, faults_{faults}, log_{log}
    {}

    /// The hardware answers. A later reply replaces one that has not arrived yet. `by_itself`: it arrives even if
    /// nobody waits for it, as replies to frames do.
    void send(std::vector<std::uint8_t> bytes, bool by_itself);
    /// Forgets replies that are on their way or have arrived.
    void clear();
    /// Time passes.
    void let_arrive();
    /// Somebody waits. True if a reply has arrived; it is then used up.
    bool receive();
    /// A reply that nobody asked for arrives at once. From any thread.
    void put_by_itself(std::span<const std::uint8_t> bytes) const
    {
        if (place_.put) place_.put(bytes, true);
    }
    /// A byte of the command frame that the host is building; 0 where it shows none.
    std::uint8_t ubuf1(std::size_t index) const { return place_.ubuf1 ? place_.ubuf1(index) : std::uint8_t{0}; }

private:
    void arrive(bool unasked);

    reply_place place_;
    fault_set& faults_;
    journal& log_;
    std::optional<std::vector<std::uint8_t>> on_its_way_;
    bool by_itself_ = false;
    bool came_ = false;
};

}  // namespace tamrix::sim
