#include "transfer/rwfile/buffer_range.h"
#include "transfer/rwfile/motorola.h"
#include "transfer/rwfile/text_output.h"

namespace tamrix {

namespace {

unsigned byte_sum(std::uint32_t value)
{
    return (value >> 24) + (value >> 16 & 0xFF) + (value >> 8 & 0xFF) + (value & 0xFF);
}

}  // namespace

/// Only "S3" records; the address is the buffer address, so a save from the middle keeps it.
status write_motorola(transfer_job& job)
{
    constexpr std::int64_t record_bytes = 32;
    constexpr unsigned address_and_checksum = 5;
    const transfer_variables& at = job.plug_in.transfer;
    text_output out{job.plug_in.fname};
    for (std::int64_t done = 0; done < at.savelength; done += record_bytes) {
        const std::int64_t address = at.bufstart + done;
        const auto data = buffer_bytes(job.plug_in, address, std::min(at.savelength - done, record_bytes));
        const auto count = static_cast<unsigned>(data.size()) + address_and_checksum;
        unsigned sum = count + byte_sum(static_cast<std::uint32_t>(address));
        out.text("S3");
        out.number(count, 2);
        out.number(static_cast<std::uint32_t>(address), 8);
        out.bytes(data, sum);
        out.number(0xFF - (sum & 0xFF), 2);
        out.end_line();
    }
    out.text("S70500000000FA");
    out.end_line();
    out.close();
    return status::done;
}

}  // namespace tamrix
