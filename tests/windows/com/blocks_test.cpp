// The shared blocks as a host meets them that uses the system's calls alone.
#include "host_block.h"
#include "server.h"
#include "tamrix/blocks.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace tamrix::tests {
namespace {

/// What the second process says of these mappings.
std::string seen_from_outside(const std::vector<std::string>& names)
{
    std::string command = "tests_block_reader.exe";
    for (const std::string& name : names) command += " " + name;
    std::FILE* const answers = ::_popen(command.c_str(), "r");
    if (answers == nullptr) return "no second process";
    std::string text;
    for (char part[256]; std::fgets(part, sizeof part, answers) != nullptr;) text += part;
    ::_pclose(answers);
    return text;
}

std::size_t whole_pages(std::size_t bytes) { return (bytes + 4095) / 4096 * 4096; }

TEST(blocks, of_the_com_server_are_seen_by_a_second_process_with_their_names_and_sizes)
{
    const server dll;
    const client plug_in{dll};
    ASSERT_EQ(plug_in.call(L"bufcomopt", {value{short{7}}}).result, S_OK);
    const host_block buflength{"qorfanbuflength7", 40};
    *buflength.as<LONG>() = 100000;
    ASSERT_EQ(plug_in.call(L"buffercomopt", {value{short{7}}}).result, S_OK);

    std::vector<std::string> names;
    std::string expected;
    for (const auto& line : small_blocks) {
        names.push_back("qorfan" + std::string{line.name} + "7");
        expected += names.back() + " " + std::to_string(whole_pages(line.mapped_bytes)) + " " +
                    (line.name == "buflength" ? "100000" : "0") + "\n";
    }
    EXPECT_EQ(seen_from_outside(names), expected);
    EXPECT_EQ(seen_from_outside({"qorfanibuffer", "qorfanibuffer66"}),
              "qorfanibuffer " + std::to_string(whole_pages(102200)) + " 0\nqorfanibuffer66 4096 0\n");
    ASSERT_EQ(plug_in.call(L"freesharebufferopt").result, S_OK);
    EXPECT_EQ(seen_from_outside({"qorfanibuffer", "qorfanibuffer66"}), "qorfanibuffer -\nqorfanibuffer66 -\n");
}

TEST(blocks, carry_what_a_second_process_writes_to_the_plug_in_and_back)
{
    const server dll;
    const client plug_in{dll};
    ASSERT_EQ(plug_in.call(L"bufcomopt", {value{short{9}}}).result, S_OK);
    EXPECT_EQ(seen_from_outside({"qorfanbuflength9=5000", "qorfantlength9=8", "qorfanbuflength9"}),
              "qorfanbuflength9 4096 5000\nqorfantlength9 4096 8\nqorfanbuflength9 4096 5000\n");
    ASSERT_EQ(plug_in.call(L"buffercomopt", {value{short{9}}}).result, S_OK);
    std::ofstream{"in.jed", std::ios::binary} << "\x02QF8*F0*L00000 11010000*\x03";
    ASSERT_EQ(plug_in.call(L"readpldfile", {value{L"in.jed"}}).result, S_OK);
    const long first_fuses = '1' | '1' << 8 | '0' << 16 | '1' << 24;
    EXPECT_EQ(seen_from_outside({"qorfanibuffer"}), "qorfanibuffer 8192 " + std::to_string(first_fuses) + "\n")
        << "5000 bytes and the margin, in whole pages; a fuse a character";
    ASSERT_EQ(plug_in.call(L"freesharebufferopt").result, S_OK);
}

TEST(blocks, of_the_small_kind_live_until_the_library_goes_not_until_the_object_does)
{
    let_com_unload();
    std::size_t small_ones = 0;
    std::vector<std::string> names;
    for (const auto& line : small_blocks) names.push_back("qorfan" + std::string{line.name} + "11");
    const auto count_seen = [&] {
        const std::string seen = seen_from_outside(names);
        small_ones = 0;
        for (std::size_t at = 0; (at = seen.find(" 0\n", at)) != std::string::npos; ++at) ++small_ones;
        return small_ones;
    };
    {
        const server dll;
        {
            const client plug_in{dll};
            ASSERT_EQ(plug_in.call(L"bufcomopt", {value{short{11}}}).result, S_OK);
            EXPECT_EQ(count_seen(), 60u);
        }
        EXPECT_EQ(count_seen(), 60u);
    }
    EXPECT_EQ(count_seen(), 0u);
}

TEST(blocks, carry_fuses_and_texts_between_the_host_and_the_plug_in)
{
    const host_block buflength{"qorfanbuflength8", 40}, tlength{"qorfantlength8", 40},
        pagelength{"qorfanpagelength8", 40}, wtype{"qorfanwtype8", 40}, ibuffer{"qorfanibuffer", 3000};
    const server dll;
    const client plug_in{dll};
    ASSERT_EQ(plug_in.call(L"bufcomopt", {value{short{8}}}).result, S_OK);
    *buflength.as<LONG>() = 800;
    *tlength.as<LONG>() = 16;
    *pagelength.as<SHORT>() = 16;
    *wtype.as<BSTR>() = ::SysAllocString(L"Größe 電");
    ASSERT_EQ(plug_in.call(L"buffercomopt", {value{short{8}}}).result, S_OK);

    std::ofstream{"in.jed", std::ios::binary} << "\x02QF16*F0*L00000 1111000011110001*\x03";
    const value in{L"in.jed"}, out{L"out.jed"};
    EXPECT_EQ(plug_in.call(L"readpldfile", {in}).result, S_OK);
    EXPECT_EQ(std::string(ibuffer.as<char>(), 16), "1111000011110001");

    EXPECT_EQ(plug_in.call(L"writepldfile", {out}).result, S_OK);
    std::ifstream file{"out.jed", std::ios::binary};
    const std::string written{std::istreambuf_iterator<char>{file}, {}};
    EXPECT_NE(written.find("TYPE:Größe 電\r\n"), std::string::npos) << written;
    EXPECT_NE(written.find("1111000011110001"), std::string::npos) << written;
    EXPECT_EQ(std::wstring(*wtype.as<BSTR>()), L"Größe 電") << "reading leaves the host's text alone";
    ::SysFreeString(*wtype.as<BSTR>());
    *wtype.as<BSTR>() = nullptr;
}

}  // namespace
}  // namespace tamrix::tests
