#include "load_fixture.h"

#include <gtest/gtest.h>

namespace tamrix::tests {
namespace {

using bytes_of = std::vector<std::uint8_t>;

/// A data record S1 to S3 with a right checksum.
std::string record(int type, unsigned address, const bytes_of& data)
{
    bytes_of all;
    all.push_back(static_cast<std::uint8_t>(type + 2 + static_cast<int>(data.size())));
    for (int shift = 8 * type; shift >= 0; shift -= 8) all.push_back(static_cast<std::uint8_t>(address >> shift));
    all.insert(all.end(), data.begin(), data.end());
    unsigned sum = 0;
    for (const auto byte : all) sum += byte;
    return "S" + std::to_string(type) + hex_of(all) + hex2(~sum) + "\r\n";
}

const std::string last_record = "S9030000FC\r\n";

struct motorola_fixture : format_fixture {
    explicit motorola_fixture(const device& chosen = {}) : format_fixture{2, chosen} {}
};

TEST(read_motorola, records_of_all_three_widths_land_at_their_addresses)
{
    motorola_fixture f;
    EXPECT_EQ(f.read("S00600004844521B\r\n" + record(1, 0x10, {1, 2}) + record(2, 0x20, {3}) + record(3, 0x30, {4}) +
                     last_record),
              status::done);
    EXPECT_EQ(f.bytes(0x0F, 4), (bytes_of{untouched, 1, 2, untouched}));
    EXPECT_EQ(f.buffer(0x20), 3);
    EXPECT_EQ(f.buffer(0x30), 4);
}

TEST(read_motorola, all_four_bytes_of_an_address_count)
{
    motorola_fixture f;
    EXPECT_EQ(f.read(record(3, 0x21436587, {1}) + last_record, {.from_file = "21436580"}), status::done);
    EXPECT_EQ(f.bytes(6, 3), (bytes_of{untouched, 1, untouched}));
}

TEST(read_motorola, a_record_without_data_is_accepted)
{
    motorola_fixture f;
    EXPECT_EQ(f.read("S1030000FC\n" + record(1, 0, {7}) + last_record), status::done);
    EXPECT_EQ(f.buffer(0), 7);
    EXPECT_EQ(f.read("S1000000FC\n" + record(1, 0, {8}) + last_record), status::done);  // shorter than its own address
    EXPECT_EQ(f.buffer(0), 8);
}

TEST(read_motorola, without_an_end_record_all_data_land_and_the_load_fails)
{
    motorola_fixture f;
    EXPECT_EQ(f.read(record(1, 0, {1}) + record(1, 1, {2})), status::failed);
    EXPECT_EQ(f.bytes(0, 2), (bytes_of{1, 2}));
    EXPECT_EQ(f.why(), "file:3: the end of the file where an end record (S7, S8 or S9) was expected");
    EXPECT_TRUE(f.shell.boxes().empty());
}

TEST(read_motorola, every_end_record_ends_the_load_at_once)
{
    for (const std::string type : {"5", "7", "8", "9"}) {
        motorola_fixture f;
        EXPECT_EQ(f.read("S" + type + "03\n" + record(1, 0, {1})), status::done) << type;
        EXPECT_TRUE(f.buffer_untouched());
    }
}

TEST(read_motorola, an_unknown_record_type_fails_and_says_where)
{
    motorola_fixture f;
    EXPECT_EQ(f.failure(record(1, 0, {1}) + "S4030000FC\n" + last_record),
              "file:2: record type 4 where S0 to S9 was expected");
    EXPECT_EQ(f.failure("S6030000FC\n" + last_record), "file:1: record type 6 where S0 to S9 was expected");
    EXPECT_EQ(f.failure("S"), "file:1: the end of the file where S0 to S9 was expected");
}

TEST(read_motorola, a_wrong_checksum_is_passed_over)
{
    motorola_fixture f;
    EXPECT_EQ(f.read("S104000007AA\n" + last_record), status::done);
    EXPECT_EQ(f.buffer(0), 7);
}

TEST(read_motorola, a_damaged_head_fails)
{
    motorola_fixture f;
    EXPECT_EQ(f.failure("S1X40000\n"),
              "file:1: a damaged record head where a hexadecimal count and address was expected");
    EXPECT_EQ(f.read("S10400"), status::failed);
}

TEST(read_motorola, damaged_and_missing_data_fail_and_keep_what_came_before)
{
    motorola_fixture f;
    EXPECT_EQ(f.failure("S105000001G2F7\n" + last_record),
              "file:1: a data byte that is not hexadecimal where a byte of two digits was expected");
    EXPECT_EQ(f.bytes(0, 2), (bytes_of{1, untouched}));
    EXPECT_EQ(f.read("S1060010"
                     "0304"),
              status::failed);
    EXPECT_EQ(f.bytes(0x10, 3), (bytes_of{3, 4, untouched}));
    EXPECT_EQ(f.why(), "file:1: a record that ends early where its data was expected");
}

TEST(read_motorola, a_letter_between_selected_bytes_begins_no_record)
{
    motorola_fixture f;
    EXPECT_EQ(f.read("S107000001S903S9FF\n" + record(1, 4, {5, 6}) + last_record, {.from_mode = 1}), status::done);
    EXPECT_EQ(f.bytes(0, 4), (bytes_of{1, 3, 5, untouched}));
}

TEST(read_motorola, with_byte_selection_a_record_that_claims_more_than_it_has_takes_it_from_the_next)
{
    motorola_fixture f;
    const std::string claims_12 = "S10F000001020304AA\r\n", next = "S1070008090A0B0CC8\r\n";
    EXPECT_EQ(f.read(claims_12 + next + record(1, 0x20, {7, 8, 9, 10}) + last_record, {.from_mode = 3}), status::done);
    // 01, the checksum AA, and the first digits of the next record's address; that record is passed over.
    EXPECT_EQ(f.bytes(0, 4), (bytes_of{1, 0xAA, 0, untouched}));
    EXPECT_EQ(f.buffer(8), 7);
}

TEST(read_motorola, a_record_that_is_cut_by_the_end_of_the_device_is_searched_for_the_next)
{
    motorola_fixture f{{.tlength = 1}};
    EXPECT_EQ(f.read("S1080000010203S9FF\n" + record(1, 0, {7}), {}), status::done);
    EXPECT_EQ(f.bytes(0, 3), (bytes_of{1, 2, untouched}));
}

TEST(read_motorola, records_below_the_file_start_are_passed_over)
{
    motorola_fixture f;
    EXPECT_EQ(f.read(record(1, 0x0F, {1, 2}) + record(1, 0x10, {3}) + last_record, {.from_file = "10"}), status::done);
    EXPECT_EQ(f.bytes(0, 2), (bytes_of{3, untouched}));
}

TEST(read_motorola, a_record_behind_the_device_is_passed_over_and_one_across_its_end_is_cut)
{
    motorola_fixture f{{.tlength = 0x100}};
    EXPECT_EQ(f.read(record(1, 0x101, {1}) + record(1, 0xFF, {2, 3, 4}) + last_record), status::done);
    EXPECT_EQ(f.bytes(0xFF, 3), (bytes_of{2, 3, untouched}));  // the address equal to the length is still taken
}

TEST(read_motorola, half_an_address_behind_the_device_is_behind_it)
{
    motorola_fixture f{{.tlength = 0x80}};
    EXPECT_EQ(f.read(record(1, 0x101, {1, 1}) + last_record, {.from_mode = 1}), status::done);
    EXPECT_TRUE(f.buffer_untouched());
    EXPECT_EQ(f.read(record(1, 0x100, {1, 1}) + last_record, {.from_mode = 1}), status::done);
    EXPECT_EQ(f.buffer(0x80), 1);
}

TEST(read_motorola, the_load_ends_with_the_first_byte_above_the_size)
{
    motorola_fixture f;
    EXPECT_EQ(f.read(record(1, 0, {1, 2, 3, 4, 5}), {.size = "3"}), status::done);  // no end record is reached
    EXPECT_EQ(f.bytes(0, 5), (bytes_of{1, 2, 3, 4, untouched}));
}

TEST(read_motorola, the_address_behind_the_buffer_fails_where_the_buffer_ends)
{
    motorola_fixture f{{.tlength = 0x10000}};
    EXPECT_EQ(f.read(record(1, 0x1000 + 2199, {1, 2}) + last_record), status::failed);
    EXPECT_EQ(f.buffer(0x1000 + 2199), 1);
    EXPECT_EQ(f.why(), "file: subscript out of range: ibuffer(6296)");
}

TEST(read_motorola, progress_and_messages_come_every_some_records)
{
    std::string text;
    for (unsigned i = 0; i < 200; ++i) text += record(1, 4 * i, {1, 2, 3, 4});
    text += last_record;
    for (const int more : {0, 1}) {  // on both sides of a change of the pace
        text.resize(static_cast<std::size_t>(17 * 20 * (2 + 4 + 7) - 1 + more), '.');
        const int pace = 17 + more;
        motorola_fixture f;
        EXPECT_EQ(f.read(text), status::done);
        EXPECT_EQ(f.shell.progress(), bar_over(200, pace, 9));
        EXPECT_EQ(f.shell.pumps(), 200 / pace);
    }
}

}  // namespace
}  // namespace tamrix::tests
