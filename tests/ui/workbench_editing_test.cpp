// How the workbench protects what a person did, and edits bytes, worked by keyboard alone.
#include "programs_fixture.h"

#include <algorithm>

#include <gmock/gmock.h>

using namespace tamrix::tests;
using testing::EndsWith;
using testing::HasSubstr;

namespace {

class workbench_edits : public programs {
protected:
    program start(std::vector<std::string> arguments = {"--device", "27C64"})
    {
        return program{"tamrix-workbench", std::move(arguments), settings()};
    }
    fs::path unsaved() const { return folder / ".local" / "share" / "tamrix" / "unsaved"; }
    /// One that is written to its end.
    bool has_emergency_copy() const
    {
        if (!fs::exists(unsaved())) return false;
        const fs::directory_iterator all{unsaved()};
        return std::any_of(begin(all), end(all), [](const auto& one) { return one.path().extension() == ".copy"; });
    }
    bool holds(const std::string& first) const
    {
        return comes_true_within_ten_seconds([&] { return buffer(first.size()) == first; });
    }
    void load_demo(program& workbench) const
    {
        workbench.focus("Load A File To Buffer");
        workbench.press("Return");
        workbench.focus("^demo.hex.*tamrix workbench");
    }
    static void answer(program& workbench, const std::string& title, const std::string& keys)
    {
        workbench.focus(title);
        workbench.press(keys);
        comes_true_within_ten_seconds([&] { return workbench.shown(title) == 0; });
        workbench.focus("tamrix workbench");
    }
    /// Types into a short question and accepts it.
    static void give(program& workbench, const std::string& title, const std::string& letters)
    {
        workbench.focus(title);
        workbench.press("ctrl+a");
        workbench.type(letters);
        answer(workbench, title, "Return");
    }
};

}  // namespace

TEST_F(workbench_edits, and_asks_before_changes_are_lost_by_leaving)
{
    program workbench = start();
    workbench.focus("^tamrix workbench");
    workbench.type("5");
    workbench.focus("^.tamrix workbench");
    workbench.press("ctrl+q");
    answer(workbench, "^Unsaved Changes$", "Escape");
    EXPECT_TRUE(holds("\x5F"));
    workbench.press("ctrl+z");
    workbench.focus("^tamrix workbench");
    EXPECT_TRUE(holds("\xFF"));
    quit(workbench);
}

TEST_F(workbench_edits, and_saves_before_it_leaves_when_the_person_wants_it)
{
    program workbench = start({"--device", "27C64", file("demo.hex")});
    load_demo(workbench);
    workbench.type("AB");
    workbench.focus("^.demo.hex.*tamrix workbench");
    workbench.press("ctrl+q");
    workbench.focus("^Unsaved Changes$");
    workbench.press("alt+s");
    workbench.focus("Save Buffer To A File");
    workbench.press("Return");
    EXPECT_EQ(workbench.wait(), 0);
    EXPECT_THAT(content(file("demo.hex")), HasSubstr("AB01020304"));
}

TEST_F(workbench_edits, and_stays_open_when_the_save_before_leaving_is_cancelled)
{
    program workbench = start({"--device", "27C64", file("demo.hex")});
    load_demo(workbench);
    workbench.type("AB");
    workbench.focus("^.demo.hex.*tamrix workbench");
    workbench.press("ctrl+q");
    workbench.focus("^Unsaved Changes$");
    workbench.press("alt+s");
    workbench.focus("Save Buffer To A File");
    workbench.press("Escape");
    workbench.focus("^.demo.hex.*tamrix workbench");
    EXPECT_TRUE(holds("\xAB\x01"));
    discard_and_quit(workbench);
}

TEST_F(workbench_edits, and_asks_before_another_file_is_loaded_over_changes)
{
    program workbench = start();
    workbench.focus("^tamrix workbench");
    workbench.type("5");
    workbench.focus("^.tamrix workbench");
    const auto open = [&] {
        workbench.press("ctrl+o");
        workbench.focus("^Load File$");
        workbench.type(file("demo.hex"));
        workbench.press("Return");
    };
    open();
    answer(workbench, "^Unsaved Changes$", "alt+c");
    EXPECT_EQ(workbench.shown("Load A File To Buffer"), 0);
    EXPECT_TRUE(holds("\x5F"));
    open();
    workbench.focus("^Unsaved Changes$");
    workbench.press("alt+d");
    load_demo(workbench);
    EXPECT_TRUE(holds(std::string("\0\1\2", 3)));
    workbench.press("ctrl+z");
    workbench.focus("^.tamrix workbench");
    EXPECT_TRUE(holds("\x5F\xFF"));
    workbench.press("ctrl+shift+z");
    workbench.focus("^demo.hex.*tamrix workbench");
    quit(workbench);
}

TEST_F(workbench_edits, and_keeps_the_buffer_of_a_load_that_failed)
{
    std::ofstream{folder / "bad.hex"} << ":0100000011EE\n:01000100G1ED\n:00000001FF\n";
    program workbench = start({"--device", "27C64", file("bad.hex")});
    answer(workbench, "^Damaged File$", "alt+y");
    workbench.focus("Load A File To Buffer");
    workbench.press("Return");
    workbench.focus("^tamrix workbench");
    EXPECT_THAT(log_of(workbench), EndsWith("The buffer is as it was before.\n"));
    EXPECT_TRUE(holds("\xFF\xFF"));
    quit(workbench);
}

