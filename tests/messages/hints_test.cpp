#include "languages.h"
#include "messages/catalogue.h"

#include "base/errors.h"

#include <set>
#include <string>

using namespace tamrix;
using namespace tamrix::tests;

TEST(hints, say_in_every_language_what_a_field_takes)
{
    EXPECT_EQ(hint_text(0, hint::device_name), "1 to 12 letters and digits");
    EXPECT_EQ(hint_text(15000, hint::pin_count), "An even number from 2 to 40");
    EXPECT_EQ(hint_text(33000, hint::pin_count), "Чётное число от 2 до 40");
    for (const hint one : {hint::device_name, hint::pin_count, hint::hexadecimal}) {
        std::set<std::string> words;
        for (const language& in : languages) words.insert(hint_text(in.offset, one));
        EXPECT_EQ(words.size(), std::size(languages) - 1) << "English is there twice";
    }
}

TEST(hints, name_the_same_limits_in_every_language)
{
    for (const language& in : languages) {
        SCOPED_TRACE(in.name);
        EXPECT_NE(hint_text(in.offset, hint::device_name).find("12"), std::string::npos);
        EXPECT_NE(hint_text(in.offset, hint::pin_count).find("40"), std::string::npos);
        EXPECT_NE(hint_text(in.offset, hint::hexadecimal).find('F'), std::string::npos);
    }
}

TEST(hints, of_a_language_that_is_none_are_an_error)
{
    EXPECT_THROW(hint_text(1, hint::pin_count), resource_error);
    EXPECT_THROW(hint_text(36000, hint::pin_count), resource_error);
}
