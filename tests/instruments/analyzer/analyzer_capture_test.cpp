// A capture by USB, and what both routes have in common: its frames, its samples, its failures. The orders of calls are
// in the transcripts.
#include "bare_capture.h"

#include <gtest/gtest.h>

#include <utility>

namespace tamrix {
namespace {

using tests::bank_end;
using tests::bare_capture;
using tests::instrument_bench;
using tests::lines;
using tests::sample_of;

TEST(sample_period, is_that_of_the_clock_and_the_generation)
{
    EXPECT_EQ(sample_period(hw::sampling::by_generation, 17), 3.5);
    EXPECT_EQ(sample_period(hw::sampling::by_generation, 16), 3.8);
    EXPECT_EQ(sample_period(hw::sampling::slow, 17), 4.7);
    EXPECT_EQ(sample_period(hw::sampling::common, 17), 3.4);
}

TEST(a_capture_by_usb, says_trigger_pin_and_level_in_its_first_frame)
{
    struct line {
        std::int16_t trigmode, triglevel;
        std::uint8_t trigpin;
        const char* frame;
    };
    const line table[] = {
        {0, 0, 0, "21 01 00 01 00"},   {-1, 0, 0, "21 01 01 01 00"}, {-1, -1, 0, "21 01 01 01 01"},
        {-1, -1, 7, "21 01 01 80 80"}, {-1, 0, 7, "21 01 01 80 00"}, {0, -1, 3, "21 01 00 08 08"},
    };
    for (const auto& [trigmode, triglevel, trigpin, frame] : table) {
        bare_capture b;
        b.settings.trigmode = trigmode;
        b.settings.triglevel = triglevel;
        b.settings.trigpin = trigpin;
        b.reply_at_pass(1);
        b.capture.record();
        EXPECT_TRUE(b.has(std::string{"usbcomwrite 5: "} + frame)) << frame;
    }
}

TEST(a_capture_by_usb, puts_bank_after_bank_into_the_buffer)
{
    bare_capture b;
    b.session.blocks.rambknum(0) = 3;
    b.reply_at_pass(4);
    b.capture.record();
    EXPECT_EQ(b.last_status(), "Status:Record OK!");
    for (int bank = 0; bank < 3; ++bank)
        for (const int i : {0, 1, 777, 32767}) ASSERT_EQ(b.buffer(32768 * bank + i), sample_of(bank, i)) << bank;
    EXPECT_EQ(b.buffer(3 * 32768), 170) << "the end marker of the last bank";
    EXPECT_EQ(b.buffer(3 * 32768 + 1), instrument_bench::untouched);
}

TEST(a_capture_by_usb, of_no_bank_is_a_good_one_over_the_old_samples)
{
    bare_capture b;
    b.session.blocks.rambknum(0) = 0;
    b.reply_at_pass(1);
    b.capture.record();
    EXPECT_TRUE(b.buffer_untouched());
    EXPECT_EQ(b.last_status(), "Status:Record OK!");
    EXPECT_EQ(b.count("usbbulkread"), 0);
    EXPECT_EQ(b.count("usbcomwrite 8: 0A 00 00"), 1);
}

TEST(a_capture_by_usb, waits_on_after_any_other_reply_and_without_a_limit_of_time)
{
    bare_capture b;
    int passes = 0;
    b.at_pump = [&] {
        if (b.count("usbbulkread") > 0) return;
        b.shell.advance(60);
        b.hardware.reply(++passes < 1000 ? 0xAB : 0xAA);
    };
    b.capture.record();
    EXPECT_EQ(passes, 1000);
    EXPECT_EQ(b.last_status(), "Status:Record OK!");
}

TEST(stop, during_the_wait_for_the_reply_sends_the_stop_frame_at_once)
{
    bare_capture b;
    b.at_pump = [&] { b.capture.stop(); };
    b.capture.record();
    EXPECT_EQ(b.last_status(), "Status:Record....");
    EXPECT_EQ(b.count("usbcomwrite"), 2);
    EXPECT_TRUE(b.has("usbcomwrite 5: 21 00 00 01 00"));
    EXPECT_EQ(b.count("hwreset"), 2);
    EXPECT_EQ(b.transcript.back(), "record on");
    EXPECT_TRUE(b.buffer_untouched());
}

TEST(stop, during_the_banks_has_no_effect)
{
    bare_capture b;
    b.session.blocks.rambknum(0) = 2;
    b.at_pump = [&] {
        b.hardware.reply(0xAA);
        if (b.count("usbbulkread") > 0) b.capture.stop();
    };
    b.capture.record();
    EXPECT_EQ(b.count("usbbulkread"), 2);
    EXPECT_EQ(b.last_status(), "Status:Record OK!");
}

TEST(a_bank, that_fails_or_never_comes_ends_the_capture_and_keeps_the_banks_before_it)
{
    for (const bank_end end : {bank_end::fails, bank_end::hangs}) {
        bare_capture b;
        b.session.blocks.rambknum(0) = 4;
        b.hardware.read_bank = [&](int bank) { return bank == 1 ? end : bank_end::arrives; };
        b.at_pump = [&] {
            b.hardware.reply(0xAA);
            b.shell.advance(0.5);
        };
        b.capture.record();
        EXPECT_EQ(b.last_status(), "Status:Record Error!");
        EXPECT_EQ(b.count("usbbulkread"), 2);
        EXPECT_EQ(b.count("draw"), 0);
        EXPECT_EQ(b.buffer(32767), sample_of(0, 32767));
        EXPECT_EQ(b.buffer(40000), instrument_bench::untouched);
        EXPECT_EQ(b.transcript.back(), "record on");
        EXPECT_EQ(b.shell.seconds() > 8, end == bank_end::hangs) << "its limit";
    }
}

TEST(a_bank, whose_read_does_not_fit_the_buffer_is_a_failure_and_not_asked_for)
{
    constexpr std::int32_t margin = 2200;  // mapped after a buffer's length
    const std::pair<std::int32_t, int> reads_by_length[] = {
        {32769 - margin, 1}, {32768 - margin, 0}, {65537 - margin, 2}, {0x4000, 0}};
    for (const auto& [buflength, reads] : reads_by_length) {
        bare_capture b{1, true, 0, buflength};
        b.session.blocks.rambknum(0) = 3;
        b.reply_at_pass(1);
        b.capture.record();
        EXPECT_EQ(b.count("usbbulkread"), reads) << buflength;
        EXPECT_EQ(b.count("usbcomwrite 8: 0A"), reads);
        EXPECT_EQ(b.last_status(), "Status:Record Error!");
    }
}

TEST(a_frame, that_is_refused_ends_the_capture_with_an_error)
{
    for (int refused = 0; refused < 4; ++refused) {
        bare_capture b;
        int frames = 0;
        b.hardware.usbcomwrite = [&](const std::uint8_t*) { return frames++ == refused ? 1 : 0; };
        b.reply_at_pass(1);
        b.capture.record();
        // The stop frame is the last one; after it there is nothing to end.
        EXPECT_EQ(b.last_status(), refused == 3 ? "Status:Record OK!" : "Status:Record Error!") << refused;
        EXPECT_EQ(b.count("usbcomwrite 5: 21 00"), 1);
        EXPECT_EQ(b.count("hwreset"), 2);
        EXPECT_EQ(b.transcript.back(), "record on");
    }
}

TEST(a_programmer_without_an_answer, is_released_and_the_buttons_stay)
{
    for (const bool usb : {true, false}) {
        bare_capture b{1, usb};
        b.hardware.hwreset = [] { return 1; };
        b.capture.record();
        EXPECT_EQ(b.transcript, (lines{"clear", "hwreset", "hwrelease"}));
        b.capture.leave_socket_safe();
        EXPECT_EQ(b.transcript.size(), 3u) << "nothing was switched on";
    }
}

TEST(usbable, is_the_usb_route_only_where_it_is_exactly_true)
{
    for (const bool16 flag : {bool16_true, bool16{1}, bool16_false}) {
        bare_capture b;
        b.session.blocks.usbable(0) = flag;
        b.reply_at_pass(1);
        b.capture.record();
        EXPECT_EQ(b.count("usbcomwrite") > 0, flag == bool16_true) << flag;
        EXPECT_EQ(b.count("regin") > 0, flag != bool16_true);
    }
}

TEST(closing, acts_as_stop_and_leaves_the_socket_safe_after_the_steps_of_the_run)
{
    bare_capture b;
    b.at_pump = [&] { b.gone = true; };
    b.capture.record();
    b.capture.leave_socket_safe();
    ASSERT_GE(b.transcript.size(), 5u);
    EXPECT_EQ((lines{b.transcript.end() - 4, b.transcript.end()}),
              (lines{"record on", "setvpp 5000 0", "setvpp 5000 1", "hwreset"}));
    const std::size_t length = b.transcript.size();
    b.capture.leave_socket_safe();
    EXPECT_EQ(b.transcript.size(), length) << "once is enough";
}

TEST(a_read_that_never_ended, costs_the_programmer_that_might_still_write)
{
    bare_capture b;
    b.hardware.read_bank = [](int) { return bank_end::hangs; };
    b.at_pump = [&] {
        b.hardware.reply(0xAA);
        b.shell.advance(1);
    };
    b.capture.record();
    EXPECT_EQ(b.hardware.made, 1);
    b.capture.leave_socket_safe();
    b.session.hardware.device();
    EXPECT_EQ(b.hardware.made, 2);
    b.capture.leave_socket_safe();
    b.session.hardware.device();
    EXPECT_EQ(b.hardware.made, 2);
}

/// How many calls a whole capture makes; its call number `fatal` throws.
int calls_of_capture(bool usb, int fatal)
{
    bare_capture b{1, usb};
    int calls = 0;
    b.hardware.at_operation = [&](const char*) {
        if (calls++ == fatal) throw hw::programmer_error{"unplugged"};
    };
    b.at_pump = [&] { b.hardware.reply(0xAA); };
    if (fatal < 0) {
        b.capture.record();
    } else {
        EXPECT_THROW(b.capture.record(), hw::programmer_error) << fatal;
        EXPECT_FALSE(b.capture.running());
        EXPECT_NO_THROW(b.capture.leave_socket_safe());
    }
    return calls;
}

TEST(a_programmer_that_goes, ends_the_capture_with_an_error_at_whichever_call)
{
    const int calls = calls_of_capture(true, -1);
    EXPECT_GT(calls, 10);
    for (int fatal = 0; fatal < calls; ++fatal) calls_of_capture(true, fatal);
    for (const int fatal : {0, 1, 2, 3, 4, 5, 1000, 131077}) calls_of_capture(false, fatal);
}

}  // namespace
}  // namespace tamrix
