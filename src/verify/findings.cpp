#include "verify/findings.h"

#include "base/arith.h"

#include <algorithm>
#include <utility>

namespace tamrix {

namespace {

std::string address_text(std::uint64_t address)
{
    if (address > 0xFFFFFFFF) return arith::hex(static_cast<std::int64_t>(address));
    return arith::hex_fixed(address, address > 0xFFFF ? 8 : 4);
}

}  // namespace

void findings::remark(file_place where, std::string found, std::string expected)
{
    found_.add({name_, where.line, where.offset, std::move(found), std::move(expected)});
}

/// Whether there is room for it at the end of the data that wait, or of none.
bool findings::joins_run(memory_segment added)
{
    if (added.first == run_end_ && added.end() <= free_until_ && used_ + added.length <= run_bytes) return true;
    flush();
    run_end_ = added.first;
    free_until_ = filled_.free_until(added.first);
    return added.end() <= free_until_ && added.length <= run_bytes;
}

void findings::flush()
{
    if (used_ == 0) return;
    const std::uint64_t first = run_end_ - used_;
    filled_.add({first, used_});
    found_.record_bytes += used_;
    data_.take(first, {run_.data(), std::exchange(used_, 0)});
}

void findings::take(file_place where, std::uint64_t address, std::span<const std::uint8_t> bytes)
{
    if (bytes.empty()) return;
    const memory_segment added{address, bytes.size()};
    if (joins_run(added)) {
        std::ranges::copy(bytes, run_.data() + used_);
        used_ += bytes.size();
        run_end_ += bytes.size();
        return;
    }
    if (const auto twice = filled_.filled_in(added)) {
        remark(where, "data for " + address_text(twice->first) + " to " + address_text(twice->end() - 1) +
                          ", which has data of an earlier record");
    }
    filled_.add(added);
    free_until_ = run_end_ = added.end();
    found_.record_bytes += bytes.size();
    data_.take(address, bytes);
}

void findings::take_in(memory_segment room, file_place where, std::uint64_t address,
                       std::span<const std::uint8_t> bytes)
{
    const std::uint64_t fitting = room.end() - address;
    if (bytes.size() <= fitting) return take(where, address, bytes);
    remark(where, "data up to " + address_text(address + bytes.size() - 1), "at most " + address_text(room.end() - 1));
    take(where, address, bytes.first(static_cast<std::size_t>(fitting)));
    take(where, room.first, bytes.subspan(static_cast<std::size_t>(fitting)));
}

verification findings::result()
{
    flush();
    if (found_.record_bytes == 0) remark({}, "no data");
    found_.segments = filled_.list();
    return std::move(found_);
}

}  // namespace tamrix
