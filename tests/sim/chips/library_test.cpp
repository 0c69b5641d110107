// The library file as a reader of it sees it: byte columns.
#include "chip_socket.h"
#include "chips/library.h"
#include "library_file.h"

#include <algorithm>

namespace tamrix::tests {
namespace {

TEST(library, it_holds_what_the_chips_of_today_give)
{
    const auto sets = sim::make_all_vectors(all_chips());
    EXPECT_TRUE(library() == sim::library_text(all_chips(), sets))
        << "run: tamrix-chips generate data/chips --out data/lib/test.lib --out data/lib1/test190.lib";
    std::size_t faults = 0, found = 0;
    for (std::size_t i = 0; i < sets.size(); ++i) {
        faults += sets[i].faults * (1 + all_chips()[i].aliases.size());
        found += sets[i].found * (1 + all_chips()[i].aliases.size());
    }
    EXPECT_GE(static_cast<double>(found), 0.99 * static_cast<double>(faults));
}

TEST(library, both_files_are_the_same)
{
    EXPECT_TRUE(library() == file_bytes(std::filesystem::path{TAMRIX_DATA_FOLDER} / "lib1" / "test190.lib"));
}

TEST(library, the_header_lists_every_device_in_order_and_no_name_inside_an_earlier_one)
{
    const auto lines = lines_of(library());
    const auto& header = lines.at(0);
    EXPECT_EQ(header.substr(0, 11), "$KSM0000000");
    EXPECT_LT(header.size(), 3000u);
    const auto count = std::stoul(header.substr(11, 4), nullptr, 16);
    EXPECT_GE(count, 150u);
    EXPECT_EQ(count, records().size());
    std::size_t at = 15;
    std::string before;
    for (std::size_t i = 0; i < count; ++i) {
        const auto length = static_cast<std::size_t>(header.at(at));
        const auto name = header.substr(at + 1, length);
        EXPECT_LT(before, name);
        EXPECT_EQ(header.find(name), at + 1) << name;
        EXPECT_EQ(records()[i].name, name);
        before = name;
        at += length + 1;
    }
    EXPECT_EQ(header.substr(at), "*");
    EXPECT_EQ(lines.back(), "end-ksm");
}

TEST(library, every_record_keeps_to_its_columns)
{
    for (const auto& line : lines_of(library())) {
        if (line[0] != '$' || line.substr(0, 4) == "$KSM") continue;
        const auto read = record_of(line);
        EXPECT_LE(line.size(), 3000u);
        EXPECT_EQ(line[15], '\2');
        ASSERT_EQ(line.size(), 18 + read.rows.size() * (read.pins + 1) + 1) << read.name;
        EXPECT_EQ(line.back(), '*');
        EXPECT_TRUE(!read.rows.empty() && read.rows.size() <= 254);
        for (std::size_t row = 0; row < read.rows.size(); ++row) {
            EXPECT_EQ(static_cast<std::size_t>(line[18 + row * (read.pins + 1)]), read.pins);
            EXPECT_EQ(read.rows[row].find_first_not_of("10HLCXZVG"), std::string::npos);
            EXPECT_EQ(std::ranges::count(read.rows[row], 'V'), 1);
            EXPECT_EQ(std::ranges::count(read.rows[row], 'G'), 1);
            EXPECT_EQ(read.rows[row].find('V'), read.rows[0].find('V'));
            EXPECT_EQ(read.rows[row].find('G'), read.rows[0].find('G'));
        }
    }
}

TEST(library, a_name_inside_an_earlier_one_is_refused)
{
    const std::string pins = "pins A B C GND Y Z NC VCC\nY = A & B\nZ = !C\n";
    const auto chips = sim::read_chips("chip 47400\n" + pins + "chip 7400\n" + pins, "x.chip");
    const auto sets = sim::make_all_vectors(chips);
    try {
        sim::library_text(chips, sets);
        FAIL();
    } catch (const sim::chip_error& failed) {
        EXPECT_STREQ(failed.what(), "x.chip:5: the name 7400 stands inside a name before it in the library");
    }
}

}  // namespace
}  // namespace tamrix::tests
