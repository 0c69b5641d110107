#include "cli/convert_fixture.h"

namespace tamrix::tests {

using testing::HasSubstr;
using testing::MatchesRegex;

constexpr const char* two_bytes_at_2 = ":02000200414279\r\n:00000001FF\r\n";

TEST_F(convert_test, says_what_it_read_and_what_it_wrote)
{
    folder.write("in.bin", "abc");
    folder.write("one.hex", ":0100100041AE\r\n:00000001FF\r\n");
    const auto result = convert({"in.bin", "one.hex", "out.hex"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.out, "in.bin: binary, 3 bytes, 0x0 to 0x2\n"
                          "one.hex: intel, 1 byte, 0x10 to 0x10\n"
                          "out.hex: intel, 4 bytes in 2 segments, 0x0 to 0x10\n");
    EXPECT_EQ(result.err, "");
}

TEST_F(convert_test, through_a_device_prints_the_status_lines_of_load_and_save_as_they_are)
{
    folder.write("in.bin", "abc");
    const auto result = convert({"in.bin", "out.hex", "--device-words", "3"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.out, MatchesRegex(">>Load File OK! Time:[^\n]+\n>> [0-9]+\\.[0-9][0-9]Sec\n"
                                         ">>Save File OK! Time:[^\n]+\n>> [0-9]+\\.[0-9][0-9]Sec\n"));
    EXPECT_EQ(result.err, "");
}

TEST_F(convert_test, an_extension_chooses_the_format_of_the_output)
{
    folder.write("in.bin", "abc");
    const std::string intel = ":020000040000FA\r\n:03000000616263D7\r\n:00000001FF\r\n";
    const std::string motorola = "S30800000000616263D1\r\nS70500000000FA\r\n";
    EXPECT_EQ(converted("in.bin", "out.hex"), intel);
    EXPECT_EQ(converted("in.bin", "OUT.IHX"), intel);
    EXPECT_EQ(converted("in.bin", "out.s19"), motorola);
    EXPECT_EQ(converted("in.bin", "out.srec"), motorola);
    EXPECT_EQ(converted("in.bin", "out.tek"), "/00000303"
                                              "616263"
                                              "18\r\n/00000000\r\n");
    EXPECT_EQ(converted("in.bin", "out.bin"), "abc");
}

TEST_F(convert_test, an_unknown_extension_is_saved_as_binary_and_says_so)
{
    folder.write("in.bin", "abc");
    const auto result = convert({"in.bin", "out.xyz"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err, "tamrix: note: out.xyz: saved as binary; --to takes another format\n");
    EXPECT_EQ(read_text(folder.path("out.xyz")), "abc");
    EXPECT_EQ(convert({"in.bin", "some.folder/../out"}).status, 1);
    EXPECT_EQ(converted("in.bin", "out", {"--to", "binary"}), "abc");
}

TEST_F(convert_test, to_goes_before_the_extension)
{
    folder.write("in.bin", "a");
    EXPECT_EQ(converted("in.bin", "out.bin", {"--to", "motorola"}), "S306000000006198\r\nS70500000000FA\r\n");
}

TEST_F(convert_test, the_format_of_the_input_is_detected_from_its_content)
{
    folder.write("in.bin", two_bytes_at_2);
    EXPECT_EQ(converted("in.bin", "out.bin", {"--save-from", "0"}), "\xFF\xFF"
                                                                    "AB");
}

TEST_F(convert_test, from_goes_before_the_content)
{
    folder.write("in.hex", two_bytes_at_2);
    EXPECT_EQ(converted("in.hex", "out.bin", {"--from", "binary"}), two_bytes_at_2);
    EXPECT_EQ(converted("in.hex", "out.bin", {"--from", "intel", "--save-from", "0"}), "\xFF\xFF"
                                                                                       "AB");
}

TEST_F(convert_test, what_the_file_does_not_fill_is_cleared)
{
    folder.write("in.hex", two_bytes_at_2);
    EXPECT_EQ(converted("in.hex", "out.bin", {"--clear", "ff"}), bytes({0xFF, 0xFF, 'A', 'B'}));
    EXPECT_EQ(converted("in.hex", "out.bin", {"--clear", "00"}), bytes({0, 0, 'A', 'B'}));
    EXPECT_EQ(converted("in.hex", "out.bin", {"--clear", "none"}), bytes({0, 0, 'A', 'B'}));
}

TEST_F(convert_test, a_text_file_keeps_its_addresses)
{
    folder.write("in.hex", ":020000040001F9\r\n:028000004142FB\r\n:00000001FF\r\n");
    EXPECT_EQ(converted("in.hex", "out.s37"), "S307000180004142F4\r\nS70500000000FA\r\n");
    EXPECT_EQ(converted("in.hex", "out.hex"), ":020000040001F9\r\n:028000004142FB\r\n:00000001FF\r\n");
}

TEST_F(convert_test, a_binary_file_begins_with_the_first_byte_and_a_note_says_where_that_was)
{
    folder.write("in.hex", ":020000040800F2\r\n:020000004142"
                           "7B\r\n:00000001FF\r\n");
    const auto result = convert({"in.hex", "out.bin"});
    EXPECT_EQ(result.status, 0);
    EXPECT_EQ(result.err,
              "tamrix: note: out.bin: begins at 0x8000000; --save-from 0 asks for an image from address 0\n");
    EXPECT_EQ(read_text(folder.path("out.bin")), "AB");
    EXPECT_EQ(converted("in.hex", "out.s37"), "S307080000004142"
                                              "6D\r\nS70500000000FA\r\n");
}

TEST_F(convert_test, an_image_from_address_0_is_asked_for)
{
    folder.write("in.hex", ":020FFE0041426E\r\n:00000001FF\r\n");
    EXPECT_EQ(converted("in.hex", "out.bin", {"--save-from", "0"}), std::string(0xFFE, '\xFF') + "AB");
    EXPECT_EQ(converted("in.hex", "out.bin", {"--save-from", "FF0", "--fill", "0"}), std::string(14, '\0') + "AB");
}

TEST_F(convert_test, to_buffer_and_from_file_move_the_data)
{
    folder.write("in.bin", "0123456789");
    EXPECT_EQ(converted("in.bin", "out.bin", {"--to-buffer", "3", "--clear", "00"}), bytes({0, 0, 0}) + "0123456789");
    EXPECT_EQ(converted("in.bin", "out.bin", {"--from-file", "4"}), "456789");
    EXPECT_EQ(converted("in.bin", "out.bin", {"--from-file", "0xA"}), "");
}

TEST_F(convert_test, file_size_limits_what_is_loaded)
{
    folder.write("in.bin", "0123456789");
    folder.write("in.hex", ":0A000000303132333435363738"
                           "39E9\r\n:00000001FF\r\n");
    EXPECT_EQ(converted("in.bin", "out.bin", {"--file-size", "4"}), "0123");
    EXPECT_EQ(converted("in.bin", "out.bin", {"--from-file", "5", "--file-size", "4"}), "5678");
    EXPECT_EQ(converted("in.hex", "out.bin", {"--file-size", "4"}), "0123");
}

TEST_F(convert_test, from_mode_picks_bytes_of_the_file)
{
    folder.write("in.bin", "0123456789AB");
    EXPECT_EQ(converted("in.bin", "out.bin", {"--from-mode", "normal"}), "0123456789AB");
    EXPECT_EQ(converted("in.bin", "out.bin", {"--from-mode", "even"}), "02468A");
    EXPECT_EQ(converted("in.bin", "out.bin", {"--from-mode", "odd"}), "13579B");
    EXPECT_EQ(converted("in.bin", "out.bin", {"--from-mode", "1of4"}), "048");
    EXPECT_EQ(converted("in.bin", "out.bin", {"--from-mode", "2of4"}), "159");
    EXPECT_EQ(converted("in.bin", "out.bin", {"--from-mode", "3of4"}), "26A");
    EXPECT_EQ(converted("in.bin", "out.bin", {"--from-mode", "4of4"}), "37B");
}

TEST_F(convert_test, to_mode_spreads_the_bytes_over_the_buffer)
{
    folder.write("in.bin", "01");
    EXPECT_EQ(converted("in.bin", "out.bin", {"--to-mode", "even"}), "0\xFF"
                                                                     "1\xFF");
    EXPECT_EQ(converted("in.bin", "out.bin", {"--to-mode", "odd"}), "\xFF"
                                                                    "0\xFF"
                                                                    "1");
    EXPECT_EQ(converted("in.bin", "out.bin", {"--to-mode", "3of4"}), "\xFF\xFF"
                                                                     "0\xFF\xFF\xFF"
                                                                     "1\xFF");
}

TEST_F(convert_test, two_halves_make_a_whole)
{
    folder.write("in.bin", "0123456789");
    converted("in.bin", "even.bin", {"--from-mode", "even"});
    converted("in.bin", "odd.bin", {"--from-mode", "odd"});
    EXPECT_EQ(converted("even.bin", "spread.bin", {"--to-mode", "even"}), "0\xFF"
                                                                          "2\xFF"
                                                                          "4\xFF"
                                                                          "6\xFF"
                                                                          "8\xFF");
    EXPECT_EQ(converted("odd.bin", "spread.bin", {"--to-mode", "odd"}), "\xFF"
                                                                        "1\xFF"
                                                                        "3\xFF"
                                                                        "5\xFF"
                                                                        "7\xFF"
                                                                        "9");
}

TEST_F(convert_test, save_from_and_save_size_choose_the_range)
{
    folder.write("in.bin", "0123456789");
    EXPECT_EQ(converted("in.bin", "out.bin", {"--save-from", "7"}), "789");
    EXPECT_EQ(converted("in.bin", "out.bin", {"--save-size", "3"}), "012");
    EXPECT_EQ(converted("in.bin", "out.bin", {"--save-from", "2", "--save-size", "5"}), "23456");
    EXPECT_EQ(converted("in.bin", "out.bin", {"--save-from", "A"}), "");
}

TEST_F(convert_test, hexadecimal_values_may_have_small_letters_and_a_prefix)
{
    folder.write("in.bin", std::string(0x1F, 'a') + "bc");
    EXPECT_EQ(converted("in.bin", "out.bin", {"--save-from", "1f"}), "bc");
    EXPECT_EQ(converted("in.bin", "out.bin", {"--save-from", "0x1F"}), "bc");
    EXPECT_EQ(converted("in.bin", "out.bin", {"--save-from", "0X00001f"}), "bc");
}

TEST_F(convert_test, a_path_with_blanks_and_letters_of_every_kind_is_taken)
{
    const std::string name = "Grüße an 世界 – «тест».bin";
    folder.write(name, "abc");
    EXPECT_EQ(converted(name, "out " + name), "abc");
}

TEST_F(convert_test, both_kinds_of_separators_are_taken_in_paths)
{
    std::filesystem::create_directories(folder.path("a/b"));
    folder.write("a/b/in.bin", "abc");
    EXPECT_EQ(convert({"a\\b\\in.bin", "a\\\\b//out.bin"}).status, 0);
    EXPECT_EQ(read_text(folder.path("a/b/out.bin")), "abc");
}

TEST_F(convert_test, an_older_output_is_replaced)
{
    folder.write("in.bin", "abc");
    folder.write("out.bin", std::string(10000, 'x'));
    EXPECT_EQ(converted("in.bin", "out.bin"), "abc");
}

TEST_F(convert_test, many_conversions_run_side_by_side)
{
    folder.write("in.bin", std::string(100000, 'a'));
    const auto result = run_program(
        {"sh", "-c", "for i in 1 2 3 4 5 6 7 8; do " TAMRIX_COMMAND " convert in.bin $i.hex >/dev/null & done; wait"},
        {.folder = folder.path("")});
    EXPECT_EQ(result.err, "");
    const std::string expected = converted("in.bin", "alone.hex");
    for (int i = 1; i <= 8; ++i) EXPECT_EQ(read_text(folder.path(std::to_string(i) + ".hex")), expected);
}

}  // namespace tamrix::tests
