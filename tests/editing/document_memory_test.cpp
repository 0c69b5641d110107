// What the history may take.
#include "editing/device_buffers.h"

#include <numeric>

#include <gtest/gtest.h>

namespace tamrix::tests {
namespace {

TEST(document, forgets_the_oldest_steps_when_all_take_too_much)
{
    device_buffers buffers;
    editing::document edited{buffers.maker(), 40'000};
    edited.change_device("whole");
    std::vector<std::vector<std::uint8_t>> states;
    for (std::size_t i = 0; i < 50; ++i) {
        states.emplace_back(edited.bytes().begin(), edited.bytes().end());
        std::vector<std::uint8_t> bytes(1000);
        std::iota(bytes.begin(), bytes.end(), static_cast<std::uint8_t>(i));
        edited.replace(i * 100, bytes, "Paste");
        EXPECT_LT(edited.memory(), 40'000u + 9'000u);
    }
    int steps = 0;
    for (; edited.can_undo(); ++steps) {
        edited.undo();
        ASSERT_TRUE(std::ranges::equal(edited.bytes(), states.back())) << steps;
        states.pop_back();
    }
    EXPECT_GT(steps, 20);
    EXPECT_LT(steps, 40);
}

TEST(document, keeps_its_newest_step_however_large_it_is)
{
    device_buffers buffers;
    editing::document edited{buffers.maker(), 100};
    edited.change_device("whole");
    for (const int start : {1, 2}) {
        edited.watch("Load", [&] {
            std::iota(buffers.buffer().begin(), buffers.buffer().end(), static_cast<std::uint8_t>(start));
            return true;
        });
    }
    edited.undo();
    EXPECT_EQ(edited.bytes()[0], 1);
    EXPECT_FALSE(edited.can_undo());
    edited.redo();
    EXPECT_EQ(edited.bytes()[0], 2);
}

}  // namespace
}  // namespace tamrix::tests
