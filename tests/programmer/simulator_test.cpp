// What the library of the simulated programmer exports beside the programmer: its socket, its hazards, its chips.
#include "tamrix/simulator.h"

#include "programmer/library_symbol.h"
#include "programmer/loaded_programmer.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <bit>
#include <map>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace tamrix::tests {

namespace {

constexpr const char* sim_library = TAMRIX_SIM_LIBRARY;
const std::string chips_entry = "chips " TAMRIX_CHIPS "\nspeed 1000\n";

template <class Function>
Function* exported(const char* name)
{
    std::string why;
    static void* const handle = hw::load_library(sim_library, why);
    return reinterpret_cast<Function*>(hw::symbol_of(handle, name));
}

/// "" where it was done.
std::string change(const std::string& entries)
{
    std::array<char, 512> error{};
    auto* const act = exported<decltype(tamrix_simulator_change)>("tamrix_simulator_change");
    switch (act(entries.c_str(), error.data(), error.size())) {
    case TAMRIX_SIMULATOR_DONE: return "";
    case TAMRIX_SIMULATOR_NOT_RUNNING: return "not running";
    default: return error.data();
    }
}

std::vector<std::string> hazards()
{
    std::vector<std::string> texts;
    exported<decltype(tamrix_simulator_hazards)>("tamrix_simulator_hazards")(
        [](void* into, const char* text) { static_cast<std::vector<std::string>*>(into)->emplace_back(text); }, &texts);
    return texts;
}

struct told_chip {
    std::string description, same_as;
    int vcc, gnd;
    std::vector<std::string> pins;
};

std::string list_chips(const char* folder, std::map<std::string, told_chip>& chips)
{
    std::array<char, 512> error{};
    const auto take = [](void* into, const tamrix_simulator_chip* chip) {
        told_chip told{chip->description, chip->same_as, chip->vcc_pin, chip->gnd_pin, {}};
        told.pins.assign(chip->pin_names, chip->pin_names + chip->pins);
        static_cast<std::map<std::string, told_chip>*>(into)->emplace(chip->name, told);
    };
    auto* const act = exported<decltype(tamrix_simulator_chips)>("tamrix_simulator_chips");
    return act(folder, take, &chips, error.data(), error.size()) == TAMRIX_SIMULATOR_DONE ? "" : error.data();
}

/// A programmer that supplies a chip of 14 pins, whose pins 7 and 14 are ground and supply.
class supplied : public testing::Test {
protected:
    std::array<std::uint8_t, 20> ibuf1{};
    std::unique_ptr<hw::programmer> made;

    void make(const std::string& options)
    {
        made = hw::library_source(sim_library, options)({ibuf1.data(), 20});
        made->device().setvcc(5000);
        made->device().gndpin(1, 1);
        made->device().vccpin(107, 1);
    }
    ~supplied() override
    {
        if (made != nullptr) made->device().hwreset();
        made.reset();
        (void)hazards();
    }
    /// Contacts that read low. The ground is one; a NAND whose inputs are open is another.
    int lows()
    {
        int count = 0;
        for (std::uint8_t port = 0; port < 6; ++port) {
            count +=
                8 - std::popcount(static_cast<std::uint8_t>(made->device().regin(static_cast<std::uint8_t>(2 * port))));
        }
        return count;
    }
};

}  // namespace

TEST_F(supplied, a_chip_of_the_folder_is_in_the_socket_from_the_beginning)
{
    make(chips_entry + "socket 7400\nfault pin 3 open");
    EXPECT_EQ(lows(), 1 + 3);
}

