// The questions for a file and for a printer, as a test's screen answers them.
#include "support/scripted_shell.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <vector>

namespace tamrix::forms {
namespace {

struct questions : testing::Test {
    tests::scripted_shell shell;
    const file_question open{.title = "Load File", .filter = "All Files (*.*)|*.*", .name = "*.*"};
    const file_question save{.title = "Save", .filter = "Binary File (*.BIN)|*.bin", .name = "a.bin"};
    const print_job job{.title = "Oscillogram", .draw = [](page& target) {
                            target.line({0, 0}, target.size(), 1);
                            target.text({2, 3}, "0uS", 4);
                        }};
};

TEST_F(questions, for_files_are_answered_in_turn_and_else_cancelled)
{
    shell.answer_next_file("/tmp/a.bin");
    shell.answer_next_file(std::nullopt);
    shell.answer_next_file("/tmp/b.bin");
    EXPECT_EQ(shell.open_file(open), "/tmp/a.bin");
    EXPECT_EQ(shell.open_file(open), std::nullopt);
    EXPECT_EQ(shell.save_file(save), "/tmp/b.bin");
    EXPECT_EQ(shell.save_file(save), std::nullopt);
    EXPECT_EQ(shell.files_to_open(), (std::vector<file_question>{open, open}));
    EXPECT_EQ(shell.files_to_save(), (std::vector<file_question>{save, save}));
}

TEST_F(questions, for_a_printer_draw_the_page_only_where_it_is_printed)
{
    shell.page_size = {100, 200};
    shell.answer_next_print(print_end::printed);
    shell.answer_next_print(print_end::failed);
    EXPECT_EQ(shell.print(job), print_end::printed);
    EXPECT_EQ(shell.print(job), print_end::failed);
    EXPECT_EQ(shell.print(job), print_end::cancelled);
    EXPECT_EQ(shell.print_titles(), (std::vector<std::string>{"Oscillogram", "Oscillogram", "Oscillogram"}));
    EXPECT_EQ(shell.pages(), (std::vector<std::vector<std::string>>{{"line 0,0 100,200 1", "text 2,3 4 0uS"}}));
}

}  // namespace
}  // namespace tamrix::forms
