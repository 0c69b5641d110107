// The dialog as a pin map, and its drawing of the socket.
#include "selftest/pinnote.h"

#include "selftest_bench.h"
#include "support/listing.h"

#include <gtest/gtest.h>

namespace tamrix {
namespace {

using tests::painted;
using tests::selftest_bench;

struct shown_map {
    std::string lamps, marks, status;
    bool label2, label3, label4;
    std::string label3_text;
};

TEST(a_pin_map, shows_its_pins_and_hints_and_no_control_of_a_test)
{
    const std::string leads = "19 blue, 20 yellow, 21 yellow, 22 yellow, 23 yellow, 24 yellow, 25 yellow, 26 yellow, "
                              "27 yellow";
    const shown_map maps[] = {
        {leads, "19 20 21 22 23 24 25 26 27 ", "", true, false, false, ""},
        {"22 yellow, 23 blue", "22 23 ", "", false, true, true, "  Input"},
        {"22 yellow, 23 blue", "22 23 ", "", false, true, true, " Output"},
        {"30 yellow, 31 yellow", "", "When test 14 pins device,connect a line (P27 P28 ).", false, false, false, ""},
    };
    for (std::uint8_t mode = 1; mode <= 4; ++mode) {
        selftest_bench b;
        b.variables.selftest.pinmapmode = mode;
        const shown_map& expected = maps[mode - 1];
        b.during([&](pinnote& dialog) {
            SCOPED_TRACE(int{mode});
            EXPECT_EQ(painted(dialog), expected.lamps);
            EXPECT_EQ(tests::marked(dialog), expected.marks);
            EXPECT_EQ(dialog.StatusBar1.text(1), expected.status);
            EXPECT_EQ(dialog.Label2.visible(), expected.label2);
            EXPECT_EQ(dialog.Label3.visible(), expected.label3);
            EXPECT_EQ(dialog.Label4.visible(), expected.label4);
            EXPECT_EQ(dialog.Label3.caption(), expected.label3_text);
            EXPECT_EQ(dialog.caption(), "Pins Map");
            EXPECT_EQ(dialog.OKButton.caption(), "OK");
            for (forms::control* one : dialog.controls()) {
                if (dynamic_cast<forms::button*>(one) == nullptr && dynamic_cast<forms::option*>(one) == nullptr &&
                    one != &dialog.Frame1)
                    continue;
                EXPECT_EQ(one->usable(), one == &dialog.OKButton);
            }
            dialog.OKButton.click();
            EXPECT_FALSE(dialog.is_open());
        });
        EXPECT_EQ(b.count("hwreset") + b.count("setvpp"), 0) << "a map needs no programmer";
    }
}

/// The upper edge of a text in the drawing; empty where it is not drawn.
std::string top_of(const pinnote& dialog, const std::string& words)
{
    tests::listing<forms::canvas> seen;
    dialog.Picture1.draw_on(seen);
    for (const std::string& call : seen.calls) {
        const std::size_t top = call.find(',') + 1;
        if (call.ends_with(" 0 " + words)) return call.substr(top, call.find(' ', top) - top);
    }
    return "";
}

TEST(a_hint, is_drawn_in_the_row_of_its_pin)
{
    for (const std::uint8_t mode : {2, 3}) {
        selftest_bench b;
        b.variables.selftest.pinmapmode = mode;
        b.during([&](pinnote& dialog) {
            for (const forms::point size : {forms::point{4200, 6000}, forms::point{9000, 12000}}) {
                dialog.Picture1.resize(size);
                EXPECT_NE(top_of(dialog, "23"), "");
                EXPECT_EQ(top_of(dialog, mode == 2 ? "Input" : "Output"), top_of(dialog, "23"));
                EXPECT_EQ(top_of(dialog, "GND"), top_of(dialog, "24"));
            }
        });
    }
}

TEST(a_hint, of_a_calibration_goes_with_it)
{
    selftest_bench b;
    b.during([](pinnote& dialog) {
        EXPECT_EQ(top_of(dialog, "GND"), "");
        dialog.Option1(2).click();
        EXPECT_EQ(top_of(dialog, "GND"), top_of(dialog, "24"));
        dialog.Option1(6).click();
        EXPECT_EQ(top_of(dialog, "GND"), "");
    });
}

TEST(a_pin_map, for_leads_paints_the_borders_too)
{
    selftest_bench b;
    b.variables.selftest.pinmapmode = 1;
    b.during([&](pinnote& dialog) {
        EXPECT_EQ(dialog.Shape1(19).border(), lamps::blue);
        EXPECT_EQ(dialog.Shape2(19).border(), lamps::blue);
        EXPECT_EQ(dialog.Shape1(27).border(), lamps::yellow);
        EXPECT_EQ(dialog.Shape2(27).border(), lamps::yellow);
        EXPECT_EQ(dialog.Shape1(28).border(), lamps::black);
    });
}

TEST(lamps_of_the_ports, run_outward_from_the_bottom_of_the_socket)
{
    EXPECT_EQ(lamps::of_bit(0, 0), 20);
    EXPECT_EQ(lamps::of_bit(0, 3), 23);
    EXPECT_EQ(lamps::of_bit(0, 4), 24);
    EXPECT_EQ(lamps::of_bit(1, 0), 16);
    EXPECT_EQ(lamps::of_bit(1, 7), 31);
    EXPECT_EQ(lamps::of_bit(5, 0), 0);
    EXPECT_EQ(lamps::of_bit(5, 3), 3);
    EXPECT_EQ(lamps::of_bit(5, 4), 44);
    EXPECT_EQ(lamps::of_bit(5, 7), 47);
}

TEST(lamps_of_the_ports, are_each_one_bit)
{
    for (int port = 0; port < 6; ++port) {
        for (int bit = 0; bit < 8; ++bit) {
            const lamps::port_bit back = lamps::bit_of(lamps::of_bit(port, bit));
            EXPECT_EQ(back.port, port);
            EXPECT_EQ(back.bit, bit);
        }
    }
}

struct drawn_socket {
    explicit drawn_socket(lamps::socket which) : socket{surface, which} {}
    struct bare final : forms::form {
        forms::layout arrangement() override { return forms::column({}); }
    } owner;
    forms::picture surface{owner};
    socket_picture socket;

