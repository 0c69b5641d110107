#include "load_fixture.h"

#include <gtest/gtest.h>

namespace tamrix::tests {
namespace {

using bytes_of = std::vector<std::uint8_t>;

unsigned digits_sum(const std::string& digits)
{
    unsigned sum = 0;
    for (const char c : digits) sum += static_cast<unsigned>(std::stoi(std::string{c}, nullptr, 16));
    return sum;
}

std::string record(unsigned address, const bytes_of& data)
{
    const std::string head = hex2(address >> 8) + hex2(address) + hex2(static_cast<unsigned>(data.size()));
    return "/" + head + hex2(digits_sum(head)) + hex_of(data) + hex2(digits_sum(hex_of(data))) + "\r\n";
}

const std::string end_record = "/0000000000r\r\n";

struct tektronix_fixture : format_fixture {
    explicit tektronix_fixture(const device& chosen = {}) : format_fixture{3, chosen} {}
};

TEST(read_tektronix, records_land_at_their_addresses)
{
    tektronix_fixture f;
    EXPECT_EQ(f.read(record(0x10, {1, 2}) + record(0x20, {3}) + end_record), status::done);
    EXPECT_EQ(f.bytes(0x0F, 4), (bytes_of{untouched, 1, 2, untouched}));
    EXPECT_EQ(f.buffer(0x20), 3);
}

TEST(read_tektronix, every_line_end_is_taken)
{
    for (const std::string end : {"\r", "\n", "\r\n"}) {
        std::string text = record(0, {1}) + record(1, {2}) + end_record;
        for (std::size_t at = 0; (at = text.find("\r\n", at)) != std::string::npos; at += end.size())
            text.replace(at, 2, end);
        tektronix_fixture f;
        EXPECT_EQ(f.read(text), status::done);
        EXPECT_EQ(f.bytes(0, 2), (bytes_of{1, 2}));
    }
}

TEST(read_tektronix, an_empty_line_fails)
{
    tektronix_fixture f;
    EXPECT_EQ(f.failure(record(0, {1}) + "\r\n" + end_record), "file:2: an empty line where a record was expected");
    EXPECT_EQ(f.buffer(0), 1);
}

TEST(read_tektronix, a_line_without_a_slash_fails)
{
    tektronix_fixture f;
    EXPECT_EQ(f.failure("hello\n"), "file:1: a line without \"/\" where a record was expected");
    EXPECT_EQ(f.read(" " + record(0, {1})), status::failed);
}

TEST(read_tektronix, a_count_of_0_ends_the_load_whatever_follows)
{
    tektronix_fixture f;
    EXPECT_EQ(f.read("/1234007Fanything\nnot a record\n"), status::done);
    EXPECT_TRUE(f.buffer_untouched());
}

TEST(read_tektronix, a_header_check_of_the_address_alone_is_taken_too)
{
    tektronix_fixture f;
    EXPECT_EQ(f.read("/0012020311225"
                     "\n" +
                     end_record),
              status::done);
    EXPECT_EQ(f.bytes(0x12, 2), (bytes_of{0x11, 0x22}));
}

TEST(read_tektronix, a_wrong_header_check_fails)
{
    tektronix_fixture f;
    EXPECT_EQ(f.failure("/0012020411226\n" + end_record), "file:1: header checksum 04 where 05 was expected");
    EXPECT_TRUE(f.buffer_untouched());
}

TEST(read_tektronix, the_data_check_is_not_read)
{
    tektronix_fixture f;
    EXPECT_EQ(f.read("/0000010107ZZ\n/000101020"
                     "8\n" +
                     end_record),
              status::done);
    EXPECT_EQ(f.bytes(0, 2), (bytes_of{7, 8}));
}

TEST(read_tektronix, the_end_of_the_file_without_an_end_record_fails)
{
    tektronix_fixture f;
    EXPECT_EQ(f.failure(record(0, {1})), "file:2: the end of the file where the end record /0000000000 was expected");
    EXPECT_EQ(f.read(""), status::failed);
}

TEST(read_tektronix, damaged_heads_and_data_fail)
{
    tektronix_fixture f;
    EXPECT_EQ(f.failure("/00"), "file:1: a damaged record head where a hexadecimal address and count was expected");
    EXPECT_EQ(f.failure("/000001"), "file:1: a damaged header checksum where a checksum of two digits was expected");
    EXPECT_EQ(f.read("/000002020"
                     "5X\n"),
              status::failed);
    EXPECT_EQ(f.why(),
              "file:1: a data byte that is missing or not hexadecimal where a byte of two digits was expected");
}

TEST(read_tektronix, lines_below_the_file_start_and_behind_the_device_are_passed_over)
{
    tektronix_fixture f{{.tlength = 0x100}};
    EXPECT_EQ(f.read(record(0x0F, {1}) + record(0x10, {2}) + record(0x200, {3}) + end_record, {.from_file = "10"}),
              status::done);
    EXPECT_EQ(f.bytes(0, 2), (bytes_of{2, untouched}));
    EXPECT_EQ(f.buffer(0x1F0), untouched);
}

TEST(read_tektronix, the_load_ends_with_the_first_byte_above_the_size)
{
    tektronix_fixture f;
    EXPECT_EQ(f.read(record(0, {1, 2, 3, 4}) + "damaged", {.size = "2"}), status::done);
    EXPECT_EQ(f.bytes(0, 4), (bytes_of{1, 2, 3, untouched}));
}

TEST(read_tektronix, progress_comes_every_some_lines_without_messages)
{
    std::string text;
    for (unsigned i = 0; i < 50; ++i) text += record(4 * i, {1, 2, 3, 4});
    text += end_record;
    for (const int more : {0, 1}) {  // on both sides of a change of the pace
        text.resize(static_cast<std::size_t>(8 * 20 * (4 + 10) - 1 + more), '.');
        const int pace = 8 + more;
        tektronix_fixture f;
        EXPECT_EQ(f.read(text), status::done);
        EXPECT_EQ(f.shell.progress(), bar_over(50, pace, 10));
        EXPECT_EQ(f.shell.pumps(), 0);
    }
}

}  // namespace
}  // namespace tamrix::tests
