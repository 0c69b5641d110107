#include "load_fixture.h"

#include <gtest/gtest.h>

#include <map>

namespace tamrix::tests {
namespace {

using bytes_of = std::vector<std::uint8_t>;

TEST(read_binary, a_file_start_at_the_end_of_the_file_loads_nothing)
{
    temp_folder files;
    load_fixture f;
    EXPECT_EQ(f.load(files.write("a.bin", "abc"), {.from_file = "3"}), status::done);
    EXPECT_TRUE(f.buffer_untouched());
}

TEST(read_binary, a_file_start_behind_the_end_of_the_file_is_refused_and_the_dialog_stays)
{
    temp_folder files;
    load_fixture f;
    EXPECT_EQ(f.load(files.write("a.bin", "abc"), {.from_file = "4"}), status::rejected);
    EXPECT_TRUE(f.stayed_open);
    EXPECT_EQ(f.shell.boxes(), std::vector<std::string>{"<From File Address> > File Size!"});
}

TEST(read_binary, a_short_file_has_FF_behind_it_up_to_the_buffer_length)
{
    temp_folder files;
    load_fixture f;
    EXPECT_EQ(f.load(files.write("a.bin", "abc"), {.clear = 0}), status::done);
    EXPECT_EQ(f.bytes(0, 4), (bytes_of{'a', 'b', 'c', 0xFF}));
    EXPECT_EQ(f.bytes(3, 0xFFE), bytes_of(0xFFE, 0xFF));
    EXPECT_EQ(f.buffer(0x1001), 0);  // the one read set the rest of the view to 0
}

TEST(read_binary, a_short_file_has_00_behind_it_to_the_end_of_the_view)
{
    temp_folder files;
    load_fixture f;
    EXPECT_EQ(f.load(files.write("a.bin", "abc"), {.clear = 1}), status::done);
    EXPECT_EQ(f.bytes(3, 0x1000 + 2200 - 3), bytes_of(0x1000 + 2200 - 3, 0x00));
}

TEST(read_binary, without_a_clear_the_old_content_stays_behind_the_file)
{
    temp_folder files;
    load_fixture f;
    EXPECT_EQ(f.load(files.write("a.bin", "abc"), {.clear = 2}), status::done);
    EXPECT_EQ(f.bytes(0, 4), (bytes_of{'a', 'b', 'c', plug_in_fixture::untouched}));
}

TEST(read_binary, the_one_read_of_a_whole_file_looks_at_no_size_limit)
{
    temp_folder files;
    load_fixture f;
    f.load(files.write("a.bin", "abcdef"), {.size = "2", .clear = 1});
    EXPECT_EQ(f.bytes(0, 6), (bytes_of{'a', 'b', 'c', 'd', 'e', 'f'}));
}

TEST(read_binary, a_file_longer_than_the_view_fills_it_and_no_more)
{
    temp_folder files;
    const bytes_of content = random_bytes(0x1000 + 2200 + 500);
    load_fixture f;
    EXPECT_EQ(f.load(files.write("a.bin", content), {.clear = 0}), status::done);
    EXPECT_EQ(f.bytes(0, 0x1000 + 2200), bytes_of(content.begin(), content.begin() + 0x1000 + 2200));
}

TEST(read_binary, odd_bytes_of_a_10_byte_file_go_to_five_addresses)
{
    temp_folder files;
    load_fixture f;
    f.load(files.write("a.bin", "0123456789"), {.from_mode = 2, .to_mode = 0});
    EXPECT_EQ(f.bytes(0, 6), (bytes_of{'1', '3', '5', '7', '9', plug_in_fixture::untouched}));
}

TEST(read_binary, the_device_limits_the_load_from_the_start_address_on)
{
    temp_folder files;
    load_fixture f;
    f.load(files.write("a.bin", std::string(0x100, 'x')), {.to_buffer = "FF0"});
    EXPECT_EQ(f.buffer(0xFFF), 'x');
    EXPECT_EQ(f.buffer(0x1000), plug_in_fixture::untouched);
}

TEST(read_binary, a_device_larger_than_the_buffer_fails_where_the_buffer_ends)
{
    temp_folder files;
    load_fixture f{{.tlength = 0x10000}};
    EXPECT_EQ(f.load(files.write("a.bin", std::string(0x2000, 'x')), {.to_buffer = "10"}), status::failed);
    EXPECT_EQ(f.buffer(0x1000 + 2199), 'x');
    EXPECT_EQ(f.variables.transfer.why_it_failed.found, "subscript out of range: ibuffer(6296)");
}

TEST(read_binary, every_byte_selection_agrees_with_a_slow_model)
{
    temp_folder files;
    const bytes_of content = random_bytes(777);
    const std::string file = files.write("a.bin", content);
    const std::pair<int, int> modes[] = {{1, 0}, {2, 0}, {2, 1}, {4, 0}, {4, 1}, {4, 2}, {4, 3}};
    for (int from = 0; from < 7; ++from) {
        for (int to = 0; to < 7; ++to) {
            load_fixture f{{.tlength = 0x400}};
            f.load(file, {.to_buffer = "13", .from_file = "7", .size = "123", .from_mode = from, .to_mode = to});
            std::map<int, std::uint8_t> expected;
            const auto [file_step, file_phase] = modes[from];
            const auto [buffer_step, buffer_phase] = modes[to];
            int taken = 0;
            for (int at = 7 + file_phase; at < 777 && taken < 0x123; at += file_step, ++taken) {
                const bool whole_step = at - file_phase + file_step <= 777;
                const bool fits = 0x13 + (taken + 1) * buffer_step <= 0x400;
                if (whole_step && fits) expected[0x13 + buffer_phase + taken * buffer_step] = content[at];
            }
            for (int address = 0; address < 0x800; ++address) {
                const auto known = expected.find(address);
                ASSERT_EQ(f.buffer(address), known != expected.end() ? known->second : plug_in_fixture::untouched)
                    << from << " to " << to << " at " << address;
            }
        }
    }
}

TEST(read_binary, the_general_case_shows_ten_steps_of_progress)
{
    temp_folder files;
    load_fixture f;
    f.load(files.write("a.bin", std::string(1000, 'x')));
    EXPECT_EQ(f.shell.progress().size(), 10u);  // the first step, 0, is what the bar shows already
    EXPECT_EQ(f.shell.progress().back(), 100);
    EXPECT_DOUBLE_EQ(f.shell.progress().front(), 100.0 * 101 / 1001);
    EXPECT_EQ(f.shell.pumps(), 0);
}

TEST(read_binary, an_empty_file_is_a_success)
{
    temp_folder files;
    load_fixture f;
    EXPECT_EQ(f.load(files.write("a.bin", ""), {.clear = 0}), status::done);
    EXPECT_EQ(f.bytes(0, 0x1001), bytes_of(0x1001, 0xFF));
    EXPECT_EQ(f.load(files.write("a.bin", ""), {.clear = 2}), status::done);
}

TEST(read_binary, a_buffer_that_could_not_be_attached_is_an_error_not_a_crash)
{
    temp_folder files;
    load_fixture f;
    f.session.blocks.releasebig();
    EXPECT_EQ(f.load(files.write("a.bin", "abc"), {.clear = 2}), status::failed);
    EXPECT_EQ(f.variables.transfer.why_it_failed.found, "subscript out of range: ibuffer(1)");
}

}  // namespace
}  // namespace tamrix::tests
