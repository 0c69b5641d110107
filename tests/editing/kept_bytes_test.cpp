// Bytes that are kept apart, exchanged and cut.
#include "editing/kept_bytes.h"

#include <algorithm>

#include <gtest/gtest.h>

namespace tamrix::tests {
namespace {

using editing::kept_bytes;
using byte_list = std::vector<std::uint8_t>;

/// All of one value but for one byte.
byte_list all_but_one(std::size_t length, std::size_t odd)
{
    byte_list bytes(length, 0x11);
    if (odd < length) bytes[odd] = 0x22;
    return bytes;
}

TEST(kept_bytes, come_back_whichever_byte_is_not_as_the_others)
{
    constexpr std::size_t length = 40;
    for (std::size_t first = 0; first <= length; ++first) {
        for (std::size_t second = 0; second <= length; ++second) {
            byte_list buffer = all_but_one(length, first);
            kept_bytes kept;
            kept.add(0, all_but_one(length, second));
            kept.exchange(buffer);
            ASSERT_EQ(buffer, all_but_one(length, second));
            kept.exchange(buffer);
            ASSERT_EQ(buffer, all_but_one(length, first));
            kept.exchange(buffer);
            ASSERT_EQ(buffer, all_but_one(length, second));
        }
    }
}

TEST(kept_bytes, of_one_value_take_no_memory_however_many_they_are)
{
    kept_bytes kept;
    byte_list buffer(1'000'000, 0xFF);
    kept.add(0, buffer);
    EXPECT_EQ(kept.runs().size(), 1u);
    EXPECT_LT(kept.memory(), 1000u);
    buffer.assign(buffer.size(), 0);
    kept.exchange(buffer);
    EXPECT_EQ(buffer, byte_list(buffer.size(), 0xFF));
    EXPECT_EQ(kept.runs().size(), 1u);
}

TEST(kept_bytes, are_cut_at_any_place)
{
    byte_list all(9000);
    for (std::size_t i = 0; i < all.size(); ++i) all[i] = static_cast<std::uint8_t>(i < 5000 ? 7 : i % 251);
    for (const std::size_t place : {0, 1, 4095, 4096, 4097, 4999, 5000, 8191, 8999, 9000, 9001}) {
        kept_bytes front;
        front.add(0, all);
        kept_bytes back = front.take_from(place);
        EXPECT_EQ(front.end(), std::min<std::size_t>(place, 9000));
        byte_list joined(all.size());
        front.copy_to(joined);
        back.copy_to(joined);
        EXPECT_EQ(joined, all) << place;
        byte_list some(100);
        front.add(std::move(back));
        front.read(4950, some);
        EXPECT_TRUE(std::equal(some.begin(), some.end(), all.begin() + 4950)) << place;
    }
}

TEST(kept_bytes, are_reduced_to_those_that_differ)
{
    const byte_list former(10'000, 0xFF);
    byte_list now = former;
    now[0] = now[4095] = now[4096] = now[9999] = 1;
    kept_bytes kept;
    kept.add(0, former);
    const kept_bytes found = differences(std::move(kept), now);
    std::vector<std::size_t> places;
    for (const auto& one : found.runs()) places.insert(places.end(), {one.address, one.end()});
    EXPECT_EQ(places, (std::vector<std::size_t>{0, 1, 4095, 4097, 9999, 10'000}));
    found.copy_to(now);
    EXPECT_EQ(now, former);
}

}  // namespace
}  // namespace tamrix::tests
