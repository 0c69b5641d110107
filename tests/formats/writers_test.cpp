// The four writers, byte for byte.
#include "formats/formats.h"
#include "support/plug_in_fixture.h"
#include "support/temp_files.h"

#include <gtest/gtest.h>

namespace tamrix::tests {
namespace {

using lines = std::vector<std::string>;

struct write_fixture : plug_in_fixture {
    explicit write_fixture(const device& chosen = {.buflength = 0x40000, .tlength = 0x40000}) : plug_in_fixture{chosen}
    {
        const auto content = random_bytes(session.blocks.ibuffer.span().size());
        std::ranges::copy(content, session.blocks.ibuffer.span().begin());
        variables.transfer.fname = files.path("out");
    }
    status write(int format, std::int64_t start, std::int64_t length)
    {
        variables.transfer.bufstart = start;
        variables.transfer.savelength = length;
        transfer_job job{.plug_in = session, .transfer = variables.transfer, .progress = [this](double percent) {
                             progress.push_back(percent);
                         }};
        return run_guarded(job, formats()[static_cast<std::size_t>(format)].write);
    }
    std::string text() const { return read_text(variables.transfer.fname); }
    /// The lines of the file; every one must end with CR LF.
    lines written() const
    {
        lines result;
        const std::string all = text();
        for (std::size_t at = 0; at < all.size();) {
            const auto end = all.find("\r\n", at);
            if (end == std::string::npos) {
                ADD_FAILURE() << "a line without its end";
                break;
            }
            result.push_back(all.substr(at, end - at));
            at = end + 2;
        }
        return result;
    }

