// The dialog of the logic IC test with the face that changes the library.
#include "ttl/dialogs/ttladd.h"
#include "ttl/dialogs/ttledit.h"
#include "ttl/dialogs/ttltest_fixture.h"

namespace tamrix::tests {
namespace {

const message_box add_question{"Add A New Device?", "Edit Pattern", icon::question, buttons_of_box::yes_no};

TEST_F(ttltest_dialog, has_its_captions_in_library_mode)
{
    in_library([](ttltest& d) {
        EXPECT_EQ(d.caption(), "Edit Pattern");
        EXPECT_EQ(d.Label3.caption(), "Total:3");
        EXPECT_EQ(d.OKButton.caption(), "Edit");
        EXPECT_EQ(d.CancelButton.caption(), "Cancel");
        EXPECT_EQ(d.add.caption(), "Add");
        EXPECT_EQ(d.del.caption(), "Del");
        EXPECT_TRUE(d.add.usable());
        EXPECT_TRUE(d.del.usable());
    });
}

TEST_F(ttltest_dialog, adds_a_typed_name_on_enter_in_library_mode)
{
    shell.answer_next_box(answer::yes);
    variables.ttl.wnote = 1;  // what was left there counts
    in_library([&](ttltest& d) {
        std::string asked_name, editor_title;
        shell.on_next_dialog([&](forms::form& shown) {
            auto& asked = dynamic_cast<ttladd&>(shown);
            asked_name = asked.Text1.text();
            asked.Text2.type("4");
            asked.accept();
        });
        shell.on_next_dialog([&](forms::form& shown) { editor_title = shown.caption(); });
        d.Text1.enter("7400");
        d.Text1.press_enter();
        EXPECT_EQ(asked_name, "7400");
        EXPECT_EQ(editor_title, "PLD Test Vector Edit");
        EXPECT_EQ(variables.ttl.wnote, 1);
    });
    EXPECT_EQ(boxes(), std::vector{add_question});
    EXPECT_EQ(variables.ttl.ttlname, "7400");
}

TEST_F(ttltest_dialog, adds_nothing_when_the_question_is_refused)
{
    variables.ttl.ttlname = "before";
    variables.ttl.wnote = 1;
    in_library([&](ttltest& d) {
        shell.answer_next_box(answer::no);
        d.Text1.enter("7400");
        d.Text1.press_enter();
        shell.answer_next_box(answer::no);
        d.add.click();
    });
    EXPECT_EQ(boxes(), (std::vector{add_question, add_question}));
    EXPECT_EQ(variables.ttl.ttlname, "before");
    EXPECT_EQ(variables.ttl.wnote, 1);
    EXPECT_EQ(shell.dialogs_shown(), 1);
}

TEST_F(ttltest_dialog, adds_a_device_by_the_add_button)
{
    variables.ttl.wnote = 1;
    variables.ttl.ttlname = "before";
    in_library([&](ttltest& d) {
        shell.on_next_dialog([&](forms::form& shown) {
            auto& asked = dynamic_cast<ttladd&>(shown);
            EXPECT_EQ(asked.Text1.text(), "") << "Add forgets the name in work";
            asked.Text1.type("7499");
            asked.Text2.type("4");
            asked.OKButton.click();
        });
        shell.on_next_dialog([&](forms::form& shown) {
            auto& editor = dynamic_cast<ttledit&>(shown);
            EXPECT_EQ(editor.caption(), "7499 Test Vector Edit");
            EXPECT_EQ(editor.Text1.text(), "V0001 ....\n");
            for (const char32_t letter : U"GHLV") {
                if (letter != 0) editor.Text1.type(letter);
            }
            editor.OKButton.click();
            EXPECT_FALSE(editor.is_open());
        });
        d.add.click();
        EXPECT_EQ(variables.ttl.wnote, 0);
        EXPECT_EQ(d.List1.items(), (lines{"74PASS", "74FAIL", "4011", "7499"})) << "at the end";
        EXPECT_EQ(d.Label3.caption(), "Total:3") << "Add leaves the total";
    });
    EXPECT_EQ(boxes(), std::vector{add_question});
    EXPECT_NE(library().find(std::string{"$7499        02\x02"} + "04\x04GHLV*"), std::string::npos);
}

TEST_F(ttltest_dialog, shows_no_editor_and_changes_nothing_when_name_and_pins_are_left_without_an_entry)
{
    const std::string before = library();
    variables.ttl.wnote = 1;
    variables.ttl.ttlname = "before";
    variables.ttl.ttlpin = 20;
    variables.ttl.ttlcnt = 7;
    in_library([&](ttltest& d) {
        const auto leave = [](forms::form& shown) {
            dynamic_cast<ttladd&>(shown).Text2.type("4");
            shown.ask_to_leave();
        };
        shell.on_next_dialog(leave);
        d.add.click();
        shell.on_next_dialog(leave);
        d.Text1.enter("7400");
        d.Text1.press_enter();
        EXPECT_TRUE(d.is_open());
        EXPECT_EQ(d.Text1.text(), "7400");
        EXPECT_EQ(d.List1.items().size(), 3u);
    });
    EXPECT_EQ(shell.dialogs_shown(), 3) << "this one, and twice the one that asks";
    EXPECT_EQ(variables.ttl.ttlname, "before");
    EXPECT_EQ(variables.ttl.ttlpin, 20);
    EXPECT_EQ(variables.ttl.ttlcnt, 7);
    EXPECT_EQ(variables.ttl.wnote, 1);
    EXPECT_EQ(library(), before);
}

TEST_F(ttltest_dialog, refuses_to_edit_a_listed_name_that_no_record_has_room_for)
{
    write_library({passing, {"FOURTEEN-CHARS", 4, {"GHLV"}}});
    variables.ttl.wnote = 1;
    variables.ttl.ttlname = "before";
    in_library([](ttltest& d) {
        d.List1.pick(1);
        d.OKButton.click();
        EXPECT_TRUE(d.is_open());
        EXPECT_EQ(d.focused(), &d.List1);
    });
    EXPECT_EQ(boxes(), (std::vector{message_box{"Invalid Input!", "Edit Pattern", icon::warning, buttons_of_box::ok}}));
    EXPECT_EQ(shell.dialogs_shown(), 1);
    EXPECT_EQ(variables.ttl.ttlname, "before");
    EXPECT_EQ(variables.ttl.wnote, 1);
}

TEST_F(ttltest_dialog, edits_the_selected_device)
{
    variables.ttl.wnote = 1;
    in_library([&](ttltest& d) {
        shell.on_next_dialog([&](forms::form& shown) {
            EXPECT_EQ(shown.caption(), "4011 Test Vector Edit");
            EXPECT_EQ(dynamic_cast<ttledit&>(shown).Text1.text(), "V0001 HHHHHHXHHHHHHV\n");
            EXPECT_EQ(calls(), lines{"boardsel2 3 45"});
        });
        d.List1.pick(2);
        d.OKButton.click();
        EXPECT_EQ(shell.dialogs_shown(), 2);
        EXPECT_TRUE(d.is_open());
    });
    EXPECT_EQ(variables.ttl.ttlname, "4011");
    EXPECT_EQ(variables.ttl.ttlpin, 14);
    EXPECT_EQ(variables.ttl.ttlcnt, 2);
    EXPECT_EQ(variables.ttl.wnote, 0);
    EXPECT_TRUE(boxes().empty());
}

TEST_F(ttltest_dialog, selects_no_board_for_editing_without_hardware_or_below_model_40)
{
    variables.ttl.ok = bool16_false;
    in_library([&](ttltest& d) {
        d.List1.pick(2);
        d.OKButton.click();
        EXPECT_EQ(calls(), lines{});
    });
    variables.ttl.ok = bool16_true;
    session.blocks.modeltype(0) = 39;
    in_library([&](ttltest& d) {
        d.List1.pick(2);
        d.OKButton.click();
        EXPECT_EQ(calls(), lines{});
    });
}

TEST_F(ttltest_dialog, edits_nothing_without_a_selection)
{
    variables.ttl.ttlname = "before";
    in_library([](ttltest& d) { d.OKButton.click(); });
    EXPECT_EQ(shell.dialogs_shown(), 1);
    EXPECT_EQ(variables.ttl.ttlname, "before");
}

TEST_F(ttltest_dialog, shows_the_vectors_in_work_for_a_name_without_a_record)
{
    in_library([&](ttltest& d) {
        write_library({failing, cmos});
        variables.ttl.ttlpin = 2;
        variables.ttl.ttlcnt = 2;
        variables.ttl.ttlvect.store(0, "GV");
        shell.on_next_dialog(
            [](forms::form& shown) { EXPECT_EQ(dynamic_cast<ttledit&>(shown).Text1.text(), "V0001 GV\n"); });
        d.List1.pick(0);
        d.OKButton.click();
    });
    EXPECT_EQ(shell.dialogs_shown(), 2);
}

TEST_F(ttltest_dialog, deletes_the_selected_device_after_asking)
{
    in_library([](ttltest& d) {
        d.List1.pick(1);
        d.del.click();
        EXPECT_EQ(d.List1.items(), (lines{"74PASS", "4011"}));
        EXPECT_EQ(d.List1.index(), -1);
        EXPECT_EQ(d.Label3.caption(), "Total:3") << "the total stays as it was";
    });
    ASSERT_EQ(boxes().size(), 1U);
    EXPECT_EQ(boxes()[0],
              (message_box{"Delete Pattern?", "Edit Pattern", icon::question, buttons_of_box::yes_no, true}));
    EXPECT_EQ(library().find("74FAIL"), std::string::npos);
}

TEST_F(ttltest_dialog, keeps_the_device_when_deleting_is_refused)
{
    shell.answer_next_box(answer::no);
    in_library([](ttltest& d) {
        d.List1.pick(1);
        d.del.click();
        EXPECT_EQ(d.List1.items().size(), 3U);
    });
    EXPECT_NE(library().find("74FAIL"), std::string::npos);
}

TEST_F(ttltest_dialog, takes_the_last_device_out_of_the_list_though_the_library_keeps_it)
{
    write_library({passing});
    const std::string before = library();
    in_library([](ttltest& d) {
        d.List1.pick(0);
        d.del.click();
        EXPECT_EQ(d.List1.items(), lines{});
    });
    EXPECT_EQ(library(), before);
    in_library([](ttltest& d) { EXPECT_EQ(d.List1.items(), lines{"74PASS"}); });
}

TEST_F(ttltest_dialog, deletes_nothing_with_an_empty_search_field_or_without_a_selection)
{
    const std::string before = library();
    in_library([](ttltest& d) {
        d.del.click();
        d.Text1.enter("unknown");
        d.del.click();
        EXPECT_EQ(d.List1.items().size(), 3U);
    });
    EXPECT_TRUE(boxes().empty());
    EXPECT_EQ(library(), before);
}

}  // namespace
}  // namespace tamrix::tests
