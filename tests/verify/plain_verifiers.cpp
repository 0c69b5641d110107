#include "verify/plain_verifiers.h"

#include <algorithm>
#include <optional>

namespace tamrix::tests {

namespace {

struct numbered_line {
    std::uint64_t number;
    std::string text;
};

std::vector<numbered_line> lines_of_text(std::string content)
{
    content = content.substr(0, content.find('\x1A'));
    std::vector<numbered_line> lines;
    std::string line;
    for (std::size_t i = 0; i < content.size(); ++i) {
        const char c = content[i];
        if (c != '\r' && c != '\n') {
            line += c;
            continue;
        }
        if (c == '\r' && i + 1 < content.size() && content[i + 1] == '\n') ++i;
        lines.push_back({lines.size() + 1, line});
        line.clear();
    }
    if (!line.empty()) lines.push_back({lines.size() + 1, line});
    return lines;
}

bool has_nothing(const std::string& text)
{
    return std::ranges::all_of(text, [](char c) { return c == ' ' || c == '\t'; });
}

int digit_value(char c)
{
    if (c >= '0' && c <= '9') return c - '0';
    if (c >= 'a' && c <= 'f') return c - 'a' + 10;
    if (c >= 'A' && c <= 'F') return c - 'A' + 10;
    return -1;
}

/// Bytes as far as there are pairs of digits.
std::vector<unsigned> pairs_of(const std::string& text)
{
    std::vector<unsigned> bytes;
    for (std::size_t i = 0; i + 1 < text.size(); i += 2) {
        const int high = digit_value(text[i]), low = digit_value(text[i + 1]);
        if (high < 0 || low < 0) break;
        bytes.push_back(static_cast<unsigned>(high * 16 + low));
    }
    return bytes;
}

unsigned sum_of(const std::vector<unsigned>& bytes, std::size_t count)
{
    unsigned sum = 0;
    for (std::size_t i = 0; i < count; ++i) sum += bytes[i];
    return sum & 0xFF;
}

struct plain_state {
    plain_reading out{};
    bool stop = false, end_seen = false;

    void remark(const numbered_line& line) { out.lines.push_back(line.number); }
    /// Two remarks at most: data beyond the end of the room, and data twice, for each part.
    void store(const numbered_line& line, std::uint64_t first, std::uint64_t end, std::uint64_t address,
               const std::vector<unsigned>& data)
    {
        if (address + data.size() > end) remark(line);
        bool twice = false;
        for (const unsigned byte : data) {
            if (address == end) {
                if (twice) remark(line);
                twice = false;
                address = first;
            }
            twice = twice || out.bytes.contains(address);
            out.bytes[address++] = static_cast<std::uint8_t>(byte);
        }
        if (twice) remark(line);
    }
    void finish(const std::vector<numbered_line>& lines, std::size_t next)
    {
        if (stop) {
            while (next < lines.size() && has_nothing(lines[next].text)) ++next;
            if (next < lines.size()) remark(lines[next]);
        } else if (!end_seen) {
            out.lines.push_back(lines.size() + 1);
        }
        if (out.bytes.empty()) out.lines.push_back(0);
    }
};

std::vector<unsigned> part(const std::vector<unsigned>& bytes, std::size_t from, std::size_t count)
{
    return {bytes.begin() + static_cast<long>(from), bytes.begin() + static_cast<long>(from + count)};
}

struct plain_intel : plain_state {
    std::uint64_t base = 0;
    bool linear = false;
    std::optional<std::uint64_t> start{};

