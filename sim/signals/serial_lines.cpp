#include "sim/signals/serial_lines.h"

#include <algorithm>
#include <bit>

namespace tamrix::sim {

namespace {

bool set_in(std::uint8_t byte, int bit) { return (byte >> bit & 1) != 0; }

/// Writes to the two lines of an I2C bus in quarters of a clock. The clock is low between two of its steps.
class i2c_writer {
public:
    i2c_writer(std::uint8_t clock, std::uint8_t data, double hertz)
        : clock_{clock}, data_{data}, quarter_{0.25 / hertz}, lines_{mask(clock | data), mask(clock | data)}
    {}

    void start()
    {
        lines_.set(data_, true);
        lines_.hold(quarter_);
        lines_.set(clock_, true);
        lines_.hold(2 * quarter_);
        lines_.set(data_, false);
        lines_.hold(2 * quarter_);
        lines_.set(clock_, false);
        lines_.hold(quarter_);
    }
    void byte(std::uint8_t value, bool acknowledged)
    {
        for (int i = 7; i >= 0; --i) bit(set_in(value, i));
        bit(!acknowledged);
    }
    timetable stop()
    {
        lines_.set(data_, false);
        lines_.hold(quarter_);
        lines_.set(clock_, true);
        lines_.hold(2 * quarter_);
        lines_.set(data_, true);
        lines_.hold(2 * quarter_);
        return lines_;
    }

private:
    static std::uint8_t mask(int pins) { return static_cast<std::uint8_t>(pins); }
    void bit(bool high)
    {
        lines_.set(data_, high);
        lines_.hold(quarter_);
        lines_.set(clock_, true);
        lines_.hold(2 * quarter_);
        lines_.set(clock_, false);
        lines_.hold(quarter_);
    }

    std::uint8_t clock_, data_;
    double quarter_;
    timetable lines_;
};

}  // namespace

timetable uart_line(std::uint8_t pins, const uart_format& format, std::string_view bytes)
{
    timetable line{pins, pins};
    const double bit = 1 / format.baud;
    const auto send = [&](bool high) {
        line.set(pins, high);
        line.hold(bit);
    };
    send(true);
    for (const char letter : bytes) {
        const auto byte = static_cast<std::uint8_t>(static_cast<unsigned char>(letter) & ((1u << format.bits) - 1));
        const bool odd = std::popcount(byte) % 2 == 1;
        send(false);
        for (int i = 0; i < format.bits; ++i) send(set_in(byte, i));
        if (format.parity != uart_parity::none) send(odd == (format.parity == uart_parity::even));
        for (int i = 0; i < format.stop_bits; ++i) send(true);
    }
    return line;
}

timetable i2c_lines(std::uint8_t clock, std::uint8_t data, double hertz, std::span<const i2c_transfer> transfers)
{
    i2c_writer writer{clock, data, hertz};
    for (const i2c_transfer& one : transfers) {
        writer.start();
        writer.byte(static_cast<std::uint8_t>(one.address << 1 | (one.read ? 1 : 0)), true);
        for (std::size_t i = 0; i < one.bytes.size(); ++i)
            writer.byte(one.bytes[i], !one.read || i + 1 < one.bytes.size());
    }
    return writer.stop();
}

timetable spi_transfer(const spi_lines& lines, double hertz, int mode, std::span<const std::uint8_t> sent,
                       std::span<const std::uint8_t> received)
{
    const bool clock_rests_high = (mode & 2) != 0, data_with_first_edge = (mode & 1) != 0;
    const auto pins = static_cast<std::uint8_t>(lines.clock | lines.to_device | lines.from_device | lines.select);
    const auto rest = static_cast<std::uint8_t>(clock_rests_high ? pins : pins & ~lines.clock);
    const double half = 0.5 / hertz;
    timetable table{pins, rest};
    table.hold(half);
    table.set(lines.select, false);
    table.hold(half);
    for (std::size_t i = 0; i < std::max(sent.size(), received.size()); ++i) {
        for (int bit = 7; bit >= 0; --bit) {
            if (data_with_first_edge) table.set(lines.clock, !clock_rests_high);
            table.set(lines.to_device, i >= sent.size() || set_in(sent[i], bit));
            table.set(lines.from_device, i >= received.size() || set_in(received[i], bit));
            table.hold(half);
            table.set(lines.clock, clock_rests_high == data_with_first_edge);
            table.hold(half);
            if (!data_with_first_edge) table.set(lines.clock, clock_rests_high);
        }
    }
    table.hold(half);
    table.set(lines.select, true);
    table.set(static_cast<std::uint8_t>(lines.to_device | lines.from_device), true);
    table.hold(half);
    return table;
}

}  // namespace tamrix::sim
