// What the workbench does with the device: its parameters, its note, its test vectors, the language of all that.
#include "programs_fixture.h"

#include "messages/catalogue.h"

#include <chrono>
#include <cstdint>
#include <cstring>
#include <thread>

#include <gmock/gmock.h>

using namespace tamrix::tests;
using testing::EndsWith;
using testing::HasSubstr;

namespace {

using namespace std::chrono_literals;

const std::string title = "^tamrix workbench";

class workbench_with_device : public programs {
protected:
    template <class Number>
    Number block(const char* name, std::size_t index = 0) const
    {
        const std::string bytes = content("/dev/shm/" + name_space + "qorfan" + name + "0");
        Number value{};
        if (bytes.size() >= (index + 1) * sizeof value)
            std::memcpy(&value, bytes.data() + index * sizeof value, sizeof value);
        return value;
    }
    static void choose(const program& workbench, const std::string& device)
    {
        workbench.press("ctrl+d ctrl+a");
        workbench.type(device);
        workbench.press("Return");
    }
    static void quit(program& workbench)
    {
        workbench.focus(title);
        programs::quit(workbench);
        EXPECT_EQ(workbench.output(), "");
    }
    static bool stays_away(const program& workbench, const char* window)
    {
        std::this_thread::sleep_for(1s);
        return workbench.shown(window) == 0;
    }
};

}  // namespace

TEST_F(workbench_with_device, changes_the_parameters_of_the_device)
{
    program workbench{"tamrix-workbench", {"--device", "27C64"}, settings()};
    workbench.focus(title);
    workbench.press("ctrl+m");
    workbench.focus("Modify Algorithm Parameters");
    workbench.press("ctrl+a");
    workbench.type("5.75");
    workbench.press("Return");
    workbench.focus(title);
    EXPECT_EQ(block<std::int16_t>("bvcc"), 575);
    EXPECT_EQ(block<std::int16_t>("bvpp"), 1300);
    EXPECT_EQ(block<std::int32_t>("pwte", 1), 1);
    quit(workbench);
}

TEST_F(workbench_with_device, shows_the_note_of_a_device_when_it_is_chosen_and_once_more_when_asked)
{
    program workbench{"tamrix-workbench", {"--device", "PIC16C54"}, settings()};
    workbench.focus(title);
    EXPECT_TRUE(stays_away(workbench, "^Note!")) << "not at the start";
    choose(workbench, "PIC16C57");
    workbench.focus("^Note!");
    workbench.press("Return");
    workbench.focus(title);
    choose(workbench, "27C64");
    choose(workbench, "PIC16C57");
    EXPECT_TRUE(stays_away(workbench, "^Note!")) << "not by itself again";
    workbench.press("alt+d");
    workbench.press("o");
    workbench.focus("^Note!");
    workbench.press("Return");
    quit(workbench);
}

TEST_F(workbench_with_device, waits_with_a_note_until_a_dialog_is_closed)
{
    program workbench{"tamrix-workbench", {"--device", "27C64"}, settings()};
    workbench.focus(title);
    choose(workbench, "PIC16C54");
    workbench.press("F4");
    workbench.focus("^Values of PIC16C54");
    EXPECT_TRUE(stays_away(workbench, "^Note!"));
    workbench.press("Escape");
    workbench.focus("^Note!");
    workbench.press("Return");
    quit(workbench);
}

TEST_F(workbench_with_device, tells_of_the_external_supply_in_its_log)
{
    fs::create_directories(folder / "config" / "tamrix");
    std::ofstream{folder / "config" / "tamrix" / "workbench.conf"} << "[Socket]\nModel=23\n";
    program workbench{"tamrix-workbench", {"--device", "27C64"}, settings()};
    workbench.focus(title);
    choose(workbench, "PIC16C57");
    workbench.focus("^Note!");
    workbench.press("Return");
    workbench.focus(title);
    const std::string log = log_of(workbench);
    EXPECT_TRUE(log.ends_with("\n>>Note! Need AC adaptor!\n")) << log;
    quit(workbench);
}

