// The self-test of the programmers that reach their target through a connector.
#include "selftest/pinnoteISP.h"

#include "press_test.h"

#include <gtest/gtest.h>

namespace tamrix {
namespace {

using tests::lines;
using tests::press_test;
using tests::selftest_bench;

constexpr std::int16_t in_system_models[] = {11, 12, 25, 26};

/// The lamps that are not white, as "9 blue".
std::string painted(pinnoteISP& dialog)
{
    std::string all;
    for (int lamp = 0; lamp < connector_picture::pins; ++lamp) {
        const forms::colour fill = dialog.connector.Shape1(lamp).fill().value_or(lamps::white);
        if (fill == lamps::white) continue;
        all += (all.empty() ? "" : ", ") + std::to_string(lamp);
        all += fill == lamps::blue ? " blue" : fill == lamps::red ? " red" : fill == lamps::cyan ? " cyan" : " other";
    }
    return all;
}

TEST(a_connector, has_four_options_and_no_output_test)
{
    for (const std::int16_t model : in_system_models) {
        selftest_bench b{model};
        b.during<pinnoteISP>([&](pinnoteISP& dialog) {
            lines captions;
            for (int index = 0; index < dialog.Option1.count(); ++index) {
                captions.push_back(dialog.Option1(index).caption());
                EXPECT_TRUE(dialog.Option1(index).usable());
            }
            EXPECT_EQ(captions,
                      (lines{"System Test", "VCC Vol. Cal. (5V)", "VCC Vol. Cal. (3.3V)", "VPP Vol. Cal. (12V)"}));
            EXPECT_EQ(dialog.caption(), "Self_test");
            EXPECT_EQ(painted(dialog), "");
            EXPECT_EQ(dialog.Label1.caption(), "");
        });
    }
}

TEST(a_connector, is_never_a_pin_map)
{
    for (const std::uint8_t mode : {1, 2, 3, 4}) {
        selftest_bench b{11};
        b.variables.selftest.pinmapmode = mode;
        b.during<pinnoteISP>([&](pinnoteISP& dialog) {
            EXPECT_EQ(dialog.caption(), "Self_test");
            EXPECT_TRUE(dialog.testbutton.usable() && dialog.Frame1.visible());
            EXPECT_EQ(painted(dialog), "");
        });
    }
}

TEST(a_connector, paints_the_pins_of_a_calibration_and_says_them_in_words)
{
    selftest_bench b{25};
    b.during<pinnoteISP>([&](pinnoteISP& dialog) {
        const char* empty = "Note: Do NOT insert any device in the socket!";
        const auto shown = [&](int option) {
            dialog.Option1(option).click();
            return lines{painted(dialog), dialog.Label1.caption(), dialog.StatusBar1.text(1)};
        };
        EXPECT_EQ(shown(1), (lines{"1 red, 9 blue", "GND: P10   VCC: P2", "Note! Need AC adaptor!"}));
        EXPECT_EQ(shown(2), (lines{"1 cyan, 9 blue", "GND: P10   VCC: P2", empty}));
        EXPECT_EQ(shown(3), (lines{"2 cyan, 9 blue", "GND: P10   VPP: P3", empty}));
        EXPECT_EQ(shown(0), (lines{"", "", empty}));
    });
}

TEST(a_connector, calibrates_6_v_for_the_option_that_says_5_v)
{
    const std::pair<int, lines> expected[] = {{1, {"hwreset", "gndpin 1 1", "setvcc 6000", "vccpin 2 1"}},
                                              {2, {"hwreset", "gndpin 1 1", "setvcc 3300", "vccpin 104 1"}},
                                              {3, {"hwreset", "gndpin 1 1", "setvpp 12000 1", "vpppin 3 1"}}};
    for (const std::int16_t model : in_system_models) {
        for (const auto& [option, calls] : expected) {
            selftest_bench b{model};
            b.during<pinnoteISP>([&](pinnoteISP& dialog) {
                dialog.Option1(option).click();
                b.transcript.clear();
                dialog.testbutton.click();
                EXPECT_EQ(b.transcript, calls) << model;
                EXPECT_TRUE(dialog.teststop.usable());
                EXPECT_FALSE(dialog.testbutton.usable() || dialog.OKButton.usable());
                b.transcript.clear();
                dialog.teststop.click();
                EXPECT_EQ(b.transcript, (lines{"stop", "setvpp 5000 0", "setvpp 5000 1", "hwreset"}));
            });
        }
    }
}

TEST(closing_the_self_test_of_a_connector, during_a_calibration_leaves_everything_off)
{
    selftest_bench b{11};
    b.during<pinnoteISP>([&](pinnoteISP& dialog) {
        dialog.Option1(3).click();
        dialog.testbutton.click();
        b.transcript.clear();
        dialog.ask_to_leave();
    });
    EXPECT_EQ(b.transcript, (lines{"setvpp 5000 0", "setvpp 5000 1", "hwreset"}));
    EXPECT_FALSE(b.hardware.powered);
}

TEST(the_system_test_of_a_connector, tests_the_ram_by_usb_and_gives_time_to_read)
{
    for (const std::int16_t model : in_system_models) {
        selftest_bench b{model};
        EXPECT_EQ(press_test<pinnoteISP>(b), (lines{
                                                 "hwreset",
                                                 "status .Test RAM .....",
                                                 "delayms 200",
                                                 "usbcomwrite 4: 0A 00 80 00",
                                                 "delayms 200",
                                                 "usbbulkwrite 32768: crc ABD6CAA5",
                                                 "usbbulkwrite 32768: crc 75D2BAB8",
                                                 "usbbulkwrite 32768: crc 6070E448",
                                                 "usbbulkwrite 32768: crc 4E4C9A18",
                                                 "usbcomwrite 8: 0A 00 40 00 00 00 00 00",
                                                 "usbbulkread 32769",
                                                 "usbcomwrite 8: 0A 01 40 00 00 00 00 00",
                                                 "usbbulkread 32769",
                                                 "usbcomwrite 8: 0A 02 40 00 00 00 00 00",
                                                 "usbbulkread 32769",
                                                 "usbcomwrite 8: 0A 03 40 00 00 00 00 00",
                                                 "usbbulkread 32769",
                                                 "usbcomwrite 8: 0A 00 00 00 00 00 00 00",
                                                 "status  RAM level= 4",
                                                 "delayms 5000",
                                                 "delayms 5000",
                                                 "status System Test OK!",
                                             }))
            << model;
        EXPECT_EQ(b.session.blocks.rambknum(0), 4);
        EXPECT_EQ(b.session.blocks.ramlg(0), 131072);
        EXPECT_TRUE(b.report().not_tested.empty());
        EXPECT_EQ(b.report().result, selftest_result::passed);
    }
}

TEST(the_system_test_of_a_connector, passes_with_bad_ram_and_says_the_level)
{
    selftest_bench b{11};
    b.hardware.bad_blocks = {1, 3};
    press_test<pinnoteISP>(b);
    EXPECT_EQ(b.count("status  RAM level= 2"), 1);
    EXPECT_EQ(b.session.blocks.ramlg(0), 65536);
    EXPECT_EQ(b.transcript.back(), "status System Test OK!");
    EXPECT_EQ(b.report().faults.size(), 2u);
    selftest_bench none{11};
    none.hardware.bad_blocks = {0, 1, 2, 3};
    press_test<pinnoteISP>(none);
    EXPECT_EQ(none.session.blocks.rambknum(0), 0);
    EXPECT_EQ(none.session.blocks.ramlg(0), 256);
}

TEST(the_system_test_of_a_connector, resets_by_registers_and_says_that_the_ram_was_not_tested)
{
    for (const std::int16_t model : in_system_models) {
        selftest_bench b{model, 0, false};
        EXPECT_EQ(press_test<pinnoteISP>(b), (lines{"hwinit", "hwreset", "delayms 5000", "status System Test OK!"}));
        EXPECT_EQ(b.report().not_tested, (std::vector<untested_pins>{{selftest_stage::ram, 0, "only tested by USB"}}));
        EXPECT_NE(b.status_text().find("RAM: not tested (only tested by USB)"), std::string::npos);
    }
}

TEST(the_system_test_of_a_connector, ends_without_a_word_where_the_programmer_does_not_answer)
{
    selftest_bench b{11, 0, false};
    b.hardware.hwreset_result = 1;
    EXPECT_EQ(press_test<pinnoteISP>(b), (lines{"hwinit", "hwreset", "hwrelease"}));
    EXPECT_EQ(b.report().result, selftest_result::not_answered);
}

// The drawing.

TEST(the_connector_picture, follows_the_size_of_its_pictures)
{
    selftest_bench b{11};
    pinnoteISP dialog{b.session, b.variables.selftest};
    for (const forms::point size : {forms::point{.x = 4200, .y = 1800}, forms::point{.x = 12000, .y = 6000}}) {
        dialog.Picture1.resize(size);
        dialog.Picture2.resize(size);
        for (int lamp = 0; lamp < connector_picture::pins; ++lamp) {
            const forms::area at = dialog.connector.Shape1(lamp).place();
            EXPECT_GT(at.width, 100);
            EXPECT_GE(at.left, 0);
            EXPECT_LE(at.left + at.width, size.x);
            EXPECT_LE(at.top + at.height, size.y);
            EXPECT_EQ(at.top >= size.y / 2, lamp % 2 == 1) << "even pins are in the lower row";
            const int column = dialog.connector.Shape1(lamp / 2 * 2).place().left;
            EXPECT_EQ(at.left, column) << "below the odd one before it";
            if (lamp >= 2) {
                EXPECT_GT(at.left, dialog.connector.Shape1(lamp - 2).place().left);
            }
        }
        EXPECT_GT(dialog.connector.Shape1(9).place().left, size.x * 3 / 4);
    }
}

struct counted final : forms::canvas {
    int figures = 0, lines = 0;
    std::string words;
    void clear(forms::colour) override {}
    void line(forms::point, forms::point, forms::colour) override { ++lines; }
    void text(forms::point, std::string_view text, forms::colour) override { words += std::string{text} + " "; }
    void figure(forms::outline, const forms::area&, std::optional<forms::colour>, forms::colour) override { ++figures; }
};

TEST(the_connector_picture, draws_the_programmer_with_its_lead_and_numbers_the_pins)
{
    selftest_bench b{11};
    const pinnoteISP dialog{b.session, b.variables.selftest};
    counted programmer, connector;
    dialog.Picture1.draw_on(programmer);
    dialog.Picture2.draw_on(connector);
    EXPECT_EQ(programmer.figures, 2) << "the body and its light";
    EXPECT_EQ(programmer.lines, 5);
    EXPECT_EQ(connector.figures, 1 + 10);
    EXPECT_EQ(connector.words, "1 2 3 4 5 6 7 8 9 10 ");
}

TEST(the_connector_picture, paints_no_lamp_that_it_does_not_have)
{
    selftest_bench b{11};
    pinnoteISP dialog{b.session, b.variables.selftest};
    for (const int lamp : {-1, 10}) dialog.connector.paint_lamp(lamp, lamps::red);
    EXPECT_EQ(painted(dialog), "");
}

}  // namespace
}  // namespace tamrix
