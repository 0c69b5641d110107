// The letters that work with the Alt key, and the fonts, in languages that are not English.
#include "messages/catalogue.h"
#include "messages/languages.h"
#include "over_host.h"
#include "person.h"
#include "scenes.h"
#include "ttl/dialogs/ttledit.h"

#include <algorithm>
#include <array>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <set>
#include <string>

#include <gtest/gtest.h>

using namespace tamrix;
using namespace tamrix::tests;

namespace {

struct keys_of_editor {
    int language;
    const char* keyboards;             // the first is the active one
    const char *insert, *cut, *leave;  // keys as xdotool names them
};

/// A first line of what a command writes.
std::string first_line_of(const std::string& command)
{
    const std::unique_ptr<FILE, int (*)(FILE*)> pipe{popen(command.c_str(), "r"), pclose};
    std::array<char, 512> line{};
    return std::fgets(line.data(), line.size(), pipe.get()) != nullptr ? line.data() : "";
}

void choose_keyboards(const std::string& names) { EXPECT_EQ(std::system(("setxkbmap -layout " + names).c_str()), 0); }

class keys_with_alt : public testing::TestWithParam<keys_of_editor> {
protected:
    ~keys_with_alt() override { choose_keyboards("us"); }
};

}  // namespace

TEST_P(keys_with_alt, press_the_buttons_of_the_vector_editor)
{
    const auto& [language, keyboards, insert, cut, leave] = GetParam();
    choose_keyboards(keyboards);
    stage on{language};
    on.variables.ttl.ttlname = "7400";
    on.variables.ttl.ttlpin = 4;
    on.variables.ttl.ttlcnt = 2;
    on.variables.ttl.ttlvect.store(0, "0000");
    ttledit editor{on.session, on.variables.ttl, on.variables.pld};
    over_host(on.screen, editor, [&] {
        const auto pressed = [](const char* letter) { press(std::string{"alt+"} + letter); };
        pressed(insert);
        ASSERT_TRUE(comes_true([&] { return on.variables.ttl.ttlcnt == 3; }));
        pressed(cut);
        EXPECT_TRUE(comes_true([&] { return on.variables.ttl.ttlcnt == 2; }));
        pressed(leave);
        EXPECT_TRUE(comes_true([&] { return !editor.is_open(); }));
    });
}

// A key also works by the letter that it has on a second keyboard, which is not active: the physical keys d, h and s
// are the Russian ve, er and yeru.
INSTANTIATE_TEST_SUITE_P(languages, keys_with_alt,
                         testing::Values(keys_of_editor{0, "us", "i", "t", "e"},
                                         keys_of_editor{12000, "us", "w", "t", "z"},
                                         keys_of_editor{27000, "us", "e", "s", "k"},
                                         keys_of_editor{3000, "us", "i", "t", "e"},
                                         keys_of_editor{9000, "us", "i", "t", "e"},
                                         keys_of_editor{33000, "ru", "Cyrillic_ve", "Cyrillic_er", "Cyrillic_yeru"},
                                         keys_of_editor{33000, "us,ru", "d", "h", "s"}),
                         [](const auto& tested) {
                             const std::string keyboards = tested.param.keyboards;
                             return "language_" + std::to_string(tested.param.language) + "_with_keyboard_" +
                                    keyboards.substr(0, 2) +
                                    keyboards.substr(std::min<std::size_t>(3, keyboards.size()));
                         });

TEST(fonts, one_has_all_letters_of_a_language)
{
    for (const language& in : languages) {
        std::set<char32_t> letters;
        for (const auto& [number, text] : texts_of(in.offset)) {
            for (const char32_t letter : letters_of(text)) letters.insert(letter);
        }
        for (int which = 0; which <= static_cast<int>(forms::answer::ignore); ++which) {
            const std::string text = answer_text(in.offset, static_cast<forms::answer>(which));
            for (const char32_t letter : letters_of(text)) letters.insert(letter);
        }
        std::string codes;
        for (const char32_t letter : letters) {
            std::array<char, 16> code{};
            std::snprintf(code.data(), code.size(), " %x", static_cast<unsigned>(letter));
            if (letter > U' ') codes += code.data();
        }
        EXPECT_NE(first_line_of("fc-list ':charset=" + codes.substr(1) + "' family"), "") << in.name;
    }
}

TEST(fonts, that_have_a_letter_of_no_language_are_none)
{
    EXPECT_EQ(first_line_of("fc-list ':charset=41 10fffd' family"), "");
}
