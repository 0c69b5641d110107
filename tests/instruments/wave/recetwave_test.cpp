// Frequency meter and signal generator. The orders of calls are in the transcripts.
#include "instruments/wave/recetwave.h"

#include "instrument_bench.h"
#include "instruments/wave/wave_divider.h"

#include <gtest/gtest.h>

namespace tamrix {
namespace {

using tests::instrument_bench;
using tests::lines;

constexpr bool meter = true, generator = false;

TEST(the_meter, opens_with_its_pin_map_its_captions_and_a_count_of_0)
{
    instrument_bench b;
    b.during_wave(meter, [&](recetwave& dialog) {
        EXPECT_EQ(b.maps_shown, 1);
        EXPECT_EQ(b.map_shown, static_cast<std::uint8_t>(recetwave::pin_map::input));
        EXPECT_EQ(dialog.caption(), "Frequency Meter");
        EXPECT_EQ(dialog.Label1.caption(), "Frequency:");
        EXPECT_EQ(dialog.Frame1.caption(), "Note!");
        EXPECT_EQ(dialog.bigan.caption(), "Start");
        EXPECT_EQ(dialog.stopButton.caption(), "Stop");
        EXPECT_EQ(dialog.CancelButton.caption(), "Cancel");
        EXPECT_EQ(dialog.Text2.caption(), "GND Connected 24 Pin\nInput Signal Connected 23 Pin\nTTL Input\n"
                                          "Max Frequency:100KHz\nInput Impedance:10K.");
        EXPECT_TRUE(dialog.Text1.readout());
        EXPECT_EQ(dialog.Text1.text(), "000000");
        dialog.Text1.type("5");
        EXPECT_EQ(dialog.Text1.text(), "000000");
        EXPECT_FALSE(dialog.Timer1.running());
    });
}

TEST(the_generator, opens_with_its_pin_map_and_an_empty_text)
{
    instrument_bench b;
    b.during_wave(generator, [&](recetwave& dialog) {
        EXPECT_EQ(b.map_shown, static_cast<std::uint8_t>(recetwave::pin_map::output));
        EXPECT_EQ(dialog.caption(), "Signal Generator");
        EXPECT_TRUE(dialog.Text2.caption().starts_with("GND Connected 24 Pin\nOutput Signal"));
        EXPECT_EQ(dialog.Text1.text(), "");
        EXPECT_FALSE(dialog.Text1.readout());
    });
}

TEST(a_wave_dialog, waits_50_ms_when_it_opens_and_resets_when_it_closes)
{
    for (const bool mode : {meter, generator}) {
        instrument_bench b;
        b.variables.wave.fwave = mode ? bool16{1} : bool16_false;
        recetwave dialog{b.session, b.variables.wave, [](recetwave::pin_map) {}};
        b.shell.during(dialog, [] {});
        const std::size_t last = b.transcript.size() - 1;
        EXPECT_EQ(b.transcript[last - 2], "delayms 50");
        EXPECT_EQ(b.transcript[last - 1], "timer1 off");
        EXPECT_EQ(b.transcript[last], "hwreset");
        EXPECT_EQ(dialog.Text1.readout(), mode) << "any flag but 0 is the meter";
    }
}

TEST(a_key, that_is_no_digit_is_dropped_with_a_beep)
{
    instrument_bench b;
    b.during_wave(generator, [&](recetwave& dialog) {
        dialog.Text1.type("1a2-.3");
        EXPECT_EQ(dialog.Text1.text(), "123");
        EXPECT_EQ(b.shell.beeps(), 1);
        dialog.Text1.enter("12");
        EXPECT_EQ(dialog.Text1.text(), "12") << "as Backspace does";
        EXPECT_EQ(b.shell.beeps(), 1);
    });
}

TEST(a_count, is_read_each_800_ms_until_stop)
{
    for (const bool usb : {true, false}) {
        instrument_bench b{1, usb};
        b.hardware.ctlin = [](std::uint8_t address) {
            return address == 45 ? 0x40 : address == 46 ? 0xE2 : address == 47 ? 0x101 : 0;
        };
        b.during_wave(meter, [&](recetwave& dialog) {
            dialog.bigan.click();
            EXPECT_FALSE(dialog.bigan.usable());
            EXPECT_TRUE(dialog.Text1.usable());
            for (int i = 0; i < 3; ++i) b.session.blocks.ibuf1(i) = std::array<std::uint8_t, 3>{0x40, 0xE2, 0x01}[i];
            b.session.blocks.usbpip0readresult(0) = bool16_true;
            b.shell.advance(0.79);
            EXPECT_EQ(dialog.Text1.text(), "000000");
            b.shell.advance(0.02);
            EXPECT_EQ(dialog.Text1.text(), "123456");
            EXPECT_EQ(b.session.blocks.usbpip0readresult(0) == 0, usb);
            dialog.stopButton.click();
            EXPECT_TRUE(dialog.bigan.usable());
            b.transcript.clear();
            b.shell.advance(5);
            EXPECT_TRUE(b.transcript.empty());
        });
    }
}

TEST(a_start, over_usb_forgets_the_last_count)
{
    instrument_bench b;
    b.during_wave(meter, [&](recetwave& dialog) {
        for (int i = 0; i < 4; ++i) b.session.blocks.ibuf1(i) = 9;
        dialog.bigan.click();
        b.shell.advance(0.8);
        EXPECT_EQ(dialog.Text1.text(), "000000");
        EXPECT_EQ(b.session.blocks.ibuf1(3), 9);
    });
}

TEST(a_start, that_finds_no_programmer_or_no_board_leaves_start_off_until_stop)
{
    for (const bool mode : {meter, generator}) {
        for (const bool no_board : {false, true}) {
            instrument_bench b{40};
            if (no_board) b.hardware.boardsel = [] { return 2; };
            b.during_wave(mode, [&](recetwave& dialog) {
                if (!no_board) b.hardware.hwreset = [] { return 1; };
                if (mode == generator) dialog.Text1.type("1000");
                dialog.bigan.click();
                EXPECT_FALSE(dialog.bigan.usable());
                EXPECT_FALSE(dialog.Timer1.running());
                EXPECT_EQ(b.count("ctlout"), 0);
                EXPECT_EQ(b.count("hwrelease"), no_board ? 0 : 1);
                dialog.stopButton.click();
                EXPECT_TRUE(dialog.bigan.usable() && dialog.Text1.usable());
            });
        }
    }
}

TEST(the_board_of_a_meter, is_selected_over_usb_from_model_40_on)
{
    const std::tuple<std::int16_t, bool, bool> table[] = {
        {39, true, false}, {40, true, true}, {54, true, true}, {40, false, false}};
    for (const auto& [model, usb, selects] : table) {
        instrument_bench b{model, usb};
        b.during_wave(meter, [&](recetwave& dialog) { dialog.bigan.click(); });
        EXPECT_EQ(b.has("boardsel 0"), selects) << model;
    }
}

TEST(a_signal, shows_what_the_hardware_gives_and_sends_the_divider)
{
    instrument_bench b{5, true};
    b.during_wave(generator, [&](recetwave& dialog) {
        b.session.blocks.ubuf1(0) = b.session.blocks.ubuf1(1) = 0x77;
        dialog.Text1.type("600");
        dialog.bigan.click();
        EXPECT_EQ(dialog.Text1.text(), "600") << "a long period is not corrected";
        EXPECT_FALSE(dialog.Text1.usable() || dialog.bigan.usable());
        EXPECT_EQ(b.transcript.back(), "ctlout 68 140");  // 937.5 - 3 * 34, rounded to 836
        EXPECT_EQ(b.session.blocks.ubuf1(2), 4);
        EXPECT_EQ(b.session.blocks.ubuf1(3), 1);
        EXPECT_EQ(b.session.blocks.ubuf1(1), 0x77);
        EXPECT_EQ(b.count("usbcomwrite"), 0);
        dialog.stopButton.click();
        dialog.Text1.enter("10000");
        dialog.bigan.click();
        EXPECT_EQ(dialog.Text1.text(), "8800");
    });
}

TEST(a_text, without_a_divider_is_an_error_that_reaches_the_host)
{
    for (const char* text : {"", "0", "2147483648", "9999999999"}) {
        instrument_bench b;
        EXPECT_THROW(b.during_wave(generator,
                                   [&](recetwave& dialog) {
                                       dialog.Text1.type(text);
                                       dialog.bigan.click();
                                   }),
                     frequency_error)
            << text;
        EXPECT_EQ(b.transcript.back(), "hwreset") << "the socket is left safe";
        EXPECT_EQ(b.count("ctlout"), 0);
    }
}

TEST(a_programmer_that_goes, does_not_keep_the_dialog_from_closing)
{
    instrument_bench b;
    EXPECT_THROW(b.during_wave(meter,
                               [&](recetwave& dialog) {
                                   b.hardware.at_operation = [](const char*) { throw hw::programmer_error{"gone"}; };
                                   dialog.bigan.click();
                               }),
                 hw::programmer_error);
}

}  // namespace
}  // namespace tamrix
