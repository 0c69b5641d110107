#include "languages.h"
#include "messages/catalogue.h"

#include "base/errors.h"

#include <set>
#include <string>
#include <vector>

using namespace tamrix;
using namespace tamrix::tests;

namespace {

using forms::answer;

/// As it is seen: a letter for the Alt key in parentheses after the word is dropped with them.
std::string without_mnemonic(std::string text, mnemonic_style style)
{
    const std::size_t at = text.find('&');
    if (at == std::string::npos) return text;
    return style == mnemonic_style::appended ? text.substr(0, at - 1) : text.erase(at, 1);
}

bool fits(char32_t letter, mnemonic_style style)
{
    return style == mnemonic_style::cyrillic ? is_cyrillic_letter(letter) : is_latin_letter(letter);
}

}  // namespace

TEST(answers, are_named_in_every_language)
{
    EXPECT_EQ(answer_text(0, answer::abort), "&Abort");
    EXPECT_EQ(answer_text(15000, answer::ignore), "&Ignore");
    EXPECT_EQ(answer_text(3000, answer::no), "否(&N)");
    EXPECT_EQ(answer_text(33000, answer::retry), "По&вторить");
    std::set<std::string> words_for_retry;
    for (const language& in : languages) words_for_retry.insert(answer_text(in.offset, answer::retry));
    EXPECT_EQ(words_for_retry.size(), std::size(languages) - 1) << "English is there twice";
}

TEST(answers, of_one_box_have_mnemonics_that_differ)
{
    const std::vector<answer> boxes[] = {{answer::ok, answer::cancel},
                                         {answer::yes, answer::no},
                                         {answer::retry, answer::cancel},
                                         {answer::abort, answer::retry, answer::ignore}};
    for (const language& in : languages) {
        for (const std::vector<answer>& box : boxes) {
            std::set<char32_t> taken;
            for (const answer one : box) {
                const std::string text = answer_text(in.offset, one);
                SCOPED_TRACE(text);
                const std::u32string letters = mnemonics_of(text);
                if (one == answer::ok) {
                    EXPECT_TRUE(letters.empty()) << "Enter is its key";
                    continue;
                }
                ASSERT_EQ(letters.size(), 1U);
                EXPECT_TRUE(fits(letters.front(), in.mnemonics));
                EXPECT_TRUE(taken.insert(lower_case(letters.front())).second);
            }
        }
    }
}

TEST(answers, ok_and_cancel_read_as_on_the_buttons_of_dialogs)
{
    constexpr int ok_text = 1067, cancel_text = 1068;
    for (const language& in : languages) {
        const auto seen = [&](answer which) { return without_mnemonic(answer_text(in.offset, which), in.mnemonics); };
        EXPECT_EQ(seen(answer::ok), LoadResString(in.offset + ok_text));
        EXPECT_EQ(seen(answer::cancel), LoadResString(in.offset + cancel_text));
    }
}

TEST(answers, of_a_language_that_is_none_are_an_error)
{
    EXPECT_THROW(answer_text(1, answer::ok), resource_error);
    EXPECT_THROW(answer_text(36000, answer::ok), resource_error);
    EXPECT_THROW(answer_text(-3000, answer::ok), resource_error);
}
