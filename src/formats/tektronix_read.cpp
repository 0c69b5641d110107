#include "files/text_lines.h"
#include "formats/record_progress.h"
#include "formats/record_target.h"
#include "formats/tektronix.h"
#include "formats/text_digits.h"

#include "base/arith.h"

namespace tamrix {

namespace {

struct tektronix_head {
    unsigned address, count, check;

    unsigned whole_check() const { return digit_sum(address) + digit_sum(count); }
    /// Some writers add up the address alone; both are taken.
    bool checks() const { return check == whole_check() || check == digit_sum(address); }
};

class tektronix_reader {
public:
    explicit tektronix_reader(transfer_job& job)
        : job_{job}, lines_{job.transfer.fname}, target_{job}, progress_{lines_.file_length(), 10}
    {}
    status read();

private:
    enum class step { go_on, end, failed };

    step take_line(std::string_view line);
    step take_bytes(std::string_view line, const tektronix_head& head);
    step fail(std::string found, std::string expected);

    transfer_job& job_;
    text_lines lines_;
    record_target target_;
    record_progress progress_;
};

status tektronix_reader::read()
{
    while (const auto line = lines_.next()) {
        const step next = take_line(*line);
        if (next != step::go_on) return next == step::end ? status::done : status::failed;
    }
    return fail_in_line(job_, lines_.number() + 1, "the end of the file", "the end record /0000000000");
}

tektronix_reader::step tektronix_reader::take_line(std::string_view line)
{
    if (!line.starts_with('/')) return fail(line.empty() ? "an empty line" : "a line without \"/\"", "a record");
    const auto address = number_in(line, 1, 4), count = number_in(line, 5, 2);
    if (!address || !count) return fail("a damaged record head", "a hexadecimal address and count");
    if (*count == 0) return step::end;
    const auto check = number_in(line, 7, 2);
    if (!check) return fail("a damaged header checksum", "a checksum of two digits");
    const tektronix_head head{*address, *count, *check};
    if (!head.checks()) {
        return fail("header checksum " + arith::hex_fixed(head.check, 2), arith::hex_fixed(head.whole_check(), 2));
    }
    if (!target_.takes(head.address)) return step::go_on;
    const step outcome = take_bytes(line, head);
    if (outcome != step::go_on) return outcome;
    if (const double value = progress_.next(head.count + 10); value >= 0) job_.progress(value);
    return step::go_on;
}

tektronix_reader::step tektronix_reader::take_bytes(std::string_view line, const tektronix_head& head)
{
    constexpr std::size_t data_at = 9;
    for (std::int64_t i = 0; i < target_.items(head.count); ++i) {
        const std::int64_t position = target_.position(head.address, i);
        if (target_.beyond(position)) break;
        const auto value = number_in(line, data_at + 2 * static_cast<std::size_t>(target_.byte_of(i)), 2);
        if (!value) return fail("a data byte that is missing or not hexadecimal", "a byte of two digits");
        if (!target_.store(position, static_cast<std::uint8_t>(*value))) return step::end;
    }
    return step::go_on;
}

tektronix_reader::step tektronix_reader::fail(std::string found, std::string expected)
{
    fail_in_line(job_, lines_.number(), std::move(found), std::move(expected));
    return step::failed;
}

}  // namespace

status read_tektronix(transfer_job& job) { return tektronix_reader{job}.read(); }

}  // namespace tamrix
