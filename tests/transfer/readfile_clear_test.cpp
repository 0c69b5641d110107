// What the load dialog does with the buffer before it loads.
#include "formats/load_fixture.h"

#include <gtest/gtest.h>

namespace tamrix::tests {
namespace {

using strings = std::vector<std::string>;
using bytes_of = std::vector<std::uint8_t>;

TEST(readfile, clearing_to_00_writes_one_byte_more_than_clearing_to_FF)
{
    temp_folder files;
    const std::string file = files.write("a.hex", ":00000001FF\r\n");
    load_fixture zeros;
    zeros.load(file, {.format = 1, .clear = 1});
    EXPECT_EQ(zeros.bytes(0, 0x1001), bytes_of(0x1001, 0x00));
    EXPECT_EQ(zeros.buffer(0x1001), plug_in_fixture::untouched);

    load_fixture ones;
    ones.load(file, {.format = 1, .clear = 0});
    EXPECT_EQ(ones.bytes(0, 0x1000), bytes_of(0x1000, 0xFF));
    EXPECT_EQ(ones.buffer(0x1000), plug_in_fixture::untouched);
}

TEST(readfile, clearing_to_00_is_left_to_a_binary_load_from_0_to_0)
{
    temp_folder files;
    load_fixture f;
    f.load(files.path("missing.bin"), {.clear = 1});
    EXPECT_TRUE(f.buffer_untouched());
    for (const load_entries& entries :
         {load_entries{.from_file = "1", .clear = 1}, load_entries{.to_buffer = "1", .clear = 1}}) {
        load_fixture other;
        other.load(files.path("missing.bin"), entries);
        EXPECT_EQ(other.bytes(0, 0x1001), bytes_of(0x1001, 0x00)) << entries.to_buffer;
    }
}

TEST(readfile, disable_clears_nothing)
{
    temp_folder files;
    load_fixture f;
    f.load(files.write("a.hex", ":00000001FF\r\n"), {.format = 1, .clear = 2});
    EXPECT_TRUE(f.buffer_untouched());
}

TEST(readfile, a_clear_that_runs_past_the_view_stops_there)
{
    temp_folder files;
    load_fixture f;
    f.session.blocks.buflength(0) = 0x10000;  // more than what was mapped
    EXPECT_EQ(f.load(files.write("a.hex", ":00000001FF\r\n"), {.format = 1, .clear = 0}), status::done);
    EXPECT_EQ(f.buffer(0x1000 + 2199), 0xFF);
}

TEST(readfile, a_device_above_the_mapping_limit_is_not_cleared)
{
    temp_folder files;
    load_fixture f{{.tlength = 0x10800001}};
    f.session.blocks.buflength(0) = 0x1000;
    f.load(files.path("missing.hex"), {.format = 1, .clear = 0});
    EXPECT_TRUE(f.buffer_untouched());
    f.session.blocks.tlength(0) = 0x10800000;
    f.load(files.path("missing.hex"), {.format = 1, .clear = 0});
    EXPECT_EQ(f.bytes(0, 0x1000), bytes_of(0x1000, 0xFF)) << "that of the limit itself is";
}

TEST(readfile, a_refused_file_address_leaves_the_clear_in_force_and_the_dialog_open)
{
    temp_folder files;
    load_fixture f;
    EXPECT_EQ(f.load(files.write("a.bin", "abc"), {.from_file = "4", .clear = 0}), status::rejected);
    EXPECT_EQ(f.shell.boxes(), strings{"<From File Address> > File Size!"});
    EXPECT_TRUE(f.stayed_open);
    EXPECT_EQ(f.bytes(0, 0x1000), bytes_of(0x1000, 0xFF));
    EXPECT_EQ(f.status_text(), ">>Load File Fail!\n>> 0.00Sec\n");
}

}  // namespace
}  // namespace tamrix::tests
