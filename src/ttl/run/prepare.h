// What a logic test does to the programmer before any vector runs.
#pragma once

#include "ttl/ttl_variables.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace tamrix {

class session;

inline constexpr std::int32_t logic_millivolts = 5000;

/// The names of the CMOS families begin with "45", "40" or "NP".
bool is_cmos_name(std::string_view name);
/// boardsel2(3, 45) or (3, 0).
void select_family_board(session& plug_in, bool cmos);
/// On models that select boards by two codes: the board of the device's family.
void select_board(session& plug_in, std::string_view name);
/// Drops everything. False where the hardware is in trouble: hwfault was called then, and the outcome is no_answer.
bool reset_hardware(session& plug_in, ttl_variables& ttl);
/// Adds the outcome to the tests of this call.
void keep_test(ttl_variables& ttl, std::string device);
/// Reset, board, bus mode and 5 V. False where the reset failed; the attempt is over then.
bool prepare_supply(session& plug_in, ttl_variables& ttl, std::string_view name);

}  // namespace tamrix
