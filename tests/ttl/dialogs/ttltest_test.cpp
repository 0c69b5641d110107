#include "ttl/ttltest.h"

#include "ttl/dialogs/dialog_fixture.h"
#include "ttl/ttladd.h"
#include "ttl/ttledit.h"

#include <functional>

namespace tamrix {
namespace {

using forms::answer;
using forms::buttons_of_box;
using forms::icon;
using forms::message_box;
using tests::lines;

const message_box passed{"Vector Test OK!", "TTL & CMOS Test", icon::information, buttons_of_box::retry_cancel};
const message_box add_question{"Add A New Device?", "Edit Pattern", icon::question, buttons_of_box::yes_no};

class ttltest_dialog : public tests::logic_dialogs {
protected:
    ttltest_dialog() { write_library({passing, failing, cmos}); }

    /// Opens the dialog with its library face or without, and forgets what opening asked of the programmer.
    void open(std::uint8_t ttleditlib, const std::function<void(ttltest&)>& steps)
    {
        session.ttleditlib = ttleditlib;
        ttltest dialog{session};
        shell.during(dialog, [&] {
            opening = calls();
            steps(dialog);
        });
    }
    void in_test_mode(const std::function<void(ttltest&)>& steps) { open(0, steps); }
    void in_library(const std::function<void(ttltest&)>& steps) { open(1, steps); }

