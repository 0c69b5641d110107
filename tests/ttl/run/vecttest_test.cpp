#include "ttl/run/vecttest.h"

#include "ttl/run/prepare.h"
#include "ttl/ttl_fixture.h"

#include <gtest/gtest.h>

namespace tamrix::tests {
namespace {

using forms::answer;

const std::string passing = "00H00HGH00H00V";
const std::string failing = "00L00HGH00H00V";

struct vecttest_fixture : ttl_fixture {
    explicit vecttest_fixture(std::int16_t modeltype = 50)
    {
        use_model(modeltype, false);
        variables.ttl.ttlpin = 14;
        auto& blocks = session.blocks;
        blocks.figmode(0) = 7;
        blocks.bvcc(0) = 330;
        blocks.bgndpin(0) = 1;
        blocks.bvccpin(0) = 110;
        blocks.chippin(0) = 14;
    }
    /// The call of a host, with `count` rows and one of its own vectors.
    reply call(std::uint8_t mode, int count, std::uint8_t wnote, bool16 ok = bool16_true)
    {
        for (std::size_t i = 0; i < 150; ++i) variables.pld.pldvect.store(i, passing);
        auto count_of_host = static_cast<std::uint8_t>(count);
        return methods.vecttest0(mode, count_of_host, wnote, ok);
    }
    void chip_passes()
    {
        log.read_socket = [] { return slow::ports_of(passing); };
    }
};

TEST(vecttest, tests_100_rows_of_150)
{
    vecttest_fixture f;
    f.chip_passes();
    EXPECT_TRUE(f.call(1, 150, 1).ok());
    EXPECT_EQ(f.log.count("regin 0"), 100);
    EXPECT_EQ(f.variables.ttl.ttlcnt, 101);
}

TEST(vecttest, of_no_rows_does_nothing_at_all)
{
    for (const int count : {0, 1}) {
        vecttest_fixture f;
        EXPECT_TRUE(f.call(1, count, 1).ok());
        EXPECT_EQ(f.log.lines, lines{});
        EXPECT_EQ(f.status(), "");
    }
}

TEST(vecttest, without_hardware_does_nothing)
{
    vecttest_fixture f;
    f.variables.ttl.outcome.what = run_outcome::kind::passed;  // of an earlier test
    EXPECT_TRUE(f.call(1, 2, 1, bool16_false).ok());
    EXPECT_EQ(f.variables.ttl.outcome.what, run_outcome::kind::not_played);
    EXPECT_EQ(f.log.lines, lines{});
}

TEST(vecttest, takes_voltage_and_supply_pins_from_the_device_data)
{
    vecttest_fixture f;
    f.variables.ttl.ttlname = "7400";
    f.chip_passes();
    EXPECT_TRUE(f.call(1, 2, 1).ok());
    const lines start(f.log.lines.begin(), f.log.lines.begin() + 9);
    EXPECT_EQ(start, (lines{"hwreset", "boardsel2 3 0", "busmode 0", "setvcc 5000", "boardsel 7", "setvcc 3300",
                            "gndpin 1 1", "vccpin 110 1", "delayms 100"}));
    EXPECT_EQ(f.log.count("gndpin"), 2) << "the engine only releases code 0";
    EXPECT_EQ(f.log.lines.back(), "hwrelease");
    EXPECT_EQ(f.status(), ">> Vector Test OK!\n");
    EXPECT_EQ(f.shell.boxes(), lines{});
}

TEST(vecttest, without_device_data_powers_by_the_letters_of_row_0)
{
    vecttest_fixture f;
    f.session.blocks.chippin(0) = 20;
    f.chip_passes();
    EXPECT_TRUE(f.call(1, 2, 0).ok());
    EXPECT_EQ(f.variables.ttl.ttlpin, 14) << "from an earlier run";
    EXPECT_EQ(f.log.count("boardsel "), 0);
    EXPECT_EQ(f.log.count("gndpin 1 1"), 1);
    EXPECT_EQ(f.log.count("vccpin 107 1"), 1);
    EXPECT_EQ(f.log.count("delayms 100"), 0);
}

TEST(vecttest, counts_more_than_40_pins_as_40)
{
    vecttest_fixture f;
    f.session.blocks.chippin(0) = 44;
    EXPECT_TRUE(f.call(1, 2, 1).ok());
    EXPECT_EQ(f.variables.ttl.ttlpin, 40);
}

TEST(vecttest, of_a_host_reports_failures_in_its_log_alone)
{
    vecttest_fixture f;
    f.log.socket = {slow::ports_of(failing)};
    f.session.blocks.MainRtstr(0) = "before\n";
    EXPECT_TRUE(f.call(2, 2, 1).ok());
    EXPECT_EQ(f.status(), "before\n>> Expected: V0001:00H00HGH00H00V\n>>   Result: V0001:00L00HGH00H00V\n\n"
                          ">> Vector Test fail!\n");
    EXPECT_EQ(f.shell.boxes(), lines{});
    EXPECT_EQ(f.log.lines.back(), "hwrelease");
}

struct broken {
    const char* name;
    std::deque<std::int32_t> frames;
    std::deque<bool> replies;
    run_outcome::kind what;
};
const broken ways_to_break[] = {{"refused frame", {1}, {}, run_outcome::kind::refused_frame},
                                {"refused release", {0, 1}, {}, run_outcome::kind::refused_frame},
                                {"lost reply", {}, {false}, run_outcome::kind::lost_reply}};

TEST(vecttest, of_a_host_tells_a_communication_error_in_its_log_alone)
{
    for (const std::int16_t model : {23, 50}) {
        for (const broken& one : ways_to_break) {
            SCOPED_TRACE(one.name);
            vecttest_fixture f{model};
            f.use_model(model, true);
            f.log.read_socket = [&] { return model == 23 ? slow::ports_of_40(passing) : slow::ports_of(passing); };
            f.log.usbcomwrite_results = one.frames;
            f.log.replywait_results = one.replies;
            EXPECT_TRUE(f.call(1, 2, 1).ok());
            EXPECT_EQ(f.status(), ">> Communication error!\n>> Vector Test fail!\n");
            EXPECT_EQ(f.shell.boxes(), lines{});
            EXPECT_EQ(f.variables.ttl.outcome.what, one.what);
            EXPECT_EQ(f.log.lines.back(), "hwrelease");
        }
    }
}

TEST(vecttest, of_the_editor_tells_a_communication_error_in_a_box)
{
    const forms::message_box expected{
        .text = "Communication error!", .title = "TTL & CMOS Test", .picture = forms::icon::information};
    for (const std::int16_t model : {23, 50}) {
        for (const broken& one : ways_to_break) {
            SCOPED_TRACE(one.name);
            vecttest_fixture f{model};
            f.use_model(model, true);
            f.variables.ttl.ttlcnt = 2;
            f.log.read_socket = [&] { return model == 23 ? slow::ports_of_40(passing) : slow::ports_of(passing); };
            f.log.usbcomwrite_results = one.frames;
            f.log.replywait_results = one.replies;
            vecttest(f.session, f.variables.ttl, f.variables.pld, 0, {passing});
            EXPECT_EQ(f.shell.whole_boxes(), std::vector{expected});
            EXPECT_EQ(f.status(), ">> Vector Test fail!\n");
            EXPECT_EQ(f.log.lines.back(), "hwrelease");
        }
    }
}

TEST(vecttest, of_the_editor_takes_its_rows_and_repeats_on_Retry)
{
    vecttest_fixture f;
    f.chip_passes();
    f.variables.ttl.ttlcnt = 2;
    f.shell.answer_next_box(answer::retry);
    f.shell.answer_next_box(answer::cancel);
    vecttest(f.session, f.variables.ttl, f.variables.pld, 0, {passing});
    EXPECT_EQ(f.log.count("hwreset"), 2);
    EXPECT_EQ(f.log.count("hwrelease"), 1);
    const forms::message_box expected{.text = "Vector Test OK!",
                                      .title = "TTL & CMOS Test",
                                      .picture = forms::icon::information,
                                      .buttons = forms::buttons_of_box::retry_cancel};
    EXPECT_EQ(f.shell.whole_boxes(), (std::vector{expected, expected}));
    EXPECT_EQ(f.status(), "");
}

TEST(vecttest, of_the_editor_leaves_its_failure_in_the_hosts_log_too)
{
    vecttest_fixture f;
    f.variables.ttl.ttlcnt = 2;
    f.log.socket = {slow::ports_of(failing)};
    f.shell.answer_next_box(answer::abort);
    vecttest(f.session, f.variables.ttl, f.variables.pld, 0, {passing});
    EXPECT_EQ(f.shell.boxes().size(), 1u);
    EXPECT_EQ(f.status(), ">> Vector Test fail!\n");
    EXPECT_EQ(f.variables.ttl.outcome.what, run_outcome::kind::failed);
}

TEST(vecttest, of_an_editor_with_fewer_rows_plays_blank_ones)
{
    vecttest_fixture f;
    f.variables.ttl.ttlcnt = 3;
    f.chip_passes();
    f.shell.answer_next_box(answer::cancel);
    vecttest(f.session, f.variables.ttl, f.variables.pld, 0, {passing});
    EXPECT_EQ(f.log.count("regin 0"), 2);
    EXPECT_EQ(f.row(1), std::string(48, ' '));
}

TEST(vecttest, with_hardware_in_trouble_ends_without_releasing_it)
{
    vecttest_fixture f;
    f.log.hwreset_results = {1};
    EXPECT_TRUE(f.call(1, 2, 1).ok());
    EXPECT_EQ(f.log.lines, (lines{"hwreset", "hwfault"}));
    EXPECT_EQ(f.variables.ttl.outcome.what, run_outcome::kind::no_answer);
    EXPECT_EQ(f.status(), "");
}

TEST(vecttest, calls_busmode_before_a_run_and_never_after)
{
    for (const std::int16_t model : {23, 50}) {
        for (const bool usb : {false, true}) {
            vecttest_fixture f{model};
            f.use_model(model, usb);
            EXPECT_TRUE(f.call(1, 2, 1).ok());
            const auto rest = std::ranges::find(f.log.lines, std::string{"delayms 100"});
            ASSERT_NE(rest, f.log.lines.end());
            EXPECT_EQ(std::find(rest, f.log.lines.end(), "busmode 0"), f.log.lines.end());
            EXPECT_EQ(f.log.count("busmode"), 1);
        }
    }
}

TEST(vecttest, plays_row_by_row_on_every_model)
{
    for (const std::int16_t model : {15, 22, 23, 24, 28, 29, 50}) {
        const bool socket40 = model >= 22 && model <= 29;
        vecttest_fixture f{model};
        f.log.read_socket = [&] { return socket40 ? slow::ports_of_40(passing) : slow::ports_of(passing); };
        EXPECT_TRUE(f.call(1, 3, 1).ok());
        EXPECT_EQ(f.status(), ">> Vector Test OK!\n") << model;
        EXPECT_EQ(f.log.count("replywait"), socket40 ? 2 : 0) << model << ": frames even where USB is off";
        EXPECT_EQ(f.log.count("regin 0"), socket40 ? 0 : 2) << model;
    }
}

TEST(prepare_supply, selects_the_board_by_the_first_two_letters_on_models_from_40)
{
    for (const auto& [name, board] : {std::pair{"4511", "boardsel2 3 45"},
                                      {"4011", "boardsel2 3 45"},
                                      {"NP1", "boardsel2 3 45"},
                                      {"np1", "boardsel2 3 0"},
                                      {"7440", "boardsel2 3 0"},
                                      {"4", "boardsel2 3 0"},
                                      {"", "boardsel2 3 0"}}) {
        for (const std::int16_t model : {39, 40}) {
            ttl_fixture f;
            f.use_model(model, false);
            EXPECT_TRUE(prepare_supply(f.session, f.variables.ttl, name));
            EXPECT_EQ(f.log.lines, model < 40 ? (lines{"hwreset", "busmode 0", "setvcc 5000"})
                                              : (lines{"hwreset", board, "busmode 0", "setvcc 5000"}));
        }
    }
}

TEST(prepare_supply, drops_the_attempt_where_the_hardware_is_in_trouble)
{
    ttl_fixture f;
    f.log.hwreset_results = {1};
    EXPECT_FALSE(prepare_supply(f.session, f.variables.ttl, "7400"));
    EXPECT_EQ(f.log.lines, (lines{"hwreset", "hwfault"}));
}

}  // namespace
}  // namespace tamrix::tests
