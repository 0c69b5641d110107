#include "sim/faults.h"

#include "channel/bulk_read.h"
#include "sim/bench.h"

#include <gtest/gtest.h>

namespace tamrix::tests {

namespace {

std::string refusal(std::string_view text)
{
    sim::fault_set faults;
    try {
        sim::add_fault(faults, text);
    } catch (const sim::fault_error& error) {
        EXPECT_TRUE(faults.pins.empty() && faults.dead_drivers.empty() && faults.bad_banks.empty());
        EXPECT_TRUE(faults.modules.empty() && faults.missing_modules.empty());
        return error.what();
    }
    return "taken";
}

constexpr std::string_view kinds =
    "\"pin\", \"dead driver\", \"vpp driver\", \"vcc driver\", \"ground driver\", \"high driver\", \"low driver\", "
    "\"input\", \"pins\", \"pull-down\", \"test board\", \"bad register\", \"lost reply\", \"read never ends\", "
    "\"marker never comes\", \"no answer\", \"bad ram bank\", \"bank\", \"no trigger\", \"wrong reply\", \"early "
    "reply\", \"no signal at the counter\", \"generator dead\", \"module\" or \"fpga\"";

TEST(faults, a_name_that_is_wrong_is_told_with_what_can_stand_there)
{
    EXPECT_EQ(refusal("pin 3 stuck"), "fault \"pin 3 stuck\": its end where a number from 0 to 1 was expected");
    EXPECT_EQ(refusal("pin 3 stuck 2"), "fault \"pin 3 stuck 2\": \"2\" where a number from 0 to 1 was expected");
    EXPECT_EQ(refusal("pin 0 open"), "fault \"pin 0 open\": \"0\" where a number from 1 to 48 was expected");
    EXPECT_EQ(refusal("pin 49 open"), "fault \"pin 49 open\": \"49\" where a number from 1 to 48 was expected");
    EXPECT_EQ(refusal("pin 3x open"), "fault \"pin 3x open\": \"3x\" where a number from 1 to 48 was expected");
    EXPECT_EQ(refusal("pin 3 closed"), "fault \"pin 3 closed\": \"closed\" where \"open\" or \"stuck\" was expected");
    EXPECT_EQ(refusal("pin 3 open now"), "fault \"pin 3 open now\": \"now\" where the end was expected");
    EXPECT_EQ(refusal("dead driver 25"), "fault \"dead driver 25\": pin codes are 1 to 24 and 101 to 124");
    EXPECT_EQ(refusal("bad ram bank 16"), "fault \"bad ram bank 16\": \"16\" where a number from 0 to 15 was expected");
    EXPECT_EQ(refusal("lost reply 0"), "fault \"lost reply 0\": \"0\" where a number from 1 to 1000000 was expected");
    EXPECT_EQ(refusal("dead cat"), "fault \"dead cat\": \"dead\" where " + std::string{kinds} + " was expected");
    EXPECT_EQ(refusal(""), "fault \"\": its end where " + std::string{kinds} + " was expected");
    EXPECT_EQ(refusal("vcc driver 7"), "fault \"vcc driver 7\": its end where \"dead\" or \"always on\" was expected");
    EXPECT_EQ(refusal("low driver 49 dead"),
              "fault \"low driver 49 dead\": \"49\" where a number from 1 to 48 was expected");
    EXPECT_EQ(refusal("input 7 open"), "fault \"input 7 open\": \"open\" where \"stuck\" was expected");
    EXPECT_EQ(refusal("pins 7 8 bridged"), "fault \"pins 7 8 bridged\": \"8\" where \"and\" was expected");
    EXPECT_EQ(refusal("pins 7 and 8"), "fault \"pins 7 and 8\": its end where \"bridged\" was expected");
    EXPECT_EQ(refusal("pull-down 7"), "fault \"pull-down 7\": its end where \"dead\" was expected");
    EXPECT_EQ(refusal("test board"), "fault \"test board\": its end where \"missing\" or \"line\" was expected");
    EXPECT_EQ(refusal("test board line 7"), "fault \"test board line 7\": its end where \"open\" was expected");
    EXPECT_EQ(refusal("bad register 6 of board 1"),
              "fault \"bad register 6 of board 1\": \"6\" where a number from 0 to 5 was expected");
    EXPECT_EQ(refusal("bad register 1 of board 17"),
              "fault \"bad register 1 of board 17\": \"17\" where a number from 0 to 16 was expected");
    EXPECT_EQ(refusal("bad register 1 board 1"),
              "fault \"bad register 1 board 1\": \"board\" where \"of board\" was expected");
    EXPECT_EQ(
        refusal("pin 99999999999999999999 open"),
        "fault \"pin 99999999999999999999 open\": \"99999999999999999999\" where a number from 1 to 48 was expected");
}

TEST(faults, every_name_is_taken)
{
    for (const char* const text : {"pin 3 stuck 0",
                                   "pin 3 stuck 1",
                                   "pin 48 open",
                                   "dead driver 5",
                                   "dead driver 124",
                                   "lost reply",
                                   "lost reply 2",
                                   "read never ends",
                                   "read never ends 3",
                                   "marker never comes",
                                   "marker never comes 1",
                                   "no answer",
                                   "bad ram bank 0",
                                   "vpp driver 1 dead",
                                   "vcc driver 48 always on",
                                   "ground driver 7 dead",
                                   "high driver 7 always on",
                                   "low driver 7 dead",
                                   "input 7 stuck 0",
                                   "input 7 stuck 1",
                                   "pins 7 and 8 bridged",
                                   "pull-down dead",
                                   "pull-down 7 dead",
                                   "test board missing",
                                   "test board line 7 open",
                                   "bad register 0 of board 16",
                                   "  pin   3\topen ",
                                   "module 4 missing",
                                   "test board of module 1 missing",
                                   "fpga 2 does not start",
                                   "fpga 2 does not start once",
                                   "fpga 2 does not start twice",
                                   "fpga 2 does not start 4",
                                   "bad ram bank 15 of module 4",
                                   "pin 3 stuck 1 of module 1",
                                   "dead driver 5 of module 2"}) {
        EXPECT_EQ(refusal(text), "taken") << text;
    }
}

TEST(faults, a_name_of_a_module_that_is_wrong_is_told_with_what_can_stand_there)
{
    EXPECT_EQ(refusal("module 5 missing"), "fault \"module 5 missing\": \"5\" where a number from 1 to 4 was expected");
    EXPECT_EQ(refusal("module 0 missing"), "fault \"module 0 missing\": \"0\" where a number from 1 to 4 was expected");
    EXPECT_EQ(refusal("module 1"), "fault \"module 1\": its end where \"missing\" was expected");
    EXPECT_EQ(refusal("test board of module 1 gone"),
              "fault \"test board of module 1 gone\": \"gone\" where \"missing\" was expected");
    EXPECT_EQ(refusal("fpga 2 starts"), "fault \"fpga 2 starts\": \"starts\" where \"does not start\" was expected");
    EXPECT_EQ(refusal("fpga 2 does not start 0"),
              "fault \"fpga 2 does not start 0\": \"0\" where a number from 1 to 1000000 was expected");
    EXPECT_EQ(refusal("fpga 2 does not start once 1"),
              "fault \"fpga 2 does not start once 1\": \"1\" where the end was expected");
    EXPECT_EQ(refusal("pin 3 open of module 5"),
              "fault \"pin 3 open of module 5\": \"5\" where a number from 1 to 4 was expected");
    EXPECT_EQ(refusal("pin 3 of module 4"),
              "fault \"pin 3 of module 4\": its end where \"open\" or \"stuck\" was expected");
    EXPECT_EQ(refusal("of module 4"), "fault \"of module 4\": its end where " + std::string{kinds} + " was expected");
    for (const char* const of_all : {"lost reply", "read never ends", "marker never comes", "no answer",
                                     "module 1 missing", "test board of module 1 missing", "fpga 2 does not start"}) {
        const std::string text = std::string{of_all} + " of module 4", word = text.substr(0, text.find(' '));
        EXPECT_EQ(refusal(text), "fault \"" + text + "\": \"" + word +
                                     "\" where a fault of a pin, a driver or the memory was expected");
    }
}

/// What the gate of pins 1, 2 and 3 shows at these pins for inputs driven as in `inputs`, with one fault.
std::string gate(std::string_view fault, const std::string& inputs)
{
    bench b{40};
    b.programmer.insert(std::make_unique<quad_nand>());
    b.power(1, 107, 1);
    b.programmer.add_fault(fault);
    return b.run(inputs + std::string(12, 'X')).substr(0, 3);
}

TEST(faults, a_stuck_input_is_so_for_the_part_while_the_tester_sees_its_own_level)
{
    EXPECT_EQ(gate("pin 1 stuck 0", "11"), "HHH");
    EXPECT_EQ(gate("pin 1 stuck 1", "01"), "LHL");
    EXPECT_EQ(gate("pin 1 stuck 0", "X1"), "LHH");  // nobody drives: the constant shows
    EXPECT_EQ(gate("pin 1 stuck 1", "X1"), "HHL");
}

TEST(faults, a_stuck_output_shows_the_constant)
{
    EXPECT_EQ(gate("pin 3 stuck 0", "00"), "LLL");
    EXPECT_EQ(gate("pin 3 stuck 1", "11"), "HHH");
}

TEST(faults, an_open_input_reads_high_inside_and_an_open_output_high_outside)
{
    EXPECT_EQ(gate("pin 1 open", "01"), "LHL");
    EXPECT_EQ(gate("pin 3 open", "11"), "HHH");
    EXPECT_EQ(gate("pin 3 open", "00"), "LLH");
}

TEST(faults, a_supply_pin_that_is_open_or_stuck_the_wrong_way_leaves_the_part_without_supply)
{
    for (const char* const fault : {"pin 14 open", "pin 14 stuck 0", "pin 7 open", "pin 7 stuck 1"})
        EXPECT_EQ(gate(fault, "11"), "HHH") << fault;
    for (const char* const fault : {"pin 14 stuck 1", "pin 7 stuck 0"}) EXPECT_EQ(gate(fault, "11"), "HHL") << fault;
}

TEST(faults, a_stuck_pin_fights_nobody)
{
    bench b{40};
    b.programmer.insert(std::make_unique<quad_nand>());
    b.power(1, 107, 1);
    b.programmer.add_fault("pin 1 stuck 0");
    b.programmer.add_fault("pin 3 stuck 0");
    b.run("111XXXXXXXXXXX");
    b.device.delayms(10);
    EXPECT_TRUE(b.hazards().empty());
}

TEST(faults, a_dead_driver_neither_drives_nor_supplies)
{
    EXPECT_EQ(gate("dead driver 7", "01"), "HHL");  // pin 1 floats high
    EXPECT_EQ(gate("dead driver 107", "11"), "HHH");
    EXPECT_EQ(gate("dead driver 1", "11"), "HHH");
    EXPECT_EQ(gate("dead driver 20", "11"), "HHL");
}

TEST(faults, a_lost_reply_is_lost_as_often_as_told)
{
    bench b{40};
    b.programmer.add_fault("lost reply 2");
    for (const bool comes : {false, false, true, true}) {
        b.drive("0XXXXXXX");
        EXPECT_EQ(b.device.replywait(3, 0, 0), comes);
    }
}

/// Bulk reads of 64 bytes and their marker, with one fault.
struct bulk_bench : bench {
    explicit bulk_bench(std::string_view fault) : bench{40} { programmer.add_fault(fault); }
    void read_and_wait(std::chrono::seconds patience)
    {
        frame({10, 0, 64});
        usb.usbbulkread(buffer.data(), 65, &status);
        time->advance(patience);
    }

