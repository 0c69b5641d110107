#include "transfer/file_window.h"
#include "transfer/rwfile/intel.h"
#include "transfer/rwfile/intel_record.h"

#include "base/arith.h"

#include <algorithm>
#include <limits>
#include <utility>

namespace tamrix {

namespace {

using text_view = std::span<const std::uint8_t>;

/// The walk over one file. Text around records is passed over.
class intel_reader {
public:
    explicit intel_reader(transfer_job& job);
    status walk();

private:
    enum class step { go_on, end, failed };

    std::int64_t find_colon(std::int64_t from);
    void visit(std::int64_t from, std::int64_t to);
    step take_record(const intel_head& head, text_view record);
    step take_extension(text_view record, unsigned paragraph_bytes);
    step take_data(const intel_head& head, text_view record);
    step take_bytes(text_view record, std::size_t digits, std::int64_t index, std::int64_t count, unsigned sum);
    bool take_run(text_view record, std::int64_t index, std::int64_t count, unsigned sum);
    bool compare_checksum(text_view record, std::size_t at, unsigned sum);
    void note_checksum_error(int found, int expected);
    step fail(std::string found, std::string expected);

    transfer_job& job_;
    file_window file_;
    const transfer_variables at_;
    const std::span<std::uint8_t> buffer_;
    const std::int64_t buflength_, devbytes_;
    const std::int64_t pace_;
    std::int64_t next_mark_;
    std::int64_t p_ = 0;  // where the walk stands
    std::int64_t extension_ = 0;
    std::uint64_t records_ = 0;  // data records
    unsigned checksum_errors_ = 0;
    std::int64_t first_error_ = 0;
    std::string first_found_, first_expected_;
};

intel_reader::intel_reader(transfer_job& job)
    : job_{job},
      file_{job.plug_in.fname},
      at_{job.plug_in.transfer},
      buffer_{job.plug_in.blocks.ibuffer.span()},
      buflength_{job.plug_in.blocks.buflength(0)},
      devbytes_{job.plug_in.devbytes()},
      pace_{file_.length() / 10},
      next_mark_{pace_ != 0 ? 0 : std::numeric_limits<std::int64_t>::max()}
{}

status intel_reader::walk()
{
    for (p_ = find_colon(0); p_ < file_.length(); p_ = find_colon(p_)) {
        const text_view record = file_.from(p_, longest_intel_record);
        const auto head = intel_head_of(record);
        if (!head) {
            ++p_;
            continue;
        }
        const step next = take_record(*head, record);
        if (next == step::failed) return status::failed;
        if (next == step::end) break;
    }
    if (checksum_errors_ == 0) return status::done;
    return fail_in_text(job_, file_, first_error_, first_found_, first_expected_);
}

/// The next ":" from `from` on. Between two records there is usually nothing but a line end.
std::int64_t intel_reader::find_colon(std::int64_t from)
{
    std::int64_t at = from;
    const text_view near = from < file_.length() ? file_.from(from, 3) : text_view{};
    for (const std::uint8_t character : near.first(std::min<std::size_t>(near.size(), 3))) {
        if (character == ':') {
            visit(from, at);
            return at;
        }
        ++at;
    }
    at = file_.find(':', at);
    if (from <= file_.length()) visit(from, at);
    return at;
}

/// Progress moves when the walk stands on an exact tenth of the file; a record that jumps over one does not count.
void intel_reader::visit(std::int64_t from, std::int64_t to)
{
    while (next_mark_ < from) next_mark_ += pace_;
    for (; next_mark_ <= to; next_mark_ += pace_) job_.progress(10.0 * static_cast<double>(next_mark_ / pace_));
}

intel_reader::step intel_reader::take_record(const intel_head& head, text_view record)
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

intel_reader::step intel_reader::take_extension(text_view record, unsigned paragraph_bytes)
{
    constexpr std::size_t digits = 9, extension_record_length = 15;
    std::uint8_t value[2];
    unsigned sum = 0;
    if (record.size() < digits + 4 || !hex_digits::decode(&record[digits], 2, value, sum)) {
        return fail("a damaged extended address", "four hexadecimal digits");
    }
    extension_ = std::int64_t{value[0] * 256 + value[1]} * paragraph_bytes;
    p_ += extension_record_length;
    return step::go_on;
}

intel_reader::step intel_reader::take_data(const intel_head& head, text_view record)
{
    constexpr std::size_t digits = 9;
    const std::int64_t relative = extension_ + head.address - at_.filestart;
    if (relative < 0) {
        ++p_;
        return step::go_on;
    }
    const std::int64_t stride = at_.filestep;
    const std::int64_t remainder = stride == 1 ? 0 : relative % stride;
    const std::int64_t skip = stride == 1 ? 0 : (at_.filephase + stride - remainder) % stride;
    const std::int64_t items = stride == 1 ? relative : relative / stride;
    const std::int64_t b = at_.bufphase + at_.bufstep * items + skip * remainder;
    const std::int64_t next = p_ + 11 + 2 * std::int64_t{head.length};
    if (b <= devbytes_) {
        ++records_;
        const std::int64_t count = stride == 1 ? head.length : (head.length + stride - 1 - skip) / stride;
        if (!take_run(record, at_.bufstart + b, count, head.sum())) {
            const auto outcome =
                take_bytes(record, digits + 2 * static_cast<std::size_t>(skip), at_.bufstart + b, count, head.sum());
            if (outcome == step::failed) return outcome;
        }
    }
    p_ = next;
    return step::go_on;
}

/// The common case at one stroke: a run of bytes that lands whole, with a right checksum. False where anything is
/// unusual; the careful loop then goes over the record.
bool intel_reader::take_run(text_view record, std::int64_t index, std::int64_t count, unsigned sum)
{
    constexpr std::size_t digits = 9;
    const std::size_t checksum = digits + 2 * static_cast<std::size_t>(count);
    if (at_.filestep != 1 || at_.bufstep != 1 || index + count > buflength_ + 1 ||
        index + count > static_cast<std::int64_t>(buffer_.size()) || checksum + 2 > record.size()) {
        return false;
    }
    if (!hex_digits::decode(&record[digits], static_cast<std::size_t>(count), buffer_.data() + index, sum))
        return false;
    const int told = hex_digits::byte(&record[checksum]);
    return told >= 0 && ((sum + static_cast<unsigned>(told)) & 0xFF) == 0;
}

intel_reader::step intel_reader::take_bytes(text_view record, std::size_t digits, std::int64_t index,
                                            std::int64_t count, unsigned sum)
{
    for (std::int64_t i = 0; i < count; ++i) {
        if (index > buflength_) return step::go_on;  // the record stops here, and is not compared
        if (digits + 2 > record.size()) return fail("a record that ends early", "its data");
        const int value = hex_digits::byte(&record[digits]);
        if (value < 0) return fail("a data byte that is not hexadecimal", "two digits");
        job_.plug_in.blocks.ibuffer(index) = static_cast<std::uint8_t>(value);
        sum += static_cast<unsigned>(value);
        digits += 2 * static_cast<std::size_t>(at_.filestep);
        index += at_.bufstep;
    }
    const bool readable = at_.filestep != 1 || compare_checksum(record, digits, sum);
    return readable ? step::go_on : fail("a record that ends early", "its checksum");
}

/// False where the file ends before the checksum. Compared only without byte selection: otherwise the sum covers part
/// of the record.
bool intel_reader::compare_checksum(text_view record, std::size_t at, unsigned sum)
{
    if (at + 2 > record.size()) return false;
    const int found = hex_digits::byte(&record[at]);
    const int expected = static_cast<int>((0x100 - (sum & 0xFF)) & 0xFF);
    if (found != expected) note_checksum_error(found, expected);
    return true;
}

void intel_reader::note_checksum_error(int found, int expected)
{
    constexpr unsigned most_told = 15;
    auto status_text = job_.plug_in.blocks.MainRtstr(0);
    ++checksum_errors_;
    if (checksum_errors_ <= most_told) {
        status_text += ">>CheckSum Error! in line " + std::to_string(records_) + "\n";
    } else if (checksum_errors_ == most_told + 1) {
        status_text += ">>............. \n";
    }
    if (checksum_errors_ > 1) return;
    first_error_ = p_;
    first_found_ = found < 0 ? "a checksum that is not hexadecimal"
                             : "checksum " + arith::hex_fixed(static_cast<unsigned>(found), 2);
    first_expected_ = arith::hex_fixed(static_cast<unsigned>(expected), 2);
}

intel_reader::step intel_reader::fail(std::string found, std::string expected)
{
    fail_in_text(job_, file_, p_, std::move(found), std::move(expected));
    return step::failed;
}

}  // namespace

status read_intel(transfer_job& job) { return intel_reader{job}.walk(); }

}  // namespace tamrix
