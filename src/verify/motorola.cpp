#include "verify/findings.h"
#include "verify/hex_record.h"
#include "verify/plain_records.h"
#include "verify/record_lines.h"
#include "verify/verifiers.h"

#include "base/arith.h"

#include <algorithm>
#include <cstddef>
#include <string>

namespace tamrix {

namespace {

constexpr std::size_t digits_at = 2;

/// S1, S2 and S3 have addresses of two, three and four bytes.
constexpr unsigned address_bytes_of(unsigned type) { return type + 1; }

/// Data of the same type as those ahead of them.
template <unsigned type>
struct plain_kind {
    static constexpr std::size_t address_bytes = address_bytes_of(type), head_bytes = 1 + address_bytes,
                                 other_bytes = address_bytes + 1;
    static constexpr unsigned good_sum = 0xFF;
    static constexpr char mark[2] = {'S', static_cast<char>('0' + type)};

    static std::uint64_t address(std::uint64_t head, std::size_t length)
    {
        std::uint64_t first = 0;
        for (std::size_t i = 1; i <= address_bytes; ++i) first = first << 8 | (head >> 8 * i & 0xFF);
        return first + length <= std::uint64_t{1} << 8 * address_bytes ? first : no_address;
    }
};

class motorola_verifier {
public:
    motorola_verifier(byte_source& from, const std::string& name, data_taker& data) : lines_{from}, found_{name, data}
    {}
    verification read();

private:
    void take_plain();
    void take_line();
    void take_record(unsigned type, const hex_record& record, bool sound);
    void take_header(const hex_record& record, bool sound);
    void take_data(unsigned type, const hex_record& record, bool sound);
    void take_count(unsigned type, const hex_record& record, bool sound);
    void take_end(unsigned type, const hex_record& record, bool sound);
    bool expect_length(const hex_record& record, unsigned expected, bool at_least, bool sound);
    file_place here() const { return in_line(lines_.number()); }

