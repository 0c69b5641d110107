#include "sim/bench.h"

#include <gtest/gtest.h>

namespace tamrix::tests {

namespace {

TEST(transcript, has_a_line_for_each_call_frame_and_reply)
{
    bench b{40};
    b.log->record(true);
    b.device.hwreset();
    b.device.setvcc(5000);
    b.device.vpppin(108, 1);
    b.device.delayms(1);
    b.device.regout(254, 15);
    b.frame({5, 0xFF, 0, 1, 0, 2, 0, 3, 0, 4, 0, 5, 0});
    b.device.replywait(3, 0, 0);
    b.device.regin(0);
    b.device.ctlout(7, 44);
    b.device.ctlin(44);
    b.device.boardsel2(3, 45);
    EXPECT_EQ(b.log->transcript(), "hwreset\n"
                                   "setvcc 5000\n"
                                   "vpppin 108 1\n"
                                   "delayms 1\n"
                                   "regout 254 -> 15\n"
                                   "usbcomwrite 13: 05 FF 00 01 00 02 00 03 00 04 00 05 00\n"
                                   "replywait 3 0 0\n"
                                   "-> ibuf1 FF 01 02 03 04 05\n"
                                   "regin 0: 255\n"
                                   "ctlout 7 -> 44\n"
                                   "ctlin 44: 7\n"
                                   "boardsel2 3 45\n");
}

TEST(transcript, has_scripts_blocks_and_what_goes_wrong)
{
    bench b{40};
    b.log->record(true);
    b.frame({10, 16, 64, 0, 0, 0, 0, 0});
    b.device.vecgnd(1, 1);
    b.device.vecout(1, 0);
    b.device.vecdelay(20);
    b.device.vecdelay2(10);
    b.device.vecbyte(0);
    b.device.vecstart();
    std::vector<std::uint8_t> buffer(4);
    std::uint8_t status = 0;
    b.usb.usbbulkread(buffer.data(), 4, &status);
    b.frame({10, 0, 128});
    const std::vector<std::uint8_t> block(100, 0x55);
    b.usb.usbbulkwrite(block.data(), 100);
    b.programmer.add_fault("lost reply");
    b.frame({9, 1});
    b.device.replycheck(3);
    b.programmer.add_fault("no answer");
    b.device.hwreset();
    EXPECT_EQ(b.log->transcript(), "usbcomwrite 8: 0A 10 40 00 00 00 00 00\n"
                                   "vecgnd 1 1\n"
                                   "vecout 1 -> 0\n"
                                   "vecdelay 20\n"
                                   "vecdelay2 10\n"
                                   "vecbyte 0\n"
                                   "vecstart\n"
                                   "usbbulkread 4 -> F7 00 00\n"
                                   "usbcomwrite 3: 0A 00 80\n"
                                   "usbbulkwrite 100: 55 55 55 55 55 55 55 55 55 55 55 55 55 55 55 55 .. (crc "
                                   "596E04CC)\n"
                                   "usbcomwrite 2: 09 01\n"
                                   "replycheck 3\n"
                                   "-> the reply is lost\n"
                                   "-> nothing came\n"
                                   "hwreset -> 1\n");
    b.device.hwrelease();
}

TEST(transcript, is_only_written_while_it_is_switched_on)
{
    bench b{40};
    b.device.hwinit();
    b.log->record(true);
    b.device.busmode(1);
    b.log->record(false);
    b.device.hwfault();
    EXPECT_EQ(b.log->transcript(), "busmode 1\n");
    b.log->clear_transcript();
    EXPECT_EQ(b.log->transcript(), "");
}

TEST(transcript, has_times_where_they_are_asked_for)
{
    bench b{40};
    b.log->record(true);
    b.device.delayms(20);
    b.device.delayus(10);
    b.device.boardsel(3);
    EXPECT_EQ(b.log->transcript(true), "0.000 ms  delayms 20\n20.000 ms  delayus 10\n20.010 ms  boardsel 3\n");
}

TEST(transcript, has_hazards_and_notes_where_they_came)
{
    bench b{40};
    b.log->record(true);
    b.frame({77});
    b.power(3, 3, 1);
    b.device.delayms(1);
    EXPECT_EQ(b.log->transcript(), "usbcomwrite 1: 4D\n"
                                   "note: unknown command 77\n"
                                   "setvcc 5000\n"
                                   "gndpin 3 1\n"
                                   "vccpin 3 1\n"
                                   "delayms 1\n"
                                   "hazard: contact 3: supply and ground at once\n");
    b.device.hwrelease();
}

}  // namespace
}  // namespace tamrix::tests
