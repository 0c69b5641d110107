// What the parameter dialog shows when it opens.
#include "parameter_fixture.h"

#include "entry/all_dialogs.h"

#include <limits>

namespace tamrix::tests {
namespace {

TEST_F(algoparameter_dialog, has_its_captions)
{
    select({});
    open([](algoparameter& d) {
        EXPECT_EQ(d.caption(), "Modify Algorithm Parameters");
        EXPECT_EQ(d.Frame1.caption(), "Algorithm Parameters:");
        EXPECT_EQ(d.Label1.caption(), "                VCC:");
        EXPECT_EQ(d.Label2.caption(), "                tPW:  ");
        EXPECT_EQ(d.Label3.caption(), "                VPP:");
        EXPECT_EQ(d.Label4.caption(), "         Retry:");
        EXPECT_EQ(d.Label5.caption(), "V");
        EXPECT_EQ(d.Label6.caption(), "uS");
        EXPECT_EQ(d.Label7.caption(), "V");
        EXPECT_EQ(d.OKButton.caption(), "OK");
        EXPECT_EQ(d.CancelButton.caption(), "Cancel");
    });
}

TEST_F(algoparameter_dialog, shows_the_four_parameters_of_the_device)
{
    select({.bvcc = 650, .bvpp = 1275, .pulse_us = 50, .wretry = 25});
    open([](algoparameter& d) {
        EXPECT_EQ(d.Text1.text(), "6.50");
        EXPECT_EQ(d.Text2.text(), "50");
        EXPECT_EQ(d.Text3.text(), "12.75");
        EXPECT_EQ(d.Text4.text(), "25");
    });
}

TEST_F(algoparameter_dialog, shows_the_page_of_a_device_with_little_vpp_and_not_its_vpp)
{
    select({.bvpp = 300, .pagelength = 64});
    open([](algoparameter& d) {
        EXPECT_EQ(d.Label3.caption(), "        Page:");
        EXPECT_EQ(d.Text3.text(), "64");
        EXPECT_TRUE(d.Text3.enabled());
        EXPECT_FALSE(d.Label7.visible());
    });
}

TEST_F(algoparameter_dialog, chooses_what_the_third_box_is_by_vpp_and_page)
{
    struct {
        std::int16_t bvpp, pagelength;
        bool page, enabled;
        const char* text;
    } const lines[] = {
        {501, 64, false, true, "5.01"}, {500, 64, true, true, "64"},      {500, 2, true, true, "2"},
        {500, 1, false, true, "5.00"},  {500, 0, false, true, "5.00"},    {130, 1, false, true, "1.30"},
        {129, 1, false, false, "1.29"}, {0, 0, false, false, "0.00"},     {0, 2, true, true, "2"},
        {0, -5, false, false, "0.00"},  {-150, 0, false, false, "-1.50"}, {32767, 99, false, true, "327.67"}};
    for (const auto& line : lines) {
        SCOPED_TRACE(std::to_string(line.bvpp) + " " + std::to_string(line.pagelength));
        select({.bvpp = line.bvpp, .pagelength = line.pagelength});
        open([&](algoparameter& d) {
            EXPECT_EQ(d.Text3.text(), line.text);
            EXPECT_EQ(d.Text3.enabled(), line.enabled);
            EXPECT_EQ(d.Label7.visible(), !line.page);
            EXPECT_EQ(d.Label3.caption(), line.page ? "        Page:" : "                VPP:");
        });
    }
}

TEST_F(algoparameter_dialog, shows_the_pulse_in_milliseconds_from_1000_microseconds_on)
{
    struct {
        std::int32_t pulse_us;
        const char *text, *unit;
    } const lines[] = {
        {0, "0", "uS"},          {1, "1", "uS"},      {999, "999", "uS"},
        {1000, "1", "mS"},       {1500, "1.5", "mS"}, {10000, "10", "mS"},
        {12345, "12.345", "mS"}, {-7, "-7", "uS"},    {std::numeric_limits<std::int32_t>::max(), "2147483.647", "mS"}};
    for (const auto& line : lines) {
        select({.pulse_us = line.pulse_us});
        open([&](algoparameter& d) {
            EXPECT_EQ(d.Text2.text(), line.text);
            EXPECT_EQ(d.Label6.caption(), line.unit);
        });
    }
}

TEST_F(algoparameter_dialog, shows_the_address_of_a_serial_memory_in_mode_1)
{
    select({.bvpp = 5, .wretry = 3, .prgmode = 1, .algo = "WSEPM"});
    open([](algoparameter& d) {
        EXPECT_EQ(d.Label4.caption(), "Addr(A2.A1.A0):");
        EXPECT_EQ(d.Text4.text(), "5");
    });
}

TEST_F(algoparameter_dialog, shows_the_retries_of_every_other_device)
{
    for (const programming& device : {programming{.bvpp = 5, .wretry = 3, .prgmode = 0, .algo = "WSEPM"},
                                      programming{.bvpp = 5, .wretry = 3, .prgmode = 2, .algo = "WSEPM"},
                                      programming{.bvpp = 5, .wretry = 3, .prgmode = 1, .algo = "EPROM"},
                                      programming{.bvpp = 5, .wretry = 3, .prgmode = 1, .algo = "wsepm"},
                                      programming{.bvpp = 5, .wretry = 3, .prgmode = 1}}) {
        select(device);
        open([](algoparameter& d) {
            EXPECT_EQ(d.Label4.caption(), "         Retry:");
            EXPECT_EQ(d.Text4.text(), "3");
        });
    }
}

TEST_F(algoparameter_dialog, begins_with_the_values_of_the_blocks_at_every_opening)
{
    select({.bvpp = 0, .pagelength = 64, .pulse_us = 5000});
    open([](algoparameter&) {});
    select({.bvpp = 1300, .pagelength = 64, .pulse_us = 50});
    open([](algoparameter& d) {
        EXPECT_EQ(d.Text3.text(), "13.00");
        EXPECT_TRUE(d.Label7.visible());
        EXPECT_EQ(d.Label6.caption(), "uS");
    });
}

TEST_F(algoparameter_dialog, ends_with_enter_and_escape)
{
    select({});
    algoparameter dialog{session};
    EXPECT_EQ(dialog.default_button(), &dialog.OKButton);
    EXPECT_EQ(dialog.cancel_button(), &dialog.CancelButton);
    shell.during(dialog, [&] {
        dialog.accept();
        EXPECT_FALSE(dialog.is_open());
    });
    shell.during(dialog, [&] {
        dialog.ask_to_leave();
        EXPECT_FALSE(dialog.is_open());
    });
}

TEST_F(algoparameter_dialog, stands_behind_its_method)
{
    select({});
    entry_methods all{session, variables, all_dialogs()};
    EXPECT_TRUE(all.offers("algoparameter0"));
    std::string caption;
    shell.on_next_dialog([&](forms::form& shown) {
        caption = shown.caption();
        dynamic_cast<algoparameter&>(shown).Text4.enter("7");
        shown.accept();
    });
    EXPECT_TRUE(all.algoparameter0().ok());
    EXPECT_EQ(caption, "Modify Algorithm Parameters");
    EXPECT_EQ(session.blocks.wretry(0), 7);
}

TEST_F(algoparameter_dialog, fails_with_a_text_where_the_language_has_none)
{
    select({});
    session.blocks.Language(0) = 36000;
    entry_methods all{session, variables, all_dialogs()};
    EXPECT_EQ(all.algoparameter0().error, "no text with number 37016");
}

}  // namespace
}  // namespace tamrix::tests
