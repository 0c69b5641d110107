#include "verify/random_files.h"

#include "verify/verify_fixture.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace tamrix::tests {

namespace {

unsigned up_to(std::mt19937& random, unsigned most) { return static_cast<unsigned>(random() % (most + 1ull)); }

std::vector<std::uint8_t> random_data(std::mt19937& random)
{
    const unsigned lengths[] = {1, 4, 16, 16, 16, 16, 28, 32, 250};
    std::vector<std::uint8_t> data(lengths[up_to(random, 8)]);
    for (std::uint8_t& byte : data) byte = static_cast<std::uint8_t>(random());
    return data;
}

/// Adds them unless one of the addresses is filled.
bool add_new(random_file& file, std::uint64_t address, const std::vector<std::uint8_t>& data)
{
    const auto next = file.bytes.lower_bound(address);
    if (next != file.bytes.end() && next->first < address + data.size()) return false;
    for (std::size_t i = 0; i < data.size(); ++i) file.bytes[address + i] = data[i];
    return true;
}

std::string random_line_end(std::mt19937& random) { return up_to(random, 1) == 0 ? "\n" : "\r\n"; }

}  // namespace

random_file random_intel_file(std::mt19937& random)
{
    random_file file;
    const std::string line_end = random_line_end(random);
    std::uint64_t base = 0;
    unsigned offset = up_to(random, 0xFFFF);
    for (unsigned i = up_to(random, 30) + 1; i > 0; --i) {
        const unsigned choice = up_to(random, 9);
        if (choice == 0) {
            const bool linear = up_to(random, 1) == 0;
            const auto value = static_cast<std::uint16_t>(random());
            base = linear ? std::uint64_t{value} << 16 : value * 16u;
            file.content += intel_record(linear ? 4 : 2, 0,
                                         {static_cast<std::uint8_t>(value >> 8), static_cast<std::uint8_t>(value)}) +
                            line_end;
        }
        if (choice == 1) offset = up_to(random, 0xFFFF);
        const auto data = random_data(random);
        if (offset + data.size() > 0x10000) offset = up_to(random, 0xF000);
        if (!add_new(file, base + offset, data)) continue;
        file.content += intel_record(0, offset, data) + line_end;
        offset = (offset + static_cast<unsigned>(data.size())) & 0xFFFF;
    }
    if (up_to(random, 3) == 0) file.content += intel_record(5, 0, {8, 0, 1, 0xC1}) + line_end;
    file.content += intel_record(1, 0, {}) + line_end;
    return file;
}

random_file random_motorola_file(std::mt19937& random)
{
    random_file file;
    const std::string line_end = random_line_end(random);
    const unsigned type = 1 + up_to(random, 2);
    const std::uint64_t end = std::uint64_t{1} << 8 * (type + 1);
    std::uint64_t address = random() % end;
    unsigned records = 0;
    if (up_to(random, 1) == 0) file.content += motorola_record(0, 0, counted(up_to(random, 12))) + line_end;
    for (unsigned i = up_to(random, 30) + 1; i > 0; --i) {
        if (up_to(random, 7) == 0) address = random() % end;
        const auto data = random_data(random);
        if (address + data.size() > end) address = 0;
        if (!add_new(file, address, data)) continue;
        file.content += motorola_record(type, static_cast<std::uint32_t>(address), data) + line_end;
        address += data.size();
        ++records;
    }
    if (up_to(random, 1) == 0) file.content += motorola_record(5, records, {}) + line_end;
    file.content += motorola_record(10 - type, up_to(random, 1) * 0x10, {}) + line_end;
    return file;
}

std::string damaged_text(std::string content, std::mt19937& random)
{
    static constexpr char common[] = ":S0123456789ABCDEFabcdef \t\r\n\x1Ax";
    for (unsigned i = up_to(random, 2) + 1; i > 0 && !content.empty(); --i) {
        const std::size_t at = random() % content.size();
        const std::size_t line = content.rfind('\n', at) + 1,
                          line_end = std::min(content.find('\n', at), content.size() - 1);
        switch (up_to(random, 6)) {
        case 0: content[at] = static_cast<char>(content[at] ^ 1 << up_to(random, 7)); break;
        case 1: content[at] = common[up_to(random, sizeof common - 2)]; break;
        case 2: content.erase(at, 1); break;
        case 3: content.insert(at, 1, common[up_to(random, sizeof common - 2)]); break;
        case 4: content.erase(line, line_end + 1 - std::min(line, line_end + 1)); break;
        case 5: content.insert(line, content.substr(line, line_end + 1 - std::min(line, line_end + 1))); break;
        default: content.resize(at); break;
        }
    }
    return content;
}

}  // namespace tamrix::tests
