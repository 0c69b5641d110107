#include "jedec_fixture.h"

namespace tamrix::tests {
namespace {

TEST(read_jedec, vectors_are_stored_by_their_number)
{
    jedec_fixture f;
    f.read("L0000 1*\nV0001 01XHL*\nV0003 NNN *\nV0002 ZZZ\nC1234*\n");
    EXPECT_EQ(f.vector(1), "01XHL");
    EXPECT_EQ(f.vector(2), "ZZZ");
    EXPECT_EQ(f.vector(3), "NNN");
    EXPECT_EQ(f.variables.pld.pldvectcnt, 4);
    EXPECT_EQ(f.variables.pld.pldvect(0).size(), 48u);
    EXPECT_EQ(f.variables.pld.pldvect(0).back(), ' ');
    EXPECT_EQ(f.variables.pld.pldvect(3).find(' '), std::string_view::npos) << "an entry never stored holds no blank";
}

TEST(read_jedec, vectors_with_an_asterisk_in_front_are_read_too)
{
    jedec_fixture f;
    f.read("L0000 1\n*V0001 01\n*V0002 10\n*\n");
    EXPECT_EQ(f.vector(1), "01");
    EXPECT_EQ(f.vector(2), "10");
    EXPECT_EQ(f.variables.pld.pldvectcnt, 3);
}

TEST(read_jedec, a_file_without_vectors_leaves_the_count_at_1_and_the_old_entries)
{
    jedec_fixture f;
    f.read("V0001 01*\n");
    f.read("L0000 1*\n");
    EXPECT_EQ(f.variables.pld.pldvectcnt, 1);
    EXPECT_EQ(f.vector(1), "01");
}

TEST(read_jedec, the_first_3000_vectors_are_kept)
{
    jedec_fixture f;
    std::string text;
    for (int i = 1; i <= 3001; ++i) text += "V00" + std::to_string(i) + " 1*\n";
    f.read(text);
    EXPECT_EQ(f.variables.pld.pldvectcnt, 3001);
    EXPECT_EQ(f.vector(3000), "1");
    EXPECT_EQ(f.variables.pld.pldvect(3000).front(), '\0');
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

TEST(read_jedec, a_read_that_a_fault_ends_leaves_no_vector_count)
{
    jedec_fixture f;
    f.read("V0001 01*\nV0002 10*\n");
    EXPECT_EQ(f.variables.pld.pldvectcnt, 3);
    f.read("V0001 NN*\nV0000 10*\n");
    EXPECT_NE(f.why(), "");
    EXPECT_EQ(f.vector(1), "NN");
    EXPECT_EQ(f.variables.pld.pldvectcnt, 0);
}

TEST(read_jedec, a_file_that_cannot_be_opened_leaves_what_the_last_one_left)
{
    jedec_fixture f;
    f.read("A header\nV0001 01*\n");
    std::string file = f.files.path("missing.jed");
    EXPECT_TRUE(f.methods.readpldfile(file).ok());
    EXPECT_EQ(f.variables.pld.pldvectcnt, 2);
    EXPECT_EQ(f.variables.pld.note, "\n  A header");
}

TEST(read_jedec, vectors_begin_with_a_number_of_two_zeros_and_go_on_with_any)
{
    jedec_fixture f;
    f.read("L0000 1*\nV1 01*\nV02 01*\n*V3 01*\nC0000*\n");
    EXPECT_EQ(f.variables.pld.pldvectcnt, 1);
    EXPECT_EQ(f.variables.pld.pldvect(0).front(), '\0');
    f.read("L0000 1*\nV004 HL*\nV2 10*\n*V01 LH*\nC0000*\nV3 01*\n");
    EXPECT_EQ(f.vector(1), "LH");
    EXPECT_EQ(f.vector(2), "10") << "a digit is a number, also alone";
    EXPECT_EQ(f.vector(4), "HL");
    EXPECT_EQ(f.variables.pld.pldvect(2).front(), '\0') << "the section had ended";
    EXPECT_EQ(f.variables.pld.pldvectcnt, 5);
}

TEST(read_jedec, a_letter_for_a_vector_number_ends_the_vectors)
{
    jedec_fixture f;
    f.read("L0000 1*\nV001 01*\nVX 10*\nV2 10*\nV003 11*\n");
    EXPECT_EQ(f.why(), "");
    EXPECT_EQ(f.vector(1), "01");
    EXPECT_EQ(f.variables.pld.pldvect(1).front(), '\0');
    EXPECT_EQ(f.vector(3), "11");
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

}  // namespace
}  // namespace tamrix::tests
