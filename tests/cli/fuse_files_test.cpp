// tamrix jedec and tamrix svf, and fuse files of another tool.
#include "cli/convert_fixture.h"

namespace tamrix::tests {
namespace {

class fuse_files : public convert_test {
protected:
    command_result run(std::vector<std::string> arguments)
    {
        return tamrix_command(arguments, {.folder = folder.path("")});
    }
    void jedutil(const std::string& from, const std::string& to)
    {
        const auto result = run_program({"jedutil", "-convert", from, to}, {.folder = folder.path("")});
        ASSERT_EQ(result.status, 0) << result.out << result.err;
    }
    /// The fuses of a file as the other tool sees them, as text.
    std::string fuses_by_jedutil(const std::string& file)
    {
        jedutil(file, "fuses.bin");
        const auto packed = read_bytes(folder.path("fuses.bin"));
        const std::size_t count = packed.at(0) << 24 | packed.at(1) << 16 | packed.at(2) << 8 | packed.at(3);
        std::string text;
        for (std::size_t i = 0; i < count; ++i) text += packed.at(4 + i / 8) >> (i % 8) & 1 ? '1' : '0';
        return text;
    }
    /// The fuses of a file as this program sees them: those of the rows that it writes.
    std::string fuses_by_tamrix(const std::string& file, std::size_t count)
    {
        const auto result = run({"jedec", file, "-o", "written.jed", "--words", std::to_string(count)});
        EXPECT_EQ(result.status, 0) << result.err;
        std::string text;
        const std::string written = read_text(folder.path("written.jed"));
        for (std::size_t at = written.find("\nL"); at != std::string::npos; at = written.find("\nL", at + 1)) {
            const std::size_t begin = written.find(' ', at) + 1;
            text += written.substr(begin, written.find('*', at) - begin);
        }
        return text;
    }
    static std::string random_fuses(std::size_t count)
    {
        std::string text;
        for (const auto byte : random_bytes(count, 5)) text += static_cast<char>('0' + (byte & 1));
        return text;
    }
};

TEST_F(fuse_files, made_by_jedutil_have_the_same_fuses_here)
{
    for (const std::size_t count : {8, 100, 2194, 5892}) {
        const std::string fuses = random_fuses(count);
        std::string packed;
        for (int shift = 24; shift >= 0; shift -= 8) packed += static_cast<char>(count >> shift);
        for (std::size_t i = 0; i < count; i += 8) {
            int byte = 0;
            for (std::size_t bit = 0; bit < 8 && i + bit < count; ++bit) byte |= (fuses[i + bit] - '0') << bit;
            packed += static_cast<char>(byte);
        }
        folder.write("peer.bin", packed);
        jedutil("peer.bin", "peer.jed");
        EXPECT_EQ(fuses_by_tamrix("peer.jed", count), fuses);
    }
}

TEST_F(fuse_files, in_the_layouts_of_compilers_have_the_same_fuses_here_and_in_jedutil)
{
    const std::string fuses = random_fuses(64);
    const auto part = [&](std::size_t at, std::size_t count) { return fuses.substr(at, count); };
    const auto layout = [&](const std::string& between, const std::string& line_end, const std::string& vectors) {
        std::string text =
            "\x02Title" + line_end + "Part*" + line_end + "QP20*" + line_end + "QF64*" + line_end + "G0*F0*" + line_end;
        for (std::size_t at = 0; at < 64; at += 16)
            text += "L00" + std::to_string(at / 10) + std::to_string(at % 10) + between + part(at, 16) + "*" + line_end;
        return text + vectors + "C0000*" + line_end;
    };
    const std::string one_line = "Title*QF64*F0*L0000 " + part(0, 32) + "*L0032 " + part(32, 32) + "*C0000*\n";
    const std::string several = "Title*\nQF64*F0*\nL0000 " + part(0, 16) + "*L0016 " + part(16, 16) + "*\nL0032 " +
                                part(32, 32) + "*\nC0000*\n";
    const std::string own_line = "Title\n*QF64\n*F0\n*L0000\n" + part(0, 32) + "\n" + part(32, 32) + "\n*C0000\n*\n";
    const std::string apart =
        "Title*\nQF64*\nF0*\nL0000\n" + part(0, 8) + " " + part(8, 8) + "\n" + part(16, 48) + "\n*\nC0000*\n";
    for (const std::string& text :
         {layout(" ", "\n", ""), layout(" ", "\r\n", ""), layout("\n", "\n", ""),
          layout(" ", "\r\n", "QV2*\r\nV0001 01XHLZNC*\r\nV0002 11111111*\r\n"), one_line, several, own_line, apart}) {
        folder.write("peer.jed", "\x02" + text + "\x03" + "0000");
        EXPECT_EQ(fuses_by_jedutil("peer.jed"), fuses) << text;
        EXPECT_EQ(fuses_by_tamrix("peer.jed", 64), fuses) << text;
    }
}

/// What is written here says a fuse count of 0, as it must; with the right count in its place jedutil reads the same
/// fuses.
TEST_F(fuse_files, written_here_are_read_by_jedutil_once_the_fuse_count_stands_in_them)
{
    const std::string fuses = random_fuses(2194);
    folder.write("in.jed", "Title*\nQF2194*\nL0000 " + fuses + "*\n");
    ASSERT_EQ(fuses_by_tamrix("in.jed", 2194), fuses);
    std::string text = read_text(folder.path("written.jed"));
    const std::size_t count = text.find("QF0000*");
    ASSERT_NE(count, std::string::npos);
    text.replace(count, 7, "*QF2194*");
    folder.write("counted.jed", text + "\x03" + "0000");
    EXPECT_EQ(fuses_by_jedutil("counted.jed"), fuses);
}

TEST_F(fuse_files, are_told_with_fuses_checksum_and_vectors)
{
    folder.write("in.jed", "My part*\nQF16*\nL0000 01011100*\nV0001 01*\n");
    const auto result = run({"jedec", "in.jed"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(
        result.out,
        "note:\n  My part*\n  QF16*\nfuses: 16, of which 1: 4, not in the file: 8\nfuse checksum: 003A\nvectors: 1\n");
}

TEST_F(fuse_files, without_a_fuse_count_need_the_option)
{
    folder.write("in.jed", "L0000 1*\n");
    const auto refused = run({"jedec", "in.jed"});
    EXPECT_EQ(refused.status, 2);
    EXPECT_EQ(refused.err, "tamrix: in.jed: does not give its fuse count (QF); --words N does\n");
    EXPECT_EQ(run({"jedec", "in.jed", "--words", "4"}).status, 0);
}

TEST_F(fuse_files, wrong_values_are_refused_and_missing_files_fail)
{
    folder.write("in.jed", "QF8*\nL0000 1*\n");
    EXPECT_EQ(run({"jedec", "in.jed", "--page", "9"}).status, 2);
    EXPECT_EQ(run({"jedec", "in.jed", "--words", "x"}).status, 2);
    const auto missing = run({"jedec", "missing.jed"});
    EXPECT_EQ(missing.status, 1);
    EXPECT_EQ(missing.err, "tamrix: missing.jed: no such file\n");
    EXPECT_EQ(run({"jedec", "in.jed", "-o", "no/out.jed"}).err, "tamrix: no/out.jed: no such file\n");
}

TEST_F(fuse_files, and_svf_files_are_detected)
{
    folder.write("a", "\x02Title*\nQF8*\nL0000 11110000*\n");
    folder.write("b", "! made here\n\nTRST OFF;\nENDIR IDLE;\n");
    folder.write("c", "STATEMENT of account\n");
    EXPECT_EQ(run({"detect", "a", "b", "c"}).out, "a: - jedec\nb: - svf\nc: 0 binary\n");
}

TEST_F(fuse_files, of_the_svf_kind_are_copied_under_the_system_path)
{
    folder.write("a.svf", "STATE IDLE;\nSIR 8 TDI (FF);");
    const auto result = run({"svf", "a.svf", "--syspath", folder.path("")});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_EQ(result.out, folder.path("pldtmp.svf") + "\n");
    EXPECT_EQ(read_text(folder.path("pldtmp.svf")), "STATE IDLE;\r\nSIR 8 TDI (FF);\r\n");
    folder.write("empty.svf", "");
    EXPECT_EQ(run({"svf", "empty.svf", "--syspath", folder.path("")}).err, "tamrix: empty.svf: an empty file\n");
}

TEST_F(convert_test, a_holtek_image_needs_the_device)
{
    folder.write("a.otp", bytes({0xC0, 0, 0, 'e', 6, 0, 0, 0, 0, 0, 0x11, 0xE9, 'e', 6, 0, 0, 0, 0, 0, 0x22, 0xD8}));
    const auto refused = convert({"a.otp", "a.bin"});
    EXPECT_EQ(refused.status, 2);
    EXPECT_THAT(refused.err, testing::HasSubstr("--device-words is expected"));
    const auto loaded = convert({"a.otp", "a.bin", "--device-words", "256", "--word-bytes", "2", "--spare-units", "4"});
    EXPECT_EQ(loaded.status, 0) << loaded.err;
    const auto image = read_bytes(folder.path("a.bin"));
    ASSERT_GT(image.size(), 0x200u);
    EXPECT_EQ(image[0], 0x11);
    EXPECT_EQ(image[0x200], 0x22);
}

}  // namespace
}  // namespace tamrix::tests
