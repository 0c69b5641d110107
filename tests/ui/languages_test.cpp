// Every dialog in every language on a real screen. With TAMRIX_PICTURES=FOLDER in the environment each is also saved
// there as LANGUAGE-DIALOG.png.
#include "dialog_checks.h"
#include "gtk_window.h"
#include "messages/languages.h"
#include "person.h"
#include "scenes.h"

#include <cstdlib>
#include <string>
#include <tuple>

#include <gtest/gtest.h>

using namespace tamrix;
using namespace tamrix::tests;

namespace {

std::string name_for_file(std::string_view name)
{
    std::string kept;
    for (const char letter : name) {
        if (std::isalnum(static_cast<unsigned char>(letter)) != 0) kept += letter;
        if (letter == ' ') kept += '_';
    }
    return kept;
}

using language_and_scene = std::tuple<language, scene>;

class every_dialog : public testing::TestWithParam<language_and_scene> {};

std::string name_of_test(const testing::TestParamInfo<language_and_scene>& tested)
{
    const auto& [in, shown] = tested.param;
    return name_for_file(in.name) + "_" + std::string{shown.name};
}

/// The window with its frame, where a window manager gives it one.
void save_picture(const std::string& name)
{
    const char* const folder = std::getenv("TAMRIX_PICTURES");
    if (folder == nullptr) return;
    press("shift");  // and lets it be painted to the end
    const std::string command = "import -silent -frame -window " + std::to_string(gtk_window::in_front().number()) +
                                " -strip '" + folder + "/" + name + ".png'";
    EXPECT_EQ(std::system(command.c_str()), 0) << command;
}

void check_dialog(const wxWindow& shown)
{
    expect_fits_common_screen(shown.GetSize());
    expect_nothing_clipped(shown);
    expect_no_overlap(shown);
    expect_every_letter_drawn(shown);
    expect_room_for_title(shown);
}

}  // namespace

TEST_P(every_dialog, is_seen_whole_and_with_all_letters)
{
    const auto& [in, shown] = GetParam();
    bool looked = false;
    stage on{in.offset};
    on.look = [&, small = shown.small_screen, picture = name_for_file(in.name) + "-" + std::string{shown.name}] {
        looked = true;
        check_dialog(dialog());
        if (small) expect_fits_small_screen(dialog().GetClientSize());
        save_picture(picture);
    };
    shown.play(on);
    EXPECT_TRUE(looked);
}

INSTANTIATE_TEST_SUITE_P(languages, every_dialog,
                         testing::Combine(testing::ValuesIn(languages), testing::ValuesIn(scenes())), name_of_test);