TEST_F(supplied, signals_change_all_or_none)
{
    make("model 9; ram banks 1; speed 1000; signal P21 low");
    const auto port = [&] { return made->device().regin(0); };
    EXPECT_EQ(port(), 0xF6) << "P24 has the ground";
    EXPECT_EQ(change("signal P22 low"), "");
    EXPECT_EQ(port(), 0xF4);
    EXPECT_EQ(change("no signals; signal P23 low; signal P29 low"),
              "signal \"P29 low\", column 1: \"P29\" where a pin from P21 to P28, or several as P21..P28 was expected");
    EXPECT_NE(change("signal P23 low; fault moon"), "");
    EXPECT_NE(change("signal P23 low; socket moon"), "");
    EXPECT_EQ(port(), 0xF4);
    EXPECT_EQ(change("no signals; signal P23 low"), "");
    EXPECT_EQ(port(), 0xF3);
    EXPECT_EQ(change("no faults"), "");
    EXPECT_EQ(port(), 0xF3);
    EXPECT_EQ(change("signal chip 7404 1=P23 2=P25"),
              "signal \"chip 7404 1=P23 2=P25\", column 6: there are no chips here");
    EXPECT_EQ(change(chips_entry.substr(0, chips_entry.find('\n')) + "; signal chip 7404 1=P23 2=P25 3=P25 4=P26"), "");
    EXPECT_EQ(port(), 0xD3);
    EXPECT_EQ(change("no signals"), "");
    EXPECT_EQ(port(), 0xF7);
}

TEST_F(supplied, another_name_of_a_chip_will_do_and_entries_stand_in_any_order)
{
    make("socket 74132;speed 1000;chips " TAMRIX_CHIPS);
    EXPECT_EQ(lows(), 1 + 4);
}

TEST_F(supplied, chips_and_faults_come_and_go_while_it_runs)
{
    make(chips_entry);
    EXPECT_EQ(lows(), 1);
    EXPECT_EQ(change("socket 7400"), "");
    EXPECT_EQ(lows(), 1 + 4);
    EXPECT_EQ(change("fault pin 3 stuck 1; fault pin 6 open"), "");
    EXPECT_EQ(lows(), 1 + 2);
    EXPECT_EQ(change("no faults\nfault pin 11 open"), "");
    EXPECT_EQ(lows(), 1 + 3);
    EXPECT_EQ(change("no faults"), "");
    EXPECT_EQ(lows(), 1 + 4);
    EXPECT_EQ(change("socket empty"), "");
    EXPECT_EQ(lows(), 1);
    EXPECT_EQ(change(""), "");
}

TEST_F(supplied, a_change_that_is_refused_changes_nothing)
{
    make(chips_entry + "socket 7400");
    EXPECT_EQ(change("socket empty; fault pin 3"), "fault \"pin 3\": its end where \"open\" or \"stuck\" was expected");
    EXPECT_EQ(change("no faults; fault pin 3 open; socket 9999x"),
              "socket \"9999x\": empty, test board or a chip was expected");
    EXPECT_EQ(change("model 22"),
              "option \"model 22\": fault, no faults, signal, no signals, socket or chips was expected");
    EXPECT_EQ(lows(), 1 + 4);
}

TEST_F(supplied, a_folder_of_chips_can_be_told_later)
{
    make("speed 1000");
    EXPECT_EQ(change("socket 7400"), "socket \"7400\": empty or test board was expected, or an entry \"chips FOLDER\"");
    EXPECT_NE(change("chips /nowhere; socket 7400").find("the folder cannot be read"), std::string::npos);
    EXPECT_EQ(change("socket 7400; chips " TAMRIX_CHIPS), "");
    EXPECT_EQ(change("socket 7404"), "");
    EXPECT_EQ(lows(), 1 + 6);
}

TEST_F(supplied, hazards_are_told_once_also_when_the_programmer_has_gone)
{
    (void)hazards();
    make(chips_entry + "socket 7400");
    made->device().delayms(1);
    EXPECT_EQ(hazards(), std::vector<std::string>{});
    made->device().gndpin(107, 1);  // ground on the supply pin
    made->device().delayms(1);
    const auto first = hazards();
    ASSERT_FALSE(first.empty());
    EXPECT_NE(first[0].find("supply and ground at once"), std::string::npos) << first[0];
    EXPECT_EQ(hazards(), std::vector<std::string>{});
    made.reset();
    EXPECT_FALSE(hazards().empty()) << "drivers were left on";
    EXPECT_EQ(hazards(), std::vector<std::string>{});
}

