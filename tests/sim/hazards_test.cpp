#include "sim/bench.h"

#include <gtest/gtest.h>

namespace tamrix::tests {

namespace {

using texts = std::vector<std::string>;

struct gates_on_the_bench : bench {
    gates_on_the_bench()
    {
        programmer.insert(std::make_unique<quad_nand>());
        power(1, 107, 1);
    }
};

TEST(hazards, two_drivers_that_fight_are_told_once_until_it_ends)
{
    gates_on_the_bench b;
    b.drive("000XXXXXXXXXXX");
    b.device.delayms(5);
    EXPECT_EQ(b.hazards(), texts{"pin 3 (contact 5): the programmer drives low, the part high"});
    b.drive("00XXXXXXXXXXXX");
    EXPECT_EQ(b.hazards().size(), 1u);
    b.drive("111XXXXXXXXXXX");
    EXPECT_EQ(b.hazards().size(), 2u);
    EXPECT_EQ(b.hazards().back(), "pin 3 (contact 5): the programmer drives high, the part low");
    b.drive("00XXXXXXXXXXXX");
    b.drive("000XXXXXXXXXXX");
    EXPECT_EQ(b.hazards().size(), 3u);
}

TEST(hazards, the_time_of_a_hazard_is_kept)
{
    gates_on_the_bench b;
    b.device.delayms(7);
    b.device.regout(0, 3);
    b.device.regout(0, 2);
    b.device.delayms(1);
    ASSERT_FALSE(b.log->hazards().empty());
    EXPECT_EQ(b.log->hazards()[0].time, std::chrono::milliseconds{7});
}

TEST(hazards, an_overlap_while_ports_are_written_one_after_another_is_none)
{
    gates_on_the_bench b;
    b.drive("11XXXXXXXXXXXX", false);
    b.drive("00XXXXXXXXXXXX", false);
    // Pin 3 turns from the part's output into a driven pin for as long as it takes to write the next register.
    b.device.regout(0xF1, 3);
    b.device.regout(0xF9, 3);
    b.device.delayms(1);
    EXPECT_TRUE(b.hazards().empty());
    b.device.regout(0xF1, 3);
    EXPECT_EQ(b.device.regin(2) & 8, 0);  // a read takes its time
    EXPECT_FALSE(b.hazards().empty());
}

TEST(hazards, a_fight_within_a_script_is_one_when_the_script_waits_or_reads)
{
    gates_on_the_bench b;
    b.frame({10, 16, 64});
    b.device.vecout(0, 2);
    b.device.vecout(0, 3);
    b.device.vecout(255, 3);
    b.device.vecdelay(20);
    b.device.vecstart();
    EXPECT_TRUE(b.hazards().empty());
    b.device.vecout(0, 3);
    b.device.vecdelay(20);
    b.device.vecout(255, 3);
    b.device.vecstart();
    EXPECT_FALSE(b.hazards().empty());
}

TEST(hazards, supply_on_a_driven_pin)
{
    bench b{40};
    b.drive("0XXXXXXX");
    b.device.setvcc(5000);
    b.device.vccpin(4, 1);
    b.device.delayms(1);
    EXPECT_EQ(b.hazards(), texts{"contact 4: supply on a pin that the programmer drives low"});
}

TEST(hazards, supply_or_ground_on_an_output_of_the_part)
{
    gates_on_the_bench b;
    b.drive("11X00XXXXXXXXX");
    b.device.vccpin(5, 1);
    b.device.gndpin(2, 1);
    b.device.delayms(1);
    EXPECT_EQ(b.hazards(), (texts{"pin 3 (contact 5): supply on a pin that the part drives low",
                                  "pin 6 (contact 2): ground on a pin that the part drives high"}));
}

TEST(hazards, supply_and_ground_at_one_contact)
{
    bench b{40};
    b.power(3, 3, 1);
    b.device.delayms(1);
    EXPECT_EQ(b.hazards(), texts{"contact 3: supply and ground at once"});
}

TEST(hazards, vpp_at_a_part_that_is_not_made_for_it)
{
    bench b{40};
    b.programmer.insert(std::make_unique<quad_nand>());
    b.device.setvpp(21000, 0);
    b.device.vpppin(2, 1);
    b.device.delayms(1);
    EXPECT_EQ(b.hazards(), texts{"pin 6 (contact 2): 21000 mV, made for 7000"});
    b.device.vpppin(20, 1);  // above the part
    b.device.delayms(1);
    EXPECT_EQ(b.hazards().size(), 1u);
}

TEST(hazards, what_is_left_on_at_the_end)
{
    auto time = std::make_shared<sim::virtual_clock>();
    auto log = std::make_shared<sim::journal>(time);
    {
        sim::programmer programmer{{.time = time, .log = log}};
        programmer.device().setvcc(5000);
        programmer.device().setvpp(12000, 1);
        programmer.device().gndpin(1, 1);
        programmer.device().vccpin(107, 1);
        programmer.device().vpppin(2, 1);
    }
    texts found;
    for (const auto& one : log->hazards()) found.push_back(one.text);
    EXPECT_EQ(found, (texts{"ground driver left on at contact 1", "VPP driver left on at contact 2",
                            "VCC driver left on at contact 107", "VPP generator 1 left at 12000 mV"}));
}

TEST(hazards, nothing_is_left_on_after_a_reset_or_a_release)
{
    for (const bool reset : {true, false}) {
        bench b{40};
        b.power(1, 107, 1);
        b.device.setvpp(12000, 0);
        b.device.vpppin(2, 1);
        b.device.delayms(1);
        if (reset) {
            b.device.hwreset();
        } else {
            b.device.hwrelease();
        }
        b.programmer.check_idle();
        EXPECT_TRUE(b.hazards().empty());
    }
}

TEST(hazards, safe_voltages_of_the_generators_alone_are_none)
{
    bench b{40};
    b.device.setvcc(5000);
    b.device.setvpp(5000, 0);
    b.device.setvpp(5000, 1);
    b.programmer.check_idle();
    EXPECT_TRUE(b.hazards().empty());
}

TEST(hazards, the_supply_at_a_connector_is_no_contact_and_must_not_stay_on)
{
    for (const int model : {11, 12, 25, 26}) {
        bench b{model};
        b.device.setvcc(3300);
        b.device.regout(0, 0);
        b.device.regout(0, 1);
        b.device.vccpin(104, 1);
        b.device.delayms(1);
        EXPECT_TRUE(b.hazards().empty()) << "nothing drives low there";
        b.programmer.check_idle();
        EXPECT_EQ(b.hazards(), std::vector<std::string>{"VCC driver left on at the connector"}) << model;
        b.device.vccpin(104, 0);
        b.programmer.check_idle();
        b.device.vccpin(104, 1);
        b.device.hwreset();
        b.programmer.check_idle();
        EXPECT_EQ(b.hazards().size(), 1u) << model;
    }
    for (const int model : {1, 24, 27, 40}) {
        bench b{model};
        b.device.vccpin(104, 1);
        b.programmer.check_idle();
        EXPECT_EQ(b.hazards(), std::vector<std::string>{"VCC driver left on at contact 104"}) << model;
        b.device.hwreset();
    }
}

}  // namespace
}  // namespace tamrix::tests
