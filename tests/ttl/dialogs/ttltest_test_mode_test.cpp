// The dialog of the logic IC test with the face that tests a device.
#include "ttl/dialogs/ttltest_fixture.h"

namespace tamrix::tests {
namespace {

const message_box passed{"Vector Test OK!", "TTL & CMOS Test", icon::information, buttons_of_box::retry_cancel};

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

TEST_F(ttltest_dialog, begins_with_the_device_that_the_host_proposes_if_the_library_lists_it)
{
    variables.ttl.proposed = "4011";
    in_test_mode([](ttltest& d) {
        EXPECT_EQ(d.Text1.text(), "4011");
        EXPECT_EQ(d.List1.text(), "4011");
        EXPECT_EQ(d.focused(), &d.Text1);
    });
    in_library([](ttltest& d) { EXPECT_EQ(d.Text1.text() + d.List1.text(), "") << "only a test has a socket"; });
    for (const char* unknown : {"7499", "", "401"}) {
        variables.ttl.proposed = unknown;
        in_test_mode([](ttltest& d) { EXPECT_EQ(d.Text1.text() + d.List1.text(), ""); });
    }
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
    variables.ttl.ok = bool16_false;
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
        EXPECT_EQ(variables.ttl.outcome.what, run_outcome::kind::no_answer);
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
    EXPECT_EQ(variables.ttl.outcome.what, run_outcome::kind::failed);
}

const message_box communication_error{"Communication error!", "TTL & CMOS Test", icon::information, buttons_of_box::ok};

TEST_F(ttltest_dialog, tells_a_communication_error_when_a_frame_is_not_taken)
{
    session.blocks.usbable(0) = bool16_true;
    programmer.takes_frames = false;
    in_test_mode([this](ttltest& d) {
        d.List1.pick(0);
        d.OKButton.click();
        EXPECT_EQ(calls().back(), "hwrelease");
        EXPECT_TRUE(d.is_open());
    });
    EXPECT_EQ(boxes(), std::vector{communication_error});
    EXPECT_EQ(variables.ttl.outcome.what, run_outcome::kind::refused_frame);
}

TEST_F(ttltest_dialog, tells_a_communication_error_when_no_results_came_in_time)
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
    EXPECT_EQ(boxes(), std::vector{communication_error});
    EXPECT_EQ(session.blocks.prgresult(0), 3);
    EXPECT_EQ(variables.ttl.outcome.what, run_outcome::kind::timed_out);
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
    EXPECT_EQ(variables.ttl.outcome.what, run_outcome::kind::not_played);
}

TEST_F(ttltest_dialog, keeps_how_each_test_ended)
{
    using kind = run_outcome::kind;
    write_library({passing, {"74FAIL", 14, {"LHHHHHXHHHHHHV", "LHHHHHXHHHHHLV"}}});
    shell.answer_next_box(answer::retry);   // after the first pass
    shell.answer_next_box(answer::cancel);  // after the second
    for (const answer one : {answer::ignore, answer::ignore, answer::cancel, answer::ignore, answer::abort})
        shell.answer_next_box(one);
    in_test_mode([this](ttltest& d) {
        for (const int device : {0, 1, 1, 0}) {
            if (device == 0 && !calls().empty()) programmer.resets = {1};
            d.List1.pick(device);
            d.OKButton.click();
        }
    });
    const auto& tests = variables.ttl.tests;
    ASSERT_EQ(tests.size(), 5U);
    const auto is = [&](std::size_t i, const char* device, kind what, std::size_t failed, int ignored) {
        return tests[i].device == device && tests[i].outcome.what == what && tests[i].outcome.rows.size() == failed &&
               tests[i].outcome.ignored == ignored;
    };
    EXPECT_TRUE(is(0, "74PASS", kind::passed, 0, 0));
    EXPECT_TRUE(is(1, "74PASS", kind::passed, 0, 0));
    EXPECT_TRUE(is(2, "74FAIL", kind::passed, 2, 2));
    EXPECT_TRUE(is(3, "74FAIL", kind::failed, 2, 1));
    EXPECT_TRUE(is(4, "74PASS", kind::no_answer, 0, 0));
    EXPECT_EQ(tests[2].pins, 14);
    EXPECT_EQ(tests[2].outcome.failed_pins(), 1u | 1u << 12);
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

}  // namespace
}  // namespace tamrix::tests
