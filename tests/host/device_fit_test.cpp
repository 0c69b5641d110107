#include "host/device_fit.h"

#include <vector>

#include <gtest/gtest.h>

namespace tamrix::host {
namespace {

using fit_bytes = std::vector<std::uint8_t>;

file_report with_bytes(std::initializer_list<std::pair<std::uint64_t, fit_bytes>> segments)
{
    file_report report{.path = "a.hex", .format = "intel"};
    for (const auto& [address, content] : segments) report.image.take(address, content);
    return report;
}

}  // namespace

TEST(device_fit, a_file_inside_the_device_leaves_nothing_to_load)
{
    const file_report report = with_bytes({{1, {5, 6}}});
    const device_fit fit = fit_of(report, 0, fit_bytes{0xFF, 5, 6, 0xFF});
    EXPECT_EQ(fit.line, "  taken: 2 bytes");
    EXPECT_EQ(fit.outside, 0u);
    EXPECT_FALSE(fit.next);
}

TEST(device_fit, bytes_elsewhere_are_outside_with_the_address_that_takes_them)
{
    const file_report report = with_bytes({{0x8000000, {1, 2, 3}}});
    const device_fit fit = fit_of(report, 0, fit_bytes(4, 0xFF));
    EXPECT_EQ(fit.line, "  taken: 0 bytes; outside the device: 3 bytes, from 0x8000000 on");
    EXPECT_EQ(fit.outside, 3u);
    EXPECT_EQ(fit.next, 0x8000000u);
}

TEST(device_fit, a_segment_that_is_longer_than_the_device_goes_on_at_its_end)
{
    const device_fit fit = fit_of(with_bytes({{0, {1, 2, 3, 4, 5}}}), 0, fit_bytes{1, 2, 3, 4});
    EXPECT_EQ(fit.line, "  taken: 4 bytes; outside the device: 1 byte, from 0x4 on");
    EXPECT_EQ(fit.next, 4u);
}

TEST(device_fit, after_the_last_segment_the_first_one_is_next)
{
    const file_report report = with_bytes({{0x10, {1}}, {0x100, {2}}});
    EXPECT_EQ(fit_of(report, 0x10, fit_bytes{1, 0, 0, 0}).next, 0x100u);
    EXPECT_EQ(fit_of(report, 0x100, fit_bytes{2, 0, 0, 0}).next, 0x10u);
}

TEST(device_fit, a_load_to_other_places_claims_nothing_about_each_byte)
{
    const device_fit fit = fit_of(with_bytes({{0, {1, 2}}}), 0, fit_bytes{0xFF, 1, 2, 0xFF});
    EXPECT_EQ(fit.line, "  in the range of the device: 2 bytes, in the order that the load asked for");
}

TEST(device_fit, a_format_with_an_order_of_its_own_is_left_to_its_reader)
{
    file_report report = with_bytes({{0, {1, 2, 3}}});
    report.format = "texas";
    const device_fit fit = fit_of(report, 0, fit_bytes{1, 2});
    EXPECT_EQ(fit.line, "  in the range of the device: 2 bytes, in the order that the load asked for; outside the "
                        "device: 1 byte, from 0x2 on");
    EXPECT_FALSE(fit.next);
}

TEST(device_fit, bytes_from_an_address_on_go_to_the_start_of_the_buffer)
{
    const file_report report = with_bytes({{0x0F, {9}}, {0x10, {1, 2}}, {0x13, {4, 5}}});
    fit_bytes buffer(4, 0xEE);
    place(report.image, 0x10, buffer);
    EXPECT_EQ(buffer, (fit_bytes{1, 2, 0xEE, 4}));
}

TEST(device_fit, fuses_that_the_device_has_not_are_outside)
{
    file_report report;
    report.fuses = 8;
    EXPECT_EQ(fuses_outside_text(report, 8), "");
    EXPECT_EQ(fuses_outside_text(report, 5), "  outside the device, which has 5 fuses: 3");
}

}  // namespace tamrix::host
