#include "workbench/device_fields.h"

#include <string>

#include <gtest/gtest.h>

using namespace tamrix;
using namespace tamrix::workbench;

namespace {

const host::device_preset eprom{.name = "E1", .maker = "M", .words = 0x100, .buffer_bytes = 0x100, .pins = 28};

/// "KEY: EXPECTED" of the first field that is wrong if `key` has this text; empty if none is.
std::string wrong(const std::string& key, const std::string& text, const host::device_preset& start = eprom)
{
    field_texts texts = texts_of(start);
    texts[key] = text;
    const auto found = find_wrong_field(texts, [](const std::string& name) { return name == "27C64"; });
    return found ? found->key + ": " + found->expected : "";
}

constexpr field_group all_groups[] = {field_group::device, field_group::memory, field_group::note, field_group::pins,
                                      field_group::programming};

}  // namespace

TEST(device_fields, show_a_device_and_give_it_back)
{
    const host::device_preset odd{.name = "O 1",
                                  .maker = "A B",
                                  .algorithm = "PIC",
                                  .words = 0x1234,
                                  .word_bytes = 2,
                                  .spare_units = 3,
                                  .buffer_bytes = 0x8000,
                                  .pins = 18,
                                  .vcc_pin = 14,
                                  .gnd_pin = 5,
                                  .vcc_centivolts = 550,
                                  .vpp_centivolts = 1305,
                                  .page_length = 7,
                                  .pulse_us = 200,
                                  .retries = 0,
                                  .program_mode = 1,
                                  .family = 2,
                                  .clear = host::clear_choice::none,
                                  .note = 130,
                                  .vcc_high = 9,
                                  .option_0 = 1,
                                  .option_1 = 2,
                                  .option_2 = 3,
                                  .option_3 = 4};
    for (const host::device_preset& one : {odd, eprom}) {
        EXPECT_FALSE(find_wrong_field(texts_of(one), [](const std::string&) { return false; }));
        EXPECT_EQ(device_of(texts_of(one), one.clear), one);
    }
    EXPECT_EQ(texts_of(odd).at("words"), "0x1234");
    EXPECT_EQ(texts_of(odd).at("buffer-bytes"), "0x8000");
}

TEST(device_fields, follow_the_length_with_the_buffer_unless_it_has_a_size_of_its_own)
{
    EXPECT_EQ(texts_of(eprom).at("buffer-bytes"), "");
    field_texts texts = texts_of(eprom);
    texts["words"] = "0x200";
    EXPECT_EQ(device_of(texts, eprom.clear).buffer_bytes, 0x200);
}

TEST(device_fields, that_are_wrong_are_named_with_what_they_take)
{
    EXPECT_EQ(wrong("word-bytes", "300"), "word-bytes: a number from 1 to 255");
    EXPECT_EQ(wrong("word-bytes", "0"), "word-bytes: a number from 1 to 255");
    EXPECT_EQ(wrong("vpp", "12.345"), "vpp: a number from 0.00 to 327.67");
    EXPECT_EQ(wrong("pins", "many"), "pins: a number from 0 to 32767");
    EXPECT_EQ(wrong("option-3", "256"), "option-3: a number from 0 to 255");
    EXPECT_EQ(wrong("maker", "A # B"), "maker: a text without #");
    EXPECT_EQ(wrong("buffer-bytes", "0xFF"), "buffer-bytes: at least 256");
    EXPECT_EQ(wrong("buffer-bytes", "0x100"), "");
}

TEST(device_fields, take_no_length_of_0_and_none_that_no_buffer_holds)
{
    for (const char* none : {"0", "0x0", ""}) EXPECT_EQ(wrong("words", none), "words: a number from 1 on") << none;
    EXPECT_EQ(wrong("words", "1"), "");
    EXPECT_EQ(wrong("words", "0x7FFFFFFF"), "words: less than 2 GiB");
}

TEST(device_fields, take_a_name_that_no_other_device_has)
{
    EXPECT_EQ(wrong("name", ""), "name: a name");
    EXPECT_EQ(wrong("name", "A#1"), "name: a text without #");
    EXPECT_EQ(wrong("name", "27C64"), "name: a name that no other device has");
    EXPECT_EQ(wrong("name", "27C65"), "");
}

TEST(device_fields, that_are_wrong_are_found_from_the_first_one_on)
{
    field_texts texts = texts_of(eprom);
    texts["retries"] = "x";
    texts["words"] = "0";
    texts["pins"] = "x";
    const auto is_taken = [](const std::string&) { return false; };
    EXPECT_EQ(find_wrong_field(texts, is_taken)->key, "words");
    texts["words"] = "1";
    EXPECT_EQ(find_wrong_field(texts, is_taken)->key, "pins");
}

TEST(device_fields, are_all_explained_in_words_of_their_own)
{
    std::map<std::string, std::string> keys;
    for (const field_group group : all_groups)
        for (const device_field& field : fields_of(group)) EXPECT_TRUE(keys.emplace(field.help, field.key).second);
    EXPECT_EQ(keys.size(), 23u);
}
