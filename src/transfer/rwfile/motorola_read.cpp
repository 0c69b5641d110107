#include "transfer/file_window.h"
#include "transfer/record_progress.h"
#include "transfer/record_target.h"
#include "transfer/rwfile/hex_digits.h"
#include "transfer/rwfile/motorola.h"

#include <array>

namespace tamrix {

namespace {

/// The walk from "S" to "S". Checksums are not read: the search for the next "S" passes over them.
class motorola_reader {
public:
    explicit motorola_reader(transfer_job& job)
        : job_{job}, file_{job.plug_in.fname}, target_{job.plug_in}, progress_{file_.length(), 9}
    {}
    status walk();

private:
    using text_view = std::span<const std::uint8_t>;
    enum class step { go_on, end, failed };

    step take_data(unsigned width, text_view record);
    step take_bytes(text_view data, std::int64_t address, std::int64_t length);
    void report(std::int64_t record_length);
    step fail(std::string found, std::string expected);

    transfer_job& job_;
    file_window file_;
    record_target target_;
    record_progress progress_;
    std::int64_t p_ = 0;  // the "S" of the record
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
            const step next = take_data(static_cast<unsigned>(type - '0'), record);
            if (next != step::go_on) return next == step::end ? status::done : status::failed;
            break;
        }
        case '5':
        case '7':
        case '8':
        case '9': return status::done;
        default:
            fail(type < 0 ? "the end of the file" : "record type " + std::string(1, static_cast<char>(type)),
                 "S0 to S9");
            return status::failed;
        }
    }
    fail("the end of the file", "an end record (S7, S8 or S9)");
    return status::failed;
}

motorola_reader::step motorola_reader::take_data(unsigned width, text_view record)
{
    const std::size_t address_bytes = width + 1;
    std::array<std::uint8_t, 5> head{};  // count and address
    unsigned sum = 0;
    if (record.size() < 4 + 2 * address_bytes || !hex_digits::decode(&record[2], 1 + address_bytes, head.data(), sum)) {
        return fail("a damaged record head", "a hexadecimal count and address");
    }
    std::int64_t address = 0;
    for (std::size_t i = 1; i <= address_bytes; ++i) address = address * 256 + head[i];
    const std::int64_t length = std::int64_t{head[0]} - width - 2;
    const std::size_t data_at = 4 + 2 * address_bytes;
    p_ += static_cast<std::int64_t>(data_at);
    if (!target_.takes(address)) return step::go_on;
    const step outcome = take_bytes(record.subspan(data_at), address, length);
    if (outcome == step::go_on) report(2 * std::int64_t{width} + length + 7);
    return outcome;
}

motorola_reader::step motorola_reader::take_bytes(text_view data, std::int64_t address, std::int64_t length)
{
    const std::int64_t count = target_.items(length);
    const auto digits = static_cast<std::size_t>(2 * count);
    std::uint8_t* run = count > 0 ? target_.run(address, count) : nullptr;
    unsigned sum = 0;
    if (run != nullptr && digits <= data.size() &&
        hex_digits::decode(data.data(), static_cast<std::size_t>(count), run, sum)) {
        target_.stored(count);
        p_ += 2 * count;
        return step::go_on;
    }
    for (std::int64_t i = 0; i < count; ++i) {
        const std::int64_t position = target_.position(address, i);
        const auto at = static_cast<std::size_t>(2 * target_.byte_of(i));
        if (target_.beyond(position)) break;
        if (at + 2 > data.size()) return fail("a record that ends early", "its data");
        const int value = hex_digits::byte(&data[at]);
        if (value < 0) return fail("a data byte that is not hexadecimal", "a byte of two digits");
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
