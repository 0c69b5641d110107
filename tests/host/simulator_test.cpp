#include "host/simulator.h"

#include <algorithm>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace tamrix::host {
namespace {

std::string refusal(const std::string& library, const std::string& chips)
{
    try {
        const simulator socket{library, chips};
        return "loaded";
    } catch (const std::runtime_error& error) {
        return error.what();
    }
}

TEST(simulated_socket, is_empty_at_first)
{
    const simulator socket{TAMRIX_SIM_LIBRARY, TAMRIX_DATA_OF_SOURCE "/chips"};
    EXPECT_EQ(socket.chip(), nullptr);
    EXPECT_EQ(socket.faults(), 0u);
    EXPECT_EQ(socket.options(40),
              "model 40\nspeed 20\nchips " TAMRIX_DATA_OF_SOURCE "/chips\nsocket empty\nno faults\n");
}

TEST(simulated_socket, its_options_tell_the_chip_and_its_faults)
{
    simulator socket{TAMRIX_SIM_LIBRARY, TAMRIX_DATA_OF_SOURCE "/chips"};
    EXPECT_FALSE(socket.insert("7400")) << "no programmer is running";
    EXPECT_EQ(socket.chip()->name, "7400");
    socket.set(3, pin_state::open);
    socket.set(1, pin_state::stuck_at_0);
    socket.set(14, pin_state::stuck_at_1);
    socket.set(6, pin_state::open);
    socket.set(6, pin_state::sound);
    EXPECT_EQ(socket.faults(), 3u);
    EXPECT_EQ(socket.state_of(3), pin_state::open);
    EXPECT_EQ(socket.state_of(6), pin_state::sound);
    EXPECT_EQ(socket.options(22), "model 22\nspeed 20\nchips " TAMRIX_DATA_OF_SOURCE
                                  "/chips\nsocket 7400\nno faults\nfault pin 1 stuck 0\nfault pin 3 open\nfault pin 14 "
                                  "stuck 1\n");
    socket.mend();
    EXPECT_EQ(socket.faults(), 0u);
}

TEST(simulated_socket, a_fresh_chip_is_sound)
{
    simulator socket{TAMRIX_SIM_LIBRARY, TAMRIX_DATA_OF_SOURCE "/chips"};
    socket.insert("7400");
    socket.set(3, pin_state::open);
    socket.insert("7404");
    EXPECT_EQ(socket.faults(), 0u);
    socket.insert("");
    EXPECT_EQ(socket.chip(), nullptr);
}

TEST(simulated_socket, refuses_chips_and_pins_that_are_not_there)
{
    simulator socket{TAMRIX_SIM_LIBRARY, TAMRIX_DATA_OF_SOURCE "/chips"};
    EXPECT_THROW(socket.set(1, pin_state::open), std::runtime_error) << "the socket is empty";
    socket.insert("7400");
    EXPECT_THROW(socket.insert("nothing"), std::runtime_error);
    EXPECT_EQ(socket.chip()->name, "7400");
    EXPECT_THROW(socket.set(0, pin_state::open), std::runtime_error);
    EXPECT_THROW(socket.set(15, pin_state::open), std::runtime_error);
    EXPECT_EQ(socket.faults(), 0u);
}

TEST(simulated_socket, its_chips_stand_by_number_and_other_names_among_them)
{
    const simulator socket{TAMRIX_SIM_LIBRARY, TAMRIX_DATA_OF_SOURCE "/chips"};
    const auto place = [&](const char* name) { return socket.find(name) - socket.chips().data(); };
    EXPECT_LT(place("7400"), place("7404"));
    EXPECT_LT(place("7404"), place("74132"));
    EXPECT_EQ(socket.find("74132")->same_as, "7400");
    EXPECT_EQ(socket.find("7400")->pin_names.at(6), "GND");
    EXPECT_EQ(socket.find("7400")->pins(), 14);
    EXPECT_EQ(socket.find("nothing"), nullptr);
}

TEST(simulated_socket, every_chip_has_a_name_of_its_own_and_a_function)
{
    const simulator socket{TAMRIX_SIM_LIBRARY, TAMRIX_DATA_OF_SOURCE "/chips"};
    std::vector<std::string> names;
    for (const simulated_chip& chip : socket.chips()) {
        names.push_back(chip.name);
        EXPECT_FALSE(chip.description.empty()) << chip.name;
        EXPECT_GE(chip.vcc_pin, 1) << chip.name;
        EXPECT_LE(chip.gnd_pin, chip.pins()) << chip.name;
    }
    std::ranges::sort(names);
    EXPECT_EQ(std::ranges::adjacent_find(names), names.end());
    EXPECT_GT(names.size(), 100u);
}

TEST(simulated_socket, a_library_that_is_none_and_a_folder_that_is_not_there_are_told)
{
    EXPECT_TRUE(refusal("/nowhere.so", "/").starts_with("The simulator cannot be loaded: "));
    EXPECT_NE(refusal(TAMRIX_SIM_LIBRARY, "/nowhere").find("The chips cannot be read: "), std::string::npos);
}

}  // namespace
}  // namespace tamrix::host
