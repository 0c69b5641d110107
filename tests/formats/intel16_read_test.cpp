#include "load_fixture.h"

#include <gtest/gtest.h>

namespace tamrix::tests {
namespace {

using bytes_of = std::vector<std::uint8_t>;

/// A data record: `words` with their high byte first, the count in words.
std::string record16(unsigned address, const std::vector<unsigned>& words)
{
    unsigned sum = static_cast<unsigned>(words.size()) + (address >> 8) + (address & 0xFF);
    std::string text = ":" + hex2(static_cast<unsigned>(words.size())) + hex2(address >> 8) + hex2(address) + "00";
    for (const unsigned word : words) {
        text += hex2(word >> 8) + hex2(word);
        sum += (word >> 8) + (word & 0xFF);
    }
    return text + hex2(0x100 - (sum & 0xFF)) + "\r\n";
}

const std::string end_record = ":00000001FF\r\n";

struct intel16_fixture : format_fixture {
    explicit intel16_fixture(const device& chosen = {}) : format_fixture{6, chosen} {}
};

TEST(read_intel16, a_word_lands_with_its_low_byte_at_the_even_address)
{
    intel16_fixture f;
    EXPECT_EQ(f.read(record16(0x10, {0x1234, 0xABCD}) + end_record), status::done);
    EXPECT_EQ(f.bytes(0x1F, 6), (bytes_of{untouched, 0x34, 0x12, 0xCD, 0xAB, untouched}));
}

TEST(read_intel16, addresses_and_the_file_start_count_in_words)
{
    intel16_fixture f;
    EXPECT_EQ(f.read(record16(0x0F, {1}) + record16(0x12, {0x1234}) + end_record, {.from_file = "10"}), status::done);
    EXPECT_EQ(f.bytes(0, 6), (bytes_of{untouched, untouched, untouched, untouched, 0x34, 0x12}));
}

TEST(read_intel16, a_wrong_checksum_ends_the_load_at_once_without_a_status_line)
{
    intel16_fixture f;
    EXPECT_EQ(f.read(record16(0, {0x1234}) + ":01000100567800\r\n" + record16(2, {0x9ABC}) + end_record),
              status::failed);
    EXPECT_EQ(f.bytes(0, 6), (bytes_of{0x34, 0x12, 0x78, 0x56, untouched, untouched}));
    EXPECT_EQ(f.status_text(), ">>Load File Fail!\n>> 0.00Sec\n");
    EXPECT_EQ(f.why(), "file:2: checksum 00 where 30 was expected");
}

TEST(read_intel16, extended_addresses_count_in_words_too)
{
    intel16_fixture f{{.buflength = 0x30000, .tlength = 0x30000}};
    EXPECT_EQ(f.read(":020000020800F4\r\n" + record16(4, {0x1234}) + ":020000040001F9\r\n" + record16(2, {0x5678}) +
                     end_record),
              status::done);
    EXPECT_EQ(f.bytes(0x10008, 2), (bytes_of{0x34, 0x12}));
    EXPECT_EQ(f.bytes(0x20004, 2), (bytes_of{0x78, 0x56}));
}

TEST(read_intel16, the_walk_skips_one_character_behind_an_extended_address)
{
    intel16_fixture f;
    // Without a line end the next ":" is the skipped one, and its record is lost.
    EXPECT_EQ(f.read(":020000040000FA" + record16(0, {0x1234}) + record16(1, {0x5678}) + end_record), status::done);
    EXPECT_EQ(f.bytes(0, 4), (bytes_of{untouched, untouched, 0x78, 0x56}));
}

TEST(read_intel16, start_address_records_are_skipped_and_unknown_types_fail)
{
    intel16_fixture f;
    EXPECT_EQ(f.read(":0400000300003800C1\r\n:04000005000000CD2A\r\n" + record16(0, {0x1234})), status::done);
    EXPECT_EQ(f.buffer(0), 0x34);
    EXPECT_EQ(f.failure(":00000006FA\r\n"), "file:1: record type 06 where 00 to 05 was expected");
}

TEST(read_intel16, every_second_word_by_selection)
{
    intel16_fixture f;
    EXPECT_EQ(f.read(record16(0, {0x1111, 0x2222, 0x3333, 0x4444}), {.from_mode = 1}), status::done);
    EXPECT_EQ(f.bytes(0, 6), (bytes_of{0x11, 0x11, 0x33, 0x33, untouched, untouched}));
}

TEST(read_intel16, a_record_cut_in_its_data_or_checksum_fails)
{
    intel16_fixture f;
    EXPECT_EQ(f.read(":02000000123456"), status::failed);
    EXPECT_EQ(f.bytes(0, 3), (bytes_of{0x34, 0x12, untouched}));
    EXPECT_EQ(f.why(), "file:1: a record that ends early where its data was expected");
    EXPECT_EQ(f.failure(":0100000012349"), "file:1: a record that ends early where its checksum was expected");
    EXPECT_EQ(f.failure(":01000000123G99"),
              "file:1: a data word that is not hexadecimal where a word of four digits was expected");
}

TEST(read_intel16, a_record_stops_at_the_buffer_length_and_one_behind_the_device_is_ignored)
{
    intel16_fixture f{{.buflength = 0x100, .tlength = 0x200}};
    EXPECT_EQ(f.read(":02008000123456780"
                     "0\r\n"),
              status::done);
    EXPECT_EQ(f.bytes(0x100, 3), (bytes_of{0x34, 0x12, untouched}));
    EXPECT_EQ(f.read(record16(0x101, {0x9999})), status::done);
    EXPECT_EQ(f.buffer(0x202), untouched);
}

}  // namespace
}  // namespace tamrix::tests
