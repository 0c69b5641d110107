#include "channel/model.h"

#include "support/temp_files.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <limits>
#include <set>
#include <string>

namespace tamrix::hw {

namespace {

using numbers = std::set<int>;

/// Checks one field for every number that a host could give.
template <class Field, class Expected>
void expect_for_every_number(Field model::*field, Expected expected)
{
    for (int number = std::numeric_limits<std::int16_t>::min(); number <= std::numeric_limits<std::int16_t>::max();
         ++number) {
        const model record = model_of(static_cast<std::int16_t>(number));
        ASSERT_EQ(record.*field, expected(number)) << "model " << number;
        ASSERT_EQ(record.number, number);
    }
}

auto in(numbers set)
{
    return [set = std::move(set)](int number) { return set.contains(number); };
}

TEST(model, vectors_reach_40_positions_on_five_models)
{
    expect_for_every_number(&model::vector_positions, [](int number) {
        return numbers{22, 23, 24, 28, 29}.contains(number) ? 40 : 48;
    });
}

TEST(model, the_newer_library_is_for_numbers_from_30)
{
    expect_for_every_number(&model::newer_library, [](int number) { return number >= 30; });
}

TEST(model, vpp_feeds_one_supply_place_on_two_models_and_both_on_four)
{
    expect_for_every_number(&model::vpp_feeds_107, in({23, 24, 28, 29}));
    expect_for_every_number(&model::vpp_feeds_108, in({15, 16, 23, 24, 28, 29}));
    expect_for_every_number(&model::scripts_end_vpp_feed, in({23, 24, 28, 29}));
}

TEST(model, boards_have_two_codes_from_40_and_in_calibrations_above_40)
{
    expect_for_every_number(&model::selects_two_boards, [](int number) { return number > 39; });
    expect_for_every_number(&model::selects_board_for_calibration, [](int number) { return number > 40; });
}

TEST(model, the_adaptor_note_and_the_pin_map_are_for_four_models_alone)
{
    expect_for_every_number(&model::adaptor_note, in({23, 24, 28, 29}));
    expect_for_every_number(&model::pin_map_before_logic_test, in({23, 24, 28, 29}));
}

TEST(model, the_self_test_form_fits_every_model_number)
{
    expect_for_every_number(&model::self_test_form, [](int number) -> std::string_view {
        // Position is the model number, 0 to 60: P is pinnote, I pinnoteISP, 4 pinnote4, S pinnote_sepm, 2 pinnote204.
        constexpr std::string_view fitting = "PPPPPPPPPP"  // 0
                                             "PIIPPPPPPP"  // 10
                                             "PPP44IIS44"  // 20
                                             "PPPPPPPPP2"  // 30
                                             "PPPPPPPPPP"  // 40
                                             "PP2P2PPPPP"  // 50
                                             "P";          // 60
        static_assert(fitting.size() == 61);
        switch (number < 0 || number > 60 ? 'P' : fitting[static_cast<std::size_t>(number)]) {
        case 'I': return "pinnoteISP";
        case '4': return "pinnote4";
        case 'S': return "pinnote_sepm";
        case '2': return "pinnote204";
        default: return "pinnote";
        }
    });
}

TEST(model, the_sample_period_of_model_4_changes_with_the_first_capture)
{
    const auto expected = [](numbers by_generation) {
        return [by_generation = std::move(by_generation)](int number) {
            if (by_generation.contains(number)) return sampling::by_generation;
            return numbers{5, 6, 7, 8, 15, 16, 17, 18, 19}.contains(number) ? sampling::slow : sampling::common;
        };
    };
    expect_for_every_number(&model::after_capture, expected({2, 3, 4, 9, 10, 13, 14}));
    expect_for_every_number(&model::before_capture, expected({2, 3, 9, 10, 13, 14}));
}

TEST(model, the_generator_has_four_ways_to_make_its_signal)
{
    expect_for_every_number(&model::generator, [](int number) {
        if (number >= 40) return output_loop::fixed_set;
        if (number < 5) return output_loop::by_generation;
        return numbers{9, 10, 13, 14}.contains(number) ? output_loop::fast : output_loop::slow;
    });
    expect_for_every_number(&model::selects_board_for_wave, [](int number) { return number >= 40; });
}

std::string word(bool holds) { return holds ? "yes" : ""; }

std::string period(sampling speed)
{
    switch (speed) {
    case sampling::by_generation: return "3.5 or 3.8";
    case sampling::slow: return "4.7";
    default: return "3.4";
    }
}

std::string generator(output_loop loop)
{
    switch (loop) {
    case output_loop::by_generation: return "33 or 28.636 MHz";
    case output_loop::fast: return "33 MHz";
    case output_loop::slow: return "24 MHz";
    default: return "fixed set";
    }
}

std::string supply(const model& record)
{
    std::string text = record.vpp_feeds_107 ? "107, 108" : record.vpp_feeds_108 ? "108" : "";
    if (record.vpp_feeds_108 && !record.scripts_end_vpp_feed) text += "; scripts end by VCC";
    return text;
}

std::string boards(const model& record)
{
    if (!record.selects_two_boards) return "";
    return record.selects_board_for_calibration ? "yes" : "yes, not for calibrations";
}

std::string line(const std::string& name, const model& record)
{
    std::string text = "|";
    for (const std::string& cell :
         {name, std::to_string(record.vector_positions), std::string{record.newer_library ? "newer" : "older"},
          supply(record), boards(record), word(record.adaptor_note), word(record.pin_map_before_logic_test),
          "`" + std::string{record.self_test_form} + "`",
          period(record.after_capture) +
              (record.before_capture == record.after_capture ? "" : ", at first " + period(record.before_capture)),
          generator(record.generator)})
        text += cell.empty() ? " |" : " " + cell + " |";
    return text + "\n";
}

std::string page()
{
    std::string text =
        "# Programmer models\n\n"
        "The host says in `modeltype(0)` which programmer is attached. `src/channel/model.h` holds one record a model\n"
        "number; this page is printed from it by\n"
        "`TAMRIX_WRITE_PAGES=1 build/dev/bin/tests_channel --gtest_filter='models_page.*'`.\n\n"
        "- **Positions**: of the socket as test vectors reach it.\n"
        "- **Library**: the older file of vectors is `lib1\\test190.lib`, the newer one `lib\\test.lib`.\n"
        "- **VCC from VPP**: supply drivers that are fed through the VPP driver of code 108.\n"
        "- **Two boards**: boards are selected by two codes, `boardsel2`.\n"
        "- **Adaptor note**: a device note may ask for the external supply.\n"
        "- **Pin map first**: shown before a logic test.\n"
        "- **Sample us**: the analyzer's sample period over USB; 3.5 on generation 17, 3.8 on others.\n"
        "- **Generator**: the clock of the loop that makes a signal over USB, 33 MHz on generation 17 where there are "
        "two;\n"
        "  or the hertz themselves are sent, and above 49 kHz a fixed set of frequencies can be had.\n\n"
        "| Model | Positions | Library | VCC from VPP | Two boards | Adaptor note | Pin map first | Self-test | Sample "
        "us "
        "| Generator |\n|---|---|---|---|---|---|---|---|---|---|\n";
    for (const model& record : listed_models) text += line(std::to_string(record.number), record);
    text += line("others below 5", model_of(0));
    text += line("others from 5 to 29", model_of(20));
    text += line("others from 30 to 39", model_of(30));
    text += line("40", model_of(40));
    text += line("others above 40", model_of(41));
    return text;
}

TEST(models_page, says_what_the_records_hold)
{
    const std::string path = TAMRIX_MODELS_PAGE;
    if (std::getenv("TAMRIX_WRITE_PAGES") != nullptr) std::ofstream{path} << page();
    EXPECT_EQ(tests::read_text(path), page()) << "write it anew with TAMRIX_WRITE_PAGES=1";
}

}  // namespace
}  // namespace tamrix::hw