    bool shows(const std::string& end)
    {
        tests::listing<forms::canvas> seen;
        surface.draw_on(seen);
        return std::ranges::any_of(seen.calls, [&](const auto& call) { return call.ends_with(end); });
    }
};

TEST(the_socket_picture, numbers_its_pins)
{
    for (const lamps::socket which : {lamps::socket_of_48, lamps::socket_of_40}) {
        drawn_socket drawn{which};
        ASSERT_EQ(drawn.socket.Label1.size(), static_cast<std::size_t>(which.pins));
        for (int pin = 1; pin <= which.pins; ++pin) EXPECT_TRUE(drawn.shows(" 0 " + std::to_string(pin))) << pin;
    }
}

TEST(the_socket_picture, runs_down_the_left_side_and_up_the_right_one)
{
    drawn_socket drawn{lamps::socket_of_48};
    const auto place = [&](int pin) { return drawn.socket.Shape1(pin - 1).place(); };
    EXPECT_EQ(place(1).top, place(48).top);
    EXPECT_EQ(place(24).top, place(25).top);
    EXPECT_LT(place(1).top, place(24).top);
    EXPECT_LT(place(1).left, place(48).left);
    EXPECT_EQ(place(1).left, place(24).left);
}

TEST(the_socket_picture, follows_the_size_of_the_window)
{
    drawn_socket drawn{lamps::socket_of_48};
    for (const forms::point size : {forms::point{4200, 6000}, forms::point{9000, 12000}, forms::point{5000, 6100}}) {
        drawn.surface.resize(size);
        const forms::area outline = drawn.socket.Shape3.place();
        EXPECT_GT(outline.height, size.y * 9 / 10);
        for (int item = 0; item < 48; ++item) {
            for (forms::shape* one : {&drawn.socket.Shape1(item), &drawn.socket.Shape2(item)}) {
                const forms::area at = one->place();
                EXPECT_GT(at.width, 0);
                EXPECT_GE(at.left, 0);
                EXPECT_LE(at.left + at.width, size.x);
                EXPECT_LE(at.top + at.height, size.y);
            }
        }
        EXPECT_GT(drawn.socket.Shape1(47).place().left, drawn.socket.Shape1(0).place().left);
    }
}

TEST(the_socket_picture, of_40_pins_addresses_its_lamps_by_the_numbers_4_to_43)
{
    drawn_socket drawn{lamps::socket_of_40};
    drawn.socket.paint_lamp(4, lamps::red);
    drawn.socket.paint_mark(43, lamps::green);
    EXPECT_EQ(drawn.socket.Shape1(0).fill(), lamps::red);
    EXPECT_EQ(drawn.socket.Shape2(39).fill(), lamps::green);
    EXPECT_EQ(lamps::socket_of_40.pin_of(4), 1);
    EXPECT_EQ(lamps::socket_of_40.pin_of(43), 40);
    for (const int lamp : {0, 3, 44, 47, -1, 48}) {
        EXPECT_NO_THROW(drawn.socket.paint_lamp_and_border(lamp, lamps::red)) << "no lamp is painted";
        EXPECT_NO_THROW(drawn.socket.paint_mark(lamp, lamps::red));
    }
    EXPECT_EQ(drawn.socket.Shape1(39).fill(), lamps::white);
}

}  // namespace
}  // namespace tamrix
