// The document step by step.
#include "editing/device_buffers.h"

#include <array>
#include <numeric>

#include <gtest/gtest.h>

namespace tamrix::tests {
namespace {

using editing::document;

struct open_document {
    device_buffers buffers{};
    document edited;
    int states = 0;
    explicit open_document(const char* device = "page") : edited{buffers.maker()}
    {
        edited.change_device(device);
        edited.on_state = [this] { ++states; };
    }
    void type(std::size_t address, std::uint8_t value, document::typed how = document::typed::whole_bytes)
    {
        edited.replace(address, std::array{value}, "Typing", how);
    }
    std::uint8_t at(std::size_t address) const { return edited.bytes()[address]; }
    int undo_all()
    {
        int steps = 0;
        for (; edited.can_undo(); ++steps) edited.undo();
        return steps;
    }
};

TEST(document, begins_blank_unchanged_and_without_steps)
{
    open_document f;
    EXPECT_FALSE(f.edited.changed());
    EXPECT_FALSE(f.edited.has_content());
    EXPECT_FALSE(f.edited.can_undo());
    EXPECT_EQ(f.edited.undo_name(), "");
    f.edited.undo();
    f.edited.redo();
    EXPECT_EQ(f.edited.bytes().size(), 1024u);
}

TEST(document, takes_the_two_digits_of_a_byte_for_one_step)
{
    open_document f;
    f.type(5, 0xA0);
    f.type(5, 0xA7, document::typed::second_digit);
    f.type(6, 0x10);
    f.type(6, 0x12, document::typed::second_digit);
    EXPECT_EQ(f.at(5), 0xA7);
    f.edited.undo();
    EXPECT_EQ(f.at(6), 0);
    EXPECT_EQ(f.at(5), 0xA7);
    f.edited.undo();
    EXPECT_EQ(f.at(5), 0);
    EXPECT_FALSE(f.edited.can_undo());
    f.edited.redo();
    EXPECT_EQ(f.at(5), 0xA7);
}

TEST(document, takes_digits_that_do_not_follow_each_other_for_two_steps)
{
    const auto typed_twice = [](const std::function<void(open_document&)>& between, std::size_t second) {
        open_document f;
        f.type(5, 0xA0);
        between(f);
        f.type(second, 0xA7, document::typed::second_digit);
        return f.undo_all();
    };
    EXPECT_EQ(typed_twice([](open_document&) {}, 5), 1);
    EXPECT_EQ(typed_twice([](open_document&) {}, 6), 2);
    EXPECT_EQ(typed_twice([](open_document& f) { f.edited.saved(); }, 5), 2);
    EXPECT_EQ(typed_twice([](open_document& f) { f.edited.fill(9, 1, 1); }, 5), 3);
    EXPECT_EQ(typed_twice([](open_document& f) { f.edited.undo(), f.edited.redo(); }, 5), 2);
    EXPECT_EQ(typed_twice([](open_document& f) { f.type(5, 0xA0); }, 5), 2) << "the first digit was there already";
    EXPECT_EQ(typed_twice([](open_document& f) { f.type(5, 0xA3, document::typed::second_digit); }, 5), 2);
}

TEST(document, has_no_step_of_what_changes_nothing)
{
    open_document f;
    f.type(5, 0);
    f.edited.fill(0, 1024, 0);
    EXPECT_TRUE(f.edited.watch("Load", [] { return true; }));
    f.type(7, 0xA0);
    f.type(7, 0x00, document::typed::second_digit);
    EXPECT_FALSE(f.edited.can_undo());
    EXPECT_FALSE(f.edited.changed());
    EXPECT_TRUE(f.edited.has_content()) << "a file of blank bytes is a content as well";
}

TEST(document, forgets_what_could_be_redone_when_a_step_comes)
{
    open_document f;
    f.type(1, 1);
    f.edited.fill(0, 9, 7);
    f.edited.undo();
    EXPECT_EQ(f.edited.redo_name(), "Fill");
    EXPECT_EQ(f.edited.undo_name(), "Typing");
    f.edited.fill(0, 9, 0);
    EXPECT_EQ(f.edited.redo_name(), "");
    EXPECT_EQ(f.edited.undo_name(), "Fill");
}

TEST(document, is_unchanged_where_it_was_saved)
{
    open_document f;
    f.type(1, 1);
    EXPECT_TRUE(f.edited.changed());
    f.edited.saved();
    EXPECT_FALSE(f.edited.changed());
    f.edited.undo();
    EXPECT_TRUE(f.edited.changed());
    EXPECT_TRUE(f.edited.differs_from_saved(1, 1)[0]);
    f.edited.redo();
    EXPECT_FALSE(f.edited.changed());
    EXPECT_GT(f.states, 3);
    EXPECT_EQ(f.edited.differs_from_saved(1020, 9), std::vector<bool>(9));
    EXPECT_EQ(f.edited.differs_from_saved(5000, 2), std::vector<bool>(2));
}

TEST(document, keeps_what_a_smaller_buffer_does_not_show)
{
    open_document f{"odd"};
    f.type(1400, 0x14);
    f.edited.saved();
    f.edited.change_device("small");
    EXPECT_EQ(f.edited.bytes().size(), 100u);
    EXPECT_EQ(f.edited.hidden().end(), 1500u);
    EXPECT_FALSE(f.edited.changed());
    f.edited.change_device("large");
    EXPECT_EQ(f.at(1400), 0x14);
    EXPECT_EQ(f.at(1401), 0xFF);
    EXPECT_EQ(f.at(1500), 0x00) << "blank as the device is";
    EXPECT_TRUE(f.edited.hidden().empty());
    f.edited.undo();
    EXPECT_EQ(f.edited.device(), "small");
    f.edited.undo();
    EXPECT_EQ(f.edited.device(), "odd");
    EXPECT_EQ(f.at(1400), 0x14);
    EXPECT_FALSE(f.edited.changed());
}

TEST(document, shows_the_new_buffer_while_it_is_blank)
{
    open_document f{"small"};
    f.edited.change_device("page");
    EXPECT_EQ(f.at(0), 0x00);
    f.type(0, 1);
    f.edited.undo();
    f.edited.change_device("whole");
    EXPECT_EQ(f.at(99), 0xFF);
    EXPECT_FALSE(f.edited.changed());
    open_document again{"small"};
    again.type(0, 1);
    again.edited.change_device("whole");
    again.edited.undo();
    again.edited.undo();
    again.edited.change_device("page");
    EXPECT_EQ(again.at(500), 0x00) << "nothing of a buffer that was blank as well";
}

TEST(document, drops_what_is_not_shown_with_a_whole_new_content_until_undo)
{
    open_document f{"odd"};
    f.type(1400, 0x14);
    f.edited.saved();
    f.edited.change_device("small");
    f.edited.fill(0, 100, 0xFF, document::unseen::is_dropped);
    EXPECT_EQ(f.edited.undo_name(), "Fill");
    EXPECT_TRUE(f.edited.hidden().empty());
    EXPECT_TRUE(f.edited.changed()) << "1400 bytes are gone";
    f.edited.undo();
    EXPECT_FALSE(f.edited.changed());
    f.edited.redo();
    f.edited.change_device("odd");
    EXPECT_EQ(f.at(1400), 0xFF);
    f.edited.undo();
    f.edited.undo();
    f.edited.undo();
    EXPECT_EQ(f.at(1400), 0x14);
}

TEST(document, brings_all_back_after_an_action_that_fails)
{
    open_document f{"whole"};
    f.type(9, 9);
    const auto spoil = [&] { std::iota(f.buffers.buffer().begin(), f.buffers.buffer().end(), std::uint8_t{1}); };
    std::vector<std::size_t> reported;
    f.edited.on_bytes = [&](std::size_t address, std::size_t length) {
        reported.insert(reported.end(), {address, length});
    };
    EXPECT_FALSE(f.edited.watch("Load", [&] { return spoil(), false; }));
    EXPECT_EQ(f.at(10), 0xFF);
    EXPECT_THROW(f.edited.watch("Load", [&]() -> bool { spoil(), throw std::runtime_error{"torn"}; }),
                 std::runtime_error);
    EXPECT_EQ(f.at(8191), 0xFF);
    EXPECT_EQ(f.at(9), 9);
    EXPECT_EQ(f.edited.undo_name(), "Typing");
    EXPECT_EQ(reported, (std::vector<std::size_t>{0, 8192, 0, 8192}))
        << "somebody may have seen what was there meanwhile";
}

TEST(document, is_as_before_when_a_buffer_cannot_be_made)
{
    open_document f{"odd"};
    f.type(1400, 1);
    f.edited.change_device("small");
    f.buffers.fails = true;
    EXPECT_THROW(f.edited.change_device("large"), std::runtime_error);
    EXPECT_THROW(f.edited.undo(), std::runtime_error);
    EXPECT_THROW(f.edited.restore("large", "a.bin", std::array<std::uint8_t, 3>{}), std::runtime_error);
    EXPECT_EQ(f.edited.device(), "small");
    EXPECT_EQ(f.edited.hidden().end(), 1500u);
    f.buffers.fails = false;
    f.edited.undo();
    EXPECT_EQ(f.at(1400), 1);
}

TEST(document, forgets_steps_that_no_longer_fit_their_device)
{
    open_document f{"odd"};
    f.type(1400, 1);
    f.edited.change_device("small");
    f.buffers.devices["odd"].bytes = 700;
    f.edited.undo();
    EXPECT_EQ(f.edited.bytes().size(), 700u);
    EXPECT_FALSE(f.edited.can_undo());
    EXPECT_FALSE(f.edited.can_redo());
    EXPECT_TRUE(f.edited.changed());
    f.type(5, 5);
    f.buffers.devices["odd"].bytes = 900;
    f.edited.change_device("odd");
    EXPECT_FALSE(f.edited.can_undo());
    EXPECT_EQ(f.at(5), 5);
}

TEST(document, goes_on_where_its_bytes_are_moved_to)
{
    open_document f;
    f.type(5, 5);
    f.edited.moved(f.buffers.move());
    EXPECT_EQ(f.at(5), 5);
    f.edited.undo();
    EXPECT_EQ(f.buffers.buffer()[5], 0);
    EXPECT_THROW(f.edited.moved(f.buffers.buffer().first(9)), std::invalid_argument);
}

TEST(document, refuses_what_its_buffer_does_not_hold)
{
    open_document f;
    EXPECT_THROW(f.type(1024, 1), std::out_of_range);
    EXPECT_THROW(f.edited.fill(1, 1024, 1), std::out_of_range);
    EXPECT_THROW(f.edited.fill(2, SIZE_MAX, 1), std::out_of_range);
    EXPECT_FALSE(f.edited.changed());
}

TEST(document, replaces_at_many_places_in_one_step)
{
    open_document f;
    f.edited.fill(0, 100, 7);
    const std::array<std::size_t, 3> places{0, 2, 50};
    const std::array<std::uint8_t, 2> bytes{7, 8};
    f.edited.replace_each(places, bytes, "Replace All");
    EXPECT_EQ(f.at(1), 8);
    EXPECT_EQ(f.at(3), 8);
    EXPECT_EQ(f.at(51), 8);
    f.edited.undo();
    EXPECT_TRUE(std::ranges::all_of(f.edited.bytes().first(100), [](std::uint8_t byte) { return byte == 7; }));
    f.edited.redo();
    EXPECT_EQ(f.at(51), 8);
    const std::array<std::size_t, 2> outside{0, 1023};
    EXPECT_THROW(f.edited.replace_each(outside, bytes, "Replace All"), std::out_of_range);
    EXPECT_EQ(f.undo_all(), 2);
}

TEST(document, restores_a_content_that_is_not_saved)
{
    open_document f;
    f.type(1, 1);
    std::vector<std::uint8_t> all(3000, 0x33);
    f.edited.restore("odd", "a.bin", all);
    EXPECT_TRUE(f.edited.changed());
    EXPECT_FALSE(f.edited.can_undo());
    EXPECT_EQ(f.at(1499), 0x33);
    EXPECT_EQ(f.edited.hidden().end(), 3000u);
    f.edited.saved();
    EXPECT_FALSE(f.edited.changed());
}

}  // namespace
}  // namespace tamrix::tests
