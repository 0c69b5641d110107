// POSIX only: looks at /dev/shm; tests/windows has the like.
#include "blocks/sharemap.h"

#include "blocks/expected_blocks.h"
#include "blocks/shared_blocks.h"
#include "entry/entry_methods.h"
#include "session/session.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace tamrix {
namespace {

using tests::ask;
using tests::expected_small_blocks;
using tests::names;
using tests::plain_object;
using tests::shared_blocks;
using tests::shared_objects;

TEST_F(shared_blocks, are_created_with_the_names_and_sizes_of_the_table)
{
    session plug_in{shell, prefix};
    plug_in.blocks.attachsmall(1);
    EXPECT_EQ(shared_objects(prefix).size(), 60u);
    for (const auto& line : expected_small_blocks)
        EXPECT_EQ(size_of(object(std::string{line.name} + "1")), line.mapped_bytes) << line.name;
    plug_in.blocks.attachbig(5000);
    EXPECT_EQ(shared_objects(prefix).size(), 62u);
    EXPECT_EQ(size_of(object("ibuffer")), 5000u);
    EXPECT_EQ(size_of(object("ibuffer66")), 40u);
    EXPECT_EQ(shell.boxes(), names{});
}

TEST_F(shared_blocks, of_an_instance_end_with_its_number)
{
    for (const int num : {0, 12, 100}) {
        session plug_in{shell, prefix};
        plug_in.blocks.attachsmall(static_cast<std::int16_t>(num));
        const names objects = shared_objects(prefix);
        ASSERT_EQ(objects.size(), 60u);
        EXPECT_TRUE(std::ranges::binary_search(objects, object("ibuf1" + std::to_string(num))));
        for (const std::string& one : objects) EXPECT_TRUE(one.ends_with(std::to_string(num))) << one;
    }
}

TEST_F(shared_blocks, of_two_instances_are_apart_but_for_the_buffer)
{
    session first{shell, prefix}, second{shell, prefix};
    module_variables variables_of_first, variables_of_second;
    entry_methods one{first, variables_of_first}, two{second, variables_of_second};
    std::int16_t num1 = 1, num2 = 2;
    one.bufcomopt(num1);
    two.bufcomopt(num2);
    first.blocks.buflength(0) = second.blocks.buflength(0) = 0x1000;
    one.buffercomopt(num1);
    two.buffercomopt(num2);

    first.blocks.tlength(0) = 5;
    EXPECT_EQ(second.blocks.tlength(0), 0);
    first.blocks.ibuffer(0x1897) = 0xA5;
    EXPECT_EQ(second.blocks.ibuffer(0x1897), 0xA5);
    first.blocks.ibuffer66(14) = 0x5A;
    EXPECT_EQ(second.blocks.ibuffer66(14), 0x5A);
}

TEST_F(shared_blocks, of_one_instance_are_shared_by_two_sessions)
{
    session first{shell, prefix}, second{shell, prefix};
    first.blocks.attachsmall(1);
    second.blocks.attachsmall(1);
    first.blocks.wltbigendbuf(3) = 2.5;
    first.blocks.usbable(9) = bool16_true;
    first.blocks.pwte(3) = -70000;
    EXPECT_EQ(second.blocks.wltbigendbuf(3), 2.5);
    EXPECT_TRUE(is_true(second.blocks.usbable(9)));
    EXPECT_EQ(second.blocks.pwte(3), -70000);
}

TEST_F(shared_blocks, move_to_another_instance_when_they_are_attached_again)
{
    session plug_in{shell, prefix};
    plug_in.blocks.attachsmall(1);
    plug_in.blocks.tlength(0) = 5;
    plug_in.blocks.attachsmall(2);
    EXPECT_EQ(plug_in.blocks.tlength(0), 0);
    for (const std::string& one : shared_objects(prefix)) EXPECT_TRUE(one.ends_with("2")) << one;
}

TEST_F(shared_blocks, have_the_elements_of_the_table_and_refuse_those_outside)
{
    session plug_in{shell, prefix};
    plug_in.blocks.attachsmall(1);
    for (std::size_t i = 0; i < 60; ++i) {
        block_base& view = *plug_in.blocks.small()[i];
        SCOPED_TRACE(std::string{view.name()});
        const std::int64_t count = expected_small_blocks[i].count;
        EXPECT_EQ(view.count(), count);
        EXPECT_TRUE(view.attached());
        for (const std::int64_t outside : {count, std::int64_t{-1}, std::numeric_limits<std::int64_t>::max(),
                                           std::numeric_limits<std::int64_t>::min()}) {
            EXPECT_THROW(ask(view, outside), subscript_error) << outside;
        }
        // Nothing was written, not even where the page goes on after the last element.
        const auto* bytes = static_cast<const std::uint8_t*>(view.mapping()->BaseAddress());
        EXPECT_TRUE(std::all_of(bytes, bytes + view.mapping()->reach_bytes(), [](auto byte) { return byte == 0; }));
        EXPECT_NO_THROW(ask(view, 0));
        EXPECT_NO_THROW(ask(view, count - 1));
    }
}

TEST_F(shared_blocks, tell_the_block_and_the_index_of_a_refused_element)
{
    session plug_in{shell, prefix};
    plug_in.blocks.attachsmall(1);
    try {
        plug_in.blocks.tlength(4) = 1;
        ADD_FAILURE();
    } catch (const subscript_error& error) {
        EXPECT_STREQ(error.what(), "subscript out of range: tlength(4)");
    }
}

TEST_F(shared_blocks, give_the_last_element_although_less_was_asked_for)
{
    session plug_in{shell, prefix};
    plug_in.blocks.attachsmall(1);
    EXPECT_EQ(size_of(object("ICnum1")), 40u);
    plug_in.blocks.ICnum(79) = 9;
    EXPECT_EQ(plug_in.blocks.ICnum(79), 9);
    EXPECT_EQ(plug_in.blocks.ICnum.span().size(), 80u);
    EXPECT_EQ(size_of(object("ppin1")), 40u);
    plug_in.blocks.ppin(12) = "P13";
    EXPECT_EQ(plug_in.blocks.ppin(12).str(), "P13");
    plug_in.blocks.ppin(12) = "";
}

TEST_F(shared_blocks, that_exist_are_mapped_as_they_stand)
{
    const plain_object tlength{object("tlength1"), 40}, ubuf2{object("ubuf21"), 10000};
    tlength.bytes()[0] = 0x34;
    tlength.bytes()[1] = 0x12;
    session plug_in{shell, prefix};
    plug_in.blocks.attachsmall(1);
    EXPECT_EQ(plug_in.blocks.tlength(0), 0x1234);
    plug_in.blocks.ubuf2(299) = 7;
    EXPECT_EQ(ubuf2.bytes()[299], 7);
    EXPECT_EQ(plug_in.blocks.ubuf2.count(), 300u) << "the count is the table's, however large the object is";
    EXPECT_EQ(size_of(object("ubuf21")), 10000u);
}

TEST_F(shared_blocks, that_exist_with_fewer_pages_than_their_view_refuse_what_lies_behind)
{
    const plain_object ibuf2{object("ibuf21"), 40}, algobuf{object("algobuf1"), 4097};
    session plug_in{shell, prefix};
    plug_in.blocks.attachsmall(1);
    EXPECT_EQ(plug_in.blocks.ibuf2.count(), 33000u);
    EXPECT_NO_THROW(ask(plug_in.blocks.ibuf2, 4095));
    EXPECT_THROW(ask(plug_in.blocks.ibuf2, 4096), subscript_error);
    EXPECT_THROW(ask(plug_in.blocks.ibuf2, 32999), subscript_error);
    EXPECT_EQ(plug_in.blocks.ibuf2.span().size(), 4096u);
    EXPECT_NO_THROW(ask(plug_in.blocks.algobuf, 8191));
    EXPECT_THROW(ask(plug_in.blocks.algobuf, 8192), subscript_error);
    EXPECT_EQ(plug_in.blocks.algobuf.span().size(), 8192u);

    const plain_object ibuffer{object("ibuffer"), 4096};
    plug_in.blocks.attachbig(0x10000);
    EXPECT_NO_THROW(ask(plug_in.blocks.ibuffer, 4095));
    EXPECT_THROW(ask(plug_in.blocks.ibuffer, 4096), subscript_error);
    plug_in.blocks.releasebig();
}

TEST_F(shared_blocks, are_private_with_one_element_before_they_are_attached)
{
    session plug_in{shell, prefix};
    for (block_base* view : all(plug_in.blocks)) {
        SCOPED_TRACE(std::string{view->name()});
        EXPECT_FALSE(view->attached());
        EXPECT_EQ(view->count(), 1u);
        EXPECT_NO_THROW(ask(*view, 0));
        EXPECT_THROW(ask(*view, 1), subscript_error);
        EXPECT_THROW(ask(*view, -1), subscript_error);
    }
}

TEST_F(shared_blocks, go_with_their_session)
{
    {
        session plug_in{shell, prefix};
        plug_in.blocks.attachsmall(1);
        plug_in.blocks.attachbig(5000);
        EXPECT_EQ(shared_objects(prefix).size(), 62u);
    }
    EXPECT_EQ(shared_objects(prefix), names{});
}

TEST_F(shared_blocks, of_five_sessions_at_once_do_not_meet)
{
    std::vector<std::unique_ptr<session>> sessions;
    for (int i = 0; i < 5; ++i) {
        sessions.push_back(std::make_unique<session>(shell, prefix + std::to_string(i) + "-"));
        sessions.back()->blocks.attachsmall(1);
        sessions.back()->blocks.attachbig(5000);
    }
    for (int i = 0; i < 5; ++i) {
        sharemap& blocks = sessions[static_cast<std::size_t>(i)]->blocks;
        blocks.tlength(0) = i;
        blocks.ibuffer(4999) = static_cast<std::uint8_t>(i);
        blocks.MainRtstr(0) = "session " + std::to_string(i);
        sessions[static_cast<std::size_t>(i)]->syspath = std::to_string(i);
    }
    for (int i = 0; i < 5; ++i) {
        sharemap& blocks = sessions[static_cast<std::size_t>(i)]->blocks;
        EXPECT_EQ(blocks.tlength(0), i);
        EXPECT_EQ(blocks.ibuffer(4999), i);
        EXPECT_EQ(blocks.MainRtstr(0).str(), "session " + std::to_string(i));
        EXPECT_EQ(sessions[static_cast<std::size_t>(i)]->syspath, std::to_string(i));
        blocks.MainRtstr(0) = "";
    }
}

TEST_F(shared_blocks, give_the_bytes_of_the_main_area_as_words_times_width)
{
    session plug_in{shell, prefix};
    plug_in.blocks.attachsmall(1);
    plug_in.blocks.tlength(0) = 0x7FFFFFFF;
    plug_in.blocks.wordmode(0) = 4;
    EXPECT_EQ(plug_in.devbytes(), 0x1FFFFFFFC) << "wider than 32 bits";
    plug_in.blocks.wordmode(0) = 2;
    plug_in.blocks.tlength(0) = 0x8000;
    EXPECT_EQ(plug_in.devbytes(), 0x10000) << "recomputed at each use";
}

TEST(booleans, are_true_for_the_pattern_of_all_ones_alone)
{
    EXPECT_TRUE(is_true(bool16_true));
    EXPECT_EQ(static_cast<std::uint16_t>(bool16_true), 0xFFFF);
    EXPECT_FALSE(is_true(bool16_false));
    EXPECT_FALSE(is_true(1));
    EXPECT_FALSE(is_true(-2));
}

}  // namespace
}  // namespace tamrix
