#include "ttl/library/changes.h"
#include "ttl/library/library.h"

#include <gtest/gtest.h>

namespace tamrix::tests {
namespace {

TEST(ttlinsert, adds_the_record_at_the_top_the_entry_in_its_place_and_the_name_at_the_lists_end)
{
    ttl_fixture f;
    f.write_library(std::vector{nor, nand});
    lines list{"7400", "7402"};
    f.insert(named("7401"), list);
    EXPECT_EQ(f.library(), slow::library_text({"7400", "7401", "7402"}, {named("7401"), nor, nand}));
    EXPECT_EQ(list, (lines{"7400", "7402", "7401"}));
}

TEST(ttlinsert, sorts_without_regard_to_case)
{
    ttl_fixture f;
    f.write_library(slow::library_text({"a1", "C1"}, {named("a1"), named("C1")}));
    lines list{"a1", "C1"};
    f.insert(named("B1"), list);
    f.insert(named("d1"), list);
    EXPECT_EQ(f.library(),
              slow::library_text({"a1", "B1", "C1", "d1"}, {named("d1"), named("B1"), named("a1"), named("C1")}));
}

TEST(ttlinsert, of_a_listed_device_moves_its_record_to_the_top_and_keeps_its_entry)
{
    ttl_fixture f;
    f.write_library(std::vector{named("7401"), nand, nor});
    lines list{"7400", "7401", "7402"};
    f.insert({"7402", {"11L11LGL11L11V"}}, list);
    EXPECT_EQ(f.library(),
              slow::library_text({"7400", "7401", "7402"}, {{"7402", {"11L11LGL11L11V"}}, named("7401"), nand}));
    EXPECT_EQ(list.size(), 3u);
    EXPECT_EQ(f.shell.boxes(), lines{});
}

TEST(ttlinsert, that_replaces_a_name_inside_an_earlier_one_fails_before_anything_is_written)
{
    ttl_fixture f;
    f.write_library(slow::library_text({"37400", "7400", "7402"}, {named("37400"), nand, nor}));
    const std::string before = f.library();
    lines list{"37400", "7400", "7402"};
    EXPECT_EQ(refusal([&] {
                  f.insert({"7400", {"11L11LGL11L11V"}}, list);
              }),
              "7400 cannot be deleted or replaced while 37400 is in the library, whose name holds it");
    EXPECT_EQ(f.library(), before);
    EXPECT_EQ(list.size(), 3u);
}

TEST(ttlinsert, of_a_name_in_the_other_case_adds_a_second_entry)
{
    ttl_fixture f;
    f.write_library(std::vector{nand, named("74LS00")});
    lines list{"7400", "74LS00"};
    f.insert(named("74ls00"), list);
    EXPECT_EQ(f.library(), slow::library_text({"7400", "74ls00", "74LS00"}, {named("74ls00"), nand, named("74LS00")}));
    EXPECT_EQ(list, (lines{"7400", "74LS00", "74ls00"}));
}

TEST(ttlinsert, into_a_library_of_one_device_does_nothing)
{
    ttl_fixture f;
    f.write_library(std::vector{nand});
    lines list{"7400"};
    f.insert(nor, list);
    EXPECT_EQ(f.library(), slow::library_text({nand}));
    EXPECT_EQ(list, lines{"7400"});
}

TEST(ttlinsert, that_replaces_one_of_two_devices_only_deletes_it)
{
    // Meant: the silent deletion leaves one device, and such a library takes no other.
    ttl_fixture f;
    f.write_library(std::vector{nand, nor});
    lines list{"7400", "7402"};
    f.insert(nor, list);
    EXPECT_EQ(f.library(), slow::library_text({nand}));
}

TEST(ttlinsert, into_a_missing_or_empty_library_does_nothing)
{
    ttl_fixture f;
    lines list;
    f.insert(nor, list);
    EXPECT_EQ(f.library(), "");
    EXPECT_EQ(list, lines{});
}

TEST(ttlinsert, takes_blanks_off_the_name)
{
    ttl_fixture f;
    f.write_library(std::vector{nand, nor});
    lines list{"7400", "7402"};
    f.insert({"  7499 ", nand_rows}, list);
    EXPECT_EQ(f.variables.ttl.ttlname, "7499");
    EXPECT_EQ(f.library(), slow::library_text({"7400", "7402", "7499"}, {named("7499"), nand, nor}));
    EXPECT_EQ(list.back(), "7499");
}

TEST(ttlinsert, writes_pin_counts_below_10_with_a_zero_and_10_as_a_byte_of_10)
{
    ttl_fixture f;
    f.write_library(std::vector{nand, nor});
    lines list{"7400", "7402"};
    f.insert({"EIGHT", {"000G000V"}}, list);
    f.insert({"TEN", {"0000G0000V"}}, list);
    const std::string text = f.library();
    EXPECT_NE(text.find("\r\n$EIGHT       02\x02"
                        "08\x08"
                        "000G000V*\r\n"),
              std::string::npos);
    EXPECT_NE(text.find("\r\n$TEN         02\x02"
                        "10\n0000G0000V*\r\n"),
              std::string::npos);
    ttlload(f.session, f.variables.ttl, "TEN", 0, -1);
    EXPECT_EQ(f.row(0).substr(0, 10), "0000G0000V");
}

TEST(ttlinsert, a_name_of_12_letters_fills_its_field)
{
    ttl_fixture f;
    f.write_library(std::vector{nand, nor});
    lines list{"7400", "7402"};
    f.insert(named("ABCDEFGHIJKL"), list);
    EXPECT_EQ(f.library(), slow::library_text({"7400", "7402", "ABCDEFGHIJKL"}, {named("ABCDEFGHIJKL"), nand, nor}));
    ttldelete(f.session, "ABCDEFGHIJKL", 1);
    EXPECT_EQ(f.library(), slow::library_text({nand, nor}));
}

TEST(ttlinsert, a_longer_name_fails_and_leaves_the_file)
{
    ttl_fixture f;
    f.write_library(std::vector{nand, nor});
    lines list{"7400", "7402"};
    EXPECT_THROW(f.insert(named("ABCDEFGHIJKLM"), list), std::runtime_error);
    EXPECT_EQ(f.library(), slow::library_text({nand, nor}));
    EXPECT_EQ(list.size(), 2u);
}

TEST(ttlinsert, into_a_damaged_library_fails_and_leaves_the_file)
{
    ttl_fixture f;
    lines list;
    for (const char* text : {"$KSM00000000003\x04"
                             "7400\x04"
                             "7402*\r\nend-ksm\r\n",  // one entry is missing
                             "$KSM00000000002\x04"
                             "7400\xFF"
                             "7402*\r\nend-ksm\r\n",  // a length points outside
                             "$KSM00000000002\x04"
                             "7400\x04"
                             "7402*\r\n$7400"}) {  // no end line
        f.write_library(text);
        EXPECT_THROW(f.insert(named("7499"), list), std::runtime_error);
        EXPECT_EQ(f.library(), text);
        EXPECT_EQ(list, lines{});
    }
}

TEST(ttlinsert, does_not_look_at_entries_behind_its_own)
{
    ttl_fixture f;
    f.write_library("$KSM00000000003\x04"
                    "7400\xFF"
                    "7402*\r\nend-ksm\r\n");
    lines list;
    f.insert(named("7300"), list);
    EXPECT_TRUE(f.library().starts_with("$KSM00000000004\x04"
                                        "7300\x04"
                                        "7400\xFF"
                                        "7402*\r\n"));
}

TEST(ttlinsert, writes_254_rows_and_more_than_a_reader_takes)
{
    ttl_fixture f;
    f.write_library(std::vector{nand, nor});
    lines list{"7400", "7402"};
    const slow::device_record big{"BIG", lines(254, "00H00HGH00H00V")};
    f.insert(big, list);
    EXPECT_EQ(f.library(), slow::library_text({"7400", "7402", "BIG"}, {big, nand, nor}));
    f.insert(named("AAA"), list);
    EXPECT_NE(f.library().find(big.line()), std::string::npos) << "a writer keeps lines at full length";
}

}  // namespace
}  // namespace tamrix::tests
