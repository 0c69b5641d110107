// The options of the self-test of a unit with four modules.
#include "selftest/pinnote204.h"

#include "entry/all_dialogs.h"
#include "module_programmer.h"

#include <gtest/gtest.h>

namespace tamrix {
namespace {

using tests::lines;
using tests::unit_bench;

const std::string no_device = "Note: Do NOT insert any device in the socket!", adaptor = "Note! Need AC adaptor!",
                  board = "Note!Need \"Test Board\" On Socket!( No 1 )";

TEST(pinnote204, is_the_self_test_of_the_models_with_modules)
{
    for (const std::int16_t model : {39, 52, 54}) {
        unit_bench b{model};
        bool shown = false;
        b.shell.on_next_dialog([&](forms::form& dialog) { shown = dynamic_cast<pinnote204*>(&dialog) != nullptr; });
        all_dialogs().show(hw::model_of(model).self_test_form, b.session, b.variables);
        EXPECT_TRUE(shown) << model;
    }
}

TEST(pinnote204, has_eight_options_and_hints_beside_the_drawing)
{
    const lines captions{"System Test",          "VCC Vol. Cal. (3V)",   "VPP0 Vol. Cal. (12V)", "VPP1 Vol. Cal. (12V)",
                         "VPP0 Vol. Cal. (25V)", "VPP1 Vol. Cal. (25V)", "Output Test",          "ISP Output Test"};
    const lines hints{no_device, adaptor, no_device, no_device, adaptor, adaptor, board, board};
    const lines painted{
        "", "22 red, 23 blue", "22 cyan, 23 blue", "21 cyan, 23 blue", "22 green, 23 blue", "21 green, 23 blue", "",
        ""};
    unit_bench b;
    b.during<pinnote204>([&](pinnote204& dialog) {
        EXPECT_EQ(dialog.caption(), "Self_test");
        ASSERT_EQ(dialog.Option1.count(), 8);
        for (int index = 7; index >= 0; --index) {
            const auto at = static_cast<std::size_t>(index);
            dialog.Option1(index).click();
            EXPECT_EQ(dialog.Option1(index).caption(), captions[at]);
            EXPECT_EQ(dialog.Label4.caption(), hints[at]) << index;
            EXPECT_TRUE(dialog.Label4.visible());
            EXPECT_EQ(tests::painted(dialog), painted[at]);
        }
        EXPECT_EQ(dialog.StatusBar1.panels(), 2);
    });
    EXPECT_EQ(b.transcript, lines{}) << "no call, and nothing in the status bar";
}

TEST(pinnote204, calibrates_as_the_others_with_two_generators)
{
    const lines supplies[] = {{"setvcc 3000", "vccpin 2 1"},
                              {"setvpp 12000 0", "vpppin 2 1"},
                              {"setvpp 12000 1", "vpppin 3 1"},
                              {"setvpp 25000 0", "vpppin 2 1"},
                              {"setvpp 25000 1", "vpppin 3 1"}};
    for (const std::int16_t model : {39, 52}) {
        for (int option = 1; option <= 5; ++option) {
            unit_bench b{model};
            lines expected{"hwreset"};
            if (model > 40) expected.emplace_back("boardsel2 0 3");
            expected.emplace_back("gndpin 1 1");
            for (const std::string& line : supplies[option - 1]) expected.push_back(line);
            for (const char* line : {"stop", "setvpp 5000 0", "setvpp 5000 1", "hwreset"}) expected.emplace_back(line);
            b.with_dialog([&](pinnote204& dialog) {
                dialog.Option1(option).click();
                dialog.testbutton.click();
                dialog.teststop.click();
                EXPECT_EQ(b.transcript, expected) << model << " option " << option;
            });
        }
    }
}

}  // namespace
}  // namespace tamrix
