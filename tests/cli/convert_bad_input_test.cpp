#include "cli/convert_fixture.h"

#include <algorithm>
#include <csignal>
#include <thread>

#include <sys/wait.h>
#include <unistd.h>

namespace tamrix::tests {

using testing::StartsWith;

class convert_bad_input : public convert_test {
protected:
    /// The command fails with these lines, and OUT stays as it was.
    void expect_failed(const std::string& in, const std::string& lines, const std::vector<std::string>& options = {},
                       const std::string& status_lines = "")
    {
        std::vector<std::string> arguments{in, "out.bin"};
        arguments.insert(arguments.end(), options.begin(), options.end());
        folder.write("out.bin", "as it was");
        const auto result = convert(arguments);
        EXPECT_EQ(result.status, 1);
        EXPECT_THAT(result.out, StartsWith(status_lines));
        EXPECT_EQ(result.err, lines);
        EXPECT_EQ(read_text(folder.path("out.bin")), "as it was");
    }
    /// Also where it goes through a device.
    void expect_damaged(const std::string& in, const std::string& places)
    {
        const std::string lines =
            places + "tamrix: damaged files are refused; --accept-damage takes what can be read\n";
        expect_failed(in, lines);
        expect_failed(in, lines, {"--device-words", "100"});
    }
};

TEST_F(convert_bad_input, a_missing_file_is_told_and_nothing_is_written)
{
    expect_failed("none.hex", "tamrix: none.hex: no such file\n");
    expect_failed("none.hex", "tamrix: none.hex: no such file\n", {"--from", "intel", "--device-words", "100"},
                  ">>Load File Fail!\n>> ");
}

TEST_F(convert_bad_input, a_directory_is_told_and_nothing_is_written)
{
    std::filesystem::create_directory(folder.path("folder"));
    expect_failed("folder", "tamrix: folder: a directory where a file was expected\n");
}

TEST_F(convert_bad_input, a_file_without_permission_is_told_and_nothing_is_written)
{
    folder.write("in.bin", "abc");
    std::filesystem::permissions(folder.path("in.bin"), std::filesystem::perms::none);
    const auto result =
        tamrix_command({"convert", "in.bin", "out.bin"}, {.folder = folder.path(""), .without_rights_of_root = true});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "tamrix: in.bin: permission denied\n");
    EXPECT_FALSE(exists("out.bin"));
}

TEST_F(convert_bad_input, a_device_or_pipe_is_told_and_does_not_hang)
{
    expect_failed("/dev/zero", "tamrix: /dev/zero: a device where a file was expected\n");
    ASSERT_EQ(::mkfifo(folder.path("pipe").c_str(), 0600), 0);
    expect_failed("pipe", "tamrix: pipe: a device where a file was expected\n");
}

TEST_F(convert_bad_input, a_file_in_which_nothing_is_found_is_refused)
{
    folder.write("empty.bin", "");
    folder.write("end.hex", ":00000001FF\r\n");
    folder.write("text.txt", "Hello\n");
    expect_failed("empty.bin", "tamrix: empty.bin: an empty file\n");
    expect_failed("end.hex", "tamrix: end.hex: no data of the format intel in it\n");
    expect_failed("text.txt",
                  "tamrix: text.txt: no data of the format motorola in it; text.txt:1: 'H' in column 1 where 'S' was "
                  "expected\n",
                  {"--from", "motorola"});
    EXPECT_EQ(convert({"end.hex", "out.bin", "--accept-damage"}).status, 1);
}

TEST_F(convert_bad_input, an_unknown_record_type_is_told_with_its_line)
{
    folder.write("boot.hex", ":0100000041BE\r\n:0100010042BC\r\n:0000000"
                             "7F9\r\n:00000001FF\r\n");
    expect_damaged("boot.hex", "tamrix: boot.hex:3: record type 07 where 00 to 05 was expected\n");
}

