#include "workbench/byte_search.h"

#include <cstdint>
#include <optional>
#include <vector>

#include <gtest/gtest.h>

using namespace tamrix::workbench;

using bytes = std::vector<std::uint8_t>;

TEST(search_pattern, pairs_of_hexadecimal_digits_are_bytes)
{
    EXPECT_EQ(search_pattern("55 AA"), (bytes{0x55, 0xAA}));
    EXPECT_EQ(search_pattern("55aa"), (bytes{0x55, 0xAA}));
    EXPECT_EQ(search_pattern(""), bytes{});
}

TEST(search_pattern, anything_else_is_a_text)
{
    EXPECT_EQ(search_pattern("55A"), (bytes{'5', '5', 'A'}));
    EXPECT_EQ(search_pattern("read"), (bytes{'r', 'e', 'a', 'd'}));
}

TEST(search_pattern, a_text_in_quotes_is_a_text_even_where_it_looks_like_bytes)
{
    EXPECT_EQ(search_pattern("\"55\""), (bytes{'5', '5'}));
}

TEST(find_bytes, finds_from_the_start_on_and_goes_round)
{
    const bytes buffer{1, 2, 3, 1, 2, 9};
    const bytes pattern{1, 2};
    EXPECT_EQ(find_bytes(buffer, pattern, 0), 0u);
    EXPECT_EQ(find_bytes(buffer, pattern, 1), 3u);
    EXPECT_EQ(find_bytes(buffer, pattern, 4), 0u);
    EXPECT_EQ(find_bytes(buffer, pattern, 99), 0u);
}

TEST(find_bytes, finds_nothing_where_there_is_nothing)
{
    const bytes buffer{1, 2, 3};
    EXPECT_EQ(find_bytes(buffer, bytes{3, 4}, 0), std::nullopt);
    EXPECT_EQ(find_bytes(buffer, bytes{}, 0), std::nullopt);
    EXPECT_EQ(find_bytes(buffer, bytes{1, 2, 3, 4}, 0), std::nullopt);
    EXPECT_EQ(find_bytes({}, bytes{1}, 0), std::nullopt);
}
