// The parameter dialog and the notes of a device on a real screen.
#include "over_host.h"

#include "device/algoparameter.h"
#include "device/warnno.h"
#include "session/session.h"
#include "support/plug_in_fixture.h"

#include <functional>
#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

using namespace tamrix;
using namespace tamrix::tests;

namespace {

class parameters : public testing::Test {
protected:
    wxui::wx_shell screen;
    tamrix::session session{screen, fresh_name_space()};

    parameters()
    {
        auto& blocks = session.blocks;
        blocks.attachsmall(1);
        blocks.bvcc(0) = 650;
        blocks.bvpp(0) = 1300;
        blocks.pwte(0) = 100;
        blocks.wretry(0) = 10;
    }

    /// Shows the dialog and runs `script` meanwhile.
    void with_dialog(const std::function<void(algoparameter&)>& script)
    {
        algoparameter shown{session};
        over_host(screen, shown, [&] { script(shown); });
    }
};

}  // namespace

TEST_F(parameters, are_changed_by_keyboard)
{
    with_dialog([&](algoparameter& shown) {
        EXPECT_EQ(dialog().GetLabel(), "Modify Algorithm Parameters");
        EXPECT_EQ(focused(), "6.50");
        press("ctrl+a");
        type("1.5");
        press("Tab");
        EXPECT_EQ(shown.Text1.text(), "1.60") << "the box was left";
        shown_as("1.60");
        press("ctrl+a");
        type("2a5.0");
        EXPECT_EQ(shown.Text2.text(), "250") << "neither letters nor points";
        press("Tab Tab ctrl+a");
        type("3");
        press("Return");
        EXPECT_FALSE(shown.is_open());
    });
    EXPECT_EQ(session.blocks.bvcc(0), 160);
    EXPECT_EQ(session.blocks.pwte(0), 250);
    EXPECT_EQ(session.blocks.bvpp(0), 1300);
    EXPECT_EQ(session.blocks.wretry(0), 3);
    EXPECT_EQ(session.blocks.pwte(1), 1);
}

TEST_F(parameters, are_left_by_escape_as_they_were)
{
    with_dialog([&](algoparameter& shown) {
        press("ctrl+a");
        type("3.3");
        press("Escape");
        EXPECT_FALSE(shown.is_open());
    });
    EXPECT_EQ(session.blocks.bvcc(0), 650);
}

TEST_F(parameters, keep_the_point_of_milliseconds_under_the_persons_keys)
{
    session.blocks.pwte(0) = 1500;
    with_dialog([&](algoparameter& shown) {
        shown_as("mS");
        press("Tab End");
        type("2");
        EXPECT_EQ(shown.Text2.text(), "1.52");
        press("Home");
        type("3");
        EXPECT_EQ(shown.Text2.text(), "31.52");
        press("BackSpace Return");
    });
    EXPECT_EQ(session.blocks.pwte(0), 1520);
}

TEST_F(parameters, show_the_page_without_a_unit)
{
    session.blocks.bvpp(0) = 300;
    session.blocks.pagelength(0) = 64;
    with_dialog([&](algoparameter& shown) {
        shown_as("Page:");
        EXPECT_TRUE(shown_as("64").IsEnabled());
        EXPECT_FALSE(shown.Label7.visible());
        EXPECT_THROW(shown_as("VPP:"), std::runtime_error);
    });
}

TEST_F(parameters, show_a_small_vpp_in_grey)
{
    session.blocks.bvpp(0) = 0;
    with_dialog([&](algoparameter&) {
        EXPECT_FALSE(shown_as("0.00").IsEnabled());
        press("Tab Tab");
        EXPECT_EQ(focused(), "10") << "the keyboard passes it over";
    });
}

TEST_F(parameters, lie_with_their_units_beside_their_boxes)
{
    with_dialog([&](algoparameter&) {
        const wxRect vcc = shown_as("6.50").GetScreenRect(), vpp = shown_as("13.00").GetScreenRect();
        const wxRect pulse = shown_as("100").GetScreenRect(), retry = shown_as("10").GetScreenRect();
        const wxRect unit = shown_as("uS").GetScreenRect();
        EXPECT_EQ(vcc.x, vpp.x);
        EXPECT_EQ(vcc.x, pulse.x);
        EXPECT_EQ(vcc.x, retry.x);
        EXPECT_GT(unit.x, pulse.GetRight());
        EXPECT_LT(unit.x - pulse.GetRight(), 20);
        EXPECT_EQ(vcc.width, pulse.width);
        EXPECT_EQ(vcc.width, retry.width) << "it has no unit";
        EXPECT_LT(pulse.GetBottom(), vpp.y);
    });
}

TEST_F(parameters, of_a_note_stand_in_a_box_that_a_key_closes)
{
    session.blocks.tlength(0) = 0x210;
    host_window host;
    during(screen, host, [&] {
        wxWindow* const behind = &dialog();
        script_timer reader{[&] {
            comes_true([&] { return std::system("xdotool search --onlyvisible --name '^Note!' >/dev/null") == 0; });
            press("Return");
        }};
        std::uint8_t number = 129;
        warn(session, bool16_false, number, bool16_false);
        EXPECT_EQ(number, 1);
        EXPECT_EQ(&dialog(), behind) << "it is gone again";
    });
}
