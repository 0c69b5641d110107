// The self-test in the workbench, worked by keyboard alone in a window of 800 x 600: the faults of the simulated
// programmer, and what is kept of the last self-test.
#include "programs_fixture.h"

#include <gmock/gmock.h>

using namespace tamrix::tests;
using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;

namespace {

const std::string vcc_fault = "pin 7 (port 4 bit 2): VCC driver: expected high, read low";

class workbench_with_selftest : public programs {
protected:
    const fs::path kept = folder / "data" / "tamrix" / "last-selftest.txt";

    /// In a window as large as a small screen.
    struct small_workbench : program {
        explicit small_workbench(const workbench_with_selftest& of)
            : program{"tamrix-workbench", {"--device", "27C64"}, of.settings({"XDG_DATA_HOME=" + of.data()})}
        {
            to_front();
            resize(800, 600);
        }
        void to_front() { focus("^tamrix workbench"); }
    };
    std::string data() const { return (folder / "data").string(); }
    void write_kept(const std::string& text) const
    {
        fs::create_directories(kept.parent_path());
        std::ofstream{kept, std::ios::binary} << text;
    }

    static bool is_closed(const program& workbench, const std::string& title)
    {
        return comes_true_within_ten_seconds([&] { return workbench.shown(title) == 0; });
    }
    /// During a run Tab and Return do nothing, since all but Stop is off; after a fault they press Stop, and at the end
    /// Cancel, which closes the dialog.
    static void selftest(small_workbench& workbench)
    {
        workbench.to_front();
        workbench.press("alt+t");
        workbench.press("s");
        workbench.focus("^Self_test");
        workbench.press("Return");
        EXPECT_TRUE(comes_true_within_ten_seconds([&] {
            if (workbench.shown("^Self_test") == 0) return true;
            workbench.press("Tab Return");
            return false;
        }));
        workbench.to_front();
    }
    static void add_fault(small_workbench& workbench, const std::string& fault)
    {
        workbench.to_front();
        workbench.press("ctrl+t F7");  // also from a line in which a person types
        workbench.type(fault);
        workbench.press("Return");
    }
};

}  // namespace

TEST_F(workbench_with_selftest, finds_the_fault_that_a_person_made_and_keeps_it)
{
    {
        small_workbench workbench{*this};
        add_fault(workbench, "vcc driver 7 dead");
        selftest(workbench);
        EXPECT_THAT(content(kept),
                    HasSubstr("\nmodel 40\nresult failed\nverdict failed, stopped after 1 fault\nfaults 1\n" +
                              vcc_fault + "\n"));
        workbench.press("F5");
        workbench.focus("TTL & CMOS Test");
        workbench.press("Escape");
        ASSERT_TRUE(is_closed(workbench, "TTL & CMOS Test"));
        workbench.to_front();
        const std::string log = log_of(workbench);
        EXPECT_THAT(log, HasSubstr("Programmer: with the fault \"vcc driver 7 dead\"\n"));
        EXPECT_THAT(log, HasSubstr(">> Self_test: fault: " + vcc_fault + "\n"));
        EXPECT_THAT(log,
                    HasSubstr(", model 40: failed, stopped after 1 fault\nThe programmer failed its last self-test: "));
        EXPECT_THAT(log, EndsWith(", model 40: failed, stopped after 1 fault: " + vcc_fault + "\n"));
        quit(workbench);
        EXPECT_EQ(workbench.output(), "");
    }
    small_workbench next{*this};
    EXPECT_THAT(log_of(next), HasSubstr("\nLast self-test: "));
    EXPECT_THAT(log_of(next), EndsWith(", model 40: failed, stopped after 1 fault: " + vcc_fault + "\n"));
    selftest(next);
    EXPECT_THAT(content(kept), HasSubstr("result passed\nverdict passed, as far as it was tested\nfaults 0\n"));
    quit(next);
}

TEST_F(workbench_with_selftest, says_what_is_wrong_with_a_fault_and_removes_faults)
{
    small_workbench workbench{*this};
    add_fault(workbench, "input 9 stuck");
    workbench.press("Home ctrl+a");
    workbench.type("lost reply; bad ram bank 3");
    workbench.press("Return");
    workbench.type("no answer");
    workbench.press("alt+a");
    workbench.press("Tab Tab Tab Down");  // over the arrow and the button to the list
    workbench.press("Delete");
    workbench.press("alt+v");
    workbench.to_front();
    EXPECT_THAT(log_of(workbench), EndsWith("Programmer: with the fault \"lost reply; bad ram bank 3\"\n"
                                            "Programmer: with the fault \"no answer\"\n"
                                            "Programmer: without the fault \"bad ram bank 3\"\n"
                                            "Programmer: without faults\n"));
    quit(workbench);
    EXPECT_EQ(workbench.output(), "");
}

TEST_F(workbench_with_selftest, puts_the_test_board_into_the_socket_and_remembers_it)
{
    {
        small_workbench workbench{*this};
        workbench.press("ctrl+t");
        workbench.type("test board");
        workbench.press("Return");
        EXPECT_THAT(log_of(workbench), EndsWith("Socket: test board\n"));
        quit(workbench);
    }
    EXPECT_THAT(content(folder / "config" / "tamrix" / "workbench.conf"), HasSubstr("Chip=test board\n"));
}

TEST_F(workbench_with_selftest, tells_a_damaged_record_and_ignores_it)
{
    write_kept("tamrix self-test\nwhen yesterday\n");
    small_workbench workbench{*this};
    EXPECT_THAT(log_of(workbench), EndsWith("The last self-test is not known: " + kept.string() +
                                            ":2: \"yesterday\" where a time was expected\n"));
    selftest(workbench);
    EXPECT_THAT(content(kept), HasSubstr("\nresult passed\n"));
    quit(workbench);
}

TEST_F(workbench_with_selftest, another_model_has_failed_no_self_test)
{
    write_kept("tamrix self-test\nwhen 2026-11-22 14:03\nmodel 41\nresult failed\nverdict failed, 1 fault\nfaults 1\n" +
               vcc_fault + "\n");
    small_workbench workbench{*this};
    workbench.press("F5");
    workbench.focus("TTL & CMOS Test");
    workbench.press("Escape");
    workbench.to_front();
    const std::string log = log_of(workbench);
    EXPECT_THAT(log, HasSubstr("\nLast self-test: 2026-11-22 14:03, model 41: failed, 1 fault: " + vcc_fault + "\n"));
    EXPECT_THAT(log, Not(HasSubstr("The programmer failed")));
    quit(workbench);
}