TEST_F(supplied, changes_come_from_any_thread_while_it_works)
{
    make(chips_entry + "socket 7400");
    std::thread person{[] {
        for (int i = 0; i < 20; ++i) {
            EXPECT_EQ(change("fault pin 3 open"), "");
            EXPECT_EQ(change("no faults"), "");
            (void)hazards();
        }
    }};
    for (int i = 0; i < 200; ++i) {
        const int seen = lows();
        EXPECT_TRUE(seen == 1 + 3 || seen == 1 + 4) << seen;
    }
    person.join();
    EXPECT_EQ(lows(), 1 + 4);
}

TEST(simulator, without_a_programmer_there_is_nothing_to_change)
{
    EXPECT_EQ(change("socket empty"), "not running");
    EXPECT_EQ(change("nonsense"),
              "option \"nonsense\": fault, no faults, signal, no signals, socket or chips was expected");
    EXPECT_EQ(hazards(), std::vector<std::string>{});
}

TEST(simulator, lists_the_chips_with_their_pins)
{
    std::map<std::string, told_chip> chips;
    EXPECT_EQ(list_chips(TAMRIX_CHIPS, chips), "");
    ASSERT_TRUE(chips.contains("7400"));
    const told_chip& nand = chips.at("7400");
    EXPECT_EQ(nand.description, "quad 2-input NAND");
    EXPECT_EQ(nand.same_as, "");
    EXPECT_EQ(nand.pins, (std::vector<std::string>{"1A", "1B", "1Y", "2A", "2B", "2Y", "GND", "3Y", "3A", "3B", "4Y",
                                                   "4A", "4B", "VCC"}));
    EXPECT_EQ(nand.vcc, 14);
    EXPECT_EQ(nand.gnd, 7);
    EXPECT_EQ(chips.at("74132").same_as, "7400");
    EXPECT_EQ(chips.at("74132").pins, nand.pins);
}

TEST(simulator, a_folder_without_chips_and_one_that_is_not_there_are_told)
{
    std::map<std::string, told_chip> chips;
    EXPECT_EQ(list_chips(TAMRIX_CHIPS "/..", chips), "");
    EXPECT_NE(list_chips("/nowhere", chips).find("the folder cannot be read"), std::string::npos);
    EXPECT_NE(list_chips(nullptr, chips), "");
    EXPECT_TRUE(chips.empty());
}

TEST(simulator, refuses_a_wrong_fault_before_a_programmer_exists)
{
    EXPECT_EQ(change("fault vcc driver 7 dead; fault input 9 stuck 0"), "not running");
    EXPECT_EQ(change("fault vcc driver 7 dead; fault input 9"),
              "fault \"input 9\": its end where \"stuck\" was expected");
}

TEST(simulator, refuses_a_wrong_signal_before_a_programmer_exists)
{
    const std::string chips = "chips " TAMRIX_CHIPS "; ";
    EXPECT_EQ(change(chips + "signal P21 square 1000; signal chip 7493 14=P21 12=P22"), "not running");
    EXPECT_EQ(change(chips + "signal P21 square 1000; signal P21 high"),
              "signal \"P21 high\", column 1: P21 has a signal already");
    EXPECT_NE(change("signal chip 7493 14=P21 12=P22"), "not running") << "without a folder there are no chips";
}

TEST(simulator, a_short_place_for_the_reason_is_not_overrun)
{
    std::array<char, 8> error{};
    error.fill('x');
    auto* const act = exported<decltype(tamrix_simulator_change)>("tamrix_simulator_change");
    EXPECT_EQ(act("nonsense", error.data(), 4), TAMRIX_SIMULATOR_REFUSED);
    EXPECT_STREQ(error.data(), "opt");
    EXPECT_EQ(error[4], 'x');
    EXPECT_EQ(act("nonsense", nullptr, 0), TAMRIX_SIMULATOR_REFUSED);
    EXPECT_EQ(act(nullptr, nullptr, 0), TAMRIX_SIMULATOR_NOT_RUNNING);
}

}  // namespace tamrix::tests
