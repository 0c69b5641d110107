#include "transfer/transfer_report.h"

#include "base/arith.h"
#include "files/file_io.h"
#include "session/session.h"

namespace tamrix {

void report_transfer(session& plug_in, const std::string& fname, status outcome, int ok_message, int fail_message,
                     double seconds)
{
    auto status_text = plug_in.blocks.MainRtstr(0);
    if (outcome == status::done) {
        status_text += plug_in.text(ok_message) + " Time:" + file_time_text(fname) + "\n";
    } else {
        status_text += plug_in.text(fail_message) + "\n";
    }
    status_text += ">> " + arith::two_decimals(seconds) + "Sec\n";
}

bool is_hex_key(char32_t key)
{
    return (key >= U'0' && key <= U'9') || (key >= U'A' && key <= U'F') || (key >= U'a' && key <= U'f') || key == U'\b';
}

}  // namespace tamrix
