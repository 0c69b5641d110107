#include "entry/dialogs.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

namespace tamrix {
namespace {

TEST(self_test_dialog, fits_every_model_number)
{
    // Position is the model number, 0 to 60: P is pinnote, I pinnoteISP, 4 pinnote4, S pinnote_sepm, 2 pinnote204.
    constexpr std::string_view fitting = "PPPPPPPPPP"  // 0
                                         "PIIPPPPPPP"  // 10
                                         "PPP44IIS44"  // 20
                                         "PPPPPPPPP2"  // 30
                                         "PPPPPPPPPP"  // 40
                                         "PP2P2PPPPP"  // 50
                                         "P";          // 60
    static_assert(fitting.size() == 61);
    const auto name = [](char letter) -> std::string_view {
        switch (letter) {
        case 'I': return "pinnoteISP";
        case '4': return "pinnote4";
        case 'S': return "pinnote_sepm";
        case '2': return "pinnote204";
        default: return "pinnote";
        }
    };
    for (std::int16_t model = 0; model <= 60; ++model)
        EXPECT_EQ(self_test_dialog(model), name(fitting[static_cast<std::size_t>(model)])) << "model " << model;
}

TEST(self_test_dialog, of_a_model_number_that_does_not_exist_is_the_common_one)
{
    for (const int model : {-1, 61, 204, 32767, -32768})
        EXPECT_EQ(self_test_dialog(static_cast<std::int16_t>(model)), "pinnote") << model;
}

TEST(shows_pin_map_first, is_true_for_four_models_alone)
{
    for (std::int16_t model = -1; model <= 60; ++model) {
        const bool expected = model == 23 || model == 24 || model == 28 || model == 29;
        EXPECT_EQ(shows_pin_map_first(model), expected) << "model " << model;
    }
}

}  // namespace
}  // namespace tamrix