TEST_F(workbench_with_device, edits_the_test_vectors_of_a_fuse_file)
{
    const std::string row = "00000000NN1111111111";
    std::ofstream{folder / "in.jed"} << fuse_file("My part", std::string(2194, '1'), {row, row});
    program workbench{"tamrix-workbench", {"--device", "GAL16V8", file("in.jed")}, settings()};
    workbench.focus("in.jed.*tamrix workbench");
    workbench.press("alt+e");
    workbench.press("v");
    workbench.focus("^PLD Test Vector Edit");
    workbench.press("Down");
    workbench.type("hl");
    workbench.press("Return");  // a row after it
    workbench.type("c");
    workbench.press("alt+d");
    workbench.focus("in.jed.*tamrix workbench");
    const auto saved = [&](const char* entry, const char* title, const char* name) {
        workbench.press("alt+f");
        workbench.press(entry);
        workbench.focus(title);
        workbench.type(file(name));
        workbench.press("Return");
        EXPECT_TRUE(
            comes_true_within_ten_seconds([&] { return content(file(name)).find("\nC") != std::string::npos; }));
        workbench.focus("tamrix workbench");
        return content(file(name));
    };
    EXPECT_THAT(saved("e", "^Save JEDEC$", "out.jed"),
                HasSubstr("V0001 " + row + "*\r\nV0002 HL000000NN1111111111*\r\nV0003 CNNNNNNNNNNNNNNNNNNN*\r\n"));
    EXPECT_THAT(saved("w", "^Save JEDEC as the Plug-in Writes It$", "own.jed"),
                HasSubstr("V000001 " + row + " *\r\nV000002 HL000000NN1111111111 *\r\nV000003 CNNNNNNNNNNNNNNNNNNN *"));
    const std::string log = log_of(workbench);
    EXPECT_THAT(log,
                HasSubstr("Save JEDEC: done\n" + file("out.jed") + ": written in the form of the standard, JESD3-C\n" +
                          file("out.jed") + ": jedec, fuses: 2194, of which 1: 2194"));
    EXPECT_THAT(
        log, EndsWith("vectors: 3\nSave JEDEC: done\n" + file("own.jed") + ": written in the form of the plug-in\n"));
    workbench.focus("tamrix workbench");
    programs::quit(workbench);
    EXPECT_EQ(workbench.output(), "");
}

TEST_F(workbench_with_device, plays_the_test_vectors_of_a_fuse_file)
{
    std::ofstream{folder / "in.jed"} << fuse_file("My part", "0101010101010101", {"000000000N0000000HLN"});
    program workbench{"tamrix-workbench", {"--device", "GAL16V8", file("in.jed")}, settings()};
    workbench.focus("in.jed.*tamrix workbench");
    workbench.press("alt+t");
    workbench.press("v");
    const std::string log = log_of(workbench);
    EXPECT_NE(log.find("Vector Test fail!"), std::string::npos) << "nothing in the socket pulls a pin low\n" << log;
    programs::quit(workbench);
}

TEST_F(workbench_with_device, says_that_there_are_no_vectors_to_play)
{
    program workbench{"tamrix-workbench", {"--device", "GAL16V8"}, settings()};
    workbench.focus(title);
    workbench.press("alt+t");
    workbench.press("v");
    const std::string log = log_of(workbench);
    EXPECT_NE(log.find("Vector Test: the device has no vectors"), std::string::npos) << log;
    quit(workbench);
}

TEST_F(workbench_with_device, follows_the_language_menu_with_its_next_dialog_and_keeps_it)
{
    constexpr std::int32_t chinese = 3000;
    const std::int32_t second = tamrix::has_language(chinese) ? chinese : 0;  // a language that is missing is grey
    {
        program workbench{"tamrix-workbench", {"--device", "27C64"}, settings()};
        workbench.focus(title);
        EXPECT_EQ(block<std::int32_t>("Language"), 0);
        workbench.press("alt+l");
        workbench.press("Down Return");
        EXPECT_TRUE(comes_true_within_ten_seconds([&] { return block<std::int32_t>("Language") == second; }));
        workbench.press("ctrl+m");
        workbench.focus("^" + tamrix::LoadResString(second + 1016) + "$");
        workbench.press("Escape");
        quit(workbench);
    }
    program workbench{"tamrix-workbench", {"--device", "27C64"}, settings()};
    workbench.focus(title);
    EXPECT_EQ(block<std::int32_t>("Language"), second);
    quit(workbench);
}

TEST_F(workbench_with_device, starts_in_english_where_its_settings_name_a_language_that_is_not_there)
{
    fs::create_directories(folder / "config" / "tamrix");
    for (const char* word : {"tlh", "36000", "", "15000"}) {
        std::ofstream{folder / "config" / "tamrix" / "workbench.conf"} << "Language=" << word << "\n";
        program workbench{"tamrix-workbench", {"--device", "27C64"}, settings()};
        workbench.focus(title);
        EXPECT_EQ(block<std::int32_t>("Language"), 0) << word;
        workbench.press("ctrl+m");
        workbench.focus("^Modify Algorithm Parameters$");
        workbench.press("Escape");
        quit(workbench);
    }
}
