#include "files/memory_block.h"

#include <algorithm>
#include <limits>
#include <new>
#include <span>
#include <utility>

#include <gtest/gtest.h>

namespace tamrix::tests {
namespace {

TEST(memory_block, of_any_length_is_empty_and_takes_bytes_up_to_its_end)
{
    for (const std::size_t length : {std::size_t{1}, std::size_t{100'000}, (std::size_t{2} << 20) + 1}) {
        const memory_block block{length};
        const std::span bytes{block.data(), length};
        EXPECT_TRUE(std::ranges::all_of(bytes, [](std::uint8_t byte) { return byte == 0; })) << length;
        std::ranges::fill(bytes, std::uint8_t{0xA5});
        EXPECT_EQ(bytes.back(), 0xA5);
    }
}

TEST(memory_block, is_handed_on_with_its_bytes)
{
    memory_block first{10};
    first.data()[3] = 7;
    memory_block second{std::move(first)};
    EXPECT_EQ(second.data()[3], 7);
    memory_block third;
    third = std::move(second);
    EXPECT_EQ(third.data()[3], 7);
}

TEST(memory_block, that_no_system_has_is_refused)
{
    for (const std::uint64_t length : {std::numeric_limits<std::uint64_t>::max(), std::uint64_t{1} << 62}) {
        EXPECT_THROW(memory_block{length}, std::bad_alloc);
    }
}

}  // namespace
}  // namespace tamrix::tests
