// Files that other tools write are loaded byte for byte, and they read what is saved here.
#include "cli/convert_fixture.h"

#include <cstdint>

namespace tamrix::tests {

namespace {

struct image_case {
    std::size_t size;
    std::uint32_t start;
};

std::string name_of(const testing::TestParamInfo<image_case>& info)
{
    return std::to_string(info.param.size) + "_bytes_at_" + std::to_string(info.param.start);
}

constexpr std::size_t sizes[] = {1, 15, 16, 31, 32, 33, 0xFFFF, 0x10000, 0x10001, 0x100000};
constexpr std::uint32_t starts[] = {0, 0xFFF0, 0x10000, 0x1FFF0};

/// Those whose last byte is below `end`.
std::vector<image_case> cases_up_to(std::uint64_t end)
{
    std::vector<image_case> cases;
    for (const std::size_t size : sizes) {
        for (const std::uint32_t start : starts) {
            if (start + size <= end) cases.push_back({size, start});
        }
    }
    return cases;
}

std::string number(std::uint64_t value) { return std::to_string(value); }

std::string hexadecimal(std::uint64_t value)
{
    char text[20];
    std::snprintf(text, sizeof text, "%llX", static_cast<unsigned long long>(value));
    return text;
}

}  // namespace

class peers : public convert_test, public testing::WithParamInterface<image_case> {
protected:
    void SetUp() override
    {
        image = random_bytes(GetParam().size, 7);
        folder.write("image.bin", image);
    }

    void run(std::vector<std::string> words)
    {
        const auto result = run_program(words, {.folder = folder.path("")});
        ASSERT_EQ(result.status, 0) << words[0] << ": " << result.err;
    }

    /// Loads `file` from `start` on, so that the saved image is what the tool was given.
    void expect_loaded(const std::string& file)
    {
        const auto result = convert({file, "loaded.bin", "--from-file", hexadecimal(GetParam().start)});
        EXPECT_EQ(result.status, 0) << result.err;
        EXPECT_EQ(read_bytes(folder.path("loaded.bin")), image) << file;
    }

    /// Saves the image with its start address as `format`.
    void save_as(const std::string& file, const std::string& format)
    {
        const std::string start = hexadecimal(GetParam().start);
        const auto result = convert({"image.bin", file, "--to", format, "--to-buffer", start, "--save-from", start,
                                     "--save-size", hexadecimal(image.size())});
        ASSERT_EQ(result.status, 0) << result.err;
    }

    void expect_srec_cat_reads(const std::string& file, const std::string& option)
    {
        run({"srec_cat", file, option, "-offset", "-" + number(GetParam().start), "-o", "read.bin", "-binary"});
        EXPECT_EQ(read_bytes(folder.path("read.bin")), image) << file;
    }

    void expect_objcopy_reads(const std::string& file, const std::string& format)
    {
        run({"objcopy", "-I", format, "-O", "binary", file, "read.bin"});
        EXPECT_EQ(read_bytes(folder.path("read.bin")), image) << file;
    }

