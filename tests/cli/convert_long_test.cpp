// Text files long enough that their size is estimated before they are loaded.
#include "cli/convert_fixture.h"

#include <algorithm>
#include <random>
#include <sstream>
#include <vector>

namespace tamrix::tests {

namespace {

/// 600 KiB, more than 1 MiB as text; no byte is 0xFF, so that a gap shows.
std::string long_image()
{
    std::mt19937 random{1};
    std::string image(600 << 10, '\0');
    for (char& byte : image) byte = static_cast<char>(random() % 255);
    return image;
}

std::vector<std::string> lines_of(const std::string& text)
{
    std::istringstream in{text};
    std::vector<std::string> lines;
    for (std::string line; std::getline(in, line);) lines.push_back(line + "\n");
    return lines;
}

std::string joined(const std::vector<std::string>& lines)
{
    std::string text;
    for (const std::string& line : lines) text += line;
    return text;
}

}  // namespace

class a_long_text_file : public convert_test, public testing::WithParamInterface<const char*> {
protected:
    a_long_text_file()
    {
        folder.write("image.bin", image);
        lines = lines_of(converted("image.bin", file));
    }
    std::string loaded(const std::vector<std::string>& content)
    {
        folder.write(file, joined(content));
        return converted(file, "loaded.bin");
    }

    const std::string image = long_image();
    const std::string file = std::string{"in."} + GetParam();
    std::vector<std::string> lines;
};

TEST_P(a_long_text_file, is_loaded_whole) { EXPECT_TRUE(loaded(lines) == image); }

TEST_P(a_long_text_file, may_have_its_highest_addresses_in_the_middle)
{
    // The second half, which for Intel HEX begins with an address record, goes before the first.
    const bool intel = file == "in.hex";
    const auto starts_part = [&](const std::string& line) { return !intel || line.starts_with(":02000004"); };
    const auto middle =
        std::find_if(lines.begin() + static_cast<std::ptrdiff_t>(lines.size() / 2), lines.end(), starts_part);
    ASSERT_NE(middle, lines.end());
    std::vector<std::string> turned{middle, lines.end() - 1};
    turned.insert(turned.end(), lines.begin(), middle);
    turned.push_back(lines.back());
    EXPECT_TRUE(loaded(turned) == image);
}

TEST_P(a_long_text_file, may_begin_with_its_highest_address)
{
    const bool intel = file == "in.hex";
    lines.insert(lines.begin(),
                 intel ? ":02000004000AF0\r\n:01000000AA55\r\n:020000040000FA\r\n" : "S2050A0000AA46\r\n");
    const std::string whole = loaded(lines);
    ASSERT_EQ(whole.size(), 0xA0001u);
    EXPECT_EQ(whole.back(), '\xAA');
    EXPECT_TRUE(whole.starts_with(image));
}

TEST_P(a_long_text_file, with_records_after_its_end_record_is_damaged_and_loads_up_to_there)
{
    const bool intel = file == "in.hex";
    lines.push_back(intel ? ":020000040F00EB\r\n" : "S3060F00000000EA\r\n");
    if (intel) lines.push_back(":0100000000FF\r\n");
    folder.write(file, joined(lines));
    EXPECT_THAT(convert({file, "none.bin"}).err, testing::HasSubstr("a line after the end record"));
    EXPECT_EQ(convert({file, "loaded.bin", "--accept-damage"}).status, 0);
    EXPECT_TRUE(read_text(folder.path("loaded.bin")) == image);
}

TEST_P(a_long_text_file, with_a_damaged_record_in_the_middle_fails_with_its_line)
{
    const auto middle = lines.size() / 2;
    lines[middle][lines[middle].size() - 10] = 'x';
    folder.write(file, joined(lines));
    const auto result = convert({file, "loaded.bin"});
    EXPECT_EQ(result.status, 1);
    EXPECT_THAT(result.err, testing::HasSubstr(file + ":" + std::to_string(middle + 1) + ": "));
}

TEST_P(a_long_text_file, tells_what_lies_behind_the_device)
{
    folder.write(file, joined(lines));
    const auto result = convert({file, "loaded.bin", "--device-words", "4096"});
    EXPECT_EQ(result.status, 0);
    EXPECT_THAT(result.err, testing::HasSubstr("reaches to 95FFF in the buffer"));
    EXPECT_TRUE(read_text(folder.path("loaded.bin")) == image.substr(0, 4096));
}

INSTANTIATE_TEST_SUITE_P(formats, a_long_text_file, testing::Values("hex", "s19"),
                         [](const auto& tested) { return std::string{tested.param}; });

TEST_F(convert_test, a_long_intel_hex16_file_with_the_longest_records_is_loaded_whole)
{
    constexpr std::size_t words = 255;
    constexpr char digits[] = "0123456789ABCDEF";
    const std::string image = long_image();
    std::string text;
    unsigned sum = 0;
    const auto put = [&](std::size_t value) {
        text += {digits[value >> 4 & 15], digits[value & 15]};
        sum += static_cast<unsigned>(value);
    };
    const auto put_record = [&](std::size_t count, std::size_t address, std::size_t type, std::string_view data) {
        text += ":";
        sum = 0;
        for (const std::size_t field : {count, address >> 8, address, type}) put(field & 0xFF);
        for (std::size_t i = 0; i < data.size(); ++i) put(static_cast<unsigned char>(data[i ^ 1]));
        put(0x100 - (sum & 0xFF));
        text += "\r\n";
    };
    for (std::size_t at = 0; at < image.size() / 2; at += words) {
        const std::string_view data = std::string_view{image}.substr(2 * at, 2 * words);
        const char segment[] = {static_cast<char>(at >> 16), 0};  // turned round, as words are
        put_record(2, 0, 4, {segment, 2});
        put_record(data.size() / 2, at & 0xFFFF, 0, data);
    }
    put_record(0, 0, 1, {});
    folder.write("in.hex", text);
    EXPECT_TRUE(converted("in.hex", "loaded.bin") == image);
}

}  // namespace tamrix::tests
