#include "sim/module_bench.h"

#include <algorithm>
#include <random>

namespace tamrix::tests {

void module_bench::reset(std::uint8_t slot) { frame({4, 170, slot, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}); }

void module_bench::start(std::uint8_t slot) { frame({236, 170, slot, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}); }

void module_bench::bulk(std::uint8_t block, std::uint8_t direction, std::uint8_t kind, std::uint8_t mark,
                        std::uint8_t slot)
{
    frame({10, block, direction, kind, mark, 0, 0, 0, slot, 0, 0, 0, 0, 0, 0, 0});
}

bool module_bench::load_step(std::uint8_t from_module, std::uint32_t size)
{
    const auto byte = [&](int place) { return static_cast<std::uint8_t>(size >> place); };
    frame({92, from_module, byte(16), byte(8), byte(0), 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0});
    ibuf1[0] = 99;
    device.replycheck(5);
    return ibuf1[0] == 0;
}

std::int32_t module_bench::write(const bytes& data)
{
    return usb.usbbulkwrite(data.data(), static_cast<std::int32_t>(data.size()));
}

bytes module_bench::read_block(std::size_t size)
{
    bytes buffer(size + 1, 0x77);
    std::uint8_t status = 0;
    usb.usbbulkread(buffer.data(), static_cast<std::int32_t>(buffer.size()), &status);
    time->advance(std::chrono::seconds{8});
    if (status != 2 || buffer.back() != 170) return {};
    buffer.pop_back();
    return buffer;
}

bool module_bench::pins(std::uint8_t slot, std::uint8_t data, std::uint8_t masks)
{
    bytes sent(16, 0);
    sent[0] = 5;
    for (std::size_t port = 0; port < 6; ++port) {
        sent[1 + 2 * port] = data;
        sent[2 + 2 * port] = masks;
    }
    sent[15] = slot;
    ibuf1.fill(0xEE);
    frame(sent);
    return device.replywait(3, 0, 0);
}

bool module_bench::all_ports(std::uint8_t byte) const
{
    return std::all_of(ibuf1.begin(), ibuf1.begin() + 6, [byte](std::uint8_t one) { return one == byte; });
}

int module_bench::inputs(std::uint8_t slot, int level)
{
    device.regout(1 - level, 50);
    if (!pins(slot, level != 0 ? 255 : 0, 255)) return -1;
    if (all_ports(255)) return 1;
    return all_ports(0) ? 0 : -1;
}

bool module_bench::load_block(std::uint8_t slot, const bytes& block, std::uint8_t number)
{
    bulk(16, 128, 3, 0, slot);
    if (write(block) != 0) return false;
    bulk(16, 128, 3, 170, slot);
    if (!load_step(0, static_cast<std::uint32_t>(block.size()))) return false;
    ibuf1.fill(0xEE);
    return device.replywait(22, static_cast<std::uint8_t>(91 + number), 5) && ibuf1[0] == 170;
}

bool module_bench::load_image(std::uint8_t slot, std::size_t size)
{
    const std::size_t full = size / 24576;
    for (std::size_t block = 0; block < full; ++block) {
        // Only the last block starts the FPGA.
        if (!load_block(slot, bytes(24576, 0x5A), static_cast<std::uint8_t>(block)) || ibuf1[1] != 0) return false;
    }
    return load_block(slot, bytes(size % 24576, 0x5A), static_cast<std::uint8_t>(full)) && ibuf1[1] == 0x55;
}

void module_bench::connect()
{
    device.regout(1, 55);
    device.regout(0, 55);
    device.regout(1, 51);
}

bool module_bench::open_passage(std::uint8_t slot, std::uint8_t block, std::uint32_t size)
{
    bulk(block, 128, 1, 170, slot);
    return load_step(0, size);
}

bytes module_bench::fetch(std::uint8_t slot, std::uint8_t block)
{
    bulk(block, 64, 1, 170, slot);
    if (!load_step(1, 32768)) return {};
    bulk(block, 64, 1, 0, slot);
    return read_block();
}

std::vector<int> module_bench::bad_blocks(std::uint8_t slot, const bytes& data)
{
    const auto part = [&](int first) { return bytes{data.begin() + first, data.begin() + first + 65536}; };
    bulk(0, 128, 1, 0, slot);
    for (int block = 0; block < 8; ++block) write(part(block * 65536));
    for (int block = 0; block < 8; ++block) open_passage(slot, static_cast<std::uint8_t>(2 * block));
    for (int block = 0; block < 8; ++block) write(part(block * 65536 + 1));
    std::vector<int> bad;
    for (int block = 0; block < 16; ++block) {
        const auto number = static_cast<std::uint8_t>(block);
        bulk(number, 64, 1, 170, slot);
        load_step(1, 32768);
        bulk(number, 64, 1, 0, slot);  // what a host does whether it was acknowledged or not
        const bytes got = read_block();
        if (got.empty() || !std::equal(got.begin(), got.end(), data.begin() + block * 32768 + 1)) bad.push_back(block);
    }
    bulk(0, 0, 0, 0, slot);
    return bad;
}

bytes random_memory(unsigned seed)
{
    std::mt19937 random{seed};
    bytes data(16 * 32768 + 1);
    std::ranges::generate(data, [&] { return static_cast<std::uint8_t>(random() >> 24); });
    return data;
}

}  // namespace tamrix::tests
