#include "files/text_output.h"
#include "formats/buffer_range.h"
#include "formats/intel.h"

#include <array>

namespace tamrix {

namespace {

constexpr std::int64_t segment_bytes = 0x10000;
constexpr std::int64_t record_bytes = 32;

unsigned twos_complement(unsigned sum) { return (0x100 - (sum & 0xFF)) & 0xFF; }

void write_segment_line(text_output& out, std::int64_t segment)
{
    const auto value = static_cast<unsigned>(segment);
    out.text(":02000004");
    out.number(value, 4);
    out.number(twos_complement(6 + (value >> 8) + (value & 0xFF)), 2);
    out.end_line();
}

void write_record(text_output& out, std::int64_t offset, std::span<const std::uint8_t> data)
{
    const std::array<std::uint8_t, 4> head{static_cast<std::uint8_t>(data.size()),
                                           static_cast<std::uint8_t>(offset >> 8), static_cast<std::uint8_t>(offset),
                                           0};
    unsigned sum = 0;
    out.text(":");
    out.bytes(head, sum);
    out.bytes(data, sum);
    out.byte(twos_complement(sum));
    out.end_line();
}

}  // namespace

status write_intel(transfer_job& job)
{
    transfer_variables& at = job.transfer;
    text_output out{job.transfer.fname};
    const std::int64_t end = at.bufstart + at.savelength;
    const std::int64_t last_segment = end / segment_bytes;
    std::int64_t segment = at.bufstart / segment_bytes;
    std::int64_t offset = at.bufstart - segment * segment_bytes;
    std::int64_t left = last_segment > segment ? segment_bytes - offset : at.savelength;
    const std::int64_t pace = at.savelength / 320 + 1;  // in records: ten updates in all
    at.savelength += pace;                              // the progress total
    std::int64_t records = 0;

    do {
        write_segment_line(out, segment);
        for (; left > 0; offset += record_bytes, left -= record_bytes) {
            const std::int64_t count = std::min(left, record_bytes);
            const std::int64_t address = segment * segment_bytes + offset;
            write_record(out, offset, buffer_bytes(job.plug_in, address, count));
            if (++records % pace == 0) {
                const auto position = static_cast<double>(10 * record_bytes * records);
                job.progress(10.0 * position / static_cast<double>(at.savelength));
            }
        }
        ++segment;
        offset = 0;
        left = segment < last_segment ? segment_bytes : end - last_segment * segment_bytes;
    } while (segment <= last_segment && left > 0);

    out.text(":00000001FF");
    out.end_line();
    out.close();
    return status::done;
}

}  // namespace tamrix
