// Blocks that can be neither opened nor created: their names are taken by something else.
#include "entry/entry_methods.h"
#include "session/session.h"
#include "support/plug_in_fixture.h"
#include "support/scripted_shell.h"

#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <windows.h>

namespace tamrix::tests {
namespace {

using texts = std::vector<std::string>;

constexpr const char* failure_text = "Unable to create memory mapped file";

/// A name that an object of another kind has, as long as this lives.
class taken_name {
public:
    explicit taken_name(HANDLE object) : object_{object} {}
    ~taken_name() { ::CloseHandle(object_); }
    taken_name(const taken_name&) = delete;
    taken_name& operator=(const taken_name&) = delete;

private:
    HANDLE object_;
};

struct failing_blocks : testing::Test {
    const std::string prefix = fresh_name_space();
    scripted_shell shell;

    std::string object(const std::string& name) const { return prefix + "qorfan" + name; }
    std::unique_ptr<taken_name> mutex(const std::string& name) const
    {
        return std::make_unique<taken_name>(::CreateMutexA(nullptr, FALSE, object(name).c_str()));
    }
};

TEST_F(failing_blocks, fail_whatever_it_is_that_has_their_name)
{
    const taken_name event{::CreateEventA(nullptr, TRUE, FALSE, object("ubuf11").c_str())};
    const taken_name semaphore{::CreateSemaphoreA(nullptr, 0, 1, object("tlength1").c_str())};
    const auto lock = mutex("algobuf1");
    session plug_in{shell, prefix};
    plug_in.blocks.attachsmall(1);
    EXPECT_EQ(shell.boxes(), texts(3, failure_text));
    EXPECT_FALSE(plug_in.blocks.ubuf1.attached());
    EXPECT_FALSE(plug_in.blocks.tlength.attached());
    EXPECT_FALSE(plug_in.blocks.algobuf.attached());
}

TEST_F(failing_blocks, are_told_in_a_plain_box_and_stay_at_one_private_element)
{
    const auto taken = mutex("ibuf11");
    session plug_in{shell, prefix};
    plug_in.blocks.attachsmall(1);
    ASSERT_EQ(shell.whole_boxes().size(), 1u);
    EXPECT_EQ(shell.whole_boxes()[0].text, failure_text);
    EXPECT_EQ(shell.whole_boxes()[0].buttons, forms::buttons_of_box::ok);
    for (block_base* view : plug_in.blocks.small())
        EXPECT_EQ(view->attached(), view != &plug_in.blocks.ibuf1) << view->name();
    plug_in.blocks.ibuf1(0) = 3;
    EXPECT_EQ(plug_in.blocks.ibuf1(0), 3);
    EXPECT_THROW(plug_in.blocks.ibuf1(1) = 0, subscript_error);
}

TEST_F(failing_blocks, are_told_one_by_one_in_the_order_of_the_table_before_the_next_is_tried)
{
    const auto third = mutex("ubuf21"), fifth = mutex("usbpip0readresult1"), last = mutex("algobuf1");
    session plug_in{shell, prefix};
    std::vector<int> attached_at_box;
    shell.on_box = [&](const forms::message_box&) {
        int count = 0;
        for (const block_base* view : plug_in.blocks.small()) count += view->attached() ? 1 : 0;
        attached_at_box.push_back(count);
    };
    plug_in.blocks.attachsmall(1);
    EXPECT_EQ(attached_at_box, (std::vector<int>{2, 3, 57}));
}

TEST_F(failing_blocks, that_all_fail_show_62_boxes_and_no_error)
{
    std::vector<std::unique_ptr<taken_name>> all;
    for (const block_info& line : small_blocks) all.push_back(mutex(std::string{line.name} + "1"));
    for (const block_info& line : big_blocks) all.push_back(mutex(std::string{line.name}));
    session plug_in{shell, prefix};
    module_variables variables;
    entry_methods methods{plug_in, variables};
    std::int16_t num = 1;
    EXPECT_TRUE(methods.bufcomopt(num).ok());
    EXPECT_EQ(shell.boxes(), texts(60, failure_text));
    EXPECT_TRUE(methods.buffercomopt(num).ok());
    EXPECT_EQ(shell.boxes(), texts(62, failure_text));
    EXPECT_TRUE(methods.freesharebufferopt().ok());
}

TEST_F(failing_blocks, attach_at_the_next_call_when_the_name_is_free_again)
{
    session plug_in{shell, prefix};
    {
        const auto taken = mutex("ibuffer");
        plug_in.blocks.attachbig(5000);
        EXPECT_EQ(shell.boxes(), texts{failure_text});
        EXPECT_FALSE(plug_in.blocks.ibuffer.attached());
        EXPECT_TRUE(plug_in.blocks.ibuffer66.attached());
    }
    plug_in.blocks.attachbig(5000);
    EXPECT_TRUE(plug_in.blocks.ibuffer.attached());
    EXPECT_EQ(shell.boxes().size(), 1u);
}

}  // namespace
}  // namespace tamrix::tests
