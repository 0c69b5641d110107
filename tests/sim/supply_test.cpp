// The VPP driver at contact 108 that replaces a VCC driver on some models.
#include "sim/bench.h"

#include <gtest/gtest.h>

namespace tamrix::tests {

namespace {

/// Supplies an inverter by `vpppin(108, 1)`; true where it answers then.
bool works_by_the_special_driver(int model, int pins)
{
    bench b{model};
    b.programmer.insert(std::make_unique<inverter>(pins));
    b.device.setvcc(5000);
    b.device.gndpin(1, 1);
    b.device.vpppin(108, 1);
    b.device.delayms(1);
    std::string row(static_cast<std::size_t>(pins), 'X');
    row[1] = '1';
    const bool works = b.run(row)[static_cast<std::size_t>(pins) - 2] == 'L';
    b.device.vpppin(108, 0);
    b.device.gndpin(1, 0);
    EXPECT_TRUE(!works || b.hazards().empty());
    EXPECT_FALSE(b.programmer.part_has_power());
    return works;
}

TEST(special_supply, serves_a_supply_pin_at_contact_108_on_six_models)
{
    for (const int model : {15, 16, 23, 24, 28, 29}) EXPECT_TRUE(works_by_the_special_driver(model, 16)) << model;
    for (const int model : {9, 22, 40, 57}) EXPECT_FALSE(works_by_the_special_driver(model, 16)) << model;
}

TEST(special_supply, serves_a_supply_pin_at_contact_107_on_the_models_with_40_contacts_but_22)
{
    for (const int model : {23, 24, 28, 29}) EXPECT_TRUE(works_by_the_special_driver(model, 14)) << model;
    for (const int model : {15, 16, 22, 40}) EXPECT_FALSE(works_by_the_special_driver(model, 14)) << model;
}

TEST(special_supply, serves_no_other_pin)
{
    for (const int model : {15, 16, 23, 24, 28, 29}) {
        for (const int pins : {8, 12, 18, 20, 40}) EXPECT_FALSE(works_by_the_special_driver(model, pins)) << model;
    }
}

/// A part whose supply is not in the corner.
class part_without_supply_there final : public sim::part {
public:
    explicit part_without_supply_there(int pins) : pins_{pins} {}
    int pins() const override { return pins_; }
    int vcc_pin() const override { return 3; }
    int gnd_pin() const override { return 9; }
    void power_up() override {}
    void settle(std::span<const sim::level>, std::span<sim::level>) override {}

private:
    int pins_;
};

TEST(special_supply, goes_by_the_line_that_14_pins_need_and_not_by_the_part)
{
    for (const auto& [pins, fed] : {std::pair{14, true}, {16, false}, {12, false}}) {
        bench b{23};
        b.programmer.insert(std::make_unique<part_without_supply_there>(pins));
        b.device.setvcc(5000);
        b.device.vpppin(108, 1);
        b.device.gndpin(107, 1);
        b.device.delayms(1);
        EXPECT_EQ(b.hazards().size(), fed ? 1u : 0u) << pins;
        b.device.hwreset();
    }
}

TEST(special_supply, loses_its_line_with_the_part)
{
    bench b{23};
    b.programmer.insert(std::make_unique<inverter>(14));
    b.programmer.insert(nullptr);
    b.device.setvcc(5000);
    b.device.vpppin(108, 1);
    b.device.gndpin(107, 1);
    b.device.delayms(1);
    EXPECT_EQ(b.hazards(), std::vector<std::string>{});
    b.device.hwreset();
}

TEST(special_supply, takes_its_contact_over_from_the_pin_driver_on_40_contacts)
{
    for (const int model : {23, 24, 28, 29}) {
        bench b{model};
        b.programmer.insert(std::make_unique<inverter>(14));
        b.device.setvcc(5000);
        b.frame({5, 255, 255, 255, 255, 255, 255, 0xDF, 0xDF, 255, 255, 255, 255});  // contact 108 low
        EXPECT_EQ(b.device.regin(6), 0xDF);
        b.device.vpppin(108, 1);
        b.device.delayms(1);
        EXPECT_EQ(b.device.regin(6), 255);
        EXPECT_EQ(b.hazards(), std::vector<std::string>{});
        b.device.vpppin(108, 0);
        EXPECT_EQ(b.device.regin(6), 0xDF);
    }
    bench b{15};
    b.device.setvcc(5000);
    b.frame({5, 255, 255, 0x7F, 0x7F, 255, 255, 255, 255, 255, 255, 255, 255});  // contact 108 low
    b.device.vpppin(108, 1);
    b.device.delayms(1);
    EXPECT_EQ(b.hazards().size(), 1u);
    b.device.hwreset();
}

TEST(special_supply, carries_vpp_once_its_generator_is_above_5_volts)
{
    bench b{23};
    b.programmer.insert(std::make_unique<inverter>(16));
    b.device.setvcc(5000);
    b.device.setvpp(5000, 0);
    b.device.vpppin(108, 1);
    b.device.delayms(1);
    EXPECT_TRUE(b.hazards().empty());
    b.device.setvpp(12000, 0);
    b.device.delayms(1);
    EXPECT_EQ(b.hazards(), std::vector<std::string>{"pin 16 (contact 108): 12000 mV, made for 7000"});
}

TEST(supply, even_codes_hang_on_vpp_generator_0_and_odd_ones_on_1)
{
    for (const int generator : {0, 1}) {
        bench b{40};
        b.programmer.insert(std::make_unique<quad_nand>());
        b.device.setvpp(12000, static_cast<std::uint8_t>(generator));
        b.device.vpppin(2, 1);  // pin 6
        b.device.vpppin(3, 1);  // pin 5
        b.device.delayms(1);
        const std::string harmed = generator == 0 ? "pin 6 (contact 2)" : "pin 5 (contact 3)";
        EXPECT_EQ(b.hazards(), std::vector<std::string>{harmed + ": 12000 mV, made for 7000"});
    }
}

}  // namespace
}  // namespace tamrix::tests
