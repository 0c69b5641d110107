#include "files/text_output.h"
#include "formats/buffer_range.h"
#include "formats/tektronix.h"
#include "formats/text_digits.h"

namespace tamrix {

/// Both checks add digits, not bytes. The address holds the low 16 bits; the dialog keeps these files to 64 KiB.
status write_tektronix(transfer_job& job)
{
    constexpr std::int64_t record_bytes = 32;
    const transfer_variables& at = job.transfer;
    text_output out{job.transfer.fname};
    for (std::int64_t done = 0; done < at.savelength; done += record_bytes) {
        const std::int64_t address = at.bufstart + done;
        const auto data = buffer_bytes(job.plug_in, address, std::min(at.savelength - done, record_bytes));
        const auto short_address = static_cast<unsigned>(address & 0xFFFF);
        const auto count = static_cast<unsigned>(data.size());
        unsigned data_check = 0;
        for (const std::uint8_t value : data) data_check += digit_sum(value);
        unsigned unused = 0;
        out.text("/");
        out.number(short_address, 4);
        out.number(count, 2);
        out.number(digit_sum(short_address) + digit_sum(count), 2);
        out.bytes(data, unused);
        out.number(data_check, 2);
        out.end_line();
    }
    out.text("/0000000000r");
    out.end_line();
    out.close();
    return status::done;
}

}  // namespace tamrix
