// Where a person could lose something in the workbench, or be left without a word, worked by keyboard alone.
#include "programs_fixture.h"

#include <chrono>
#include <thread>

#include <gmock/gmock.h>

using namespace tamrix::tests;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

namespace {

const std::string main_title = "tamrix workbench";

class workbench_without_traps : public programs {
protected:
    struct started : program {
        started(const workbench_without_traps& of, const std::string& device, std::vector<std::string> files = {})
            : program{"tamrix-workbench", with(device, std::move(files)),
                      of.settings({"XDG_DATA_HOME=" + (of.folder / "data").string()})}
        {}
        static std::vector<std::string> with(const std::string& device, std::vector<std::string> files)
        {
            files.insert(files.begin(), {"--device", device});
            return files;
        }
        bool shows(const std::string& title, int windows = 1) const
        {
            return comes_true_within_ten_seconds([&] { return shown(title) == windows; });
        }
        void menu(const char* of_bar, const std::string& keys)
        {
            focus(main_title);
            press(of_bar);
            for (const char key : keys) press(std::string(1, key));
        }
    };

    static bool stays_away(const started& workbench, const char* window)
    {
        std::this_thread::sleep_for(std::chrono::seconds{1});
        return workbench.shown(window) == 0;
    }
    std::string buffer(std::size_t count) const
    {
        return content("/dev/shm/" + name_space + "qorfanibuffer").substr(0, count);
    }
    static void insert(started& workbench, const char* chip)
    {
        workbench.focus(main_title);
        workbench.press("ctrl+t");
        workbench.type(chip);
        workbench.press("Return");
    }
    /// From the list of chips over the tests of a device to the log; `device` is typed over the one that is proposed.
    static std::string log_after_test(started& workbench, const char* device, const char* answer)
    {
        const char* const dialog = "TTL & CMOS Test";
        workbench.focus(main_title);
        workbench.press("F5");
        workbench.focus(dialog);
        if (*device != '\0') workbench.type(device);
        workbench.press("Tab Tab Return");
        EXPECT_TRUE(comes_true_within_ten_seconds([&] {
            if (workbench.shown("^Warning!") == 0) return workbench.shown(dialog) != 1;
            workbench.focus("^Warning!");
            workbench.press(answer);
            return std::string{answer} == "Escape" && workbench.shown("^Warning!") == 0;
        }));
        EXPECT_TRUE(comes_true_within_ten_seconds([&] {
            if (workbench.shown(dialog) == 0) return true;
            workbench.focus(dialog);
            workbench.press("Escape");
            return false;
        }));
        workbench.focus(main_title);
        return log_of(workbench);
    }
    /// Pixels in the colour of what is wrong, on the page at the left.
    static int marks(const started& workbench)
    {
        const picture shown = workbench.look_at(main_title);
        int count = 0;
        for (int y = 0; y < shown.height; ++y)
            for (int x = 0; x < shown.width * 3 / 10; ++x) count += shown.colour(x, y) == 0xB00000 ? 1 : 0;
        return count;
    }
};

}  // namespace

TEST_F(workbench_without_traps, tests_the_chip_in_the_socket_and_marks_the_pins_that_failed)
{
    started workbench{*this, "27C64"};
    insert(workbench, "7400");
    EXPECT_THAT(log_after_test(workbench, "", "Escape"), EndsWith("Logic test of 7400: passed\n"));
    EXPECT_EQ(marks(workbench), 0);
    insert(workbench, "7408");
    EXPECT_THAT(log_after_test(workbench, "7400", "Escape"),
                EndsWith("Logic test of 7400: failed, 1 row (pins 3, 6, 8, 11)\n"));
    EXPECT_GT(marks(workbench), 0);
    insert(workbench, "7404");
    EXPECT_TRUE(comes_true_within_ten_seconds([&] { return marks(workbench) == 0; }));
    quit(workbench);
    EXPECT_EQ(workbench.output(), "");
}

TEST_F(workbench_without_traps, says_how_many_rows_failed_that_a_person_ignored)
{
    started workbench{*this, "27C64"};
    insert(workbench, "7408");
    EXPECT_THAT(log_after_test(workbench, "7400", "alt+i"),
                testing::ContainsRegex("Logic test of 7400: [0-9]+ rows failed, ignored \\(pins 3, 6, 8, 11\\)\n$"));
    quit(workbench);
}

TEST_F(workbench_without_traps, hands_the_keyboard_to_the_value_of_a_new_device_that_is_wrong)
{
    started workbench{*this, "27C64"};
    workbench.menu("alt+d", "n");
    const auto confirm = [&](const char* value) {
        workbench.focus("^New device$");  // which waits for the dialog to have dealt with the last Return
        workbench.type(value);
        workbench.press("Return");
    };
    confirm("27C64");
    workbench.focus("^New device$");
    workbench.type("X9");
    workbench.press("Tab Tab");
    confirm("0");
    confirm("0x40");
    ASSERT_TRUE(workbench.shows("^New device$", 0));
    workbench.focus(main_title);
    EXPECT_THAT(log_of(workbench), EndsWith("Device X9, Microchip: buffer of 64 bytes\n"));
    quit(workbench);
    EXPECT_EQ(workbench.output(), "");
}