    std::vector<std::uint8_t> buffer = std::vector<std::uint8_t>(65, 0x11);
    std::uint8_t status = 0;
};

TEST(faults, a_read_that_never_ends_writes_nothing_and_the_one_after_it_ends)
{
    bulk_bench b{"read never ends 1"};
    b.read_and_wait(std::chrono::seconds{100});
    EXPECT_EQ(b.status, 0);
    EXPECT_EQ(b.buffer, std::vector<std::uint8_t>(65, 0x11));
    b.read_and_wait(std::chrono::seconds{1});
    EXPECT_EQ(b.status, 2);
    EXPECT_EQ(b.buffer[64], 170);
}

TEST(faults, a_marker_that_never_comes_leaves_its_byte_alone)
{
    bulk_bench b{"marker never comes"};
    b.read_and_wait(std::chrono::seconds{100});
    EXPECT_EQ(b.status, 2);
    EXPECT_EQ(b.buffer[63], 0xFF);
    EXPECT_EQ(b.buffer[64], 0x11);
}

TEST(faults, a_programmer_that_does_not_answer_says_so_on_every_way)
{
    bench b{40};
    b.programmer.add_fault("no answer");
    EXPECT_EQ(b.device.hwreset(), 1);
    EXPECT_EQ(b.frame({5, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}), 1);
    EXPECT_FALSE(b.device.replywait(3, 0, 0));
    EXPECT_EQ(b.device.regin(0), -1);
    EXPECT_EQ(b.device.ctlin(45), -1);
    EXPECT_EQ(b.device.ctlout(1, 45), 1);
    EXPECT_EQ(b.device.boardsel(0), 2);
    b.programmer.clear_faults();
    EXPECT_EQ(b.device.hwreset(), 0);
    EXPECT_EQ(b.device.regin(0), 255);
}

TEST(faults, a_bad_bank_differs_from_what_was_written_and_the_others_do_not)
{
    bench b{40};
    b.programmer.add_fault("bad ram bank 2");
    const std::vector<std::uint8_t> data(65536, 0xA5);
    b.frame({10, 0, 128});
    b.usb.usbbulkwrite(data.data(), 65536);
    b.usb.usbbulkwrite(data.data(), 65536);
    for (std::uint8_t bank = 0; bank < 4; ++bank) {
        std::vector<std::uint8_t> read(32769);
        std::uint8_t status = 0;
        b.frame({10, bank, 64});
        b.usb.usbbulkread(read.data(), 32769, &status);
        b.time->advance(std::chrono::seconds{1});
        EXPECT_EQ(std::equal(read.begin(), read.end() - 1, data.begin()), bank != 2) << int{bank};
        EXPECT_EQ(read.back(), hw::end_marker);
    }
}

}  // namespace
}  // namespace tamrix::tests