    std::vector<std::uint8_t> image;
};

/// The cases that a 16-bit address can hold.
class peers_of_64_kib : public peers {};

TEST_P(peers, an_intel_file_of_srec_cat_is_loaded_byte_for_byte)
{
    run({"srec_cat", "image.bin", "-binary", "-offset", number(GetParam().start), "-o", "peer.hex", "-intel"});
    expect_loaded("peer.hex");
}

TEST_P(peers, an_intel_file_of_objcopy_is_loaded_byte_for_byte)
{
    run({"objcopy", "-I", "binary", "-O", "ihex", "--change-addresses", number(GetParam().start), "image.bin",
         "peer.hex"});
    expect_loaded("peer.hex");
}

TEST_P(peers, srec_cat_and_objcopy_read_a_saved_intel_file)
{
    save_as("saved.hex", "intel");
    expect_srec_cat_reads("saved.hex", "-intel");
    expect_objcopy_reads("saved.hex", "ihex");
}

TEST_P(peers, srec_cat_and_objcopy_read_a_saved_motorola_file)
{
    save_as("saved.s37", "motorola");
    expect_srec_cat_reads("saved.s37", "-motorola");
    expect_objcopy_reads("saved.s37", "srec");
}

/// Our end line carries a letter that srec_cat does not take; the records before it are the same.
TEST_P(peers_of_64_kib, srec_cat_reads_the_records_of_a_saved_tektronix_file)
{
    save_as("saved.tek", "tektronix");
    std::string text = read_text(folder.path("saved.tek"));
    const std::string end_line = "/0000000000r\r\n";
    ASSERT_TRUE(text.ends_with(end_line));
    folder.write("saved.tek", text.substr(0, text.size() - end_line.size()));
    expect_srec_cat_reads("saved.tek", "-tektronix");
}

TEST_P(peers, motorola_files_of_srec_cat_are_loaded_in_every_width_and_record_length)
{
    const std::uint64_t end = GetParam().start + image.size();
    for (const int width : {2, 3, 4}) {
        if (end > std::uint64_t{1} << (8 * width)) continue;
        for (const std::string length : {"20", "44", "80"}) {
            run({"srec_cat", "image.bin", "-binary", "-offset", number(GetParam().start), "-o", "peer.s", "-motorola",
                 "-address-length=" + std::to_string(width), "-line-length=" + length, "-disable=data-count",
                 "-execution-start-address=0"});
            expect_loaded("peer.s");
        }
    }
}

TEST_P(peers, a_motorola_file_of_objcopy_is_loaded_byte_for_byte)
{
    run({"objcopy", "-I", "binary", "-O", "srec", "--change-addresses", number(GetParam().start), "image.bin",
         "peer.s"});
    expect_loaded("peer.s");
}

/// srec_cat ends a file only where it receives a start address; without the end record the load fails, with all data
/// loaded.
TEST_P(peers_of_64_kib, tektronix_files_of_srec_cat_with_an_end_record_are_loaded_byte_for_byte)
{
    const std::string start = number(GetParam().start);
    run({"srec_cat", "image.bin", "-binary", "-offset", start, "-o", "peer.tek", "-tektronix"});
    EXPECT_EQ(convert({"peer.tek", "loaded.bin"}).status, 1);
    run({"srec_cat", "image.bin", "-binary", "-offset", start, "-execution-start-address=0", "-o", "peer.tek",
         "-tektronix"});
    expect_loaded("peer.tek");
}

TEST_P(peers_of_64_kib, texas_instrument_texts_of_srec_cat_are_loaded_byte_for_byte)
{
    run({"srec_cat", "image.bin", "-binary", "-offset", number(GetParam().start), "-o", "peer.txt", "-ti-txt"});
    // Behind the first line of an "@" block the buffer position counts as a file address, so the start stays 0 here.
    const std::string start = hexadecimal(GetParam().start);
    const auto result =
        convert({"peer.txt", "loaded.bin", "--save-from", start, "--save-size", hexadecimal(image.size())});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(read_bytes(folder.path("loaded.bin")), image);
}

TEST_P(peers, what_is_saved_here_is_loaded_here)
{
    for (const std::string format : {"intel", "motorola"}) {
        save_as("saved.hex", format);
        expect_loaded("saved.hex");
    }
}

TEST_P(peers_of_64_kib, what_is_saved_here_as_tektronix_is_loaded_here)
{
    save_as("saved.tek", "tektronix");
    expect_loaded("saved.tek");
}

INSTANTIATE_TEST_SUITE_P(sizes_and_starts, peers, testing::ValuesIn(cases_up_to(0xFFFFFFFF)), name_of);
INSTANTIATE_TEST_SUITE_P(sizes_and_starts, peers_of_64_kib, testing::ValuesIn(cases_up_to(0x10000)), name_of);

using peers_with_gaps = convert_test;

/// Three pieces with gaps between; what no record fills is FF.
TEST_F(peers_with_gaps, every_format_of_srec_cat_leaves_the_gaps_blank)
{
    const auto data = random_bytes(0x300, 3);
    folder.write("image.bin", data);
    const command_setting there{.folder = folder.path("")};
    std::vector<std::uint8_t> expected(0x2100, 0xFF);
    std::copy_n(data.begin(), 0x100, expected.begin() + 0x10);
    std::copy_n(data.begin() + 0x100, 0x100, expected.begin() + 0x1001);
    std::copy_n(data.begin() + 0x200, 0x100, expected.begin() + 0x2000);
    for (const std::string format : {"-intel", "-motorola", "-tektronix", "-ti-txt"}) {
        const auto made = run_program({"srec_cat",
                                       "(",
                                       "image.bin",
                                       "-binary",
                                       "-crop",
                                       "0",
                                       "0x100",
                                       "-offset",
                                       "0x10",
                                       ")",
                                       "(",
                                       "image.bin",
                                       "-binary",
                                       "-crop",
                                       "0x100",
                                       "0x200",
                                       "-offset",
                                       "0xF01",
                                       ")",
                                       "(",
                                       "image.bin",
                                       "-binary",
                                       "-crop",
                                       "0x200",
                                       "0x300",
                                       "-offset",
                                       "0x1E00",
                                       ")",
                                       "-execution-start-address=0",
                                       "-o",
                                       "peer.txt",
                                       format},
                                      there);
        ASSERT_EQ(made.status, 0) << made.err;
        ASSERT_EQ(convert({"peer.txt", "loaded.bin", "--save-from", "0"}).status, 0) << format;
        EXPECT_EQ(read_bytes(folder.path("loaded.bin")), expected) << format;
    }
}

using peers_with_counts = convert_test;

/// Through a device the count of the records, S5, already ends the load; the count above 65535 records, S6, is a type
/// that fails.
TEST_F(peers_with_counts, a_motorola_file_with_a_24_bit_count_is_sound_but_fails_in_a_device)
{
    const auto image = random_bytes(0x100000, 9);
    folder.write("image.bin", image);
    const auto made = run_program({"srec_cat", "image.bin", "-binary", "-o", "peer.s", "-motorola", "-line-length=20"},
                                  {.folder = folder.path("")});
    ASSERT_EQ(made.status, 0) << made.err;
    ASSERT_EQ(convert({"peer.s", "loaded.bin"}).status, 0);
    EXPECT_TRUE(read_bytes(folder.path("loaded.bin")) == image);
    const auto result = convert({"peer.s", "loaded.bin", "--clear", "ff"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, testing::HasSubstr("record type 6 where S0 to S9 was expected"));
}

using peers_without_data = convert_test;

TEST_F(peers_without_data, an_empty_file_of_srec_cat_is_refused)
{
    folder.write("image.bin", "");
    const command_setting there{.folder = folder.path("")};
    ASSERT_EQ(run_program({"srec_cat", "image.bin", "-binary", "-o", "peer.hex", "-intel"}, there).status, 0);
    const auto result = convert({"peer.hex", "loaded.bin"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "tamrix: peer.hex: no data of the format intel in it\n");
}

}  // namespace tamrix::tests
