#include "host/host_blocks.h"

#include "blocks/sharemap.h"
#include "support/name_space.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <filesystem>
#include <functional>
#include <stdexcept>

namespace tamrix::host {

using testing::HasSubstr;
using tests::fresh_name_space;

namespace {

constexpr text_heap_functions heap{tamrix_text_new, tamrix_text_get, tamrix_text_free};

std::size_t objects_with(const std::string& name_space)
{
    std::size_t count = 0;
    for (const auto& entry : std::filesystem::directory_iterator{"/dev/shm"}) {
        count += entry.path().filename().string().starts_with(name_space);
    }
    return count;
}

std::string error_of(const std::function<void()>& action)
{
    try {
        action();
    } catch (const std::exception& error) {
        return error.what();
    }
    return "no error";
}

}  // namespace

TEST(host_blocks, creates_the_60_small_blocks_and_takes_them_away_at_the_end)
{
    const std::string name_space = fresh_name_space();
    {
        const host_blocks blocks{name_space, 3, heap};
        EXPECT_EQ(objects_with(name_space), 60u);
        EXPECT_TRUE(std::filesystem::exists("/dev/shm/" + name_space + "qorfantlength3"));
        EXPECT_EQ(blocks.num(), 3);
    }
    EXPECT_EQ(objects_with(name_space), 0u);
}

TEST(host_blocks, the_plug_in_sees_what_the_host_wrote_and_the_other_way_round)
{
    const std::string name_space = fresh_name_space();
    host_blocks blocks{name_space, 1, heap};
    sharemap views{name_space, [] { FAIL(); }};
    views.attachsmall(1);
    blocks.value<std::int32_t>("tlength") = 0x8000;
    blocks.value<std::uint8_t>("wordmode", 1) = 7;
    blocks.value<double>("wltbigendbuf", 3) = 2.5;
    blocks.value<std::int16_t>("usbable", 9) = bool16_true;
    EXPECT_EQ(views.tlength(0), 0x8000);
    EXPECT_EQ(views.wordmode(1), 7);
    EXPECT_EQ(views.wltbigendbuf(3), 2.5);
    EXPECT_EQ(views.usbable(9), bool16_true);
    views.modeltype(0) = 40;
    views.MainRtstr(0) = "told by the plug-in";
    EXPECT_EQ(blocks.value<std::int16_t>("modeltype"), 40);
    EXPECT_EQ(blocks.text("MainRtstr"), "told by the plug-in");
}

TEST(host_blocks, every_element_of_every_block_can_be_reached)
{
    host_blocks blocks{fresh_name_space(), 0, heap};
    for (const block_info& line : small_blocks) {
        switch (const std::size_t last = line.count - 1; line.kind) {
        case element::byte: blocks.value<std::uint8_t>(line.name, last) = 1; break;
        case element::int16:
        case element::boolean: blocks.value<std::int16_t>(line.name, last) = 1; break;
        case element::int32: blocks.value<std::int32_t>(line.name, last) = 1; break;
        case element::real: blocks.value<double>(line.name, last) = 1; break;
        case element::text: blocks.set_text(line.name, last, "last"); break;
        }
    }
    EXPECT_EQ(blocks.value<std::uint8_t>("ICnum", 79), 1);
    EXPECT_EQ(blocks.text("ppin", 12), "last");
}

TEST(host_blocks, a_wrong_name_index_or_type_is_told)
{
    host_blocks blocks{fresh_name_space(), 0, heap};
    EXPECT_EQ(error_of([&] { blocks.value<std::uint8_t>("nothing"); }), "no shared block nothing");
    EXPECT_EQ(error_of([&] { blocks.value<std::int32_t>("tlength", 4); }), "shared block tlength has no element 4");
    EXPECT_EQ(error_of([&] { blocks.value<std::int16_t>("tlength"); }), "shared block tlength is of another type");
    EXPECT_EQ(error_of([&] { blocks.value<std::int32_t>("wtype"); }), "shared block wtype is of another type");
    EXPECT_EQ(error_of([&] { blocks.set_text("tlength", 0, "x"); }), "shared block tlength is of another type");
    EXPECT_EQ(error_of([&] { static_cast<void>(blocks.text("wtype", 3)); }), "shared block wtype has no element 3");
}

TEST(host_blocks, a_text_replaces_and_frees_the_one_that_stood_there)
{
    const std::size_t before = tamrix_text_count();
    {
        host_blocks blocks{fresh_name_space(), 0, heap};
        EXPECT_EQ(blocks.text("wtype"), "");
        blocks.set_text("wtype", 0, "27C256");
        blocks.set_text("wtype", 0, "Grün, 绿");
        blocks.set_text("wtype", 1, "other");
        EXPECT_EQ(blocks.text("wtype"), "Grün, 绿");
        EXPECT_EQ(tamrix_text_count(), before + 2);
        blocks.set_text("wtype", 1, "");
        EXPECT_EQ(blocks.text("wtype", 1), "");
        EXPECT_EQ(tamrix_text_count(), before + 1);
    }
    EXPECT_EQ(tamrix_text_count(), before);
}

TEST(host_blocks, texts_in_blocks_of_another_owner_are_left_alone_at_the_end)
{
    const std::string name_space = fresh_name_space();
    host_blocks owner{name_space, 0, heap};
    owner.set_text("wtype", 0, "kept");
    {
        const host_blocks guest{name_space, 0, heap};
        EXPECT_EQ(guest.text("wtype"), "kept");
    }
    EXPECT_EQ(owner.text("wtype"), "kept");
}

TEST(host_blocks, the_buffer_has_the_length_and_the_margin)
{
    const std::string name_space = fresh_name_space();
    host_blocks blocks{name_space, 0, heap};
    EXPECT_TRUE(blocks.buffer().empty());
    blocks.create_buffer(0x1000);
    EXPECT_EQ(blocks.value<std::int32_t>("buflength"), 0x1000);
    EXPECT_EQ(blocks.buffer().size(), 0x1000u + 2200);
    sharemap views{name_space, [] { FAIL(); }};
    views.attachsmall(0);
    views.attachbig(ibuffer_bytes(views.buflength(0)));
    blocks.buffer().back() = 0x5A;
    EXPECT_EQ(views.ibuffer(0x1000 + 2199), 0x5A);
    EXPECT_EQ(views.ibuffer66.count(), 15u);
}

TEST(host_blocks, a_buffer_is_replaced_by_one_of_another_length)
{
    const std::string name_space = fresh_name_space();
    host_blocks blocks{name_space, 0, heap};
    blocks.create_buffer(0x1000);
    blocks.buffer()[0] = 1;
    blocks.create_buffer(0x100000);
    EXPECT_EQ(blocks.buffer().size(), 0x100000u + 2200);
    EXPECT_EQ(blocks.buffer()[0], 0);
    blocks.drop_buffer();
    EXPECT_TRUE(blocks.buffer().empty());
    EXPECT_EQ(objects_with(name_space), 60u);
}

TEST(host_blocks, a_smaller_buffer_of_another_program_is_told)
{
    const std::string name_space = fresh_name_space();
    host_blocks first{name_space, 0, heap}, second{name_space, 1, heap};
    first.create_buffer(100);
    EXPECT_EQ(error_of([&] { second.create_buffer(1000000); }),
              "the shared buffer belongs to another program and is too small: it has 4096 bytes, 1002200 are needed");
    EXPECT_TRUE(second.buffer().empty());
    second.create_buffer(50);
    first.buffer()[7] = 9;
    EXPECT_EQ(second.buffer()[7], 9);
}

TEST(host_blocks, a_negative_length_makes_no_buffer)
{
    host_blocks blocks{fresh_name_space(), 0, heap};
    EXPECT_EQ(error_of([&] { blocks.create_buffer(-1); }), "a buffer of -1 bytes");
}

TEST(host_blocks, a_name_that_cannot_be_used_is_told)
{
    const std::string name_space = "no/such/folder/";
    EXPECT_THAT(error_of([&] { const host_blocks blocks(name_space, 0, heap); }),
                HasSubstr("shared memory no/such/folder/qorfanibuf10: "));
}

TEST(host_blocks, without_their_names_the_blocks_go_on_and_nobody_joins)
{
    const std::string name_space = fresh_name_space();
    host_blocks blocks{name_space, 0, heap};
    blocks.create_buffer(100);
    sharemap views{name_space, [] { FAIL(); }};
    views.attachsmall(0);
    views.attachbig(ibuffer_bytes(100));
    blocks.withdraw_names();
    EXPECT_EQ(objects_with(name_space), 0u);
    blocks.buffer()[5] = 6;
    EXPECT_EQ(views.ibuffer(5), 6);
    EXPECT_EQ(first_free_instance(name_space), 0);
}

TEST(first_free_instance, is_the_lowest_number_that_nobody_uses)
{
    const std::string name_space = fresh_name_space();
    EXPECT_EQ(first_free_instance(name_space), 0);
    const host_blocks zero{name_space, 0, heap}, two{name_space, 2, heap};
    EXPECT_EQ(first_free_instance(name_space), 1);
    const host_blocks one{name_space, 1, heap};
    EXPECT_EQ(first_free_instance(name_space), 3);
}

}  // namespace tamrix::host
