#include "channel/bulk.h"

#include "base/errors.h"
#include "channel/channel.h"
#include "support/temp_files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>

namespace tamrix::tests {

namespace {

/// Reads a block and yields the milliseconds of the shell's clock that it took.
struct timed_read {
    explicit timed_read(channel& c, std::int32_t bytes = 32768)
    {
        const double before = c.shell.seconds();
        good = hw::read_block(c.session, 0, bytes, hw::bulk_frame::small);
        milliseconds = (c.shell.seconds() - before) * 1000;
    }
    bool good = false;
    double milliseconds = 0;
};

TEST(bulk, blocks_come_back_as_they_were_written)
{
    for (const int model : {9, 40}) {
        channel c{model};
        const std::int32_t write_block = model < 40 ? 32768 : 65536;
        const std::vector<std::uint8_t> data = random_bytes(4 * 32768);
        const auto frame = model < 40 ? hw::bulk_frame::small : hw::bulk_frame::large;
        ASSERT_TRUE(hw::write_blocks(c.session, data, write_block, frame, 20));
        for (std::uint8_t block = 0; block < 4; ++block) {
            ASSERT_TRUE(hw::read_block(c.session, block, 32768, frame));
            const auto got = c.session.blocks.ibuf2.span().first(32768);
            EXPECT_TRUE(std::equal(got.begin(), got.end(), data.begin() + block * 32768));
            EXPECT_EQ(c.session.blocks.ibuf2(32768), 170);
            EXPECT_EQ(c.session.blocks.usbpip2readresult(0), 2);
        }
        EXPECT_TRUE(hw::end_bulk(c.session, frame));
        EXPECT_EQ(c.prgresult(), 0);
    }
}

TEST(bulk, a_read_is_a_frame_and_one_transfer_with_room_for_the_marker)
{
    channel c;
    for (int i = 0; i < 20; ++i) c.session.blocks.ubuf1(i) = 0xCC;
    ASSERT_TRUE(hw::read_block(c.session, 3, 4096, hw::bulk_frame::small));
    ASSERT_TRUE(hw::end_bulk(c.session, hw::bulk_frame::large));
    EXPECT_EQ(c.log->transcript(),
              "usbcomwrite 8: 0A 03 40 CC CC CC CC CC\n"
              "usbbulkread 4097 -> FF FF FF FF FF FF FF FF FF FF FF FF FF FF FF FF .. (crc F154670A)\n"
              "usbcomwrite 16: 0A 00 00 CC CC CC CC CC CC CC CC CC CC CC CC CC\n");
}

TEST(bulk, a_write_is_one_frame_a_wait_and_all_blocks)
{
    channel c{9};
    for (int i = 0; i < 20; ++i) c.session.blocks.ubuf1(i) = 0xCC;
    const std::vector<std::uint8_t> data{1, 2, 3, 4, 5};
    ASSERT_TRUE(hw::write_blocks(c.session, data, 2, hw::bulk_frame::write_start_of_small_ram, 200));
    EXPECT_EQ(c.log->transcript(), "usbcomwrite 4: 0A 00 80 CC\n"
                                   "delayms 200\n"
                                   "usbbulkwrite 2: 01 02\n"
                                   "usbbulkwrite 2: 03 04\n"
                                   "usbbulkwrite 1: 05\n");
}

TEST(bulk, a_read_that_never_completes_ends_after_8000_ms_with_the_loop_alive)
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

TEST(bulk, progress_2_without_the_marker_ends_by_the_second_loops_time_out)
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

TEST(bulk, a_marker_that_stood_there_before_does_not_count)
{
    channel c;
    c.faults = {"marker never comes 1"};
    c.session.blocks.ibuf2(32768) = 170;
    EXPECT_FALSE(timed_read{c}.good);
    EXPECT_TRUE(timed_read{c}.good);
}

TEST(bulk, a_read_after_a_time_out_begins_anew)
{
    channel c;
    c.faults = {"read never ends 1"};
    EXPECT_FALSE(timed_read{c}.good);
    const timed_read second{c};
    EXPECT_TRUE(second.good);
    EXPECT_EQ(c.prgresult(), 0);
    EXPECT_LT(second.milliseconds, 100);
}

TEST(bulk, a_time_out_that_the_dialog_sets_ends_both_loops)
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

TEST(bulk, a_progress_above_3_is_a_failure_at_once_and_3_is_still_under_way)
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

TEST(bulk, a_frame_that_cannot_be_sent_ends_the_sequence)
{
    channel c;
    c.faults = {"no answer"};
    EXPECT_FALSE(timed_read{c}.good);
    EXPECT_EQ(c.prgresult(), 1);
    EXPECT_EQ(c.shell.pumps(), 0);
    const std::vector<std::uint8_t> data(10);
    EXPECT_FALSE(hw::write_blocks(c.session, data, 5, hw::bulk_frame::small, 200));
    EXPECT_FALSE(hw::end_bulk(c.session, hw::bulk_frame::small));
    EXPECT_EQ(c.log->transcript().find("delayms"), std::string::npos);
}

/// The simulated programmer, but for one block that its transport does not take.
class failing_programmer final : public hw::programmer, public hw::lumbat {
public:
    explicit failing_programmer(std::unique_ptr<hw::programmer> inner, int bad_write, int& writes)
        : inner_{std::move(inner)}, bad_write_{bad_write}, writes_{writes}
    {}
    hw::lumbat& transport() override { return *this; }
    hw::devobj& device() override { return inner_->device(); }
    std::int32_t usbcomwrite(const std::uint8_t* buffer, std::int32_t length) override
    {
        return inner_->transport().usbcomwrite(buffer, length);
    }
    std::int32_t usbbulkwrite(const std::uint8_t* buffer, std::int32_t length) override
    {
        return ++writes_ == bad_write_ ? 1 : inner_->transport().usbbulkwrite(buffer, length);
    }
    std::int32_t usbbulkread(std::uint8_t* buffer, std::int32_t length, std::uint8_t* status) override
    {
        return inner_->transport().usbbulkread(buffer, length, status);
    }

private:
    std::unique_ptr<hw::programmer> inner_;
    int bad_write_;
    int& writes_;
};

TEST(bulk, a_block_that_cannot_be_written_ends_the_sequence)
{
    channel c;
    int writes = 0;
    c.session.hardware.source = [&writes, inner = c.session.hardware.source](const hw::reply_memory& replies) {
        return std::make_unique<failing_programmer>(inner(replies), 2, writes);
    };
    const std::vector<std::uint8_t> data(10);
    EXPECT_FALSE(hw::write_blocks(c.session, data, 3, hw::bulk_frame::small, 200));
    EXPECT_EQ(writes, 2);
    EXPECT_EQ(c.prgresult(), 1);
}

TEST(bulk, a_block_that_does_not_fit_is_refused_before_anything_is_sent)
{
    channel c;
    EXPECT_THROW(hw::read_block(c.session, 0, 33000, hw::bulk_frame::small), subscript_error);
    EXPECT_THROW(hw::read_block(c.session, 0, -1, hw::bulk_frame::small), subscript_error);
    const std::vector<std::uint8_t> data(10);
    EXPECT_THROW(hw::write_blocks(c.session, data, 0, hw::bulk_frame::small, 200), subscript_error);
    EXPECT_EQ(c.programmer, nullptr);
}

}  // namespace
}  // namespace tamrix::tests
