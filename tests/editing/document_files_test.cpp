// Which file the bytes come from, through loads, saves and undo.
#include "editing/device_buffers.h"

#include <algorithm>
#include <array>
#include <stdexcept>

#include <gtest/gtest.h>

namespace tamrix::tests {
namespace {

struct loaded_document {
    device_buffers buffers{};
    editing::document edited{buffers.maker()};
    loaded_document() { edited.change_device("page"); }
    void load(const char* file, std::uint8_t value)
    {
        EXPECT_TRUE(edited.load(file, [&] { return std::ranges::fill(buffers.buffer(), value), true; }));
    }
    void type(std::uint8_t value) { edited.replace(0, std::array{value}, "Typing"); }
};

TEST(document, is_as_saved_after_a_load)
{
    loaded_document f;
    f.type(9);
    f.load("a.hex", 1);
    EXPECT_FALSE(f.edited.changed());
    EXPECT_EQ(f.edited.file(), "a.hex");
    EXPECT_EQ(f.edited.undo_name(), "Load");
}

TEST(document, has_the_file_before_again_when_a_load_is_undone)
{
    loaded_document f;
    f.load("a.hex", 1);
    f.load("b.hex", 2);
    f.edited.undo();
    EXPECT_EQ(f.edited.file(), "a.hex");
    EXPECT_EQ(f.edited.bytes()[0], 1);
    EXPECT_TRUE(f.edited.changed()) << "what was saved last is b.hex";
    f.edited.undo();
    EXPECT_EQ(f.edited.file(), "");
    f.edited.redo();
    f.edited.redo();
    EXPECT_EQ(f.edited.file(), "b.hex");
    EXPECT_FALSE(f.edited.changed());
}

TEST(document, keeps_its_file_and_bytes_when_a_load_fails)
{
    loaded_document f;
    f.load("a.hex", 1);
    EXPECT_FALSE(f.edited.load("b.hex", [&] { return std::ranges::fill(f.buffers.buffer(), std::uint8_t{2}), false; }));
    EXPECT_THROW(f.edited.load("b.hex", [&]() -> bool { throw std::runtime_error{"no"}; }), std::runtime_error);
    EXPECT_EQ(f.edited.file(), "a.hex");
    EXPECT_EQ(f.edited.bytes()[0], 1);
    EXPECT_FALSE(f.edited.changed());
    f.edited.undo();
    EXPECT_FALSE(f.edited.can_undo());
}

TEST(document, that_loads_its_own_bytes_again_has_no_new_step_unless_the_file_is_another)
{
    loaded_document f;
    f.load("a.hex", 1);
    f.load("a.hex", 1);
    f.edited.undo();
    EXPECT_FALSE(f.edited.can_undo());
    f.edited.redo();
    f.load("copy.hex", 1);
    EXPECT_EQ(f.edited.file(), "copy.hex");
    f.edited.undo();
    EXPECT_EQ(f.edited.file(), "a.hex");
}

TEST(document, has_the_file_under_which_it_was_saved)
{
    loaded_document f;
    f.load("a.hex", 1);
    f.type(9);
    f.edited.saved_as("b.hex");
    EXPECT_FALSE(f.edited.changed());
    f.edited.undo();
    EXPECT_EQ(f.edited.file(), "b.hex");
    EXPECT_TRUE(f.edited.changed());
    f.edited.undo();
    EXPECT_EQ(f.edited.file(), "");
}

}  // namespace
}  // namespace tamrix::tests