TEST_F(convert_bad_input, a_bad_checksum_is_told_with_its_line_and_can_be_accepted)
{
    folder.write("boot.hex", ":0100000041BE\r\n:0100010042BD\r\n:0100020043BA\r\n:00000001FF\r\n");
    expect_damaged("boot.hex", "tamrix: boot.hex:2: checksum BD where BC was expected\n");
    const auto result = convert({"boot.hex", "out.bin", "--accept-damage"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err,
              "tamrix: boot.hex:2: checksum BD where BC was expected\ntamrix: note: the damage is accepted\n");
    EXPECT_EQ(read_text(folder.path("out.bin")), "ABC");
}

TEST_F(convert_bad_input, of_many_damaged_places_ten_are_told_and_their_number)
{
    std::string text;
    for (int i = 0; i < 12; ++i) text += ":0100000041BF\r\n";
    folder.write("many.hex", text + ":00000001FF\r\n");
    const auto result = convert({"many.hex", "out.bin"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, testing::HasSubstr("many.hex: damaged at 23 places in all\n"));
    EXPECT_EQ(std::ranges::count(result.err, '\n'), 12);
    EXPECT_FALSE(exists("out.bin"));
}

TEST_F(convert_bad_input, a_truncated_record_is_told_with_its_line)
{
    folder.write("in.hex", ":0100000041BE\r\n:10001000000102030405");
    const auto result = convert({"in.hex", "out.bin"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, StartsWith("tamrix: in.hex:2: "));
}

TEST_F(convert_bad_input, a_directory_as_output_is_a_failed_save)
{
    folder.write("in.bin", "abc");
    std::filesystem::create_directory(folder.path("folder"));
    const auto result = convert({"in.bin", "folder", "--to", "binary"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "tamrix: folder: a directory where a file was expected\n");
}

TEST_F(convert_bad_input, an_output_that_may_not_be_written_is_a_failed_save_and_stays)
{
    folder.write("in.bin", "abc");
    folder.write("out.bin", "as it was");
    std::filesystem::permissions(folder.path("out.bin"), std::filesystem::perms::owner_read);
    const auto result =
        tamrix_command({"convert", "in.bin", "out.bin"}, {.folder = folder.path(""), .without_rights_of_root = true});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "tamrix: out.bin: permission denied\n");
    EXPECT_EQ(read_text(folder.path("out.bin")), "as it was");
}

TEST_F(convert_bad_input, an_output_in_a_folder_that_is_not_there_is_a_failed_save)
{
    folder.write("in.bin", "abc");
    const auto result = convert({"in.bin", "none/out.bin"});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "tamrix: none/out.bin: the folder none does not exist\n");
}

TEST_F(convert_bad_input, a_full_disk_is_a_failed_save)
{
    folder.write("in.bin", "abc");
    for (const char* to : {"binary", "intel", "motorola", "tektronix"}) {
        const auto result = convert({"in.bin", "/dev/full", "--to", to});
        EXPECT_EQ(result.status, 1);
        EXPECT_EQ(result.err, "tamrix: /dev/full: No space left on device\n");
    }
}

TEST_F(convert_bad_input, a_gigabyte_of_zeros_goes_through_a_temporary_file)
{
    folder.write("zeros.bin", "");
    std::filesystem::create_directory(folder.path("tmp"));
    std::filesystem::resize_file(folder.path("zeros.bin"), 1 << 30);
    const auto result = tamrix_command({"convert", "zeros.bin", "out.bin", "--from-mode", "normal"},
                                       {.folder = folder.path(""), .environment = {"TMPDIR=" + folder.path("tmp")}});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(run_program({"cmp", folder.path("zeros.bin"), folder.path("out.bin")}).status, 0);
    EXPECT_TRUE(std::filesystem::is_empty(folder.path("tmp")));
}

TEST_F(convert_bad_input, a_gigabyte_of_zeros_that_should_be_a_text_file_is_walked_and_fails)
{
    folder.write("zeros.hex", "");
    std::filesystem::resize_file(folder.path("zeros.hex"), 1 << 27);
    const auto result = convert({"zeros.hex", "out.bin", "--from", "intel"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, StartsWith("tamrix: zeros.hex: no data of the format intel in it; zeros.hex:1: "));
    EXPECT_FALSE(exists("out.bin"));
}

TEST_F(convert_bad_input, a_range_of_an_image_that_is_saved_whole_is_refused)
{
    folder.write("zeros.bin", "");
    std::filesystem::resize_file(folder.path("zeros.bin"), 0x10800000);
    const auto result = convert({"zeros.bin", "out.bin", "--save-from", "10", "--from-mode", "normal"});
    EXPECT_EQ(result.status, 2);
    EXPECT_EQ(result.err, "tamrix: --save-from: an image of this size is saved whole\n");
}

TEST_F(convert_bad_input, a_temporary_folder_that_cannot_be_made_is_told)
{
    folder.write("zeros.bin", "");
    std::filesystem::resize_file(folder.path("zeros.bin"), 0x10800000);
    const auto result = tamrix_command({"convert", "zeros.bin", "out.bin", "--from-mode", "normal"},
                                       {.folder = folder.path(""), .environment = {"TMPDIR=" + folder.path("none")}});
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "tamrix: temporary folder: No such file or directory\n");
    EXPECT_FALSE(exists("out.bin"));
}

TEST_F(convert_bad_input, a_killed_command_leaves_nothing_in_shared_memory)
{
    folder.write("zeros.bin", "");
    std::filesystem::resize_file(folder.path("zeros.bin"), 200 << 20);
    std::filesystem::create_directory(folder.path("tmp"));
    const auto result =
        run_program({"sh", "-c",
                     TAMRIX_COMMAND " convert zeros.bin out.hex --from-mode normal & child=$!; "
                                    "while kill -0 $child && [ ! -s tmp/*/saved ]; do sleep 0.01; done; "
                                    "kill -9 $child; wait $child; echo $?; ls /dev/shm | grep -c \"^cli-$child-\""},
                    {.folder = folder.path(""), .environment = {"TMPDIR=" + folder.path("tmp")}});
    EXPECT_EQ(result.out, "137\n0\n");
}

}  // namespace tamrix::tests
