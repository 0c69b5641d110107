// The analyzer's dialog: what it opens with, keys, resizing, leaving. Zoom and scroll are in analyzer_view_test.cpp.
#include "instrument_bench.h"
#include "instruments/analyzer/analyzersetc.h"
#include "support/listing.h"

#include <gtest/gtest.h>

namespace tamrix {
namespace {

using forms::form_key;
using tests::instrument_bench;
using tests::lines;

lines drawn(const analyzer& dialog)
{
    tests::listing<forms::canvas> seen;
    dialog.Picture1.draw_on(seen);
    return seen.calls;
}

std::string labels_of(const analyzer& dialog)
{
    return dialog.Label1.caption() + " " + dialog.Label2.caption() + " " + dialog.Label3.caption() + " " +
           dialog.Label4.caption();
}

TEST(the_analyzer, opens_with_the_pin_map_its_captions_and_an_empty_picture)
{
    instrument_bench b;
    b.variables.transfer.loadlength = 77;
    b.during_analyzer([&](analyzer& dialog) {
        EXPECT_EQ(b.maps_shown, 1);
        EXPECT_EQ(dialog.caption(), "Logic Analyzer");
        EXPECT_EQ(dialog.analyzerOpen.caption(), "Load File");
        EXPECT_EQ(dialog.analyzerSave.caption(), "Save Buffer");
        EXPECT_EQ(dialog.analyzerSet.caption(), "Setting");
        EXPECT_EQ(dialog.analyzerprint.caption(), "Printer");
        EXPECT_EQ(dialog.Exit.caption(), "E&xit");
        EXPECT_EQ(dialog.Command1.caption(), "Zoom In");
        EXPECT_EQ(dialog.Command2.caption(), "Zoom Out");
        EXPECT_EQ(dialog.Command3.caption(), "Record");
        EXPECT_EQ(dialog.Command4.caption(), "Stop");
        EXPECT_EQ(dialog.Label5.caption(), "P21");
        EXPECT_EQ(dialog.Label12.caption(), "P28");
        const char* const panels[] = {"Status:", "Rec.Time:", "Trigger Mode:In Trigger",
                                      "Trigger  level:", "Trigger Pin:"};
        for (int panel = 1; panel <= 5; ++panel) EXPECT_EQ(dialog.StatusBar1.text(panel), panels[panel - 1]);
        EXPECT_TRUE(dialog.Command3.usable());
        EXPECT_FALSE(dialog.Command4.usable());
        EXPECT_FALSE(dialog.Text1.visible() || dialog.Text2.visible());
        EXPECT_EQ(dialog.HScroll1.max(), 1023);
        EXPECT_EQ(dialog.bitwidth(), dialog.Picture1.size().x / 32);
        EXPECT_EQ(drawn(dialog), (lines{"clear " + std::to_string(0x008080)}));
        EXPECT_EQ(labels_of(dialog), "   ");
        EXPECT_EQ(b.variables.transfer.loadlength, 0x80000);
    });
    EXPECT_EQ(b.variables.transfer.loadlength, 77);
    EXPECT_EQ(b.hardware.made, 0) << "nobody recorded";
}

TEST(the_analyzer, without_a_pin_map_gives_the_length_of_a_load_back)
{
    instrument_bench b;
    b.variables.transfer.loadlength = 77;
    analyzer dialog{b.session, b.variables.analyzer, b.variables.transfer,
                    [] { throw resource_error{"no such text"}; }};
    EXPECT_THROW(b.shell.show_modal(dialog), resource_error);
    EXPECT_EQ(b.variables.transfer.loadlength, 77);
}

TEST(the_analyzer, begins_with_the_sample_period_of_its_model)
{
    struct line {
        std::int16_t model;
        std::uint8_t generation;
        double before, after;
    };
    const line table[] = {{1, 0, 3.4, 3.4},  {4, 0, 3.4, 3.8},  {4, 17, 3.4, 3.5}, {9, 0, 3.8, 3.8},
                          {9, 17, 3.5, 3.5}, {15, 0, 4.7, 4.7}, {12, 17, 3.4, 3.4}};
    for (const auto& [model, generation, before, after] : table) {
        instrument_bench b{model, true, generation};
        b.reply_at_pass(1);
        b.during_analyzer([&](analyzer& dialog) {
            EXPECT_EQ(b.variables.analyzer.sampleus, before) << model;
            dialog.Command3.click();
            EXPECT_EQ(b.variables.analyzer.sampleus, after) << model;
        });
    }
}

TEST(the_settings_of_the_trigger, outlive_the_dialog_and_the_pin_is_masked)
{
    instrument_bench b;
    b.variables.analyzer.trigmode = -1;
    b.variables.analyzer.triglevel = -1;
    b.variables.analyzer.trigpin = 0xFD;
    for (int show = 0; show < 2; ++show) {
        b.during_analyzer([&](analyzer& dialog) {
            EXPECT_EQ(dialog.StatusBar1.text(3), "Trigger Mode:Ext Trigger");
            EXPECT_EQ(dialog.StatusBar1.text(4), "Trigger  level:High Level");
            EXPECT_EQ(dialog.StatusBar1.text(5), "Trigger Pin:P26");
        });
        EXPECT_EQ(b.variables.analyzer.trigpin, 5);
    }
}

TEST(a_record, draws_its_samples_and_its_times)
{
    instrument_bench b;
    b.reply_at_pass(3);
    b.during_analyzer([&](analyzer& dialog) {
        const int before = b.shell.changes(dialog.Picture1);
        dialog.Command3.click();
        EXPECT_EQ(dialog.StatusBar1.text(1), "Status:Record OK!");
        EXPECT_EQ(dialog.StatusBar1.text(2), "Rec.Time:");
        EXPECT_EQ(b.shell.changes(dialog.Picture1) - before, 2) << "emptied, then drawn at one stroke";
        const lines calls = drawn(dialog);
        const auto expected = analyzer_lines(b.session.blocks.ibuffer.span(),
                                             {.size = dialog.Picture1.size(), .bitwidth = dialog.bitwidth()});
        EXPECT_EQ(calls.size(), 1 + expected.size() + 4);
        EXPECT_EQ(labels_of(dialog), "0uS 27uS 54uS 82uS");
        const auto [width, height] = dialog.Picture1.size();
        EXPECT_EQ(calls[calls.size() - 3],
                  "text " + std::to_string(width / 4) + "," + std::to_string(height * 9 / 10) + " 0 27uS");
    });
}

TEST(a_resize, empties_the_picture_until_the_next_command)
{
    instrument_bench b;
    b.during_analyzer([&](analyzer& dialog) {
        dialog.press_key(form_key::plus);
        EXPECT_GT(drawn(dialog).size(), 65u);
        const std::int32_t max = dialog.HScroll1.max();
        dialog.Picture1.resize({6400, 3000});
        EXPECT_EQ(drawn(dialog).size(), 1u);
        EXPECT_EQ(labels_of(dialog), "   ");
        EXPECT_EQ(dialog.bitwidth(), 200);
        EXPECT_EQ(dialog.HScroll1.max(), max) << "the range stays";
        dialog.HScroll1.step(forms::scroll_step::small_on);
        EXPECT_GT(drawn(dialog).size(), 65u);
    });
}

TEST(keys_and_wheel, scroll_zoom_record_and_stop)
{
    instrument_bench b;
    b.during_analyzer([&](analyzer& dialog) {
        const auto press = [&](form_key key) { EXPECT_TRUE(dialog.press_key(key)); };
        press(form_key::right);
        press(form_key::page_down);
        EXPECT_EQ(dialog.HScroll1.value(), 2);
        EXPECT_EQ(dialog.viewpos(), 64) << "a screen has 32 samples";
        press(form_key::left);
        press(form_key::page_up);
        EXPECT_EQ(dialog.HScroll1.value(), 0);
        dialog.Picture1.turn_wheel(-3);
        EXPECT_EQ(dialog.HScroll1.value(), 3);
        dialog.Picture1.turn_wheel(1);
        EXPECT_EQ(dialog.HScroll1.value(), 2);
        press(form_key::end);
        EXPECT_EQ(dialog.HScroll1.value(), 1023);
        press(form_key::home);
        EXPECT_EQ(dialog.viewpos(), 0);
        const double width = dialog.bitwidth();
        press(form_key::plus);
        EXPECT_EQ(dialog.bitwidth(), 2 * width);
        press(form_key::minus);
        EXPECT_EQ(dialog.bitwidth(), width);
        b.at_pump = [&] { press(form_key::space); };
        press(form_key::space);
        EXPECT_EQ(dialog.StatusBar1.text(1), "Status:Record....") << "stopped by the second press";
        EXPECT_TRUE(dialog.Command3.usable());
    });
}

TEST(leaving, during_a_record_is_stop_and_the_form_closes_after_the_run)
{
    instrument_bench b;
    b.during_analyzer([&](analyzer& dialog) {
        b.at_pump = [&] {
            dialog.Exit.click();
            EXPECT_TRUE(dialog.is_open());
            EXPECT_FALSE(dialog.Command4.usable());
        };
        dialog.Command3.click();
        EXPECT_FALSE(dialog.is_open());
        EXPECT_EQ(b.transcript.back(), "enabled Command3 1");
    });
    EXPECT_EQ((lines{b.transcript.end() - 3, b.transcript.end()}),
              (lines{"setvpp 5000 0", "setvpp 5000 1", "hwreset"}));
}

TEST(exit, closes_an_idle_analyzer)
{
    instrument_bench b;
    b.during_analyzer([&](analyzer& dialog) {
        dialog.Exit.click();
        EXPECT_FALSE(dialog.is_open());
    });
    EXPECT_EQ(b.count("setvpp"), 0);
}

TEST(setting, draws_over_the_old_picture_and_says_the_trigger)
{
    instrument_bench b;
    b.during_analyzer([&](analyzer& dialog) {
        b.shell.on_next_dialog([](forms::form& shown) {
            auto& setting = dynamic_cast<analyzersetc&>(shown);
            setting.Option2(1).click();
            setting.Combo1.pick(3);
        });
        const int pumps = b.shell.pumps();
        dialog.analyzerSet.click();
        EXPECT_EQ(b.shell.pumps() - pumps, 2);
        EXPECT_EQ(b.transcript, (lines{"draw", "status3 Trigger Mode:Ext Trigger", "status4 Trigger  level:Low Level",
                                       "status5 Trigger Pin:P24"}));
        EXPECT_GT(drawn(dialog).size(), 65u);
    });
}

}  // namespace
}  // namespace tamrix
