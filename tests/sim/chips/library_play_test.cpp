// Every record of the library, played on its own chip.
#include "library_file.h"
#include "slow_player.h"

#include <set>

namespace tamrix::tests {
namespace {

TEST(library, every_device_passes_its_record_in_any_order_and_from_any_state)
{
    for (const auto& device : records()) {
        unsigned run = 0;
        for (const auto& order : orders(device.pins, 5)) {
            slow_player player{device.name, device.pins};
            player.power_up();
            if (run++ % 2 != 0) stir(player, device.rows[0], run);
            for (std::size_t row = 0; row < device.rows.size(); ++row) {
                ASSERT_TRUE(player.play(device.rows[row], order)) << device.name << " row " << row << " order " << run;
                ASSERT_FALSE(player.fights()) << device.name << " row " << row;
            }
        }
    }
}

TEST(library, a_stuck_pin_fails_as_the_maker_of_the_vectors_says)
{
    std::set<std::string> graded;
    for (const auto& device : records()) {
        const auto* chip = sim::find_chip(all_chips(), device.name);
        if (device.name.size() % 2 != 0 && device.name.back() % 2 != 0) continue;  // a sample
        if (!graded.insert(chip->name).second || device.rows.size() > 100) continue;
        const auto order = orders(device.pins, 5)[2];
        for (std::size_t pin = 0; pin < device.pins; ++pin) {
            const auto role = chip->plan->pins[pin].role;
            if (role == sim::pin_role::vcc || role == sim::pin_role::gnd || role == sim::pin_role::none) continue;
            for (const auto level : {sim::level::low, sim::level::high}) {
                slow_player player{device.name, device.pins};
                player.stuck_pin = static_cast<int>(pin);
                player.stuck_at = level;
                player.power_up();
                const bool passed =
                    std::ranges::all_of(device.rows, [&](const auto& row) { return player.play(row, order); });
                EXPECT_FALSE(passed) << device.name << " with " << chip->plan->pins[pin].name << " stuck";
            }
        }
    }
    EXPECT_GT(graded.size(), 60u);
}

TEST(library, an_empty_socket_fails_every_record)
{
    EXPECT_TRUE(slow_player{8}.play("10CGHZXV", orders(8, 5)[0])) << "all of it is high without a chip too";
    for (const auto& device : records()) {
        slow_player player{device.pins};
        const auto order = orders(device.pins, 5)[0];
        EXPECT_FALSE(std::ranges::all_of(device.rows, [&](const auto& row) { return player.play(row, order); }))
            << device.name;
    }
}

}  // namespace
}  // namespace tamrix::tests
