#include "messages/catalogue.h"

#include "base/errors.h"
#include "support/plug_in_fixture.h"

#include <gtest/gtest.h>

#include <fstream>
#include <map>
#include <string>
#include <utility>

namespace tamrix {
namespace {

using tests::plug_in_fixture;

/// The reviewed texts: a line is NUMBER: "TEXT", quotes inside the text are as they are.
std::map<int, std::string> reviewed_messages()
{
    std::map<int, std::string> messages;
    std::ifstream file{TAMRIX_REVIEWED_TEXTS};
    EXPECT_TRUE(file.is_open());
    for (std::string line; std::getline(file, line);) {
        const std::size_t colon = line.find(": \"");
        if (colon == std::string::npos || line.back() != '"') {
            ADD_FAILURE() << "not a message: " << line;
            continue;
        }
        messages.emplace(std::stoi(line), line.substr(colon + 3, line.size() - colon - 4));
    }
    return messages;
}

/// All texts of a language block.
std::map<int, std::string> messages_of_block(int offset)
{
    std::map<int, std::string> messages;
    for (int base = 0; base < 3000; ++base) {
        try {
            messages.emplace(base, LoadResString(offset + base));
        } catch (const resource_error&) {
        }
    }
    return messages;
}

TEST(catalogue, holds_the_reviewed_english_texts_with_their_blanks_and_no_others)
{
    EXPECT_EQ(messages_of_block(0), reviewed_messages());
}

TEST(catalogue, gives_english_in_block_15000_as_well)
{
    EXPECT_EQ(LoadResString(16067), "OK");
    EXPECT_EQ(messages_of_block(15000), reviewed_messages());
}

TEST(catalogue, keeps_quotes_bars_and_outer_blanks_of_a_text)
{
    EXPECT_EQ(LoadResString(1214), R"(Note!Need "Test Board" On Socket!)");
    EXPECT_EQ(LoadResString(1225), "All Files (*.*)|*.*|Binary File (*.BIN)|*.bin");
    EXPECT_EQ(LoadResString(1156), "                tPW:  ");
    EXPECT_EQ(LoadResString(1086), ".");
}

TEST(catalogue, raises_an_error_that_tells_a_number_without_a_text)
{
    for (const int number : {0, 999, 1003, 1007, 2999, 18000, 34003, 36000, 37067, -1, -13933}) {
        try {
            ADD_FAILURE() << number << " has the text " << LoadResString(number);
        } catch (const resource_error& error) {
            EXPECT_EQ(error.what(), "no text with number " + std::to_string(number));
        }
    }
}

TEST(session_text, comes_from_the_block_of_the_language_at_each_use)
{
    plug_in_fixture f;
    EXPECT_EQ(f.session.text(1067), "OK");
    f.session.blocks.Language(0) = 15000;
    EXPECT_EQ(f.session.text(1067), "OK");
    f.session.blocks.Language(0) = 1;
    EXPECT_EQ(f.session.text(1067), "Cancel") << "the offset is added, whatever it is";
    f.session.blocks.Language(0) = 0;
    EXPECT_EQ(f.session.text(1067), "OK");
}

TEST(session_text, follows_each_language_that_the_host_chooses)
{
    plug_in_fixture f;
    const std::pair<int, std::string> expected[] = {
        {0, ">>Load File Fail!"},        {3000, ">>文件加载失败！"},          {6000, ">>檔案載入失敗！"},
        {9000, ">>파일 불러오기 실패!"}, {33000, ">>Ошибка загрузки файла!"}, {0, ">>Load File Fail!"},
    };
    for (const auto& [offset, text] : expected) {
        f.session.blocks.Language(0) = offset;
        EXPECT_EQ(f.session.text(1135), text);
    }
}

TEST(session_text, fails_for_a_language_without_a_block)
{
    plug_in_fixture f;
    f.session.blocks.Language(0) = 36000;
    try {
        ADD_FAILURE() << f.session.text(1135);
    } catch (const resource_error& error) {
        EXPECT_STREQ(error.what(), "no text with number 37135");
    }
}

TEST(session_tell, shows_the_text_in_a_box_with_ok_alone)
{
    plug_in_fixture f;
    f.session.tell(1138);
    EXPECT_EQ(f.shell.boxes(), std::vector<std::string>{"File couldn't be open!"});
}

}  // namespace
}  // namespace tamrix
