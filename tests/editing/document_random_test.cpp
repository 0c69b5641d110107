// Random editing against vectors that are copied whole.
#include "editing/plain_document.h"

#include <algorithm>
#include <random>

#include <gtest/gtest.h>

namespace tamrix::tests {
namespace {

using editing::document;

struct failed_load : std::runtime_error {
    using std::runtime_error::runtime_error;
};

class random_editing {
public:
    explicit random_editing(unsigned start) : random_{start}
    {
        edited_.change_device("odd");
        plain_.change_device("odd");
        plain_.save();
        edited_.on_bytes = [this](std::size_t address, std::size_t length) { follow(address, length); };
        followed_.assign(plain_.all.begin(), plain_.all.end());
    }

    void act()
    {
        const std::size_t kind = below(100);
        if (kind < 35) {
            type();
        } else if (kind < 45) {
            fill();
        } else if (kind < 60) {
            load();
        } else if (kind < 67) {
            change_device();
        } else if (kind < 82) {
            edited_.undo();
            plain_.undo();
        } else if (kind < 92) {
            edited_.redo();
            plain_.redo();
        } else if (kind < 96) {
            edited_.saved();
            plain_.save();
        } else if (kind < 97) {
            edited_.moved(buffers_.move());
        } else {
            refuse();
        }
    }
    void check()
    {
        const plain_document::bytes visible = plain_.visible();
        ASSERT_TRUE(std::ranges::equal(edited_.bytes(), visible));
        ASSERT_EQ(edited_.whole().length(), plain_.all.size());
        plain_document::bytes all(plain_.all.size());
        edited_.whole().read(0, all);
        ASSERT_EQ(all, plain_.all);
        ASSERT_EQ(edited_.changed(), plain_.changed());
        ASSERT_EQ(edited_.undo_name(), plain_.undo_name());
        ASSERT_EQ(edited_.redo_name(), plain_.redo_name());
        ASSERT_EQ(edited_.device(), plain_.device);
        ASSERT_EQ(edited_.has_content(), plain_.content);
        std::vector<bool> differ(visible.size());
        for (std::size_t i = 0; i < visible.size(); ++i) differ[i] = visible[i] != plain_.saved_all[i];
        ASSERT_EQ(edited_.differs_from_saved(0, visible.size()), differ);
        followed_.resize(all.size());
        ASSERT_EQ(followed_, all) << "a change was not reported";
    }

private:
    std::size_t below(std::size_t end) { return std::uniform_int_distribution<std::size_t>{0, end - 1}(random_); }
    std::uint8_t byte() { return below(3) == 0 ? 0xFF : static_cast<std::uint8_t>(below(256)); }

    void follow(std::size_t address, std::size_t length)
    {
        followed_.resize(edited_.whole().length());
        edited_.whole().read(address, std::span{followed_}.subspan(address, length));
    }
    void type()
    {
        plain_document::bytes now = plain_.visible(), typed(below(20) == 0 ? below(99) : 1);
        const std::size_t address = below(now.size() - typed.size());
        for (auto& one : typed) one = byte();
        std::ranges::copy(typed, now.begin() + static_cast<std::ptrdiff_t>(address));
        edited_.replace(address, typed, "Type");
        plain_.edit("Type", now, false);
    }
    void fill()
    {
        const std::size_t address = below(plain_.shown), length = below(plain_.shown - address + 1);
        plain_document::bytes now = plain_.visible();
        const std::uint8_t value = byte();
        const bool drops = below(3) == 0;
        std::fill_n(now.begin() + static_cast<std::ptrdiff_t>(address), length, value);
        edited_.fill(address, length, value, drops ? document::unseen::is_dropped : document::unseen::stays);
        plain_.edit("Fill", now, drops);
    }
    void scatter(std::span<std::uint8_t> buffer)
    {
        for (std::size_t i = below(9); i > 0; --i) {
            const std::size_t first = below(buffer.size());
            const std::span target = buffer.subspan(first, below(buffer.size() - first + 1));
            const std::uint8_t value = byte();
            const std::size_t kind = below(3);
            if (kind == 0) std::ranges::fill(target.first(std::min<std::size_t>(target.size(), 40)), value);
            if (kind == 1) std::ranges::fill(target, value);
            if (kind == 2) std::ranges::generate(target, [this] { return static_cast<std::uint8_t>(random_()); });
        }
    }
    void load()
    {
        const bool drops = below(3) == 0;
        const std::size_t end = below(6);
        const auto action = [&] {
            scatter(buffers_.buffer());
            if (end == 0) throw failed_load{"torn file"};
            return end != 1;
        };
        const auto rest = drops ? document::unseen::is_dropped : document::unseen::stays;
        if (end == 0) {
            EXPECT_THROW(edited_.watch("Load", action, rest), failed_load);
            return;
        }
        EXPECT_EQ(edited_.watch("Load", action, rest), end != 1);
        const auto now = buffers_.buffer();
        if (end != 1) plain_.edit("Load", {now.begin(), now.end()}, drops);
    }
    std::string any_device()
    {
        return std::next(buffers_.devices.begin(), static_cast<std::ptrdiff_t>(below(buffers_.devices.size())))->first;
    }
    void change_device()
    {
        const std::string name = any_device();
        edited_.change_device(name);
        plain_.change_device(name);
    }
    void refuse()
    {
        buffers_.fails = true;
        EXPECT_THROW(edited_.change_device(any_device()), std::runtime_error);
        if (plain_.undo_name() == "Device") {
            EXPECT_THROW(edited_.undo(), std::runtime_error);
        }
        if (plain_.redo_name() == "Device") {
            EXPECT_THROW(edited_.redo(), std::runtime_error);
        }
        buffers_.fails = false;
        EXPECT_THROW(edited_.fill(plain_.shown, 1, 0), std::out_of_range);
    }

    std::mt19937 random_;
    device_buffers buffers_{};
    document edited_{buffers_.maker()};
    plain_document plain_{buffers_};
    plain_document::bytes followed_{};
};

TEST(document, is_after_ten_thousand_random_actions_what_copies_of_all_bytes_are)
{
    for (unsigned start = 1; start <= 40; ++start) {
        random_editing editing{start};
        for (int action = 0; action < 250; ++action) {
            editing.act();
            editing.check();
            ASSERT_FALSE(testing::Test::HasFatalFailure()) << start << ' ' << action;
        }
    }
}

}  // namespace
}  // namespace tamrix::tests
