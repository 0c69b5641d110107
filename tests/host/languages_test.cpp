#include "host/languages.h"

#include <gtest/gtest.h>

#include <set>

namespace tamrix::host {

TEST(languages, hold_each_block_of_texts_once_but_the_second_english)
{
    std::set<std::int32_t> offsets;
    std::set<std::string_view> codes, names;
    for (const language& one : languages()) {
        offsets.insert(one.offset);
        codes.insert(one.code);
        names.insert(one.name);
    }
    EXPECT_EQ(offsets, (std::set<std::int32_t>{0, 3000, 6000, 9000, 12000, 18000, 21000, 24000, 27000, 30000, 33000}));
    EXPECT_EQ(codes.size(), 11u);
    EXPECT_EQ(names.size(), 11u);
    EXPECT_EQ(languages().front().code, "en");
}

TEST(languages, are_named_by_code_and_by_offset)
{
    EXPECT_EQ(language_offset("en"), 0);
    EXPECT_EQ(language_offset("zh-cn"), 3000);
    EXPECT_EQ(language_offset("zh-tw"), 6000);
    EXPECT_EQ(language_offset("ko"), 9000);
    EXPECT_EQ(language_offset("pl"), 12000);
    EXPECT_EQ(language_offset("it"), 18000);
    EXPECT_EQ(language_offset("nl"), 21000);
    EXPECT_EQ(language_offset("pt-br"), 24000);
    EXPECT_EQ(language_offset("tr"), 27000);
    EXPECT_EQ(language_offset("hu"), 30000);
    EXPECT_EQ(language_offset("ru"), 33000);
    EXPECT_EQ(language_offset("15000"), 15000) << "English again";
    for (int offset = 0; offset <= 33000; offset += 3000) EXPECT_EQ(language_offset(std::to_string(offset)), offset);
}

TEST(languages, are_not_named_by_anything_else)
{
    for (const char* word : {"", " ", "en ", "EN", "deutsch", "1", "-3000", "3000.", "36000", "99999999999999999999"}) {
        EXPECT_EQ(language_offset(word), std::nullopt) << word;
    }
}

TEST(languages, are_found_by_their_offset)
{
    EXPECT_EQ(find_language(33000)->name, "Русский");
    EXPECT_EQ(find_language(second_english)->code, "en");
    EXPECT_EQ(find_language(1), nullptr);
    EXPECT_EQ(find_language(-3000), nullptr);
}

}  // namespace tamrix::host
