// Files of real compilers, with memories far apart.
#include "cli/convert_fixture.h"

#include <algorithm>
#include <filesystem>
#include <map>
#include <sstream>

namespace tamrix::tests {

namespace fs = std::filesystem;

namespace {

const std::string layouts = TAMRIX_SAMPLES "/layouts/";

std::vector<std::string> layout_files()
{
    std::vector<std::string> names;
    for (const auto& entry : fs::directory_iterator{layouts}) {
        if (entry.is_regular_file() && entry.path().extension() != ".sh") names.push_back(entry.path().filename());
    }
    std::ranges::sort(names);
    return names;
}

bool is_intel(const std::string& name) { return name.ends_with("hex") || name.ends_with("ihx"); }

/// Of the text that info prints.
std::string segments_in(const std::string& text)
{
    std::string found, only;
    std::istringstream lines{text};
    for (std::string line; std::getline(lines, line);) {
        if (line.starts_with("    0x")) found += (found.empty() ? "" : ", ") + line.substr(4, line.find(" (") - 4);
        if (line.starts_with("  data: ")) only = line.substr(line.find("0x"));
    }
    return found.empty() ? only : found;
}

}  // namespace

class layouts_test : public convert_test {
protected:
    /// S-records end with a start address, 0 where there is none, which srec_cat takes for one.
    std::string without_start_at_0(const std::string& name)
    {
        std::string text = read_text(folder.path(name));
        const std::string record = ":0400000500000000F7\n";
        if (const auto at = text.find(record); at != std::string::npos) text.erase(at, record.size());
        return text;
    }
};

TEST_F(layouts_test, are_sound_and_lie_where_their_makers_put_them)
{
    const std::map<std::string, std::string> segments{
        {"atmega1284p-boot.hex",
         "0x1F000 to 0x1F11F, 0x810000 to 0x810005, 0x820000 to 0x820002, 0x830000 to 0x830000"},
        {"atmega328p.hex", "0x0 to 0xF7, 0x810000 to 0x810005, 0x820000 to 0x820002, 0x830000 to 0x830000"},
        {"boot-flash.hex", "0x1D000000 to 0x1D00006E, 0x1D000800 to 0x1D000803, 0x9D000000 to 0x9D000007"},
        {"flash-and-option-bytes.hex", "0x8000000 to 0x800006E, 0x8001000 to 0x8001003, 0x1FFFF800 to 0x1FFFF807"},
        {"flash-and-settings.hex", "0x0 to 0x6A, 0x1000 to 0x1003, 0x10001000 to 0x10001007"},
        {"high-vectors.hex", "0xFFFF0000 to 0xFFFF008A, 0xFFFF0800 to 0xFFFF0803, 0xFFFFFFF0 to 0xFFFFFFF7"},
        {"attiny85.s19", "0x0 to 0x3D, 0x810000 to 0x810001, 0x820000 to 0x820002"},
        {"external-flash.s37", "0x80000000 to 0x8000006E, 0x80004000 to 0x80004003, 0x8000FFF0 to 0x8000FFF7"},
        {"in-ram.s37", "0x20000000 to 0x2000006A, 0x20000800 to 0x20000803, 0x20000F00 to 0x20000F07"},
        {"8051.ihx", "0x0 to 0x80"},
        {"stm8.ihx", "0x4000 to 0x4005, 0x4800 to 0x4804, 0x8000 to 0x8042"},
        {"z80.ihx", "0x100 to 0x11E"},
    };
    EXPECT_GE(segments.size(), 10u);
    EXPECT_EQ(layout_files().size(), segments.size());
    for (const auto& [name, expected] : segments) {
        const auto result = tamrix_command({"info", layouts + name});
        EXPECT_EQ(result.status, 0) << name;
        EXPECT_THAT(result.out, testing::HasSubstr("  damage: none\n")) << name;
        EXPECT_EQ(segments_in(result.out), expected) << name;
    }
}

/// srec_cat says what is in both files.
TEST_F(layouts_test, go_from_text_to_text_with_all_addresses_and_gaps)
{
    const command_setting there{.folder = folder.path("")};
    for (const std::string& name : layout_files()) {
        const std::string from = is_intel(name) ? "-intel" : "-motorola";
        ASSERT_EQ(run_program({"srec_cat", layouts + name, from, "-o", "expected.hex", "-intel"}, there).status, 0);
        for (const std::string out : {"out.hex", "out.s37"}) {
            ASSERT_EQ(convert({layouts + name, out}).status, 0) << name;
            const auto read = run_program(
                {"srec_cat", out, out == "out.hex" ? "-intel" : "-motorola", "-o", "found.hex", "-intel"}, there);
            ASSERT_EQ(read.status, 0) << read.err;
            EXPECT_EQ(without_start_at_0("found.hex"), without_start_at_0("expected.hex")) << name << " " << out;
        }
    }
}

TEST_F(layouts_test, become_the_binary_files_that_objcopy_makes_where_the_gaps_are_short)
{
    const command_setting there{.folder = folder.path("")};
    for (const std::string& name : layout_files()) {
        const auto result = convert({layouts + name, "own.bin"});
        if (result.status != 0) {
            EXPECT_THAT(result.err, testing::HasSubstr("with gaps of more than 16 MiB:")) << name;
            continue;
        }
        const std::string from = is_intel(name) ? "ihex" : "srec";
        ASSERT_EQ(run_program({"objcopy", "-I", from, "-O", "binary", "--gap-fill", "0xFF", layouts + name, "peer.bin"},
                              there)
                      .status,
                  0);
        EXPECT_TRUE(read_text(folder.path("own.bin")) == read_text(folder.path("peer.bin"))) << name;
    }
}

}  // namespace tamrix::tests
