// The sockets of a programmer's modules: which one a frame reaches, and when.
#include "sim/module_bench.h"
#include "sim/test_board.h"

#include <gtest/gtest.h>

#include <bit>
#include <random>

namespace tamrix::tests {

namespace {

TEST(modules, only_three_models_have_some)
{
    for (const int model : {39, 52, 54}) {
        module_bench b{model};
        EXPECT_TRUE(b.pins(4, 0x5A, 0)) << model;
        EXPECT_TRUE(b.all_ports(0x5A));
        b.reset(4);
        EXPECT_FALSE(b.pins(4, 0x5A, 0)) << model;
        EXPECT_TRUE(b.notes().empty());
    }
    for (const int model : {9, 40, 50, 57}) {
        module_bench b{model};
        b.reset(4);
        b.start(4);
        b.frame({6, 1, 54, 6, 80, 1, 0, 0, 4});
        b.frame({92, 0, 1, 0, 0});
        EXPECT_EQ(b.notes(), (std::vector<std::string>{"unknown command 4", "unknown command 236", "unknown command 6",
                                                       "unknown command 92"}));
        EXPECT_TRUE(b.pins(9, 0x5A, 0)) << "the byte for a module is not looked at";
        EXPECT_EQ(b.device.regin(0), 0x5A);
        EXPECT_TRUE((b.device.regout(0, 0), b.device.replywait(22, 91, 5)));
        EXPECT_THROW(b.programmer.insert(nullptr, 1), std::invalid_argument);
    }
}

TEST(modules, have_a_socket_each_that_a_pin_frame_reaches_by_its_last_byte)
{
    module_bench b;
    for (std::uint8_t slot = 1; slot <= 4; ++slot) EXPECT_TRUE(b.pins(slot, static_cast<std::uint8_t>(0x10 + slot), 0));
    b.frame({5, 0x10, 0, 0x10, 0, 0x10, 0, 0x10, 0, 0x10, 0, 0x10, 0});
    for (std::uint8_t slot = 0; slot <= 4; ++slot) {
        b.pins(slot, 0xFF, 0xFF);
        EXPECT_TRUE(b.all_ports(slot == 0 ? 255 : 0)) << "released";
    }
}

TEST(modules, have_a_part_in_the_socket_where_it_was_put)
{
    module_bench b;
    b.programmer.insert(std::make_unique<sim::test_board>(sim::wiring{52}), 3);
    for (const std::uint8_t slot : {2, 3}) {
        // The left half is driven high, the right half released.
        ASSERT_TRUE(b.pins(slot, 255, 0xF0));
        EXPECT_TRUE(b.all_ports(slot == 3 ? 255 : 0x0F)) << int{slot};
    }
    EXPECT_THROW(b.programmer.insert(nullptr, 5), std::invalid_argument);
    EXPECT_THROW(b.programmer.insert(nullptr, -1), std::invalid_argument);
    EXPECT_THROW(b.programmer.insert(std::make_unique<inverter>(50), 3), std::invalid_argument);
    b.programmer.insert(nullptr, 3);
    b.pins(3, 255, 0xF0);
    EXPECT_TRUE(b.all_ports(0x0F));
}

TEST(modules, get_registers_and_drivers_after_a_frame_that_names_one)
{
    module_bench b;
    const auto drives_module_2 = [&] {
        b.device.regout(0, 1);
        b.device.regout(0x5A, 0);
        const bool there = b.device.replywait(3, 0, 0) && b.ibuf1[0] == 0x5A && b.device.regin(0) == 0x5A;
        b.pins(2, 255, 255);
        return there && b.ibuf1[0] == 0;
    };
    b.start(2);
    EXPECT_TRUE(drives_module_2());
    b.bulk(0, 64, 1, 170, 2);
    EXPECT_TRUE(drives_module_2());
    b.frame({6, 1, 54, 6, 80, 1, 0, 0, 2});
    EXPECT_TRUE(drives_module_2());
    // These name nobody.
    b.bulk(0, 64, 1, 0, 3);
    b.frame({9, 1, 0, 0, 0, 0, 0, 0, 3});
    EXPECT_TRUE(drives_module_2());
    b.device.regout(0, 1);
    b.device.regout(0x5A, 0);
    for (const std::uint8_t other : {1, 3, 4}) {
        b.pins(other, 255, 255);
        EXPECT_TRUE(b.all_ports(0)) << int{other};
    }
    b.pins(0, 255, 255);
    EXPECT_TRUE(b.all_ports(255)) << "the unit's own";
}

TEST(modules, have_supplies_of_their_own)
{
    module_bench b;
    b.programmer.insert(std::make_unique<inverter>(16), 2);
    b.pins(2, 255, 255);
    b.power(1, 108, 1);
    EXPECT_TRUE(b.programmer.part_has_power(2));
    EXPECT_FALSE(b.programmer.part_has_power(1));
    EXPECT_FALSE(b.programmer.part_has_power());
    b.pins(0, 255, 255);
    b.power(1, 108, 0);
    EXPECT_TRUE(b.programmer.part_has_power(2)) << "the unit was switched, not the module";
    b.device.setvpp(12000, 0);
    b.programmer.check_idle();
    EXPECT_EQ(b.hazards(), (std::vector<std::string>{"VPP generator 0 left at 12000 mV",
                                                     "module 2: ground driver left on at contact 1",
                                                     "module 2: VCC driver left on at contact 108"}));
    b.device.hwreset();
    EXPECT_FALSE(b.programmer.part_has_power(2));
    b.programmer.check_idle();
    EXPECT_EQ(b.hazards().size(), 3u);
}

TEST(modules, report_a_conflict_as_their_own)
{
    module_bench b;
    b.pins(4, 0, 0);
    b.device.setvcc(5000);
    b.device.vccpin(101, 1);
    b.device.delayms(1);
    EXPECT_EQ(b.hazards(),
              std::vector<std::string>{"module 4: contact 101: supply on a pin that the programmer drives low"});
    b.device.hwreset();
}

TEST(modules, that_were_reset_release_all_and_answer_nothing_until_they_are_started)
{
    module_bench b;
    b.pins(3, 255, 0);
    b.device.gndpin(5, 1);
    b.reset(3);
    EXPECT_FALSE(b.pins(3, 0, 0));
    EXPECT_TRUE(b.pins(2, 0, 0)) << "the others go on";
    b.start(3);
    EXPECT_EQ(b.inputs(3, 0), 0);
    b.programmer.check_idle();
    EXPECT_TRUE(b.hazards().empty());
    b.frame({4, 0, 3});
    b.frame({4});
    EXPECT_TRUE(b.pins(3, 0, 0)) << "a reset has its mark";
    EXPECT_EQ(b.notes(), (std::vector<std::string>(2, "unknown command 4")));
}

TEST(modules, signal_what_the_host_sends)
{
    module_bench b;
    b.log->record(true);
    b.frame({6, 2, 54, 1, 250, 1, 0, 0, 3});
    EXPECT_EQ(b.log->transcript(), "usbcomwrite 9: 06 02 36 01 FA 01 00 00 03\n-> module 3 signals 2 1 250\n");
    b.frame({6, 2, 54, 1, 250, 1, 0, 0});
    EXPECT_EQ(b.notes(), std::vector<std::string>{"unknown command 6"});
}

TEST(modules, that_do_not_exist_answer_nothing)
{
    module_bench b;
    for (const std::uint8_t slot : {5, 170, 255}) {
        EXPECT_FALSE(b.pins(slot, 0, 0)) << int{slot};
        EXPECT_EQ(b.device.regin(0), 255);
        b.device.regout(0, 1);
        EXPECT_FALSE(b.device.replywait(3, 0, 0));
        b.device.gndpin(1, 1);
    }
    EXPECT_EQ(b.notes(),
              (std::vector<std::string>{"there is no module 5", "there is no module 170", "there is no module 255"}));
    EXPECT_TRUE(b.pins(0, 255, 255));
    EXPECT_TRUE(b.all_ports(255)) << "the unit did not get it either";
}

TEST(modules, are_as_after_switching_on_after_a_reset_of_the_hardware)
{
    module_bench b;
    const bytes data(65536, 0x3C);
    b.open_passage(2, 4);
    b.write(data);
    b.reset(1);
    b.pins(2, 255, 0);
    b.open_passage(3, 0);
    b.device.hwreset();
    b.device.gndpin(1, 1);
    b.programmer.check_idle();
    EXPECT_EQ(b.hazards(), std::vector<std::string>{"ground driver left on at contact 1"}) << "the unit is named again";
    b.device.gndpin(1, 0);
    EXPECT_EQ(b.inputs(1, 0), 0);
    EXPECT_EQ(b.inputs(2, 0), 0);
    EXPECT_EQ(b.fetch(2, 5), bytes(32768, 0x3C)) << "memories keep their bytes";
    b.bulk(0, 128, 1, 0, 0);
    b.device.hwreset();
    EXPECT_EQ(b.write(data), 1) << "no transfer is left";
}

TEST(module_faults, a_missing_module_answers_nothing_and_the_others_do)
{
    module_bench b;
    b.pins(3, 255, 0);
    b.device.gndpin(1, 1);
    b.programmer.add_fault("module 3 missing");
    for (int pass = 0; pass < 2; ++pass) {
        for (std::uint8_t slot = 1; slot <= 4; ++slot) EXPECT_EQ(b.pins(slot, 255, 255), slot != 3) << int{slot};
        b.pins(3, 0, 0);
        EXPECT_EQ(b.device.regin(0), 255);
        EXPECT_FALSE((b.device.ctlout(129, 137), b.device.replywait(3, 0, 0)));
        EXPECT_FALSE(b.load_image(3, 100));
        b.reset(3);
        b.start(3);
    }
    b.programmer.check_idle();
    EXPECT_TRUE(b.hazards().empty()) << "what is not there is not on";
    b.programmer.clear_faults();
    EXPECT_EQ(b.inputs(3, 0), 0);
}

TEST(module_faults, a_missing_board_leaves_one_module_with_an_empty_socket)
{
    module_bench b;
    for (int slot = 1; slot <= 4; ++slot) b.programmer.insert(std::make_unique<sim::test_board>(sim::wiring{52}), slot);
    b.programmer.add_fault("test board of module 2 missing");
    const auto joined = [&](std::uint8_t slot) { return b.pins(slot, 255, 0xF0) && b.all_ports(255); };
    for (std::uint8_t slot = 1; slot <= 4; ++slot) EXPECT_EQ(joined(slot), slot != 2) << int{slot};
    b.programmer.insert(std::make_unique<sim::test_board>(sim::wiring{52}), 2);
    EXPECT_FALSE(joined(2)) << "missing as long as the fault is there";
    b.programmer.add_fault("bad ram bank 1");
    EXPECT_FALSE(joined(2));
    b.programmer.clear_faults();
    EXPECT_TRUE(joined(2));
}

TEST(module_faults, a_fault_at_a_pin_or_driver_is_that_of_one_module)
{
    module_bench b;
    for (int slot = 0; slot <= 4; ++slot) b.programmer.insert(std::make_unique<sim::test_board>(sim::wiring{52}), slot);
    b.programmer.add_fault("dead driver 1 of module 2");
    b.programmer.add_fault("pin 1 open of module 3");
    const auto missing = [&](std::uint8_t slot) {
        b.pins(slot, 255, 0xF0);
        int low = 0;
        for (std::size_t port = 0; port < 6; ++port) low += std::popcount(static_cast<unsigned>(255 - b.ibuf1[port]));
        return low;
    };
    EXPECT_EQ(missing(0), 0);
    EXPECT_EQ(missing(1), 0);
    EXPECT_EQ(missing(2), 2) << "nobody drives the line and its partner";
    EXPECT_EQ(missing(3), 1) << "the partner";
    EXPECT_EQ(missing(4), 0);
    b.programmer.clear_faults();
    EXPECT_EQ(missing(2) + missing(3), 0);
}

TEST(modules, survive_random_frames)
{
    std::mt19937 random{5};
    module_bench b;
    for (int round = 0; round < 20000; ++round) {
        bytes sent(1 + random() % 16);
        for (auto& byte : sent) byte = static_cast<std::uint8_t>(random() % 3 != 0 ? random() % 5 : random());
        const std::uint8_t commands[] = {4, 5, 6, 10, 92, 236}, marks[] = {0, 64, 128, 170};
        sent[0] = commands[random() % 6];
        if (sent.size() > 1 && random() % 2 != 0) sent[1] = sent[0] == 10 ? 16 : sent[0] == 92 ? 0 : 170;
        if (sent.size() > 2 && sent[0] == 10) sent[2] = marks[random() % 4];
        if (sent.size() > 4 && sent[0] == 10) sent[4] = marks[random() % 4];
        ASSERT_EQ(b.frame(sent), 0);
        if (random() % 4 == 0) b.write(bytes(random() % 300));
        if (random() % 8 == 0) b.device.replywait(22, static_cast<std::uint8_t>(91 + random() % 3), 5);
        if (random() % 8 == 0) b.device.regout(static_cast<int>(random() % 2), random() % 2 != 0 ? 51 : 55);
    }
    b.device.hwreset();
    for (std::uint8_t slot = 1; slot <= 4; ++slot) EXPECT_EQ(b.inputs(slot, 0), 0);
    EXPECT_TRUE(b.bad_blocks(1, random_memory(1)).empty());
}

}  // namespace
}  // namespace tamrix::tests
