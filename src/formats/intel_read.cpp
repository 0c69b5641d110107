#include "formats/intel.h"
#include "formats/intel_walk.h"

#include "base/arith.h"
#include "session/session.h"

#include <algorithm>
#include <utility>

namespace tamrix {

namespace {

class intel_reader final : public intel_walk {
public:
    explicit intel_reader(transfer_job& job)
        : intel_walk{job, longest_intel_record, 15}, buffer_{job.plug_in.blocks.ibuffer.span()}
    {}

private:
    step take_data(const intel_head& head, text_view record) override;
    status outcome() override;
    void take_plain_records(text_view text);
    step take_bytes(text_view record, std::size_t digits, std::int64_t index, std::int64_t count, unsigned sum);
    bool compare_checksum(text_view record, std::size_t at, unsigned sum);
    void note_checksum_error(int found, int expected);

    const std::span<std::uint8_t> buffer_;
    address_extent met_;
    std::uint64_t records_ = 0;  // data records
    unsigned checksum_errors_ = 0;
    std::int64_t first_error_ = 0;
    std::string first_found_, first_expected_;
};

/// Takes records of the common kind, one after the other, as far as `text` and the next progress mark allow: data that
/// lands whole, with a correct checksum, and only a line end before the next ":". p_ is then after the last.
void intel_reader::take_plain_records(text_view text)
{
    const std::int64_t start = p_;
    const std::int64_t limit = std::min(buflength_ + 1, static_cast<std::int64_t>(buffer_.size()));
    std::size_t at = 0;
    while (text.size() - at >= longest_intel_record && text[at] == ':' &&
           start + static_cast<std::int64_t>(at) < next_mark()) {
        const auto head = intel_head_of(text.subspan(at));
        if (!head || head->type != 0) return;
        const std::int64_t relative = extension_ + head->address - at_.filestart;
        const std::int64_t b = at_.bufphase + relative;
        const std::int64_t index = at_.bufstart + b;
        if (relative < 0 || b > devbytes_ || index + head->length > limit) return;
        unsigned sum = head->sum();
        const std::size_t checksum = at + digits_at + 2 * std::size_t{head->length};
        if (!hex_digits::decode(&text[at + digits_at], head->length, buffer_.data() + index, sum)) return;
        const int told = hex_digits::byte(&text[checksum]);
        if (told < 0 || ((sum + static_cast<unsigned>(told)) & 0xFF) != 0) return;
        met_.add(extension_ + head->address, head->length);
        ++records_;
        at = checksum + 2;
        p_ = start + static_cast<std::int64_t>(at);
        if (text[at] == '\r') ++at;
        if (at < text.size() && text[at] == '\n') ++at;
    }
}

intel_reader::step intel_reader::take_data(const intel_head& head, text_view record)
{
    if (at_.filestep == 1 && at_.bufstep == 1) {
        const std::int64_t before = p_;
        take_plain_records(record);
        if (p_ != before) return step::go_on;
    }
    met_.add(extension_ + head.address, head.length);
    const std::int64_t relative = extension_ + head.address - at_.filestart;
    if (relative < 0) {
        ++p_;
        return step::go_on;
    }
    const auto [skip, b] = select_in_record(at_, relative);
    const std::int64_t next = p_ + 11 + 2 * std::int64_t{head.length};
    if (b <= devbytes_) {
        ++records_;
        const std::int64_t count =
            at_.filestep == 1 ? head.length : (head.length + at_.filestep - 1 - skip) / at_.filestep;
        const std::size_t digits = digits_at + 2 * static_cast<std::size_t>(skip);
        if (take_bytes(record, digits, at_.bufstart + b, count, head.sum()) == step::failed) return step::failed;
    }
    p_ = next;
    return step::go_on;
}

status intel_reader::outcome()
{
    job_.met = {met_.range(), true};
    if (checksum_errors_ == 0) return status::done;
    return fail_in_text(job_, file_, first_error_, first_found_, first_expected_);
}

intel_reader::step intel_reader::take_bytes(text_view record, std::size_t digits, std::int64_t index,
                                            std::int64_t count, unsigned sum)
{
    for (std::int64_t i = 0; i < count; ++i) {
        if (index > buflength_) return step::go_on;  // the record stops here, and is not compared
        if (digits + 2 > record.size()) return fail("a record that ends early", "its data");
        const int value = hex_digits::byte(&record[digits]);
        if (value < 0) return fail("a data byte that is not hexadecimal", "a byte of two digits");
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

}  // namespace

status read_intel(transfer_job& job) { return intel_reader{job}.walk(); }

}  // namespace tamrix
