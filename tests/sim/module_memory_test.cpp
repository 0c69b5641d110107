// What passes between the memories of a unit and its modules.
#include "sim/module_bench.h"

#include <gtest/gtest.h>

namespace tamrix::tests {

namespace {

TEST(module_memory, holds_what_the_test_of_a_sound_module_writes)
{
    module_bench b;
    for (std::uint8_t slot = 1; slot <= 4; ++slot) {
        b.reset(slot);
        b.start(slot);
        EXPECT_TRUE(b.bad_blocks(slot, random_memory(slot)).empty()) << int{slot};
    }
    EXPECT_EQ(b.fetch(1, 15).back(), random_memory(1).back()) << "the tests of the others changed nothing";
    EXPECT_TRUE(b.notes().empty() && b.hazards().empty());
}

TEST(module_memory, shows_a_bad_bank_in_its_block_only)
{
    module_bench b;
    b.programmer.add_fault("bad ram bank 3 of module 2");
    EXPECT_TRUE(b.bad_blocks(1, random_memory(1)).empty());
    EXPECT_EQ(b.bad_blocks(2, random_memory(2)), std::vector<int>{3});
    b.programmer.clear_faults();
    EXPECT_TRUE(b.bad_blocks(2, random_memory(2)).empty());
}

TEST(module_memory, is_read_by_way_of_the_memory_of_the_unit)
{
    module_bench b;
    b.programmer.add_fault("bad ram bank 7");
    EXPECT_EQ(b.bad_blocks(4, random_memory(4)), std::vector<int>{7});
}

TEST(module_memory, of_a_module_that_is_missing_or_was_reset_passes_for_bad)
{
    module_bench b;
    b.programmer.add_fault("module 3 missing");
    b.reset(2);
    for (const std::uint8_t slot : {2, 3}) EXPECT_EQ(b.bad_blocks(slot, random_memory(slot)).size(), 16u) << int{slot};
    EXPECT_FALSE(b.open_passage(2, 0));
    EXPECT_FALSE(b.open_passage(3, 0));
    EXPECT_FALSE(b.open_passage(5, 0));
}

TEST(module_memory, passages_fill_in_the_order_in_which_they_were_opened)
{
    module_bench b;
    EXPECT_TRUE(b.open_passage(2, 4, 3));
    EXPECT_TRUE(b.open_passage(1, 0, 2));
    EXPECT_TRUE(b.open_passage(2, 0, 4));
    b.write({1, 2});
    b.write({3, 4, 5, 6});
    b.write({7, 8, 9});
    EXPECT_EQ(bytes(b.fetch(2, 4)).front(), 1);
    const auto first = [&](std::uint8_t slot, std::uint8_t block) {
        bytes got = b.fetch(slot, block);
        got.resize(5);
        return got;
    };
    EXPECT_EQ(first(2, 4), (bytes{1, 2, 3, 255, 255}));
    EXPECT_EQ(first(1, 0), (bytes{4, 5, 255, 255, 255}));
    EXPECT_EQ(first(2, 0), (bytes{6, 7, 8, 9, 255}));
}

TEST(module_memory, what_no_passage_takes_goes_on_in_the_memory_of_the_unit)
{
    module_bench b;
    b.bulk(0, 128, 1, 0, 1);
    b.write({10, 11});
    b.open_passage(1, 0, 3);
    b.write({1, 2, 3, 12});
    b.write({13});
    b.bulk(0, 64, 1, 0, 1);
    EXPECT_EQ(b.read_block(5), (bytes{10, 11, 12, 13, 255}));
}

TEST(module_memory, a_bulk_frame_for_the_unit_closes_all_passages)
{
    for (const std::uint8_t direction : {0, 64, 128}) {
        module_bench b;
        b.open_passage(1, 0);
        b.bulk(2, direction, 1, 0, 1);
        b.bulk(0, 128, 1, 0, 1);
        b.write({1, 2, 3});
        b.bulk(0, 64, 1, 0, 1);
        EXPECT_EQ(b.read_block(3), (bytes{1, 2, 3}));
    }
}

TEST(module_memory, the_reset_of_a_module_closes_its_own_passages)
{
    module_bench b;
    b.open_passage(1, 0, 2);
    b.open_passage(2, 0, 2);
    b.reset(1);
    b.write({1, 2});
    EXPECT_EQ(b.fetch(2, 0)[1], 2);
}

TEST(module_memory, a_load_step_needs_the_frame_right_before_it)
{
    module_bench b;
    EXPECT_FALSE(b.load_step(0, 65536));
    b.bulk(0, 128, 1, 170, 1);
    b.frame({9, 0});
    EXPECT_FALSE(b.load_step(0, 65536));
    b.bulk(0, 128, 1, 170, 1);
    EXPECT_FALSE(b.load_step(1, 32768)) << "the other direction";
    EXPECT_TRUE(b.open_passage(1, 0));
    EXPECT_FALSE(b.load_step(0, 65536)) << "one frame announces one step";
    b.frame({92, 0, 1, 0});
    EXPECT_EQ(b.notes(),
              (std::vector<std::string>{"a load step that no frame announced", "a load step that no frame announced",
                                        "a load step that no frame announced", "a load step that no frame announced",
                                        "unknown command 92"}));
}

TEST(module_memory, a_passage_beyond_its_end_drops_the_rest)
{
    module_bench b;
    b.open_passage(1, 15);
    b.write(bytes(65536, 0x21));
    EXPECT_EQ(b.fetch(1, 15), bytes(32768, 0x21));
    EXPECT_EQ(b.notes(), std::vector<std::string>{"a passage beyond the end of a module's memory"});
}

TEST(module_memory, the_unit_has_16_banks_like_its_modules)
{
    for (const int model : {39, 52, 54}) {
        module_bench b{model};
        b.frame({9, 1});
        b.device.replycheck(3);
        EXPECT_EQ(b.ibuf1[0], 1) << model;
    }
}

}  // namespace
}  // namespace tamrix::tests
