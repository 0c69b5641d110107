// One bit turned at every place of a small file is found, or it is at one of the places that a format leaves without
// protection, which are listed here.
#include "verify/verify_fixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <functional>
#include <string>
#include <vector>

namespace tamrix::tests {
namespace {

/// A turned bit that is not found.
struct turned {
    std::size_t at;      // from the begin of the file
    std::string before;  // of the line
    unsigned char was, is;
    bool same_data;  // the file still holds what it held
    bool after_end;  // of the last record
};

using excuse = std::function<bool(const turned&)>;

struct bit_case {
    const char* name;
    const char* format;
    std::string content;
    excuse unprotected;
    bool blank_lines_after = false;
};

bool is_other_case(const turned& bit)
{
    return bit.same_data && std::isxdigit(bit.was) && std::isxdigit(bit.is) &&
           std::tolower(bit.was) == std::tolower(bit.is);
}

/// After the end record, and after a count of records, control-Z is as good as a line end.
bool is_end_of_text(const turned& bit)
{
    return bit.same_data && (bit.after_end || bit.before.starts_with("S5")) && bit.is == 0x1A;
}

bool of_text(const turned& bit) { return is_other_case(bit) || is_end_of_text(bit); }

/// The type of a Motorola record is not in its checksum.
excuse of_motorola(std::vector<std::string> types)
{
    return [types](const turned& bit) {
        const std::string change = bit.before + static_cast<char>(bit.was) + " " + static_cast<char>(bit.is);
        return of_text(bit) || std::ranges::count(types, change) == 1;
    };
}

std::string lines_of(std::initializer_list<std::string> records, const char* line_end = "\n")
{
    std::string all;
    for (const std::string& one : records) all += one + line_end;
    return all;
}

const std::string intel_lines =
    lines_of({intel_record(4, 0, {8, 0}), intel_record(0, 0xFFA, counted(16)), intel_record(0, 0x2000, counted(3)),
              intel_record(5, 0, {8, 0, 1, 0xC1}), intel_record(1, 0, {})});
const std::string crlf_lines =
    lines_of({intel_record(0, 0xFA, counted(16)), intel_record(0, 0x200, counted(30)), intel_record(1, 0, {})}, "\r\n");
const std::string hex16_lines = lines_of({":020000040001F9", ":02008000C0B4D4ED49",
                                          ":0100820012"
                                          "3437",
                                          intel_record(1, 0, {})});
const std::string s1_lines =
    lines_of({"S00600004844521B", motorola_record(1, 0x1230, counted(16)), motorola_record(1, 0x2340, counted(5)),
              motorola_record(5, 2, {}), motorola_record(9, 0x1234, {})});
const std::string s3_lines = lines_of({motorola_record(3, 0x08001230, counted(16)),
                                       motorola_record(3, 0x08002340, counted(9)), motorola_record(7, 0, {})});
const std::string s2_lines = lines_of(
    {motorola_record(2, 0x1230, counted(16)), motorola_record(2, 0x2340, counted(9)), motorola_record(8, 0, {})},
    "\r\n");
const std::string tek_lines =
    lines_of({tektronix_record(0x1F0, counted(16)), tektronix_record(0x300, counted(3)), tektronix_record(0x1F4, {})});
const std::string texas_lines = "@F000\n31 40 00\nB2 4A\n@FFFE\n00 F0\nq\n";

std::string holtek_bytes()
{
    const unsigned char bytes[] = {0xC0, 2, 0,    'h', 'i', 'e', 8, 0, 0x10, 0, 0, 0,   1,
                                   2,    3, 0xE2, 'e', 6,   0,   0, 0, 0,    0, 4, 0xF6};
    return {reinterpret_cast<const char*>(bytes), sizeof bytes};
}

/// Nothing but the form of a line is protected.
bool of_texas(const turned& bit) { return of_text(bit) || (std::isxdigit(bit.was) && std::isxdigit(bit.is)); }

const bit_case bit_cases[] = {
    {"intel", "intel", intel_lines, of_text},
    {"intel_with_carriage_returns", "intel", crlf_lines, of_text},
    {"intel16", "intel16", hex16_lines, of_text},
    // A header looks like data; a count like a record without data.
    {"motorola_s1", "motorola", s1_lines, of_motorola({"S0 1", "S5 1"})},
    // The first record looks like a header, or like one with a shorter address and more data.
    {"motorola_s2", "motorola", s2_lines, of_motorola({"S2 0"})},
    {"motorola_s3", "motorola", s3_lines, of_motorola({"S3 1", "S3 2"})},
    {"intel_read_quickly", "intel", intel_lines, of_text, true},
    {"motorola_s1_read_quickly", "motorola", s1_lines, of_motorola({"S0 1", "S5 1"}), true},
    {"motorola_s2_read_quickly", "motorola", s2_lines, of_motorola({"S2 0"}), true},
    {"motorola_s3_read_quickly", "motorola", s3_lines, of_motorola({"S3 1", "S3 2"}), true},
    {"tektronix", "tektronix", tek_lines, of_text},
    {"texas", "texas", texas_lines, of_texas},
    // The header of the file, and nothing else.
    {"holtek", "holtek", holtek_bytes(), [](const turned& bit) { return bit.at == 3 || bit.at == 4; }},
    // All data; the count is compared with the file's length.
    {"emc", "emc", std::string{"\2\0abcd", 6}, [](const turned& bit) { return bit.at >= 2; }},
    {"binary", "binary", "abc", [](const turned&) { return true; }},
};

class turned_bits : public testing::TestWithParam<bit_case> {};

TEST_P(turned_bits, are_found_wherever_the_format_protects)
{
    const auto& [name, format, content, unprotected, blank_lines_after] = GetParam();
    const std::string after = blank_lines_after ? blank_lines() : "";
    const reading sound = verify(format, content + after);
    ASSERT_EQ(sound.remarks(), "");
    const std::size_t last_record = content.find_last_not_of("\r\n");
    for (std::size_t at = 0; at < content.size(); ++at) {
        for (int bit = 0; bit < 8; ++bit) {
            std::string damaged = content;
            damaged[at] = static_cast<char>(damaged[at] ^ (1 << bit));
            const reading read = verify(format, damaged + after);
            if (read.found.damaged()) continue;
            const std::size_t line = at == 0 ? 0 : content.find_last_of('\n', at - 1) + 1;
            const turned undetected{.at = at,
                                    .before = content.substr(line, at - line),
                                    .was = static_cast<unsigned char>(content[at]),
                                    .is = static_cast<unsigned char>(damaged[at]),
                                    .same_data = read.bytes == sound.bytes,
                                    .after_end = at > last_record};
            EXPECT_TRUE(unprotected(undetected)) << at << " bit " << bit << ": " << damaged;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(all, turned_bits, testing::ValuesIn(bit_cases),
                         [](const auto& info) { return std::string{info.param.name}; });

}  // namespace
}  // namespace tamrix::tests
