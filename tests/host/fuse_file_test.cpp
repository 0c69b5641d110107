#include "host/fuse_file.h"

#include "files/byte_source.h"
#include "support/temp_files.h"
#include "verify/jedec.h"

#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

namespace tamrix::host {
namespace {

class fuse_files : public testing::Test {
protected:
    tests::temp_folder folder;
    const std::string out = folder.path("out.jed");
    const device_preset device{.name = "GAL", .maker = "Somebody", .words = 10, .pins = 4, .page_length = 4};

    std::string by_plug_in(const std::string& vectors = {}) const
    {
        return folder.write("plug-in.jed",
                            "\x02MODEL: x\r\nTYPE:GAL\r\nDM: Somebody\r\nQF0000*\r\n" + vectors + "C0000*\r\n");
    }
    static jedec_reading strictly(const std::string& path)
    {
        file_source from{path};
        return verify_jedec(from, path);
    }
};

const std::vector<std::uint8_t> ten_fuses{0, 1, 1, 0, 1, 0, 0, 1, 1, 1};

}  // namespace

TEST_F(fuse_files, have_the_form_of_the_standard)
{
    save_standard_fuse_file(out, ten_fuses, device, by_plug_in("V000001 01HL *\r\nV000002 11LH *\r\n"));
    const std::string text = tests::read_text(out);
    EXPECT_TRUE(text.starts_with("\x02TYPE: GAL\r\nMAKER: Somebody*\r\nQP4*\r\nQF10*\r\nQV2*\r\nF0*\r\n"
                                 "L0000 0110*\r\nL0004 1001*\r\nL0008 11*\r\nV0001 01HL*\r\nV0002 11LH*\r\n"))
        << text;
    const jedec_reading read = strictly(out);
    EXPECT_FALSE(read.damaged()) << read.remarks.front().text();
    EXPECT_EQ(read.map.fuses, ten_fuses);
    EXPECT_EQ(read.stated_count, 10u);
}

TEST_F(fuse_files, without_vectors_have_the_pins_of_the_device)
{
    save_standard_fuse_file(out, ten_fuses, {.words = 10, .pins = 20}, by_plug_in());
    const jedec_reading read = strictly(out);
    EXPECT_FALSE(read.damaged());
    EXPECT_EQ(read.map.pins, 20u);
    EXPECT_EQ(read.map.fuses, ten_fuses) << "a device without a row length has rows too";
}

TEST_F(fuse_files, are_not_written_with_vectors_that_the_standard_has_not)
{
    folder.write("out.jed", "as it was");
    EXPECT_THROW(save_standard_fuse_file(out, ten_fuses, device, by_plug_in("V000001 01HL *\r\nV000002 01 *\r\n")),
                 std::runtime_error);
    EXPECT_EQ(tests::read_text(out), "as it was");
}

TEST_F(fuse_files, take_the_fuses_from_the_characters_of_the_buffer)
{
    const std::string buffer = "0110100111xyz";
    EXPECT_EQ(fuses_in({reinterpret_cast<const std::uint8_t*>(buffer.data()), buffer.size()}, device), ten_fuses);
}

TEST_F(fuse_files, need_fuses_in_the_buffer)
{
    const auto said = [&](std::vector<std::uint8_t> buffer) -> std::string {
        try {
            fuses_in(buffer, device);
        } catch (const std::runtime_error& error) {
            return error.what();
        }
        return "";
    };
    EXPECT_EQ(said({'0', '1', '2', '0', '0', '0', '0', '0', '0', '0'}),
              "buffer address 2: 32 where 30 or 31 was expected");
    EXPECT_EQ(said({'0', '1'}), "the buffer is smaller than the device");
}

}  // namespace tamrix::host
