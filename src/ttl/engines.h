// The four engines that play the rows in `ttlvect` on the socket, compare what comes back, and report. Each yields true
// where the run ended in failure.
#pragma once

#include "plugin/session.h"

#include <cstdint>

namespace tamrix {

/// 48 positions, row by row, on both routes.
bool runport(session& plug_in, std::int16_t rows, std::int16_t pins, std::int16_t stopfirst, std::uint8_t logmode);
/// 40 positions, row by row over USB.
bool runport40(session& plug_in, std::int16_t rows, std::int16_t pins, std::int16_t stopfirst, std::uint8_t logmode);
/// 48 positions, all rows as one script over USB. `prgresult(0)` at 3 keeps it from doing anything.
bool runbatch(session& plug_in, std::int16_t rows, std::int16_t pins, std::int16_t stopfirst, std::uint8_t logmode);
/// The same for 40 positions.
bool runbatch40(session& plug_in, std::int16_t rows, std::int16_t pins, std::int16_t stopfirst, std::uint8_t logmode);

/// The engine of the logic IC test for the model and route in use.
bool run_library_vectors(session& plug_in, std::int16_t rows, std::int16_t pins, std::int16_t stopfirst,
                         std::uint8_t logmode);

}  // namespace tamrix