    temp_folder files;
    std::vector<double> progress;
};

TEST(write_binary, writes_the_range_and_nothing_else)
{
    write_fixture f;
    for (const std::int64_t length : {0, 1, 199, 200, 201, 4000, 100000}) {
        EXPECT_EQ(f.write(0, 0x123, length), status::done);
        EXPECT_EQ(read_bytes(f.variables.transfer.fname), f.bytes(0x123, length)) << length;
    }
}

TEST(write_binary, shows_ten_steps_and_lets_messages_pass_in_each)
{
    write_fixture f;
    f.write(0, 0, 200000);
    EXPECT_EQ(f.shell.pumps(), 10);
    ASSERT_EQ(f.progress.size(), 10u);
    EXPECT_DOUBLE_EQ(f.progress[1], 10);
    EXPECT_DOUBLE_EQ(f.progress[9], 90);
}

TEST(write_binary, a_range_behind_the_view_fails_and_leaves_what_was_whole)
{
    write_fixture f{{.buflength = 0x1000, .tlength = 0x1000}};
    const std::int64_t view = 0x1000 + 2200;
    EXPECT_EQ(f.write(0, 0, view + 1), status::failed);
    EXPECT_EQ(read_bytes(f.variables.transfer.fname), f.bytes(0, view)) << "the tail goes byte by byte";
    EXPECT_EQ(f.write(0, 0, view + 1000), status::failed);
    EXPECT_EQ(read_bytes(f.variables.transfer.fname), f.bytes(0, view / 200 * 200)) << "blocks go whole";
    EXPECT_EQ(f.variables.transfer.why_it_failed.found.substr(0, 30), "subscript out of range: ibuffe");
}

TEST(write_binary, a_full_disk_is_a_failure_that_says_so)
{
    write_fixture f;
    f.variables.transfer.fname = "/dev/full";
    for (int format = 0; format < 4; ++format) {
        EXPECT_EQ(f.write(format, 0, 1000), status::failed);
        EXPECT_EQ(f.variables.transfer.why_it_failed.text(), "/dev/full: No space left on device");
    }
}

TEST(write_binary, an_old_file_is_replaced_whole)
{
    write_fixture f;
    f.files.write("out", std::string(5000, 'x'));
    f.write(0, 0, 3);
    EXPECT_EQ(read_bytes(f.variables.transfer.fname), f.bytes(0, 3));
}

TEST(write_intel, a_range_across_a_segment_line_has_two_segments)
{
    write_fixture f;
    for (int i = 0; i < 0x20; ++i) f.buffer(0xFFF0 + i) = static_cast<std::uint8_t>(i);
    EXPECT_EQ(f.write(1, 0xFFF0, 0x20), status::done);
    EXPECT_EQ(f.written(), (lines{":020000040000FA", ":10FFF000000102030405060708090A0B0C0D0E0F89", ":020000040001F9",
                                  ":10000000101112131415161718191A1B1C1D1E1F78", ":00000001FF"}));
}

TEST(write_intel, nothing_to_save_writes_one_segment_line_and_the_end)
{
    write_fixture f;
    EXPECT_EQ(f.write(1, 0, 0), status::done);
    EXPECT_EQ(f.written(), (lines{":020000040000FA", ":00000001FF"}));
    f.write(1, 0x20010, 0);
    EXPECT_EQ(f.written(), (lines{":020000040002F8", ":00000001FF"}));
}

TEST(write_intel, a_range_that_ends_on_a_segment_line_opens_no_empty_segment)
{
    write_fixture f;
    EXPECT_EQ(f.write(1, 0xFFE0, 0x20), status::done);
    EXPECT_EQ(f.written().size(), 3u);
    EXPECT_EQ(f.written()[0], ":020000040000FA");
}

TEST(write_intel, records_have_32_bytes_and_the_last_one_the_rest)
{
    write_fixture f;
    f.write(1, 0x10000, 70);
    const lines all = f.written();
    ASSERT_EQ(all.size(), 5u);
    EXPECT_EQ(all[1].substr(0, 9), ":20000000");
    EXPECT_EQ(all[2].substr(0, 9), ":20002000");
    EXPECT_EQ(all[3].substr(0, 9), ":06004000");
}

TEST(write_intel, the_saved_length_becomes_the_progress_total)
{
    write_fixture f;
    for (const auto& [length, pace] : {std::pair{0, 1}, {319, 1}, {320, 2}, {64000, 201}, {64001, 201}}) {
        f.progress.clear();
        f.write(1, 0, length);
        const int total = length + pace;
        EXPECT_EQ(f.variables.transfer.savelength, total);
        std::vector<double> expected;  // each time that many records of 32 bytes are written
        for (int records = pace; records <= (length + 31) / 32; records += pace) {
            expected.push_back(100.0 * 32 * records / total);
        }
        EXPECT_EQ(f.progress, expected) << length;
    }
}

TEST(write_motorola, thirty_three_bytes_are_one_record_of_32_and_one_of_1)
{
    write_fixture f;
    for (int i = 0; i < 33; ++i) f.buffer(0x12345 + i) = static_cast<std::uint8_t>(i);
    EXPECT_EQ(f.write(2, 0x12345, 33), status::done);
    EXPECT_EQ(f.written(), (lines{"S32500012345000102030405060708090A0B0C0D0E0F101112131415161718191A1B1C1D1E1F81",
                                  "S306000123652050", "S70500000000FA"}));
}

TEST(write_motorola, nothing_to_save_writes_the_end_alone)
{
    write_fixture f;
    f.write(2, 0, 0);
    EXPECT_EQ(f.written(), lines{"S70500000000FA"});
}

TEST(write_tektronix, checks_add_digits_and_the_terminator_follows_the_last_data)
{
    write_fixture f;
    for (int i = 0; i < 33; ++i) f.buffer(0x12F0 + i) = static_cast<std::uint8_t>(0xF0 + i);
    EXPECT_EQ(f.write(3, 0x12F0, 33), status::done);
    EXPECT_EQ(f.written(), (lines{"/12F02014F0F1F2F3F4F5F6F7F8F9FAFBFCFDFEFF000102030405060708090A0B0C0D0E0FE0",
                                  "/1310010610"
                                  "01",
                                  "/0000000000r"}));
}

TEST(write_tektronix, the_address_is_the_low_16_bits)
{
    write_fixture f;
    f.write(3, 0x1FFFF, 1);
    EXPECT_EQ(f.written()[0].substr(0, 9), "/FFFF013D");
}

TEST(text_writers, a_range_behind_the_view_fails_and_leaves_what_was_written)
{
    write_fixture f{{.buflength = 0x1000, .tlength = 0x1000}};
    for (int format = 1; format < 4; ++format) {
        EXPECT_EQ(f.write(format, 0x1000, 2200 + 1), status::failed) << format;
        EXPECT_EQ(f.variables.transfer.why_it_failed.found, "subscript out of range: ibuffer(6296)");
    }
}

TEST(save_formats, are_those_with_a_writer_wherever_they_are_in_the_table)
{
    format table[3]{};
    table[1].write = table[2].write = [](transfer_job&) { return status::done; };
    EXPECT_EQ(save_formats(table), (std::vector<const format*>{&table[1], &table[2]}));
}

}  // namespace
}  // namespace tamrix::tests
