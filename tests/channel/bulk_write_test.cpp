#include "channel/bulk_write.h"

#include "base/errors.h"
#include "channel/bulk_read.h"
#include "channel/channel.h"
#include "support/temp_files.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tamrix::tests {

namespace {

TEST(write_blocks, come_back_as_they_were_written)
{
    for (const int model : {9, 40}) {
        channel c{model};
        const std::int32_t write_block = model < 40 ? 32768 : 65536;
        const std::vector<std::uint8_t> data = random_bytes(4 * 32768);
        const auto frame = model < 40 ? hw::frame_length::bulk : hw::frame_length::large;
        ASSERT_TRUE(hw::begin_bulk_write(c.session, 0, frame, 20));
        ASSERT_TRUE(hw::write_blocks(c.session, data, write_block));
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

TEST(write_blocks, follow_one_frame_and_a_wait)
{
    channel c{9};
    for (int i = 0; i < 20; ++i) c.session.blocks.ubuf1(i) = 0xCC;
    const std::vector<std::uint8_t> data{1, 2, 3, 4, 5};
    ASSERT_TRUE(hw::begin_bulk_write(c.session, 0, hw::frame_length::write_start_of_small_ram, 200));
    ASSERT_TRUE(hw::write_blocks(c.session, data, 2));
    EXPECT_EQ(c.log->transcript(), "usbcomwrite 4: 0A 00 80 CC\n"
                                   "delayms 200\n"
                                   "usbbulkwrite 2: 01 02\n"
                                   "usbbulkwrite 2: 03 04\n"
                                   "usbbulkwrite 1: 05\n");
}

TEST(write_blocks, begin_at_a_block_and_wait_after_each)
{
    channel c{40};
    for (int i = 0; i < 20; ++i) c.session.blocks.ubuf1(i) = 0xCC;
    const std::vector<std::uint8_t> data{1, 2, 3};
    ASSERT_TRUE(hw::begin_bulk_write(c.session, 6, hw::frame_length::large, 50));
    ASSERT_TRUE(hw::write_blocks(c.session, data, 2, 100));
    EXPECT_EQ(c.log->transcript(), "usbcomwrite 16: 0A 06 80 CC CC CC CC CC CC CC CC CC CC CC CC CC\n"
                                   "delayms 50\n"
                                   "usbbulkwrite 2: 01 02\n"
                                   "delayms 100\n"
                                   "usbbulkwrite 1: 03\n"
                                   "delayms 100\n");
}

TEST(begin_bulk_write, whose_frame_cannot_be_sent_does_not_wait)
{
    channel c;
    c.faults = {"no answer"};
    EXPECT_FALSE(hw::begin_bulk_write(c.session, 0, hw::frame_length::bulk, 200));
    EXPECT_EQ(c.prgresult(), 1);
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

TEST(write_blocks, end_at_one_that_cannot_be_written)
{
    channel c;
    int writes = 0;
    c.session.hardware.source = [&writes, inner = c.session.hardware.source](const hw::reply_memory& replies) {
        return std::make_unique<failing_programmer>(inner(replies), 2, writes);
    };
    const std::vector<std::uint8_t> data(10);
    EXPECT_TRUE(hw::begin_bulk_write(c.session, 0, hw::frame_length::bulk, 200));
    EXPECT_FALSE(hw::write_blocks(c.session, data, 3));
    EXPECT_EQ(writes, 2);
    EXPECT_EQ(c.prgresult(), 1);
}

TEST(write_blocks, without_a_size_are_refused_before_anything_is_sent)
{
    channel c;
    const std::vector<std::uint8_t> data(10);
    EXPECT_THROW(hw::write_blocks(c.session, data, 0), subscript_error);
    EXPECT_EQ(c.programmer, nullptr);
}

}  // namespace
}  // namespace tamrix::tests
