#include "ttl/library/changes.h"
#include "ttl/library/library.h"

#include <gtest/gtest.h>

namespace tamrix::tests {
namespace {

using forms::answer;

TEST(ttldelete, asks_first_and_touches_nothing_on_No)
{
    ttl_fixture f;
    f.write_library(std::vector{nand, nor});
    const std::string before = f.library();
    f.shell.answer_next_box(answer::no);
    EXPECT_TRUE(ttldelete(f.session, "7400", 0));
    EXPECT_EQ(f.library(), before);
    const forms::message_box expected{.text = "Delete Pattern?",
                                      .title = "Edit Pattern",
                                      .picture = forms::icon::question,
                                      .buttons = forms::buttons_of_box::yes_no,
                                      .enter_refuses = true};
    EXPECT_EQ(f.shell.whole_boxes(), std::vector{expected});
}

TEST(ttldelete, takes_the_entry_and_the_record_out)
{
    ttl_fixture f;
    f.write_library(std::vector{nand, nor, named("7408")});
    f.shell.answer_next_box(answer::yes);
    EXPECT_FALSE(ttldelete(f.session, "7402", 0));
    EXPECT_EQ(f.library(), slow::library_text({nand, named("7408")}));
}

TEST(ttldelete, is_silent_where_it_is_told_so)
{
    ttl_fixture f;
    f.write_library(std::vector{nand, nor});
    EXPECT_FALSE(ttldelete(f.session, "7400", 1));
    EXPECT_EQ(f.library(), slow::library_text({nor}));
    EXPECT_EQ(f.shell.boxes(), lines{});
}

TEST(ttldelete, of_the_only_device_does_nothing)
{
    ttl_fixture f;
    f.write_library(std::vector{nand});
    EXPECT_FALSE(ttldelete(f.session, "7400", 1));
    EXPECT_EQ(f.library(), slow::library_text({nand}));
}

TEST(ttldelete, of_an_unknown_or_empty_name_does_nothing)
{
    ttl_fixture f;
    f.write_library(std::vector{nand, nor});
    EXPECT_FALSE(ttldelete(f.session, "7404", 1));
    EXPECT_FALSE(ttldelete(f.session, "", 1));
    EXPECT_EQ(f.library(), slow::library_text({nand, nor}));
}

TEST(ttldelete, of_a_name_inside_an_earlier_one_names_that_one_and_leaves_the_file)
{
    ttl_fixture f;
    const lines directory{"37400", "7400", "7402", "A7400"};
    f.write_library(slow::library_text(directory, {nand, nor, named("A7400"), named("37400")}));
    const std::string before = f.library();
    EXPECT_EQ(refusal([&] { ttldelete(f.session, "7400", 1); }),
              "7400 cannot be deleted or replaced while 37400 is in the library, whose name holds it");
    EXPECT_EQ(refusal([&] { ttldelete(f.session, "400", 1); }),
              "400 cannot be deleted or replaced while 37400 is in the library, whose name holds it")
        << "a name that is not listed";
    EXPECT_EQ(refusal([&] { ttldelete(f.session, "402", 1); }),
              "402 cannot be deleted or replaced while 7402 is in the library, whose name holds it");
    EXPECT_EQ(f.library(), before);
    EXPECT_EQ(refusal([&] { ttldelete(f.session, "37400", 1); }), "");
    EXPECT_EQ(refusal([&] { ttldelete(f.session, "7400", 1); }), "") << "nothing is in the way any more";
    EXPECT_EQ(f.library(), slow::library_text(lines{"7402", "A7400"}, {nor, named("A7400")}));
}

TEST(ttldelete, of_a_name_that_the_header_has_before_its_directory_says_so_and_leaves_the_file)
{
    ttl_fixture f;
    f.write_library(slow::library_text({"000", "7402"}, {named("000"), nor}));
    const std::string before = f.library();
    EXPECT_EQ(refusal([&] { ttldelete(f.session, "000", 1); }),
              "000 cannot be deleted or replaced: the header of the library holds the same letters");
    EXPECT_EQ(f.library(), before);
}

TEST(ttldelete, of_the_beginning_of_an_earlier_name_takes_that_entry)
{
    ttl_fixture f;
    f.write_library(slow::library_text({"74000", "7400"}, {named("74000"), nand}));
    EXPECT_FALSE(ttldelete(f.session, "7400", 1));
    // The mark has the length of the other entry: a name and 7 blanks.
    EXPECT_EQ(f.library(), slow::library_text(lines{"7400"}, {named("74000")}));
}

TEST(ttldelete, ignores_case_and_trims_the_lines_that_stay)
{
    ttl_fixture f;
    f.write_library("$KSM00000000002\x01"
                    "A\x01"
                    "b*\r\n  $A  \r\n   \r\n$B            \r\n end-ksm  \r\nbehind\r\n");
    EXPECT_FALSE(ttldelete(f.session, "B", 1));
    EXPECT_EQ(f.library(), "$KSM00000000001\x01"
                           "A*\r\n$A\r\n\r\nend-ksm\r\n");
}

TEST(ttldelete, without_an_end_line_fails_and_leaves_the_file)
{
    ttl_fixture f;
    std::string text = slow::library_text({nand, nor});
    text.resize(text.size() - 9);
    f.write_library(text);
    EXPECT_THROW(ttldelete(f.session, "7400", 1), std::runtime_error);
    EXPECT_EQ(f.library(), text);
}

}  // namespace
}  // namespace tamrix::tests
