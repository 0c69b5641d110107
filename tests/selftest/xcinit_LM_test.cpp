// The image of a module's FPGA: where it is looked for, and how it is sent.
#include "selftest/xcinit_LM.h"

#include "module_programmer.h"
#include "selftest/module_image.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <set>

namespace tamrix {
namespace {

using tests::lines;
using tests::unit_bench;
using bytes = std::vector<std::uint8_t>;

/// Another current directory, until its end.
struct working_folder {
    explicit working_folder(const std::string& path) { std::filesystem::current_path(path); }
    ~working_folder() { std::filesystem::current_path(before); }
    const std::filesystem::path before = std::filesystem::current_path();
};

/// Loads module 2 and returns the mode as it is afterwards.
std::uint8_t load(unit_bench& b, std::uint8_t fileindex = 0, std::uint8_t mode = 0)
{
    b.with_dialog([&](pinnote204& dialog) { xcinit_LM(dialog, fileindex, mode, 2); });
    return mode;
}

const lines connecting{"regout 1 55", "delayms 1000", "regout 0 55", "delayms 1000", "regout 1 51", "delayms 1000"};
const lines giving_up{"box Warning!  | >> write fig file err!! ", "regout 1 55", "regout 0 55"};

/// Whether the transcript ends so.
bool ends_with(const lines& all, const lines& end)
{
    return all.size() >= end.size() && std::equal(end.rbegin(), end.rend(), all.rbegin());
}

TEST(module_images, are_22_files_with_names_of_their_own)
{
    EXPECT_EQ(name_of_module_image(0), "ruvoio1.bin");
    EXPECT_EQ(name_of_module_image(7), "selkio1.bin");
    EXPECT_EQ(name_of_module_image(20), "ruvoepm12.bin");
    EXPECT_EQ(name_of_module_image(21), "ruvoepm14.bin");
    EXPECT_EQ(name_of_module_image(22), "");
    std::set<std::string_view> names;
    for (std::uint8_t index = 0; index < 22; ++index) names.insert(name_of_module_image(index));
    EXPECT_EQ(names.size(), 22u);
}

TEST(module_images, are_read_in_lib1_of_the_current_folder_before_that_of_the_host)
{
    unit_bench b;
    tests::temp_folder current;
    const working_folder here{current.path("")};
    b.write_image({1, 2, 3}, "ruvompu1.bin");
    EXPECT_EQ(read_module_image(b.session, 2), (bytes{1, 2, 3}));
    std::filesystem::create_directory(current.path("lib1"));
    current.write("lib1/ruvompu1.bin", "own");
    EXPECT_EQ(read_module_image(b.session, 2), (bytes{'o', 'w', 'n'}));
    EXPECT_EQ(read_module_image(b.session, 3), bytes{}) << "in neither";
    EXPECT_EQ(read_module_image(b.session, 22), bytes{});
}

TEST(xcinit_LM, sends_the_image_in_blocks_and_connects_the_module)
{
    unit_bench b;
    load(b);
    lines expected{"usbcomwrite 16: 0A 10 80 03 00 00 00 00 02 00 00 00 00 00 00 00",
                   "delayms 50",
                   "usbbulkwrite 24576: crc 585E6C5E",
                   "delayms 50",
                   "usbcomwrite 16: 0A 10 80 03 AA 00 00 00 02 00 00 00 00 00 00 00",
                   "delayms 50",
                   "usbcomwrite 16: 5C 00 00 60 00 00 00 00 02 00 00 00 00 00 00 00",
                   "replycheck 5",
                   "replywait 22 91 5",
                   "usbcomwrite 16: 0A 10 80 03 00 00 00 00 02 00 00 00 00 00 00 00",
                   "delayms 50",
                   "usbbulkwrite 100: crc AA316B09",
                   "delayms 50",
                   "usbcomwrite 16: 0A 10 80 03 AA 00 00 00 02 00 00 00 00 00 00 00",
                   "delayms 50",
                   "usbcomwrite 16: 5C 00 00 00 64 00 00 00 02 00 00 00 00 00 00 00",
                   "replycheck 5",
                   "replywait 22 92 5"};
    expected.insert(expected.end(), connecting.begin(), connecting.end());
    EXPECT_EQ(b.transcript, expected);
    EXPECT_EQ(b.slot(2).image.size(), 24676u);
    EXPECT_EQ(b.session.blocks.prgresult(0), 0);
}

TEST(xcinit_LM, sends_an_empty_last_block_after_an_image_of_whole_blocks)
{
    unit_bench b;
    const bytes image = tests::random_bytes(2 * 24576);
    b.write_image(image);
    load(b);
    EXPECT_EQ(b.slot(2).block_bytes, (std::vector<std::int32_t>{24576, 24576, 0}));
    EXPECT_EQ(b.slot(2).image, image);
    EXPECT_EQ(b.count("usbbulkwrite 0:"), 1);
    EXPECT_EQ(b.session.blocks.prgresult(0), 0);
}

TEST(xcinit_LM, says_that_an_image_is_missing_and_connects_the_module_without_a_load)
{
    unit_bench b;
    std::filesystem::remove_all(b.host_folder.path("lib1"));
    load(b);
    lines expected{"box Warning!  | >> Read fig file err!!  "};
    expected.insert(expected.end(), connecting.begin(), connecting.end());
    EXPECT_EQ(b.transcript, expected);
    EXPECT_EQ(b.session.blocks.prgresult(0), 4);
    EXPECT_EQ(b.shell.whole_boxes().at(0).picture, forms::icon::warning);
    b.write_image({});
    load(b);
    EXPECT_EQ(b.transcript, expected) << "an empty file is no image either";
}

TEST(xcinit_LM, takes_no_image_with_more_blocks_than_a_byte_can_number)
{
    unit_bench b;
    b.write_image(bytes(165 * 24576));
    load(b);
    EXPECT_EQ(b.transcript.at(0), "box Warning!  | >> Read fig file err!!  ");
    EXPECT_EQ(b.count("usbcomwrite"), 0);
    EXPECT_EQ(b.session.blocks.prgresult(0), 4);
    b.write_image(bytes(165 * 24576 - 1));
    load(b);
    EXPECT_EQ(b.session.blocks.prgresult(0), 0);
    EXPECT_EQ(b.count("replywait 22 255 5"), 1);
}

TEST(xcinit_LM, sends_the_whole_image_again_while_the_fpga_does_not_start)
{
    for (const int failures : {1, 2, 3}) {
        unit_bench b;
        b.slot(2).starts_fpga_after = failures;
        load(b);
        EXPECT_EQ(b.slot(2).images, failures + 1);
        EXPECT_TRUE(ends_with(b.transcript, connecting));
        EXPECT_EQ(b.session.blocks.prgresult(0), 0);
    }
}

TEST(xcinit_LM, gives_up_after_four_passes)
{
    unit_bench b;
    b.slot(2).starts_fpga_after = -1;
    load(b);
    EXPECT_EQ(b.slot(2).images, 4);
    EXPECT_TRUE(ends_with(b.transcript, giving_up));
    EXPECT_EQ(b.session.blocks.prgresult(0), 4);
    EXPECT_EQ(b.shell.whole_boxes().at(0).picture, forms::icon::warning);
}

TEST(xcinit_LM, takes_no_start_of_an_earlier_load_for_that_of_this_one)
{
    unit_bench b;
    load(b);
    b.slot(2).starts_fpga_after = -1;
    load(b);
    EXPECT_EQ(b.slot(2).images, 5);
    EXPECT_EQ(b.session.blocks.prgresult(0), 4);
}

TEST(xcinit_LM, gives_up_at_once_at_a_load_step_without_an_answer_or_with_another_one)
{
    for (const int answered : {0, 1}) {
        unit_bench b;
        b.modules.loads_until_lost = answered;
        load(b);
        EXPECT_EQ(b.count("replywait"), answered + 1);
        EXPECT_TRUE(ends_with(b.transcript, giving_up));
        EXPECT_EQ(b.session.blocks.prgresult(0), 4);
    }
    unit_bench b;
    b.modules.load_answer = 171;
    load(b);
    EXPECT_EQ(b.count("replywait"), 1);
    EXPECT_TRUE(ends_with(b.transcript, giving_up));
}

TEST(xcinit_LM, gives_up_at_whichever_frame_or_block_is_refused)
{
    for (int taken = 0; taken < 8; ++taken) {
        unit_bench b;
        b.modules.writes_until_refused = taken;
        load(b);
        EXPECT_EQ(b.count("usb"), taken + 1) << "none after the refused one";
        EXPECT_TRUE(ends_with(b.transcript, giving_up)) << taken;
        EXPECT_EQ(b.session.blocks.prgresult(0), 4);
    }
}

TEST(xcinit_LM, puts_index_and_mode_into_the_frame_after_the_load_step_and_takes_mode_3_as_0)
{
    unit_bench b;
    b.write_image({1}, "ruvoepm4.bin");
    EXPECT_EQ(load(b, 5, 2), 2);
    EXPECT_EQ(b.session.blocks.ubuf1(2), 5);
    EXPECT_EQ(b.session.blocks.ubuf1(3), 2);
    EXPECT_EQ(load(b, 5, 3), 0);
    EXPECT_EQ(b.session.blocks.ubuf1(3), 0);
}

}  // namespace
}  // namespace tamrix
