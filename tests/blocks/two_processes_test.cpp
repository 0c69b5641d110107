// Host and plug-in in two processes that share nothing but the names of the blocks.
// POSIX only: it forks.
#include "blocks/expected_blocks.h"
#include "entry/entry_methods.h"
#include "session/session.h"
#include "support/other_process.h"
#include "support/plug_in_fixture.h"
#include "support/scripted_shell.h"
#include "support/shared_objects.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <string>
#include <vector>

namespace tamrix {
namespace {

using tests::expected_block;
using tests::expected_small_blocks;
using names = std::vector<std::string>;

struct two_processes : testing::Test {
    const std::string prefix = tests::fresh_name_space();
    tests::scripted_shell shell;
    session plug_in{shell, prefix};
    module_variables variables;
    entry_methods methods{plug_in, variables};
    tests::other_process host;

    std::string small(std::string_view name) const { return prefix + "qorfan" + std::string{name} + "3"; }
    std::string big(const std::string& name) const { return prefix + "qorfan" + name; }
    void attach()
    {
        std::int16_t num = 3;
        ASSERT_TRUE(methods.bufcomopt(num).ok());
        ASSERT_TRUE(methods.buffercomopt(num).ok());
        EXPECT_EQ(shell.boxes(), names{});
    }
};

TEST_F(two_processes, share_the_blocks_that_the_host_made)
{
    for (const expected_block& block : expected_small_blocks)
        ASSERT_EQ(host.order("create " + small(block.name) + " " + std::to_string(block.mapped_bytes)), "ok");
    ASSERT_EQ(host.order("create " + big("ibuffer") + " 6296"), "ok");
    ASSERT_EQ(host.order("create " + big("ibuffer66") + " 40"), "ok");
    host.order("write " + small("buflength") + " 0 00 10 00 00");
    host.order("write " + small("tlength") + " 0 78 56 34 12");
    host.order("write " + small("bvcc") + " 2 0c fe");
    host.order("write " + small("usbable") + " 0 ff ff");
    host.order("write " + small("wltbigendbuf") + " 8 00 00 00 00 00 00 f8 3f");
    host.order("write " + big("ibuffer") + " 6295 a5");
    attach();

    EXPECT_EQ(plug_in.blocks.tlength(0), 0x12345678);
    EXPECT_EQ(plug_in.blocks.bvcc(1), -500);
    EXPECT_TRUE(is_true(plug_in.blocks.usbable(0)));
    EXPECT_FALSE(is_true(plug_in.blocks.usbable(1)));
    EXPECT_EQ(plug_in.blocks.wltbigendbuf(1), 1.5);
    EXPECT_EQ(plug_in.blocks.ibuffer(6295), 0xA5);

    plug_in.blocks.prgresult(0) = 3;
    plug_in.blocks.ramlg(2) = 0x01020304;
    plug_in.blocks.algobuf(131071) = 0x77;
    plug_in.blocks.ibuffer(0) = 0x11;
    EXPECT_EQ(host.order("read " + small("prgresult") + " 0 3"), "03 00 00");
    EXPECT_EQ(host.order("read " + small("ramlg") + " 8 4"), "04 03 02 01");
    EXPECT_EQ(host.order("read " + small("algobuf") + " 131070 2"), "00 77");
    EXPECT_EQ(host.order("read " + big("ibuffer") + " 0 2"), "11 00");

    host.order("write " + small("tlength") + " 0 01 00 00 00");
    EXPECT_EQ(plug_in.blocks.tlength(0), 1) << "what the host writes later is seen at once";

    for (const expected_block& block : expected_small_blocks)
        EXPECT_EQ(host.order("remove " + small(block.name)), "ok");
    EXPECT_EQ(host.order("remove " + big("ibuffer")), "ok");
    EXPECT_EQ(host.order("remove " + big("ibuffer66")), "ok");
    EXPECT_EQ(tests::shared_objects(prefix), names{}) << "the plug-in made none of its own";
}

TEST_F(two_processes, share_every_block_that_the_plug_in_made)
{
    attach();
    for (const expected_block& block : expected_small_blocks)
        EXPECT_EQ(host.order("size " + small(block.name)), std::to_string(block.mapped_bytes)) << block.name;
    EXPECT_EQ(host.order("size " + big("ibuffer")), "2200");
    EXPECT_EQ(host.order("size " + big("ibuffer66")), "40");

    // The first two bytes of each block, first written here and read there, then the other way round.
    int next = 1;
    for (block_base* view : plug_in.blocks.small()) {
        auto* bytes = static_cast<std::uint8_t*>(view->mapping()->BaseAddress());
        bytes[0] = static_cast<std::uint8_t>(next++);
    }
    next = 1;
    for (const expected_block& block : expected_small_blocks) {
        char expected[3];
        std::snprintf(expected, sizeof expected, "%02x", static_cast<unsigned>(next++));
        EXPECT_EQ(host.order("read " + small(block.name) + " 0 1"), expected) << block.name;
        host.order("write " + small(block.name) + " 1 " + expected);
    }
    next = 1;
    for (block_base* view : plug_in.blocks.small()) {
        EXPECT_EQ(static_cast<std::uint8_t*>(view->mapping()->BaseAddress())[1], next++) << view->name();
    }
}

TEST_F(two_processes, lose_the_names_that_the_plug_in_made_when_it_leaves)
{
    {
        session short_lived{shell, prefix};
        short_lived.blocks.attachsmall(3);
        EXPECT_EQ(host.order("size " + small("ibuf2")), "33000");
    }
    EXPECT_EQ(host.order("size " + small("ibuf2")), "0");
    EXPECT_EQ(tests::shared_objects(prefix), names{});
}

TEST_F(two_processes, keep_the_objects_that_the_host_made_when_the_plug_in_leaves)
{
    ASSERT_EQ(host.order("create " + small("ibuf2") + " 33000"), "ok");
    {
        session short_lived{shell, prefix};
        short_lived.blocks.attachsmall(3);
        short_lived.blocks.ibuf2(32999) = 9;
    }
    EXPECT_EQ(tests::shared_objects(prefix), names{small("ibuf2")});
    EXPECT_EQ(host.order("read " + small("ibuf2") + " 32999 1"), "09");
    EXPECT_EQ(host.order("remove " + small("ibuf2")), "ok");
}

TEST_F(two_processes, can_change_the_length_of_the_buffer_between_release_and_attach)
{
    attach();
    host.order("write " + small("buflength") + " 0 00 00 01 00");
    EXPECT_TRUE(methods.freesharebufferopt().ok());
    EXPECT_EQ(host.order("size " + big("ibuffer")), "0");
    std::int16_t num = 3;
    EXPECT_TRUE(methods.buffercomopt(num).ok());
    EXPECT_EQ(host.order("size " + big("ibuffer")), std::to_string(0x10898));
    plug_in.blocks.ibuffer(0x10897) = 0x42;
    EXPECT_EQ(host.order("read " + big("ibuffer") + " 67735 1"), "42");
}

}  // namespace
}  // namespace tamrix
