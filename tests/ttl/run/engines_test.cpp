// What all four engines do alike.
#include "engine_fixture.h"
#include "programmer/programmer.h"

#include <gtest/gtest.h>

namespace tamrix::tests {
namespace {

using forms::answer;
using kind = run_outcome::kind;

TEST(report, is_a_box_with_the_critical_icon_that_asks_how_to_go_on)
{
    engine_fixture f{50, false};
    f.put_rows({passing});
    f.socket_shows({failing});
    f.shell.answer_next_box(answer::abort);
    EXPECT_TRUE(f.run(runport));
    const forms::message_box expected{
        .text = "Expected: V0001:00H00HGH00H00V\n  Result: V0001:00L00HGH00H00V\n\nTTL & CMOS Test fail!",
        .title = "Warning! ",
        .picture = forms::icon::error,
        .buttons = forms::buttons_of_box::abort_retry_ignore,
        .table = {
            .rows = {{{"Expected:"}, {{"V0001:00H00HGH00H00V", 1}}}, {{"Result:", 2}, {{"V0001:00L00HGH00H00V", 1}}}},
            .closing = "TTL & CMOS Test fail!",
            .letters = true}};
    EXPECT_EQ(f.shell.whole_boxes(), std::vector{expected});
}

TEST(report, of_a_script_on_48_positions_is_indented_in_the_second_English)
{
    engine_fixture f{50, true};
    f.session.blocks.Language(0) = 15000;
    f.put_rows({passing});
    f.socket_shows({failing, failing});
    f.run(runbatch);
    f.run(runport);
    ASSERT_EQ(f.shell.boxes().size(), 2u);
    EXPECT_NE(f.shell.boxes()[0].find("V\n     Result: V0001"), std::string::npos);
    EXPECT_NE(f.shell.boxes()[1].find("V\n  Result: V0001"), std::string::npos);
}

TEST(Retry, forgets_the_rows_that_failed_before)
{
    for (const auto engine : {runport, runport40, runbatch, runbatch40}) {
        engine_fixture f{23, true};
        const bool socket40 = engine == runport40 || engine == runbatch40;
        f.put_rows({passing, passing});
        const six_bytes good = socket40 ? slow::ports_of_40(passing) : slow::ports_of(passing);
        f.log.socket = {six_bytes{}, good, good, good};
        f.shell.answer_next_box(answer::retry);
        EXPECT_FALSE(f.run(engine));
        EXPECT_EQ(f.outcome.what, kind::passed);
        EXPECT_EQ(f.failed_rows(), std::vector<int>{});
    }
}

TEST(any_X_mismatch, passes_on_every_engine)
{
    for (const auto engine : {runport, runport40, runbatch, runbatch40}) {
        for (const bool open : {false, true}) {
            engine_fixture f{23, true};
            f.put_rows({"XXXXXXGXXXXXXV"});
            const bool socket40 = engine == runport40 || engine == runbatch40;
            const std::string row = "XXXXXXGXXXXXXV";
            f.log.socket = {socket40 ? slow::ports_of_40(row, open) : slow::ports_of(row, open)};
            EXPECT_FALSE(f.run(engine));
        }
    }
}

TEST(any_Z_that_reads_low, fails_on_every_engine_and_shows_L)
{
    for (const auto engine : {runport, runport40, runbatch, runbatch40}) {
        engine_fixture f{23, true};
        f.put_rows({"Z0H00HGH00H00V"});
        const bool socket40 = engine == runport40 || engine == runbatch40;
        f.log.socket = {socket40 ? slow::ports_of_40("00H00HGH00H00V") : slow::ports_of("00H00HGH00H00V")};
        EXPECT_TRUE(f.run(engine));
        ASSERT_EQ(f.shell.boxes().size(), 1u);
        EXPECT_NE(f.shell.boxes()[0].find("V0001:L0H00HGH00H00V"), std::string::npos) << f.shell.boxes()[0];
    }
}

TEST(a_run_without_rows, switches_nothing_on)
{
    for (const auto engine : {runport, runport40, runbatch, runbatch40}) {
        engine_fixture f{50, true};
        for (const std::int16_t rows : {1, 0}) {
            f.variables.ttl.ttlcnt = rows;
            EXPECT_FALSE(f.run(engine));
        }
        for (const char* call : {"gndpin 1 1", "vccpin 107 1", "vecgnd 1 1", "vecvcc 107 1"})
            EXPECT_EQ(f.log.count(call), 0);
    }
}

TEST(run_library_vectors, picks_the_engine_by_route_and_model)
{
    for (std::int16_t model = 0; model <= 60; ++model) {
        const bool socket40 = model == 22 || model == 23 || model == 24 || model == 28 || model == 29;
        SCOPED_TRACE(model);
        engine_fixture usb{model, true};
        usb.put_rows({passing});
        run_library_vectors(usb.session, usb.variables.ttl, 2, 14, -1, 0);
        EXPECT_EQ(usb.log.count("vecstart"), socket40 ? 2 : 1);
        EXPECT_EQ(usb.log.count("vecdelay 20"), socket40 ? 0 : 1);

        engine_fixture registers{model, false};
        registers.put_rows({passing});
        run_library_vectors(registers.session, registers.variables.ttl, 2, 14, -1, 0);
        EXPECT_EQ(registers.log.count("vecstart"), 0);
        EXPECT_EQ(registers.log.count("regin 0"), 1);
    }
}

TEST(engines, without_a_programmer_say_so)
{
    engine_fixture f{50, true};
    f.session.hardware.source = {};
    f.put_rows(nand_rows);
    for (const auto engine : {runport, runport40, runbatch, runbatch40})
        EXPECT_THROW(f.run(engine), hw::programmer_error);
}

}  // namespace
}  // namespace tamrix::tests
