#include "files/text_output.h"
#include "formats/buffer_range.h"
#include "formats/motorola.h"

#include <array>

namespace tamrix {

namespace {

std::uint8_t byte_of(std::uint32_t value, int place) { return static_cast<std::uint8_t>(value >> 8 * place); }

}  // namespace

/// Only "S3" records; the address is the buffer address, so a save from the middle keeps it.
status write_motorola(transfer_job& job)
{
    constexpr std::int64_t record_bytes = 32;
    constexpr unsigned address_and_checksum = 5;
    const transfer_variables& at = job.transfer;
    text_output out{job.transfer.fname};
    for (std::int64_t done = 0; done < at.savelength; done += record_bytes) {
        const auto data = buffer_bytes(job.plug_in, at.bufstart + done, std::min(at.savelength - done, record_bytes));
        const auto address = static_cast<std::uint32_t>(at.bufstart + done);
        const std::array<std::uint8_t, 5> head{static_cast<std::uint8_t>(data.size() + address_and_checksum),
                                               byte_of(address, 3), byte_of(address, 2), byte_of(address, 1),
                                               byte_of(address, 0)};
        unsigned sum = 0;
        out.text("S3");
        out.bytes(head, sum);
        out.bytes(data, sum);
        out.byte(0xFF - (sum & 0xFF));
        out.end_line();
    }
    out.text("S70500000000FA");
    out.end_line();
    out.close();
    return status::done;
}

}  // namespace tamrix