TEST_F(workbench_edits, and_shows_the_bytes_again_that_a_smaller_device_did_not_show)
{
    program workbench = start({"--device", "27C64", file("demo.hex")});
    load_demo(workbench);
    workbench.press("ctrl+g");
    give(workbench, "^Go to Address$", "1f00");
    workbench.type("66");
    const auto choose = [&](const char* name) {
        workbench.press("ctrl+d ctrl+a");
        workbench.type(name);
        workbench.press("Return");
    };
    choose("24c02");
    EXPECT_TRUE(comes_true_within_ten_seconds([&] { return buffer(1 << 20).size() == 0x100 + 2200; }));
    EXPECT_TRUE(holds(std::string("\0\1\2", 3)));
    choose("27c64");
    EXPECT_TRUE(comes_true_within_ten_seconds([&] { return buffer(0x1F02).ends_with("\xFF\x66\xFF"); }));
    workbench.press("ctrl+z ctrl+z");
    EXPECT_TRUE(comes_true_within_ten_seconds([&] { return buffer(1 << 20).size() == 0x2000 + 2200; }));
    workbench.press("ctrl+z");
    EXPECT_TRUE(comes_true_within_ten_seconds([&] { return buffer(0x1F02).ends_with("\xFF\xFF\xFF"); }));
    workbench.focus("^demo.hex.*tamrix workbench");
    quit(workbench);
}

TEST_F(workbench_edits, the_clipboard_by_keys)
{
    program workbench = start({"--device", "27C64", file("demo.hex")});
    load_demo(workbench);
    workbench.press("Right shift+Right shift+Right ctrl+c");
    EXPECT_EQ(clipboard(), "01 02 03");
    workbench.press("ctrl+Home ctrl+v");
    EXPECT_TRUE(holds("\x01\x02\x03\x03\x04"));
    workbench.press("Tab End ctrl+v");
    EXPECT_TRUE(comes_true_within_ten_seconds([&] { return buffer(0x18).substr(15) == "01 02 03\xFF"; }));
    workbench.press("ctrl+a ctrl+c");
    EXPECT_EQ(clipboard().size(), 0x2000u);
    discard_and_quit(workbench);
}

TEST_F(workbench_edits, the_fill_of_a_selection_and_of_the_buffer)
{
    program workbench = start();
    workbench.focus("^tamrix workbench");
    workbench.press("Right shift+Right alt+e l");
    give(workbench, "^Fill$", "77");
    EXPECT_TRUE(holds("\xFF\x77\x77\xFF"));
    workbench.press("Left alt+e l");
    workbench.focus("^Fill$");
    workbench.type("100");
    workbench.press("Return");
    EXPECT_EQ(workbench.shown("^Fill$"), 1) << "100 is no byte";
    give(workbench, "^Fill$", "0x66");
    answer(workbench, "^Unsaved Changes$", "alt+d");
    EXPECT_TRUE(holds("\x66\x66\x66\x66"));
    discard_and_quit(workbench);
}

TEST_F(workbench_edits, what_is_found_and_replaced)
{
    program workbench = start({"--device", "27C64", file("demo.hex")});
    load_demo(workbench);
    workbench.press("ctrl+f");
    give(workbench, "^Find$", "03 04");
    workbench.type("aa");
    EXPECT_TRUE(holds(std::string("\0\1\2\xAA\4", 5)));
    workbench.press("ctrl+h");
    workbench.focus("^Replace$");
    workbench.press("ctrl+a");
    workbench.type("ff ff");
    workbench.press("Tab");
    workbench.type("1234");
    workbench.press("alt+a");
    EXPECT_TRUE(comes_true_within_ten_seconds([&] { return buffer(0x13).substr(15) == "\x0F\x12\x34\x12"; }));
    answer(workbench, "^Replace$", "Escape");
    EXPECT_THAT(log_of(workbench), HasSubstr("ff ff -> 1234: 4088 places replaced"));
    discard_and_quit(workbench);
}

TEST_F(workbench_edits, and_offers_what_a_crash_left_at_the_next_start)
{
    {
        program workbench = start({"--device", "27C64", file("demo.hex")});
        load_demo(workbench);
        workbench.type("5566");
        EXPECT_TRUE(holds("\x55\x66\x02"));
        EXPECT_TRUE(comes_true_within_ten_seconds([&] { return has_emergency_copy(); }));
    }  // killed here
    {
        program workbench = start({"--device", "24C02"});
        answer(workbench, "^Unsaved Work$", "alt+l");
        workbench.focus("^tamrix workbench");
        quit(workbench);
    }
    {
        program workbench = start({"--device", "24C02"});
        answer(workbench, "^Unsaved Work$", "alt+r");
        workbench.focus("^.demo.hex.*tamrix workbench");
        EXPECT_TRUE(holds("\x55\x66\x02"));
        EXPECT_EQ(buffer(1 << 20).size(), 0x2000u + 2200);
        EXPECT_THAT(log_of(workbench), HasSubstr("Restored: " + file("demo.hex") + ", device 27C64, as it was on 20"));
        discard_and_quit(workbench);
    }
    EXPECT_TRUE(fs::is_empty(unsaved()));
    program workbench = start();
    workbench.focus("^tamrix workbench");
    quit(workbench);
}
