// The logic IC test on the simulated programmer, from the chip that goes into the socket to what the person reads.
#include "host/simulator.h"
#include "host/user_folder.h"
#include "over_host.h"
#include "program.h"
#include "support/own_settings.h"
#include "workbench/host_session.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <wx/listbox.h>
#include <wx/toplevel.h>

using namespace tamrix;
using namespace tamrix::tests;
namespace fs = std::filesystem;

namespace {

constexpr const char* test_title = "TTL & CMOS Test";

/// The workbench as a program of its own, worked by keyboard alone.
class workbench_with_socket : public testing::Test {
protected:
    const fs::path folder = fs::temp_directory_path() / ("tamrix-socket-" + mark_of_process());
    program workbench{"tamrix-workbench", {"--device", "27C64"}, settings()};

    ~workbench_with_socket() override { fs::remove_all(folder); }
    std::vector<std::string> settings()
    {
        fs::create_directories(folder);
        return {"HOME=" + folder.string(), "XDG_CONFIG_HOME=" + (folder / "config").string(),
                "XDG_CACHE_HOME=" + (folder / "cache").string(), "XDG_DATA_HOME=" + (folder / "data").string()};
    }
    void choose(const std::string& chip)
    {
        workbench.focus("^tamrix workbench");
        workbench.press("ctrl+t");
        workbench.type(chip);
        workbench.press("Return");
    }
    /// The pin is counted from the chip's first one; the list has the keyboard.
    void break_pin(int pin, const std::string& key)
    {
        workbench.press("Tab");
        for (int i = 1; i < pin; ++i) workbench.press("Down");
        workbench.press(key);
    }
    void start_test(const std::string& device)
    {
        workbench.focus("^tamrix workbench");
        workbench.press("F5");
        workbench.focus(test_title);
        workbench.type(device);
        workbench.press("Tab");
        workbench.press("Tab");
        workbench.press("Return");
    }
    void close(const std::string& title)
    {
        workbench.focus(title);
        workbench.press("Escape");
        EXPECT_TRUE(shows(title, 0)) << title;
    }
    bool shows(const std::string& title, int windows = 1)
    {
        return comes_true_within_ten_seconds([&] { return workbench.shown(title) == windows; });
    }
    std::string settings_file() const
    {
        std::ifstream file{folder / "config" / "tamrix" / "workbench.conf"};
        return {std::istreambuf_iterator<char>{file}, {}};
    }
};

/// A host's session with the plug-in and the simulator, in this process, so that its dialogs can be read.
class session_with_socket : public testing::Test {
protected:
    const own_settings settings;
    wxui::wx_shell screen;
    host::simulator socket{SIMULATOR, DATA "/chips"};
    workbench::host_session session{PLUG_IN};
    std::string libraries;

    session_with_socket()
    {
        setenv("XDG_DATA_HOME", (settings.folder / "data").c_str(), 1);
        libraries = host::own_logic_libraries(DATA);
        session.use_programmer({.library = socket.library_path(), .options = socket.options(40)});
    }
    ~session_with_socket() override { unsetenv("XDG_DATA_HOME"); }

    /// What auto find names. It has to find something.
    std::vector<std::string> found()
    {
        std::vector<std::string> names;
        host_window host;
        during(screen, host, [&] {
            const onlooker reader{[&] { read_and_close(names); }};
            const workbench::outcome told =
                session.run([&](Clstamrix& plug_in) { return plug_in.mnutestautofind0(libraries); });
            EXPECT_EQ(told.result.error, "");
        });
        return names;
    }

private:
    static void read_and_close(std::vector<std::string>& names)
    {
        if (names.empty() && dialog().GetLabel() == "Auto Find Device Result") {
            for (wxWindow* child : dialog().GetChildren()) read_list(*child, names);
            dialog().Close();
        }
    }
    static void read_list(wxWindow& window, std::vector<std::string>& names)
    {
        if (const auto* const list = dynamic_cast<wxListBox*>(&window)) {
            for (const wxString& name : list->GetStrings()) names.push_back(name.utf8_string());
        }
        for (wxWindow* child : window.GetChildren()) read_list(*child, names);
    }
};

}  // namespace

TEST_F(workbench_with_socket, a_sound_chip_passes_a_broken_one_fails_and_auto_find_shows_what_it_is)
{
    choose("7400");
    start_test("7400");
    ASSERT_TRUE(shows(test_title, 2)) << "the box that says OK";
    workbench.focus(test_title);
    workbench.press("Escape");
    ASSERT_TRUE(shows(test_title, 1));
    close(test_title);

    choose("7400");
    break_pin(3, "o");
    start_test("7400");
    ASSERT_TRUE(shows("Warning!"));
    EXPECT_EQ(workbench.shown(test_title), 1) << "no box that says OK";
    workbench.focus("Warning!");
    workbench.press("alt+a");  // Abort
    EXPECT_TRUE(shows("Warning!", 0)) << "no other row is told";
    close(test_title);

    choose("7404");
    choose("7400");  // a fresh one, whose pins are sound
    workbench.press("F6");
    ASSERT_TRUE(shows("^Auto Find Device Result"));
    close("^Auto Find Device Result");

    workbench.focus("^tamrix workbench");
    workbench.press("ctrl+q");
    EXPECT_EQ(workbench.wait(), 0);
    EXPECT_EQ(workbench.output(), "");
    EXPECT_TRUE(fs::exists(folder / "data" / "tamrix" / "lib" / "test.lib"));
    EXPECT_NE(settings_file().find("Chip=7400"), std::string::npos) << settings_file();
}

TEST_F(workbench_with_socket, the_vectors_of_a_device_are_edited_in_the_library_of_the_person)
{
    workbench.focus("^tamrix workbench");
    workbench.press("alt+t");
    workbench.press("e");
    workbench.focus("^Edit Pattern");
    workbench.type("7400");
    close("^Edit Pattern");
    workbench.focus("^tamrix workbench");
    workbench.press("ctrl+q");
    EXPECT_EQ(workbench.wait(), 0);
    EXPECT_EQ(workbench.output(), "");
}

TEST_F(session_with_socket, auto_find_names_the_chip_in_the_socket)
{
    socket.insert("7400");
    session.use_programmer({.library = socket.library_path(), .options = socket.options(40)});
    const std::vector<std::string> names = found();
    EXPECT_NE(std::ranges::find(names, "7400"), names.end());
    EXPECT_NE(std::ranges::find(names, "74132"), names.end());
    EXPECT_EQ(std::ranges::find(names, "7402"), names.end());
    EXPECT_LT(names.size(), 20u);
}

TEST_F(session_with_socket, a_change_while_the_programmer_runs_reaches_the_next_test)
{
    socket.insert("7400");
    session.use_programmer({.library = socket.library_path(), .options = socket.options(40)});
    const std::vector<std::string> before = found();
    EXPECT_TRUE(socket.insert("7404")) << "the programmer runs since";
    const std::vector<std::string> names = found();
    EXPECT_NE(std::ranges::find(names, "7404"), names.end());
    EXPECT_EQ(std::ranges::find(names, "7400"), names.end());
    EXPECT_NE(names, before);
}

TEST_F(session_with_socket, the_device_object_finds_the_same_as_usb)
{
    socket.insert("7404");
    session.use_programmer({.library = socket.library_path(), .options = socket.options(40)});
    const std::vector<std::string> by_usb = found();
    session.use_programmer({.library = socket.library_path(), .options = socket.options(40), .usb = false});
    EXPECT_EQ(found(), by_usb);
}
