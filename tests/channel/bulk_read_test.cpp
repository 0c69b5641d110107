#include "channel/bulk_read.h"

#include "base/errors.h"
#include "channel/channel.h"
#include "channel/recorded.h"

#include <gtest/gtest.h>

namespace tamrix::tests {

namespace {

/// Reads a block and yields the milliseconds of the shell's clock that it took.
struct timed_read {
    explicit timed_read(channel& c, std::int32_t bytes = 32768)
    {
        const double before = c.shell.seconds();
        good = hw::read_block(c.session, 0, bytes, hw::frame_length::bulk);
        milliseconds = (c.shell.seconds() - before) * 1000;
    }
    bool good = false;
    double milliseconds = 0;
};

TEST(read_block, is_a_frame_and_one_transfer_with_room_for_the_marker)
{
    channel c;
    for (int i = 0; i < 20; ++i) c.session.blocks.ubuf1(i) = 0xCC;
    ASSERT_TRUE(hw::read_block(c.session, 3, 4096, hw::frame_length::bulk));
    EXPECT_EQ(c.log->transcript(),
              "usbcomwrite 8: 0A 03 40 CC CC CC CC CC\n"
              "usbbulkread 4097 -> FF FF FF FF FF FF FF FF FF FF FF FF FF FF FF FF .. (crc F154670A)\n");
}

TEST(read_block, a_read_that_never_completes_ends_after_8000_ms_with_the_loop_alive)
{
    channel c;
    c.faults = {"read never ends"};
    const timed_read read{c};
    EXPECT_FALSE(read.good);
    EXPECT_EQ(c.prgresult(), 3);
    EXPECT_NEAR(read.milliseconds, 8000, 2);
    EXPECT_NEAR(c.shell.pumps(), 8000, 2);
    EXPECT_EQ(c.session.blocks.usbpip2readresult(0), 0);
}

TEST(read_block, progress_2_without_the_marker_ends_by_the_second_loops_time_out)
{
    channel c;
    c.faults = {"marker never comes"};
    const timed_read read{c};
    EXPECT_FALSE(read.good);
    EXPECT_EQ(c.prgresult(), 3);
    EXPECT_EQ(c.session.blocks.usbpip2readresult(0), 2);
    EXPECT_EQ(c.session.blocks.ibuf2(32768), 0);
    EXPECT_NEAR(read.milliseconds, 8000, 2) << "one limit for both loops";
}

TEST(read_block, a_marker_that_stood_there_before_does_not_count)
{
    channel c;
    c.faults = {"marker never comes 1"};
    c.session.blocks.ibuf2(32768) = 170;
    EXPECT_FALSE(timed_read{c}.good);
    EXPECT_TRUE(timed_read{c}.good);
}

TEST(read_block, a_read_after_a_time_out_begins_anew)
{
    channel c;
    c.faults = {"read never ends 1"};
    EXPECT_FALSE(timed_read{c}.good);
    const timed_read second{c};
    EXPECT_TRUE(second.good);
    EXPECT_EQ(c.prgresult(), 0);
    EXPECT_LT(second.milliseconds, 100);
}

TEST(read_block, a_time_out_that_the_dialog_sets_ends_both_loops)
{
    for (const char* const fault : {"read never ends", "marker never comes"}) {
        channel c;
        c.faults = {fault};
        const auto pump = c.shell.on_doevents;
        c.shell.on_doevents = [&] {
            pump();
            if (c.shell.pumps() == 100) c.session.blocks.prgresult(0) = 3;
        };
        EXPECT_FALSE(timed_read{c}.good);
        EXPECT_EQ(c.shell.pumps(), 100);
    }
}

/// A transport that reports what a test wants.
class reporting_transport final : public hw::programmer, public hw::lumbat {
public:
    explicit reporting_transport(std::uint8_t status) : status_{status} {}
    hw::lumbat& transport() override { return *this; }
    hw::devobj& device() override { throw hw::programmer_error{"no device object"}; }
    std::int32_t usbcomwrite(const std::uint8_t*, std::int32_t) override { return 0; }
    std::int32_t usbbulkwrite(const std::uint8_t*, std::int32_t) override { return 1; }
    std::int32_t usbbulkread(std::uint8_t*, std::int32_t, std::uint8_t* status) override
    {
        *status = status_;
        return 1;  // does not count
    }

private:
    std::uint8_t status_;
};

TEST(read_block, a_progress_above_3_is_a_failure_at_once_and_3_is_still_under_way)
{
    for (const int status : {3, 4, 255}) {
        channel c;
        c.session.hardware.source = [status](const hw::reply_memory&) {
            return std::make_unique<reporting_transport>(static_cast<std::uint8_t>(status));
        };
        const timed_read read{c};
        EXPECT_FALSE(read.good);
        EXPECT_EQ(c.prgresult(), status == 3 ? 3 : 0);
        EXPECT_EQ(c.shell.pumps() == 1, status != 3);
    }
}

TEST(read_block, whose_frame_cannot_be_sent_waits_for_nothing)
{
    channel c;
    c.faults = {"no answer"};
    EXPECT_FALSE(timed_read{c}.good);
    EXPECT_EQ(c.prgresult(), 1);
    EXPECT_EQ(c.shell.pumps(), 0);
}

TEST(read_block, that_does_not_fit_is_refused_before_anything_is_sent)
{
    channel c;
    EXPECT_THROW(hw::read_block(c.session, 0, 33000, hw::frame_length::bulk), subscript_error);
    EXPECT_THROW(hw::read_block(c.session, 0, -1, hw::frame_length::bulk), subscript_error);
    EXPECT_EQ(c.programmer, nullptr);
}

/// Time goes on while something waits.
struct waiting : recorded {
    waiting()
    {
        shell.on_doevents = [this] { shell.advance(0.1); };
    }
    bool await(std::span<std::uint8_t> target)
    {
        return hw::await_block(session, {.target = target, .limit_ms = 4000, .end = hw::block_end::data});
    }
};

TEST(await_block, gives_up_after_its_limit_with_the_message_loop_alive)
{
    waiting w;
    w.log.bulk_ends = {bulk_end::never};
    const double before = w.shell.seconds();
    EXPECT_FALSE(w.await(hw::in_ibuf2(w.session, 129)));
    EXPECT_NEAR(w.shell.seconds() - before, 4.0, 0.11);
    EXPECT_GE(w.shell.pumps(), 39);
    EXPECT_EQ(w.session.blocks.prgresult(0), 3);
}

TEST(await_block, ends_when_somebody_else_reports_a_time_out)
{
    waiting w;
    w.log.bulk_ends = {bulk_end::never};
    w.shell.on_doevents = [&] { w.session.blocks.prgresult(0) = 3; };
    EXPECT_FALSE(w.await(hw::in_ibuf2(w.session, 129)));
    EXPECT_EQ(w.shell.pumps(), 1);
}

TEST(await_block, of_data_does_not_wait_for_the_marker)
{
    channel c;
    c.faults = {"marker never comes"};
    EXPECT_TRUE(hw::send_bulk_frame(c.session, 0, hw::bulk_from_ram, hw::frame_length::bulk));
    EXPECT_TRUE(hw::await_block(
        c.session, {.target = hw::in_ibuf2(c.session, 129), .limit_ms = 4000, .end = hw::block_end::data}));
    EXPECT_EQ(c.session.blocks.ibuf2(128), 0);
}

TEST(await_block, reads_into_its_target_and_nowhere_else)
{
    waiting w;
    EXPECT_TRUE(w.await(w.session.blocks.ibuffer.span().subspan(0x10, 0x10)));
    EXPECT_EQ(w.log.count("usbbulkread 16"), 1);
    EXPECT_EQ(w.buffer(0x0F), plug_in_fixture::untouched);
    EXPECT_EQ(w.buffer(0x10), 0xEE);
    EXPECT_EQ(w.buffer(0x1F), 170);
    EXPECT_EQ(w.buffer(0x20), plug_in_fixture::untouched);
}

TEST(await_block, clears_the_last_byte_before_it_waits)
{
    waiting w;
    w.session.blocks.ibuf2(128) = 170;
    w.log.bulk_ends = {bulk_end::never};
    w.await(hw::in_ibuf2(w.session, 129));
    EXPECT_EQ(w.session.blocks.ibuf2(128), 0);
}

TEST(in_ibuf2, of_more_bytes_than_there_are_is_an_error)
{
    plug_in_fixture f;
    EXPECT_EQ(hw::in_ibuf2(f.session, 33000).size(), 33000);
    EXPECT_THROW(hw::in_ibuf2(f.session, 33001), subscript_error);
    EXPECT_THROW(hw::in_ibuf2(f.session, 0), subscript_error);
    EXPECT_THROW(hw::in_ibuf2(f.session, -5), subscript_error);
}

}  // namespace
}  // namespace tamrix::tests
