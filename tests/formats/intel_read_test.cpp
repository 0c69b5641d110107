#include "formats/formats.h"
#include "formats/intel_fixture.h"

#include <gtest/gtest.h>

namespace tamrix::tests {
namespace {

using bytes_of = std::vector<std::uint8_t>;

TEST(read_intel, data_records_land_at_their_addresses)
{
    intel_fixture f;
    EXPECT_EQ(f.read(record(0x10, 0, {1, 2, 3}) + record(0x20, 0, {4}) + end_record), status::done);
    EXPECT_EQ(f.bytes(0x0F, 5), (bytes_of{untouched, 1, 2, 3, untouched}));
    EXPECT_EQ(f.buffer(0x20), 4);
    EXPECT_EQ(f.why(), "");
}

TEST(read_intel, lower_case_digits_count)
{
    intel_fixture f;
    EXPECT_EQ(f.read(":02000000abcd86\n" + end_record), status::done);
    EXPECT_EQ(f.bytes(0, 2), (bytes_of{0xAB, 0xCD}));
}

TEST(read_intel, a_colon_in_running_text_is_passed_over)
{
    intel_fixture f;
    EXPECT_EQ(f.read("Written by hand: yes\n:no record\n::" + record(0, 0, {7}).substr(1) + end_record), status::done);
    EXPECT_EQ(f.buffer(0), 7);
}

TEST(read_intel, nothing_behind_the_end_record_is_read)
{
    intel_fixture f;
    EXPECT_EQ(f.read(end_record + record(0, 0, {7}) + ":0000009961\n"), status::done);
    EXPECT_TRUE(f.buffer_untouched());
}

TEST(read_intel, a_missing_end_record_is_a_success)
{
    intel_fixture f;
    EXPECT_EQ(f.read(record(0, 0, {7})), status::done);
    EXPECT_EQ(f.buffer(0), 7);
}

TEST(read_intel, an_empty_file_and_a_file_without_records_are_a_success)
{
    intel_fixture f;
    EXPECT_EQ(f.read(""), status::done);
    EXPECT_EQ(f.read("no records here"), status::done);
    EXPECT_TRUE(f.buffer_untouched());
}

TEST(read_intel, extended_addresses_count_in_paragraphs_and_in_64_KiB)
{
    intel_fixture f{{.buflength = 0x30000, .tlength = 0x30000}};
    EXPECT_EQ(f.read(record(0, 2, {0x10, 0x00}) + record(4, 0, {1}) + record(0, 4, {0x00, 0x02}) + record(5, 0, {2})),
              status::done);
    EXPECT_EQ(f.buffer(0x10004), 1);
    EXPECT_EQ(f.buffer(0x20005), 2);
}

TEST(read_intel, start_address_records_are_skipped)
{
    intel_fixture f;
    EXPECT_EQ(f.read(record(0, 3, {0x12, 0x34, 0x56, 0x78}) + record(0, 5, {0, 0, 0x12, 0x34}) + record(0, 0, {7})),
              status::done);
    EXPECT_EQ(f.buffer(0), 7);
}

TEST(read_intel, an_unknown_record_type_fails_and_says_where)
{
    intel_fixture f;
    EXPECT_EQ(f.failure(record(0, 0, {1}) + "\n" + record(0, 7, {}) + record(1, 0, {2})),
              "file:3: record type 07 where 00 to 05 was expected");
    EXPECT_EQ(f.bytes(0, 2), (bytes_of{1, untouched}));
    EXPECT_TRUE(f.shell.boxes().empty());
    EXPECT_FALSE(f.stayed_open);
}

TEST(read_intel, a_bad_checksum_lands_and_fails_at_the_end)
{
    intel_fixture f;
    for (const std::string& end : {end_record, std::string{}}) {
        EXPECT_EQ(f.read(record(0, 0, {1}) + ":0100010005F8\r\n" + record(2, 0, {3}) + end), status::failed);
    }
    EXPECT_EQ(f.bytes(0, 3), (bytes_of{1, 5, 3}));
    EXPECT_EQ(f.why(), "file:2: checksum F8 where F9 was expected");
}

TEST(read_intel, fifteen_checksum_errors_are_told_one_by_one_and_the_rest_as_one_line)
{
    intel_fixture f;
    std::string text = record(0x100, 0, {1});
    for (unsigned i = 0; i < 18; ++i)
        text += ":01"
                "00" +
                hex2(i) + "00" + "07" + "00\r\n";
    EXPECT_EQ(f.read(text), status::failed);
    std::string expected;
    for (int line = 2; line <= 16; ++line) expected += ">>CheckSum Error! in line " + std::to_string(line) + "\n";
    expected += ">>............. \n>>Load File Fail!\n>> 0.00Sec\n";
    EXPECT_EQ(f.status_text(), expected);
    EXPECT_EQ(f.bytes(0, 19), [] {
        bytes_of all(18, 7);
        all.push_back(untouched);
        return all;
    }());
}

TEST(read_intel, with_byte_selection_no_checksum_is_compared)
{
    intel_fixture f;
    EXPECT_EQ(f.read(":0400000001020304"
                     "00\r\n",
                     {.from_mode = 1}),
              status::done);
    EXPECT_EQ(f.bytes(0, 3), (bytes_of{1, 3, untouched}));
}

TEST(read_intel, records_below_the_file_start_are_dropped_without_a_message)
{
    intel_fixture f;
    EXPECT_EQ(f.read(record(0x00, 0, {1, 2}) + record(0x10, 0, {3}), {.from_file = "10"}), status::done);
    EXPECT_EQ(f.bytes(0, 2), (bytes_of{3, untouched}));
}

TEST(read_intel, a_record_that_straddles_the_file_start_is_dropped_whole)
{
    intel_fixture f;
    EXPECT_EQ(f.read(record(0x0F, 0, {1, 2, 3}) + record(0x12, 0, {4}), {.from_file = "10"}), status::done);
    EXPECT_EQ(f.bytes(0, 4), (bytes_of{untouched, untouched, 4, untouched}));
}

TEST(read_intel, the_to_buffer_address_is_added)
{
    intel_fixture f;
    EXPECT_EQ(f.read(record(4, 0, {1}), {.to_buffer = "100"}), status::done);
    EXPECT_EQ(f.buffer(0x104), 1);
}

TEST(read_intel, a_record_stops_at_the_buffer_length_and_is_not_compared)
{
    intel_fixture f{{.buflength = 0x100, .tlength = 0x1000}};
    EXPECT_EQ(f.read(":04"
                     "00FF"
                     "00"
                     "01020304"
                     "00\r\n"),
              status::done);
    EXPECT_EQ(f.bytes(0xFF, 3), (bytes_of{1, 2, untouched}));  // the address equal to the length is still taken
}

TEST(read_intel, a_record_behind_the_device_is_ignored_and_not_counted)
{
    intel_fixture f{{.tlength = 0x100}};
    EXPECT_EQ(f.read(record(0x101, 0, {1}) + ":01"
                                             "0000"
                                             "00"
                                             "07"
                                             "00\r\n"),
              status::failed);
    EXPECT_EQ(f.buffer(0x101), untouched);
    EXPECT_EQ(f.status_text(), ">>CheckSum Error! in line 1\n>>Load File Fail!\n>> 0.00Sec\n");
}

TEST(read_intel, a_record_at_the_device_length_is_taken)
{
    intel_fixture f{{.tlength = 0x100}};
    EXPECT_EQ(f.read(record(0x100, 0, {9})), status::done);
    EXPECT_EQ(f.buffer(0x100), 9);
}

TEST(read_intel, a_device_without_words_takes_nothing_behind_address_0)
{
    intel_fixture f{{.tlength = 0}};
    EXPECT_EQ(f.read(record(1, 0, {1}) + record(0, 0, {2})), status::done);
    EXPECT_EQ(f.bytes(0, 2), (bytes_of{2, untouched}));
}

TEST(read_intel, a_record_cut_in_its_data_fails_and_keeps_what_came_before)
{
    intel_fixture f;
    EXPECT_EQ(f.read(record(0, 0, {1, 2}) + ":0400020003040"), status::failed);
    EXPECT_EQ(f.bytes(0, 5), (bytes_of{1, 2, 3, 4, untouched}));
    EXPECT_EQ(f.why(), "file:2: a record that ends early where its data was expected");
}

TEST(read_intel, a_record_cut_before_its_checksum_fails)
{
    intel_fixture f;
    EXPECT_EQ(f.failure(":0100000007F"), "file:1: a record that ends early where its checksum was expected");
}

TEST(read_intel, a_record_cut_in_its_head_is_no_record)
{
    intel_fixture f;
    EXPECT_EQ(f.read(record(0, 0, {1}) + ":010001"), status::done);
    EXPECT_EQ(f.read(record(0, 0, {1}) + ":"), status::done);
}

TEST(read_intel, a_data_byte_that_is_not_hexadecimal_fails)
{
    intel_fixture f;
    EXPECT_EQ(f.read(":0300000001G203F7\n"), status::failed);
    EXPECT_EQ(f.bytes(0, 2), (bytes_of{1, untouched}));
    EXPECT_EQ(f.why(), "file:1: a data byte that is not hexadecimal where a byte of two digits was expected");
}

TEST(read_intel, a_checksum_that_is_not_hexadecimal_is_a_checksum_error)
{
    intel_fixture f;
    EXPECT_EQ(f.failure(":0100000007--\n"), "file:1: a checksum that is not hexadecimal where F8 was expected");
    EXPECT_EQ(f.buffer(0), 7);
}

TEST(read_intel, a_damaged_extended_address_fails)
{
    intel_fixture f;
    EXPECT_EQ(f.failure(":0200000400X1F9\n"),
              "file:1: a damaged extended address where an address of four digits was expected");
    EXPECT_EQ(f.read(":02000004"), status::failed);
    EXPECT_EQ(f.read(":02000004000"), status::failed);
    EXPECT_EQ(f.read(":020000040001"), status::done) << "the file may end before the checksum, which nobody compares";
}

TEST(read_intel, a_record_of_255_bytes_and_one_of_none_are_taken)
{
    intel_fixture f;
    const bytes_of data = random_bytes(255);
    EXPECT_EQ(f.read(record(0, 0, data) + record(0x300, 0, {})), status::done);
    EXPECT_EQ(f.bytes(0, 255), data);
}

TEST(read_intel, several_records_on_one_line_are_read)
{
    intel_fixture f;
    std::string text = record(0, 0, {1}) + record(1, 0, {2});
    std::erase_if(text, [](char c) { return c == '\r' || c == '\n'; });
    EXPECT_EQ(f.read(text), status::done);
    EXPECT_EQ(f.bytes(0, 2), (bytes_of{1, 2}));
}

std::optional<address_range> measure_intel_text(std::string_view text)
{
    temp_folder files;
    return formats()[1].measure(files.write("a.hex", text));
}

TEST(measure_intel, tells_the_range_that_the_records_fill)
{
    const std::string text = record(0, 4, {0x08, 0x00}) + record(0x10, 0, {1, 2}) + record(0x1FF0, 0, {3}) +
                             end_record + record(0x4000, 0, {9});
    const auto range = measure_intel_text(text);
    ASSERT_TRUE(range);
    EXPECT_EQ(range->begin, 0x08000010);
    EXPECT_EQ(range->end, 0x08001FF1);
    EXPECT_FALSE(measure_intel_text("nothing"));
}

}  // namespace
}  // namespace tamrix::tests
