// What a comparison counts and where it goes, against one that looks at every byte.
#include "editing/comparison.h"

#include <algorithm>
#include <chrono>
#include <ctime>
#include <iostream>
#include <map>
#include <random>
#include <vector>

#include <gtest/gtest.h>

namespace tamrix::tests {
namespace {

using editing::byte_range;
using editing::difference;
using editing::difference_counts;
using editing::different_place;

memory_image image_of(const std::map<std::uint64_t, std::uint8_t>& bytes)
{
    memory_image image;
    for (const auto& [address, byte] : bytes) image.take(address, {&byte, 1});
    return image;
}

editing::comparison compared(std::span<const std::uint8_t> buffer, const memory_image& file)
{
    editing::comparison made{buffer, file};
    while (!made.look()) {
    }
    return made;
}

std::vector<difference> kinds(std::span<const std::uint8_t> buffer, const std::map<std::uint64_t, std::uint8_t>& file)
{
    std::vector<difference> all(std::max(buffer.size(), file.empty() ? 0 : std::size_t{file.rbegin()->first} + 1));
    for (std::size_t i = 0; i < all.size(); ++i) {
        const auto byte = file.find(i);
        if (i < buffer.size() && byte != file.end()) {
            all[i] = byte->second == buffer[i] ? difference::none : difference::bytes_differ;
        } else if (i < buffer.size()) {
            all[i] = difference::only_in_buffer;
        } else if (byte != file.end()) {
            all[i] = difference::only_in_file;
        }
    }
    return all;
}

std::vector<different_place> places(const std::vector<difference>& all)
{
    std::vector<different_place> found;
    for (std::size_t i = 0; i < all.size(); ++i) {
        if (all[i] == difference::none) continue;
        if (i > 0 && all[i] == all[i - 1]) {
            ++found.back().where.length;
        } else {
            found.push_back({{i, 1}, all[i]});
        }
    }
    return found;
}

difference_counts count(const std::vector<different_place>& found)
{
    difference_counts counts;
    for (const different_place& one : found) {
        if (one.kind == difference::only_in_buffer) counts.only_in_buffer += one.where.length;
        if (one.kind == difference::only_in_file) counts.only_in_file += one.where.length;
        if (one.kind != difference::bytes_differ) continue;
        counts.different_bytes += one.where.length;
        ++counts.different_places;
    }
    return counts;
}

/// Bytes over the borders of what is compared at once, few of which differ.
void expect_as_by_every_byte(std::uint64_t start)
{
    std::mt19937_64 random{start};
    constexpr std::size_t around[] = {0, 0x100, 0x100000, 0x200000};
    std::vector<std::uint8_t> buffer(random() % 0x280000 + 1);
    std::map<std::uint64_t, std::uint8_t> file;
    for (const std::size_t middle : around) {
        const std::size_t first = middle - std::min<std::size_t>(middle, random() % 600);
        for (std::size_t i = first, end = middle + random() % 600; i < end; ++i) {
            if (random() % 64 == 0) i += random() % 64;
            file[i] = random() % 16 == 0 ? 1 : 0;
        }
    }
    const memory_image image = image_of(file);
    const editing::comparison made = compared(buffer, image);
    const auto all = kinds(buffer, file);
    const auto expected = places(all);
    ASSERT_EQ(made.length(), all.size());
    EXPECT_EQ(made.counts(), count(expected));
    std::vector<different_place> forward, backward;
    for (auto at = made.first(); at; at = made.next(at->where.first)) forward.push_back(*at);
    EXPECT_EQ(forward, expected);
    for (auto at = made.previous(all.size()); at; at = made.previous(at->where.first)) backward.push_back(*at);
    std::ranges::reverse(backward);
    EXPECT_EQ(backward, expected);
    for (int i = 0; i < 200; ++i) {
        const std::size_t address = random() % all.size();
        ASSERT_EQ(made.at(address), all[address]);
        const auto after =
            std::ranges::upper_bound(expected, address, {}, [](const auto& one) { return one.where.first; });
        ASSERT_EQ(made.next(address), after == expected.end() ? std::nullopt : std::optional{*after});
    }
}

TEST(comparison, agrees_with_one_that_looks_at_every_byte)
{
    for (std::uint64_t start = 1; start <= 6 && !testing::Test::HasFailure(); ++start) {
        SCOPED_TRACE(start);
        expect_as_by_every_byte(start);
    }
}

TEST(comparison, goes_from_place_to_place_and_not_around_the_end)
{
    const std::vector<std::uint8_t> buffer{0, 1, 2, 3, 4, 5};
    const memory_image file = image_of({{0, 9}, {1, 1}, {2, 9}, {3, 9}, {8, 8}});
    const editing::comparison made = compared(buffer, file);
    EXPECT_EQ(made.length(), 9u);
    EXPECT_EQ(made.counts(), (difference_counts{3, 2, 2, 1, 0}));
    EXPECT_EQ(made.first(), (different_place{{0, 1}, difference::bytes_differ}));
    EXPECT_EQ(made.next(0), (different_place{{2, 2}, difference::bytes_differ}));
    EXPECT_EQ(made.next(2), (different_place{{4, 2}, difference::only_in_buffer}));
    EXPECT_EQ(made.next(4), (different_place{{8, 1}, difference::only_in_file}));
    EXPECT_EQ(made.next(8), std::nullopt);
    EXPECT_EQ(made.previous(8), (different_place{{4, 2}, difference::only_in_buffer}));
    EXPECT_EQ(made.previous(3), (different_place{{2, 2}, difference::bytes_differ})) << "its beginning";
    EXPECT_EQ(made.previous(0), std::nullopt);
}

TEST(comparison, of_nothing_and_of_what_is_the_same_finds_nothing)
{
    const memory_image empty;
    const editing::comparison nothing = compared({}, empty);
    EXPECT_EQ(nothing.length(), 0u);
    EXPECT_EQ(nothing.percent(), 100);
    EXPECT_EQ(nothing.first(), std::nullopt);
    EXPECT_EQ(nothing.next(0), std::nullopt);
    EXPECT_EQ(nothing.previous(0), std::nullopt);
    const std::vector<std::uint8_t> buffer{1, 2};
    const memory_image file = image_of({{0, 1}, {1, 2}});
    const editing::comparison same = compared(buffer, file);
    EXPECT_EQ(same.counts(), difference_counts{});
    EXPECT_EQ(same.first(), std::nullopt);
}

TEST(comparison, counts_what_the_file_has_above_the_addresses_that_are_shown)
{
    const std::vector<std::uint8_t> buffer{1};
    const memory_image file = image_of({{0, 1}, {0xFFFFFFFF, 5}, {0x100000000, 6}, {0x800000000000, 7}});
    const editing::comparison made = compared(buffer, file);
    EXPECT_EQ(made.length(), 0x100000000u);
    EXPECT_EQ(made.counts(), (difference_counts{0, 0, 0, 3, 2}));
    EXPECT_EQ(made.first(), (different_place{{0xFFFFFFFF, 1}, difference::only_in_file}));
    EXPECT_EQ(made.next(0xFFFFFFFF), std::nullopt);
}

/// Milliseconds of the processor.
double time_of(auto&& action)
{
    const std::clock_t start = std::clock();
    action();
    return 1000.0 * static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

TEST(comparison, of_the_largest_buffer_goes_on_in_short_steps)
{
    constexpr std::size_t largest = std::size_t{264} << 20;
    std::vector<std::uint8_t> buffer(largest);
    memory_image file;
    file.take(0, buffer);
    for (std::size_t i = 0; i < largest / 2; i += 2) buffer[i] = 1;  // as many places as there can be, then none
    buffer.back() = 1;
    file.filled();
    editing::comparison made{buffer, file};
    double longest = 0, whole = 0;
    for (bool done = false; !done;) {
        const double one = time_of([&] { done = made.look(); });
        longest = std::max(longest, one);
        whole += one;
    }
    EXPECT_EQ(made.counts().different_bytes, largest / 4 + 1);
    std::optional<different_place> place;
    const double step = time_of([&] { place = made.next(largest / 2 - 2); });
    EXPECT_EQ(place, (different_place{{largest - 1, 1}, difference::bytes_differ}));
    const double back = time_of([&] { place = made.previous(largest - 1); });
    EXPECT_EQ(place, (different_place{{largest / 2 - 2, 1}, difference::bytes_differ}));
    std::cout << "    " << whole << " ms, longest step " << longest << " ms, next " << step << " ms, previous " << back
              << " ms\n";
}

}  // namespace
}  // namespace tamrix::tests
