#include "forms/controls.h"

#include "forms/form.h"
#include "support/scripted_shell.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tamrix::forms {
namespace {

struct text_form final : form {
    text_box Text1{*this};
    layout arrangement() override { return Text1; }
};

struct text_boxes : testing::Test {
    tests::scripted_shell shell;
    text_form dialog;

    text_boxes()
    {
        dialog.Text1.accepts = [](char32_t key) { return key >= U'0' && key <= U'9'; };
    }
};

TEST_F(text_boxes, without_a_filter_take_every_character)
{
    dialog.Text1.accepts = nullptr;
    shell.during(dialog, [&] {
        dialog.Text1.type("Größe ");
        dialog.Text1.type("电\xFF");
        EXPECT_EQ(dialog.Text1.text(), "Größe 电\xFF");
        EXPECT_EQ(shell.beeps(), 0);
    });
}

TEST_F(text_boxes, drop_a_key_that_the_filter_refuses_with_a_beep)
{
    shell.during(dialog, [&] {
        dialog.Text1.type("1");
        EXPECT_EQ(shell.beeps(), 0);
        dialog.Text1.type("x");
        EXPECT_EQ(shell.beeps(), 1);
        dialog.Text1.type("2");
        EXPECT_EQ(dialog.Text1.text(), "12");
        EXPECT_EQ(shell.beeps(), 1);
    });
}

TEST_F(text_boxes, keep_what_passes_of_a_pasted_text_and_beep_once)
{
    shell.during(dialog, [&] {
        dialog.Text1.type("7");
        dialog.Text1.type(" 12-34 ");
        EXPECT_EQ(dialog.Text1.text(), "71234");
        EXPECT_EQ(shell.beeps(), 1);
        dialog.Text1.enter("5 6");
        EXPECT_EQ(dialog.Text1.text(), "56");
        EXPECT_EQ(shell.beeps(), 2);
    });
}

TEST_F(text_boxes, ask_the_filter_once_a_character_not_once_a_byte)
{
    std::u32string asked;
    dialog.Text1.accepts = [&](char32_t key) {
        asked += key;
        return key != U'é';
    };
    shell.during(dialog, [&] {
        dialog.Text1.type("aé电🔌\xFF");
        EXPECT_EQ(asked, U"aé电🔌\xFFFD");
        EXPECT_EQ(dialog.Text1.text(), "a电🔌\xFF");
        EXPECT_EQ(shell.beeps(), 1);
    });
}

TEST_F(text_boxes, raise_a_change_only_where_the_text_differs)
{
    int changes = 0;
    dialog.Text1.on_change = [&] { ++changes; };
    dialog.Text1.text("10");
    dialog.Text1.text("10");
    dialog.Text1.enter("10");
    dialog.Text1.type("");
    dialog.Text1.type("x");
    EXPECT_EQ(changes, 1);
    dialog.Text1.type("0");
    dialog.Text1.enter("");
    EXPECT_EQ(changes, 3);
}

TEST_F(text_boxes, keep_what_stood_there_while_a_person_edits_around_it)
{
    shell.during(dialog, [&] {
        dialog.Text1.text("1.5");  // a point that nobody could type
        dialog.Text1.enter("1.52");
        EXPECT_EQ(dialog.Text1.text(), "1.52");
        dialog.Text1.enter("71.52");
        dialog.Text1.enter("71.2");
        EXPECT_EQ(dialog.Text1.text(), "71.2");
        EXPECT_EQ(shell.beeps(), 0);
        dialog.Text1.enter("71.x2");
        dialog.Text1.enter("7.1.2");
        EXPECT_EQ(dialog.Text1.text(), "71.2");
        EXPECT_EQ(shell.beeps(), 2);
        dialog.Text1.text("\xC3\xA9");
        dialog.Text1.enter("\xC3\xA8");  // shares its first byte with the letter before
        EXPECT_EQ(dialog.Text1.text(), "");
        dialog.Text1.text("\xE7\x94\xA9");
        dialog.Text1.enter("1\xC3\xA9");  // shares its last byte
        EXPECT_EQ(dialog.Text1.text(), "1");
    });
}

TEST_F(text_boxes, take_from_the_program_what_a_person_could_not_type)
{
    shell.during(dialog, [&] {
        dialog.Text1.text("FFFF");
        EXPECT_EQ(dialog.Text1.text(), "FFFF");
        EXPECT_EQ(shell.beeps(), 0);
    });
}

TEST_F(text_boxes, do_not_beep_while_they_are_disabled)
{
    shell.during(dialog, [&] {
        dialog.Text1.enabled = false;
        dialog.Text1.type("x");
        dialog.Text1.enter("x");
        EXPECT_EQ(shell.beeps(), 0);
    });
}

TEST_F(text_boxes, have_their_new_text_already_when_the_change_is_raised)
{
    std::vector<std::string> seen;
    dialog.Text1.on_change = [&] { seen.push_back(dialog.Text1.text()); };
    dialog.Text1.type("1");
    dialog.Text1.type("2");
    EXPECT_EQ(seen, (std::vector<std::string>{"1", "12"}));
}

}  // namespace
}  // namespace tamrix::forms
