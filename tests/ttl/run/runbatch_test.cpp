// The engines that play all rows as one script.
#include "engine_fixture.h"

#include <gtest/gtest.h>

namespace tamrix::tests {
namespace {

using forms::answer;
using kind = run_outcome::kind;

TEST(runbatch, survives_two_lost_reads_and_not_three)
{
    engine_fixture f{50, true};
    f.let_time_pass();
    f.put_rows(nand_rows);
    f.socket_shows(nand_rows);
    f.log.bulk_ends = {bulk_end::never, bulk_end::fails};
    EXPECT_FALSE(f.run(runbatch));
    EXPECT_EQ(f.log.count("usbbulkread"), 3);
    EXPECT_EQ(f.prgresult(), 0);
    EXPECT_EQ(f.outcome.what, kind::passed) << "what came at last is what counts";

    f.log.bulk_ends = {bulk_end::never, bulk_end::fails, bulk_end::never};
    EXPECT_TRUE(f.run(runbatch));
    EXPECT_EQ(f.log.count("usbbulkread"), 6);
    EXPECT_EQ(f.prgresult(), 3);
    EXPECT_EQ(f.outcome.what, kind::timed_out);
    EXPECT_EQ(f.shell.boxes(), lines{});
}

TEST(runbatch40, survives_no_lost_read)
{
    engine_fixture f{23, true};
    f.put_rows(nand_rows);
    f.log.bulk_ends = {bulk_end::fails};
    EXPECT_TRUE(f.run(runbatch40));
    EXPECT_EQ(f.log.count("usbbulkread"), 1);
    EXPECT_EQ(f.prgresult(), 3);
    EXPECT_EQ(f.outcome.what, kind::timed_out);
}

TEST(runbatch, whose_results_cannot_be_asked_for_again_ends_by_that)
{
    engine_fixture f{50, true};
    f.put_rows(nand_rows);
    f.log.bulk_ends = {bulk_end::fails};
    f.log.usbcomwrite_results = {0, 0, 1};
    EXPECT_TRUE(f.run(runbatch));
    EXPECT_EQ(f.outcome.what, kind::refused_frame);
    EXPECT_EQ(f.prgresult(), 1);
}

TEST(runbatch, does_nothing_while_a_communication_error_stands)
{
    for (const auto engine : {runbatch, runbatch40}) {
        engine_fixture f{50, true};
        f.put_rows(nand_rows);
        f.prgresult() = 3;
        EXPECT_FALSE(f.run(engine));
        EXPECT_EQ(f.outcome.what, kind::not_played);
        EXPECT_EQ(f.log.lines, lines{});
        EXPECT_EQ(f.prgresult(), 3);
        EXPECT_EQ(f.session.blocks.ubuflg(0), 0);
    }
}

TEST(runbatch, ends_in_failure_where_a_frame_is_not_taken)
{
    for (const auto engine : {runbatch, runbatch40}) {
        for (const std::deque<std::int32_t>& results : {std::deque<std::int32_t>{1}, {0, 1}}) {
            engine_fixture f{50, true};
            f.put_rows(nand_rows);
            f.log.usbcomwrite_results = results;
            EXPECT_TRUE(f.run(engine));
            EXPECT_EQ(f.outcome.what, kind::refused_frame);
            EXPECT_EQ(f.prgresult(), 1);
            EXPECT_EQ(f.log.count("usbbulkread"), 0);
            EXPECT_EQ(f.log.count("vecbyte") > 0, results.size() == 2);
        }
    }
}

TEST(runbatch, says_how_long_a_block_is_and_leaves_the_rest_of_the_frame)
{
    engine_fixture f{50, true};
    f.put_rows(nand_rows);
    f.socket_shows(nand_rows);
    for (int i = 0; i < 20; ++i) f.session.blocks.ubuf1(i) = static_cast<std::uint8_t>(0xA0 + i);
    EXPECT_FALSE(f.run(runbatch));
    EXPECT_EQ(f.session.blocks.ubuflg(0), 16368);
    EXPECT_EQ(f.log.lines.front(), "usbcomwrite 8: 0A 10 40 A3 A4 A5 A6 A7");
}

TEST(runbatch, reads_as_many_bytes_as_the_rows_need)
{
    for (const auto& [rows, bytes] : {std::pair{1, 129}, {9, 129}, {10, 193}, {254, 1601}}) {
        engine_fixture f{50, true};
        const lines all(static_cast<std::size_t>(rows), passing);
        f.put_rows(all);
        f.socket_shows(all);
        EXPECT_FALSE(f.run(runbatch, -1)) << rows;
        EXPECT_EQ(f.log.count("usbbulkread " + std::to_string(bytes)), 1) << rows;
    }
}

TEST(runbatch, Retry_plays_the_whole_script_again)
{
    engine_fixture f{50, true};
    f.put_rows({passing, passing});
    f.socket_shows({passing, failing, passing, passing});
    f.shell.answer_next_box(answer::retry);
    EXPECT_FALSE(f.run(runbatch));
    EXPECT_EQ(f.log.count("vecgnd 1 1"), 2);
    EXPECT_EQ(f.log.count("hwreset"), 0);
}

TEST(runbatch, on_models_15_and_16_ends_by_vecvcc_what_vecvpp_began)
{
    engine_fixture f{16, true};
    f.put_rows({"00H00H0GH00H000V"});
    f.socket_shows({"00H00H0GH00H000V"});
    EXPECT_FALSE(f.run(runbatch));
    EXPECT_EQ(f.log.count("vecvpp 108 1"), 1);
    EXPECT_EQ(f.log.count("vecvpp 108 0"), 0);
    EXPECT_EQ(f.log.count("vecvcc 108 0"), 1);
}

}  // namespace
}  // namespace tamrix::tests
