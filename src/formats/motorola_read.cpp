#include "files/file_window.h"
#include "files/hex_digits.h"
#include "formats/motorola.h"
#include "formats/record_progress.h"
#include "formats/record_target.h"
#include "session/session.h"

#include <algorithm>
#include <array>

namespace tamrix {

namespace {

/// The walk from "S" to "S". Checksums are not read: the search for the next "S" passes over them.
class motorola_reader {
public:
    explicit motorola_reader(transfer_job& job)
        : job_{job}, file_{job.transfer.fname}, target_{job}, progress_{file_.length(), 9}
    {}
    status walk();

private:
    using text_view = std::span<const std::uint8_t>;
    enum class step { go_on, end, failed };

    bool take_plain_records(text_view text);
    step take_data(unsigned width, text_view record);
    step take_bytes(text_view data, std::int64_t address, std::int64_t length);
    void report(std::int64_t record_length);
    step fail(std::string found, std::string expected);

    transfer_job& job_;
    file_window file_;
    record_target target_;
    record_progress progress_;
    address_extent met_;
    std::int64_t p_ = 0;  // the "S" of the record, then where the search for the next one goes on
};

constexpr std::size_t longest_record = 2 + 2 + 2 * 255;

status motorola_reader::walk()
{
    for (p_ = file_.find('S', 0); p_ < file_.length(); p_ = file_.find('S', p_)) {
        const text_view record = file_.from(p_, longest_record);
        const int type = record.size() > 1 ? record[1] : -1;
        switch (type) {
        case '0': p_ += 2; break;
        case '1':
        case '2':
        case '3': {
            if (take_plain_records(record)) break;
            const step next = take_data(static_cast<unsigned>(type - '0'), record);
            if (next == step::failed) return status::failed;
            if (next == step::end) return status::done;  // enough was loaded; the rest of the file is not met
            break;
        }
        case '5':
        case '7':
        case '8':
        case '9': job_.met = {met_.range(), true}; return status::done;
        default:
            fail(type < 0 ? "the end of the file" : "record type " + std::string(1, static_cast<char>(type)),
                 "S0 to S9");
            return status::failed;
        }
    }
    fail("the end of the file", "an end record (S7, S8 or S9)");
    return status::failed;
}

/// The count and the address of a data record; none where they are damaged.
struct record_head {
    std::int64_t address, length;  // length: of the data, negative where the count is too small
};

std::optional<record_head> head_of(unsigned width, std::span<const std::uint8_t> record)
{
    const std::size_t data_at = 6 + 2 * width;
    if (record.size() < data_at) return std::nullopt;
    std::uint32_t address = 0;
    int count = 0;
    if (width == 3) {  // nearly all records of a large file
        const auto four = hex_digits::decode_four(&record[4]);
        if (!four) return std::nullopt;
        count = hex_digits::byte(&record[2]);
        address = *four << 24 | (*four & 0xFF00) << 8 | (*four >> 8 & 0xFF00) | *four >> 24;
    } else {
        std::array<std::uint8_t, 4> head{};  // count and address
        unsigned sum = 0;
        if (!hex_digits::decode(&record[2], width + 2, head.data(), sum)) return std::nullopt;
        count = head[0];
        for (std::size_t i = 1; i < width + 2; ++i) address = address << 8 | head[i];
    }
    if (count < 0) return std::nullopt;
    return record_head{address, std::int64_t{count} - width - 2};
}

/// Takes data records of the common kind, one after the other: those that land whole, with only a checksum and a line
/// end before the next. p_ is then after the data of the last. False if there was none.
bool motorola_reader::take_plain_records(text_view text)
{
    constexpr std::size_t checksum_and_line_end = 4;
    const std::int64_t start = p_;
    std::size_t at = 0;
    while (text.size() - at >= longest_record + checksum_and_line_end && text[at] == 'S') {
        const unsigned width = text[at + 1] - unsigned{'0'};
        if (width < 1 || width > 3) break;
        const auto head = head_of(width, text.subspan(at));
        if (!head || head->length <= 0 || !target_.takes(head->address)) break;
        std::uint8_t* const run = target_.run(head->address, head->length);
        const std::size_t data_at = at + 6 + 2 * width;
        unsigned sum = 0;
        if (run == nullptr || !hex_digits::decode(&text[data_at], static_cast<std::size_t>(head->length), run, sum)) {
            break;
        }
        target_.stored(head->length);
        met_.add(head->address, head->length);
        report(2 * std::int64_t{width} + head->length + 7);
        at = data_at + 2 * static_cast<std::size_t>(head->length);
        p_ = start + static_cast<std::int64_t>(at);
        for (std::size_t i = 0; i < checksum_and_line_end && text[at] != 'S'; ++i) ++at;
    }
    return p_ != start;
}

motorola_reader::step motorola_reader::take_data(unsigned width, text_view record)
{
    const auto head = head_of(width, record);
    if (!head) return fail("a damaged record head", "a hexadecimal count and address");
    const std::size_t data_at = 6 + 2 * width;
    p_ += static_cast<std::int64_t>(data_at);
    met_.add(head->address, std::max<std::int64_t>(head->length, 0));
    if (!target_.takes(head->address)) return step::go_on;
    const step outcome = take_bytes(record.subspan(data_at), head->address, head->length);
    if (outcome == step::go_on) report(2 * std::int64_t{width} + head->length + 7);
    return outcome;
}

motorola_reader::step motorola_reader::take_bytes(text_view data, std::int64_t address, std::int64_t length)
{
    const std::int64_t count = target_.items(length);
    for (std::int64_t i = 0; i < count; ++i) {
        const std::int64_t position = target_.position(address, i);
        const auto at = static_cast<std::size_t>(2 * target_.byte_of(i));
        if (target_.beyond(position)) break;
        if (at + 2 > data.size()) return fail("a record that ends early", "its data");
        const int value = hex_digits::byte(&data[at]);
        if (value < 0) return fail("a data byte that is not hexadecimal", "a byte of two digits");
        p_ += 2 * target_.step();  // the search for the next record passes over what lies between selected bytes
        if (!target_.store(position, static_cast<std::uint8_t>(value))) return step::end;
    }
    return step::go_on;
}

void motorola_reader::report(std::int64_t record_length)
{
    const double value = progress_.next(record_length);
    if (value < 0) return;
    job_.progress(value);
    job_.plug_in.screen.doevents();
}

motorola_reader::step motorola_reader::fail(std::string found, std::string expected)
{
    fail_in_text(job_, file_, p_, std::move(found), std::move(expected));
    return step::failed;
}

}  // namespace

status read_motorola(transfer_job& job) { return motorola_reader{job}.walk(); }

}  // namespace tamrix
