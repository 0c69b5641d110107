#include "formats/load_fixture.h"

#include <gtest/gtest.h>

namespace tamrix::tests {
namespace {

using strings = std::vector<std::string>;

/// Opens the load dialog alone, for tests of what it shows.
struct open_dialog : plug_in_fixture {
    explicit open_dialog(const device& chosen = {}) : plug_in_fixture{chosen} {}
    readfile dialog{session, variables.transfer};
    void shown(std::function<void()> steps) { shell.during(dialog, std::move(steps)); }
};

TEST(readfile, opens_with_its_defaults)
{
    open_dialog f{{.tlength = 0x8000, .wordmode = 2, .clear = 1}};
    f.variables.transfer.rformat = 1;
    f.shown([&] {
        EXPECT_EQ(f.dialog.caption(), "Load A File To Buffer");
        EXPECT_EQ(f.dialog.rfileText1.text(), "0");
        EXPECT_EQ(f.dialog.rfileText2.text(), "0");
        EXPECT_EQ(f.dialog.rfileText3.text(), "10000");
        EXPECT_EQ(f.dialog.rfilecombo1.index(), 0);
        EXPECT_EQ(f.dialog.rfileCombo2.index(), 0);
        EXPECT_EQ(f.dialog.rfileOption2.selected(), 1);
        EXPECT_EQ(f.dialog.rfileOption1.selected(), 1);
        EXPECT_EQ(f.dialog.ProgressBar1.value(), 0);
    });
}

TEST(readfile, shows_every_caption_from_the_catalogue)
{
    open_dialog f;
    f.shown([&] {
        auto& d = f.dialog;
        const strings labels{d.rfileLabel1.caption,    d.rfileLabel3.caption,       d.rfileLabel4.caption,
                             d.rfileLabel5.caption,    d.rfileLabel6.caption,       d.rfileLabel7.caption,
                             d.rfilebufFrame1.caption, d.rfileformatFrame2.caption, d.okcom.caption,
                             d.exitcom.caption};
        EXPECT_EQ(labels, (strings{"File:", "From File Mode:", "To Buffer Mode:", "To Buffer Address(HEX):",
                                   "From File Address(HEX):", "File Size(HEX):", "Clear Buffer Options",
                                   "Auto Format Detected", "OK", "Cancel"}));
        const strings clear{d.rfileOption1(0).caption, d.rfileOption1(1).caption, d.rfileOption1(2).caption};
        EXPECT_EQ(clear, (strings{"0xFF", "0x00", "Disable"}));
        strings formats;
        for (int i = 0; i < d.rfileOption2.count(); ++i) formats.push_back(d.rfileOption2(i).caption);
        EXPECT_EQ(formats, (strings{"Binary", "Intel", "Motorola S", "Tektronix", "Holtek", "EMC(.CDS)", "Intel Hex16",
                                    "Texas Instrument"}));
        const strings modes{"Normal",        "Even(1st of 2)", "Odd(2nd of 2)", "1st byte of 4",
                            "2nd byte of 4", "3rd byte of 4",  "4th byte of 4"};
        EXPECT_EQ(d.rfilecombo1.items(), modes);
        EXPECT_EQ(d.rfileCombo2.items(), modes);
    });
}

TEST(readfile, every_byte_selection_sets_its_step_and_phase)
{
    const std::pair<int, int> expected[] = {{1, 0}, {2, 0}, {2, 1}, {4, 0}, {4, 1}, {4, 2}, {4, 3}};
    temp_folder files;
    const std::string file = files.write("a.bin", "0123456789");
    for (int mode = 0; mode < 7; ++mode) {
        load_fixture f;
        f.load(file, {.from_mode = mode, .to_mode = 6 - mode});
        const auto& at = f.variables.transfer;
        EXPECT_EQ(std::pair(int{at.filestep}, int{at.filephase}), expected[mode]);
        EXPECT_EQ(std::pair(int{at.bufstep}, int{at.bufphase}), expected[6 - mode]);
        EXPECT_EQ(at.tomode, 6 - mode);
        EXPECT_EQ(f.last_reply.value, variant{static_cast<std::int16_t>(mode)});
    }
}

TEST(readfile, an_EMC_file_on_a_HOLTEK_device_opens_on_binary)
{
    open_dialog f{{.family = 2, .maker = "  HOLTEK "}};
    f.variables.transfer.rformat = 5;
    f.shown([&] { EXPECT_EQ(f.dialog.rfileOption2.selected(), 0); });
    f.variables.transfer.rformat = 4;
    f.shown([&] { EXPECT_EQ(f.dialog.rfileOption2.selected(), 4); });
}

TEST(readfile, a_Holtek_file_on_an_EMC_device_opens_on_binary)
{
    open_dialog f{{.family = 2, .maker = "EMC"}};
    f.variables.transfer.rformat = 4;
    f.shown([&] { EXPECT_EQ(f.dialog.rfileOption2.selected(), 0); });
    f.variables.transfer.rformat = 5;
    f.shown([&] { EXPECT_EQ(f.dialog.rfileOption2.selected(), 5); });
}

TEST(readfile, the_vendor_formats_stay_on_other_makers_and_families)
{
    open_dialog other_maker{{.family = 2, .maker = "ATMEL"}};
    other_maker.variables.transfer.rformat = 5;
    other_maker.shown([&] { EXPECT_EQ(other_maker.dialog.rfileOption2.selected(), 5); });
    open_dialog other_family{{.family = 1, .maker = "HOLTEK"}};
    other_family.variables.transfer.rformat = 5;
    other_family.shown([&] { EXPECT_EQ(other_family.dialog.rfileOption2.selected(), 5); });
}

TEST(readfile, a_chosen_clear_option_is_remembered_by_the_host_at_once)
{
    open_dialog f{{.clear = 2}};
    f.shown([&] {
        f.dialog.rfileOption1(0).click();
        EXPECT_EQ(f.session.blocks.typeformat(1), 0);
    });
}

TEST(readfile, texas_instrument_disables_both_mode_lists)
{
    open_dialog f;
    f.shown([&] {
        f.dialog.rfileOption2(7).click();
        EXPECT_FALSE(f.dialog.rfilecombo1.enabled());
        EXPECT_FALSE(f.dialog.rfileCombo2.enabled());
        f.dialog.rfileOption2(0).click();
        EXPECT_TRUE(f.dialog.rfilecombo1.enabled());
        EXPECT_TRUE(f.dialog.rfileCombo2.enabled());
    });
}

TEST(readfile, only_hexadecimal_keys_reach_the_address_boxes_the_others_beep)
{
    open_dialog f;
    f.shown([&] {
        f.dialog.rfileText1.enter("");
        f.dialog.rfileText1.type("1gAf-");
        EXPECT_EQ(f.dialog.rfileText1.text(), "1Af");
        f.dialog.rfileText2.type("xyz");
        EXPECT_EQ(f.dialog.rfileText2.text(), "0");
    });
    EXPECT_EQ(f.shell.beeps(), 2);
}

TEST(readfile, the_address_boxes_take_hexadecimal_digits_and_backspace)
{
    open_dialog f;
    for (const auto* box : {&f.dialog.rfileText1, &f.dialog.rfileText2}) {
        std::string taken;
        for (char32_t key = 0; key < 0x200; ++key) {
            if (box->accepts(key)) taken += static_cast<char>(key);
        }
        EXPECT_EQ(taken, "\b0123456789ABCDEFabcdef");
    }
    EXPECT_FALSE(f.dialog.rfileText3.accepts) << "the size takes any key";
}

TEST(readfile, a_format_without_an_option_fails_the_call)
{
    load_fixture f;
    f.preselected = 8;
    f.load("unused.bin");
    EXPECT_EQ(f.last_reply.error, "no option 8");
    EXPECT_EQ(f.shell.dialogs_shown(), 0);
}

TEST(readfile, a_good_load_reports_time_and_seconds_and_closes)
{
    temp_folder files;
    const std::string file = files.write("a.bin", "abc");
    load_fixture f;
    EXPECT_EQ(f.load(file), status::done);
    EXPECT_FALSE(f.stayed_open);
    EXPECT_EQ(f.status_text(), ">>Load File OK! Time:" + date_and_time_of(file) + "\n>> 0.00Sec\n");
    EXPECT_EQ(f.variables.transfer.why_it_failed.text(), "");
}

TEST(readfile, the_status_text_is_appended_to_what_stands_there)
{
    temp_folder files;
    load_fixture f;
    f.session.blocks.MainRtstr(0) = ">>Blank Check OK!\n";
    f.load(files.path("missing.bin"));
    EXPECT_EQ(f.status_text(), ">>Blank Check OK!\n>>Load File Fail!\n>> 0.00Sec\n");
}

TEST(readfile, the_seconds_are_those_that_the_reader_took)
{
    temp_folder files;
    load_fixture f{{.buflength = 0x8400000, .tlength = 0x10800000}};
    f.syspath = files.path("");
    f.shell.on_doevents = [&] { f.shell.advance(0.6175); };
    EXPECT_EQ(f.load(files.write("a.bin", "abc"), {.clear = 0}), status::done);
    EXPECT_NE(f.status_text().find("\n>> 1.24Sec\n"), std::string::npos) << f.status_text();
}

TEST(readfile, cancel_is_dead_while_a_reader_runs)
{
    temp_folder files;
    load_fixture f{{.buflength = 0x8400000, .tlength = 0x10800000}};
    f.syspath = files.path("");
    readfile dialog{f.session, f.variables.transfer};
    f.variables.transfer.fname = files.write("a.bin", "abc");
    f.session.syspath = f.syspath;
    bool open_meanwhile = false;
    f.shell.on_doevents = [&] {
        dialog.ask_to_leave();
        dialog.okcom.click();  // a second OK must not start a second load
        open_meanwhile = dialog.is_open();
    };
    f.shell.during(dialog, [&] { dialog.okcom.click(); });
    EXPECT_TRUE(open_meanwhile);
    EXPECT_EQ(f.variables.transfer.rformat, 0);
}

TEST(readfile, cancel_closes_an_idle_dialog_and_the_first_result_is_empty)
{
    load_fixture f;
    f.shell.on_next_dialog([&](forms::form& shown) {
        dynamic_cast<readfile&>(shown).exitcom.click();
        EXPECT_FALSE(shown.is_open());
    });
    std::string name = "a.bin", none;
    std::int16_t format = 0;
    const reply outcome = f.methods.readfile0(name, format, none);
    EXPECT_TRUE(outcome.ok());
    EXPECT_EQ(outcome.value, variant{});
    EXPECT_TRUE(f.buffer_untouched());
}

TEST(readfile, a_start_that_the_reader_refuses_can_be_mended_and_loaded)
{
    temp_folder files;
    load_fixture f;
    f.load(files.write("a.bin", "abc"), {.from_file = "4"}, [](readfile& dialog) {
        ASSERT_TRUE(dialog.is_open());
        dialog.rfileText2.enter("1");
        dialog.okcom.click();
        EXPECT_FALSE(dialog.is_open());
    });
    EXPECT_EQ(f.bytes(0, 2), (std::vector<std::uint8_t>{'b', 'c'}));
}

TEST(readfile, a_cancelled_dialog_forgets_why_the_load_before_failed)
{
    temp_folder files;
    load_fixture f;
    f.load(files.path("missing.bin"));
    EXPECT_FALSE(f.variables.transfer.why_it_failed.empty());
    std::string name = "b.bin", none;
    std::int16_t format = 0;
    f.methods.readfile0(name, format, none);
    EXPECT_TRUE(f.variables.transfer.why_it_failed.empty());
}

TEST(readfile, a_cancelled_load_yields_what_the_load_before_left)
{
    temp_folder files;
    load_fixture f;
    f.load(files.write("a.bin", "abc"), {.from_mode = 3});
    std::string name = "b.bin", none;
    std::int16_t format = 0;
    EXPECT_EQ(f.methods.readfile0(name, format, none).value, variant{std::int16_t{3}});
}

}  // namespace
}  // namespace tamrix::tests
