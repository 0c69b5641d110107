// The programmer of a session when its blocks are attached anew.
#include "programmer/programmer.h"
#include "support/plug_in_fixture.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <vector>

namespace tamrix {
namespace {

/// Writes to its reply memory up to its end, as a transfer does that is still on its way.
class busy_programmer final : public hw::programmer {
public:
    busy_programmer(const hw::reply_memory& replies, int& alive) : replies_{replies}, alive_{alive} { ++alive_; }
    ~busy_programmer() override
    {
        for (std::int32_t i = 0; i < replies_.ibuf1_length; ++i) replies_.ibuf1[i] = 0xEE;
        --alive_;
    }
    hw::lumbat& transport() override { throw std::logic_error{"not used"}; }
    hw::devobj& device() override { throw hw::programmer_error{"made, and has no device"}; }

private:
    hw::reply_memory replies_;
    int& alive_;
};

struct with_busy_programmer : tests::plug_in_fixture {
    int alive = 0;
    std::vector<hw::reply_memory> handed_over;

    with_busy_programmer()
    {
        session.hardware.source = [this](const hw::reply_memory& replies) {
            handed_over.push_back(replies);
            return std::make_unique<busy_programmer>(replies, alive);
        };
    }
    ~with_busy_programmer() { session.hardware.forget(); }
    void use() { EXPECT_THROW(session.hardware.device(), hw::programmer_error); }
};

TEST(programmer_of_a_session, is_made_once_and_kept)
{
    with_busy_programmer f;
    f.use();
    f.use();
    EXPECT_EQ(f.handed_over.size(), 1u);
    EXPECT_EQ(f.alive, 1);
}

TEST(programmer_of_a_session, goes_before_the_memory_that_it_writes_to_and_comes_back_with_the_new_one)
{
    with_busy_programmer f;
    f.use();
    const std::uint8_t* const before = f.handed_over.at(0).ibuf1;
    EXPECT_EQ(before, &f.session.blocks.ibuf1(0));
    std::int16_t other = 2;
    EXPECT_TRUE(f.methods.bufcomopt(other).ok());
    EXPECT_EQ(f.alive, 0);
    EXPECT_EQ(f.session.blocks.ibuf1(0), 0) << "the old programmer wrote to the new blocks";
    f.use();
    ASSERT_EQ(f.handed_over.size(), 2u);
    EXPECT_EQ(f.handed_over[1].ibuf1, &f.session.blocks.ibuf1(0));
    EXPECT_EQ(f.handed_over[1].ibuf1_length, 20);
    EXPECT_EQ(f.handed_over[1].usbpip0readresult, &f.session.blocks.usbpip0readresult(0));
    EXPECT_EQ(f.handed_over[1].ubuf1, &f.session.blocks.ubuf1(0));
    EXPECT_EQ(f.handed_over[1].ubuf1_length, 20);
    EXPECT_EQ(f.alive, 1);
}

TEST(programmer_of_a_session, that_is_forgotten_is_made_anew_from_the_source_of_that_moment)
{
    with_busy_programmer f;
    f.use();
    f.session.hardware.source = nullptr;
    f.use();  // the one in use stays
    f.session.hardware.forget();
    EXPECT_EQ(f.alive, 0);
    try {
        f.session.hardware.device();
        ADD_FAILURE() << "there is a programmer";
    } catch (const hw::programmer_error& error) {
        EXPECT_STREQ(error.what(), "no programmer is attached");
    }
}

}  // namespace
}  // namespace tamrix
