#include "formats/intel16.h"
#include "formats/intel_walk.h"

#include "base/arith.h"
#include "session/session.h"

namespace tamrix {

namespace {

class intel16_reader final : public intel_walk {
public:
    explicit intel16_reader(transfer_job& job) : intel_walk{job, longest_intel16_record, 16} {}

private:
    step take_data(const intel_head& head, text_view record) override;
    step take_words(text_view record, std::size_t digits, std::int64_t index, std::int64_t count, unsigned sum);
};

intel16_reader::step intel16_reader::take_data(const intel_head& head, text_view record)
{
    const std::int64_t relative = 2 * (extension_ + head.address - at_.filestart);
    if (relative < 0) {
        ++p_;
        return step::go_on;
    }
    const auto [skip, b] = select_in_record(at_, relative);
    if (b <= devbytes_) {
        const std::int64_t count = (head.length + at_.filestep - 1 - at_.filephase) / at_.filestep;
        const std::size_t digits = digits_at + 2 * static_cast<std::size_t>(skip);
        if (take_words(record, digits, at_.bufstart + b, count, head.sum()) == step::failed) return step::failed;
    }
    // The middle of the record; the search for ":" takes care of the rest.
    p_ += 11 + 2 * std::int64_t{head.length};
    return step::go_on;
}

/// A word has its high byte first in the file and its low byte first in the buffer.
intel16_reader::step intel16_reader::take_words(text_view record, std::size_t digits, std::int64_t index,
                                                std::int64_t count, unsigned sum)
{
    auto& ibuffer = job_.plug_in.blocks.ibuffer;
    for (std::int64_t i = 0; i < count; ++i) {
        if (index > buflength_) return step::go_on;  // the record stops here, and is not compared
        if (digits + 4 > record.size()) return fail("a record that ends early", "its data");
        const int high = hex_digits::byte(&record[digits]);
        const int low = hex_digits::byte(&record[digits + 2]);
        if (high < 0 || low < 0) return fail("a data word that is not hexadecimal", "a word of four digits");
        ibuffer(index + 1) = static_cast<std::uint8_t>(high);
        ibuffer(index) = static_cast<std::uint8_t>(low);
        sum += static_cast<unsigned>(high + low);
        digits += 4 * static_cast<std::size_t>(at_.filestep);
        index += 2 * std::int64_t{at_.bufstep};
    }
    if (at_.filestep != 1) return step::go_on;
    if (digits + 2 > record.size()) return fail("a record that ends early", "its checksum");
    const int found = hex_digits::byte(&record[digits]);
    const unsigned expected = (0x100 - (sum & 0xFF)) & 0xFF;
    if (found == static_cast<int>(expected)) return step::go_on;
    return fail(found < 0 ? "a checksum that is not hexadecimal"
                          : "checksum " + arith::hex_fixed(static_cast<unsigned>(found), 2),
                arith::hex_fixed(expected, 2));
}

}  // namespace

status read_intel16(transfer_job& job) { return intel16_reader{job}.walk(); }

}  // namespace tamrix
