#include "cli/run_command.h"
#include "support/temp_files.h"

#include <gtest/gtest.h>

namespace tamrix::tests {

TEST(detect, tells_index_and_name_of_every_file)
{
    const temp_folder folder;
    folder.write("boot.hex", ":0100000041BE\r\n:00000001FF\r\n");
    folder.write("image.bin", std::string("\0\1\2\3", 4));
    folder.write("empty", "");
    const auto result = tamrix_command({"detect", "boot.hex", "image.bin", "empty"}, {.folder = folder.path("")});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "boot.hex: 1 intel\nimage.bin: 0 binary\nempty: 0 binary\n");
    EXPECT_EQ(result.err, "");
}

TEST(detect, goes_by_the_content_and_not_by_the_name)
{
    const temp_folder folder;
    folder.write("boot.bin", ":0100000041BE\r\n");
    EXPECT_EQ(tamrix_command({"detect", "boot.bin"}, {.folder = folder.path("")}).out, "boot.bin: 1 intel\n");
}

TEST(detect, tells_that_a_file_is_damaged)
{
    const temp_folder folder;
    folder.write("boot.hex", ":0100000041BF\r\n");
    const auto result = tamrix_command({"detect", "boot.hex"}, {.folder = folder.path("")});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "boot.hex: 1 intel (damaged)\n");
}

TEST(detect, tells_the_files_that_cannot_be_read_and_goes_on)
{
    const temp_folder folder;
    folder.write("boot.hex", ":0100000041BE\r\n");
    const auto result = tamrix_command({"detect", "none.hex", ".", "boot.hex"}, {.folder = folder.path("")});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.out, "boot.hex: 1 intel\n");
    EXPECT_EQ(result.err, "tamrix: none.hex: no such file\ntamrix: .: a directory where a file was expected\n");
}

}  // namespace tamrix::tests
