#include "transfer/file_io.h"
#include "transfer/rwfile/intel.h"
#include "transfer/rwfile/intel_record.h"

#include "base/arith.h"

#include <cstring>
#include <limits>

namespace tamrix {

namespace {

/// The walk over one file. Text around records is passed over.
class intel_reader {
public:
    intel_reader(transfer_job& job, std::span<const std::uint8_t> file)
        : job_{job},
          file_{file},
          at_{job.plug_in.transfer},
          buffer_{job.plug_in.blocks.ibuffer.span()},
          buflength_{job.plug_in.blocks.buflength(0)},
          devbytes_{job.plug_in.devbytes()},
          pace_{file.size() / 10},
          next_mark_{pace_ != 0 ? 0 : std::numeric_limits<std::size_t>::max()}
    {}

    status walk();

private:
    enum class step { go_on, end, failed };

    std::size_t find_colon(std::size_t from);
    void visit(std::size_t from, std::size_t to);
    step take_record(std::size_t& p, const intel_head& head);
    step take_extension(std::size_t& p, unsigned paragraph_bytes);
    step take_data(std::size_t& p, const intel_head& head);
    bool store_run(std::size_t digits, std::int64_t index, std::int64_t count, unsigned& sum);
    bool compare_checksum(std::size_t record, std::size_t at, unsigned sum);
    void note_checksum_error(std::size_t record, unsigned found, unsigned expected);
    step fail(std::size_t offset, std::string found, std::string expected);

