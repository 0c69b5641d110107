// What the workbench says about the files that it loads, and what it asks, worked by keyboard alone.
#include "programs_fixture.h"

#include <gmock/gmock.h>

using namespace tamrix::tests;
using testing::EndsWith;
using testing::HasSubstr;

namespace {

class workbench_loads : public programs {
protected:
    const std::string boot = file("boot.hex");

    void write_damaged() const { std::ofstream{boot} << "S104000011EB\nS104000112E9\nS104000213E7\nS9030000FC\n"; }
    std::string damage() const
    {
        return boot + ":1: checksum EB where EA was expected\n" + boot + ":2: checksum E9 where E8 was expected\n" +
               boot + ":3: checksum E7 where E6 was expected\n";
    }
    void open(program& workbench, const std::string& name) const
    {
        workbench.focus("tamrix workbench");
        workbench.press("ctrl+o");
        workbench.focus("^Load File$");
        workbench.type(name);
        workbench.press("Return");
    }
    static void load_as_detected(program& workbench, const std::string& title)
    {
        workbench.focus("Load A File To Buffer");
        workbench.press("Return");
        workbench.focus(title);
    }
};

}  // namespace

TEST_F(workbench_loads, a_damaged_file_only_if_the_person_says_yes)
{
    write_damaged();
    program workbench{"tamrix-workbench", {"--device", "27C64", boot}, settings()};
    for (const char* refusal : {"Return", "Escape", "alt+n"}) {
        workbench.focus("^Damaged File$");
        workbench.press(refusal);
        EXPECT_TRUE(comes_true_within_ten_seconds([&] { return workbench.shown("^Damaged File$") == 0; }));
        workbench.focus("^tamrix workbench");
        EXPECT_THAT(log_of(workbench), EndsWith("\n" + damage() + boot + ": not loaded\n")) << refusal;
        EXPECT_EQ(workbench.shown("Load A File To Buffer"), 0);
        open(workbench, boot);
    }
    workbench.focus("^Damaged File$");
    EXPECT_EQ(buffer(3), "\xFF\xFF\xFF");
    workbench.press("alt+y");
    load_as_detected(workbench, "boot.hex.*tamrix workbench");
    EXPECT_EQ(buffer(3), "\x11\x12\x13");
    EXPECT_THAT(log_of(workbench), HasSubstr("\n" + damage() + boot + ": the damage is accepted\n>>Load File OK!"));
    quit(workbench);
    EXPECT_EQ(workbench.output(), "");
}

TEST_F(workbench_loads, a_file_and_says_what_it_took)
{
    program workbench{"tamrix-workbench", {"--device", "27C64", file("demo.hex")}, settings()};
    load_as_detected(workbench, "demo.hex.*tamrix workbench");
    EXPECT_THAT(log_of(workbench),
                EndsWith("Sec\n" + file("demo.hex") +
                         ": intel, 16 bytes, 0x0 to 0xF\n"
                         "  sum of bytes: 0x00000078 (16 bits: 0x0078), CRC-32: 0xCECEE288\n  taken: 16 bytes\n"));
    quit(workbench);
}

