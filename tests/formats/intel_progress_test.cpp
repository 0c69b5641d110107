// What the bar shows while an Intel file is read.
#include "formats/intel_fixture.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace tamrix::tests {
namespace {

using bytes_of = std::vector<std::uint8_t>;

TEST(read_intel, progress_shows_the_tenths_on_which_the_walk_stands)
{
    intel_fixture f;
    EXPECT_EQ(f.read(std::string(100, '-')), status::done);
    EXPECT_EQ(f.shell.progress(), (std::vector<double>{10, 20, 30, 40, 50, 60, 70, 80, 90, 100}));
    EXPECT_EQ(f.shell.pumps(), 0);
}

TEST(read_intel, a_record_that_jumps_over_a_tenth_does_not_show_it)
{
    intel_fixture f;
    const std::string text = "-----" + record(0, 0, bytes_of(30, 1)) + "----------------------";  // 100 characters
    ASSERT_EQ(text.size(), 100u);
    EXPECT_EQ(f.read(text), status::done);
    EXPECT_EQ(f.shell.progress(), (std::vector<double>{80, 90, 100}));
}

TEST(read_intel, progress_shows_the_tenths_inside_a_run_of_plain_records)
{
    std::string run;  // 100 records of 45 characters: every tenth begins with a record
    for (unsigned i = 0; i < 100; ++i) run += record(16 * i, 0, bytes_of(16, 1));
    ASSERT_EQ(run.size(), 4500u);
    const auto shown = [](const std::string& text) {
        intel_fixture f;
        EXPECT_EQ(f.read(text), status::done);
        return f.shell.progress();
    };
    const std::vector<double> all_tenths{10, 20, 30, 40, 50, 60, 70, 80, 90, 100};
    EXPECT_EQ(shown(run), all_tenths);
    EXPECT_EQ(shown("-" + run), all_tenths) << "on the line ends";
    EXPECT_EQ(shown("---" + run), std::vector<double>{}) << "inside the records, which are jumped over";
}

TEST(read_intel, a_file_below_ten_bytes_shows_no_progress)
{
    intel_fixture f;
    EXPECT_EQ(f.read("123456789"), status::done);
    EXPECT_TRUE(f.shell.progress().empty());
}

}  // namespace
}  // namespace tamrix::tests
