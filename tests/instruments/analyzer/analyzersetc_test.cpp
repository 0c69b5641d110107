#include "instruments/analyzer/analyzersetc.h"

#include "instrument_bench.h"

#include <gtest/gtest.h>

namespace tamrix {
namespace {

struct settings_bench : tests::plug_in_fixture {
    analyzer_settings settings;

    template <class Steps>
    void during(const Steps& steps)
    {
        analyzersetc dialog{session, settings};
        shell.during(dialog, [&] { steps(dialog); });
    }
};

std::string usable_controls(analyzersetc& dialog)
{
    std::string all;
    for (const bool usable : {dialog.Frame1.usable(), dialog.Option1(0).usable(), dialog.Option1(1).usable(),
                              dialog.Label1.usable(), dialog.Combo1.usable()})
        all += usable ? '1' : '0';
    return all;
}

TEST(the_settings, have_their_captions_and_close_with_ok)
{
    settings_bench b;
    b.during([](analyzersetc& dialog) {
        EXPECT_EQ(dialog.caption(), "Logic Analyzer Setting");
        EXPECT_EQ(dialog.Frame2.caption(), "Trigger Mode:");
        EXPECT_EQ(dialog.Option2(0).caption(), "In Trigger");
        EXPECT_EQ(dialog.Option2(1).caption(), "Ext Trigger");
        EXPECT_EQ(dialog.Frame1.caption(), "Trigger  level:");
        EXPECT_EQ(dialog.Option1(0).caption(), "High Level");
        EXPECT_EQ(dialog.Option1(1).caption(), "Low Level");
        EXPECT_EQ(dialog.Label1.caption(), "Trigger Pin:");
        EXPECT_EQ(dialog.Combo1.items(),
                  (std::vector<std::string>{"P21", "P22", "P23", "P24", "P25", "P26", "P27", "P28"}));
        dialog.Command1.click();
        EXPECT_FALSE(dialog.is_open());
    });
}

TEST(the_settings, of_the_in_trigger_offer_neither_level_nor_pin)
{
    settings_bench b;
    b.settings.triglevel = -1;
    b.settings.trigpin = 6;
    b.during([&](analyzersetc& dialog) {
        EXPECT_TRUE(dialog.Option2(0).value());
        EXPECT_EQ(usable_controls(dialog), "00000");
        EXPECT_EQ(dialog.Option1(0).value() || dialog.Option1(1).value(), false);
        EXPECT_EQ(dialog.Combo1.index(), -1);
        dialog.Option1(1).click();
        dialog.Combo1.pick(2);
        EXPECT_EQ(b.settings.triglevel, -1) << "a control that is off changes nothing";
        EXPECT_EQ(b.settings.trigpin, 6);
    });
    EXPECT_EQ(b.settings.trigmode, 0);
}

TEST(the_settings, of_the_ext_trigger_show_level_and_pin)
{
    struct line {
        std::int16_t trigmode, triglevel;
        std::uint8_t trigpin;
        int level, pin;
    };
    for (const auto& [trigmode, triglevel, trigpin, level, pin] :
         {line{-1, -1, 0, 0, 0}, line{-1, 0, 6, 1, 6}, line{1, 5, 7, 1, 7}, line{-1, 0, 200, 1, 7}}) {
        settings_bench b;
        b.settings.trigmode = trigmode;
        b.settings.triglevel = triglevel;
        b.settings.trigpin = trigpin;
        b.during([&](analyzersetc& dialog) {
            EXPECT_TRUE(dialog.Option2(1).value());
            EXPECT_EQ(usable_controls(dialog), "11111");
            EXPECT_TRUE(dialog.Option1(level).value());
            EXPECT_EQ(dialog.Combo1.index(), pin);
        });
        EXPECT_EQ(b.settings.trigmode, -1);
    }
}

TEST(each_setting, is_stored_when_it_is_clicked)
{
    settings_bench b;
    b.during([&](analyzersetc& dialog) {
        dialog.Option2(1).click();
        EXPECT_EQ(b.settings.trigmode, -1);
        dialog.Option1(0).click();
        EXPECT_EQ(b.settings.triglevel, -1);
        dialog.Combo1.pick(7);
        EXPECT_EQ(b.settings.trigpin, 7);
        dialog.Option1(1).click();
        EXPECT_EQ(b.settings.triglevel, 0);
    });
}

TEST(the_in_trigger, keeps_level_and_pin_for_the_next_ext_trigger)
{
    settings_bench b;
    b.settings.trigmode = b.settings.triglevel = -1;
    b.settings.trigpin = 5;
    b.during([&](analyzersetc& dialog) {
        dialog.Option2(0).click();
        EXPECT_EQ(usable_controls(dialog), "00000");
        EXPECT_EQ(b.settings.trigmode, 0);
    });
    EXPECT_EQ(b.settings.triglevel, -1);
    EXPECT_EQ(b.settings.trigpin, 5);
    b.during([&](analyzersetc& dialog) {
        dialog.Option2(1).click();
        EXPECT_TRUE(dialog.Option1(0).value());
        EXPECT_EQ(dialog.Combo1.index(), 5);
    });
}

}  // namespace
}  // namespace tamrix
