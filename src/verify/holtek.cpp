#include "verify/byte_reader.h"
#include "verify/findings.h"
#include "verify/verifiers.h"

#include "base/arith.h"

#include <optional>
#include <string>

namespace tamrix {

namespace {

constexpr std::uint8_t file_mark = 0xC0, segment_mark = 'e';
constexpr std::size_t head_bytes = 3, too_long = 0x8000;
constexpr std::size_t address_bytes = 4, least_length = address_bytes + 1;  // of a segment: address and checksum

unsigned short_at(std::span<const std::uint8_t> bytes) { return bytes[0] + 256u * bytes[1]; }

class holtek_verifier {
public:
    holtek_verifier(byte_source& from, const std::string& name, data_taker& data) : file_{from}, found_{name, data} {}
    verification read();

private:
    bool take_header();
    bool take_segment(bool first);
    bool ended(const std::string& expected);

    byte_reader file_;
    findings found_;
    std::uint64_t second_ = 0;  // where the second segment's data go
};

verification holtek_verifier::read()
{
    if (take_header() && take_segment(true) && take_segment(false)) file_.expect_end(found_);
    return found_.result();
}

bool holtek_verifier::ended(const std::string& expected)
{
    found_.remark(at_offset(file_.at()), "the end of the file", expected);
    return false;
}

bool holtek_verifier::take_header()
{
    const auto head = file_.next(head_bytes);
    if (head.size() < head_bytes) return ended("a header of three bytes");
    if (head[0] != file_mark) found_.remark(at_offset(0), "mark " + arith::hex_fixed(head[0], 2), "C0");
    const std::size_t length = short_at(head.subspan(1));
    if (length >= too_long) {
        found_.remark(at_offset(1), "header length " + arith::hex_fixed(length, 4), "less than 8000");
        return false;
    }
    return file_.next(length).size() == length || ended("the rest of the header");
}

/// False where nothing after it can be found.
bool holtek_verifier::take_segment(bool first)
{
    const std::uint64_t begin = file_.at();
    const auto head = file_.next(head_bytes);
    if (head.size() < head_bytes) return ended(first ? "a segment" : "a second segment");
    if (head[0] != segment_mark) {
        found_.remark(at_offset(begin), "mark " + arith::hex_fixed(head[0], 2), "65, a segment");
        return false;
    }
    const std::size_t length = short_at(head.subspan(1));
    unsigned sum = head[1] + unsigned{head[2]};
    if (length < least_length) {
        found_.remark(at_offset(begin + 1), "segment length " + arith::hex_fixed(length, 4), "0005 or more");
        return false;
    }
    const auto body = file_.next(length);
    if (body.size() < length) return ended("the rest of a segment of " + arith::hex_fixed(length, 4) + " bytes");
    for (const std::uint8_t byte : body) sum += byte;
    if ((sum & 0xFF) != 0) {
        found_.remark(at_offset(begin + head_bytes + length - 1), "checksum " + arith::hex_fixed(body.back(), 2),
                      arith::hex_fixed(body.back() - sum, 2));
    }
    const std::uint64_t address = short_at(body) + (std::uint64_t{short_at(body.subspan(2))} << 16);
    const auto data = body.subspan(address_bytes, length - least_length);
    found_.take(at_offset(begin), first ? address : second_, data);
    // The device decides about the second one, always for a multiple of 256 after the words of the first. Its own
    // address means nothing.
    second_ = (address + data.size() + 0xFF) / 0x100 * 0x100;
    return true;
}

}  // namespace

verification verify_holtek(byte_source& from, const std::string& name, data_taker& data)
{
    return holtek_verifier{from, name, data}.read();
}

}  // namespace tamrix
