// Fuse files between tamrix jedec and jedutil.
#include "cli/fuse_fixture.h"
#include "support/plug_in_fixture.h"
#include "verify/jedec.h"
#include "verify/jedec_writer.h"

#include <utility>

namespace tamrix::tests {
namespace {

TEST_F(fuse_files, made_by_jedutil_have_the_same_fuses_here)
{
    for (const std::size_t count : {8, 100, 2194, 5892}) {
        const std::string fuses = random_fuses(count);
        write_packed("peer.bin", fuses);
        ASSERT_TRUE(jedutil_takes("peer.bin", "peer.jed"));
        EXPECT_EQ(fuses_by_tamrix("peer.jed"), fuses);
        EXPECT_EQ(fuses_by_tamrix("peer.jed", {"--as-plug-in"}), fuses);
    }
}

TEST_F(fuse_files, without_a_fuse_that_is_1_come_from_jedutil_as_a_default)
{
    write_packed("peer.bin", std::string(64, '0'));
    ASSERT_TRUE(jedutil_takes("peer.bin", "peer.jed"));
    EXPECT_EQ(fuses_by_tamrix("peer.jed"), std::string(64, '0'));
}

TEST_F(fuse_files, in_the_layouts_of_compilers_have_the_same_fuses_here_and_in_jedutil)
{
    const std::string fuses = random_fuses(64), sum = "C" + sum_of_fuses(fuses) + "*";
    const auto part = [&](std::size_t at, std::size_t count) { return fuses.substr(at, count); };
    const auto layout = [&](const std::string& between, const std::string& line_end, const std::string& vectors) {
        std::string text =
            "Title" + line_end + "Part*" + line_end + "QP8*" + line_end + "QF64*" + line_end + "G0*F0*" + line_end;
        for (std::size_t at = 0; at < 64; at += 16)
            text += "L00" + std::to_string(at / 10) + std::to_string(at % 10) + between + part(at, 16) + "*" + line_end;
        return text + vectors + sum + line_end;
    };
    const std::string one_line = "Title*QF64*F0*L0000 " + part(0, 32) + "*L0032 " + part(32, 32) + "*" + sum + "\n";
    const std::string several = "Title*\nQF64*F0*\nL0000 " + part(0, 16) + "*L0016 " + part(16, 16) + "*\nL0032 " +
                                part(32, 32) + "*\n" + sum + "\n";
    const std::string own_line =
        "Title\n*QF64\n*F0\n*L0000\n" + part(0, 32) + "\n" + part(32, 32) + "\n*" + sum + "\n*\n";
    const std::string apart =
        "Title*\nQF64*\nF0*\nL0000\n" + part(0, 8) + " " + part(8, 8) + "\n" + part(16, 48) + "\n*\n" + sum + "\n";
    for (const std::string& text :
         {layout(" ", "\n", ""), layout(" ", "\r\n", ""), layout("\n", "\n", ""),
          layout(" ", "\r\n", "QV2*\r\nV0001 01XHLZNC*\r\nV0002 11111111*\r\n"), one_line, several, own_line, apart}) {
        folder.write("peer.jed", framed(text));
        EXPECT_EQ(fuses_by_jedutil("peer.jed"), fuses) << text;
        EXPECT_EQ(fuses_by_tamrix("peer.jed"), fuses) << text;
        EXPECT_EQ(fuses_by_tamrix("peer.jed", {"--as-plug-in"}), fuses) << text;
    }
}

TEST_F(fuse_files, written_here_are_read_by_jedutil_and_by_both_readers_here)
{
    for (const std::size_t count : {1, 7, 8, 1, 32, 64, 320, 2048, 2194, 2706, 5828, 5892}) {
        const std::string fuses = random_fuses(count, static_cast<unsigned>(count));
        write_fuses("in.jed", fuses);
        for (const char* row : {"10", "32", "44", "32767"}) {
            ASSERT_EQ(fuses_by_tamrix("in.jed", {"--page", row}), fuses);
            EXPECT_EQ(fuses_by_jedutil("written.jed"), fuses);
            EXPECT_EQ(run({"jedec", "written.jed", "-o", "again.jed", "--page", row}).status, 0);
            EXPECT_EQ(read_text(folder.path("again.jed")), read_text(folder.path("written.jed")));
            EXPECT_EQ(run({"jedec", "written.jed", "-o", "plug-in.jed", "--as-plug-in"}).status, 0);
            EXPECT_EQ(fuses_of_rows("plug-in.jed"), fuses);
        }
    }
}

TEST_F(fuse_files, written_here_are_read_by_the_plug_in)
{
    for (const std::size_t count : {1, 8, 100, 2194}) {
        fuse_map map{.header = "Example of Level 1\nUse", .pins = 4, .vectors = {"01XH", "NNZL"}};
        for (const char one : random_fuses(count)) map.fuses.push_back(static_cast<std::uint8_t>(one - '0'));
        std::string path = folder.write("written.jed", jedec_file(map, 32));
        plug_in_fixture f{{.tlength = static_cast<std::int32_t>(count)}};
        EXPECT_TRUE(f.methods.readpldfile(path).ok());
        for (std::size_t at = 0; at < count; ++at)
            ASSERT_EQ(f.buffer(static_cast<std::int64_t>(at)), '0' + map.fuses[at]);
        EXPECT_EQ(f.variables.pld.pldvectcnt, 3);
        EXPECT_EQ(f.variables.pld.pldvect(1).substr(0, 5), "NNZL ");
        EXPECT_EQ(f.variables.pld.checksum % 0x10000, fuse_checksum(map.fuses));
    }
}

/// The peer finds the device by the count of fuses, and its logic in them.
TEST_F(fuse_files, written_here_are_those_of_known_devices)
{
    for (const auto& [device, count] : {std::pair{"GAL16V8", 2194}, {"PAL16L8", 2048}, {"GAL22V10", 5892}}) {
        write_fuses("in.jed", random_fuses(static_cast<std::size_t>(count)));
        ASSERT_EQ(run({"jedec", "in.jed", "-o", "out.jed"}).status, 0);
        const auto logic = [&](const std::string& file) {
            const auto result = run_program({"jedutil", "-view", file, device}, {.folder = folder.path("")});
            EXPECT_EQ(result.status, 0) << result.err;
            return result.out;
        };
        EXPECT_EQ(logic("out.jed"), logic("in.jed"));
        EXPECT_THAT(logic("out.jed"), testing::HasSubstr("Equations"));
    }
}

/// A bit turned at each place of a file that jedutil made, with both checksums.
TEST_F(fuse_files, that_jedutil_takes_with_a_turned_bit_are_listed)
{
    write_packed("peer.bin", "0101110010110001");
    ASSERT_TRUE(jedutil_takes("peer.bin", "peer.jed"));
    const std::string text = read_text(folder.path("peer.jed"));
    std::string only_there, only_here;
    for (std::size_t at = 0; at < text.size(); ++at) {
        std::string turned = text;
        turned[at] = static_cast<char>(turned[at] ^ 1 << (at % 8));
        folder.write("turned.jed", turned);
        file_source from{folder.path("turned.jed")};
        const bool here = !verify_jedec(from, "turned.jed").damaged();
        const bool there = jedutil_takes("turned.jed", "turned.bin");
        if (there && !here) only_there += std::to_string(at) + " ";
        if (here && !there) only_here += std::to_string(at) + " ";
    }
    // At 39 and 71 it is the eighth bit of a character, which jedutil passes over; from 77 on a transmission checksum
    // with a character that is no digit counts there as none.
    EXPECT_EQ(only_there, "39 71 77 78 79 ");
    EXPECT_EQ(only_here, "");
}

struct opinion {
    std::string text;
    bool here, there;
};

/// Where this program and jedutil disagree, and why.
TEST_F(fuse_files, that_are_damaged_are_taken_by_jedutil_for_known_reasons_alone)
{
    const opinion opinions[] = {
        {framed("T*QF8*F0*L0 0101*C000A*"), true, true},
        {framed("T*QF8*F0*L0 0101*C000B*"), false, false},
        {"\x02T*QF8*F0*L0 0101*\x03"
         "1234",
         false, false},
        {"\x02T*QF8*F0*L0 0101*", false, false},
        {"T*QF8*F0*L0 0101*\x03"
         "0000",
         false, false},
        {framed("T*QF8*F0*L0 0101*C0000*"), false, true},    // it counts 0000 as no checksum
        {framed("T*QF8*L0 0101*"), false, true},             // it takes 0 where nothing is said
        {framed("T*QF8*F0*L4 01010*"), false, true},         // it drops fuses outside of the count
        {framed("T*QF8*F0*L0 01012*"), false, true},         // it skips what is no fuse
        {framed("T*QF8*F0*L0 0101*L0 1010*"), false, true},  // the last row counts
        {framed("T*QP2*QF8*F0*QV2*V1 01*"), false, true},    // it does not read vectors
        {framed("T*QF8*F0*Y1*L0 0101*"), false, true},       // it skips unknown fields
        {"\x02T*QF8*F0*L0 0101*\x03"
         "0000more",
         false, true},                               // it stops after the checksum
        {"\x02T*QF8*F0*L0 0101*\x03", false, true},  // it takes a missing checksum for 0
        {framed("T*QP2*QV1*V1 01*"), true, true},
    };
    for (const auto& [text, here, there] : opinions) {
        folder.write("in.jed", text);
        EXPECT_EQ(run({"jedec", "in.jed"}).status == 0, here) << text;
        EXPECT_EQ(jedutil_takes("in.jed", "out.bin"), there) << text;
    }
}

}  // namespace
}  // namespace tamrix::tests
