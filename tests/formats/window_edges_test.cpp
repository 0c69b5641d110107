// Files longer than the window through which the readers see them: a record that crosses its end lands whole.
#include "load_fixture.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tamrix::tests {
namespace {

using bytes_of = std::vector<std::uint8_t>;

constexpr std::size_t window_bytes = std::size_t{1} << 18;
constexpr std::size_t more_than_two_windows = 600 << 10;
constexpr int most_items = 255;  // of one record

/// Records of Intel HEX, whose items are bytes, or of Intel Hex16, whose items are words with the high byte first.
struct record_writer {
    explicit record_writer(std::size_t bytes_of_item) : item_bytes{bytes_of_item} {}

    void byte(std::size_t value)
    {
        static constexpr char digits[] = "0123456789ABCDEF";
        text += digits[value >> 4 & 15];
        text += digits[value & 15];
        sum += value;
    }
    void head(std::size_t count, std::size_t address, std::size_t type)
    {
        text += ':';
        sum = 0;
        byte(count);
        byte(address >> 8);
        byte(address);
        byte(type);
    }
    void end()
    {
        byte(0x100 - (sum & 0xFF));
        text += "\r\n";
    }
    void segment(std::size_t number)
    {
        head(2, 0, 4);
        byte(number >> 8);
        byte(number);
        end();
    }
    /// A record of `items` items of `content` that are its number `first` and the following.
    void data(const bytes_of& content, std::size_t first, std::size_t items)
    {
        head(items, first, 0);
        for (std::size_t at = first * item_bytes; at < (first + items) * item_bytes; at += item_bytes) {
            for (std::size_t i = item_bytes; i-- > 0;) byte(content[at + i]);
        }
        end();
    }

    std::size_t item_bytes;
    std::string text{};
    std::size_t sum = 0;
};

/// The file of records with `items` items each that holds `content`, from address 0 on.
std::string file_of(std::size_t item_bytes, const bytes_of& content, std::size_t items)
{
    record_writer out{item_bytes};
    const std::size_t count = content.size() / item_bytes;
    std::size_t segment = 0;
    for (std::size_t at = 0; at < count; at += items) {
        if (at >> 16 != segment) out.segment(segment = at >> 16);
        out.data(content, at, std::min(items, count - at));
    }
    return out.text;
}

struct long_files : testing::TestWithParam<std::size_t> {  // bytes of an item
    status load(const std::string& text) { return f.read(text, {.clear = 1}); }

    format_fixture f{GetParam() == 1 ? 1 : 6, {.buflength = 0x60000, .tlength = 0x60000}};
};

INSTANTIATE_TEST_SUITE_P(of, long_files, testing::Values(1, 2),
                         [](const auto& one) { return one.param == 1 ? "intel" : "intel16"; });

TEST_P(long_files, load_whole_with_records_of_every_length)
{
    const bytes_of content = random_bytes(0x4C000);
    for (std::size_t items = 1; items <= most_items; ++items) {
        const std::string text = file_of(GetParam(), content, items);
        ASSERT_GT(text.size(), more_than_two_windows);
        ASSERT_EQ(load(text), status::done) << items << ": " << f.why();
        ASSERT_TRUE(f.bytes(0, static_cast<std::int64_t>(content.size())) == content) << items;
    }
}

TEST_P(long_files, may_have_the_end_of_the_window_at_any_place_of_the_longest_record)
{
    const bytes_of content = random_bytes(most_items * GetParam());
    const std::string record = file_of(GetParam(), content, most_items);
    std::string text(more_than_two_windows, '.');
    for (std::size_t before = 0; before <= record.size(); ++before) {
        text.replace(window_bytes - before, record.size() + 1, record + ".");
        ASSERT_EQ(load(text), status::done) << before << ": " << f.why();
        ASSERT_TRUE(f.bytes(0, static_cast<std::int64_t>(content.size())) == content) << before;
    }
}

}  // namespace
}  // namespace tamrix::tests
