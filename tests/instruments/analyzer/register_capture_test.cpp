// A capture by registers, which polls the port.
#include "bare_capture.h"

#include <gtest/gtest.h>

namespace tamrix {
namespace {

using tests::bare_capture;
using tests::instrument_bench;

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

}  // namespace
}  // namespace tamrix
