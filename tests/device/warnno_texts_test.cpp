// What the notes of a device say.
#include "notes_fixture.h"

namespace tamrix::tests {
namespace {

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
    ASSERT_EQ(shell.whole_boxes().size(), 1u);
    const forms::message_box& box = shell.whole_boxes().front();
    EXPECT_EQ(box.text, reviewed("note_01"));
    EXPECT_EQ(box.title, "Note!");
    EXPECT_EQ(box.picture, forms::icon::information);
    EXPECT_EQ(box.buttons, forms::buttons_of_box::ok);
    EXPECT_EQ(status_text(), "");
}

TEST_F(device_notes, have_their_rows_and_columns_beside_the_text)
{
    call(22);
    const std::vector<forms::box_row> rows{{{}, {{"Device", 17}, {"Buffer", 9}}},
                                           {{"Program Memory:"}, {{"000H---900FH"}, {"000H---900FH", 4}}},
                                           {{"Config. Word:", 7}, {{}, {"9010H---9420H", 25}}}};
    ASSERT_EQ(shell.whole_boxes().size(), 1u);
    EXPECT_EQ(shell.whole_boxes().front().table.rows, rows);
    EXPECT_FALSE(shell.whole_boxes().front().table.letters);
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
