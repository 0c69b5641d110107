#include "files/file_io.h"
#include "ttl/library/library.h"
#include "ttl/library/library_file.h"
#include "ttl/ttl_fixture.h"

#include <gtest/gtest.h>

namespace tamrix::tests {
namespace {

using kind = run_outcome::kind;

TEST(library_path, is_the_older_file_below_model_30)
{
    ttl_fixture f;
    f.session.syspath = "C:\\programmer\\";
    for (const std::int16_t model : {-1, 0, 15, 29}) {
        f.session.blocks.modeltype(0) = model;
        EXPECT_EQ(library_path(f.session), "C:\\programmer\\lib1\\test190.lib");
    }
    for (const std::int16_t model : {30, 40, 54}) {
        f.session.blocks.modeltype(0) = model;
        EXPECT_EQ(library_path(f.session), "C:\\programmer\\lib\\test.lib");
    }
}

TEST(library_lines, end_at_CR_or_CR_LF_and_never_at_a_lone_LF)
{
    const std::string content = "a\nb\rc\r\nd\r\r\n\ne";
    library_lines all{content};
    for (const char* line : {"a\nb", "c", "d", "", "\ne"}) EXPECT_EQ(all.next(), line);
    EXPECT_EQ(all.next(), std::nullopt);
}

TEST(read_directory, gives_the_names_in_their_order_with_the_count)
{
    ttl_fixture f;
    f.write_library(std::vector{nor, nand});
    const library_directory directory = read_directory(f.session);
    EXPECT_EQ(directory.count, 2);
    EXPECT_EQ(directory.names, (lines{"7400", "7402"}));
}

TEST(read_directory, takes_the_file_of_the_model)
{
    ttl_fixture f;
    f.write_library(std::vector{nor, nand});
    f.files.write("lib1/test190.lib", slow::library_text({nand}));
    EXPECT_EQ(read_directory(f.session).count, 2);
    f.session.blocks.modeltype(0) = 29;
    EXPECT_EQ(read_directory(f.session).names, lines{"7400"});
}

TEST(read_directory, of_a_missing_library_creates_it_empty)
{
    ttl_fixture f;
    EXPECT_EQ(read_directory(f.session).count, 0);
    EXPECT_EQ(f.library(), "");
    EXPECT_EQ(f.shell.boxes(), lines{});
    std::filesystem::remove_all(f.files.path("lib"));
    EXPECT_EQ(read_directory(f.session).names, lines{}) << "not even the folder is there";
}

TEST(read_directory, of_a_folder_in_its_place_is_an_error)
{
    ttl_fixture f;
    std::filesystem::create_directory(f.library_file());
    EXPECT_THROW(read_directory(f.session), file_error);
}

TEST(read_directory, finds_the_header_anywhere_in_a_line_and_in_either_case)
{
    ttl_fixture f;
    f.write_library("a comment\r\n" + ("$kSm" + slow::library_text({nor, nand}).substr(4)));
    EXPECT_EQ(read_directory(f.session).count, 2);
    f.write_library("END-KSM\r\n" + slow::library_text({nor, nand}));
    EXPECT_EQ(read_directory(f.session).count, 0) << "the end comes first";
}

TEST(read_directory, an_entry_of_10_letters_does_not_end_the_line)
{
    ttl_fixture f;
    f.write_library("$KSM00000000002\n1234567890\x04"
                    "7400*\r\nend-ksm\r\n");
    EXPECT_EQ(read_directory(f.session).names, (lines{"1234567890", "7400"}));
}

TEST(read_directory, a_count_that_is_no_number_is_0)
{
    ttl_fixture f;
    f.write_library("$KSM000000000x2\x04"
                    "7400\x04"
                    "7402*\r\nend-ksm\r\n");
    EXPECT_EQ(read_directory(f.session).count, 0);
    EXPECT_EQ(read_directory(f.session).names, lines{});
}

TEST(read_directory, a_count_of_FFFF_is_positive_and_the_list_ends_at_3000_characters)
{
    ttl_fixture f;
    std::string header = "$KSM0000000FFFF";
    for (int i = 0; i < 1000; ++i)
        header += "\x04"
                  "7400";
    f.write_library(header + "*\r\nend-ksm\r\n");
    const library_directory directory = read_directory(f.session);
    EXPECT_EQ(directory.count, 65535);
    EXPECT_EQ(directory.names.size(), (3000u - 15) / 5) << "only whole names";
    EXPECT_EQ(directory.names.back(), "7400");
}

TEST(read_directory, a_count_that_is_too_high_reads_on_in_what_follows)
{
    ttl_fixture f;
    f.write_library("$KSM00000000003\x04"
                    "7400\x04"
                    "7402*\r\nend-ksm\r\n");
    const library_directory directory = read_directory(f.session);
    EXPECT_EQ(directory.count, 3);
    // The closing * counts as a length of 42, after it the line is blank.
    EXPECT_EQ(directory.names, (lines{"7400", "7402", std::string(42, ' ')}));
}

TEST(ttlload, a_device_with_one_row_has_exactly_that_row)
{
    ttl_fixture f;
    f.variables.ttl.ttlvect.store(1, "older");
    f.write_library("$KSM00000000001\x01"
                    "1*\r\n$1           02\x02"
                    "04\x04"
                    "01VG*\r\nend-ksm\r\n");
    EXPECT_EQ(ttlload(f.session, f.variables.ttl, "1", 0, -1).what, kind::not_played);
    EXPECT_EQ(f.variables.ttl.ttlcnt, 2);
    EXPECT_EQ(f.variables.ttl.ttlpin, 4);
    EXPECT_EQ(f.row(0), "01VG" + std::string(44, ' '));
    EXPECT_EQ(f.row(1), "older" + std::string(43, ' ')) << "nothing is stored beyond the last row";
}

TEST(ttlload, of_a_10_pin_device_does_not_break_the_line_at_its_length_bytes)
{
    ttl_fixture f;
    const slow::device_record ten{"10PINS", {"0000G0000V", "1111G1111V"}};
    f.write_library(std::vector{nand, ten});
    ttlload(f.session, f.variables.ttl, "10PINS", 0, -1);
    EXPECT_EQ(f.variables.ttl.ttlcnt, 3);
    EXPECT_EQ(f.variables.ttl.ttlpin, 10);
    EXPECT_EQ(f.row(1).substr(0, 10), "1111G1111V");
}

TEST(ttlload, finds_a_name_only_with_its_trailing_blank)
{
    ttl_fixture f;
    slow::device_record longer = nor;
    longer.name = "74000";
    f.write_library(std::vector{longer, nand});
    ttlload(f.session, f.variables.ttl, "7400", 0, -1);
    EXPECT_EQ(f.row(0).substr(0, 14), nand.rows[0]);
    ttlload(f.session, f.variables.ttl, "74000", 0, -1);
    EXPECT_EQ(f.row(0).substr(0, 14), nor.rows[0]);
}

TEST(ttlload, does_not_find_a_name_of_12_letters)
{
    ttl_fixture f;
    f.write_library(std::vector{nand, {"ABCDEFGHIJKL", nor.rows}});
    EXPECT_EQ(ttlload(f.session, f.variables.ttl, "ABCDEFGHIJKL", 0, -1).what, kind::not_played);
    EXPECT_EQ(f.variables.ttl.ttlcnt, 0) << "no blank stands behind it";
    ttlload(f.session, f.variables.ttl, "ABCDEFGHIJK", 0, -1);
    EXPECT_EQ(f.variables.ttl.ttlcnt, 0);
}

TEST(ttlload, ignores_the_case_of_letters)
{
    ttl_fixture f;
    f.write_library(std::vector{nor, {"74LS00", nand.rows}});
    ttlload(f.session, f.variables.ttl, "74ls00", 0, -1);
    EXPECT_EQ(f.row(0).substr(0, 14), nand.rows[0]);
}

TEST(ttlload, of_an_unknown_name_clears_the_result_and_leaves_the_rest)
{
    ttl_fixture f;
    f.write_library(slow::library_text({nand}) + nor.line() + "\r\n");
    f.put_rows({"kept"});
    for (const char* name : {"7404", "7402"}) {  // the second one is after the end line
        f.session.blocks.prgresult(0) = 3;
        EXPECT_EQ(ttlload(f.session, f.variables.ttl, name, 0, 0).what, kind::not_played);
        EXPECT_EQ(f.session.blocks.prgresult(0), 0);
        EXPECT_EQ(f.variables.ttl.ttlcnt, 2);
        EXPECT_EQ(f.variables.ttl.ttlpin, 4);
        EXPECT_EQ(f.row(0).substr(0, 5), "kept ");
        EXPECT_EQ(f.log.lines, lines{});
    }
}

TEST(ttlload, takes_the_row_count_as_hexadecimal_and_the_pin_count_as_decimal)
{
    ttl_fixture f;
    const slow::device_record device{"SIXTEEN", lines(16, "00H00H0GH00H000V")};
    EXPECT_EQ(device.line().substr(13, 2), "11");
    EXPECT_EQ(device.line().substr(16, 2), "16");
    f.write_library(std::vector{nand, device});
    ttlload(f.session, f.variables.ttl, "SIXTEEN", 0, -1);
    EXPECT_EQ(f.variables.ttl.ttlcnt, 17);
    EXPECT_EQ(f.variables.ttl.ttlpin, 16);
}

TEST(ttlload, numbers_that_are_none_are_0)
{
    ttl_fixture f;
    f.write_library("$KSM00000000001\x04"
                    "7400*\r\n$7400        xx\x02"
                    "1x\x0E"
                    "00H00HGH00H00V*\r\nend-ksm\r\n");
    ttlload(f.session, f.variables.ttl, "7400", 0, -1);
    EXPECT_EQ(f.variables.ttl.ttlcnt, 0);
    EXPECT_EQ(f.variables.ttl.ttlpin, 0);
}

TEST(ttlload, of_a_record_cut_at_3000_characters_gives_blank_rows_behind_the_cut)
{
    ttl_fixture f;
    const slow::device_record device{"BIG", lines(100, std::string(40, 'X'))};
    f.write_library(std::vector{nand, device});
    ttlload(f.session, f.variables.ttl, "BIG", 0, -1);
    EXPECT_EQ(f.variables.ttl.ttlcnt, 101);
    const std::size_t whole = (3000 - 19) / 41;
    EXPECT_EQ(f.row(whole - 1), std::string(40, 'X') + std::string(8, ' '));
    EXPECT_EQ(f.row(whole + 1), std::string(48, ' '));
}

TEST(ttlload, of_a_short_line_reads_blanks)
{
    ttl_fixture f;
    f.write_library("$KSM00000000001\x04"
                    "7400*\r\n$7400        FF\x02"
                    "40\r\nend-ksm\r\n");
    ttlload(f.session, f.variables.ttl, "7400", 0, -1);
    EXPECT_EQ(f.variables.ttl.ttlcnt, 255);
    EXPECT_EQ(f.row(253), std::string(48, ' '));
}

TEST(ttlload, plays_the_vectors_and_tells_whether_they_failed)
{
    ttl_fixture f;
    f.use_model(50, true);
    f.write_library(std::vector{nand, nor});
    f.socket_shows(nand_rows);
    f.session.blocks.prgresult(0) = 3;
    EXPECT_EQ(ttlload(f.session, f.variables.ttl, "7400", 0, 0).what, kind::passed)
        << "an older time-out does not count";
    EXPECT_EQ(ttlload(f.session, f.variables.ttl, "7400", 0, 0).what, kind::failed) << "the socket is empty";
    EXPECT_EQ(f.shell.boxes().size(), 1u);
    EXPECT_EQ(ttlload(f.session, f.variables.ttl, "7400", -1, 0).what, kind::failed);
    EXPECT_EQ(f.shell.boxes().size(), 1u) << "silently";
}

}  // namespace
}  // namespace tamrix::tests