    record_lines lines_;
    findings found_;
    std::uint64_t data_records_ = 0;
    unsigned type_ = 0;    // of the last data record
    unsigned widest_ = 0;  // of all data records
    bool header_met_ = false;
    bool counted_ = false;  // by a record of their count; nothing is missing then, even without an end record
    bool end_met_ = false;
    bool ended_ = false;
};

verification motorola_verifier::read()
{
    for (;;) {
        take_plain();
        if (!lines_.next()) break;
        take_line();
        if (ended_) break;
    }
    if (ended_) {
        expect_no_more(lines_, found_);
    } else if (!end_met_ && !counted_) {
        found_.remark(in_line(lines_.number() + 1), "the end of the file", "an end record, S7, S8 or S9");
    }
    return found_.result();
}

void motorola_verifier::take_plain()
{
    if (counted_) return;
    switch (type_) {
    case 1: data_records_ += take_plain_records(plain_kind<1>{}, lines_, found_); break;
    case 2: data_records_ += take_plain_records(plain_kind<2>{}, lines_, found_); break;
    case 3: data_records_ += take_plain_records(plain_kind<3>{}, lines_, found_); break;
    default: break;
    }
}

void motorola_verifier::take_line()
{
    const std::string_view text = lines_.text();
    if (!is_whole_line(lines_, found_) || is_blank(text)) return;
    if (!text.starts_with('S')) return found_.remark(here(), character_text(text, 0), "'S'");
    if (text.size() < digits_at || text[1] < '0' || text[1] > '9' || text[1] == '4') {
        return found_.remark(here(), "record type " + std::string{text.substr(0, digits_at)}, "S0 to S3 or S5 to S9");
    }
    const auto type = static_cast<unsigned>(text[1] - '0');
    if (type >= 1 && type <= 3) ++data_records_;
    end_met_ = end_met_ || type >= 7;
    const hex_record record{text, digits_at};
    if (!record.has(1, found_, here())) return;
    const std::size_t checksum_at = record[0];
    if (checksum_at == 0) return found_.remark(here(), "count 00", "03 or more");
    if (!record.has(checksum_at + 1, found_, here())) return;
    const bool sound = record.expect_checksum(~record.sum(checksum_at) & 0xFF, checksum_at, found_, here());
    if (sound) record.expect_end_after(checksum_at + 1, found_, here());
    take_record(type, record, sound);
}

/// A damaged record is used as far as it can be read. One remark has been made on it, and there are no others.
void motorola_verifier::take_record(unsigned type, const hex_record& record, bool sound)
{
    switch (type) {
    case 0: return take_header(record, sound);
    case 1:
    case 2:
    case 3: return take_data(type, record, sound);
    case 5:
    case 6: return take_count(type, record, sound);
    default: return take_end(type, record, sound);
    }
}

bool motorola_verifier::expect_length(const hex_record& record, unsigned expected, bool at_least, bool sound)
{
    if (at_least ? record[0] >= expected : record[0] == expected) return true;
    if (sound) {
        found_.remark(here(), "count " + arith::hex_fixed(record[0], 2),
                      arith::hex_fixed(expected, 2) + (at_least ? " or more" : ""));
    }
    return false;
}

/// There is one at most, ahead of all data: a data record whose type is damaged looks like another.
void motorola_verifier::take_header(const hex_record& record, bool sound)
{
    if (!expect_length(record, 3, true, sound)) return;
    if (sound && (header_met_ || type_ != 0)) {
        found_.remark(here(), "a header record", header_met_ ? "one header at most" : "a header ahead of the data");
    }
    if (!header_met_) {
        const auto text = record.bytes(3, record[0] - 3);
        found_.header().assign(text.begin(), text.end());
    }
    header_met_ = true;
}

/// Kinds may change where addresses grow longer. The other way round it is a damaged type that looks so.
void motorola_verifier::take_data(unsigned type, const hex_record& record, bool sound)
{
    const unsigned address_bytes = address_bytes_of(type);
    if (!expect_length(record, address_bytes + 1, true, sound)) return;
    if (sound && type < type_) {
        found_.remark(here(), "record type S" + std::to_string(type), "S" + std::to_string(type_));
    } else if (sound && counted_) {
        found_.remark(here(), "data after the count of records", "an end record");
    }
    counted_ = false;
    type_ = type;
    widest_ = std::max(widest_, type);
    // A short address is that of the first byte alone; srec_cat begins the longer ones after a record that passes 64
    // KiB.
    constexpr memory_segment room{0, std::uint64_t{1} << 32};
    found_.take_in(room, here(), record.number(1, address_bytes),
                   record.bytes(1 + address_bytes, record[0] - address_bytes - 1));
}

void motorola_verifier::take_count(unsigned type, const hex_record& record, bool sound)
{
    counted_ = true;
    const unsigned width = type == 5 ? 2 : 3;
    if (!expect_length(record, width + 1, false, sound) || !sound) return;
    const std::uint64_t count = record.number(1, width),
                        expected = data_records_ & ((std::uint64_t{1} << 8 * width) - 1);
    if (count == expected) return;
    found_.remark(here(), "a count of " + std::to_string(count) + " records", std::to_string(data_records_));
}

void motorola_verifier::take_end(unsigned type, const hex_record& record, bool sound)
{
    const unsigned data_type = 10 - type;
    const unsigned address_bytes = address_bytes_of(data_type);
    ended_ = sound;
    if (!expect_length(record, address_bytes + 1, false, sound)) return;
    if (sound && widest_ != 0 && data_type != widest_) {
        found_.remark(here(), "record type S" + std::to_string(type), "S" + std::to_string(10 - widest_));
    }
    // 0 is what a file without a start address has there.
    if (const std::uint64_t start = record.number(1, address_bytes)) found_.start_address() = start;
}

}  // namespace

verification verify_motorola(byte_source& from, const std::string& name, data_taker& data)
{
    return motorola_verifier{from, name, data}.read();
}

}  // namespace tamrix
