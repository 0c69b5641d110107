#include "load_fixture.h"

#include <gtest/gtest.h>

namespace tamrix::tests {
namespace {

using bytes_of = std::vector<std::uint8_t>;

struct texas_fixture : format_fixture {
    explicit texas_fixture(const device& chosen = {}) : format_fixture{7, chosen} {}
};

TEST(read_texas, an_address_and_its_bytes_land)
{
    texas_fixture f;
    EXPECT_EQ(f.read("@0010\n31 40 00\nq\n"), status::done);
    EXPECT_EQ(f.bytes(0x0F, 5), (bytes_of{untouched, 0x31, 0x40, 0x00, untouched}));
}

TEST(read_texas, two_lines_behind_one_address_land_one_behind_the_other)
{
    texas_fixture f;
    EXPECT_EQ(f.read("@0010\r\n01 02 03 \r\n04 05\r\n@0020\r\n06\r\nq\r\n"), status::done);
    EXPECT_EQ(f.bytes(0x10, 6), (bytes_of{1, 2, 3, 4, 5, untouched}));
    EXPECT_EQ(f.buffer(0x20), 6);
}

TEST(read_texas, with_a_file_start_the_next_line_counts_its_buffer_position_as_a_file_address)
{
    texas_fixture f;
    EXPECT_EQ(f.read("@0110\n01 02\n03 04\nq\n", {.from_file = "100"}), status::failed);
    EXPECT_EQ(f.bytes(0x10, 3), (bytes_of{1, 2, untouched}));
    EXPECT_EQ(f.why(), "file: subscript out of range: ibuffer(-238)");
}

TEST(read_texas, an_empty_line_does_not_move_the_address)
{
    texas_fixture f;
    EXPECT_EQ(f.read("@0010\n01\n\n02\nq\n"), status::done);
    EXPECT_EQ(f.bytes(0x10, 2), (bytes_of{1, 2}));
}

TEST(read_texas, a_line_holds_as_many_bytes_as_whole_pairs_with_their_separators)
{
    const std::pair<const char*, bytes_of> lines[] = {{"1", {}},
                                                      {"01", {1}},
                                                      {"01 ", {1}},
                                                      {"01 0", {1}},
                                                      {"01 02", {1, 2}},
                                                      {"01 02 ", {1, 2}},
                                                      {"01 02 G", {1, 2}},
                                                      {"01-02", {1, 2}},
                                                      {"01 02 03", {1, 2, 3}},
                                                      {"01 0203", {1, 2}},
                                                      {"01 02 03\t", {1, 2, 3}}};
    for (const auto& [line, expected] : lines) {
        texas_fixture f;
        EXPECT_EQ(f.read("@0000\n" + std::string{line} + "\nFF\nq\n"), status::done) << line;
        bytes_of all = expected;
        all.insert(all.end(), {0xFF, untouched});  // the next line goes on after it
        EXPECT_EQ(f.bytes(0, static_cast<std::int64_t>(all.size())), all) << line;
    }
}

TEST(read_texas, data_before_an_accepted_address_are_ignored)
{
    texas_fixture f{{.tlength = 0x100}};
    EXPECT_EQ(f.read("01 02\n@0200\n03\n@0000\n04\nq\n"), status::done);
    EXPECT_EQ(f.bytes(0, 2), (bytes_of{4, untouched}));
}

TEST(read_texas, an_address_that_is_not_accepted_changes_nothing)
{
    texas_fixture f{{.tlength = 0x100}};
    EXPECT_EQ(f.read("@0010\n01\n@0200\n02\nq\n"), status::done);
    EXPECT_EQ(f.bytes(0x10, 2), (bytes_of{1, 2}));
}

TEST(read_texas, a_line_across_the_end_of_the_device_is_cut)
{
    texas_fixture f{{.tlength = 0x11}};
    EXPECT_EQ(f.read("@0010\n01 02 03\nq\n"), status::done);
    EXPECT_EQ(f.bytes(0x10, 3), (bytes_of{1, 2, untouched}));
}

TEST(read_texas, without_a_q_line_the_load_fails)
{
    texas_fixture f;
    EXPECT_EQ(f.read("@0010\n01\n"), status::failed);
    EXPECT_EQ(f.buffer(0x10), 1);
    EXPECT_EQ(f.why(), "file:3: the end of the file where a line with \"q\" was expected");
}

TEST(read_texas, damaged_addresses_and_bytes_fail)
{
    texas_fixture f;
    EXPECT_EQ(f.failure("@00\n01\nq\n"), "file:1: a damaged address where an address of four digits was expected");
    EXPECT_EQ(f.read("@0000\n01 0x 03\nq\n"), status::failed);
    EXPECT_EQ(f.why(),
              "file:2: a data byte that is missing or not hexadecimal where a byte of two digits was expected");
    EXPECT_EQ(f.bytes(0, 2), (bytes_of{1, untouched}));
}

TEST(read_texas, the_load_ends_with_the_first_byte_above_the_size)
{
    texas_fixture f;
    EXPECT_EQ(f.read("@0000\n01 02 03 04\n", {.size = "2"}), status::done);
    EXPECT_EQ(f.bytes(0, 4), (bytes_of{1, 2, 3, untouched}));
}

TEST(read_texas, progress_comes_every_some_data_lines)
{
    std::string text = "@0000\n";
    for (int i = 0; i < 50; ++i) text += "01 02 03 04\n";
    text += "q\n";
    for (const int more : {0, 1}) {  // on both sides of a change of the pace
        text.resize(static_cast<std::size_t>(5 * 20 * (4 + 10) - 1 + more), '.');
        const int pace = 5 + more;
        texas_fixture f;
        EXPECT_EQ(f.read(text), status::done);
        EXPECT_EQ(f.shell.progress(), bar_over(50, pace, 10));
    }
}

}  // namespace
}  // namespace tamrix::tests
