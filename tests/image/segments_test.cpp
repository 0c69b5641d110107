#include "image/segments.h"

#include <map>
#include <optional>
#include <random>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

using namespace tamrix;

TEST(segment_list, joins_what_touches_and_keeps_the_order)
{
    segment_list list;
    EXPECT_FALSE(list.add({0x100, 16}));
    EXPECT_FALSE(list.add({0x110, 16}));
    EXPECT_FALSE(list.add({0, 4}));
    EXPECT_FALSE(list.add({4, 0xFC}));
    EXPECT_FALSE(list.add({0x200, 0}));
    EXPECT_EQ(std::vector(list.all().begin(), list.all().end()), (std::vector<memory_segment>{{0, 0x120}}));
}

TEST(segment_list, says_which_bytes_were_there_as_a_list_of_all_addresses_does)
{
    std::mt19937 random{1};
    for (int run = 0; run < 300; ++run) {
        segment_list list;
        std::map<std::uint64_t, bool> all;
        for (int i = 0; i < 12; ++i) {
            const memory_segment added{random() % 60, random() % 9};
            std::optional<memory_segment> expected;
            for (std::uint64_t at = added.first; at < added.end(); ++at) {
                if (!std::exchange(all[at], true)) continue;
                if (!expected) {
                    expected = memory_segment{at, 1};
                } else if (expected->end() == at) {
                    ++expected->length;
                }
            }
            const auto found = list.add(added);
            ASSERT_EQ(found, expected) << run;
        }
        std::vector<memory_segment> expected;
        for (const auto& [at, filled] : all) {
            if (!expected.empty() && expected.back().end() == at) {
                ++expected.back().length;
            } else {
                expected.push_back({at, 1});
            }
        }
        ASSERT_EQ(std::vector(list.all().begin(), list.all().end()), expected) << run;
        ASSERT_EQ(list.bytes(), all.size());
    }
}
