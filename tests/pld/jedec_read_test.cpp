#include "pld/jedec.h"
#include "support/plug_in_fixture.h"
#include "support/temp_files.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tamrix::tests {
namespace {

struct jedec_fixture : plug_in_fixture {
    explicit jedec_fixture(std::int32_t fuses = 100) : plug_in_fixture{{.buflength = 0x1000, .tlength = fuses}} {}

    void read(std::string_view text)
    {
        std::string file = files.write("file.jed", text);
        EXPECT_TRUE(methods.readpldfile(file).ok());
        EXPECT_EQ(methods.readpldfile(file).value, variant{});
    }
    /// Fuses as text, with "." for what was never written.
    std::string fuses(std::int64_t first, std::int64_t count)
    {
        std::string text;
        for (const auto byte : bytes(first, count)) text += byte == untouched ? '.' : static_cast<char>(byte);
        return text;
    }
    std::string vector(std::size_t number) const
    {
        const std::string_view entry = session.pld.pldvect(number - 1);
        return std::string{entry.substr(0, entry.find_last_not_of(' ') + 1)};
    }
    std::string why() const { return session.why_it_failed.found; }

    temp_folder files;
};

TEST(read_jedec, a_fuse_row_lands_as_characters_and_counts_to_the_checksum)
{
    jedec_fixture f;
    f.read("L00000 0101*\n");
    EXPECT_EQ(f.fuses(0, 5), "0101.");
    EXPECT_EQ(f.session.pld.checksum, 2u + 8u);
    EXPECT_EQ(f.why(), "");
}

TEST(read_jedec, the_checksum_counts_by_the_fuse_number)
{
    jedec_fixture f;
    f.read("L0006 1111*\n");
    EXPECT_EQ(f.session.pld.checksum, 64u + 128u + 1u + 2u);
}

TEST(read_jedec, one_fuse_row_a_line_several_rows_a_line_and_running_text_are_the_same)
{
    const std::string layouts[] = {
        "Header*\nQF12*\nL0000 0101*\nL0004 1100*\nL0008 0011*\nC0000*\n",
        "Header*\r\nQF12*\r\nL0000\r\n01011100\r\n0011*\r\nC0000*\r\n",
        "Header*QF12*F0*L0000 0101*L0004 1100*L0008 0011*C0000*\n",
        "Header*\nL0000 0101*L0004 1100*\nL0008 0011*\n",
        "Header\n*\nL0000 01 01 11 00\n00 11\n*\nC0000\n*\n",
        "Header*\rL0000\r01011100\r0011*\r",
        "Header\n*L0000 0101\n*L0004 1100\n*L0008 0011\n*C0000\n",
        "Header*QF12*L0000\n0101\n11000011*",
    };
    for (const std::string& text : layouts) {
        jedec_fixture f{12};
        f.read(text);
        EXPECT_EQ(f.fuses(0, 13), "010111000011.") << text;
    }
}

TEST(read_jedec, a_fuse_number_beyond_the_device_is_dropped)
{
    jedec_fixture f{8};
    f.read("L0008 1111*\nL0006 1111*\n");
    EXPECT_EQ(f.fuses(0, 13), "......11.....");
}

TEST(read_jedec, a_header_line_with_an_asterisk_is_note_text)
{
    jedec_fixture f;
    f.read("\x02 My device * rev 2\nLattice part\nSecond * line\nL0000 1*\nN later text*\n");
    EXPECT_EQ(f.session.pld.note, "\n  \x02 My device * rev 2\n  Lattice part\n  Second * line");
    EXPECT_EQ(f.fuses(0, 2), "1.");
}

TEST(read_jedec, the_note_of_the_file_before_is_forgotten)
{
    jedec_fixture f;
    f.read("First\nL0000 1*\n");
    f.read("Second\nL0000 1*\n");
    EXPECT_EQ(f.session.pld.note, "\n  Second");
}

TEST(read_jedec, signature_and_extra_fuses_go_behind_the_main_fuses)
{
    jedec_fixture f{8};
    f.read("L0000 11111111*\nU10 1*\nE0110*\n");
    EXPECT_EQ(f.fuses(8, 4), "101.");
    EXPECT_EQ(f.fuses(108, 5), "0110.");
}

TEST(read_jedec, a_signature_of_letters_stores_nothing)
{
    jedec_fixture f{8};
    f.read("UHABCD*\nE*\n");
    EXPECT_TRUE(f.buffer_untouched());
}

TEST(read_jedec, an_asterisk_ends_a_row_and_bits_behind_it_belong_to_nothing)
{
    jedec_fixture f;
    f.read("L0000 01*\n1111\nL0010 1\n*\n11\n");
    EXPECT_EQ(f.fuses(0, 4), "01..");
    EXPECT_EQ(f.fuses(10, 3), "1..");
}

TEST(read_jedec, other_lines_between_are_passed_over)
{
    jedec_fixture f;
    f.read("L0000 01\nN a note*\n10*\n");
    EXPECT_EQ(f.fuses(0, 5), "0110.");
}

TEST(read_jedec, vectors_are_stored_by_their_number)
{
    jedec_fixture f;
    f.read("L0000 1*\nV0001 01XHL*\nV0003 NNN *\nV0002 ZZZ\nC1234*\n");
    EXPECT_EQ(f.vector(1), "01XHL");
    EXPECT_EQ(f.vector(2), "ZZZ");
    EXPECT_EQ(f.vector(3), "NNN");
    EXPECT_EQ(f.session.pld.pldvectcnt, 4);
    EXPECT_EQ(f.session.pld.pldvect(0).size(), 48u);
    EXPECT_EQ(f.session.pld.pldvect(0).back(), ' ');
    EXPECT_EQ(f.session.pld.pldvect(3).find(' '), std::string_view::npos) << "an entry never stored holds no blank";
}

TEST(read_jedec, vectors_with_an_asterisk_in_front_are_read_too)
{
    jedec_fixture f;
    f.read("L0000 1\n*V0001 01\n*V0002 10\n*\n");
    EXPECT_EQ(f.vector(1), "01");
    EXPECT_EQ(f.vector(2), "10");
    EXPECT_EQ(f.session.pld.pldvectcnt, 3);
}

TEST(read_jedec, a_file_without_vectors_leaves_the_count_at_1_and_the_old_entries)
{
    jedec_fixture f;
    f.read("V0001 01*\n");
    f.read("L0000 1*\n");
    EXPECT_EQ(f.session.pld.pldvectcnt, 1);
    EXPECT_EQ(f.vector(1), "01");
}

TEST(read_jedec, the_first_3000_vectors_are_kept)
{
    jedec_fixture f;
    std::string text;
    for (int i = 1; i <= 3001; ++i) text += "V" + std::string(i < 1000 ? "00" : "00") + std::to_string(i) + " 1*\n";
    f.read(text);
    EXPECT_EQ(f.session.pld.pldvectcnt, 3001);
    EXPECT_EQ(f.vector(3000), "1");
    EXPECT_EQ(f.session.pld.pldvect(3000).front(), '\0');
}

TEST(read_jedec, a_vector_number_outside_the_list_ends_the_read)
{
    for (const std::string number : {"0000", "003002", "00999999999999999"}) {
        jedec_fixture f;
        f.read("V0001 1*\nV" + number + " 0*\nL0000 1*\n");
        EXPECT_NE(f.why(), "") << number;
        EXPECT_EQ(f.vector(1), "1");
        EXPECT_EQ(f.fuses(0, 1), ".");
    }
}

TEST(read_jedec, a_vector_longer_than_48_pins_is_cut)
{
    jedec_fixture f;
    f.read("V0001 " + std::string(60, 'N') + "*\n");
    EXPECT_EQ(f.vector(1), std::string(48, 'N'));
}

TEST(read_jedec, fuse_rows_behind_the_vectors_are_read)
{
    jedec_fixture f;
    f.read("V0001 1*\nL0000 1*\n");
    EXPECT_EQ(f.fuses(0, 2), "1.");
}

TEST(read_jedec, the_hosts_progress_figure_moves_with_each_twelfth)
{
    jedec_fixture f{1000};
    f.session.blocks.prgmode(1) = 77;
    f.read("L0000 " + std::string(600, '1') + "*\n");  // 608 characters, a step of 50
    EXPECT_EQ(f.session.blocks.prgmode(1), 90);
    f.session.blocks.prgmode(1) = 77;
    f.read("L0 1*");  // too short to pace
    EXPECT_EQ(f.session.blocks.prgmode(1), 77);
}

TEST(read_jedec, a_missing_file_leaves_the_reason_and_no_box)
{
    jedec_fixture f;
    std::string file = f.files.path("missing.jed");
    const reply outcome = f.methods.readpldfile(file);
    EXPECT_TRUE(outcome.ok());
    EXPECT_EQ(outcome.value, variant{});
    EXPECT_EQ(f.session.why_it_failed.text(), file + ": no such file");
    EXPECT_TRUE(f.shell.boxes().empty());
}

TEST(read_jedec, a_device_larger_than_the_buffer_fails_where_the_buffer_ends)
{
    jedec_fixture f{0x8000};
    f.read("L6295 11*\n");
    EXPECT_EQ(f.fuses(6295, 1), "1");
    EXPECT_EQ(f.why(), "subscript out of range: ibuffer(6296)");
}

TEST(read_jedec, signature_bits_behind_the_buffer_are_left_out)
{
    jedec_fixture f{6295};
    f.read("U11\n");
    EXPECT_EQ(f.fuses(6295, 1), "1");
    EXPECT_EQ(f.why(), "");
}

}  // namespace
}  // namespace tamrix::tests
