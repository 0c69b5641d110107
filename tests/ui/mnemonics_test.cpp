// The letters that work with the Alt key, and the fonts, in languages that are not English.
#include "before_a_host.h"
#include "person.h"
#include "plugin/catalogue.h"
#include "plugin/languages.h"
#include "scenes.h"
#include "ttl/ttledit.h"

#include <array>
#include <cstdio>
#include <memory>
#include <set>
#include <string>

#include <gtest/gtest.h>

using namespace tamrix;
using namespace tamrix::tests;

namespace {

struct keys_of_editor {
    int language;
    const char *insert, *cut, *leave;  // as xdotool names the letters
};

/// A first line of what a command writes.
std::string first_line_of(const std::string& command)
{
    const std::unique_ptr<FILE, int (*)(FILE*)> pipe{popen(command.c_str(), "r"), pclose};
    std::array<char, 512> line{};
    return std::fgets(line.data(), line.size(), pipe.get()) != nullptr ? line.data() : "";
}

class keys_with_alt : public testing::TestWithParam<keys_of_editor> {};

}  // namespace

TEST_P(keys_with_alt, press_the_buttons_of_the_vector_editor)
{
    const auto& [language, insert, cut, leave] = GetParam();
    stage on{language};
    on.session.ttl.ttlname = "7400";
    on.session.ttl.ttlpin = 4;
    on.session.ttl.ttlcnt = 2;
    on.session.ttl.ttlvect.store(0, "0000");
    ttledit editor{on.session};
    before_a_host(on.screen, editor, [&] {
        const auto pressed = [](const char* letter) { press(std::string{"alt+"} + letter); };
        pressed(insert);
        EXPECT_TRUE(comes_true([&] { return on.session.ttl.ttlcnt == 3; }));
        pressed(cut);
        EXPECT_TRUE(comes_true([&] { return on.session.ttl.ttlcnt == 2; }));
        pressed(leave);
        EXPECT_TRUE(comes_true([&] { return !editor.is_open(); }));
    });
}

INSTANTIATE_TEST_SUITE_P(languages, keys_with_alt,
                         testing::Values(keys_of_editor{0, "i", "t", "e"}, keys_of_editor{12000, "w", "t", "z"},
                                         keys_of_editor{27000, "e", "s", "k"}, keys_of_editor{3000, "i", "t", "e"},
                                         keys_of_editor{9000, "i", "t", "e"},
                                         keys_of_editor{33000, "Cyrillic_ve", "Cyrillic_er", "Cyrillic_yeru"}),
                         [](const auto& tested) { return "language_" + std::to_string(tested.param.language); });

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
