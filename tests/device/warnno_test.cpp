// The notes of a device: which one is shown, the line on the supply, what changes.
#include "device/warnno.h"

#include "plugin/catalogue.h"
#include "support/plug_in_fixture.h"

#include <gtest/gtest.h>

#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace tamrix::tests {
namespace {

const std::string power_line = ">>Note! Need AC adaptor!\n";
const std::string first_words = "                 Device         Buffer\r\r";

class device_notes : public testing::Test, public plug_in_fixture {
protected:
    device_notes()
    {
        auto& blocks = session.blocks;
        blocks.modeltype(0) = 40;
        blocks.tlength(0) = 0x9010;
        blocks.pagelength(0) = 0x10;
        blocks.bvcch(0) = 0x40;
        blocks.bvcc(0) = 500;
        blocks.woption(0) = 1;
        blocks.woption(1) = 4;
        blocks.woption(3) = 0;
    }
    /// All four conditions of the power test.
    void need_power()
    {
        session.ok = bool16_true;
        session.blocks.wfig(1) = 17;
        session.blocks.usbable(0) = bool16_true;
    }
    /// Calls the method as a host does; yields the number that it left.
    int call(int number, bool16 extpower0 = bool16_false)
    {
        auto no = static_cast<std::uint8_t>(number);
        EXPECT_TRUE(methods.warn(no, extpower0).ok());
        return no;
    }
    std::size_t boxes() const { return shell.whole_boxes().size(); }
    /// The text of the box that a call shows.
    std::string text_of(int number)
    {
        const std::size_t before = boxes();
        call(number);
        EXPECT_EQ(boxes(), before + 1) << "note " << number;
        return boxes() > before ? shell.whole_boxes().back().text : "";
    }
    std::string title_of(int number)
    {
        call(number);
        return shell.whole_boxes().empty() ? "" : shell.whole_boxes().back().title;
    }
};

/// A reviewed text; its line ends stand for the carriage returns of the note.
std::string reviewed(const std::string& name)
{
    std::ifstream file{TAMRIX_NOTES "/" + name + ".txt"};
    EXPECT_TRUE(file.is_open()) << name;
    std::string text{std::istreambuf_iterator<char>{file}, {}};
    for (char& letter : text) letter = letter == '\n' ? '\r' : letter;
    return text;
}

std::string name_of(int number) { return std::string{number < 10 ? "note_0" : "note_"} + std::to_string(number); }

bool has_box(int number) { return number >= 1 && number <= 25 && number != 19 && number != 20; }

TEST_F(device_notes, show_the_reviewed_text_of_each_number)
{
    for (int number = 1; number <= 25; ++number) {
        if (!has_box(number)) continue;
        session.blocks.woption(3) = number == 2 ? 4 : 0;
        EXPECT_EQ(text_of(number), reviewed(name_of(number))) << "note " << number;
    }
}

TEST_F(device_notes, show_the_figures_of_a_device_that_is_too_short_as_they_are)
{
    auto& blocks = session.blocks;
    blocks.tlength(0) = 3;
    blocks.pagelength(0) = 0;
    blocks.bvcch(0) = -2;
    blocks.woption(0) = 0;
    blocks.woption(1) = 7;
    for (int number = 1; number <= 25; ++number) {
        if (!has_box(number)) continue;
        EXPECT_EQ(text_of(number), reviewed(name_of(number) + "_of_a_short_device")) << "note " << number;
    }
}

TEST_F(device_notes, show_their_text_in_a_box_with_the_information_picture_and_ok)
{
    call(1);
    EXPECT_EQ(shell.whole_boxes(), (std::vector<forms::message_box>{{.text = reviewed("note_01"),
                                                                     .title = "Note!",
                                                                     .picture = forms::icon::information,
                                                                     .buttons = forms::buttons_of_box::ok,
                                                                     .lines = forms::lines_of_box::cells}}));
    EXPECT_EQ(status_text(), "");
}

TEST_F(device_notes, with_other_numbers_show_nothing)
{
    for (int number = 0; number <= 255; ++number) {
        if (has_box(number & 0x7F)) continue;
        EXPECT_EQ(call(number), number & 0x7F);
        EXPECT_EQ(boxes(), 0u) << "note " << number;
    }
    EXPECT_EQ(status_text(), "");
}

TEST_F(device_notes, of_number_4_follow_an_option_of_the_device)
{
    EXPECT_EQ(text_of(4), reviewed("note_04"));
    session.blocks.woption(3) = 4;
    EXPECT_EQ(text_of(4), reviewed("note_04_with_options"));
    EXPECT_EQ(text_of(4), text_of(2));
}

TEST_F(device_notes, of_number_1_do_not_follow_that_option)
{
    session.blocks.woption(3) = 4;
    EXPECT_EQ(text_of(1), reviewed("note_01"));
}

TEST_F(device_notes, of_numbers_18_and_25_have_their_auxiliary_length_by_an_option)
{
    session.blocks.tlength(0) = 0x10000;
    struct {
        std::uint8_t option;
        const char *auxiliary, *in_18, *in_25;
    } const lines[] = {{0, "0000H---7FFFH", "10000H---1FFFFH", "8000H---FFFFH"},
                       {1, "0000H---7FH", "1FF00H---1FFFFH", "FF80H---FFFFH"},
                       {2, "0000H---3FH", "1FF80H---1FFFFH", "FFC0H---FFFFH"},
                       {3, "0000H---FFH", "1FE00H---1FFFFH", "FF00H---FFFFH"},
                       {4, "0000H---7FFH", "1F000H---1FFFFH", "F800H---FFFFH"},
                       {5, "0000H---1FFH", "1FC00H---1FFFFH", "FE00H---FFFFH"},
                       {6, "0000H---7FFFH", "10000H---1FFFFH", "8000H---FFFFH"},
                       {7, "0000H---FFFFFFFFH", "20000H---1FFFFH", "10000H---FFFFH"},
                       {255, "0000H---FFFFFFFFH", "20000H---1FFFFH", "10000H---FFFFH"}};
    for (const auto& line : lines) {
        session.blocks.woption(1) = line.option;
        for (const int number : {18, 25}) {
            const std::string text = text_of(number);
            const auto device = text.find("Auxiliary Program Memory:" + std::string{line.auxiliary} + " ");
            EXPECT_NE(device, std::string::npos) << text;
            EXPECT_TRUE(text.ends_with(std::string{" "} + (number == 18 ? line.in_18 : line.in_25) + "\r\r")) << text;
        }
    }
}

TEST_F(device_notes, of_the_longest_device_do_not_overflow)
{
    session.blocks.tlength(0) = 0x7FFFFFFF;
    EXPECT_NE(text_of(1).find("000H---7FFFFFEEH    000H---FFFFFFDDH"), std::string::npos);
    session.blocks.tlength(0) = -0x7FFFFFFF - 1;
    EXPECT_NE(text_of(8).find("000H---7FFFFFEFH    000H---FFFFFFDFH"), std::string::npos);
}

TEST_F(device_notes, clear_bit_7_of_the_number_in_the_hosts_variable)
{
    EXPECT_EQ(call(0), 0);
    EXPECT_EQ(call(26), 26);
    EXPECT_EQ(call(127), 127);
    EXPECT_EQ(call(128), 0);
    EXPECT_EQ(call(129), 1);
    EXPECT_EQ(call(255), 127);
}

TEST_F(device_notes, with_bit_7_add_the_power_line_on_four_models_alone)
{
    for (std::int16_t model = 0; model <= 60; ++model) {
        session.blocks.modeltype(0) = model;
        const bool told = model == 23 || model == 24 || model == 28 || model == 29;
        for (const int number : {129, 128, 255}) {
            session.blocks.MainRtstr(0) = "";
            call(number);
            EXPECT_EQ(status_text(), told ? power_line : "") << "model " << model << " number " << number;
        }
    }
    session.blocks.modeltype(0) = 23;
    session.blocks.MainRtstr(0) = "";
    call(1);
    EXPECT_EQ(status_text(), "") << "without bit 7";
}

TEST_F(device_notes, of_number_129_show_note_1_with_the_power_line_on_model_23_and_without_it_on_25)
{
    session.blocks.modeltype(0) = 23;
    EXPECT_EQ(text_of(129), reviewed("note_01"));
    EXPECT_EQ(status_text(), power_line);
    EXPECT_EQ(shell.whole_boxes().back().title, "Note!") << "this line does not become the title";
    session.blocks.modeltype(0) = 25;
    session.blocks.MainRtstr(0) = "";
    EXPECT_EQ(text_of(129), reviewed("note_01"));
    EXPECT_EQ(status_text(), "");
}

TEST_F(device_notes, append_the_power_line_to_the_log_of_the_host)
{
    session.blocks.modeltype(0) = 23;
    session.blocks.MainRtstr(0) = "before\n";
    call(128);
    EXPECT_EQ(status_text(), "before\n" + power_line);
}

TEST_F(device_notes, with_the_external_supply_add_no_power_line_by_any_path)
{
    need_power();
    for (const std::int16_t model : {23, 24, 28, 29, 40}) {
        session.blocks.modeltype(0) = model;
        for (int number = 0; number <= 255; ++number) call(number, bool16_true);
    }
    EXPECT_EQ(status_text(), "");
    for (const forms::message_box& box : shell.whole_boxes()) EXPECT_EQ(box.title, "Note!");
}

TEST_F(device_notes, 19_20_and_21_add_the_power_line_where_all_four_conditions_hold)
{
    for (const int number : {19, 20, 21}) {
        need_power();
        call(number);
        EXPECT_EQ(status_text(), power_line) << number;
        session.blocks.MainRtstr(0) = "";

        call(number, bool16_true);
        session.ok = bool16_false;
        call(number);
        need_power();
        session.blocks.wfig(1) = 16;
        call(number);
        need_power();
        session.blocks.usbable(0) = bool16_false;
        call(number);
        session.blocks.usbable(0) = 1;  // not the pattern of a boolean
        call(number);
        EXPECT_EQ(status_text(), "") << number;
    }
}

TEST_F(device_notes, other_than_these_three_add_no_power_line)
{
    need_power();
    for (int number = 0; number < 128; ++number) {
        if (number < 19 || number > 21) call(number);
    }
    EXPECT_EQ(status_text(), "");
}

TEST_F(device_notes, 19_and_20_show_no_box)
{
    need_power();
    call(19);
    call(20);
    EXPECT_EQ(boxes(), 0u);
}

TEST_F(device_notes, 21_has_the_power_line_as_its_title_once_it_added_one)
{
    EXPECT_EQ(title_of(21), "Note!");
    need_power();
    EXPECT_EQ(title_of(21), power_line);
    EXPECT_EQ(status_text(), power_line);
    EXPECT_EQ(shell.whole_boxes().back().text, reviewed("note_21"));
    EXPECT_EQ(title_of(1), "Note!") << "the next note has its own title again";
}

TEST_F(device_notes, 149_can_add_the_power_line_twice)
{
    need_power();
    session.blocks.modeltype(0) = 28;
    EXPECT_EQ(title_of(149), power_line);
    EXPECT_EQ(status_text(), power_line + power_line);
}

TEST_F(device_notes, 20_lowers_a_vcc_of_390_to_360_whatever_the_power_test_says)
{
    session.blocks.wfig(1) = 17;
    session.blocks.bvcc(0) = 390;
    call(20);
    EXPECT_EQ(session.blocks.bvcc(0), 360);
    EXPECT_EQ(status_text(), "");
    session.blocks.bvcc(0) = 390;
    call(20, bool16_true);
    EXPECT_EQ(session.blocks.bvcc(0), 360);
    need_power();
    session.blocks.bvcc(0) = 390;
    call(20);
    EXPECT_EQ(session.blocks.bvcc(0), 360);
    EXPECT_EQ(status_text(), power_line);
}

TEST_F(device_notes, 20_leaves_every_other_vcc_and_generation_alone)
{
    session.blocks.wfig(1) = 17;
    for (const std::int16_t vcc : {389, 391, 360, 0, 500}) {
        session.blocks.bvcc(0) = vcc;
        call(20);
        EXPECT_EQ(session.blocks.bvcc(0), vcc);
    }
    session.blocks.wfig(1) = 16;
    session.blocks.bvcc(0) = 390;
    call(20);
    EXPECT_EQ(session.blocks.bvcc(0), 390);
    session.blocks.wfig(1) = 17;
    for (int number = 0; number <= 26; ++number) {
        if (number == 20) continue;
        call(number);
        EXPECT_EQ(session.blocks.bvcc(0), 390) << "note " << number;
    }
}

TEST_F(device_notes, have_the_same_figures_in_every_language)
{
    const std::string english = text_of(1);
    const std::string figures = english.substr(english.find("000H"), 24);
    int languages = 0;
    for (std::int32_t offset = 0; offset < 36000; offset += 3000) {
        if (!has_language(offset)) continue;
        ++languages;
        session.blocks.Language(0) = offset;
        for (int number = 1; number <= 25; ++number) {
            if (!has_box(number)) continue;
            const std::string text = text_of(number);
            EXPECT_NE(text.find(LoadResString(offset + 1281) + "\r\r"), std::string::npos) << text;
            EXPECT_TRUE(text.ends_with("H\r\r")) << text;
        }
        EXPECT_NE(text_of(1).find(LoadResString(offset + 1282) + figures), std::string::npos) << text_of(1);
        EXPECT_EQ(title_of(1), LoadResString(offset + 1095));
    }
    EXPECT_GE(languages, 2);
}

TEST_F(device_notes, are_offered) { EXPECT_TRUE(methods.offers("warn")); }

TEST_F(device_notes, of_a_language_without_texts_are_a_failed_call)
{
    session.blocks.Language(0) = 36000;
    std::uint8_t no = 1;
    bool16 extpower0 = bool16_false;
    EXPECT_EQ(methods.warn(no, extpower0).error, "no text with number 37282");
    EXPECT_EQ(boxes(), 0u);
}

}  // namespace
}  // namespace tamrix::tests
