#include "programs_fixture.h"

#include <algorithm>
#include <cstdlib>

using namespace tamrix::tests;

namespace {

std::string without_time(std::string text)
{
    const auto time = text.find("Time:");
    if (time != std::string::npos) text.erase(time, text.find('\n', time) - time);
    const auto seconds = text.find(">> ");
    if (seconds != std::string::npos) text.erase(seconds + 3, text.find("Sec", seconds) - seconds - 3);
    return text;
}

}  // namespace

TEST_F(programs, the_smallest_host_loads_a_file_through_the_dialog)
{
    program host{"minimal_host", {file("demo.hex")}, {"LD_LIBRARY_PATH=" PROGRAM_FOLDER}};
    host.focus("Load A File To Buffer");
    host.press("Return");
    EXPECT_EQ(host.wait(), 0);
    EXPECT_EQ(without_time(host.output()), ">>Load File OK! \n>> Sec\n\n"
                                           "00 01 02 03 04 05 06 07 08 09 0A 0B 0C 0D 0E 0F \n");
}

TEST_F(programs, the_smallest_host_is_told_where_there_is_no_display)
{
    program host{
        "minimal_host", {file("demo.hex")}, {"LD_LIBRARY_PATH=" PROGRAM_FOLDER, "DISPLAY=", "WAYLAND_DISPLAY="}};
    EXPECT_EQ(host.wait(), 0);
    EXPECT_TRUE(host.output().starts_with("no display")) << host.output();
}

TEST_F(programs, the_workbench_loads_a_file_saves_it_and_leaves_nothing_behind)
{
    program workbench{"tamrix-workbench", {"--device", "27C64", file("demo.hex")}, settings()};
    workbench.focus("Load A File To Buffer");
    workbench.press("Return");
    workbench.focus("demo.hex.*tamrix workbench");
    const std::string buffer = content("/dev/shm/" + name_space + "qorfanibuffer");
    ASSERT_EQ(buffer.size(), 0x2000u + 2200);
    EXPECT_EQ(buffer.substr(0, 18), std::string("\0\1\2\3\4\5\6\7\x08\x09\x0A\x0B\x0C\x0D\x0E\x0F\xFF\xFF", 18));

    workbench.press("ctrl+shift+s");
    workbench.focus("^Save Buffer$");
    workbench.press("ctrl+a");
    workbench.type(file("copy.bin"));
    workbench.press("Return");
    workbench.focus("Save Buffer To A File");
    workbench.press("Return");
    EXPECT_TRUE(comes_true_within_ten_seconds([&] { return content(file("copy.bin")).size() == 0x2000; }));
    EXPECT_EQ(content(file("copy.bin")), buffer.substr(0, 0x2000));

    workbench.focus("copy.bin.*tamrix workbench");
    quit(workbench);
    EXPECT_EQ(shared_objects(name_space), std::vector<std::string>{});
    EXPECT_EQ(workbench.output(), "");
    EXPECT_TRUE(fs::is_empty(folder / "cache" / "tamrix"));
}

TEST_F(programs, the_workbench_opens_a_file_by_the_keyboard_alone)
{
    program workbench{"tamrix-workbench", {"--device", "27C64"}, settings()};
    workbench.focus("^tamrix workbench");
    workbench.press("ctrl+o");
    workbench.focus("^Load File$");
    workbench.type(file("demo.hex"));
    workbench.press("Return");
    workbench.focus("Load A File To Buffer");
    workbench.press("Return");
    workbench.focus("demo.hex.*tamrix workbench");
    quit(workbench);
}

TEST_F(programs, a_cancelled_load_leaves_the_buffer_of_the_workbench_as_it_was)
{
    program workbench{"tamrix-workbench", {"--device", "27C64", file("demo.hex")}, settings()};
    workbench.focus("Load A File To Buffer");
    workbench.press("Escape");
    workbench.focus("^tamrix workbench");
    const std::string buffer = content("/dev/shm/" + name_space + "qorfanibuffer");
    EXPECT_EQ(std::count(buffer.begin(), buffer.begin() + 0x2000, '\xFF'), 0x2000);
    quit(workbench);
}

TEST_F(programs, another_device_of_the_workbench_has_a_buffer_of_its_own_size)
{
    program workbench{"tamrix-workbench", {"--device", "27C64"}, settings()};
    workbench.focus("^tamrix workbench");
    workbench.press("ctrl+d");
    workbench.type("24c02");
    workbench.press("Return");
    EXPECT_TRUE(comes_true_within_ten_seconds(
        [&] { return content("/dev/shm/" + name_space + "qorfanibuffer").size() == 0x100 + 2200; }));
    quit(workbench);
    EXPECT_EQ(shared_objects(name_space), std::vector<std::string>{});
}

