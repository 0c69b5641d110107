// What a UART, an I2C bus or an SPI bus does on its lines, written into a timetable.
#pragma once

#include "sim/signals/timetable.h"

#include <span>
#include <string_view>

namespace tamrix::sim {

enum class uart_parity : std::uint8_t { none, even, odd };

struct uart_format {
    double baud = 9600;
    int bits = 8;  // 5 to 8, lowest first
    uart_parity parity = uart_parity::none;
    int stop_bits = 1;
};

/// One bit of rest, then the bytes without a pause between them, on all of `pins`.
timetable uart_line(std::uint8_t pins, const uart_format& format, std::string_view bytes);

/// From a start condition on: the address, then the bytes. Each byte is acknowledged, but for the last one of a read.
struct i2c_transfer {
    bool read = false;
    std::uint8_t address = 0;  // 7 bits
    std::vector<std::uint8_t> bytes{};
};

/// `clock` and `data` are masks of one pin. A stop condition is at the end only.
timetable i2c_lines(std::uint8_t clock, std::uint8_t data, double hertz, std::span<const i2c_transfer> transfers);

struct spi_lines {
    std::uint8_t clock, to_device, from_device, select;  // masks of one pin; the select line is low for the transfer
};

/// Highest bit first. `mode` 0 to 3: bit 1 is the level of the clock at rest, bit 0 says that data change with the
/// first edge of the clock, not before it. What is not received is high.
timetable spi_transfer(const spi_lines& lines, double hertz, int mode, std::span<const std::uint8_t> sent,
                       std::span<const std::uint8_t> received);

}  // namespace tamrix::sim
