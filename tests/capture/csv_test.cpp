#include "capture/capture_bench.h"

namespace tamrix::tests {
namespace {

using namespace capture;

using levels = std::vector<std::uint8_t>;

class csv : public capture_bench {
protected:
    levels samples_of(const std::string& text) { return read(folder.write("a.csv", text), file_format::csv).samples; }
};

TEST_F(csv, has_a_row_a_change_and_one_at_the_end)
{
    const recording made{{{"P21", "a,name"}, sample_period::of_text("3.5 us")}, {1, 1, 3, 3}};
    EXPECT_EQ(read_text(write(made, "a.csv", file_format::csv)), "; period 3.5 us\nTime [s],P21,a_name\n"
                                                                 "0.0000000,1,0\n0.0000070,1,1\n0.0000140,1,1\n");
}

TEST_F(csv, is_read_with_times_or_a_row_a_sample)
{
    EXPECT_EQ(samples_of("; period 1 us\nTime [s],A,B\r\n0,1,0\r\n0.000002,0,1\r\n"), (levels{1, 1, 2}));
    EXPECT_EQ(samples_of("; period 1 us\nTime [s],A,B\n5,1,0\n5.000002,0,1\n5.000004,0,1"), (levels{1, 1, 2, 2}));
    EXPECT_EQ(samples_of("A,B\n1,0\n\n 0 ,1\n; remark\n0,1\n"), (levels{1, 2, 2}));
    EXPECT_EQ(samples_of("; period 1 us\nTime [s],A\n3,1\n"), (levels{1}));
    EXPECT_EQ(samples_of("A\n"), levels{});
}

TEST_F(csv, that_is_damaged_says_where_and_why)
{
    const auto fault = [&](const std::string& content) { return fault_of(content, file_format::csv); };
    EXPECT_EQ(fault(""), ":1: end of the file where a row with the names of the channels was expected");
    EXPECT_EQ(fault("0,1\n"), ":1: levels where a row with the names of the channels was expected");
    EXPECT_EQ(fault("; Samplerate: 0 Hz\nA\n1"), ":1: rate \"0 Hz\" where a rate above 0 was expected");
    EXPECT_EQ(fault("; period 0 us\nA\n1"), ":1: period \"0 us\" where one from 1 ps to 100 s was expected");
    EXPECT_EQ(fault("A,B\n1,0\n1,2\n"), ":3: level \"2\" where 0 or 1 was expected");
    EXPECT_EQ(fault("A,B\n1\n"), ":2: level \"\" where 0 or 1 was expected");
    EXPECT_EQ(fault("A,B\n1,1,1\n"), ":2: more cells than channels where 2 levels was expected");
    EXPECT_EQ(fault("Time [s],A\n0,1\n"),
              ": no time from one sample to the next where a period or a rate was expected");
    const std::string head = "; period 1 us\nTime [s],A\n";
    EXPECT_EQ(fault(head + "1e3,1\n"), ":3: time \"1e3\" where seconds with up to 15 decimals was expected");
    EXPECT_EQ(fault(head + "1,1\n0.5,1"), ":4: time \"0.5\" where none before the row above was expected");
    EXPECT_EQ(fault(head + "0,1\n4295,1"), ":4: time \"4295\" where at most 4294967296 samples was expected");
    EXPECT_EQ(fault(head + "0,1\n4294,1"), "more than 16777216 samples");
    std::string wide;
    for (int i = 0; i < 10000; ++i) wide += "c,";
    EXPECT_EQ(fault(wide + "c\n"), ":1: more than 1024 channels");
}

}  // namespace
}  // namespace tamrix::tests