TEST_F(workbench_loads, bytes_outside_the_device_with_one_key)
{
    std::ofstream{boot} << ":020000040800F2\n:0400000001020304F2\n:020000041FFFDC\n:02F8000055AA07\n:00000001FF\n";
    program workbench{"tamrix-workbench", {"--device", "27C64", boot}, settings()};
    load_as_detected(workbench, "boot.hex.*tamrix workbench");
    EXPECT_THAT(log_of(workbench), EndsWith(": intel, 6 bytes in 2 segments, 0x8000000 to 0x1FFFF801\n"
                                            "  0x8000000 to 0x8000003 (4 bytes)\n  0x1FFFF800 to 0x1FFFF801 (2 bytes)\n"
                                            "  sum of bytes: 0x00000109 (16 bits: 0x0109), CRC-32: 0xE42DC5B3\n"
                                            "  taken: 0 bytes; outside the device: 6 bytes, from 0x8000000 on\n"));
    workbench.press("alt+i");
    EXPECT_TRUE(comes_true_within_ten_seconds([&] { return buffer(5) == "\1\2\3\4\xFF"; }));
    workbench.focus("boot.hex.*tamrix workbench");  // the button had grabbed the keyboard
    EXPECT_THAT(log_of(workbench),
                EndsWith(boot + ": loaded by the workbench itself, from file address 0x8000000 on; the rest of the "
                                "buffer is FF\n  taken: 4 bytes; outside the device: 2 bytes, from 0x1FFFF800 on\n"));
    workbench.press("alt+i");
    EXPECT_TRUE(comes_true_within_ten_seconds([&] { return buffer(3) == "\x55\xAA\xFF"; }));
    workbench.focus("boot.hex.*tamrix workbench");
    quit(workbench);
    EXPECT_EQ(workbench.output(), "");
}

TEST_F(workbench_loads, the_rest_of_a_damaged_file_without_a_second_question)
{
    std::ofstream{boot} << ":020000040800F2\n:0400000001020304F3\n:00000001FF\n";
    program workbench{"tamrix-workbench", {"--device", "27C64", boot}, settings()};
    workbench.focus("^Damaged File$");
    workbench.press("alt+y");
    load_as_detected(workbench, "boot.hex.*tamrix workbench");
    workbench.press("alt+i");
    EXPECT_TRUE(comes_true_within_ten_seconds([&] { return buffer(5) == "\1\2\3\4\xFF"; }));
    open(workbench, file("demo.hex"));
    load_as_detected(workbench, "demo.hex.*tamrix workbench");
    workbench.press("alt+i");  // nothing is outside now, so nothing happens
    EXPECT_THAT(log_of(workbench), EndsWith("  taken: 16 bytes\n"));
    quit(workbench);
}

TEST_F(workbench_loads, a_file_that_was_damaged_after_its_load_only_after_a_question)
{
    std::ofstream{boot} << ":020000040800F2\n:0400000001020304F2\n:00000001FF\n";
    program workbench{"tamrix-workbench", {"--device", "27C64", boot}, settings()};
    load_as_detected(workbench, "boot.hex.*tamrix workbench");
    write_damaged();
    workbench.press("alt+i");
    workbench.focus("^Damaged File$");
    workbench.press("Escape");
    workbench.focus("boot.hex.*tamrix workbench");
    EXPECT_EQ(buffer(4), "\xFF\xFF\xFF\xFF");
    EXPECT_THAT(log_of(workbench), EndsWith(boot + ": not loaded\n"));
    quit(workbench);
}

TEST_F(workbench_loads, a_damaged_fuse_file_or_serial_vectors_only_after_a_question)
{
    std::ofstream{folder / "a.jed"} << "\x02My part*QF16*L0000 0101*\x03"
                                       "0000\n";
    std::ofstream{folder / "a.svf"} << "STATE NOWHERE;\n";
    program workbench{"tamrix-workbench", {"--device", "GAL16V8", file("a.jed")}, settings()};
    workbench.focus("^Damaged File$");
    workbench.press("Escape");
    workbench.focus("^tamrix workbench");
    EXPECT_THAT(log_of(workbench), EndsWith(": not loaded\n"));
    EXPECT_EQ(buffer(4), std::string(4, '\0'));
    open(workbench, file("a.svf"));
    workbench.focus("^Damaged File$");
    workbench.press("Escape");
    workbench.focus("^tamrix workbench");
    EXPECT_THAT(log_of(workbench), EndsWith(file("a.svf") + ": not loaded\n"));
    open(workbench, file("a.jed"));
    workbench.focus("^Damaged File$");
    workbench.press("alt+y");
    workbench.focus("a.jed.*tamrix workbench");
    EXPECT_EQ(buffer(4), "0101");
    EXPECT_THAT(log_of(workbench), EndsWith("  fuse checksum: 000A, vectors: 0\n"));
    quit(workbench);
}
