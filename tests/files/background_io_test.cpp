#include "files/background_io.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <numeric>
#include <span>
#include <vector>

#include <gtest/gtest.h>

namespace tamrix::tests {
namespace {

using bytes = std::vector<std::uint8_t>;

bytes numbered(std::size_t count)
{
    bytes made(count);
    std::iota(made.begin(), made.end(), std::uint8_t{0});
    return made;
}

/// Ends with an error in the place of more.
class failing_source final : public byte_source {
public:
    explicit failing_source(std::size_t good) : left_{good} {}
    std::size_t read(std::span<std::uint8_t> target) override
    {
        if (left_ < target.size()) throw file_error{{.file = "in", .found = "a broken disk"}};
        left_ -= target.size();
        std::ranges::fill(target, std::uint8_t{7});
        return target.size();
    }

private:
    std::size_t left_;
};

class collecting_target final : public byte_target {
public:
    explicit collecting_target(std::size_t room = ~std::size_t{0}) : room_{room} {}
    void write(std::span<const std::uint8_t> more) override
    {
        if (all.size() + more.size() > room_) throw file_error{{.file = "out", .found = "a full disk"}};
        all.insert(all.end(), more.begin(), more.end());
    }
    bytes all;

private:
    std::size_t room_;
};

constexpr std::size_t sizes[] = {0, 1, 1 << 20, (1 << 20) + 1, 9'000'000};

TEST(read_ahead, gives_the_same_bytes_in_pieces_of_any_length)
{
    for (const std::size_t size : sizes) {
        const bytes all = numbered(size);
        for (const std::size_t piece : {std::size_t{1000}, std::size_t{3'000'000}}) {
            read_ahead source{std::make_unique<memory_source>(all)};
            bytes found, part(piece);
            for (std::size_t got = piece; got == piece;) {
                got = source.read(part);
                found.insert(found.end(), part.begin(), part.begin() + static_cast<std::ptrdiff_t>(got));
            }
            EXPECT_TRUE(found == all) << size << " " << piece;
            EXPECT_EQ(source.read(part), 0u) << "and the end stays one";
        }
    }
}

TEST(read_ahead, lends_the_rest_of_what_was_looked_at_and_read)
{
    for (const std::size_t size : sizes) {
        const bytes all = numbered(size);
        read_ahead source{std::make_unique<memory_source>(all)};
        const auto head = source.head(1000);
        EXPECT_TRUE(std::ranges::equal(head, std::span{all}.first(std::min<std::size_t>(size, 1000)))) << size;
        bytes found(std::min<std::size_t>(size, 11));
        EXPECT_EQ(source.read(found), found.size());
        for (auto lent = source.lend({}); !lent.empty(); lent = source.lend({}))
            found.insert(found.end(), lent.begin(), lent.end());
        EXPECT_TRUE(found == all) << size;
        EXPECT_TRUE(source.lend({}).empty()) << "and the end stays one";
    }
}

TEST(read_ahead, throws_an_error_after_the_bytes_ahead_of_it)
{
    read_ahead source{std::make_unique<failing_source>(5 << 20)};
    bytes part(5 << 20);
    EXPECT_EQ(source.read(part), part.size());
    EXPECT_EQ(part.back(), 7);
    EXPECT_THROW(source.read(part), file_error);
}

TEST(read_ahead, can_be_left_before_the_end)
{
    const bytes all = numbered(30'000'000);
    read_ahead source{std::make_unique<memory_source>(all)};
    bytes part(2 << 20);
    EXPECT_EQ(source.read(part), part.size());
}

TEST(write_later, writes_the_same_bytes_in_their_order)
{
    for (const std::size_t size : sizes) {
        const bytes all = numbered(size);
        for (const std::size_t piece : {std::size_t{1000}, std::size_t{3'000'000}}) {
            collecting_target target;
            write_later later{target};
            for (std::size_t at = 0; at < size; at += piece)
                later.write(std::span{all}.subspan(at, std::min(piece, size - at)));
            later.finish();
            EXPECT_TRUE(target.all == all) << size << " " << piece;
        }
    }
}

TEST(write_later, throws_the_error_of_its_target_sooner_or_later)
{
    for (const std::size_t room : {std::size_t{0}, std::size_t{2 << 20}, std::size_t{7 << 20}}) {
        collecting_target target{room};
        write_later later{target};
        const bytes piece = numbered(500'000);
        EXPECT_THROW(
            {
                for (int i = 0; i < 20; ++i) later.write(piece);
                later.finish();
            },
            file_error)
            << room;
    }
}

TEST(write_later, can_be_left_without_its_end)
{
    collecting_target target;
    write_later later{target};
    const bytes piece = numbered(3'000'000);
    later.write(piece);
    later.write(piece);
}

}  // namespace
}  // namespace tamrix::tests
