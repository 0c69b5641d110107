// tamrix jedec and tamrix svf.
#include "cli/fuse_fixture.h"

namespace tamrix::tests {
namespace {

TEST_F(fuse_files, keep_every_field_in_the_form_of_the_standard)
{
    folder.write("in.jed", framed("My part\nrev 2*\nN by hand*\nQP4*QF10*QV1*G1*F1*X0*\nL0000 0101*U01*E1*P 4 3 2 1*\n"
                                  "V0001 0 1 X H*\nC00FD*"));
    const auto result = run({"jedec", "in.jed", "-o", "out.jed", "--page", "10", "--type", "GAL", "--maker", "Me"});
    EXPECT_EQ(result.err, "");
    EXPECT_EQ(result.out,
              "note:\n  My part\n  rev 2\nfuses: 10, of which 1: 8, by default: 6, not in the file: 0\n"
              "fuse checksum: 00FD\npins: 4\nvectors: 1\nout.jed: written in the form of the standard, JESD3-C\n");
    const std::string written = read_text(folder.path("out.jed"));
    EXPECT_EQ(written.substr(0, written.find('\x03')),
              "\x02My part\r\nrev 2\r\nTYPE: GAL\r\nMAKER: Me*\r\nN by hand*\r\nQP4*\r\nQF10*\r\nQV1*\r\nG1*\r\nF1*\r\n"
              "X0*\r\nL0000 0101111111*\r\nU01*\r\nE1*\r\nP 4 3 2 1*\r\nV0001 01XH*\r\nC00FD*\r\n");
    EXPECT_EQ(run({"jedec", "out.jed", "-o", "out.jed", "--page", "10", "--type", "GAL"}).status, 0);
    EXPECT_EQ(read_text(folder.path("out.jed")), written);  // onto itself, and the type is there once
}

TEST_F(fuse_files, in_the_form_of_the_plug_in_are_what_its_method_writes)
{
    write_fuses("in.jed", "0101110010", "QP2*QV1*V0001 01*");
    const auto result = run({"jedec", "in.jed", "-o", "in.jed", "--as-plug-in", "--page", "10", "--type", "GAL"});
    EXPECT_EQ(result.status, 0) << result.err;
    EXPECT_THAT(result.out, testing::EndsWith("in.jed: written in the form of the plug-in\n"));
    EXPECT_EQ(read_text(folder.path("in.jed")),
              "\x02MODEL: Brantu programmer\r\nTYPE:GAL\r\nDM: \r\nQF0000*\r\nL000000 0101110010*\r\nL000010 *\r\n"
              "V000001 01 *\r\nC3B*\r\n");
}

TEST_F(fuse_files, give_the_plug_in_the_default_that_it_does_not_know)
{
    folder.write("in.jed", framed("T*QF12*F1*L4 0000*"));
    EXPECT_EQ(fuses_by_tamrix("in.jed", {"--as-plug-in"}), "111100001111");
}

TEST_F(fuse_files, are_told_with_fuses_checksum_and_vectors)
{
    folder.write("in.jed", framed("My part*\nQF16*\nQP2*QV1*F0*L0000 01011100*\nV0001 01*\n"));
    const auto result = run({"jedec", "in.jed"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "note:\n  My part\nfuses: 16, of which 1: 4, by default: 8, not in the file: 0\n"
                          "fuse checksum: 003A\npins: 2\nvectors: 1\n");
}

TEST_F(fuse_files, that_are_damaged_are_refused_with_each_place_and_nothing_is_written)
{
    folder.write("in.jed", framed("T*QF8*\nL0000 0101*\nC0000*\n"));
    folder.write("out.jed", "old");
    const std::string places =
        "tamrix: in.jed:3: fuse checksum 0000 where 000A was expected\n"
        "tamrix: in.jed:4: fuses without a state: 4, the first of them 4 where a row or F was expected\n";
    const auto refused = run({"jedec", "in.jed", "-o", "out.jed"});
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.out, "");
    EXPECT_EQ(refused.err, places + "tamrix: damaged files are refused; --accept-damage takes what can be read\n");
    EXPECT_EQ(read_text(folder.path("out.jed")), "old");
    const auto accepted = run({"jedec", "in.jed", "-o", "out.jed", "--accept-damage"});
    EXPECT_EQ(accepted.status, 0);
    EXPECT_EQ(accepted.err, places + "tamrix: note: the damage is accepted\n");
    EXPECT_EQ(fuses_of_rows("out.jed"), "01010000");
    EXPECT_EQ(run({"jedec", "out.jed"}).err, "");
}

TEST_F(fuse_files, with_many_damaged_places_show_ten_and_the_count)
{
    std::string text = "T*QF8*F0*\n";
    for (int line = 0; line < 12; ++line) text += "Y*\n";
    folder.write("in.jed", framed(text));
    const auto refused = run({"jedec", "in.jed"});
    EXPECT_THAT(refused.err, testing::HasSubstr("in.jed:11: field Y"));
    EXPECT_THAT(refused.err, testing::Not(testing::HasSubstr("in.jed:12: field Y")));
    EXPECT_THAT(refused.err, testing::HasSubstr("tamrix: in.jed: damaged at 12 places in all\n"));
}

TEST_F(fuse_files, without_a_fuse_count_have_as_many_as_their_rows)
{
    folder.write("in.jed", framed("T*L0004 1111*L0000 0000*"));
    const auto refused = run({"jedec", "in.jed"});
    EXPECT_EQ(refused.status, 1);
    EXPECT_THAT(
        refused.err,
        testing::StartsWith("tamrix: in.jed:1: a row of fuses where the fuse count QF ahead of it was expected\n"));
    EXPECT_EQ(fuses_by_tamrix("in.jed", {"--accept-damage"}), "00001111");
    EXPECT_EQ(fuses_by_tamrix("in.jed", {"--accept-damage", "--words", "10"}), "0000111100");
    folder.write("vectors.jed", framed("T*QP1*QV1*V1 0*"));
    EXPECT_EQ(run({"jedec", "vectors.jed", "-o", "x.jed", "--as-plug-in"}).err,
              "tamrix: vectors.jed: no fuses in it; --words N says how many the device has\n");
}

/// The form of the plug-in has neither a fuse count nor an end: it is read back all the same.
TEST_F(fuse_files, of_the_plug_in_are_damaged_and_give_their_fuses_back)
{
    const std::string fuses = random_fuses(64);
    write_fuses("in.jed", fuses);
    ASSERT_EQ(fuses_by_tamrix("in.jed", {"--as-plug-in"}), fuses);
    EXPECT_EQ(run({"jedec", "written.jed"}).status, 1);
    ASSERT_EQ(run({"jedec", "written.jed", "-o", "good.jed", "--accept-damage"}).status, 0);
    EXPECT_EQ(fuses_of_rows("good.jed"), fuses);
}

TEST_F(fuse_files, go_through_pipes)
{
    write_fuses("in.jed", "01010101");
    const auto piped = run({"jedec", "-", "-o", "-"}, read_text(folder.path("in.jed")));
    EXPECT_EQ(piped.status, 0);
    ASSERT_EQ(run({"jedec", "in.jed", "-o", "out.jed"}).status, 0);
    EXPECT_EQ(piped.out, read_text(folder.path("out.jed")));
    EXPECT_THAT(piped.err, testing::HasSubstr("fuse checksum: 00AA\n"));
    EXPECT_EQ(run({"jedec", "-"}, "x").err.substr(0, 52), "tamrix: standard input:1: character x where STX was ");
}

TEST_F(fuse_files, wrong_values_are_refused_and_missing_files_fail)
{
    write_fuses("in.jed", "01010101");
    EXPECT_EQ(run({"jedec", "in.jed", "--page", "9"}).status, 2);
    EXPECT_EQ(run({"jedec", "in.jed", "--words", "x"}).status, 2);
    const auto missing = run({"jedec", "missing.jed"});
    EXPECT_EQ(missing.status, 1);
    EXPECT_EQ(missing.err, "tamrix: missing.jed: no such file\n");
    EXPECT_EQ(run({"jedec", "in.jed", "-o", "no/out.jed"}).err, "tamrix: no/out.jed: the folder no does not exist\n");
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
    EXPECT_EQ(result.out, "statements: 2, bits shifted: 8\n" + folder.path("pldtmp.svf") + "\n");
    EXPECT_EQ(read_text(folder.path("pldtmp.svf")), "STATE IDLE;\r\nSIR 8 TDI (FF);\r\n");
    folder.write("empty.svf", "");
    EXPECT_EQ(
        run({"svf", "empty.svf", "--syspath", folder.path(""), "--accept-damage"}).err,
        "tamrix: empty.svf:1: no statement\ntamrix: note: the damage is accepted\ntamrix: empty.svf: an empty file\n");
}

TEST_F(fuse_files, of_the_svf_kind_that_are_damaged_leave_the_older_copy)
{
    folder.write("a.svf", "STATE IDLE;\nSIR 8 TDI (FF0);\n");
    folder.write("pldtmp.svf", "old");
    const auto refused = run({"svf", "a.svf", "--syspath", folder.path("")});
    EXPECT_EQ(refused.status, 1);
    EXPECT_EQ(refused.out, "");
    EXPECT_EQ(refused.err, "tamrix: a.svf:2: digit count 3 where 2 for 8 bits was expected\n"
                           "tamrix: damaged files are refused; --accept-damage takes what can be read\n");
    EXPECT_EQ(read_text(folder.path("pldtmp.svf")), "old");
    EXPECT_EQ(run({"svf", "a.svf", "--syspath", folder.path(""), "--accept-damage"}).status, 0);
    EXPECT_EQ(read_text(folder.path("pldtmp.svf")), "STATE IDLE;\r\nSIR 8 TDI (FF0);\r\n");
}

TEST_F(convert_test, a_holtek_image_needs_the_device)
{
    folder.write("a.otp", bytes({0xC0, 0, 0, 'e', 6, 0, 0, 0, 0, 0, 0x11, 0xE9, 'e', 6, 0, 0, 0, 0, 0, 0x22, 0xD8}));
    const auto refused = convert({"a.otp", "a.bin"});
    EXPECT_EQ(refused.status, 2);
    EXPECT_THAT(refused.err, testing::HasSubstr("--device-words is expected"));
    EXPECT_EQ(convert({"a.otp", "-"}).err,
              "tamrix: a.otp: a Holtek image goes through a device, which takes one file and no -\n");
    const auto loaded = convert({"a.otp", "a.bin", "--device-words", "256", "--word-bytes", "2", "--spare-units", "4"});
    EXPECT_EQ(loaded.status, 0) << loaded.err;
    const auto image = read_bytes(folder.path("a.bin"));
    ASSERT_GT(image.size(), 0x200u);
    EXPECT_EQ(image[0], 0x11);
    EXPECT_EQ(image[0x200], 0x22);
}

}  // namespace
}  // namespace tamrix::tests
