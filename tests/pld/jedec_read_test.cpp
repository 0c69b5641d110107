#include "jedec_fixture.h"

#include <algorithm>

namespace tamrix::tests {
namespace {

TEST(read_jedec, a_fuse_row_lands_as_characters_and_counts_to_the_checksum)
{
    jedec_fixture f;
    f.read("L00000 0101*\n");
    EXPECT_EQ(f.fuses(0, 5), "0101.");
    EXPECT_EQ(f.variables.pld.checksum, 2u + 8u);
    EXPECT_EQ(f.why(), "");
}

TEST(read_jedec, the_checksum_counts_by_the_fuse_number)
{
    jedec_fixture f;
    f.read("L0006 1111*\n");
    EXPECT_EQ(f.variables.pld.checksum, 64u + 128u + 1u + 2u);
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
    EXPECT_EQ(f.variables.pld.note, "\n  \x02 My device * rev 2\n  Lattice part\n  Second * line");
    EXPECT_EQ(f.fuses(0, 2), "1.");
}

TEST(read_jedec, the_note_of_the_file_before_is_forgotten)
{
    jedec_fixture f;
    f.read("First\nL0000 1*\n");
    f.read("Second\nL0000 1*\n");
    EXPECT_EQ(f.variables.pld.note, "\n  Second");
}

TEST(read_jedec, signature_and_extra_fuses_go_behind_the_main_fuses)
{
    jedec_fixture f{8};
    f.read("L0000 11111111*\nU10 1*\nE0110*\n");
    EXPECT_EQ(f.fuses(8, 4), "101.");
    EXPECT_EQ(f.fuses(108, 5), "0110.");
}

TEST(read_jedec, signature_and_extra_fuses_go_on_over_the_next_lines_up_to_an_asterisk)
{
    jedec_fixture f{8};
    f.read("U01\n10\nN a note*\n11*\n0000\nE0\n1 1\n*\n0000\nL0000 0101*\nU\n11\n");
    EXPECT_EQ(f.fuses(0, 9), "0101....1");
    EXPECT_EQ(f.fuses(8, 7), "111011.");
    EXPECT_EQ(f.fuses(108, 4), "011.");
    EXPECT_EQ(f.variables.pld.note, "\n  N a note*\n  0000\n  0000") << "what belongs to a field is no header";
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

TEST(read_jedec, the_hosts_progress_figure_counts_the_bits_in_twelfths_of_the_file)
{
    jedec_fixture f{1000};
    for (const std::size_t length : {120u, 131u, 132u, 250u}) {
        for (std::size_t bits = 0; bits <= length - 10; ++bits) {
            f.session.blocks.prgmode(1) = 77;
            const std::string row = "L0000 " + std::string(bits, '1') + "*\n";
            f.read(row + std::string(length - row.size(), 'N'));
            const std::size_t steps = bits / (length / 12);
            EXPECT_EQ(f.session.blocks.prgmode(1), steps == 0 ? 77 : std::min<std::size_t>(10 * steps, 90))
                << bits << " of " << length;
        }
    }
}

TEST(read_jedec, the_hosts_progress_figure_counts_the_bits_of_every_field)
{
    jedec_fixture f{1000};
    f.session.blocks.prgmode(1) = 77;
    f.read("L0000 111*L0009 1*\nU11\nE1\n11*\n" + std::string(6, 'N'));  // a step of 3; 9 bits
    EXPECT_EQ(f.session.blocks.prgmode(1), 30);
}

TEST(read_jedec, a_file_of_less_than_twelve_characters_tells_no_progress)
{
    jedec_fixture f;
    f.session.blocks.prgmode(1) = 77;
    f.read("L0 11111*\n\n");
    EXPECT_EQ(f.session.blocks.prgmode(1), 77);
    f.read("L0 11111*\n\n\n");
    EXPECT_EQ(f.session.blocks.prgmode(1), 50);
}

TEST(read_jedec, a_missing_file_leaves_the_reason_and_no_box)
{
    jedec_fixture f;
    std::string file = f.files.path("missing.jed");
    const reply outcome = f.methods.readpldfile(file);
    EXPECT_TRUE(outcome.ok());
    EXPECT_EQ(outcome.value, variant{});
    EXPECT_EQ(f.variables.transfer.why_it_failed.text(), file + ": no such file");
    EXPECT_TRUE(f.shell.boxes().empty());
}

TEST(read_jedec, a_device_larger_than_the_buffer_fails_where_the_buffer_ends)
{
    jedec_fixture f{0x8000};
    f.read("L6295 11*\n");
    EXPECT_EQ(f.fuses(6295, 1), "1");
    EXPECT_EQ(f.why(), "subscript out of range: ibuffer(6296)");
}

TEST(read_jedec, a_device_below_nothing_has_no_place_for_a_signature)
{
    jedec_fixture f{-200};
    f.read("L0000 1*\nU1*\n");
    EXPECT_EQ(f.why(), "subscript out of range: ibuffer(-200)");
    EXPECT_TRUE(f.buffer_untouched());
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
