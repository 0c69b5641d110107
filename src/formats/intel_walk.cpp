#include "formats/intel_walk.h"

#include "base/arith.h"
#include "session/session.h"

#include <limits>
#include <utility>

namespace tamrix {

intel_walk::intel_walk(transfer_job& job, std::size_t longest_record, std::int64_t extension_stride)
    : job_{job},
      file_{job.transfer.fname},
      at_{job.transfer},
      buflength_{job.plug_in.blocks.buflength(0)},
      devbytes_{job.plug_in.devbytes()},
      longest_record_{longest_record},
      extension_stride_{extension_stride},
      pace_{file_.length() / 10},
      next_mark_{pace_ != 0 ? 0 : std::numeric_limits<std::int64_t>::max()}
{}

status intel_walk::walk()
{
    for (p_ = find_colon(0); p_ < file_.length(); p_ = find_colon(p_)) {
        const text_view record = file_.from(p_, longest_record_);
        const auto head = intel_head_of(record);
        if (!head) {
            ++p_;
            continue;
        }
        const step next = take_record(*head, record);
        if (next == step::failed) return status::failed;
        if (next == step::end) break;
    }
    return outcome();
}

std::int64_t intel_walk::find_colon(std::int64_t from)
{
    const std::int64_t at = file_.find(':', from);
    if (from <= file_.length()) visit(from, at);
    return at;
}

/// Progress moves when the walk is at an exact tenth of the file; a record that jumps over one does not count.
void intel_walk::visit(std::int64_t from, std::int64_t to)
{
    while (next_mark_ < from) next_mark_ += pace_;
    for (; next_mark_ <= to; next_mark_ += pace_) job_.progress(10.0 * static_cast<double>(next_mark_ / pace_));
}

intel_walk::step intel_walk::take_record(const intel_head& head, text_view record)
{
    switch (head.type) {
    case 0x00: return take_data(head, record);
    case 0x01: return step::end;  // the rest of the file is not read; a checksum error before it still counts
    case 0x02: return take_extension(record, 16);
    case 0x04: return take_extension(record, 65536);
    case 0x03:
    case 0x05: ++p_; return step::go_on;  // start addresses mean nothing to a buffer
    default: return fail("record type " + arith::hex_fixed(head.type, 2), "00 to 05");
    }
}

intel_walk::step intel_walk::take_extension(text_view record, unsigned paragraph_bytes)
{
    std::uint8_t value[2];
    unsigned sum = 0;
    if (record.size() < digits_at + 4 || !hex_digits::decode(&record[digits_at], 2, value, sum)) {
        return fail("a damaged extended address", "an address of four digits");
    }
    extension_ = std::int64_t{value[0] * 256 + value[1]} * paragraph_bytes;
    p_ += extension_stride_;
    return step::go_on;
}

intel_walk::step intel_walk::fail(std::string found, std::string expected)
{
    fail_in_text(job_, file_, p_, std::move(found), std::move(expected));
    return step::failed;
}

intel_selection select_in_record(const transfer_variables& at, std::int64_t relative)
{
    if (at.filestep == 1) return {0, at.bufphase + at.bufstep * relative};
    const std::int64_t stride = at.filestep;
    const std::int64_t remainder = relative % stride;
    const std::int64_t skip = (at.filephase + stride - remainder) % stride;
    return {skip, at.bufphase + at.bufstep * (relative / stride) + skip * remainder};
}

}  // namespace tamrix
