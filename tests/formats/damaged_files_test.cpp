// A small file of every format, damaged in every place: the load ends with a status and a reason, and writes nowhere
// but where it may.
#include "load_fixture.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ostream>

namespace tamrix::tests {
namespace {

using namespace std::string_literals;
using bytes_of = std::vector<std::uint8_t>;

constexpr std::int64_t start = 8, device_bytes = 0x100;
constexpr std::int32_t buffer_bytes = 0x800;

/// How a damaged file may end: never in a failure, in some places in one, or wherever the file is cut.
enum class failures { none, some, every_cut };

/// A good file, where its bytes land, and the buffer addresses that a damaged one may reach: `first` to `end` - 1.
struct sample {
    const char* name;
    int format;         // option of the load dialog; below 0 the file has a method of its own
    const char* taken;  // the file address from which the load takes bytes
    std::string whole;
    std::int64_t at;
    bytes_of loaded;
    std::int64_t first, end;
    failures ends_in;
    std::string letters;  // that mean something in this format
};

void PrintTo(const sample& one, std::ostream* out) { *out << one.name; }

constexpr int jedec = -1, svf = -2;
constexpr std::int64_t whole_view = ibuffer_bytes(buffer_bytes);
/// The record readers drop what comes after the byte that follows the device.
constexpr std::int64_t behind_device = start + device_bytes + 1;
/// An Intel record that starts there goes on to its end.
constexpr std::int64_t behind_intel = behind_device + 2 * 128, behind_intel16 = behind_intel + 2 * 128;

// Each of the record files begins below the address from which the load takes bytes, and ends at the device's end.
const std::string intel_records = ":01000100EE10\r\n:020000040000FA\r\n:02001000AABB89\r\n:020000020001FB\r\n"
                                  ":0400000300003800C1\r\n:0C00F0000102030405060708090A0B0CB6\r\n:00000001FF\r\n";

const sample samples[] = {
    {"binary",
     0,
     "0",
     "binary file\r\n\0\x1A\xFF"s,
     start,
     {'b', 'i', 'n'},
     start,
     device_bytes,
     failures::none,
     "\0\xFF"s},
    {"intel", 1, "2", intel_records, start + 0xFE, {1, 2, 3}, start, behind_intel, failures::some, "\0G9:\xFF"s},
    // Text after the end record: runs of records are only taken in one go where the file is long enough.
    {"intel_in_runs",
     1,
     "2",
     intel_records + std::string(530, '.'),
     start + 0xFE,
     {1, 2, 3},
     start,
     behind_intel,
     failures::some,
     "G:"},
    {"motorola",
     2,
     "2",
     "S1040001EE0C\r\nS1050010AABB85\r\nS2060000200102D6\r\nS311000000F80102030405060708090A0B0CA8\r\nS9030000FC\r\n",
     start + 0xF6,
     {1, 2, 3},
     start,
     behind_device,
     failures::some,
     "\0G9S\xFF"s},
    {"tektronix",
     3,
     "2",
     "/00010102EE1C\r\n/00120205112206\r\n/00F80C230102030405060708090A0B0C4E\r\n/0000000000r\r\n",
     start + 0xF6,
     {1, 2, 3},
     start,
     behind_device,
     failures::some,
     "\0G9/\xFF"s},
    // The two vendors' images say themselves where their data go, or start with the buffer.
    {"holtek",
     4,
     "0",
     "\xC0\x02\0hie\x08\0\x10\0\0\0\x01\x02\x03\xE2"
     "e\x06\0\0\0\0\0\x04\xF6"s,
     0x10,
     {1, 2, 3},
     0,
     whole_view,
     failures::every_cut,
     "\0e\xFF"s},
    {"emc",
     5,
     "0",
     "\x04\0\x11\x22\x33\x44\x55\x66\x77\x88"s,
     0,
     {0x11, 0x22, 0x33},
     0,
     8,
     failures::every_cut,
     "\0\xFF"s},
    {"intel16",
     6,
     "2",
     ":01000100EEDD33\r\n:020000040000FA\r\n:0200100012345678DA\r\n:020000020001FB\r\n:02007200112233"
     "44E2\r\n:00000001FF\r\n",
     start + 0x100,
     {0x22, 0x11, 0x44, 0x33},
     start,
     behind_intel16,
     failures::some,
     "\0G9:\xFF"s},
    {"texas",
     7,
     "2",
     "@0001\r\nEE\r\n@0010\r\n01 02 03\r\n04\r\n@00F8\r\n01 02 03 04 05 06 07 08 09 0A 0B 0C\r\nq\r\n",
     start + 0xF6,
     {1, 2, 3},
     start,
     behind_device,
     failures::some,
     "\0G9@q\xFF"s},
    // Signature and extra fuses go after the main ones, at most as many as the file has characters.
    {"jedec",
     jedec,
     "",
     "\x02Test*\nQF256*L0000 0101*L0254 1100*\nU01*\nE10*\nV0001 01X*\nC0000*\x03"
     "0000",
     254,
     {'1', '1', '0', '1'},
     0,
     device_bytes + 100 + 80,
     failures::some,
     "\0L9* \n\xFF"s},
    {"svf", svf, "", "! made here\nSIR 8 TDI (FF);\r\nSTATE IDLE;\r\n", 0, {}, 0, 0, failures::none, "\0;!\n\r\xFF"s},
};

/// Line ends of every kind become CR LF, and the last line gets one.
std::string with_dos_line_ends(const std::string& text)
{
    std::string result;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] == '\r' && i + 1 < text.size() && text[i + 1] == '\n') continue;
        const bool ends = text[i] == '\r' || text[i] == '\n';
        result += ends ? "\r\n" : std::string(1, text[i]);
        if (!ends && i + 1 == text.size()) result += "\r\n";
    }
    return result;
}

