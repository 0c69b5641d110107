#include "sim/library/options.h"

#include <gtest/gtest.h>

#include <stdexcept>

namespace tamrix::tests {

namespace {

TEST(library_options, have_a_generation_that_only_a_new_programmer_takes)
{
    EXPECT_EQ(sim::read_options("model 9; generation 17").generation, 17);
    EXPECT_EQ(sim::read_options("model 9").generation, 0);
    EXPECT_THROW(sim::read_changes("generation 17"), std::invalid_argument);
}

TEST(library_options, put_signals_on_and_take_them_off)
{
    const auto options = sim::read_options("model 9; signal P21 square 1000 duty 25\nsignal P22 uart 9600 \"a\\x3B\"");
    EXPECT_EQ(options.signals, (std::vector<std::string>{"P21 square 1000 duty 25", "P22 uart 9600 \"a\\x3B\""}));
    EXPECT_FALSE(options.no_signals);
    const auto changes = sim::read_changes("signal P21 low; no signals; signal P23 high");
    EXPECT_EQ(changes.signals, (std::vector<std::string>{"P23 high"}));
    EXPECT_TRUE(changes.no_signals);
}

TEST(library_options, name_a_test_board_that_joins_the_lines_of_the_models_socket)
{
    for (const int model : {9, 23, 27}) {
        const auto board = sim::part_named("test board", model, "");
        const sim::wiring wires{model};
        EXPECT_EQ(board->pins(), wires.contacts());
        EXPECT_EQ(board->links().size(), static_cast<std::size_t>(wires.rows()));
        for (const auto& [one, other] : board->links()) {
            const bool faces = one + other == wires.contacts() - 1;
            EXPECT_TRUE(faces || wires.can_only_pull_low()) << model << ' ' << one;
        }
    }
    // The lowest lines of 40 contacts are those of two contacts side by side.
    const sim::wiring wires{23};
    const auto board = sim::part_named("test board", 23, "");
    const auto& [one, other] = board->links()[3];
    EXPECT_EQ(wires.code_of_contact(wires.contact_of_pin(one, 40)), 101);
    EXPECT_EQ(wires.code_of_contact(wires.contact_of_pin(other, 40)), 102);
}

}  // namespace
}  // namespace tamrix::tests