TEST_F(workbench_without_traps, asks_before_a_device_goes_out_of_the_list_and_takes_enter_for_a_no)
{
    const fs::path own = folder / "config" / "tamrix" / "devices.txt";
    fs::create_directories(own.parent_path());
    std::ofstream{own} << "device X9\n    words 0x40\n";
    started workbench{*this, "X9"};
    for (const char* refusal : {"Return", "Escape"}) {
        workbench.focus(main_title);
        workbench.press("alt+m");
        workbench.focus("^Remove Device$");
        workbench.press(refusal);
        ASSERT_TRUE(workbench.shows("^Remove Device$", 0));
        EXPECT_THAT(content(own), HasSubstr("device X9\n"));
    }
    workbench.focus(main_title);
    workbench.press("alt+m");
    workbench.focus("^Remove Device$");
    workbench.press("alt+y");
    EXPECT_TRUE(comes_true_within_ten_seconds([&] { return content(own).find("X9") == std::string::npos; }));
    workbench.focus(main_title);
    quit(workbench);
}

TEST_F(workbench_without_traps, asks_which_of_several_files_it_is_to_load)
{
    std::ofstream{folder / "second.bin"} << "Zwei";
    started workbench{*this, "27C64", {file("demo.hex"), file("second.bin")}};
    workbench.focus("^Load One of Several Files$");
    workbench.press("Down Return");
    workbench.focus("Load A File To Buffer");
    workbench.press("Return");
    workbench.focus("second.bin.*" + main_title);
    EXPECT_EQ(buffer(4), "Zwei");
    quit(workbench);
}

TEST_F(workbench_without_traps, loads_none_of_several_files_if_the_person_chooses_none)
{
    started workbench{*this, "27C64", {file("demo.hex"), file("demo.hex")}};
    workbench.focus("^Load One of Several Files$");
    workbench.press("Escape");
    ASSERT_TRUE(workbench.shows("^Load One of Several Files$", 0));
    EXPECT_TRUE(stays_away(workbench, "Load A File To Buffer"));
    EXPECT_EQ(buffer(2), "\xFF\xFF");
    workbench.focus(main_title);
    quit(workbench);
}

TEST_F(workbench_without_traps, does_nothing_with_a_buffer_that_was_released_until_it_is_attached_again)
{
    started workbench{*this, "27C64"};
    workbench.menu("alt+o", "dr");
    workbench.focus(main_title);
    EXPECT_THAT(log_of(workbench), EndsWith("Release Buffer: done\n"));
    workbench.press("ctrl+o ctrl+s ctrl+f ctrl+g F3");
    EXPECT_TRUE(stays_away(workbench, "^Load File$|^Save Buffer$|^Find$|^Go to Address$"));
    EXPECT_EQ(workbench.shown(".*"), 1);
    workbench.menu("alt+o", "db");
    workbench.focus(main_title);
    workbench.press("ctrl+g");
    workbench.focus("^Go to Address$");
    workbench.press("Escape");
    workbench.focus(main_title);
    quit(workbench);
    EXPECT_EQ(workbench.output(), "");
}

TEST_F(workbench_without_traps, attaches_the_buffer_again_for_another_device)
{
    started workbench{*this, "27C64"};
    workbench.menu("alt+o", "dr");
    workbench.focus(main_title);
    workbench.press("ctrl+d ctrl+a");
    workbench.type("24c02");
    workbench.press("Return");
    EXPECT_TRUE(comes_true_within_ten_seconds(
        [&] { return content("/dev/shm/" + name_space + "qorfanibuffer").size() == 0x100 + 2200; }));
    workbench.press("ctrl+g");
    workbench.focus("^Go to Address$");
    workbench.press("Escape");
    workbench.focus(main_title);
    quit(workbench);
}

TEST_F(workbench_without_traps, shows_the_note_of_a_device_once_also_over_its_starts)
{
    const auto choose = [](started& workbench, const char* device) {
        workbench.focus(main_title);
        workbench.press("ctrl+d ctrl+a");
        workbench.type(device);
        workbench.press("Return");
    };
    {
        started workbench{*this, "27C64"};
        choose(workbench, "PIC16C57");
        workbench.focus("^Note!");
        workbench.press("Return");
        workbench.focus(main_title);
        quit(workbench);
    }
    {
        started workbench{*this, "27C64"};
        choose(workbench, "PIC16C57");
        EXPECT_TRUE(stays_away(workbench, "^Note!"));
        workbench.menu("alt+d", "u");
        choose(workbench, "PIC16C54");
        EXPECT_TRUE(stays_away(workbench, "^Note!")) << "turned off";
        quit(workbench);
    }
    started workbench{*this, "27C64"};
    choose(workbench, "PIC16C54");
    EXPECT_TRUE(stays_away(workbench, "^Note!")) << "still turned off";
    workbench.menu("alt+d", "u");
    choose(workbench, "27C64");
    choose(workbench, "PIC16C54");
    workbench.focus("^Note!");
    workbench.press("Return");
    workbench.focus(main_title);
    quit(workbench);
}
