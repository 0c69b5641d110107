// Pipes, disks and folders that do not take everything.
#include "cli/convert_fixture.h"

#include <filesystem>

namespace tamrix::tests {

class streams : public convert_test {
protected:
    command_result shell(const std::string& line)
    {
        return run_program({"bash", "-c", line}, {.folder = folder.path("")});
    }
    std::ptrdiff_t files() const { return std::distance(std::filesystem::directory_iterator{folder.path("")}, {}); }
};

TEST_F(streams, of_two_hundred_megabytes_go_through_pipes_in_both_directions)
{
    const auto result = shell("head -c 200000000 /dev/urandom >in.bin; set -o pipefail; "
                              "cat in.bin | " TAMRIX_COMMAND " convert - - --from binary --to intel | " TAMRIX_COMMAND
                              " convert - - --to binary | cmp - in.bin && echo same");
    EXPECT_EQ(result.out, "same\n");
    EXPECT_EQ(result.err, "standard input: binary, 200000000 bytes, 0x0 to 0xBEBC1FF\n"
                          "standard output: intel, 200000000 bytes, 0x0 to 0xBEBC1FF\n"
                          "standard input: intel, 200000000 bytes, 0x0 to 0xBEBC1FF\n"
                          "standard output: binary, 200000000 bytes, 0x0 to 0xBEBC1FF\n");
}

TEST_F(streams, are_recognised_by_their_content)
{
    EXPECT_EQ(shell("printf ':0100000041BE\\n:00000001FF\\n' | " TAMRIX_COMMAND " convert - - --quiet").out, "A");
    EXPECT_EQ(shell("printf 'S10400004100\\n' | " TAMRIX_COMMAND " info - | head -2").out,
              "standard input:\n  format: motorola\n");
}

TEST_F(streams, whose_reader_closes_early_end_the_command_without_a_word)
{
    const auto result = shell("head -c 20000000 /dev/zero | " TAMRIX_COMMAND
                              " convert - - --to intel --quiet | head -c 8; status=${PIPESTATUS[1]}; echo; "
                              "echo $status");
    EXPECT_EQ(result.out, ":0200000\n141\n");
    EXPECT_EQ(result.err, "");
}

TEST_F(streams, to_a_disk_that_gets_full_leave_the_old_file_and_nothing_else)
{
    folder.write("in.bin", std::string(3'000'000, 'a'));
    folder.write("out.hex", "as it was");
    // Blocks of 1024 bytes; without the trap the system would end the command by a signal.
    const auto result = shell("trap '' XFSZ; ulimit -f 2000; " TAMRIX_COMMAND " convert in.bin out.hex");
    EXPECT_EQ(result.status, 1);
    EXPECT_EQ(result.err, "tamrix: out.hex: File too large\n");
    EXPECT_EQ(read_text(folder.path("out.hex")), "as it was");
    EXPECT_EQ(files(), 2);
}

TEST_F(streams, into_a_folder_that_takes_no_files_say_so)
{
    folder.write("in.bin", "abc");
    std::filesystem::create_directory(folder.path("closed"));
    folder.write("closed/old.bin", "as it was");
    using std::filesystem::perms;
    std::filesystem::permissions(folder.path("closed"), perms::owner_read | perms::owner_exec | perms::others_all);
    std::filesystem::permissions(folder.path("closed"), perms::others_write, std::filesystem::perm_options::remove);
    std::filesystem::permissions(folder.path("closed/old.bin"), perms::all);
    const command_setting there{.folder = folder.path(""), .without_rights_of_root = true};
    const auto refused = tamrix_command({"convert", "in.bin", "closed/new.bin"}, there);
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.err, "tamrix: closed/new.bin: permission denied\n");
    EXPECT_EQ(tamrix_command({"convert", "in.bin", "closed/old.bin"}, there).status, 0);
    EXPECT_EQ(read_text(folder.path("closed/old.bin")), "abc") << "what may be written is, in its place";
}

}  // namespace tamrix::tests
