// What a person types into the parameter dialog, and what comes of it.
#include "parameter_fixture.h"

namespace tamrix::tests {
namespace {

TEST_F(algoparameter_dialog, raises_a_vcc_of_1_5_to_1_60_and_stores_160)
{
    select({});
    open([&](algoparameter& d) {
        d.Text1.enter("1.5");
        d.Text1.leave();
        EXPECT_EQ(d.Text1.text(), "1.60");
        d.OKButton.click();
    });
    EXPECT_EQ(session.blocks.bvcc(0), 160);
}

TEST_F(algoparameter_dialog, holds_vcc_between_1_60_and_7_volts)
{
    select({});
    for (const auto& [typed, held] : {std::pair{"0", "1.60"},
                                      {"1.59", "1.60"},
                                      {"1.6", "1.6"},
                                      {"1.60", "1.60"},
                                      {"5", "5"},
                                      {"7", "7"},
                                      {"7.00", "7.00"},
                                      {"7.01", "7.00"},
                                      {"99", "7.00"}}) {
        EXPECT_EQ(after_leaving(vcc, typed), held) << typed;
    }
}

TEST_F(algoparameter_dialog, raises_a_pulse_of_0_to_1)
{
    select({});
    EXPECT_EQ(after_leaving(pulse, "0"), "1");
    confirm_with(pulse, "0");
    EXPECT_EQ(session.blocks.pwte(0), 1);
    select({.pulse_us = 5000});
    EXPECT_EQ(after_leaving(pulse, "0.5"), "1");
    confirm_with(pulse, "0");
    EXPECT_EQ(session.blocks.pwte(0), 1000) << "one millisecond, as the box says";
}

TEST_F(algoparameter_dialog, holds_vpp_between_1_60_and_that_of_the_device)
{
    select({.bvpp = 1300});
    for (const auto& [typed, held] : {std::pair{"0", "1.60"},
                                      {"1.59", "1.60"},
                                      {"1.6", "1.6"},
                                      {"12.75", "12.75"},
                                      {"13", "13"},
                                      {"13.01", "13.00"},
                                      {"26", "13.00"}}) {
        EXPECT_EQ(after_leaving(vpp, typed), held) << typed;
    }
}

TEST_F(algoparameter_dialog, holds_vpp_at_26_volts_where_the_device_has_more)
{
    select({.bvpp = 3000});
    EXPECT_EQ(after_leaving(vpp, "25.99"), "25.99");
    EXPECT_EQ(after_leaving(vpp, "26.01"), "26.00");
    EXPECT_EQ(after_leaving(vpp, "30.00"), "26.00");
    EXPECT_EQ(after_leaving(vpp, "31"), "26.00");
}

TEST_F(algoparameter_dialog, keeps_the_vpp_of_a_device_that_has_less_than_the_least)
{
    for (const std::int16_t bvpp : {0, 50, 129, 130, 159}) {
        select({.bvpp = bvpp});
        open([](algoparameter& d) { d.OKButton.click(); });
        EXPECT_EQ(session.blocks.bvpp(0), bvpp);
    }
}

TEST_F(algoparameter_dialog, does_not_check_a_page_as_a_voltage)
{
    select({.bvpp = 0, .pagelength = 64});
    for (const char* typed : {"0", "1", "27", "528"}) {
        EXPECT_EQ(after_leaving(vpp, typed), typed);
    }
}

TEST_F(algoparameter_dialog, checks_all_boxes_when_one_is_left)
{
    select({});
    open([](algoparameter& d) {
        d.Text1.enter("9");
        d.Text2.enter("0");
        d.Text3.enter("1");
        d.Text4.leave();
        EXPECT_EQ(d.Text1.text(), "7.00");
        EXPECT_EQ(d.Text2.text(), "1");
        EXPECT_EQ(d.Text3.text(), "1.60");
    });
}

TEST_F(algoparameter_dialog, stores_what_was_entered_with_ok_alone)
{
    const programming before{.bvcc = 500, .bvpp = 1300, .pulse_us = 100, .wretry = 10};
    select(before);
    open([&](algoparameter& d) {
        d.Text1.enter("6.25");
        d.Text2.enter("50");
        d.Text3.enter("12.5");
        d.Text4.enter("25");
        for (forms::text_box* box : {&d.Text1, &d.Text2, &d.Text3, &d.Text4}) box->leave();
        EXPECT_EQ(stored(), before) << "nothing is written before OK";
        d.OKButton.click();
        EXPECT_FALSE(d.is_open());
    });
    EXPECT_EQ(stored(), (programming{.bvcc = 625, .bvpp = 1250, .pulse_us = 50, .wretry = 25}));
}

TEST_F(algoparameter_dialog, stores_the_page_and_leaves_vpp_where_the_box_holds_the_page)
{
    select({.bvpp = 300, .pagelength = 64});
    confirm_with(vpp, "128");
    EXPECT_EQ(session.blocks.pagelength(0), 128);
    EXPECT_EQ(session.blocks.bvpp(0), 300);
    select({.bvpp = 1300, .pagelength = 64});
    confirm_with(vpp, "12");
    EXPECT_EQ(session.blocks.pagelength(0), 64);
    EXPECT_EQ(session.blocks.bvpp(0), 1200);
}

TEST_F(algoparameter_dialog, stores_milliseconds_as_microseconds)
{
    select({.pulse_us = 1500});
    open([](algoparameter& d) { d.OKButton.click(); });
    EXPECT_EQ(session.blocks.pwte(0), 1500) << "what was not touched stays";
    confirm_with(pulse, "20");
    EXPECT_EQ(session.blocks.pwte(0), 20000);
    select({.pulse_us = 100});
    confirm_with(pulse, "2000");
    EXPECT_EQ(session.blocks.pwte(0), 2000) << "the box stands in microseconds";
}

TEST_F(algoparameter_dialog, rounds_a_third_decimal_to_the_even_hundredth)
{
    select({});
    confirm_with(vcc, "5.125");
    EXPECT_EQ(session.blocks.bvcc(0), 512);
    confirm_with(vcc, "5.375");
    EXPECT_EQ(session.blocks.bvcc(0), 538);
}

TEST_F(algoparameter_dialog, stores_the_address_of_a_serial_memory_as_the_retries)
{
    select({.bvpp = 5, .wretry = 3, .prgmode = 1, .algo = "WSEPM"});
    confirm_with(retry, "7");
    EXPECT_EQ(session.blocks.wretry(0), 7);
    EXPECT_EQ(session.blocks.bvpp(0), 5);
}

TEST_F(algoparameter_dialog, cancelled_leaves_all_blocks_as_they_are)
{
    const programming before{.bvcc = 650, .bvpp = 1275, .pulse_us = 50, .wretry = 25};
    select(before);
    session.blocks.pwte(1) = 0;
    open([](algoparameter& d) {
        d.Text1.enter("3");
        d.Text4.enter("1");
        d.CancelButton.click();
        EXPECT_FALSE(d.is_open());
    });
    EXPECT_EQ(stored(), before);
    EXPECT_EQ(touched(), 0) << "no box was left";
}

TEST_F(algoparameter_dialog, tells_the_host_of_every_box_that_was_left)
{
    select({});
    for (const auto box : {vcc, pulse, vpp, retry}) {
        session.blocks.pwte(1) = 0;
        open([&](algoparameter& d) {
            (d.*box).leave();
            EXPECT_EQ(touched(), 1);
            d.CancelButton.click();
        });
        EXPECT_EQ(touched(), 1) << "also where it is cancelled then";
    }
    select({.bvpp = 0});
    session.blocks.pwte(1) = 0;
    open([](algoparameter& d) { d.Text3.leave(); });
    EXPECT_EQ(touched(), 0) << "nobody leaves a box that is disabled";
}

TEST_F(algoparameter_dialog, does_not_tell_the_host_of_ok_by_itself)
{
    select({});
    session.blocks.pwte(1) = 0;
    open([](algoparameter& d) { d.OKButton.click(); });
    EXPECT_EQ(touched(), 0);
}

TEST_F(algoparameter_dialog, takes_digits_everywhere_and_the_point_in_the_voltages)
{
    select({.bvpp = 1300, .pulse_us = 100});
    open([&](algoparameter& d) {
        for (const auto box : {vcc, pulse, vpp, retry}) (d.*box).enter("");
        d.Text1.type("3.3");
        d.Text2.type("123");
        d.Text3.type("12.5");
        d.Text4.type("4567890");
        EXPECT_EQ(shell.beeps(), 0);
        EXPECT_EQ(d.Text1.text(), "3.3");
        EXPECT_EQ(d.Text2.text(), "123");
        EXPECT_EQ(d.Text3.text(), "12.5");
        EXPECT_EQ(d.Text4.text(), "4567890");
    });
}

TEST_F(algoparameter_dialog, drops_every_other_key_with_a_beep)
{
    select({});
    open([&](algoparameter& d) {
        int expected = 0;
        for (const auto box : {vcc, pulse, vpp, retry}) {
            const std::string before = (d.*box).text();
            for (const char* key : {"-", "+", "e", "A", " ", ",", "/", ":", "\xC3\xA9", "\xD9\xA3"}) {
                (d.*box).type(key);
                EXPECT_EQ(shell.beeps(), ++expected) << key;
            }
            EXPECT_EQ((d.*box).text(), before);
        }
        d.Text2.type(".");
        d.Text4.type(".");
        EXPECT_EQ(shell.beeps(), expected + 2);
    });
}

TEST_F(algoparameter_dialog, keeps_the_point_of_milliseconds_while_digits_are_typed_around_it)
{
    select({.pulse_us = 1500});
    open([&](algoparameter& d) {
        d.Text2.enter("1.52");
        EXPECT_EQ(d.Text2.text(), "1.52");
        d.Text2.enter("31.52");
        EXPECT_EQ(d.Text2.text(), "31.52");
        EXPECT_EQ(shell.beeps(), 0);
        d.Text2.enter("3.1.52");
        EXPECT_EQ(d.Text2.text(), "31.52");
        EXPECT_EQ(shell.beeps(), 1);
        d.OKButton.click();
    });
    EXPECT_EQ(session.blocks.pwte(0), 31520);
}

}  // namespace
}  // namespace tamrix::tests
