// The pipe that delivers bulk reads while the reader does other things.
#pragma once

#include "sim/clock.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace tamrix::sim {

class bulk_pipe {
public:
    explicit bulk_pipe(std::shared_ptr<clock> time) : time_{std::move(time)} {}
    ~bulk_pipe() { cancel(); }
    bulk_pipe(const bulk_pipe&) = delete;
    bulk_pipe& operator=(const bulk_pipe&) = delete;

    /// At the time `when`: writes `data`, then 2 to `status`, and a little later, with `marker`, the end marker after
    /// the data. `buffer` is one byte longer than `data`. A read that is still active is dropped.
    void start(std::vector<std::uint8_t> data, std::uint8_t* buffer, std::uint8_t* status, microseconds when,
               bool marker);
    /// Nothing is written after this.
    void cancel();

private:
    std::shared_ptr<clock> time_;
    clock::alarm data_ = 0, marker_ = 0;
};

}  // namespace tamrix::sim