    transfer_job& job_;
    std::span<const std::uint8_t> file_;
    const transfer_variables& at_;
    std::span<std::uint8_t> buffer_;
    std::int64_t buflength_, devbytes_;
    std::size_t pace_, next_mark_;
    std::int64_t extension_ = 0;
    std::uint64_t records_ = 0;  // data records
    unsigned checksum_errors_ = 0;
    diagnostic first_checksum_error_;
};

status intel_reader::walk()
{
    for (std::size_t p = find_colon(0); p < file_.size(); p = find_colon(p)) {
        const auto head = intel_head_at(file_, p);
        if (!head) {
            ++p;
            continue;
        }
        const step next = take_record(p, *head);
        if (next == step::failed) return status::failed;
        if (next == step::end) break;
    }
    if (checksum_errors_ == 0) return status::done;
    job_.plug_in.why_it_failed = first_checksum_error_;
    return status::failed;
}

std::size_t intel_reader::find_colon(std::size_t from)
{
    if (from > file_.size()) return file_.size();
    const void* found = from < file_.size() ? std::memchr(&file_[from], ':', file_.size() - from) : nullptr;
    const auto at = found != nullptr ? static_cast<std::size_t>(static_cast<const std::uint8_t*>(found) - file_.data())
                                     : file_.size();
    visit(from, at);
    return at;
}

/// Progress moves when the walk stands on an exact tenth of the file; a record that jumps over one does not count.
void intel_reader::visit(std::size_t from, std::size_t to)
{
    while (next_mark_ < from) next_mark_ += pace_;
    for (; next_mark_ <= to; next_mark_ += pace_) job_.progress(10.0 * static_cast<double>(next_mark_ / pace_));
}

intel_reader::step intel_reader::take_record(std::size_t& p, const intel_head& head)
{
    switch (head.type) {
    case 0x00: return take_data(p, head);
    case 0x01: return step::end;  // the rest of the file is not read; a checksum error before it still counts
    case 0x02: return take_extension(p, 16);
    case 0x04: return take_extension(p, 65536);
    case 0x03:
    case 0x05: ++p; return step::go_on;  // start addresses mean nothing to a buffer
    default: return fail(p, "record type " + arith::hex_fixed(head.type, 2), "00 to 05");
    }
}

intel_reader::step intel_reader::take_extension(std::size_t& p, unsigned paragraph_bytes)
{
    constexpr std::size_t extension_record_length = 15;
    const std::size_t digits = p + 9;
    std::int64_t value = 0;
    for (std::size_t i = digits; i < digits + 4; ++i) {
        const int digit = i < file_.size() ? hex_digits::digit(file_[i]) : 0xFF;
        if (digit > 15) return fail(p, "a damaged extended address", "four hexadecimal digits");
        value = value * 16 + digit;
    }
    extension_ = value * paragraph_bytes;
    p += extension_record_length;
    return step::go_on;
}

intel_reader::step intel_reader::take_data(std::size_t& p, const intel_head& head)
{
    const std::size_t record = p;
    const std::int64_t relative = extension_ + head.address - at_.filestart;
    if (relative < 0) {
        ++p;
        return step::go_on;
    }
    p += 11 + 2 * std::size_t{head.length};
    const std::int64_t skip = ((at_.filephase + at_.filestep) - relative % at_.filestep) % at_.filestep;
    const std::int64_t b = at_.bufphase + at_.bufstep * (relative / at_.filestep) + skip * (relative % at_.filestep);
    if (b > devbytes_) return step::go_on;
    ++records_;

    const std::int64_t first_index = at_.bufstart + b;
    const std::int64_t count = (static_cast<std::int64_t>(head.length) + at_.filestep - 1 - skip) / at_.filestep;
    std::size_t digits = record + 9 + 2 * static_cast<std::size_t>(skip);
    unsigned sum = head.sum();
    if (!store_run(digits, first_index, count, sum)) {
        for (std::int64_t i = 0; i < count; ++i, digits += 2 * static_cast<std::size_t>(at_.filestep)) {
            const std::int64_t index = first_index + at_.bufstep * i;
            if (index > buflength_) return step::go_on;  // the record stops here, and is not compared
            if (digits + 1 >= file_.size()) return fail(record, "a record that ends early", "its data");
            const int value = hex_digits::byte(&file_[digits]);
            if (value < 0) return fail(record, "a data byte that is not hexadecimal", "two digits");
            sum += job_.plug_in.blocks.ibuffer(index) = static_cast<std::uint8_t>(value);
        }
    } else {
        digits += 2 * static_cast<std::size_t>(count);
    }
    const bool readable = at_.filestep != 1 || compare_checksum(record, digits, sum);
    return readable ? step::go_on : fail(record, "a record that ends early", "its checksum");
}

/// The common case, a run of bytes that lands whole: decodes it at one stroke. False where anything is unusual; then
/// nothing is counted into `sum`, and the careful loop goes over it.
bool intel_reader::store_run(std::size_t digits, std::int64_t index, std::int64_t count, unsigned& sum)
{
    const std::int64_t end = index + count;
    if (at_.filestep != 1 || at_.bufstep != 1 || end > buflength_ + 1 ||
        end > static_cast<std::int64_t>(buffer_.size()) ||
        digits + 2 * static_cast<std::size_t>(count) > file_.size()) {
        return false;
    }
    unsigned with_data = sum;
    constexpr std::size_t most = 255;
    std::uint8_t decoded[most + 1];
    const auto n = static_cast<std::size_t>(count);
    if (!hex_digits::decode(file_.data() + digits, n, decoded, with_data)) return false;
    std::memcpy(buffer_.data() + index, decoded, n);
    sum = with_data;
    return true;
}

/// False where the file ends before the checksum. Compared only without byte selection: otherwise the sum covers part
/// of the record.
bool intel_reader::compare_checksum(std::size_t record, std::size_t at, unsigned sum)
{
    if (at + 1 >= file_.size()) return false;
    const int found = hex_digits::byte(&file_[at]);
    const unsigned expected = (0x100 - (sum & 0xFF)) & 0xFF;
    if (found != static_cast<int>(expected)) note_checksum_error(record, static_cast<unsigned>(found), expected);
    return true;
}

void intel_reader::note_checksum_error(std::size_t record, unsigned found, unsigned expected)
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
    const bool digits = found <= 0xFF;
    fail_in_text(job_, file_, record,
                 digits ? "checksum " + arith::hex_fixed(found, 2) : "a checksum that is not hexadecimal",
                 arith::hex_fixed(expected, 2));
    first_checksum_error_ = job_.plug_in.why_it_failed;
}

intel_reader::step intel_reader::fail(std::size_t offset, std::string found, std::string expected)
{
    fail_in_text(job_, file_, offset, std::move(found), std::move(expected));
    return step::failed;
}

}  // namespace

status read_intel(transfer_job& job)
{
    const file_image image{job.plug_in.fname};
    return intel_reader{job, image.bytes()}.walk();
}

}  // namespace tamrix
