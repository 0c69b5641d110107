#include "forms/box_table.h"

#include <gtest/gtest.h>

namespace tamrix::forms {
namespace {

TEST(the_table_of_a_box, is_one_text_with_the_blanks_of_its_cells)
{
    const box_table table{.rows = {{{}, {{"Device", 8}, {"Buffer", 2}}}, {{"Memory:", 1}, {{"000H"}, {"010H", 4}}}},
                          .row_end = "\r\r"};
    EXPECT_EQ(plain_text(table), "        Device  Buffer\r\r Memory:000H    010H\r\r");
}

TEST(the_table_of_a_box, has_its_closing_line_after_an_empty_one)
{
    EXPECT_EQ(plain_text({.rows = {row_of("Result: V")}, .closing = "fail!"}), "Result: V\n\nfail!");
}

TEST(the_table_of_a_box, takes_a_line_as_a_label_and_a_cell)
{
    EXPECT_EQ(row_of("  Result: V0017:  L "), (box_row{{"Result:", 2}, {{"V0017:  L ", 1}}}));
    EXPECT_EQ(row_of("Result:"), (box_row{{"Result:"}, {{}}}));
    EXPECT_EQ(row_of(" no label"), (box_row{{}, {{"no label", 1}}}));
    EXPECT_EQ(cell_of("   "), (box_cell{"", 3}));
}

}  // namespace
}  // namespace tamrix::forms
