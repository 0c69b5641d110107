// The engines that play row by row.
#include "base/errors.h"
#include "engine_fixture.h"

#include <gtest/gtest.h>

namespace tamrix::tests {
namespace {

using forms::answer;
using kind = run_outcome::kind;

TEST(runport, on_the_registers_a_K_neither_pulses_nor_fails)
{
    engine_fixture with_k{50, false}, without{50, false};
    with_k.put_rows({"K0H00HGH00H00V"});
    without.put_rows({"00H00HGH00H00V"});
    for (engine_fixture* f : {&with_k, &without}) f->socket_shows({"10H00HGH00H00V"});
    EXPECT_FALSE(with_k.run(runport));
    EXPECT_TRUE(without.run(runport, -1)) << "a 0 there is compared";
    EXPECT_EQ(with_k.log.count("regout"), without.log.count("regout"));
}

TEST(runport, that_stops_at_the_first_failure_powers_off_and_shows_nothing)
{
    engine_fixture f{50, false};
    f.put_rows({passing, passing, passing});
    f.socket_shows({passing, failing});
    EXPECT_TRUE(f.run(runport, -1));
    EXPECT_EQ(f.shell.boxes(), lines{});
    EXPECT_EQ(f.log.count("regin 0"), 2) << "the third row is not played";
    EXPECT_EQ(f.log.count("vccpin 107 0"), 1);
    EXPECT_EQ(f.log.count("gndpin 1 0"), 1);
    EXPECT_EQ(f.log.lines.back(), "regout 255 10");
    EXPECT_EQ(f.outcome.what, kind::failed);
    EXPECT_EQ(f.failed_rows(), std::vector<int>{}) << "none was reported";
}

TEST(runport, after_Ignore_a_clean_rest_is_a_pass)
{
    engine_fixture f{50, true};
    f.put_rows({passing, passing});
    f.socket_shows({failing, passing});
    f.shell.answer_next_box(answer::ignore);
    EXPECT_FALSE(f.run(runport));
    EXPECT_EQ(f.shell.boxes().size(), 1u);
    EXPECT_EQ(f.outcome.what, kind::passed);
    EXPECT_EQ(f.failed_rows(), std::vector{1}) << "the outcome still names what was ignored";
    EXPECT_EQ(f.outcome.rows[0].row, passing);
    EXPECT_EQ(f.outcome.rows[0].result, failing);
}

TEST(runport, in_the_log_every_row_from_the_failing_one_on_is_reported)
{
    engine_fixture f{50, false};
    f.put_rows({passing, passing, passing, passing, passing});
    f.socket_shows({passing, passing, failing, passing, passing});
    EXPECT_TRUE(f.run(runport, 0, 1));
    EXPECT_EQ(f.status(), ">> Expected: V0003:00H00HGH00H00V\n>>   Result: V0003:00L00HGH00H00V\n\n"
                          ">> Expected: V0004:00H00HGH00H00V\n>>   Result: V0004:00H00HGH00H00V\n\n"
                          ">> Expected: V0005:00H00HGH00H00V\n>>   Result: V0005:00H00HGH00H00V\n\n");
    EXPECT_EQ(f.shell.boxes(), lines{});
    EXPECT_EQ(f.outcome.what, kind::failed);
    EXPECT_EQ(f.failed_rows(), std::vector{3});
}

TEST(runport, without_a_reply_fails_and_still_powers_off)
{
    for (const auto engine : {runport, runport40}) {
        engine_fixture f{23, true};
        f.put_rows({passing, passing});
        f.log.replywait_results = {false};
        EXPECT_TRUE(f.run(engine));
        EXPECT_EQ(f.outcome.what, kind::lost_reply);
        EXPECT_EQ(f.shell.boxes(), lines{});
        EXPECT_EQ(f.log.count("replywait"), 1);
        EXPECT_EQ(f.log.lines.back(), "usbcomwrite 13: 05 FF FF FF FF FF FF FF FF FF FF FF FF");
        EXPECT_EQ(f.log.count("gndpin 1 0"), 1);
    }
}

TEST(runport, ends_in_failure_where_any_of_its_frames_is_not_taken)
{
    for (const auto engine : {runport, runport40}) {
        engine_fixture all_taken{23, true};
        all_taken.put_rows({"CKH00HGH00H00V"});
        all_taken.socket40_shows({"00H00HGH00H00V"});
        all_taken.run(engine, -1);
        const int frames = all_taken.log.count("usbcomwrite");
        ASSERT_EQ(frames, 6) << "five for the row, one to release";
        for (int refused = 0; refused < frames; ++refused) {
            engine_fixture f{23, true};
            f.put_rows({"CKH00HGH00H00V"});
            f.socket40_shows({"00H00HGH00H00V"});
            f.log.usbcomwrite_results.assign(static_cast<std::size_t>(refused), 0);
            f.log.usbcomwrite_results.push_back(1);
            EXPECT_TRUE(f.run(engine)) << refused;
            EXPECT_EQ(f.outcome.what, kind::refused_frame) << refused;
            EXPECT_EQ(f.log.count("gndpin 1 0"), 1) << refused;
            EXPECT_EQ(f.log.lines.back(), "usbcomwrite 13: 05 FF FF FF FF FF FF FF FF FF FF FF FF");
            EXPECT_EQ(f.prgresult(), refused == frames - 1 ? 1 : 0) << "what the last frame gave";
        }
    }
}

TEST(runport, that_cannot_release_the_socket_says_so_even_after_a_failed_row)
{
    for (const auto engine : {runport, runport40}) {
        engine_fixture f{23, true};
        f.put_rows({passing});
        f.log.socket = {six_bytes{}};
        f.log.usbcomwrite_results = {0, 1};
        EXPECT_TRUE(f.run(engine, -1));
        EXPECT_EQ(f.outcome.what, kind::refused_frame);
    }
}

TEST(runport, without_a_reply_says_so_even_after_a_failed_row)
{
    for (const auto engine : {runport, runport40}) {
        engine_fixture f{23, true};
        f.put_rows({passing, passing});
        f.log.socket = {six_bytes{}};
        f.log.replywait_results = {true, false};
        f.log.usbcomwrite_results = {0, 0, 1};  // the release is not taken either
        EXPECT_TRUE(f.run(engine, 0, 1));
        EXPECT_EQ(f.outcome.what, kind::lost_reply);
        EXPECT_EQ(f.failed_rows(), std::vector{1});
    }
}

TEST(runport, that_cannot_begin_again_on_Retry_says_so)
{
    for (const auto engine : {runport, runport40}) {
        engine_fixture f{23, true};
        f.put_rows({passing});
        f.log.socket = {six_bytes{}};
        f.log.usbcomwrite_results = {0, 1};
        f.shell.answer_next_box(answer::retry);
        EXPECT_TRUE(f.run(engine));
        EXPECT_EQ(f.outcome.what, kind::refused_frame);
        EXPECT_EQ(f.log.count("hwreset"), 0);
    }
}

TEST(runport, leaves_the_power_alone_that_the_device_data_switched)
{
    engine_fixture f{50, false};
    f.variables.ttl.wnote = 1;
    f.put_rows({passing});
    f.socket_shows({passing});
    EXPECT_FALSE(f.run(runport));
    EXPECT_EQ(f.log.count("gndpin"), 1);
    EXPECT_EQ(f.log.count("vccpin"), 1);
    EXPECT_EQ(f.log.count("vccpin 0 0"), 1) << "the codes stay 0";
    EXPECT_EQ(f.log.count("gndpin 0 0"), 1);
}

TEST(runport, takes_the_registers_unless_the_flag_is_exactly_true)
{
    engine_fixture f{50, false};
    f.session.blocks.usbable(0) = 1;
    f.put_rows({passing});
    f.socket_shows({passing});
    EXPECT_FALSE(f.run(runport));
    EXPECT_EQ(f.log.count("usbcomwrite"), 0);
}

TEST(runport, of_a_row_without_supply_letters_uses_the_code_that_comes_out)
{
    engine_fixture f{50, false};
    f.put_rows({"XXXXXXXXXXXXXX"});
    EXPECT_FALSE(f.run(runport));
    EXPECT_EQ(f.log.count("gndpin 8 1"), 1);
    EXPECT_EQ(f.log.count("vccpin 8 1"), 1);
}

TEST(runport, a_row_wider_than_the_socket_is_an_error)
{
    engine_fixture f{50, false};
    f.put_rows({passing});
    f.variables.ttl.ttlpin = 98;
    EXPECT_THROW(f.run(runport), subscript_error);
}

}  // namespace
}  // namespace tamrix::tests
