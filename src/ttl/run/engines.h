// The four engines that play the rows in `ttlvect` on the socket, compare what comes back, and report. Each returns the
// outcome of the run.
#pragma once

#include "ttl/run_outcome.h"
#include "ttl/ttl_variables.h"

#include <cstdint>

namespace tamrix {

class session;

/// 48 positions, row by row, on both routes.
run_outcome runport(session& plug_in, ttl_variables& ttl, std::int16_t rows, std::int16_t pins, std::int16_t stopfirst,
                    std::uint8_t logmode);
/// 40 positions, row by row over USB.
run_outcome runport40(session& plug_in, ttl_variables& ttl, std::int16_t rows, std::int16_t pins,
                      std::int16_t stopfirst, std::uint8_t logmode);
/// 48 positions, all rows as one script over USB. Not played while `prgresult(0)` is 3: a communication error is there
/// that only the caller can clear.
run_outcome runbatch(session& plug_in, ttl_variables& ttl, std::int16_t rows, std::int16_t pins, std::int16_t stopfirst,
                     std::uint8_t logmode);
/// The same for 40 positions.
run_outcome runbatch40(session& plug_in, ttl_variables& ttl, std::int16_t rows, std::int16_t pins,
                       std::int16_t stopfirst, std::uint8_t logmode);

/// The engine of the logic IC test for the model and route in use.
run_outcome run_library_vectors(session& plug_in, ttl_variables& ttl, std::int16_t rows, std::int16_t pins,
                                std::int16_t stopfirst, std::uint8_t logmode);

}  // namespace tamrix
