#include "ttl/run/resultwait.h"

#include "base/errors.h"
#include "engine_fixture.h"

#include <gtest/gtest.h>

namespace tamrix::tests {
namespace {

TEST(resultwait, gives_up_after_4000_ms_with_the_message_loop_alive)
{
    engine_fixture f{50, true};
    f.let_time_pass();
    f.log.bulk_ends = {bulk_end::never};
    const double before = f.shell.seconds();
    EXPECT_EQ(resultwait(f.session, 1, 0, 129), 1);
    EXPECT_NEAR(f.shell.seconds() - before, 4.0, 0.11);
    EXPECT_GE(f.shell.pumps(), 39);
    EXPECT_EQ(f.prgresult(), 3);
}

TEST(resultwait, ends_when_somebody_else_reports_a_time_out)
{
    engine_fixture f{50, true};
    f.log.bulk_ends = {bulk_end::never};
    f.shell.on_doevents = [&] { f.prgresult() = 3; };
    EXPECT_EQ(resultwait(f.session, 1, 0, 129), 1);
}

TEST(resultwait, of_a_failed_read_counts_as_a_time_out)
{
    engine_fixture f{50, true};
    f.log.bulk_ends = {bulk_end::fails};
    EXPECT_EQ(resultwait(f.session, 1, 0, 129), 1);
    EXPECT_EQ(f.prgresult(), 3);
}

TEST(resultwait, takes_length_and_target_from_the_pipe)
{
    engine_fixture f{50, true};
    EXPECT_EQ(resultwait(f.session, 1, 0, 200), 0);
    EXPECT_EQ(resultwait(f.session, 2, 0, 200), 0);
    EXPECT_EQ(resultwait(f.session, 5, 0, 200), 0);
    EXPECT_EQ(f.log.count("usbbulkread 200"), 1);
    EXPECT_EQ(f.log.count("usbbulkread 65"), 2);
    EXPECT_EQ(f.session.blocks.ibuf2(64), 170);
    f.buffer(0x1F) = 0x77;
    EXPECT_EQ(resultwait(f.session, 0, 0x10, 0x10), 0);
    EXPECT_EQ(f.session.blocks.ibuf1(0), 0x77) << "the byte that the end marker overwrites is put aside";
    EXPECT_EQ(f.buffer(0x0F), plug_in_fixture::untouched);
    EXPECT_EQ(f.buffer(0x10), 0xEE);
    EXPECT_EQ(f.buffer(0x1F), 170);
    EXPECT_EQ(f.buffer(0x20), plug_in_fixture::untouched);
}

TEST(resultwait, clears_the_last_byte_before_it_waits)
{
    engine_fixture f{50, true};
    f.let_time_pass();
    f.session.blocks.ibuf2(128) = 170;
    f.log.bulk_ends = {bulk_end::never};
    resultwait(f.session, 1, 0, 129);
    EXPECT_EQ(f.session.blocks.ibuf2(128), 0);
}

TEST(resultwait, outside_the_buffers_is_an_error)
{
    engine_fixture f{50, true};
    EXPECT_THROW(resultwait(f.session, 1, 0, 33001), subscript_error);
    EXPECT_THROW(resultwait(f.session, 1, 0, 0), subscript_error);
    EXPECT_THROW(resultwait(f.session, 0, -1, 10), subscript_error);
    EXPECT_THROW(resultwait(f.session, 0, 0x1890, 0x10), subscript_error);
    EXPECT_EQ(f.log.lines, lines{});
}

}  // namespace
}  // namespace tamrix::tests
