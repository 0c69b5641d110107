// What the models with 40 pins do otherwise: their memories, and the masks of their ports.
#include "sim/bench.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tamrix::tests {

namespace {

using texts = std::vector<std::string>;

std::vector<std::uint8_t> pattern(std::size_t length)
{
    std::vector<std::uint8_t> bytes(length);
    for (std::size_t i = 0; i < length; ++i) bytes[i] = static_cast<std::uint8_t>(i * 7 + i / 256);
    return bytes;
}

/// A bulk read of `count` bytes, carried to its end.
std::vector<std::uint8_t> read(bench& b, std::size_t count)
{
    std::vector<std::uint8_t> buffer(count + 1, 0x77);
    std::uint8_t status = 0;
    b.usb.usbbulkread(buffer.data(), static_cast<std::int32_t>(buffer.size()), &status);
    b.time->advance(std::chrono::seconds{1});
    EXPECT_EQ(status, 2);
    EXPECT_EQ(buffer.back(), 170);
    buffer.pop_back();
    return buffer;
}

TEST(small_models, have_a_memory_of_4096_bytes)
{
    for (const int model : {23, 24, 28, 29}) {
        bench b{model};
        const auto data = pattern(4096);
        b.frame({10, 0, 128, 0});
        EXPECT_EQ(b.usb.usbbulkwrite(data.data(), 4096), 0);
        b.frame({10, 0, 64, 0, 0, 0, 0, 0});
        EXPECT_EQ(read(b, 4096), data);
        EXPECT_EQ(b.notes(), texts{});
        const auto more = pattern(4097);
        b.frame({10, 0, 128, 0});
        b.usb.usbbulkwrite(more.data(), 4097);
        EXPECT_EQ(b.notes(), texts{"a bulk write beyond the memory's end"});
    }
}

/// Writes the low-voltage memory and reads it back in two blocks; true for each that came back.
std::vector<bool> low_voltage_blocks(bench& b)
{
    const auto data = pattern(57344);
    b.frame({51, 1, 128, 0});
    EXPECT_EQ(b.usb.usbbulkwrite(data.data(), 57344), 0);
    std::vector<bool> good;
    std::uint8_t left_over = 128;  // in byte 2, from the frame before
    for (const auto& [bank, begin, end] : {std::tuple{0, 0, 32768}, {1, 32768, 57344}}) {
        b.frame({51, 1, left_over, 0, 0, 0, 0, 0});
        left_over = 64;
        b.frame({10, static_cast<std::uint8_t>(bank), 64, 0, 0, 0, 0, 0});
        const auto got = read(b, static_cast<std::size_t>(end - begin));
        good.push_back(std::equal(got.begin(), got.end(), data.begin() + begin));
    }
    b.frame({10, 0, 0, 0, 0, 0, 0, 0});
    return good;
}

TEST(small_models, write_the_low_voltage_memory_by_a_frame_of_its_own)
{
    bench b{27};
    EXPECT_EQ(low_voltage_blocks(b), (std::vector{true, true}));
    EXPECT_EQ(b.notes(), texts{});
    const std::uint8_t more = 1;
    b.frame({51, 1, 64, 0});
    EXPECT_EQ(b.usb.usbbulkwrite(&more, 1), 1) << "nothing announced it";
    b.frame({51, 1});
    EXPECT_EQ(b.notes().back(), "a memory frame of 2 bytes, which needs 3");
    b.programmer.add_fault("bad ram bank 1");
    EXPECT_EQ(low_voltage_blocks(b), (std::vector{true, false}));
    bench other{40};
    other.frame({51, 1, 128, 0});
    EXPECT_EQ(other.notes(), texts{"unknown command 51"});
}

TEST(small_models, end_at_57344_bytes_of_the_low_voltage_memory)
{
    bench b{27};
    const auto data = pattern(57345);
    b.frame({51, 1, 128, 0});
    b.usb.usbbulkwrite(data.data(), 57345);
    EXPECT_EQ(b.notes(), texts{"a bulk write beyond the memory's end"});
    b.frame({10, 1, 64});
    EXPECT_EQ(read(b, 24577).back(), 255);
}

/// A frame that drives all low but for the bits that `mask` releases.
std::vector<std::uint8_t> all_low(std::uint8_t mask, std::size_t length)
{
    std::vector<std::uint8_t> bytes(length, 0);
    bytes[0] = 5;
    for (std::size_t i = 2; i <= 12; i += 2) bytes[i] = mask;
    return bytes;
}

TEST(small_models, obey_the_masks_of_longer_frames_only)
{
    bench b{23};
    b.frame(all_low(0xF0, 13));
    EXPECT_EQ(b.device.regin(2), 0);
    b.frame(all_low(0xF0, 15));
    EXPECT_EQ(b.device.regin(2), 0xF0);
    b.device.regout(0x0F, 3);
    EXPECT_EQ(b.device.regin(2), 0x0F) << "also in registers, from then on";
    b.device.regout(4, 2);
    EXPECT_EQ(b.device.regin(2), 0x0F);
    b.device.regout(0x14, 2);
    EXPECT_EQ(b.device.regin(2), 0x1F) << "a one of the data releases too";
    b.frame(all_low(0xF0, 13));
    EXPECT_EQ(b.device.regin(2), 0);
    b.frame(all_low(0xF0, 14));
    EXPECT_EQ(b.device.regin(2), 0xF0);
    b.device.hwreset();
    b.device.regout(0, 2);
    EXPECT_EQ(b.device.regin(2), 0) << "a reset ends it";
}

TEST(small_models, never_drive_high)
{
    bench b{23};
    b.device.boardsel(7);
    b.device.regout(1, 50);
    b.frame({5, 255, 0, 255, 0, 255, 0, 255, 0, 255, 0, 255, 0, 0, 0});
    EXPECT_EQ(b.device.regin(2), 0) << "the pull-down decides";
}

TEST(small_models, keep_the_byte_after_the_masks_in_a_register)
{
    bench b{23};
    auto frame = all_low(255, 15);
    frame[13] = 10;
    b.frame(frame);
    EXPECT_EQ(b.device.regin(12), 10);
    b.frame(all_low(255, 13));
    EXPECT_EQ(b.device.regin(12), 10);
}

}  // namespace
}  // namespace tamrix::tests