    lines opening;
};

TEST_F(ttltest_dialog, has_its_captions_in_test_mode_and_hides_what_changes_the_library)
{
    in_test_mode([](ttltest& d) {
        EXPECT_EQ(d.caption(), "TTL & CMOS Test");
        EXPECT_EQ(d.Label1.caption(), "Search:");
        EXPECT_EQ(d.Label2.caption(), "Type:");
        EXPECT_EQ(d.Label3.caption(), "Total:3");
        EXPECT_EQ(d.OKButton.caption(), "Test");
        EXPECT_EQ(d.CancelButton.caption(), "Cancel");
        EXPECT_FALSE(d.add.visible());
        EXPECT_FALSE(d.del.visible());
    });
}

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

TEST_F(ttltest_dialog, powers_up_when_it_opens)
{
    in_test_mode([](ttltest&) {});
    EXPECT_EQ(opening, (lines{"hwreset", "boardsel2 3 0", "setvcc 5000"}));
}

TEST_F(ttltest_dialog, selects_no_board_on_models_below_40)
{
    session.blocks.modeltype(0) = 39;
    in_test_mode([](ttltest&) {});
    EXPECT_EQ(opening, (lines{"hwreset", "setvcc 5000"}));
}

TEST_F(ttltest_dialog, goes_on_when_the_reset_at_opening_fails)
{
    programmer.resets = {1};
    in_test_mode([](ttltest& d) { EXPECT_TRUE(d.is_open()); });
    EXPECT_EQ(opening, (lines{"hwreset", "boardsel2 3 0", "setvcc 5000"}));
}

TEST_F(ttltest_dialog, touches_no_hardware_when_it_opens_without_one)
{
    session.ok = bool16_false;
    session.hardware.source = {};
    in_test_mode([](ttltest& d) { EXPECT_EQ(d.List1.items().size(), 3U); });
    EXPECT_EQ(opening, lines{});
}

TEST_F(ttltest_dialog, lists_the_names_in_the_order_of_the_directory)
{
    in_test_mode([](ttltest& d) {
        EXPECT_EQ(d.List1.items(), (lines{"74PASS", "74FAIL", "4011"}));
        EXPECT_EQ(d.List1.index(), -1);
    });
}

TEST_F(ttltest_dialog, shows_the_total_of_the_directory_even_where_the_list_is_shorter)
{
    write_library({passing, cmos}, 0x1234);
    in_test_mode([](ttltest& d) {
        EXPECT_EQ(d.Label3.caption(), "Total:4660");
        EXPECT_LT(d.List1.items().size(), 4660U);
    });
}

TEST_F(ttltest_dialog, is_empty_without_a_library)
{
    session.syspath = folder.path("nowhere/");
    in_test_mode([](ttltest& d) {
        EXPECT_EQ(d.Label3.caption(), "Total:0");
        EXPECT_EQ(d.List1.items(), lines{});
    });
}

TEST_F(ttltest_dialog, begins_in_the_search_field)
{
    in_test_mode([](ttltest& d) { EXPECT_EQ(d.focused(), &d.Text1); });
}

TEST_F(ttltest_dialog, selects_a_name_once_it_is_typed_whole)
{
    in_test_mode([](ttltest& d) {
        d.Text1.type("74PAS");
        EXPECT_EQ(d.List1.index(), -1) << "a part of a name";
        d.Text1.type("S");
        EXPECT_EQ(d.List1.index(), 0);
        d.Text1.type("X");
        EXPECT_EQ(d.List1.index(), -1);
        EXPECT_EQ(d.Text1.text(), "74PASSX");
    });
}

TEST_F(ttltest_dialog, selects_nothing_for_a_name_in_lower_case)
{
    in_test_mode([](ttltest& d) {
        d.Text1.enter("74pass");
        EXPECT_EQ(d.List1.index(), -1);
    });
}

TEST_F(ttltest_dialog, selects_the_first_of_two_equal_names)
{
    write_library({passing, cmos, cmos});
    in_test_mode([](ttltest& d) {
        d.Text1.enter("4011");
        EXPECT_EQ(d.List1.index(), 1);
        d.Text1.enter("");
        d.List1.pick(2);
        EXPECT_EQ(d.List1.index(), 1) << "the search field takes the name and finds the first one";
    });
}

TEST_F(ttltest_dialog, shows_a_clicked_name_in_the_search_field)
{
    in_test_mode([](ttltest& d) {
        d.List1.pick(2);
        EXPECT_EQ(d.Text1.text(), "4011");
        EXPECT_EQ(d.List1.index(), 2);
    });
}

TEST_F(ttltest_dialog, does_nothing_on_enter_at_a_known_name)
{
    for (const std::uint8_t mode : {0, 1}) {
        open(mode, [this](ttltest& d) {
            d.Text1.enter("74PASS");
            d.Text1.press_enter();
            EXPECT_EQ(d.List1.index(), 0);
            EXPECT_EQ(calls(), lines{});
        });
    }
    EXPECT_TRUE(boxes().empty());
    EXPECT_EQ(shell.dialogs_shown(), 2) << "the two of this test";
}

TEST_F(ttltest_dialog, tells_on_enter_in_test_mode_that_a_name_is_not_there)
{
    in_test_mode([](ttltest& d) {
        d.Text1.enter("7400");
        d.Text1.press_enter();
        EXPECT_EQ(d.List1.index(), -1);
    });
    ASSERT_EQ(boxes().size(), 1U);
    EXPECT_EQ(boxes()[0],
              (message_box{"Device Not Found!", "Warning! TTL & CMOS Test", icon::error, buttons_of_box::ok}));
}

TEST_F(ttltest_dialog, adds_a_typed_name_on_enter_in_library_mode)
{
    shell.answer_next_box(answer::yes);
    session.wnote = 1;  // what was left there counts
    in_library([&](ttltest& d) {
        std::string asked_name, editor_title;
        shell.on_next_dialog([&](forms::form& shown) { asked_name = dynamic_cast<ttladd&>(shown).Text1.text(); });
        shell.on_next_dialog([&](forms::form& shown) { editor_title = shown.caption(); });
        d.Text1.enter("7400");
        d.Text1.press_enter();
        EXPECT_EQ(asked_name, "7400");
        EXPECT_EQ(editor_title, "PLD Test Vector Edit");
        EXPECT_EQ(session.wnote, 1);
    });
    EXPECT_EQ(boxes(), std::vector{add_question});
    EXPECT_EQ(session.ttl.ttlname, "7400");
}

TEST_F(ttltest_dialog, adds_nothing_when_the_question_is_refused)
{
    session.ttl.ttlname = "before";
    session.wnote = 1;
    in_library([&](ttltest& d) {
        shell.answer_next_box(answer::no);
        d.Text1.enter("7400");
        d.Text1.press_enter();
        shell.answer_next_box(answer::no);
        d.add.click();
    });
    EXPECT_EQ(boxes(), (std::vector{add_question, add_question}));
    EXPECT_EQ(session.ttl.ttlname, "before");
    EXPECT_EQ(session.wnote, 1);
    EXPECT_EQ(shell.dialogs_shown(), 1);
}

TEST_F(ttltest_dialog, adds_a_device_by_the_add_button)
{
    session.wnote = 1;
    session.ttl.ttlname = "before";
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
        EXPECT_EQ(session.wnote, 0);
        EXPECT_EQ(d.List1.items(), (lines{"74PASS", "74FAIL", "4011", "7499"})) << "at the end";
        EXPECT_EQ(d.Label3.caption(), "Total:3") << "Add leaves the total";
    });
    EXPECT_EQ(boxes(), std::vector{add_question});
    EXPECT_NE(library().find(std::string{"$7499        02\x02"} + "04\x04GHLV*"), std::string::npos);
}

