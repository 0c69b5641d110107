// Blocks that can be neither opened nor created.
// POSIX only: looks at /dev/shm; tests/windows has the like.
#include "blocks/shared_blocks.h"
#include "entry/entry_methods.h"
#include "session/session.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <stdexcept>
#include <string>

namespace tamrix {
namespace {

using tests::ask;
using tests::failure_text;
using tests::foreign_object;
using tests::names;
using tests::plain_object;
using tests::shared_objects;

using failing_blocks = tests::shared_blocks;

/// A name that is taken by something that is no shared object.
struct taken_name {
    explicit taken_name(const std::string& name) : path{"/dev/shm/" + name} { std::filesystem::create_directory(path); }
    ~taken_name() { std::filesystem::remove(path); }
    taken_name(const taken_name&) = delete;
    std::string path;
};

TEST_F(failing_blocks, of_which_one_fails_attach_all_the_others_after_one_box)
{
    const taken_name taken{object("ibuf11")};
    session plug_in{shell, prefix};
    plug_in.blocks.attachsmall(1);
    EXPECT_EQ(shell.boxes(), names{failure_text});
    for (block_base* view : plug_in.blocks.small()) {
        EXPECT_EQ(view->attached(), view != &plug_in.blocks.ibuf1) << view->name();
    }
    plug_in.blocks.ibuf1(0) = 3;
    EXPECT_EQ(plug_in.blocks.ibuf1(0), 3);
    EXPECT_THROW(ask(plug_in.blocks.ibuf1, 1), subscript_error);
}

TEST_F(failing_blocks, of_which_two_fail_show_a_box_for_each)
{
    const taken_name first{object("tlength7")}, second{object("algobuf7")};
    session plug_in{shell, prefix};
    plug_in.blocks.attachsmall(7);
    EXPECT_EQ(shell.boxes(), (names{failure_text, failure_text}));
    EXPECT_EQ(shared_objects(prefix).size(), 60u);
}

TEST_F(failing_blocks, that_fail_lose_what_their_private_element_held)
{
    const taken_name taken{object("tlength1")};
    session plug_in{shell, prefix};
    plug_in.blocks.tlength(0) = 5;
    plug_in.blocks.attachsmall(1);
    EXPECT_EQ(plug_in.blocks.tlength(0), 0);
}

TEST_F(failing_blocks, that_failed_attach_at_the_next_call)
{
    session plug_in{shell, prefix};
    {
        const taken_name taken{object("ibuffer")};
        plug_in.blocks.attachbig(5000);
        EXPECT_EQ(shell.boxes(), names{failure_text});
        EXPECT_TRUE(plug_in.blocks.ibuffer66.attached());
    }
    plug_in.blocks.attachbig(5000);
    EXPECT_TRUE(plug_in.blocks.ibuffer.attached());
    EXPECT_EQ(shell.boxes().size(), 1u);
}

TEST_F(failing_blocks, that_exist_without_a_byte_fail)
{
    const plain_object empty{object("order1"), 0};
    session plug_in{shell, prefix};
    plug_in.blocks.attachsmall(1);
    EXPECT_EQ(shell.boxes(), names{failure_text});
    EXPECT_FALSE(plug_in.blocks.order.attached());
    EXPECT_EQ(plug_in.blocks.order.count(), 1u);
}

TEST_F(failing_blocks, that_belong_to_another_user_fail)
{
    const foreign_object taken{object("buflength1"), 0666};
    session plug_in{shell, prefix};
    plug_in.blocks.attachsmall(1);
    EXPECT_EQ(shell.boxes(), names{failure_text});
    EXPECT_FALSE(plug_in.blocks.buflength.attached());
    EXPECT_TRUE(plug_in.blocks.Language.attached());
}

/// A screen on which no box can be shown.
struct broken_screen final : forms::shell {
    forms::answer box(const forms::message_box&) override { throw std::runtime_error{"no display"}; }
    void beep() override {}
    void doevents() override {}
    double seconds() override { return 0; }
    void run_modal(forms::form&) override {}
};

TEST_F(failing_blocks, that_fail_where_no_box_can_be_shown_are_told_on_the_terminal_and_do_not_stop_the_others)
{
    const taken_name first{object("ibuf11")}, second{object("order1")};
    broken_screen screen;
    session plug_in{screen, prefix};
    testing::internal::CaptureStderr();
    plug_in.blocks.attachsmall(1);
    EXPECT_EQ(testing::internal::GetCapturedStderr(), std::string{failure_text} + "\n" + failure_text + "\n");
    EXPECT_TRUE(plug_in.blocks.ubuf1.attached());
    EXPECT_TRUE(plug_in.blocks.algobuf.attached());
}

TEST_F(failing_blocks, that_all_fail_show_62_boxes_and_no_error)
{
    session plug_in{shell, prefix + "no/such/folder/"};
    module_variables variables;
    entry_methods methods{plug_in, variables};
    std::int16_t num = 1;
    EXPECT_TRUE(methods.bufcomopt(num).ok());
    EXPECT_EQ(shell.boxes().size(), 60u);
    EXPECT_TRUE(methods.buffercomopt(num).ok());
    EXPECT_EQ(shell.boxes(), names(62, failure_text));
    for (block_base* view : all(plug_in.blocks)) {
        EXPECT_FALSE(view->attached());
        EXPECT_EQ(view->count(), 1u);
    }
    EXPECT_TRUE(methods.freesharebufferopt().ok());
}

TEST_F(failing_blocks, of_a_buffer_with_a_senseless_length_fail)
{
    session plug_in{shell, prefix};
    module_variables variables;
    entry_methods methods{plug_in, variables};
    std::int16_t num = 1;
    methods.bufcomopt(num);
    plug_in.blocks.buflength(0) = -5000;
    EXPECT_TRUE(methods.buffercomopt(num).ok());
    EXPECT_EQ(shell.boxes(), names{failure_text});
    EXPECT_EQ(plug_in.blocks.ibuffer.count(), 1u);
}

}  // namespace
}  // namespace tamrix
