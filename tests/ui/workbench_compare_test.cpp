// The buffer beside a file, worked by keyboard alone.
#include "programs_fixture.h"

#include <gmock/gmock.h>

using namespace tamrix::tests;
using testing::EndsWith;
using testing::HasSubstr;

namespace {

constexpr const char* views = "^Buffer and other.hex$";

class workbench_compares : public programs {
protected:
    program workbench{"tamrix-workbench", {"--device", "27C64", file("demo.hex")}, settings()};

    workbench_compares()
    {
        workbench.focus("Load A File To Buffer");
        workbench.press("Return");
        workbench.focus("^demo.hex.*tamrix workbench");
    }
    static void choose(program& workbench, const std::string& path)
    {
        workbench.press("alt+e w");
        workbench.focus("^Compare with File$");
        workbench.type(path);
        workbench.press("Return");
    }
    static void close(program& workbench)
    {
        workbench.press("Escape");
        EXPECT_TRUE(comes_true_within_ten_seconds([&] { return workbench.shown(views) == 0; }));
        workbench.focus("^demo.hex.*tamrix workbench");
    }
    /// How many pixels of the left and the right half have the ink of a difference.
    static std::pair<int, int> different_pixels(const program& workbench)
    {
        const picture seen = workbench.look_at(views);
        std::pair<int, int> found;
        for (int y = 0; y < seen.height; ++y) {
            for (int x = 0; x < seen.width; ++x) {
                if (seen.colour(x, y) == 0xB03C00) ++(x < seen.width / 2 ? found.first : found.second);
            }
        }
        return found;
    }
};

}  // namespace

TEST_F(workbench_compares, and_shows_the_bytes_that_differ_in_both_views)
{
    std::ofstream{folder / "other.hex"} << ":06000000000102AA040544\n:02000C000C0DD9\n:01300000557A\n:00000001FF\n";
    choose(workbench, file("other.hex"));
    workbench.focus(views);
    const auto [left, right] = different_pixels(workbench);
    EXPECT_GT(left, 0);
    EXPECT_GT(right, 0);
    workbench.press("alt+Down alt+Down alt+Down");  // to the byte above the buffer, many rows below
    EXPECT_TRUE(comes_true_within_ten_seconds([&] { return different_pixels(workbench) == std::pair{0, 0}; }));
    workbench.press("alt+Up alt+Up alt+Up");
    EXPECT_TRUE(comes_true_within_ten_seconds([&] { return different_pixels(workbench).second > 0; }));
    workbench.type("FF");  // for reading only
    close(workbench);
    EXPECT_TRUE(buffer(4) == std::string("\0\1\2\3", 4));
    EXPECT_THAT(log_of(workbench), EndsWith("Compared with " + file("other.hex") +
                                            ": 1 byte differs at 1 place; 8184 bytes only in the buffer; 1 byte only "
                                            "in the file\n"));
    quit(workbench);
}

TEST_F(workbench_compares, only_after_the_person_accepts_the_damage_of_the_file)
{
    std::ofstream{folder / "other.hex"} << ":0100000011EE\n:01000100G1ED\n:00000001FF\n";
    choose(workbench, file("other.hex"));
    workbench.focus("^Damaged File$");
    workbench.press("Escape");
    workbench.focus("^demo.hex.*tamrix workbench");
    EXPECT_EQ(workbench.shown(views), 0);
    EXPECT_THAT(log_of(workbench), EndsWith(": not compared\n"));
    workbench.focus("^demo.hex.*tamrix workbench");
    choose(workbench, file("other.hex"));
    workbench.focus("^Damaged File$");
    workbench.press("alt+y");
    workbench.focus(views);
    close(workbench);
    quit(workbench);
}

TEST_F(workbench_compares, no_file_of_a_logic_device)
{
    std::ofstream{folder / "fuses.jed"} << fuse_file("", "0101");
    choose(workbench, file("fuses.jed"));
    workbench.focus("^The file cannot be compared$");
    workbench.press("Return");
    workbench.focus("^demo.hex.*tamrix workbench");
    EXPECT_THAT(log_of(workbench), HasSubstr("has no bytes: it is a file of a logic device."));
    quit(workbench);
}
