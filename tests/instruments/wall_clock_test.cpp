// The instruments' dialogs with a programmer whose replies and banks arrive on a thread of its own.
#include "simulated_instruments.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tamrix {
namespace {

using tests::simulated_instruments;

/// Ten times as fast as a real programmer.
std::shared_ptr<sim::wall_clock> fast_clock() { return std::make_shared<sim::wall_clock>(10.0); }

TEST(a_dialog_on_the_wall_clock, records_what_its_trigger_waited_for)
{
    simulated_instruments b{1, true, 3, {"P21 square 1 phase 180", "P22..P28 noise 100000"}, fast_clock()};
    b.variables.analyzer.trigmode = -1;
    b.variables.analyzer.triglevel = -1;
    b.during_analyzer([&](analyzer& dialog) {
        for (int round = 0; round < 3; ++round) {
            dialog.Command3.click();
            EXPECT_EQ(dialog.StatusBar1.text(1), "Status:Record OK!");
            const auto samples = b.bytes(0, 3 * bank_samples);
            const auto high = std::ranges::count_if(samples, [](std::uint8_t pins) { return (pins & 1) != 0; });
            EXPECT_EQ(high, 3 * bank_samples) << "334 of the 500 ms that the pin is high";
        }
    });
    EXPECT_EQ(b.hazards(), std::vector<std::string>{});
}

TEST(a_dialog_on_the_wall_clock, may_be_stopped_and_closed_at_any_moment)
{
    for (int rounds = 1; rounds < 60; rounds += 4) {
        simulated_instruments b{1, true, 3, {"P21 square 1000"}, fast_clock()};
        b.during_analyzer([&](analyzer& dialog) {
            int round = 0;
            b.at_pump = [&] {
                if (++round == rounds) dialog.Command4.click();
                if (round == rounds + 2 && rounds % 8 == 1) dialog.close();
            };
            dialog.Command3.click();
            EXPECT_NE(dialog.StatusBar1.text(1), "Status:Record Error!");
        });
        b.at_pump = nullptr;
        EXPECT_EQ(b.hazards(), std::vector<std::string>{});
    }
}

TEST(a_dialog_on_the_wall_clock, shows_the_count_that_the_programmer_refreshes)
{
    simulated_instruments b{9, true, 1, {"P23 square 54321"}, fast_clock()};
    b.during_wave(true, [&](recetwave& dialog) {
        dialog.bigan.click();
        const auto limit = std::chrono::steady_clock::now() + std::chrono::seconds{20};
        while (dialog.Text1.text() == "000000" && std::chrono::steady_clock::now() < limit) b.shell.doevents();
        EXPECT_NEAR(std::stoi(dialog.Text1.text()), 54321, 5);
        dialog.stopButton.click();
    });
    EXPECT_EQ(b.hazards(), std::vector<std::string>{});
}

}  // namespace
}  // namespace tamrix