TEST_F(programs, bytes_typed_over_in_the_workbench_stand_in_the_buffer)
{
    program workbench{"tamrix-workbench", {"--device", "27C64"}, settings()};
    workbench.focus("^tamrix workbench");
    workbench.press("ctrl+g");
    workbench.focus("Go to Address");
    workbench.type("1f00");
    workbench.press("Return");
    workbench.focus("^tamrix workbench");
    workbench.type("55aAxz0");
    const auto typed_over = [&] { return content("/dev/shm/" + name_space + "qorfanibuffer").substr(0x1EFF, 4); };
    EXPECT_TRUE(comes_true_within_ten_seconds([&] { return typed_over() == "\xFF\x55\xAA\x0F"; }));
    discard_and_quit(workbench);
}

TEST_F(programs, a_workbench_that_was_killed_leaves_no_names_of_its_own_behind)
{
    std::vector<std::string> without_name_space = settings();
    std::erase_if(without_name_space, [](const std::string& one) { return one.starts_with("TAMRIX_NAMESPACE"); });
    std::string own_name_space;
    {
        program workbench{"tamrix-workbench", {"--device", "27C64"}, without_name_space};
        own_name_space = "w" + std::to_string(workbench.process()) + ".";
        workbench.focus("^tamrix workbench");
    }  // killed here
    EXPECT_EQ(shared_objects(own_name_space), std::vector<std::string>{});
}

TEST_F(programs, the_log_of_the_workbench_tells_where_and_why_a_load_failed)
{
    std::ofstream{folder / "bad.hex"} << ":0100000011EE\n:01000100G1ED\n:00000001FF\n";
    program workbench{"tamrix-workbench", {"--device", "27C64", file("bad.hex")}, settings()};
    workbench.focus("^Damaged File$");
    workbench.press("alt+y");
    workbench.focus("Load A File To Buffer");
    workbench.press("Return");
    workbench.focus("^tamrix workbench");
    EXPECT_EQ(without_time(log_of(workbench)),
              "Device 27C64, Microchip: buffer of 8 KiB\n" + file("bad.hex") +
                  ":2: 'G' in column 10 where a hexadecimal digit was expected\n" + file("bad.hex") +
                  ": the damage is accepted\n>>Load File Fail!\n>> Sec\n" + file("bad.hex") +
                  ":2: a data byte that is not hexadecimal where a byte of two digits was expected\n"
                  "The buffer is as it was before.\n");
    quit(workbench);
}

TEST_F(programs, the_workbench_opens_a_fuse_file_at_once_and_its_log_tells_the_note)
{
    std::ofstream{folder / "fuses.bin"} << fuse_file("My part", "0101111111111111");
    program workbench{"tamrix-workbench", {"--device", "GAL16V8", file("fuses.bin")}, settings()};
    workbench.focus("fuses.bin.*tamrix workbench");
    EXPECT_EQ(content("/dev/shm/" + name_space + "qorfanibuffer").substr(0, 5), "01011");
    EXPECT_EQ(log_of(workbench),
              "Device GAL16V8, Lattice: 2194 fuses\nLoad JEDEC: done\nNote:\n  My part*\n  QF16*\n  F0*\n" +
                  file("fuses.bin") +
                  ": jedec, fuses: 16, of which 1: 14, by default: 0, not in the file: 0\n  fuse checksum: 01F9, "
                  "vectors: 0\n");
    quit(workbench);
}

TEST_F(programs, the_workbench_imports_an_svf_file_at_once)
{
    std::ofstream{folder / "vectors.txt"} << "! made here\nSTATE IDLE;\n";
    program workbench{"tamrix-workbench", {"--device", "GAL16V8", file("vectors.txt")}, settings()};
    workbench.focus("^tamrix workbench");
    const fs::path cache = folder / "cache" / "tamrix";
    EXPECT_TRUE(comes_true_within_ten_seconds([&] {
        return content(fs::directory_iterator { cache } -> path() / "pldtmp.svf") == "! made here\r\nSTATE IDLE;\r\n";
    }));
    EXPECT_EQ(log_of(workbench), "Device GAL16V8, Lattice: 2194 fuses\nImport SVF: done\n" + file("vectors.txt") +
                                     ": svf, statements: 1, bits shifted: 0\n");
    quit(workbench);
    EXPECT_TRUE(fs::is_empty(cache));
}

TEST_F(programs, the_workbench_tells_what_is_missing_and_ends)
{
    program workbench{"tamrix-workbench", {"--plugin", "/nowhere/libtamrix.so"}, settings()};
    workbench.focus("tamrix workbench");
    workbench.press("Return");
    EXPECT_EQ(workbench.wait(), 1);
    EXPECT_NE(workbench.output().find("The plug-in cannot be loaded"), std::string::npos) << workbench.output();
}

TEST_F(programs, the_workbench_without_a_display_says_so_and_ends)
{
    program workbench{"tamrix-workbench", {}, settings({"DISPLAY=", "WAYLAND_DISPLAY="})};
    EXPECT_EQ(workbench.wait(), 1);
    EXPECT_TRUE(workbench.output().starts_with("tamrix-workbench: no display")) << workbench.output();
}