struct every_reader : testing::TestWithParam<sample> {
    every_reader() : f{{.buflength = buffer_bytes, .tlength = device_bytes}} {}

    /// The buffer and, after what may be reached of it, the rest of its last page.
    std::span<std::uint8_t> pages()
    {
        const auto view = f.session.blocks.ibuffer.span();
        EXPECT_EQ(view.size(), static_cast<std::size_t>(whole_view));
        return {view.data(), f.session.blocks.ibuffer.mapping()->reach_bytes()};
    }
    status run(const std::string& content, const load_entries& modes)
    {
        // Some file systems make a file that is written over wait for the disk.
        for (const char* left : {"file", "pldtmp.svf"}) std::filesystem::remove(files.path(left));
        std::string file = files.write("file", content), folder = files.path("");
        if (one.format >= 0) {
            load_entries entries = modes;
            entries.to_buffer = "8";
            entries.from_file = one.taken;
            entries.format = one.format;
            const status outcome = f.load(file, entries);
            EXPECT_FALSE(f.stayed_open);
            EXPECT_TRUE(f.last_reply.ok());
            return outcome;
        }
        const reply told = one.format == jedec ? f.methods.readpldfile(file) : f.methods.readsvffile(file, folder);
        const variant expected = one.format == jedec ? variant{} : variant{std::int16_t{content.empty()}};
        EXPECT_EQ(told.value, expected);
        if (one.format == svf && !content.empty()) {
            EXPECT_EQ(read_text(files.path("pldtmp.svf")), with_dos_line_ends(content));
        }
        return f.variables.transfer.why_it_failed.empty() ? status::done : status::failed;
    }
    /// Loads a file into a fresh buffer and looks at all that must hold, whatever is in the file.
    status load(const std::string& content, const load_entries& modes = {})
    {
        constexpr std::uint8_t untouched = plug_in_fixture::untouched;
        const auto memory = pages();
        std::ranges::fill(memory, untouched);
        f.session.blocks.MainRtstr(0) = "";
        const status outcome = run(content, modes);
        EXPECT_TRUE(outcome == status::done || outcome == status::failed) << static_cast<int>(outcome);
        EXPECT_EQ(outcome == status::failed, !f.variables.transfer.why_it_failed.empty());
        EXPECT_TRUE(outcome == status::done ||
                    f.variables.transfer.why_it_failed.text().starts_with(files.path("file") + ":"));
        EXPECT_TRUE(f.shell.boxes().empty());
        const auto changed = [](std::uint8_t byte) { return byte != untouched; };
        EXPECT_LE(std::ranges::count_if(memory, changed), static_cast<std::ptrdiff_t>(content.size()));
        EXPECT_TRUE(std::ranges::none_of(memory.first(static_cast<std::size_t>(one.first)), changed));
        EXPECT_TRUE(std::ranges::none_of(memory.subspan(static_cast<std::size_t>(one.end)), changed));
        failed += outcome == status::failed;
        return outcome;
    }
    /// All bytes in their order, and with every second byte into every second byte.
    void load_both_ways(const std::string& content)
    {
        load(content);
        if (one.format >= 0) load(content, {.from_mode = 2, .to_mode = 1});
    }

    const sample& one = GetParam();
    temp_folder files;
    load_fixture f;
    int failed = 0;
};

INSTANTIATE_TEST_SUITE_P(damaged, every_reader, testing::ValuesIn(samples),
                         [](const auto& one) { return std::string{one.param.name}; });

TEST_P(every_reader, loads_the_file_while_it_is_whole)
{
    EXPECT_EQ(load(one.whole), status::done);
    EXPECT_EQ(f.bytes(one.at, static_cast<std::int64_t>(one.loaded.size())), one.loaded);
}

TEST_P(every_reader, takes_the_file_cut_at_every_byte)
{
    for (std::size_t length = 0; length < one.whole.size(); ++length) {
        SCOPED_TRACE(length);
        load_both_ways(one.whole.substr(0, length));
        const diagnostic& why = f.variables.transfer.why_it_failed;
        EXPECT_TRUE(why.empty() || why.line || why.offset) << "it does not say where";
        EXPECT_TRUE(one.ends_in != failures::every_cut || !why.empty());
        EXPECT_TRUE(one.ends_in != failures::none || why.empty());
    }
}

TEST_P(every_reader, takes_the_file_with_any_bit_or_byte_turned_over)
{
    for (std::size_t at = 0; at < one.whole.size(); ++at) {
        for (const unsigned bits : {0xFFu, 1u, 2u, 4u, 8u, 0x10u, 0x20u, 0x40u, 0x80u}) {
            SCOPED_TRACE(std::to_string(at) + " " + hex2(bits));
            std::string changed = one.whole;
            changed[at] = static_cast<char>(static_cast<unsigned char>(changed[at]) ^ bits);
            load_both_ways(changed);
        }
    }
    EXPECT_EQ(failed == 0, one.ends_in == failures::none);
}

TEST_P(every_reader, takes_the_file_with_any_byte_replaced_by_a_letter_of_its_format)
{
    for (std::size_t at = 0; at < one.whole.size(); ++at) {
        for (const char letter : one.letters) {
            SCOPED_TRACE(std::to_string(at) + " " + hex2(static_cast<unsigned char>(letter)));
            std::string changed = one.whole;
            changed[at] = letter;
            load_both_ways(changed);
        }
    }
}

}  // namespace
}  // namespace tamrix::tests
