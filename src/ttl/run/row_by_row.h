// A run that drives, reads and compares one row after the other.
#pragma once

#include "ttl/run/vector_run.h"

#include <string>
#include <string_view>

namespace tamrix {

/// One kind of pin electronics under such a run.
class immediate_pins {
public:
    virtual ~immediate_pins() = default;

    /// Drives a row with its clocks. False where the programmer did not take it.
    virtual bool drive(std::string_view row, const supply_pins& supply) = 0;
    /// Reads the socket back. False where no reply came.
    virtual bool read() = 0;
    /// Compares the row just played. True where it failed; `result` becomes the row to show.
    virtual bool compare(std::string_view row, std::string& result) const = 0;
    /// Releases all ports. False where the programmer did not take it.
    virtual bool release() = 0;
};

run_outcome run_row_by_row(const vector_run& run, immediate_pins& pins);

/// The same with pin electronics that are made for this run.
template <class Electronics>
run_outcome run_row_by_row(const vector_run& run)
{
    Electronics electronics{run};
    return run_row_by_row(run, electronics);
}

}  // namespace tamrix