TEST_F(ttltest_dialog, does_nothing_on_test_without_a_selection)
{
    in_test_mode([this](ttltest& d) {
        d.OKButton.click();
        EXPECT_EQ(calls(), lines{});
    });
    EXPECT_TRUE(boxes().empty());
}

TEST_F(ttltest_dialog, tests_nothing_without_hardware)
{
    session.ok = bool16_false;
    in_test_mode([this](ttltest& d) {
        d.List1.pick(0);
        d.OKButton.click();
        EXPECT_EQ(calls(), lines{});
        EXPECT_TRUE(d.is_open());
    });
    EXPECT_TRUE(boxes().empty());
}

TEST_F(ttltest_dialog, tells_a_passed_test_and_releases_the_hardware)
{
    in_test_mode([this](ttltest& d) {
        d.List1.pick(0);
        d.OKButton.click();
        EXPECT_EQ(calls(), (lines{"hwreset", "boardsel2 3 0", "busmode 0", "setvcc 5000", "hwrelease"}));
        EXPECT_TRUE(d.is_open());
    });
    EXPECT_EQ(boxes(), std::vector{passed});
}

TEST_F(ttltest_dialog, selects_the_board_by_the_first_two_letters_of_the_name)
{
    for (const auto& [name, call] :
         {std::pair{"4511", "boardsel2 3 45"}, std::pair{"4000", "boardsel2 3 45"}, std::pair{"NPX", "boardsel2 3 45"},
          std::pair{"np1", "boardsel2 3 0"}, std::pair{"4", "boardsel2 3 0"}, std::pair{"7445", "boardsel2 3 0"}}) {
        write_library({{name, 14, passing.rows}, failing});
        in_test_mode([&, call = call](ttltest& d) {
            d.List1.pick(0);
            d.OKButton.click();
            EXPECT_EQ(calls(), (lines{"hwreset", call, "busmode 0", "setvcc 5000", "hwrelease"})) << d.List1.text();
        });
    }
}

TEST_F(ttltest_dialog, prepares_everything_anew_on_retry_after_a_pass)
{
    shell.answer_next_box(answer::retry);
    shell.answer_next_box(answer::retry);
    shell.answer_next_box(answer::cancel);
    in_test_mode([this](ttltest& d) {
        d.List1.pick(2);
        d.OKButton.click();
        const lines attempt{"hwreset", "boardsel2 3 45", "busmode 0", "setvcc 5000"};
        lines all;
        for (int i = 0; i < 3; ++i) all.insert(all.end(), attempt.begin(), attempt.end());
        all.emplace_back("hwrelease");
        EXPECT_EQ(calls(), all);
    });
    EXPECT_EQ(boxes(), (std::vector{passed, passed, passed}));
}

TEST_F(ttltest_dialog, stops_at_a_reset_that_fails_and_stays_open)
{
    in_test_mode([this](ttltest& d) {
        programmer.resets = {1};
        d.List1.pick(0);
        d.OKButton.click();
        EXPECT_EQ(calls(), (lines{"hwreset", "hwfault"}));
        EXPECT_TRUE(d.is_open());
        d.OKButton.click();
        EXPECT_EQ(calls().back(), "hwrelease") << "and can test again";
    });
    EXPECT_EQ(boxes(), std::vector{passed});
}

TEST_F(ttltest_dialog, leaves_a_plain_failure_to_the_report_of_the_run)
{
    shell.answer_next_box(answer::abort);
    in_test_mode([this](ttltest& d) {
        d.List1.pick(1);
        d.OKButton.click();
        EXPECT_EQ(calls().back(), "hwrelease");
        EXPECT_TRUE(d.is_open());
    });
    ASSERT_EQ(boxes().size(), 1U);
    EXPECT_EQ(boxes()[0].buttons, buttons_of_box::abort_retry_ignore);
}

TEST_F(ttltest_dialog, tells_a_communication_error_when_no_reply_came_in_time)
{
    session.blocks.usbable(0) = bool16_true;
    session.blocks.modeltype(0) = 22;  // which does not ask again
    std::filesystem::create_directories(folder.path("lib1"));
    folder.write("lib1/test190.lib", library());
    shell.on_doevents = [this] { shell.advance(0.5); };
    in_test_mode([this](ttltest& d) {
        d.List1.pick(0);
        d.OKButton.click();
        EXPECT_EQ(calls().back(), "hwrelease");
        EXPECT_TRUE(d.is_open());
    });
    ASSERT_EQ(boxes().size(), 1U);
    EXPECT_EQ(boxes()[0],
              (message_box{"Communication error!", "TTL & CMOS Test", icon::information, buttons_of_box::ok}));
    EXPECT_EQ(session.blocks.prgresult(0), 3);
}

