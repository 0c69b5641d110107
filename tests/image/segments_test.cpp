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

TEST(segment_list, is_compared_as_a_list_of_all_addresses_is)
{
    std::mt19937 random{2};
    for (int run = 0; run < 500; ++run) {
        segment_list one, other;
        std::map<std::uint64_t, bool> in_one, in_other;
        for (int i = 0; i < 6; ++i) {
            const memory_segment a{random() % 60, random() % 9}, b{random() % 60, random() % 9};
            one.add(a);
            other.add(b);
            for (std::uint64_t at = a.first; at < a.end(); ++at) in_one[at] = true;
            for (std::uint64_t at = b.first; at < b.end(); ++at) in_other[at] = true;
        }
        segment_list left;
        std::optional<memory_segment> common;
        for (const auto& [at, filled] : in_one) {
            if (!in_other.contains(at)) {
                left.add({at, 1});
            } else if (!common) {
                common = memory_segment{at, 1};
            } else if (common->end() == at) {
                ++common->length;
            }
        }
        const auto found = without(one, other);
        ASSERT_EQ(std::vector(found.all().begin(), found.all().end()),
                  std::vector(left.all().begin(), left.all().end()));
        ASSERT_EQ(first_common(one, other), common) << run;
    }
}
