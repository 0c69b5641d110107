#include "sim/bench.h"

namespace tamrix::tests {

port_bit place_of(std::size_t index, std::size_t half)
{
    if (index < half) {
        const std::size_t up = half - 1 - index;
        return {up / 4, 3 - static_cast<int>(up % 4)};
    }
    const std::size_t up = index - half;
    return {up / 4, 4 + static_cast<int>(up % 4)};
}

std::string socket40_text(const std::string& row)
{
    const std::size_t half = row.size() / 2;
    const auto a = [&](std::size_t i) { return i < half ? row[half - 1 - i] : 'w'; };
    const auto b = [&](std::size_t i) { return i < half ? row[half + i] : 'w'; };
    std::string left{b(0), a(1), a(2), a(3),  a(7),  a(6),  a(5),  a(4),
                     b(8), b(6), b(9), b(10), b(14), a(15), b(13), a(14)};
    std::string right{b(1),  b(2),  b(3),  b(4),  a(8), a(9), a(10), a(11),
                      a(12), b(11), b(12), a(13), b(5), b(7), b(15), a(0)};
    for (std::size_t k = 16; k < 20; ++k) {
        left += a(k);
        right += b(k);
    }
    return std::string{left.rbegin(), left.rend()} + right;
}

bench::bench(int its_model, int banks, int generation)
    : model{its_model},
      programmer{
          sim::setup{.model = its_model, .generation = generation, .memory_banks = banks, .time = time, .log = log},
          sim::place_in({ibuf1.data(), 20, &usbpip0readresult, ubuf1.data(), 20})}
{}

std::int32_t bench::frame(std::vector<std::uint8_t> bytes)
{
    return usb.usbcomwrite(bytes.data(), static_cast<std::int32_t>(bytes.size()));
}

void bench::power(int gnd_code, int vcc_code, int state)
{
    if (state != 0) device.setvcc(5000);
    device.gndpin(static_cast<std::uint8_t>(gnd_code), static_cast<std::uint8_t>(state));
    device.vccpin(static_cast<std::uint8_t>(vcc_code), static_cast<std::uint8_t>(state));
}

std::vector<port_bit> bench::places(std::size_t pins) const
{
    std::vector<port_bit> found;
    if (!forty()) {
        for (std::size_t pin = 0; pin < pins; ++pin) found.push_back(place_of(pin, pins / 2));
        return found;
    }
    std::string names;
    for (std::size_t pin = 0; pin < pins; ++pin) names += static_cast<char>(pin + 1);
    const std::string wired = socket40_text(names);
    for (std::size_t pin = 0; pin < pins; ++pin) found.push_back(place_of(wired.find(static_cast<char>(pin + 1)), 20));
    return found;
}

void bench::drive(const std::string& row, bool by_frame)
{
    ports data{}, mask{};
    // Contacts without a pin stay low on a socket of 40, released on one of 48.
    mask.fill(forty() ? 0 : 255);
    const auto where = places(row.size());
    for (std::size_t pin = 0; pin < row.size(); ++pin) {
        const auto bit = static_cast<std::uint8_t>(1u << where[pin].bit);
        const bool driven = row[pin] == '1' || row[pin] == '0';
        std::uint8_t& masked = mask[where[pin].port];
        masked = static_cast<std::uint8_t>(driven ? masked & ~bit : masked | bit);
        if (row[pin] == '1') data[where[pin].port] |= bit;
    }
    if (forty()) {
        for (std::size_t port = 0; port < 6; ++port) data[port] = mask[port] = data[port] | mask[port];
    }
    std::vector<std::uint8_t> bytes{5};
    for (std::size_t port = 0; port < 6; ++port) {
        bytes.push_back(data[port]);
        bytes.push_back(mask[port]);
    }
    if (by_frame) {
        frame(bytes);
        return;
    }
    for (std::uint8_t address = 0; address < 12; ++address) device.regout(bytes[std::size_t{address} + 1], address);
}

ports bench::read_ports(bool by_frame)
{
    ports levels{};
    if (by_frame) {
        ibuf1.fill(0xEE);
        if (!device.replywait(3, 0, 0)) return levels;
        for (std::size_t port = 0; port < 6; ++port) levels[port] = ibuf1[port];
    } else {
        for (std::size_t port = 0; port < 6; ++port)
            levels[port] = static_cast<std::uint8_t>(device.regin(static_cast<std::uint8_t>(2 * port)));
    }
    return levels;
}

std::string bench::read(std::size_t pins, bool by_frame)
{
    const ports levels = read_ports(by_frame);
    std::string letters;
    for (const port_bit& where : places(pins)) letters += (levels[where.port] >> where.bit & 1) != 0 ? 'H' : 'L';
    return letters;
}

std::string bench::run(const std::string& row, bool by_frame)
{
    drive(row, by_frame);
    return read(row.size(), by_frame);
}

namespace {

std::vector<std::string> texts_of(const std::vector<sim::event>& events)
{
    std::vector<std::string> texts;
    for (const sim::event& one : events) texts.push_back(one.text);
    return texts;
}

}  // namespace

std::vector<std::string> bench::hazards() const { return texts_of(log->hazards()); }
std::vector<std::string> bench::notes() const { return texts_of(log->notes()); }

}  // namespace tamrix::tests
