#include "verify/verify_fixture.h"

#include "support/piecemeal_source.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>

namespace tamrix::tests {

namespace {

std::string in_hex(std::uint64_t value, int width = 1)
{
    char text[24];
    std::snprintf(text, sizeof text, "%0*llX", width, static_cast<unsigned long long>(value));
    return text;
}

}  // namespace

std::string reading::remarks() const
{
    std::string all;
    for (const diagnostic& one : found.remarks) all += one.text() + "\n";
    return all;
}

std::vector<std::uint64_t> reading::lines() const
{
    std::vector<std::uint64_t> all;
    for (const diagnostic& one : found.remarks) all.push_back(one.line.value_or(0));
    return all;
}

std::string reading::segments() const
{
    std::string all;
    for (const memory_segment& one : found.segments.all()) {
        all += (all.empty() ? "" : " ") + in_hex(one.first) + "+" + in_hex(one.length);
    }
    return all;
}

reading verify(std::string_view format, std::string_view content, std::size_t at_once)
{
    reading result;
    piecemeal_source from{content, at_once != 0 ? at_once : piecemeal_source::usual_piece};
    const verify_routine routine = verifier_of(format);
    EXPECT_NE(routine, nullptr) << format;
    if (routine != nullptr) result.found = routine(from, "f", result);
    return result;
}

std::string intel_record(unsigned type, unsigned address, const std::vector<std::uint8_t>& data)
{
    std::string text = ":" + in_hex(data.size(), 2) + in_hex(address, 4) + in_hex(type, 2);
    unsigned sum = static_cast<unsigned>(data.size()) + (address >> 8) + (address & 0xFF) + type;
    for (const std::uint8_t byte : data) {
        text += in_hex(byte, 2);
        sum += byte;
    }
    return text + in_hex(-sum & 0xFF, 2);
}

std::string motorola_record(unsigned type, std::uint32_t address, const std::vector<std::uint8_t>& data)
{
    const unsigned widths[] = {2, 2, 3, 4, 0, 2, 3, 4, 3, 2};
    const unsigned width = widths[type];
    const std::size_t count = width + data.size() + 1;
    std::string text = "S" + in_hex(type) + in_hex(count, 2) + in_hex(address, 2 * static_cast<int>(width));
    auto sum = static_cast<unsigned>(count);
    for (unsigned i = 0; i < width; ++i) sum += address >> 8 * i & 0xFF;
    for (const std::uint8_t byte : data) {
        text += in_hex(byte, 2);
        sum += byte;
    }
    return text + in_hex(~sum & 0xFF, 2);
}

std::string tektronix_record(unsigned address, const std::vector<std::uint8_t>& data)
{
    const auto digits = [](const std::string& text) {
        unsigned sum = 0;
        for (const char one : text) sum += static_cast<unsigned>(std::stoul(std::string{one}, nullptr, 16));
        return in_hex(sum & 0xFF, 2);
    };
    const std::string head = in_hex(address, 4) + in_hex(data.size(), 2);
    std::string body;
    for (const std::uint8_t byte : data) body += in_hex(byte, 2);
    return "/" + head + digits(head) + (data.empty() ? "" : body + digits(body));
}

std::string blank_lines() { return std::string(600, '\n'); }

std::vector<std::uint8_t> counted(std::size_t count)
{
    std::vector<std::uint8_t> data(count);
    for (std::size_t i = 0; i < count; ++i) data[i] = static_cast<std::uint8_t>(i);
    return data;
}

}  // namespace tamrix::tests
