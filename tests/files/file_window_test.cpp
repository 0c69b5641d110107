// A file through a window, and a text file line by line: both show what the whole file says.
#include "files/file_window.h"

#include "files/text_lines.h"
#include "support/temp_files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace tamrix::tests {
namespace {

using bytes_of = std::vector<std::uint8_t>;

constexpr std::size_t several_windows = 700000;

TEST(file_window, shows_the_bytes_of_the_file_wherever_it_is_asked)
{
    const temp_folder files;
    const bytes_of whole = random_bytes(several_windows);
    file_window window{files.write("file", whole)};
    EXPECT_EQ(window.length(), static_cast<std::int64_t>(several_windows));
    std::mt19937 random{7};
    for (int turn = 0; turn < 500; ++turn) {
        const std::size_t offset = random() % (several_windows + 10), wanted = random() % 5000;
        const auto shown = window.from(static_cast<std::int64_t>(offset), wanted);
        const std::size_t there = offset < several_windows ? several_windows - offset : 0;
        ASSERT_GE(shown.size(), std::min(wanted, there)) << offset;
        ASSERT_LE(shown.size(), there) << offset;
        ASSERT_TRUE(std::equal(shown.begin(), shown.end(),
                               whole.begin() + static_cast<std::ptrdiff_t>(offset < several_windows ? offset : 0)));
    }
}

TEST(file_window, finds_a_byte_near_and_far_and_the_end_where_there_is_none)
{
    const temp_folder files;
    std::string content(several_windows, '.');
    for (const std::size_t at : {std::size_t{0}, std::size_t{2}, std::size_t{300}, std::size_t{600000}})
        content[at] = ':';
    file_window window{files.write("file", content)};
    EXPECT_EQ(window.find(':', 0), 0);
    EXPECT_EQ(window.find(':', 1), 2);
    EXPECT_EQ(window.find(':', 3), 300);
    EXPECT_EQ(window.find(':', 301), 600000);
    EXPECT_EQ(window.find(':', 600001), static_cast<std::int64_t>(several_windows));
    EXPECT_EQ(window.find('!', 0), static_cast<std::int64_t>(several_windows));
}

TEST(file_window, counts_lines_with_every_kind_of_end)
{
    const temp_folder files;
    file_window window{files.write("file", "a\nb\r\nc\rd")};
    EXPECT_EQ(window.line_at(0), 1u);
    EXPECT_EQ(window.line_at(2), 2u);
    EXPECT_EQ(window.line_at(5), 3u);
    EXPECT_EQ(window.line_at(7), 4u);
}

TEST(file_window, on_an_empty_file_shows_nothing)
{
    const temp_folder files;
    file_window window{files.write("file", "")};
    EXPECT_TRUE(window.from(0, 10).empty());
    EXPECT_EQ(window.find('x', 0), 0);
}

std::vector<std::string> lines_of(const std::string& content)
{
    const temp_folder files;
    text_lines lines{files.write("file", content)};
    EXPECT_EQ(lines.file_length(), static_cast<std::int64_t>(content.size()));
    std::vector<std::string> all;
    while (const auto line = lines.next()) {
        all.emplace_back(*line);
        EXPECT_EQ(lines.number(), all.size());
    }
    EXPECT_FALSE(lines.next());
    return all;
}

TEST(text_lines, end_with_a_carriage_return_a_line_feed_or_both)
{
    using lines = std::vector<std::string>;
    EXPECT_EQ(lines_of("a\nb\r\nc\rd"), (lines{"a", "b", "c", "d"}));
    EXPECT_EQ(lines_of("a\n\rb"), (lines{"a", "", "b"}));
    EXPECT_EQ(lines_of("\r\n\r\n"), (lines{"", ""}));
    EXPECT_EQ(lines_of("a\r"), lines{"a"});
    EXPECT_EQ(lines_of("a"), lines{"a"});
    EXPECT_EQ(lines_of(""), lines{});
}

TEST(text_lines, keep_every_other_byte)
{
    const std::string odd("\0\x1A\xFF \t", 5);
    EXPECT_EQ(lines_of(odd + "\n" + odd), (std::vector{odd, odd}));
}

}  // namespace
}  // namespace tamrix::tests
