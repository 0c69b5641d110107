// The self-test dialogs on a real screen: worked by keyboard, in a window of another size.
#include "logic_dialogs_fixture.h"
#include "selftest_scenes.h"

#include "selftest/pinnote.h"
#include "selftest/small_programmer.h"

#include <functional>
#include <string>
#include <vector>

using namespace tamrix;
using namespace tamrix::tests;

namespace {

class selftest_dialogs : public logic_dialogs {
protected:
    small_programmer programmer;
    std::vector<std::string> at_waits;  // the keys that the person presses at each wait; the last serves for all others

    selftest_dialogs()
    {
        session.hardware.source = programmer.source();
        session.blocks.usbable(0) = bool16_true;
        variables.selftest.on_event = [this](const selftest_event& event) {
            if (event.what != selftest_event::kind::wait) return;
            press(at_waits.front());
            if (at_waits.size() > 1) at_waits.erase(at_waits.begin());
        };
    }

    selftest_result result() const { return variables.selftest.last.result; }
    static wxWindow& picture()
    {
        for (wxWindow* child : dialog().GetChildren()) {
            if (child->GetClientSize().y >= 300) return *child;
        }
        throw std::runtime_error{"no picture"};
    }
    /// The middle of a lamp, in pixels of the picture.
    static wxPoint middle_of(const forms::shape& lamp)
    {
        const forms::area place = lamp.place();
        return {(place.left + place.width / 2) / 15, (place.top + place.height / 2) / 15};
    }
};

void never_high(small_programmer& programmer, std::size_t lamp)
{
    programmer.spoil = [lamp](std::vector<bool>& pins) { pins[lamp] = false; };
}

}  // namespace

TEST_F(selftest_dialogs, run_a_system_test_by_keyboard_that_goes_on_after_each_fault)
{
    never_high(programmer, 29);
    at_waits = {"Return"};
    pinnote form{session, variables.selftest};
    with(form, [&] {
        press("Return");
        EXPECT_TRUE(comes_true([&] { return result() == selftest_result::failed; }));
        EXPECT_GE(variables.selftest.last.faults.size(), 2U);
        EXPECT_EQ(focused(), "Test");
        EXPECT_EQ(form.StatusBar1.text(1), "System Test fail!");
        programmer.spoil = {};
        press("Return");
        EXPECT_TRUE(comes_true([&] { return result() == selftest_result::passed; }));
        EXPECT_EQ(form.StatusBar1.text(1), "System Test OK!");
        press("Tab");
        EXPECT_EQ(focused(), "Cancel");
        press("Return");
        EXPECT_FALSE(form.is_open());
    });
}

TEST_F(selftest_dialogs, end_a_run_by_keyboard_with_stop)
{
    never_high(programmer, 29);
    at_waits = {"Tab space"};
    pinnote form{session, variables.selftest};
    with(form, [&] {
        press("Return");
        EXPECT_TRUE(comes_true([&] { return result() == selftest_result::stopped; }));
        EXPECT_EQ(variables.selftest.last.faults.size(), 1U);
        EXPECT_TRUE(form.is_open());
        press("Escape");
        EXPECT_FALSE(form.is_open());
    });
}

TEST_F(selftest_dialogs, end_a_run_by_escape)
{
    never_high(programmer, 29);
    at_waits = {"Escape"};
    pinnote form{session, variables.selftest};
    with(form, [&] {
        press("Return");
        EXPECT_FALSE(form.is_open());
    });
    EXPECT_EQ(result(), selftest_result::stopped);
    EXPECT_FALSE(programmer.powered);
}

TEST_F(selftest_dialogs, choose_and_calibrate_by_keyboard)
{
    pinnote form{session, variables.selftest};
    with(form, [&] {
        EXPECT_EQ(focused(), "System Test");
        press("Down Down");
        EXPECT_EQ(focused(), "VPP0 Vol. Cal. (12V)");
        EXPECT_EQ(form.testsel(), 2);
        press("Return");
        EXPECT_TRUE(programmer.powered);
        EXPECT_EQ(programmer.vpp[0], 12000);
        EXPECT_EQ(focused(), "Stop");
        press("Return");
        EXPECT_FALSE(programmer.powered);
        EXPECT_EQ(focused(), "Test");
        press("shift+Tab Down");
        EXPECT_EQ(form.testsel(), 3);
        press("Escape");
        EXPECT_FALSE(form.is_open());
    });
}

TEST_F(selftest_dialogs, are_closed_by_enter_as_a_pin_map)
{
    variables.selftest.pinmapmode = 1;
    pinnote map{session, variables.selftest};
    with(map, [&] {
        press("Return");
        EXPECT_FALSE(map.is_open());
    });
}

TEST_F(selftest_dialogs, draw_the_socket_as_large_as_the_window_allows)
{
    pinnote form{session, variables.selftest};
    with(form, [&] {
        form.Option1(1).click();
        const auto colour_of_lamp = [&] { return colour_at(picture(), middle_of(form.Shape1(22))); };
        EXPECT_TRUE(comes_true([&] { return colour_of_lamp() == "#FF0000"; }));
        const wxSize window = dialog().GetSize(), drawn = picture().GetSize();
        const forms::area lamp = form.Shape1(22).place();
        for (const wxSize more : {wxSize{120, 180}, wxSize{0, 0}}) {
            dialog().SetSize(window + more);
            EXPECT_TRUE(comes_true([&] { return picture().GetSize() == drawn + more; }))
                << picture().GetSize().x << " " << picture().GetSize().y;
            EXPECT_EQ(form.Shape1(22).place() == lamp, more == wxSize(0, 0));
            EXPECT_TRUE(comes_true([&] { return colour_of_lamp() == "#FF0000"; }));
        }
    });
}