TEST_F(ttltest_dialog, counts_a_name_without_a_record_as_passed)
{
    in_test_mode([this](ttltest& d) {
        write_library({failing, cmos});  // the list still has the name
        d.List1.pick(0);
        d.OKButton.click();
        EXPECT_EQ(calls(), (lines{"hwreset", "boardsel2 3 0", "busmode 0", "setvcc 5000", "hwrelease"}));
    });
    EXPECT_EQ(boxes(), std::vector{passed});
}

TEST_F(ttltest_dialog, is_deaf_to_its_buttons_while_a_test_runs)
{
    session.blocks.usbable(0) = bool16_true;
    session.blocks.modeltype(0) = 22;
    std::filesystem::create_directories(folder.path("lib1"));
    folder.write("lib1/test190.lib", library());
    in_test_mode([this](ttltest& d) {
        d.List1.pick(0);
        int rounds = 0;
        shell.on_doevents = [&] {
            ++rounds;
            d.OKButton.click();
            d.CancelButton.click();
            d.Text1.press_enter();
            EXPECT_TRUE(d.is_open());
            shell.advance(0.5);
        };
        d.OKButton.click();
        EXPECT_GT(rounds, 0);
        EXPECT_EQ(calls(), (lines{"hwreset", "busmode 0", "setvcc 5000", "busmode 0", "hwrelease"})) << "one test";
        d.CancelButton.click();
        EXPECT_FALSE(d.is_open());
    });
}

TEST_F(ttltest_dialog, edits_the_selected_device)
{
    session.wnote = 1;
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
    EXPECT_EQ(session.ttl.ttlname, "4011");
    EXPECT_EQ(session.ttl.ttlpin, 14);
    EXPECT_EQ(session.ttl.ttlcnt, 2);
    EXPECT_EQ(session.wnote, 0);
    EXPECT_TRUE(boxes().empty());
}

TEST_F(ttltest_dialog, selects_no_board_for_editing_without_hardware_or_below_model_40)
{
    session.ok = bool16_false;
    in_library([&](ttltest& d) {
        d.List1.pick(2);
        d.OKButton.click();
        EXPECT_EQ(calls(), lines{});
    });
    session.ok = bool16_true;
    session.blocks.modeltype(0) = 39;
    in_library([&](ttltest& d) {
        d.List1.pick(2);
        d.OKButton.click();
        EXPECT_EQ(calls(), lines{});
    });
}

TEST_F(ttltest_dialog, edits_nothing_without_a_selection)
{
    session.ttl.ttlname = "before";
    in_library([](ttltest& d) { d.OKButton.click(); });
    EXPECT_EQ(shell.dialogs_shown(), 1);
    EXPECT_EQ(session.ttl.ttlname, "before");
}

TEST_F(ttltest_dialog, shows_the_vectors_in_work_for_a_name_without_a_record)
{
    in_library([&](ttltest& d) {
        write_library({failing, cmos});
        session.ttl.ttlpin = 2;
        session.ttl.ttlcnt = 2;
        session.ttl.ttlvect.store(0, "GV");
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
    EXPECT_EQ(boxes()[0], (message_box{"Delete Pattern?", "Edit Pattern", icon::question, buttons_of_box::yes_no}));
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

TEST_F(ttltest_dialog, times_a_read_out_once)
{
    in_test_mode([this](ttltest& d) {
        EXPECT_FALSE(d.Timer1.enabled());
        session.blocks.prgresult(0) = 0;
        d.Timer1.enabled = true;
        shell.advance(3.9);
        EXPECT_EQ(session.blocks.prgresult(0), 0);
        shell.advance(0.2);
        EXPECT_EQ(session.blocks.prgresult(0), 3);
        EXPECT_FALSE(d.Timer1.enabled());
        session.blocks.prgresult(0) = 0;
        shell.advance(60);
        EXPECT_EQ(session.blocks.prgresult(0), 0);
    });
}

TEST_F(ttltest_dialog, is_closed_by_cancel_and_by_escape)
{
    in_test_mode([](ttltest& d) {
        d.CancelButton.click();
        EXPECT_FALSE(d.is_open());
    });
    in_library([](ttltest& d) {
        d.ask_to_leave();
        EXPECT_FALSE(d.is_open());
    });
}

TEST_F(ttltest_dialog, tells_an_error_of_the_programmer_to_the_host)
{
    session.hardware.source = {};
    ttltest dialog{session};
    EXPECT_THROW(shell.show_modal(dialog), hw::programmer_error);
    EXPECT_FALSE(dialog.is_open());
}

}  // namespace
}  // namespace tamrix
