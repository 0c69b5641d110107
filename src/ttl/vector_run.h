// One run of the rows in `ttlvect`: what all engines are given, and what they compare and report alike.
#pragma once

#include "plugin/session.h"
#include "ttl/alphabet.h"
#include "ttl/row_report.h"
#include "ttl/supply.h"

#include <algorithm>
#include <cstdint>
#include <string>
#include <string_view>

namespace tamrix {

struct vector_run {
    session& plug_in;
    std::int16_t rows;       // row count plus one
    std::int16_t pins;       // of the device
    std::int16_t stopfirst;  // -1: end at the first failing position, silently; 0: report failures
    std::uint8_t logmode;    // not 0: report into MainRtstr(0) and go on; 0: ask in a box

    int row_count() const { return rows - 1; }
    /// Row `j` as it is stored, 48 characters.
    std::string_view stored_row(int j) const { return plug_in.ttl.ttlvect(static_cast<std::size_t>(j)); }
    /// Row `j` with one letter a pin.
    std::string_view row(int j) const { return stored_row(j).substr(0, static_cast<std::size_t>(pins < 0 ? 0 : pins)); }
    /// Whether the engine powers the device by the letters of row 0; else the device data of the host do.
    bool powers_the_device() const { return plug_in.wnote == 0; }
    supply_pins supply() const { return supply_of_row(stored_row(0), pins); }
};

/// A result row as it is shown.
inline std::string shown_row(const vector_run& run, std::string text)
{
    text.resize(std::min(text.size(), static_cast<std::size_t>(run.pins < 0 ? 0 : run.pins)));
    return text;
}

}  // namespace tamrix
