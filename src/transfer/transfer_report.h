// The lines that a load or save leaves in the host's status text, and the key filter of the address boxes.
#pragma once

#include "formats/transfer_job.h"

#include <string>

namespace tamrix {

class session;

/// Appends the OK or the fail line, and the line with the seconds it took, to MainRtstr(0).
void report_transfer(session& plug_in, const std::string& fname, status outcome, int ok_message, int fail_message,
                     double seconds);

/// Hexadecimal digits and backspace pass.
bool is_hex_key(char32_t key);

}  // namespace tamrix
