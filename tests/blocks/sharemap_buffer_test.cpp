// POSIX only: looks at /dev/shm. The blocks of the buffer: how large they are, and what is there without them.
#include "blocks/shared_blocks.h"
#include "blocks/sharemap.h"
#include "entry/entry_methods.h"
#include "session/session.h"

#include <gtest/gtest.h>

#include <cstdint>
#include <string>

namespace tamrix {
namespace {

using tests::ask;
using tests::names;
using tests::shared_blocks;
using tests::shared_objects;

TEST_F(shared_blocks, of_the_buffer_refuse_elements_outside)
{
    session plug_in{shell, prefix};
    plug_in.blocks.attachbig(5000);
    EXPECT_NO_THROW(ask(plug_in.blocks.ibuffer, 4999));
    EXPECT_THROW(ask(plug_in.blocks.ibuffer, 5000), subscript_error);
    EXPECT_THROW(ask(plug_in.blocks.ibuffer, -1), subscript_error);
    EXPECT_NO_THROW(ask(plug_in.blocks.ibuffer66, 14));
    EXPECT_THROW(ask(plug_in.blocks.ibuffer66, 15), subscript_error);
    EXPECT_THROW(ask(plug_in.blocks.ibuffer66, -1), subscript_error);
}

/// The host asks for a buffer of `buflength` bytes; `bytes` of it are mapped.
void expect_mapped(session& plug_in, std::int32_t buflength, std::uint32_t bytes, const std::string& object)
{
    module_variables variables;
    entry_methods methods{plug_in, variables};
    std::int16_t num = 1;
    methods.bufcomopt(num);
    plug_in.blocks.buflength(0) = buflength;
    EXPECT_TRUE(methods.buffercomopt(num).ok());
    EXPECT_EQ(shared_blocks::size_of(object), bytes);
    EXPECT_EQ(plug_in.blocks.ibuffer.count(), bytes);
    plug_in.blocks.ibuffer(0) = 1;
    plug_in.blocks.ibuffer(bytes - 1) = 2;
    EXPECT_EQ(plug_in.blocks.ibuffer(bytes - 1), 2);
    EXPECT_THROW(ask(plug_in.blocks.ibuffer, bytes), subscript_error);
}

TEST_F(shared_blocks, map_the_whole_buffer_and_its_margin_just_below_the_threshold)
{
    session plug_in{shell, prefix};
    expect_mapped(plug_in, 0x107FFFFF, 0x10800897, object("ibuffer"));
    EXPECT_EQ(shell.boxes(), names{});
}

TEST_F(shared_blocks, map_the_fixed_size_from_the_threshold_on)
{
    session plug_in{shell, prefix};
    expect_mapped(plug_in, 0x10800000, 0x8400898, object("ibuffer"));
}

TEST_F(shared_blocks, of_the_buffer_are_private_again_after_their_release)
{
    session plug_in{shell, prefix};
    plug_in.blocks.attachbig(5000);
    plug_in.blocks.ibuffer(0) = 7;
    plug_in.blocks.releasebig();
    EXPECT_EQ(shared_objects(prefix), names{});
    for (block_base* view :
         {static_cast<block_base*>(&plug_in.blocks.ibuffer), static_cast<block_base*>(&plug_in.blocks.ibuffer66)}) {
        EXPECT_FALSE(view->attached());
        EXPECT_EQ(view->count(), 1u);
        EXPECT_THROW(ask(*view, 1), subscript_error);
    }
    EXPECT_EQ(plug_in.blocks.ibuffer(0), 0) << "the private element is not the shared one";
    plug_in.blocks.ibuffer(0) = 9;
    EXPECT_EQ(plug_in.blocks.ibuffer(0), 9);
    EXPECT_EQ(plug_in.blocks.ibuffer.span().size(), 1u);
}

TEST_F(shared_blocks, can_be_released_twice_and_before_they_are_attached)
{
    session plug_in{shell, prefix};
    plug_in.blocks.releasebig();
    plug_in.blocks.attachbig(5000);
    plug_in.blocks.releasebig();
    plug_in.blocks.releasebig();
    EXPECT_EQ(plug_in.blocks.ibuffer.count(), 1u);
}

TEST_F(shared_blocks, of_the_buffer_take_a_new_size_after_a_release)
{
    session plug_in{shell, prefix};
    module_variables variables;
    entry_methods methods{plug_in, variables};
    std::int16_t num = 1;
    methods.bufcomopt(num);
    plug_in.blocks.buflength(0) = 0x1000;
    methods.buffercomopt(num);
    EXPECT_EQ(plug_in.blocks.ibuffer.count(), 0x1898u);
    EXPECT_TRUE(methods.freesharebufferopt().ok());
    plug_in.blocks.buflength(0) = 0x10000;
    methods.buffercomopt(num);
    EXPECT_EQ(plug_in.blocks.ibuffer.count(), 0x10898u);
    EXPECT_NO_THROW(ask(plug_in.blocks.ibuffer, 0x10897));
    EXPECT_TRUE(plug_in.blocks.tlength.attached()) << "the small blocks stay";
}

}  // namespace
}  // namespace tamrix
