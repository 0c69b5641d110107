// Every kind of address and line beside srec_cat and objcopy: what we make of a file is what they make of it.
#include "cli/convert_fixture.h"

#include <random>
#include <sstream>

namespace tamrix::tests {

namespace {

struct kind_of_file {
    const char* name;
    const char* peer;         // the format for srec_cat
    const char* other;        // and for objcopy
    const char* length;       // of addresses in bytes, for srec_cat
    std::uint64_t addresses;  // below this
};

constexpr kind_of_file kinds[] = {
    {"intel_16_bits", "-intel", "ihex", "2", 0x10000},
    {"intel_20_bits", "-intel", "ihex", "3", 0x100000},
    {"intel_32_bits", "-intel", "ihex", "4", 0x100000000},
    {"motorola_16_bits", "-motorola", "srec", "2", 0x10000},
    {"motorola_24_bits", "-motorola", "srec", "3", 0x1000000},
    {"motorola_32_bits", "-motorola", "srec", "4", 0x100000000},
};

/// Where microcontrollers have something.
constexpr std::uint64_t known_places[] = {0x08000000, 0x10001000, 0x1D000000, 0x1FFFF800,
                                          0x20000000, 0x80000000, 0x9D000000, 0xFFFF0000};

std::string hex(std::uint64_t value)
{
    std::ostringstream text;
    text << "0x" << std::hex << value;
    return text.str();
}

/// What is done to the lines of a file without a change of what it holds.
struct kind_of_lines {
    const char* name;
    std::string (*change)(const std::string&);
};

std::string each_line(const std::string& text, const std::string& end, const std::string& between = "")
{
    std::istringstream lines{text};
    std::string made;
    for (std::string line; std::getline(lines, line);) {
        if (line.ends_with('\r')) line.pop_back();
        made += line + end + between;
    }
    return made;
}

const kind_of_lines lines[] = {
    {"lf", [](const std::string& text) { return each_line(text, "\n"); }},
    {"cr_lf", [](const std::string& text) { return each_line(text, "\r\n"); }},
    {"blank_lines", [](const std::string& text) { return each_line(text, "\n", "\n"); }},
    {"no_last_line_end", [](const std::string& text) { return text.substr(0, text.find_last_not_of("\r\n") + 1); }},
};

}  // namespace

class matrix : public convert_test, public testing::WithParamInterface<kind_of_file> {
protected:
    matrix()
    {
        folder.write("noise.bin", [this] {
            std::string bytes(4096, '\0');
            for (char& byte : bytes) byte = static_cast<char>(random_());
            return bytes;
        }());
    }

    /// Two to five islands, made by srec_cat.
    void make_file()
    {
        const auto& kind = GetParam();
        std::vector<std::string> words{"srec_cat"};
        const std::uint64_t islands = 2 + random_() % 4, part = kind.addresses / islands;
        for (std::uint64_t i = 0; i < islands; ++i) {
            const std::uint64_t length = 1 + random_() % 300;
            std::uint64_t place = i * part + random_() % std::min<std::uint64_t>(part - 400, 0x20000);
            if (kind.addresses > 0x1000000) {
                const std::uint64_t known = known_places[(i * 2 + random_() % 2) % std::size(known_places)];
                if (i > 0) place = known + random_() % 0x100;
            }
            for (const std::string& word :
                 {std::string{"("}, std::string{"noise.bin"}, std::string{"-binary"}, std::string{"-crop"},
                  std::string{"0"}, std::to_string(length), std::string{"-offset"}, hex(place), std::string{")"}})
                words.push_back(word);
        }
        for (const std::string word : {"-o", "made.txt", kind.peer, "-address-length", kind.length,
                                       "-execution-start-address=0", "-line-length=76"})
            words.push_back(word);
        const auto made = run_program(words, there_);
        ASSERT_EQ(made.status, 0) << made.err;
    }
    /// The same data in one form, by srec_cat.
    std::string plain(const std::string& file, const std::string& format)
    {
        const auto made = run_program({"srec_cat", file, format, "-o", "plain.s", "-motorola", "-address-length=4",
                                       "-disable=header", "-disable=execution-start-address"},
                                      there_);
        EXPECT_EQ(made.status, 0) << made.err;
        return read_text(folder.path("plain.s"));
    }

    std::mt19937 random_{GetParam().addresses == 0 ? 1u : static_cast<unsigned>(GetParam().addresses >> 4)};
    const command_setting there_{.folder = folder.path("")};
};

TEST_P(matrix, holds_the_same_data_for_all_three_tools)
{
    const auto& kind = GetParam();
    for (int run = 0; run < 3; ++run) {
        make_file();
        const std::string expected = plain("made.txt", kind.peer);
        const std::string text = read_text(folder.path("made.txt"));
        for (const kind_of_lines& changed : lines) {
            folder.write("changed.txt", std::string_view{changed.change(text)});
            for (const auto& [out, format] : {std::pair{"out.hex", "-intel"}, std::pair{"out.s37", "-motorola"}}) {
                const auto result = convert({"changed.txt", out});
                ASSERT_EQ(result.status, 0) << changed.name << ": " << result.err << text;
                EXPECT_EQ(plain(out, format), expected) << changed.name << " " << out;
            }
        }
        ASSERT_EQ(run_program({"objcopy", "-I", kind.other, "-O", "srec", "made.txt", "other.s"}, there_).status, 0);
        EXPECT_EQ(plain("other.s", "-motorola"), expected);
    }
}

/// Intended differences: a file that one of the tools takes and we do not, or the other way round.
TEST_P(matrix, differs_in_what_is_no_record_of_the_format)
{
    const auto& kind = GetParam();
    const bool intel = std::string_view{kind.other} == "ihex";
    make_file();
    const std::string text = read_text(folder.path("made.txt"));
    const auto all_take = [&](const std::string& changed) {
        folder.write("changed.txt", std::string_view{changed});
        const bool own = convert({"changed.txt", "out.hex"}).status == 0;
        const bool srec =
            run_program({"srec_cat", "changed.txt", kind.peer, "-o", "peer.s", "-motorola"}, there_).status == 0;
        const bool objcopy =
            run_program({"objcopy", "-I", kind.other, "-O", "srec", "changed.txt", "peer.s"}, there_).status == 0;
        return std::string{own ? "own " : ""} + (srec ? "srec_cat " : "") + (objcopy ? "objcopy" : "");
    };
    // A bit turns a mark of a record into that of a comment, so we take none in Intel HEX; objcopy takes none anywhere.
    EXPECT_EQ(all_take("# a comment\n" + text), "srec_cat ");
    // Control-Z ended text files once. objcopy stops there in silence, srec_cat knows it at the begin of a line.
    EXPECT_TRUE(all_take(text + "\x1A").starts_with("own "));
    // Without its end a file may be cut off. The count of the records is an end, too.
    const std::string cut = text.substr(0, text.rfind(intel ? ":00000001FF" : "\nS5") + (intel ? 0 : 1));
    EXPECT_EQ(all_take(cut), "srec_cat objcopy");
}

INSTANTIATE_TEST_SUITE_P(of, matrix, testing::ValuesIn(kinds),
                         [](const auto& tested) { return std::string{tested.param.name}; });

}  // namespace tamrix::tests
