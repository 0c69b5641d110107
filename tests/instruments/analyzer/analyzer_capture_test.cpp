// A capture on both routes: its frames, its samples, its failures. The orders of calls are in the transcripts.
#include "instruments/analyzer/analyzer_capture.h"

#include "instrument_bench.h"

#include <gtest/gtest.h>

#include <utility>

namespace tamrix {
namespace {

using tests::bank_end;
using tests::instrument_bench;
using tests::lines;
using tests::sample_of;

/// A capture without a window.
struct bare_capture : instrument_bench, capture_display {
    using instrument_bench::instrument_bench;

    analyzer_settings settings;
    analyzer_capture capture{session, settings, *this};
    bool gone = false;

    void clear() override { transcript.emplace_back("clear"); }
    void show_status(int panel, const std::string& words) override
    {
        transcript.push_back("status" + std::to_string(panel) + " " + words);
    }
    void enable_record(bool on) override { transcript.push_back(on ? "record on" : "record off"); }
    void enable_stop(bool on) override { transcript.push_back(on ? "stop on" : "stop off"); }
    void limit(int milliseconds) override { transcript.push_back("limit " + std::to_string(milliseconds)); }
    void draw() override { transcript.emplace_back("draw"); }
    bool closed() const override { return gone; }

    /// What is shown at last in the first panel.
    std::string last_status() const
    {
        for (auto line = transcript.rbegin(); line != transcript.rend(); ++line)
            if (line->starts_with("status1 ")) return line->substr(8);
        return "";
    }
};

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

TEST(a_capture_by_registers, reads_one_sample_more_than_its_period_counts)
{
    bare_capture b{1, false};
    b.hardware.regin = [&](std::int64_t k) {
        b.shell.advance(1.0 / 262144);
        return static_cast<std::int32_t>(k * 3 & 0xFF);
    };
    b.capture.record();
    EXPECT_EQ(b.count("regin 0"), 131073);
    EXPECT_EQ(b.buffer(131072), 131072 * 3 % 256);
    EXPECT_EQ(b.buffer(131073), instrument_bench::untouched);
    EXPECT_TRUE(b.has("status2 Rec.Time:0.5000038"));
    EXPECT_FLOAT_EQ(static_cast<float>(b.settings.sampleus), 0.5000038F * 1000000 / 131072);
    EXPECT_EQ(b.count("hwreset"), 1) << "no reset at the end of this route";
}

TEST(a_capture_by_registers, does_not_look_at_level_and_pin_of_the_in_trigger)
{
    bare_capture b{1, false};
    b.settings.triglevel = -1;
    b.settings.trigpin = 7;
    b.hardware.regin = [](std::int64_t) { return 0; };
    b.capture.record();
    EXPECT_EQ(b.count("status1 Status:Search"), 0);
    EXPECT_EQ(b.count("regin"), 131073);
}

TEST(a_trigger_of_registers, is_a_level_of_its_pin)
{
    struct line {
        std::int16_t triglevel;
        std::uint8_t trigpin;
        int first_read;  // after which the record begins, of the reads 0x01, 0x80, 0x00, 0x7F
    };
    const line table[] = {{-1, 0, 1}, {-1, 7, 2}, {0, 0, 2}, {0, 7, 1}, {-1, 6, 4}};
    for (const auto& [triglevel, trigpin, first_read] : table) {
        bare_capture b{1, false};
        b.settings.trigmode = -1;
        b.settings.triglevel = triglevel;
        b.settings.trigpin = trigpin;
        b.hardware.regin = [](std::int64_t k) {
            constexpr std::int32_t pins[] = {0x01, 0x80, 0x00, 0x7F};
            return pins[k % 4];
        };
        b.capture.record();
        EXPECT_EQ(b.count("status1 Status:Search Trigger Signeal...."), first_read) << int{trigpin};
        EXPECT_EQ(b.count("regin"), 131073 + first_read);
    }
}

TEST(stop, in_the_search_of_a_trigger_leaves_both_buttons_off)
{
    bare_capture b{1, false};
    b.settings.trigmode = b.settings.triglevel = -1;
    b.hardware.regin = [](std::int64_t) { return 0; };
    b.at_pump = [&] { b.capture.stop(); };
    b.capture.record();
    EXPECT_EQ(b.count("regin"), 131073) << "the person has a turn only so often";
    EXPECT_EQ(b.last_status(), "Status:Search Trigger Signeal....");
    EXPECT_EQ(b.count("record on") + b.count("stop off"), 0);
    EXPECT_TRUE(b.buffer_untouched());
}

TEST(a_read_that_fails, ends_the_record_and_its_error_is_replaced_at_once)
{
    bare_capture b{1, false};
    b.hardware.regin = [](std::int64_t k) { return k == 1000 ? -1 : 0x42; };
    b.capture.record();
    EXPECT_EQ(b.count("regin"), 1001);
    EXPECT_EQ(b.buffer(999), 0x42);
    EXPECT_EQ(b.buffer(1000), instrument_bench::untouched);
    const auto error = std::ranges::find(b.transcript, "status1 Status:Record Error!");
    ASSERT_NE(error, b.transcript.end());
    EXPECT_EQ(*(error - 1), "hwrelease");
    EXPECT_EQ(b.last_status(), "Status:Record OK!");
    EXPECT_EQ(b.count("draw"), 1);
}

TEST(a_sample_outside_the_buffer, is_read_and_dropped)
{
    bare_capture b{1, false, 0, 0x1000};
    b.hardware.regin = [](std::int64_t) { return 0x42; };
    b.capture.record();
    EXPECT_EQ(b.count("regin"), 131073);
    EXPECT_EQ(b.session.blocks.ibuffer.span().back(), 0x42);
    EXPECT_EQ(b.last_status(), "Status:Record OK!");
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
