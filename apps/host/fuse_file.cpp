#include "host/fuse_file.h"

#include "base/arith.h"
#include "files/byte_source.h"
#include "files/replace_file.h"
#include "verify/jedec.h"
#include "verify/jedec_writer.h"

#include <stdexcept>
#include <utility>

namespace tamrix::host {

namespace {

constexpr std::uint32_t usual_row_fuses = 32;

std::string header_of(const device_preset& device)
{
    return "TYPE: " + device.name + (device.maker.empty() ? "" : "\nMAKER: " + device.maker);
}

/// Vectors can be edited into what no standard has.
void check(const std::string& path, const std::string& text)
{
    memory_source from{{reinterpret_cast<const std::uint8_t*>(text.data()), text.size()}};
    const jedec_reading found = verify_jedec(from, path);
    if (found.damaged()) throw std::runtime_error{found.remarks.front().text()};
}

}  // namespace

std::vector<std::uint8_t> fuses_in(std::span<const std::uint8_t> buffer, const device_preset& device)
{
    const auto words = static_cast<std::size_t>(device.words);
    if (words > buffer.size()) throw std::runtime_error{"the buffer is smaller than the device"};
    std::vector<std::uint8_t> fuses;
    fuses.reserve(words);
    for (const std::uint8_t letter : buffer.first(words)) {
        if (letter != '0' && letter != '1')
            throw std::runtime_error{"buffer address " + arith::hex(static_cast<std::int64_t>(fuses.size())) + ": " +
                                     arith::hex_fixed(letter, 2) + " where 30 or 31 was expected"};
        fuses.push_back(letter == '1' ? 1 : 0);
    }
    return fuses;
}

void save_standard_fuse_file(const std::string& path, std::vector<std::uint8_t> fuses, const device_preset& device,
                             const std::string& plug_in_file)
{
    file_source saved{plug_in_file};
    fuse_map map{.header = header_of(device), .fuses = std::move(fuses)};
    map.vectors = verify_jedec(saved, plug_in_file).map.vectors;
    if (map.vectors.empty() && device.pins > 0) map.pins = static_cast<std::uint32_t>(device.pins);
    const auto row = device.page_length > 0 ? static_cast<std::uint32_t>(device.page_length) : usual_row_fuses;
    const std::string text = jedec_file(map, row);
    check(path, text);
    replace_file(path, text);
}

}  // namespace tamrix::host
