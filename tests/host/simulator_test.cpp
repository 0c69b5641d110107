#include "host/fault_examples.h"
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
              "model 40\nspeed 20\nchips " TAMRIX_DATA_OF_SOURCE "/chips\nno signals\nsocket empty\nno faults\n");
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
                                  "/chips\nno signals\nsocket 7400\nno faults\nfault pin 1 stuck 0\nfault pin 3 open\n"
                                  "fault pin 14 stuck 1\n");
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

TEST(simulated_socket, takes_the_test_board)
{
    simulator socket{TAMRIX_SIM_LIBRARY, TAMRIX_DATA_OF_SOURCE "/chips"};
    socket.insert("7400");
    socket.insert("test board");
    EXPECT_EQ(socket.in_socket(), simulator::test_board);
    EXPECT_EQ(socket.chip(), nullptr) << "it is no chip";
    EXPECT_NE(socket.options(40).find("\nsocket test board\n"), std::string::npos);
    EXPECT_THROW(socket.set(1, pin_state::open), std::runtime_error);
}

TEST(simulated_socket, keeps_faults_of_the_programmer_when_the_chip_changes)
{
    simulator socket{TAMRIX_SIM_LIBRARY, TAMRIX_DATA_OF_SOURCE "/chips"};
    EXPECT_FALSE(socket.add_faults(" vcc driver 7 dead ;input 9 stuck 0;")) << "no programmer is running";
    socket.insert("7400");
    socket.set(3, pin_state::open);
    EXPECT_EQ(socket.more_faults(), (std::vector<std::string>{"vcc driver 7 dead", "input 9 stuck 0"}));
    EXPECT_EQ(socket.faults(), 1u) << "bad pins of the chip alone";
    EXPECT_TRUE(socket.options(40).ends_with("\nsocket 7400\nno faults\nfault pin 3 open\nfault vcc driver 7 dead\n"
                                             "fault input 9 stuck 0\n"))
        << socket.options(40);
    socket.mend();
    EXPECT_EQ(socket.more_faults().size(), 2u);
    socket.remove_fault(2);
    socket.remove_fault(0);
    EXPECT_EQ(socket.more_faults(), std::vector<std::string>{"input 9 stuck 0"});
    socket.remove_faults();
    EXPECT_TRUE(socket.options(40).ends_with("\nsocket 7400\nno faults\n"));
}

TEST(simulated_socket, a_fault_that_is_already_there_comes_last_and_once)
{
    simulator socket{TAMRIX_SIM_LIBRARY, TAMRIX_DATA_OF_SOURCE "/chips"};
    socket.add_faults("lost reply; no answer");
    socket.add_faults("lost reply");
    EXPECT_EQ(socket.more_faults(), (std::vector<std::string>{"no answer", "lost reply"}));
}

TEST(simulated_socket, refuses_a_wrong_fault_with_the_reason_and_changes_nothing)
{
    simulator socket{TAMRIX_SIM_LIBRARY, TAMRIX_DATA_OF_SOURCE "/chips"};
    socket.add_faults("no answer");
    const auto why = [&](const std::string& faults) {
        try {
            socket.add_faults(faults);
            return std::string{};
        } catch (const std::runtime_error& error) {
            return std::string{error.what()};
        }
    };
    EXPECT_EQ(why("vcc driver 7 broken"),
              "fault \"vcc driver 7 broken\": \"broken\" where \"dead\" or \"always on\" was expected");
    EXPECT_NE(why("vcc driver 7 dead; vcc driver 70 dead"), "");
    EXPECT_NE(why("vcc driver 7 dead\nsocket 7400"), "") << "a line of its own is a fault too";
    EXPECT_EQ(why(" ; "), "A fault is expected, such as \"vcc driver 7 dead\".");
    EXPECT_EQ(socket.more_faults(), std::vector<std::string>{"no answer"});
}

TEST(simulated_socket, understands_each_fault_that_it_offers)
{
    simulator socket{TAMRIX_SIM_LIBRARY, TAMRIX_DATA_OF_SOURCE "/chips"};
    for (const char* const example : fault_examples()) EXPECT_NO_THROW(socket.add_faults(example)) << example;
    EXPECT_EQ(socket.more_faults().size(), fault_examples().size()) << "one is there twice";
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
