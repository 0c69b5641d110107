#include "image/memory_image.h"

#include "image/crc32.h"

#include <algorithm>
#include <map>
#include <random>
#include <stdexcept>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

using namespace tamrix;

namespace {

using plain_memory = std::map<std::uint64_t, std::uint8_t>;

/// Islands at random places, some of them over a page's end and over one another.
struct random_memory {
    explicit random_memory(std::mt19937& random)
    {
        for (int i = 0; i < 6; ++i) {
            const std::uint64_t base = (random() % 3) * 0x10000 + 0xFFF0 + random() % 40;
            std::vector<std::uint8_t> bytes(random() % 20);
            for (auto& byte : bytes) byte = static_cast<std::uint8_t>(random());
            image.take(base, bytes);
            for (std::size_t k = 0; k < bytes.size(); ++k) plain[base + k] = bytes[k];
        }
    }
    memory_image image;
    plain_memory plain;
};

plain_memory plain_of(const memory_image& image)
{
    plain_memory plain;
    image.visit([&](std::uint64_t address, std::span<const std::uint8_t> bytes) {
        for (std::size_t i = 0; i < bytes.size(); ++i) EXPECT_TRUE(plain.emplace(address + i, bytes[i]).second);
    });
    return plain;
}

std::span<const std::uint8_t> bytes_of(std::string_view text)
{
    return {reinterpret_cast<const std::uint8_t*>(text.data()), text.size()};
}

}  // namespace

TEST(memory_image, holds_what_a_list_of_all_bytes_holds)
{
    std::mt19937 random{7};
    for (int run = 0; run < 300; ++run) {
        const random_memory made{random};
        ASSERT_EQ(plain_of(made.image), made.plain) << run;
        ASSERT_EQ(made.image.filled().bytes(), made.plain.size());
        const std::uint64_t first = 0xFFE0 + random() % 0x20000, length = random() % 60;
        plain_memory inside{made.plain.lower_bound(first), made.plain.lower_bound(first + length)};
        ASSERT_EQ(plain_of(cropped(made.image, {first, length})), inside) << run;
    }
}

TEST(memory_image, is_moved_swapped_and_filled_as_each_byte_alone_would_be)
{
    std::mt19937 random{8};
    for (int run = 0; run < 300; ++run) {
        const random_memory made{random};
        plain_memory expected;
        for (const auto& [at, byte] : made.plain) expected[at - 0xFF00] = byte;
        ASSERT_EQ(plain_of(moved(made.image, -0xFF00)), expected) << run;
        for (const int group : {2, 4}) {
            expected.clear();
            for (const auto& [at, byte] : made.plain) expected[at / group * group + (group - 1 - at % group)] = byte;
            ASSERT_EQ(plain_of(swapped(made.image, group)), expected) << run << " " << group;
        }
        if (made.plain.empty() || run % 20 != 0) continue;
        memory_image whole = cropped(made.image, made.image.extent());
        fill_gaps(whole, whole.extent(), 0xA5);
        expected = made.plain;
        for (std::uint64_t at = made.plain.begin()->first; at < made.plain.rbegin()->first; ++at)
            expected.emplace(at, 0xA5);
        ASSERT_EQ(plain_of(whole), expected) << run;
    }
}

TEST(memory_image, of_many_pages_in_any_order_holds_each_of_them)
{
    constexpr std::uint64_t pages = 700, page_bytes = 0x10000, gap = 0x1000;
    memory_image image;
    std::vector<std::uint8_t> bytes(page_bytes - gap);
    for (std::uint64_t i = 0; i < pages; ++i) {
        const std::uint64_t page = i * 3 % pages;
        std::ranges::fill(bytes, static_cast<std::uint8_t>(page));
        image.take(page * page_bytes, bytes);
    }
    const memory_image taken = std::move(image);
    std::uint64_t page = 0;
    for (const memory_segment& one : taken.filled().all()) {
        ASSERT_EQ(one, (memory_segment{page * page_bytes, page_bytes - gap}));
        taken.visit(one, [&](std::uint64_t, std::span<const std::uint8_t> all) {
            ASSERT_TRUE(std::ranges::all_of(all, [&](std::uint8_t byte) { return byte == (page & 0xFF); }));
        });
        ++page;
    }
    EXPECT_EQ(page, pages);
}

TEST(memory_image, at_the_highest_addresses_is_whole)
{
    memory_image image;
    image.take(0xFFFFFFFFFFFBu, bytes_of("reset"));
    EXPECT_EQ(image.at(0xFFFFFFFFFFFFu), 't');
    EXPECT_EQ(image.at(0xFFFFFFFFFFFAu), std::nullopt);
    EXPECT_THROW(moved(image, 1), std::out_of_range);
    EXPECT_THROW(image.take(0xFFFFFFFFFFFFu, bytes_of("ab")), std::out_of_range);
    EXPECT_EQ(moved(image, -0x100).at(0xFFFFFFFFFEFBu), 'r');
    image.take(0, bytes_of("x"));
    EXPECT_THROW(moved(image, -1), std::out_of_range);
}

TEST(memory_image, lists_its_gaps)
{
    memory_image image;
    image.take(0, bytes_of("abc"));
    image.take(5, bytes_of("d"));
    image.take(0x100, bytes_of("e"));
    const auto gaps = [&image](memory_segment range, std::uint64_t least = 1) { return gaps_in(image, range, least); };
    EXPECT_EQ(gaps(image.extent()), (std::vector<memory_segment>{{3, 2}, {6, 0xFA}}));
    EXPECT_EQ(gaps(image.extent(), 3), (std::vector<memory_segment>{{6, 0xFA}}));
    EXPECT_EQ(gaps({4, 4}), (std::vector<memory_segment>{{4, 1}, {6, 2}}));
    EXPECT_EQ(gaps({0xF0, 0x20}), (std::vector<memory_segment>{{0xF0, 0x10}, {0x101, 0xF}}));
    EXPECT_EQ(gaps({0x200, 5}), (std::vector<memory_segment>{{0x200, 5}}));
    EXPECT_TRUE(gaps({0, 3}).empty());
    EXPECT_TRUE(gaps_in(memory_image{}, {0, 0}).empty());
}

TEST(crc32, of_the_usual_nine_digits_is_the_published_value)
{
    crc32 check;
    check.add(bytes_of("123456789"));
    EXPECT_EQ(check.value(), 0xCBF43926u);
    EXPECT_EQ(crc32{}.value(), 0u);
}

TEST(crc32, is_the_same_in_pieces_of_any_length)
{
    std::vector<std::uint8_t> bytes(1000);
    std::mt19937 random{1};
    for (auto& byte : bytes) byte = static_cast<std::uint8_t>(random());
    std::uint32_t slow = 0xFFFFFFFF;
    for (const unsigned byte : bytes) {
        slow ^= byte;
        for (int bit = 0; bit < 8; ++bit) slow = (slow >> 1) ^ ((slow & 1) != 0 ? 0xEDB88320u : 0u);
    }
    crc32 check;
    for (std::size_t at = 0, step = 0; at < bytes.size();
         at += step, step = std::min<std::size_t>(step % 23 + 1, bytes.size() - at))
        check.add(std::span{bytes}.subspan(at, step));
    EXPECT_EQ(check.value(), ~slow);
}

TEST(sums, add_all_bytes_without_the_gaps)
{
    memory_image image;
    image.take(0x20, bytes_of("6789"));
    image.take(0x10, bytes_of("12345"));
    EXPECT_EQ(sums_of(image).crc32, 0xCBF43926u);
    EXPECT_EQ(sums_of(image).sum, 9u * '0' + 45);
}
