#include "files/text_lines.h"
#include "formats/record_progress.h"
#include "formats/record_target.h"
#include "formats/texas.h"
#include "formats/text_digits.h"

#include <algorithm>
#include <optional>

namespace tamrix {

namespace {

class texas_reader {
public:
    explicit texas_reader(transfer_job& job)
        : job_{job}, lines_{job.transfer.fname}, target_{job}, progress_{lines_.file_length(), 10}
    {}
    status read();

private:
    enum class step { go_on, end, failed };

    step take_line(std::string_view line);
    step take_bytes(std::string_view line);
    step fail(std::string found, std::string expected);

    transfer_job& job_;
    text_lines lines_;
    record_target target_;
    record_progress progress_;
    std::optional<std::int64_t> address_;  // none before the first accepted "@" line
};

status texas_reader::read()
{
    while (const auto line = lines_.next()) {
        const step next = take_line(*line);
        if (next != step::go_on) return next == step::end ? status::done : status::failed;
    }
    return fail_in_line(job_, lines_.number() + 1, "the end of the file", "a line with \"q\"");
}

texas_reader::step texas_reader::take_line(std::string_view line)
{
    if (line.starts_with('q')) return step::end;
    if (line.starts_with('@')) {
        const auto address = number_in(line, 1, 4);
        if (!address) return fail("a damaged address", "an address of four digits");
        if (target_.takes(*address)) address_ = *address;
        return step::go_on;
    }
    return address_ ? take_bytes(line) : step::go_on;
}

texas_reader::step texas_reader::take_bytes(std::string_view line)
{
    const auto pairs = static_cast<std::int64_t>(line.size() + 1) / 3;
    const std::int64_t address = *address_;
    for (std::int64_t i = 0; i < target_.items(pairs); ++i) {
        const std::int64_t position = target_.position(address, i);
        // The next line goes on from the buffer position that this one reached, not from a file address. Positions may
        // grow with every line; so far beyond every device the exact position does not matter.
        constexpr std::int64_t far_behind = std::int64_t{1} << 50;
        address_ = std::min(position + 1, far_behind);
        if (target_.beyond(position)) break;
        const auto value = number_in(line, 3 * static_cast<std::size_t>(target_.byte_of(i)), 2);
        if (!value) return fail("a data byte that is missing or not hexadecimal", "a byte of two digits");
        if (!target_.store(position, static_cast<std::uint8_t>(*value))) return step::end;
    }
    if (const double value = progress_.next(pairs + 10); value >= 0) job_.progress(value);
    return step::go_on;
}

texas_reader::step texas_reader::fail(std::string found, std::string expected)
{
    fail_in_line(job_, lines_.number(), std::move(found), std::move(expected));
    return step::failed;
}

}  // namespace

status read_texas(transfer_job& job) { return texas_reader{job}.read(); }

}  // namespace tamrix
