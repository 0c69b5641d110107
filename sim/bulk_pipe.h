// The pipe by which bulk reads arrive, behind the reader's back.
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

    /// When it is `when`: writes `data`, then 2 to `status`, and a little later, with `marker`, the end marker behind
    /// the data. `buffer` has room for one byte more than `data` has. A read that is still under way is dropped.
    void start(std::vector<std::uint8_t> data, std::uint8_t* buffer, std::uint8_t* status, microseconds when,
               bool marker);
    /// After this nothing is written any more.
    void cancel();

private:
    std::shared_ptr<clock> time_;
    clock::alarm data_ = 0, marker_ = 0;
};

}  // namespace tamrix::sim
