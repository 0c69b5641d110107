// A plug-in with rows in work and an engine to play them.
#pragma once

#include "ttl/run/engines.h"
#include "ttl/ttl_fixture.h"

#include <cstdint>
#include <string>
#include <vector>

namespace tamrix::tests {

inline const std::string passing = "00H00HGH00H00V";
inline const std::string failing = "00L00HGH00H00V";  // what the socket shows then

struct engine_fixture : ttl_fixture {
    engine_fixture(std::int16_t modeltype, bool usb) { use_model(modeltype, usb); }

    /// True where the run ended in failure.
    bool run(run_outcome (*engine)(tamrix::session&, ttl_variables&, std::int16_t, std::int16_t, std::int16_t,
                                   std::uint8_t),
             std::int16_t stopfirst = 0, std::uint8_t logmode = 0)
    {
        outcome = engine(session, variables.ttl, variables.ttl.ttlcnt, variables.ttl.ttlpin, stopfirst, logmode);
        return outcome.ended_in_failure();
    }
    /// The numbers of the rows that the last run reported as failed.
    std::vector<int> failed_rows() const
    {
        std::vector<int> numbers;
        for (const failed_row& row : outcome.rows) numbers.push_back(row.number);
        return numbers;
    }
    std::uint8_t& prgresult() { return session.blocks.prgresult(0); }
    /// Time goes on while something waits.
    void let_time_pass()
    {
        shell.on_doevents = [this] { shell.advance(0.1); };
    }

    run_outcome outcome;
};

}  // namespace tamrix::tests
