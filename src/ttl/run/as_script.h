// A run whose rows are queued as one script; nothing is compared until the device is powered off again.
#pragma once

#include "programmer/devobj.h"
#include "ttl/run/vector_run.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace tamrix {

/// One kind of pin electronics under such a run.
class queued_pins {
public:
    virtual ~queued_pins() = default;

    virtual void queue_power_on(const supply_pins& supply) = 0;
    virtual void queue_row(std::string_view row, const supply_pins& supply) = 0;
    virtual void queue_release() = 0;
    /// The time that the hardware gets for the script.
    virtual std::int32_t run_ms() const = 0;
    /// How often the results are asked for before the run counts as failed.
    virtual int attempts_to_fetch() const = 0;
    /// Compares a row with what came back. True where it failed; `result` becomes the row to show.
    virtual bool compare(std::string_view row, const hw::port_bytes& readback, std::string& result) = 0;
    /// Stands before the second line of a report's box.
    virtual std::string_view report_indent() const { return {}; }
};

run_outcome run_as_script(const vector_run& run, queued_pins& pins);

/// The same with pin electronics that are made for this run.
template <class Electronics>
run_outcome run_as_script(const vector_run& run)
{
    Electronics electronics{run};
    return run_as_script(run, electronics);
}

/// One byte for each port, first the address of group 0, then on by 2.
void queue_data(hw::devobj& device, const hw::port_bytes& data);
/// The clocks of a row: C goes high and low again, K low and high.
void queue_clocks(hw::devobj& device, const row_bytes& bytes, const hw::port_bytes& data);
/// The reads of all ports.
void queue_reads(hw::devobj& device);

}  // namespace tamrix
