#include "sim/bench.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <random>

namespace tamrix::tests {

namespace {

/// A read into memory of exactly its length, carried to its end.
std::vector<std::uint8_t> read(bench& b, std::int32_t length)
{
    std::vector<std::uint8_t> buffer(static_cast<std::size_t>(length), 0x77);
    std::uint8_t status = 0;
    b.usb.usbbulkread(buffer.data(), length, &status);
    b.time->advance(std::chrono::seconds{8});
    EXPECT_EQ(status, 2);
    return buffer;
}

TEST(frames, a_pin_frame_is_answered_with_the_pins_when_somebody_waits)
{
    bench b{40};
    b.frame({5, 0xF0, 0, 0x0F, 0, 1, 0, 2, 0, 3, 0, 4, 0});
    EXPECT_EQ(b.ibuf1[0], 0);
    EXPECT_TRUE(b.device.replywait(3, 0, 0));
    EXPECT_EQ((std::vector<std::uint8_t>{b.ibuf1.begin(), b.ibuf1.begin() + 7}),
              (std::vector<std::uint8_t>{0xF0, 0x0F, 1, 2, 3, 4, 0}));
    EXPECT_FALSE(b.device.replywait(3, 0, 0)) << "one frame has one reply";
}

TEST(frames, a_reply_comes_in_during_a_plain_wait_too)
{
    bench b{40};
    b.frame({5, 0x12, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0});
    b.device.delayms(1);
    EXPECT_EQ(b.ibuf1[0], 0x12);
    EXPECT_TRUE(b.device.replywait(3, 0, 0));
}

TEST(frames, only_a_reply_that_comes_in_unasked_sets_the_flag_of_pipe_0)
{
    bench b{40};
    const std::vector<std::uint8_t> ask_for_pins{5, 0x12, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0};
    b.frame(ask_for_pins);
    EXPECT_TRUE(b.device.replywait(3, 0, 0));
    b.frame({9, 0});
    b.device.replycheck(3);
    b.device.regout(1, 0);
    b.device.delayms(1);
    EXPECT_EQ(b.usbpip0readresult, 0) << "nothing has come in by itself";
    b.programmer.add_fault("lost reply");
    b.frame(ask_for_pins);
    b.device.delayms(1);
    EXPECT_EQ(b.usbpip0readresult, 0) << "the reply is lost";
    b.frame(ask_for_pins);
    b.device.delayms(1);
    EXPECT_EQ(b.usbpip0readresult, -1);
}

TEST(frames, the_upper_bytes_of_a_divider_come_from_the_command_frame)
{
    bench b{40};
    b.log->record(true);
    b.ubuf1[2] = 2;
    b.ubuf1[3] = 1;
    b.device.ctlout(259, 140);
    b.device.ctlout(5, 141);
    EXPECT_EQ(b.log->transcript(), "ctlout 259 -> 140\n-> divider 66051\nctlout 5 -> 141\n");
}

TEST(frames, register_writes_are_answered_like_frames_for_who_waits)
{
    bench b{40};
    b.device.regout(0x5A, 0);
    b.device.regout(0, 1);
    b.device.delayms(1);
    EXPECT_EQ(b.ibuf1[0], 0) << "nobody asked";
    EXPECT_TRUE(b.device.replywait(3, 0, 0));
    EXPECT_EQ(b.ibuf1[0], 0x5A);
    b.device.ctlout(135, 130);
    EXPECT_TRUE(b.device.replywait(3, 0, 0));
}

TEST(frames, registers_beside_the_ports_keep_their_value)
{
    bench b{40};
    b.device.regout(254, 15);
    b.device.regout(0x1FF, 50);
    b.device.ctlout(0x142, 44);
    EXPECT_EQ(b.device.regin(15), 254);
    EXPECT_EQ(b.device.regin(50), 255);
    EXPECT_EQ(b.device.regin(1), 255);
    EXPECT_EQ(b.device.ctlin(44), 0x42);
    b.device.hwreset();
    EXPECT_EQ(b.device.regin(15), 0);
    EXPECT_EQ(b.device.ctlin(44), 0);
}

TEST(frames, on_40_contacts_the_data_byte_alone_decides)
{
    bench b{23};
    b.frame({5, 0xFE, 0xFF, 0xFF, 0, 0xFF, 0, 0xFF, 0, 0xFF, 0, 0xFF, 0});
    EXPECT_TRUE(b.device.replywait(3, 0, 0));
    EXPECT_EQ(b.ibuf1[0], 0xFE);
    EXPECT_EQ(b.ibuf1[1], 0xFF);
    EXPECT_EQ(b.ibuf1[5], 0xFF);
}

TEST(frames, a_short_or_unknown_frame_is_sent_and_does_nothing)
{
    bench b{40};
    for (const std::size_t length : {1u, 2u, 12u}) {
        // In memory of exactly that length, so that a byte read beyond is seen.
        std::vector<std::uint8_t> bytes(length, 5);
        EXPECT_EQ(b.frame(bytes), 0);
        EXPECT_FALSE(b.device.replywait(3, 0, 0));
    }
    EXPECT_EQ(b.frame({10}), 0);
    EXPECT_EQ(b.frame({10, 1}), 0);
    EXPECT_EQ(b.frame({9}), 0);
    EXPECT_EQ(b.frame({200, 1, 2}), 0);
    EXPECT_EQ(b.frame({10, 0, 3}), 0);
    EXPECT_EQ(b.notes(), (std::vector<std::string>{
                             "a pin frame of 1 bytes, which needs 13", "a pin frame of 2 bytes, which needs 13",
                             "a pin frame of 12 bytes, which needs 13", "a bulk frame of 1 bytes, which needs 3",
                             "a bulk frame of 2 bytes, which needs 3", "a memory frame of 1 bytes, which needs 2",
                             "unknown command 200", "unknown bulk direction 3"}));
    EXPECT_EQ(b.device.regin(0), 255);
}

TEST(frames, calls_without_bytes_fail)
{
    bench b{40};
    std::uint8_t byte = 5;
    EXPECT_EQ(b.usb.usbcomwrite(&byte, 0), 1);
    EXPECT_EQ(b.usb.usbcomwrite(&byte, -1), 1);
    EXPECT_EQ(b.usb.usbcomwrite(nullptr, 13), 1);
    EXPECT_EQ(b.usb.usbbulkwrite(&byte, 0), 1);
    EXPECT_EQ(b.usb.usbbulkwrite(nullptr, 10), 1);
    EXPECT_EQ(b.usb.usbbulkwrite(&byte, 1), 1) << "no frame announced it";
    EXPECT_EQ(b.usb.usbbulkread(nullptr, 65, &byte), 1);
    EXPECT_EQ(b.usb.usbbulkread(&byte, 0, &byte), 1);
    EXPECT_EQ(b.usb.usbbulkread(&byte, 1, nullptr), 1);
    b.time->advance(std::chrono::seconds{10});
    EXPECT_EQ(byte, 5);
}

/// Memory, replies and the gates in the socket do what they do in a new programmer.
void expect_sound(bench& b)
{
    const std::vector<std::uint8_t> data{1, 2, 3, 4};
    b.frame({10, 0, 128});
    EXPECT_EQ(b.usb.usbbulkwrite(data.data(), 4), 0);
    b.frame({10, 0, 64});
    EXPECT_EQ(read(b, 5), (std::vector<std::uint8_t>{1, 2, 3, 4, 170}));
    b.frame({10, 0, 0});
    b.power(1, 107, 1);
    //                 1A 1B 1Y 2A 2B 2Y GND 3Y 3A 3B 4Y 4A 4B VCC
    EXPECT_EQ(b.run("11X10XGX01X00V"), "HHLHLHLHLHHLLH");
    EXPECT_EQ(b.run("01X11XGX11X11V"), "LHHHHLLLHHLHHH");
    b.power(1, 107, 0);
}

TEST(frames, random_frames_break_nothing)
{
    std::mt19937 random{11};
    for (const int model : {40, 23}) {
        bench b{model};
        b.programmer.insert(std::make_unique<quad_nand>());
        for (int round = 0; round < 20000; ++round) {
            std::vector<std::uint8_t> bytes(1 + random() % 16);
            for (auto& byte : bytes) byte = static_cast<std::uint8_t>(random());
            if (random() % 2 != 0) bytes[0] = static_cast<std::uint8_t>(random() % 2 != 0 ? 10 : 5);
            ASSERT_EQ(b.frame(bytes), 0);
            if (random() % 8 != 0) continue;
            std::vector<std::uint8_t> block(1 + random() % 300);
            std::uint8_t status = 0;
            b.usb.usbbulkwrite(block.data(), static_cast<std::int32_t>(block.size()));
            b.usb.usbbulkread(block.data(), static_cast<std::int32_t>(block.size()), &status);
            b.time->advance(std::chrono::milliseconds{random() % 3});
            b.frame({10, 0, 0});  // the block goes away, so the read has to end
        }
        expect_sound(b);
    }
}

TEST(memory, blocks_come_back_as_they_were_written)
{
    struct {
        int model;
        std::int32_t block;
        int blocks, banks;
    } const cases[] = {{9, 32768, 4, 4}, {40, 65536, 8, 16}};
    for (const auto& one : cases) {
        bench b{one.model};
        std::mt19937 random{3};
        std::vector<std::uint8_t> data(static_cast<std::size_t>(one.block * one.blocks));
        for (auto& byte : data) byte = static_cast<std::uint8_t>(random());
        b.frame({10, 0, 128, 1});
        for (int block = 0; block < one.blocks; ++block)
            EXPECT_EQ(b.usb.usbbulkwrite(data.data() + block * one.block, one.block), 0);
        for (int bank = 0; bank < one.banks; ++bank) {
            b.frame({10, static_cast<std::uint8_t>(bank), 64});
            const auto got = read(b, 32769);
            EXPECT_EQ(std::memcmp(got.data(), data.data() + bank * 32768, 32768), 0) << bank;
            EXPECT_EQ(got.back(), 170);
        }
        b.frame({10, 0, 0});
        EXPECT_TRUE(b.notes().empty());
    }
}

TEST(memory, writes_beyond_its_end_are_dropped_and_reads_there_give_ff)
{
    bench b{9, 1};
    const std::vector<std::uint8_t> data(32768, 0x33);
    b.frame({10, 0, 128});
    EXPECT_EQ(b.usb.usbbulkwrite(data.data(), 32768), 0);
    EXPECT_EQ(b.usb.usbbulkwrite(data.data(), 32768), 0);
    b.frame({10, 1, 64});
    EXPECT_EQ(read(b, 5), (std::vector<std::uint8_t>{255, 255, 255, 255, 170}));
    b.frame({10, 255, 64});
    EXPECT_EQ(read(b, 2), (std::vector<std::uint8_t>{255, 170}));
    b.frame({10, 0, 64});
    EXPECT_EQ(read(b, 4), (std::vector<std::uint8_t>{0x33, 0x33, 0x33, 170}));
    EXPECT_EQ(b.notes(), (std::vector<std::string>{"a bulk write beyond the memory's end", "there is no memory bank 1",
                                                   "there is no memory bank 255"}));
}

TEST(memory, the_question_for_the_larger_memory_is_answered_by_its_size)
{
    for (const int banks : {1, 16}) {
        bench b{40, banks};
        b.frame({9, 1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0});
        b.ibuf1[0] = 99;
        b.device.replycheck(3);
        EXPECT_EQ(b.ibuf1[0], banks == 16 ? 1 : 0);
        b.frame({9, 0});
        b.ibuf1[0] = 99;
        b.device.replycheck(3);
        EXPECT_EQ(b.ibuf1[0], 0);
    }
}

TEST(bulk_read, arrives_after_its_time_data_before_status_before_marker)
{
    bench b{40};
    std::vector<std::uint8_t> buffer(32769, 0);
    std::uint8_t status = 0;
    b.frame({10, 0, 64});
    b.usb.usbbulkread(buffer.data(), 32769, &status);
    bool seen_data_without_marker = false;
    for (int step = 0; step < 2000 && buffer.back() != 170; ++step) {
        EXPECT_EQ(status == 2, buffer[0] == 0xFF);
        seen_data_without_marker = seen_data_without_marker || status == 2;
        b.time->advance(std::chrono::microseconds{100});
    }
    EXPECT_EQ(buffer.back(), 170);
    EXPECT_TRUE(seen_data_without_marker);
    EXPECT_GT(b.time->now(), std::chrono::milliseconds{30});
}

TEST(bulk_read, nothing_is_written_any_more_once_the_programmer_is_gone)
{
    for (const bool gone : {false, true}) {
        auto time = std::make_shared<sim::virtual_clock>();
        auto programmer = std::make_unique<sim::programmer>(sim::setup{.time = time});
        std::vector<std::uint8_t> buffer(65, 0x77);
        std::uint8_t status = 0x77;
        const std::uint8_t frame[] = {10, 0, 64};
        programmer->transport().usbcomwrite(frame, 3);
        programmer->transport().usbbulkread(buffer.data(), 65, &status);
        if (gone) programmer.reset();
        time->advance(std::chrono::seconds{10});
        EXPECT_EQ(status, gone ? 0x77 : 2);
        EXPECT_EQ(std::ranges::count(buffer, 0x77), gone ? 65 : 0);
    }
}

}  // namespace
}  // namespace tamrix::tests
