#include "cli/convert_fixture.h"

namespace tamrix::tests {

using testing::HasSubstr;

class convert_device : public convert_test {
protected:
    /// A conversion of "in.bin" that must be refused with this text.
    void expect_refused(const std::vector<std::string>& options, const std::string& text,
                        const std::string& out = "out.bin")
    {
        std::vector<std::string> arguments{"in.bin", out};
        arguments.insert(arguments.end(), options.begin(), options.end());
        const auto result = convert(arguments);
        EXPECT_EQ(result.status, 2);
        EXPECT_EQ(result.err, "tamrix: " + text + "\n");
        EXPECT_FALSE(exists(out));
    }
};

TEST_F(convert_device, the_whole_device_is_saved_where_its_size_is_given)
{
    folder.write("in.bin", "abc");
    EXPECT_EQ(converted("in.bin", "out.bin", {"--device-words", "6"}), "abc\xFF\xFF\xFF");
    EXPECT_EQ(converted("in.bin", "out.bin", {"--device-words", "0x3", "--word-bytes", "2"}), "abc\xFF\xFF\xFF");
    EXPECT_EQ(converted("in.bin", "out.s19", {"--device-words", "4"}), "S30900000000616263FFD1\r\nS70500000000FA\r\n");
}

TEST_F(convert_device, spare_units_follow_the_main_area)
{
    folder.write("in.bin", "abc");
    EXPECT_EQ(converted("in.bin", "out.bin", {"--device-words", "4", "--spare-units", "1"}),
              "abc" + std::string(17, '\xFF'));
    EXPECT_EQ(converted("in.bin", "out.bin", {"--spare-units", "1"}), "abc");
    EXPECT_EQ(converted("in.bin", "out.bin", {"--spare-units", "1", "--save-size", "13"}),
              "abc" + std::string(16, '\xFF'));
}

TEST_F(convert_device, a_file_that_does_not_fit_brings_a_note)
{
    folder.write("in.bin", "0123456789");
    const auto result = convert({"in.bin", "out.bin", "--device-words", "4"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err,
              "tamrix: note: in.bin: reaches to 9 in the buffer; what lies beyond the end of the device (4) is left "
              "out\n");
    EXPECT_EQ(read_text(folder.path("out.bin")), "0123");
}

TEST_F(convert_device, a_buffer_that_is_given_limits_the_device)
{
    folder.write("in.bin", "0123456789");
    const auto result = convert({"in.bin", "out.bin", "--buffer-bytes", "4"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.err, HasSubstr("what lies beyond the end of the device (4) is left out"));
    EXPECT_EQ(read_text(folder.path("out.bin")), "0123");
    EXPECT_EQ(converted("in.bin", "out.bin", {"--buffer-bytes", "100"}), "0123456789");
}

TEST_F(convert_device, a_start_behind_the_buffer_is_refused)
{
    folder.write("in.bin", "abc");
    expect_refused({"--to-buffer", "1001", "--buffer-bytes", "0x1000"},
                   "--to-buffer 1001: beyond the end of the buffer (1000)");
    EXPECT_EQ(convert({"in.bin", "out.bin", "--to-buffer", "1000", "--buffer-bytes", "0x1000"}).status, 0);
}

TEST_F(convert_device, a_start_behind_the_file_is_refused)
{
    folder.write("in.bin", "abc");
    const auto result = convert({"in.bin", "out.bin", "--from-file", "4"});
    EXPECT_EQ(result.status, 2);
    EXPECT_THAT(result.out, HasSubstr(">>Load File Fail!\n"));
    EXPECT_EQ(result.err, "tamrix: --from-file 4: beyond the end of the file (3)\n");
    EXPECT_FALSE(exists("out.bin"));
    EXPECT_EQ(converted("in.bin", "out.bin", {"--from-file", "3"}), "");
}

TEST_F(convert_device, a_save_beyond_the_device_is_refused)
{
    folder.write("in.bin", "0123456789");
    const auto refused = [&](std::vector<std::string> options, const std::string& text) {
        options.insert(options.end(), {"--device-words", "10"});
        expect_refused(options, text);
    };
    refused({"--save-from", "B"}, "--save-from B: beyond the end of the device (A)");
    refused({"--save-from", "8", "--save-size", "3"},
            "--save-from 8 --save-size 3: reaches beyond the end of the device (A)");
    refused({"--save-size", "FFFFFFFFFF"},
            "--save-from 0 --save-size FFFFFFFFFF: reaches beyond the end of the device (A)");
    EXPECT_EQ(converted("in.bin", "out.bin", {"--save-from", "8", "--save-size", "2", "--device-words", "10"}), "89");
    EXPECT_EQ(converted("in.bin", "out.bin", {"--save-from", "8", "--save-size", "4"}), "89\xFF\xFF")
        << "without a device there is no end";
    std::filesystem::remove(folder.path("out.bin"));
    expect_refused({"--save-size", "FFFFFFFFFF"},
                   "out.bin: would be 1099511627775 bytes long; at most 4 GiB are filled");
}

TEST_F(convert_device, a_tektronix_file_holds_at_most_64_kib)
{
    folder.write("in.bin", std::string(0x10001, 'a'));
    const auto result = convert({"in.bin", "out.tek"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err,
              "tamrix: out.tek: the last byte, at 0x10000 is above 0xFFFF, the highest address of Tektronix\n");
    EXPECT_FALSE(exists("out.tek"));
    expect_refused({"--clear", "ff"}, "--save-size 10001: more than a Tektronix file can hold (10000)", "out.tek");
    EXPECT_EQ(convert({"in.bin", "out.tek", "--save-size", "10000"}).status, 0);
    EXPECT_TRUE(exists("out.tek"));
}

TEST_F(convert_device, a_device_of_many_words_can_only_be_saved_as_binary)
{
    folder.write("in.bin", "abc");
    EXPECT_EQ(convert({"in.bin", "out.hex", "--device-words", "8400000"}).status, 0);
    std::filesystem::remove(folder.path("out.hex"));
    expect_refused({"--device-words", "8400001"},
                   "--to intel: a device of 8400001 words can only be saved as binary; a larger --word-bytes makes it "
                   "fewer",
                   "out.hex");
    EXPECT_EQ(convert({"in.bin", "out.bin", "--device-words", "8400001"}).status, 0);
    EXPECT_EQ(std::filesystem::file_size(folder.path("out.bin")), 8400001u);
}

TEST_F(convert_device, a_file_of_many_bytes_is_sized_so_that_text_formats_can_be_saved)
{
    folder.write("in.bin", "");
    std::filesystem::resize_file(folder.path("in.bin"), 8400001);
    EXPECT_EQ(convert({"in.bin", "out.hex"}).status, 0);
    EXPECT_EQ(convert({"out.hex", "back.bin"}).status, 0);
    EXPECT_EQ(std::filesystem::file_size(folder.path("back.bin")), 8400001u);
}

TEST_F(convert_device, a_text_file_that_needs_too_large_a_buffer_is_refused_with_advice)
{
    folder.write("in.hex", ":020000042000DA\r\n:020000004142"
                           "7B\r\n:00000001FF\r\n");
    const auto result = convert({"in.hex", "out.bin", "--clear", "ff"});
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(
        result.err,
        "tamrix: in.hex: needs a buffer of 20000002 bytes, more than there can be (107FFFFF); --from-file 20000000 "
        "leaves out the empty bytes before its data\n");
    EXPECT_FALSE(exists("out.bin"));
    EXPECT_EQ(converted("in.hex", "out.bin", {"--from-file", "20000000"}), "AB");
}

TEST_F(convert_device, a_large_binary_file_is_refused_with_advice_where_a_text_file_is_wanted)
{
    folder.write("in.bin", "");
    std::filesystem::resize_file(folder.path("in.bin"), 0x10800000);
    expect_refused({"--clear", "ff"},
                   "in.bin: needs a buffer of 10800000 bytes, more than there can be (107FFFFF); --from-file and "
                   "--file-size take a part of it",
                   "out.hex");
    EXPECT_EQ(converted("in.bin", "out.s19", {"--from-file", "107FFFFF", "--file-size", "1"}),
              "S3060000000000F9\r\nS70500000000FA\r\n");
}

TEST_F(convert_device, a_file_may_be_converted_onto_itself)
{
    folder.write("in.bin", "abc");
    std::filesystem::create_symlink("in.bin", folder.path("link.hex"));
    EXPECT_EQ(converted("in.bin", "./in.bin", {"--swap", "2", "--crop", "0-1"}), "ba");
    EXPECT_EQ(converted("in.bin", "in.bin", {"--device-words", "3"}), "ba\xFF");
    EXPECT_EQ(converted("in.bin", "link.hex"), ":020000040000FA\r\n:030000006261FF3B\r\n:00000001FF\r\n");
    EXPECT_TRUE(std::filesystem::is_symlink(folder.path("link.hex")));
}

TEST_F(convert_test, a_start_in_a_hex16_file_counts_words)
{
    folder.write("in.hex", ":0200100012345678DA\r\n:00000001FF\r\n");
    EXPECT_EQ(converted("in.hex", "out.bin", {"--from", "intel16", "--from-file", "10"}), "\x34\x12\x78\x56");
    EXPECT_EQ(converted("in.hex", "out.bin", {"--from", "intel16", "--from-file", "8"}),
              std::string(16, '\xFF') + "\x34\x12\x78\x56");
}

}  // namespace tamrix::tests
