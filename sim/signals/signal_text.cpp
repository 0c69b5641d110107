#include "sim/signals/signal_text.h"

#include "sim/signals/capture_file.h"
#include "sim/signals/serial_lines.h"
#include "sim/signals/waves.h"

#include <cmath>
#include <utility>

namespace tamrix::sim {

namespace {

using made_signal = std::shared_ptr<const signal>;

constexpr double lowest_hertz = 0.001, highest_hertz = 1e6;

double hertz_of(signal_words& words) { return words.number(lowest_hertz, highest_hertz); }

nanoseconds nanoseconds_of(double seconds) { return nanoseconds{std::llround(seconds * 1e9)}; }

std::uint8_t all_of(std::span<const std::uint8_t> pins)
{
    unsigned mask = 0;
    for (const std::uint8_t pin : pins) mask |= pin;
    return static_cast<std::uint8_t>(mask);
}

/// "after 0.01" and "every 0.1", in this order.
made_signal placed_in_time(timetable table, signal_words& words)
{
    if (words.take("after")) table.start_at(nanoseconds_of(words.seconds()));
    if (words.take("every")) {
        const nanoseconds every = nanoseconds_of(words.seconds());
        if (every < table.length() || every.count() == 0) {
            words.refuse("the signal takes " + std::to_string(table.length().count()) +
                         " ns and cannot come more often");
        }
        table.repeat_every(every);
    }
    return std::make_shared<timetable>(std::move(table));
}

made_signal read_square(std::uint8_t pins, signal_words& words)
{
    const double hertz = hertz_of(words);
    const double duty = words.take("duty") ? words.number(0.1, 99.9) : 50;
    const double phase = words.take("phase") ? words.number(0, 360) : 0;
    return std::make_shared<square_wave>(pins, hertz, duty / 100, phase / 360);
}

made_signal read_noise(std::uint8_t pins, signal_words& words)
{
    const double hertz = hertz_of(words);
    const int start = words.take("start") ? words.whole(0, 1'000'000'000) : 1;
    return std::make_shared<noise>(pins, hertz, static_cast<std::uint64_t>(start));
}

made_signal read_pulse(std::uint8_t pins, signal_words& words)
{
    const double from = words.seconds(), to = words.seconds();
    if (to <= from) words.refuse("the end of the pulse has to be after its beginning");
    const bool low = words.take("low");
    timetable table{pins, low ? pins : std::uint8_t{0}};
    table.hold(from);
    table.set(pins, !low);
    table.hold(to - from);
    table.set(pins, low);
    return placed_in_time(std::move(table), words);
}

/// "8N1": bits, parity, stop bits.
void read_format(uart_format& format, signal_words& words)
{
    constexpr std::pair<char, uart_parity> parities[] = {
        {'N', uart_parity::none}, {'E', uart_parity::even}, {'O', uart_parity::odd}};
    for (int bits = 5; bits <= 8; ++bits) {
        for (const auto& [letter, parity] : parities) {
            for (int stop_bits = 1; stop_bits <= 2; ++stop_bits) {
                if (words.take(std::to_string(bits) + letter + std::to_string(stop_bits)))
                    format = {format.baud, bits, parity, stop_bits};
            }
        }
    }
}

made_signal read_uart(std::uint8_t pins, signal_words& words)
{
    uart_format format;
    format.baud = words.number(1, highest_hertz);
    read_format(format, words);
    return placed_in_time(uart_line(pins, format, words.quoted("8N1 or the like, or a text in quotation marks,")),
                          words);
}

std::vector<std::uint8_t> read_bytes(signal_words& words)
{
    std::vector<std::uint8_t> bytes;
    while (const auto byte = words.hex(255)) bytes.push_back(*byte);
    return bytes;
}

made_signal read_i2c(std::span<const std::uint8_t> pins, signal_words& words)
{
    if (pins.size() != 2) words.refuse("I2C needs two pins, clock and data");
    const double hertz = hertz_of(words);
    std::vector<i2c_transfer> transfers;
    while (words.next_is("read") || words.next_is("write")) {
        const bool read = words.take("read");
        if (!read) words.take("write");
        const auto address = words.hex(0x7F);
        if (!address) words.fail("an address from 0 to 7F");
        transfers.push_back({read, *address, read_bytes(words)});
    }
    if (transfers.empty()) words.fail("\"read\" or \"write\"");
    return placed_in_time(i2c_lines(pins[0], pins[1], hertz, transfers), words);
}

made_signal read_spi(std::span<const std::uint8_t> pins, signal_words& words)
{
    if (pins.size() != 4) words.refuse("SPI needs four pins, clock, data to the device, data from it, and select");
    const double hertz = hertz_of(words);
    const int mode = words.take("mode") ? words.whole(0, 3) : 0;
    std::vector<std::uint8_t> sent, received;
    if (words.take("send")) sent = read_bytes(words);
    if (words.take("receive")) received = read_bytes(words);
    if (sent.empty() && received.empty()) words.fail("\"send\" or \"receive\" with bytes");
    return placed_in_time(spi_transfer({pins[0], pins[1], pins[2], pins[3]}, hertz, mode, sent, received), words);
}

made_signal read_capture(std::uint8_t pins, signal_words& words)
{
    const std::string path = words.any("the path of a file");
    std::vector<std::uint8_t> samples;
    try {
        samples = samples_of_file(path);
    } catch (const std::invalid_argument& error) {
        words.refuse(error.what());
    }
    if (!words.take("period")) words.fail("\"period\" with microseconds");
    const nanoseconds period{std::llround(words.number(0.1, 1e6) * 1000)};
    return std::make_shared<capture>(pins, std::move(samples), period, words.take("again"));
}

int pin_number(std::string_view text, int pins, signal_words& words)
{
    signal_words number{text};
    try {
        return number.whole(1, pins) - 1;
    } catch (const signal_error&) {
        words.refuse("\"" + std::string{text} + "\" where a pin of the chip from 1 to " + std::to_string(pins) +
                     ", P21 to P28, high or low was expected");
    }
}

chip_wire read_wire(const part& what, signal_words& words)
{
    const std::string text = words.any("a wire like 14=P21");
    const auto equals = text.find('=');
    if (equals == std::string::npos) words.refuse("\"" + text + "\" where a wire like 14=P21 was expected");
    const int pin = pin_number(text.substr(0, equals), what.pins(), words);
    if (pin == what.vcc_pin() || pin == what.gnd_pin()) words.refuse("this pin of the chip is for its supply");
    const std::string to = text.substr(equals + 1);
    if (to == "high") return {pin, chip_wire::end::high};
    if (to == "low") return {pin, chip_wire::end::low};
    for (int bit = 0; bit < 8; ++bit) {
        if (to == "P" + std::to_string(21 + bit)) return {pin, chip_wire::end::input, bit};
    }
    return {pin, chip_wire::end::pin, pin_number(to, what.pins(), words)};
}

}  // namespace

std::shared_ptr<const signal> read_signal(std::span<const std::uint8_t> pins, signal_words& words)
{
    const std::uint8_t all = all_of(pins);
    if (words.take("square")) return read_square(all, words);
    if (words.take("counter")) return std::make_shared<binary_counter>(all, hertz_of(words));
    if (words.take("pulse")) return read_pulse(all, words);
    if (words.take("uart")) return read_uart(all, words);
    if (words.take("i2c")) return read_i2c(pins, words);
    if (words.take("spi")) return read_spi(pins, words);
    if (words.take("noise")) return read_noise(all, words);
    if (words.take("file")) return read_capture(all, words);
    if (words.take("high")) return std::make_shared<steady>(all, true);
    if (words.take("low")) return std::make_shared<steady>(all, false);
    words.fail(
        "a pin, \"square\", \"counter\", \"pulse\", \"uart\", \"i2c\", \"spi\", \"noise\", \"file\", \"high\" or "
        "\"low\"");
}

chip_plan read_chip(signal_words& words, const part_shelf& chips)
{
    const std::string name = words.any("the name of a chip");
    if (!chips) words.refuse("there are no chips here");
    chip_plan plan;
    try {
        plan.make = chips(name);
    } catch (const std::exception& error) {
        words.refuse(error.what());
    }
    const auto example = plan.make();
    do plan.wires.push_back(read_wire(*example, words));
    while (!words.ended());
    return plan;
}

}  // namespace tamrix::sim
