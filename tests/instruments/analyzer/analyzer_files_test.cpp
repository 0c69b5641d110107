// Load, save and print of the analyzer, and what goes wrong with them.
#include "instrument_bench.h"
#include "support/temp_files.h"

#include <gtest/gtest.h>

#include <numeric>

namespace tamrix {
namespace {

using tests::instrument_bench;
using tests::lines;

struct file_bench : instrument_bench {
    using instrument_bench::instrument_bench;
    tests::temp_folder folder;

    /// The first panel and the events after a press of Load File with this answer.
    std::string load(const std::optional<std::string>& name)
    {
        std::string panel;
        shell.answer_next_file(name);
        during_analyzer([&](analyzer& dialog) {
            dialog.analyzerOpen.click();
            panel = dialog.StatusBar1.text(1);
        });
        return panel;
    }
    std::string save(const std::optional<std::string>& name)
    {
        std::string panel;
        shell.answer_next_file(name);
        during_analyzer([&](analyzer& dialog) {
            dialog.analyzerSave.click();
            panel = dialog.StatusBar1.text(1);
        });
        return panel;
    }
};

const forms::file_question open_question{"Load File", "All Files (*.*)|*.*|Binary File (*.BIN)|*.bin", "*.*"};

TEST(a_saved_capture, is_all_banks_byte_for_byte_and_loads_again)
{
    file_bench b;
    b.session.blocks.rambknum(0) = 2;
    const auto samples = tests::random_bytes(65536);
    std::ranges::copy(samples, b.session.blocks.ibuffer.span().begin());
    b.variables.transfer.fname = "device.hex";
    const std::string path = b.folder.path("capture.bin");
    EXPECT_EQ(b.save(path), "Status:>>Save File OK!");
    EXPECT_EQ(b.transcript, (lines{"status1 Status:>>Save File OK!", "clear", "labels", "draw"}));
    EXPECT_EQ(tests::read_bytes(path), samples);
    EXPECT_EQ(b.variables.transfer.fname, "device.hex");
    std::ranges::fill(b.session.blocks.ibuffer.span(), 0);
    EXPECT_EQ(b.load(path), "Status:>>Load File OK!");
    EXPECT_EQ(b.transcript, (lines{"status1 Status:>>Load File OK!", "clear", "labels", "draw"}));
    EXPECT_EQ(b.bytes(0, 65536), samples);
    EXPECT_EQ(b.variables.transfer.fname, "device.hex");
    EXPECT_EQ(b.variables.transfer.rformat, 0);
    EXPECT_TRUE(b.shell.boxes().empty());
}

TEST(the_questions_for_a_file, offer_the_last_name)
{
    file_bench b;
    const std::string path = b.folder.path("one.bin");
    b.during_analyzer([&](analyzer& dialog) {
        for (const auto& answer : {std::optional<std::string>{}, std::optional{path}, std::optional<std::string>{}}) {
            b.shell.answer_next_file(answer);
            dialog.analyzerSave.click();
        }
        b.shell.answer_next_file(std::nullopt);
        dialog.analyzerOpen.click();
    });
    ASSERT_EQ(b.shell.files_to_save().size(), 3u);
    EXPECT_EQ(b.shell.files_to_save()[0].title, "Save Buffer To A File");
    EXPECT_EQ(b.shell.files_to_save()[0].filter, open_question.filter);
    EXPECT_EQ(b.shell.files_to_save()[1].name, "*.*") << "a cancelled question changes nothing";
    EXPECT_EQ(b.shell.files_to_save()[2].name, path);
    EXPECT_EQ(b.shell.files_to_open()[0].title, "Load File");
    EXPECT_EQ(b.shell.files_to_open()[0].name, path);
}

TEST(a_cancelled_question, ends_the_click_without_a_word)
{
    file_bench b;
    EXPECT_EQ(b.load(std::nullopt), "Status:");
    EXPECT_TRUE(b.transcript.empty());
    EXPECT_EQ(b.save(std::nullopt), "Status:");
    EXPECT_TRUE(b.transcript.empty());
}

TEST(a_file_that_is_not_there, is_told_of_and_tried_all_the_same)
{
    file_bench b;
    const std::string path = b.folder.path("missing.bin");
    EXPECT_EQ(b.load(path), "Status:>>Load File Fail!");
    ASSERT_EQ(b.shell.whole_boxes().size(), 1u);
    EXPECT_EQ(b.shell.whole_boxes()[0],
              (forms::message_box{.text = "File couldn't be open!", .title = path, .picture = forms::icon::error}));
    EXPECT_EQ(b.transcript.front(), "box " + path + " | File couldn't be open!");
    EXPECT_EQ(b.variables.transfer.rformat, 1);
    EXPECT_FALSE(b.variables.transfer.why_it_failed.empty());
}

TEST(a_capture_file, may_be_empty_or_shorter_or_longer_than_the_banks)
{
    for (const std::size_t length : {std::size_t{0}, std::size_t{1}, std::size_t{32767}, std::size_t{100000}}) {
        file_bench b;
        const auto samples = tests::random_bytes(length);
        const std::string path = b.folder.write("capture.bin", samples);
        EXPECT_EQ(b.load(path), "Status:>>Load File OK!") << length;
        EXPECT_EQ(b.bytes(0, static_cast<std::int64_t>(length)), samples);
        EXPECT_EQ(b.buffer(static_cast<std::int64_t>(length)), instrument_bench::untouched);
    }
}

TEST(a_load, goes_by_the_clear_option_of_the_host)
{
    file_bench b;
    b.session.blocks.typeformat(1) = 0;
    const std::string path = b.folder.write("capture.bin", "abc");
    EXPECT_EQ(b.load(path), "Status:>>Load File OK!");
    EXPECT_EQ(b.bytes(0, 5), (std::vector<std::uint8_t>{'a', 'b', 'c', 0xFF, 0xFF}));
}

TEST(a_load, is_a_plain_copy_whatever_was_loaded_before)
{
    file_bench b;
    b.variables.transfer = {.bufstart = 9, .filestart = 8, .filestep = 2, .filephase = 1, .bufstep = 4, .bufphase = 3};
    EXPECT_EQ(b.load(b.folder.write("capture.bin", "abcdef")), "Status:>>Load File OK!");
    EXPECT_EQ(b.bytes(0, 6), (std::vector<std::uint8_t>{'a', 'b', 'c', 'd', 'e', 'f'}));
}

TEST(a_load, keeps_view_zoom_and_period)
{
    file_bench b;
    const std::string path = b.folder.write("capture.bin", "abc");
    b.during_analyzer([&](analyzer& dialog) {
        dialog.Command1.click();
        dialog.HScroll1.drag(3);
        b.variables.analyzer.sampleus = 12.5;
        const auto before = std::tuple{dialog.viewpos(), dialog.bitwidth()};
        b.shell.answer_next_file(path);
        dialog.analyzerOpen.click();
        EXPECT_EQ((std::tuple{dialog.viewpos(), dialog.bitwidth()}), before);
        EXPECT_EQ(b.variables.analyzer.sampleus, 12.5);
    });
}

TEST(a_buffer_too_small_for_the_banks, fails_to_save)
{
    file_bench b{1, true, 0, 0x1000};
    EXPECT_EQ(b.save(b.folder.path("capture.bin")), "Status:>>Save File Fail!");
    EXPECT_FALSE(b.variables.transfer.why_it_failed.empty());
}

TEST(a_save, to_where_nothing_can_be_written_fails)
{
    file_bench b;
    EXPECT_EQ(b.save(b.folder.path("no/such/folder/capture.bin")), "Status:>>Save File Fail!");
#ifdef __linux__
    EXPECT_EQ(b.save("/dev/full"), "Status:>>Save File Fail!") << "the disk is full";
#endif
}

TEST(a_print, is_the_diagram_with_its_times_and_heading)
{
    instrument_bench b;
    b.reply_at_pass(1);
    b.shell.answer_next_print(forms::print_end::printed);
    b.during_analyzer([&](analyzer& dialog) {
        dialog.Command3.click();
        b.transcript.clear();
        dialog.analyzerprint.click();
        EXPECT_EQ(dialog.Text1.text(), "Oscillogram");
        EXPECT_EQ(dialog.Text2.text(), "\r0uS");
        EXPECT_TRUE(b.transcript.empty()) << "nothing is said of it";
        const analyzer_view view{.size = dialog.Picture1.size(), .bitwidth = dialog.bitwidth()};
        ASSERT_EQ(b.shell.pages().size(), 1u);
        EXPECT_GT(b.shell.pages()[0].size(), static_cast<std::size_t>(8 * view.samples_across()));
    });
    EXPECT_EQ(b.shell.print_titles(), (lines{"Logic Analyzer"}));
    EXPECT_TRUE(b.shell.pages()[0].back().ends_with(" Oscillogram"));
}

TEST(a_print, that_is_cancelled_or_has_no_printer_ends_without_a_word)
{
    for (const forms::print_end end : {forms::print_end::cancelled, forms::print_end::failed}) {
        instrument_bench b;
        b.shell.answer_next_print(end);
        b.during_analyzer([&](analyzer& dialog) {
            dialog.analyzerprint.click();
            EXPECT_TRUE(b.transcript.empty());
            EXPECT_EQ(dialog.StatusBar1.text(1), "Status:");
        });
        EXPECT_TRUE(b.shell.boxes().empty());
    }
}

}  // namespace
}  // namespace tamrix
