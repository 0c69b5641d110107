// One run of the rows in `ttlvect`: what all engines are given, and what they compare and report alike.
#pragma once

#include "ttl/run/alphabet.h"
#include "ttl/run/row_report.h"
#include "ttl/run/supply.h"
#include "ttl/run_outcome.h"
#include "ttl/ttl_variables.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace tamrix {

class session;

struct vector_run {
    session& plug_in;
    ttl_variables& ttl;
    std::int16_t rows;       // row count plus one
    std::int16_t pins;       // of the device
    std::int16_t stopfirst;  // -1: end at the first failing position, silently; 0: report failures
    std::uint8_t logmode;    // not 0: report into MainRtstr(0) and go on; 0: ask in a box

    int row_count() const { return rows - 1; }
    /// Row `j` as it is stored, 48 characters.
    std::string_view stored_row(int j) const { return ttl.ttlvect(static_cast<std::size_t>(j)); }
    /// Row `j` with one letter a pin.
    std::string_view row(int j) const { return stored_row(j).substr(0, static_cast<std::size_t>(pins < 0 ? 0 : pins)); }
    /// Whether the engine powers the device by the letters of row 0; else the device data of the host do.
    bool powers_the_device() const { return ttl.wnote == 0; }
    supply_pins supply() const { return supply_of_row(stored_row(0), pins); }
};

struct compared_row {
    int j;  // from 0
    bool failed;
    std::string result;  // with its fail marks, as it is to be shown
};

enum class after_row : std::uint8_t { go_on, start_again, end };

/// What a row does to its run, whose `outcome` begins as passed: counts and reports it where it failed, and says how
/// the run goes on. `indent` goes before the second line of the report's box.
after_row judge_row(const vector_run& run, const compared_row& compared, run_outcome& outcome,
                    std::string_view indent = {});

}  // namespace tamrix