    void take(const numbered_line& line)
    {
        if (has_nothing(line.text)) return;
        const std::size_t colon = line.text.find(':');
        if (colon == std::string::npos) return remark(line);
        if (colon > 0) remark(line);
        const std::string digits = line.text.substr(colon + 1);
        const auto bytes = pairs_of(digits);
        if (bytes.size() >= 4 && bytes[3] == 1) end_seen = true;
        if (bytes.size() < 4 || bytes.size() < bytes[0] + 5) return remark(line);
        const unsigned count = bytes[0];
        const bool good = sum_of(bytes, count + 5) == 0;
        if (!good || digits.size() > 2 * (count + 5)) remark(line);
        take_type(line, bytes, good);
    }
    void take_type(const numbered_line& line, const std::vector<unsigned>& bytes, bool good)
    {
        const unsigned count = bytes[0], address = bytes[1] * 256 + bytes[2], type = bytes[3];
        const auto data = part(bytes, 4, count);
        const unsigned wanted[] = {count, 0, 2, 4, 2, 4};
        if (good && (type > 5 || count != wanted[type])) remark(line);
        if (good && type >= 2 && type <= 5 && address != 0) remark(line);
        if (type == 1) stop = good;
        if (type > 5 || count != wanted[type]) return;
        if (type == 0 && linear) store(line, 0, 0x100000000, base + address, data);
        if (type == 0 && !linear) store(line, base, base + 0x10000, base + address, data);
        if (type == 2 || type == 4) {
            linear = type == 4;
            base = (data[0] * 256 + data[1]) * (linear ? 65536ull : 16ull);
        }
        if (type == 3 || type == 5) take_start(line, type, data, good);
    }
    void take_start(const numbered_line& line, unsigned type, const std::vector<unsigned>& data, bool good)
    {
        const std::uint64_t high = data[0] * 256 + data[1], low = data[2] * 256 + data[3];
        const std::uint64_t value = type == 3 ? high * 16 + low : high * 65536 + low;
        if (good && start && *start != value) remark(line);
        start = value;
    }
};

struct plain_motorola : plain_state {
    std::uint64_t records = 0;
    unsigned last = 0, widest = 0;
    bool header = false, counted = false;

    void take(const numbered_line& line)
    {
        if (has_nothing(line.text)) return;
        const std::string& text = line.text;
        if (text.size() < 2 || text[0] != 'S' || text[1] < '0' || text[1] > '9' || text[1] == '4') return remark(line);
        const auto type = static_cast<unsigned>(text[1] - '0');
        if (type >= 1 && type <= 3) ++records;
        if (type >= 7) end_seen = true;
        const auto bytes = pairs_of(text.substr(2));
        if (bytes.empty() || bytes[0] == 0 || bytes.size() < bytes[0] + 1) return remark(line);
        const bool good = sum_of(bytes, bytes[0] + 1) == 0xFF;
        if (!good || text.size() > 4 + 2 * bytes[0]) remark(line);
        take_type(line, type, bytes, good);
        if (type == 5 || type == 6) counted = true;
    }
    void take_type(const numbered_line& line, unsigned type, const std::vector<unsigned>& bytes, bool good)
    {
        const unsigned widths[] = {2, 2, 3, 4, 0, 2, 3, 4, 3, 2};
        const unsigned width = widths[type], count = bytes[0];
        if (type >= 7) stop = good;
        const bool exact = type >= 5;
        if (count < width + 1 || (exact && count != width + 1)) {
            if (good) remark(line);
            return;
        }
        std::uint64_t address = 0;
        for (unsigned i = 1; i <= width; ++i) address = address * 256 + bytes[i];
        const std::uint64_t end = 1ull << 32;
        if (type == 0) {
            if (good && (header || last != 0)) remark(line);
            header = true;
        } else if (type <= 3) {
            if (good && (type < last || counted)) remark(line);
            counted = false;
            last = type;
            widest = std::max(widest, type);
            store(line, 0, end, address, part(bytes, 1 + width, count - width - 1));
        } else if (type <= 6) {
            if (good && address != records % end) remark(line);
        } else if (good && widest != 0 && 10 - type != widest) {
            remark(line);
        }
    }
};

template <typename state>
plain_reading read_plainly(const std::string& content, state reader)
{
    const auto lines = lines_of_text(content);
    std::size_t next = 0;
    while (next < lines.size() && !reader.stop) reader.take(lines[next++]);
    if constexpr (requires { reader.counted; }) reader.end_seen = reader.end_seen || reader.counted;
    reader.finish(lines, next);
    return reader.out;
}

}  // namespace

plain_reading read_intel_plainly(const std::string& content) { return read_plainly(content, plain_intel{}); }
plain_reading read_motorola_plainly(const std::string& content) { return read_plainly(content, plain_motorola{}); }

}  // namespace tamrix::tests
