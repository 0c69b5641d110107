#include "verify/findings.h"
#include "verify/hex_record.h"
#include "verify/record_lines.h"
#include "verify/verifiers.h"

#include "base/arith.h"

#include <cstddef>
#include <span>
#include <string>

namespace tamrix {

namespace {

// A record in bytes: address, count, header checksum, data, data checksum. The last one has no data and no more.
constexpr std::size_t digits_at = 1, count_at = 2, header_check_at = 3, data_at = 4;

/// As this system ends its files.
constexpr std::string_view own_end = "/0000000000r";

/// Both checksums add up digits.
unsigned digit_sum(std::span<const std::uint8_t> bytes)
{
    unsigned sum = 0;
    for (const unsigned byte : bytes) sum += (byte >> 4) + (byte & 15);
    return sum & 0xFF;
}

class tektronix_verifier {
public:
    tektronix_verifier(byte_source& from, const std::string& name, data_taker& data) : lines_{from}, found_{name, data}
    {}
    verification read();

private:
    void take_line();
    void take_end(const hex_record& record, bool sound);
    void take_data(const hex_record& record, bool sound);
    file_place here() const { return in_line(lines_.number()); }

    record_lines lines_;
    findings found_;
    bool end_met_ = false;
    bool ended_ = false;
};

verification tektronix_verifier::read()
{
    while (!ended_ && lines_.next()) take_line();
    if (ended_) {
        expect_no_more(lines_, found_);
    } else if (!end_met_) {
        found_.remark(in_line(lines_.number() + 1), "the end of the file", "the end record /00000000");
    }
    return found_.result();
}

void tektronix_verifier::take_line()
{
    const std::string_view text = lines_.text();
    if (!is_whole_line(lines_, found_) || is_blank(text)) return;
    if (!text.starts_with('/')) return found_.remark(here(), character_text(text, 0), "'/'");
    if (text.starts_with("//")) return found_.remark(here(), "a record of an aborted transfer", "data");
    const hex_record record{text, digits_at};
    if (!record.has(data_at, found_, here())) return;
    const unsigned expected = digit_sum(record.bytes(0, header_check_at));
    const bool sound = record[header_check_at] == expected;
    if (!sound) {
        found_.remark(here(), "header checksum " + arith::hex_fixed(record[header_check_at], 2),
                      arith::hex_fixed(expected, 2));
    }
    if (record[count_at] == 0) {
        take_end(record, sound);
    } else {
        take_data(record, sound);
    }
}

void tektronix_verifier::take_end(const hex_record& record, bool sound)
{
    end_met_ = true;
    if (!sound) return;
    ended_ = true;
    if (const std::uint64_t start = record.number(0, 2)) found_.start_address() = start;
    if (lines_.text() != own_end) record.expect_end_after(data_at, found_, here());
}

/// Where the header is damaged, its count may be wrong. There is one remark then, and the data as far as they go.
void tektronix_verifier::take_data(const hex_record& record, bool sound)
{
    const std::size_t check_at = data_at + record[count_at];
    if (sound) {
        if (!record.has(check_at + 1, found_, here())) return;
        if (record.expect_checksum(digit_sum(record.bytes(data_at, record[count_at])), check_at, found_, here())) {
            record.expect_end_after(check_at + 1, found_, here());
        }
    } else if (record.size() <= check_at) {
        return;
    }
    found_.take_in({0, 0x10000}, here(), record.number(0, 2), record.bytes(data_at, record[count_at]));
}

}  // namespace

verification verify_tektronix(byte_source& from, const std::string& name, data_taker& data)
{
    return tektronix_verifier{from, name, data}.read();
}

}  // namespace tamrix
