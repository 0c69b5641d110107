#include "capture/capture_bench.h"

namespace tamrix::tests {
namespace {

using namespace capture;

class vcd : public capture_bench {
protected:
    static std::string text_of(const std::string& body)
    {
        return "$timescale 100 ns $end\n$var wire 1 ! A $end\n$var wire 3 bus B [2:0] $end\n$enddefinitions $end\n" +
               body;
    }
    recording read_body(const std::string& body, const reading_options& options = {})
    {
        return read(folder.write("body.vcd", text_of(body)), file_format::vcd, options);
    }
};

using samples = std::vector<std::uint8_t>;

TEST_F(vcd, has_a_token_a_line_all_initial_values_and_a_closing_time)
{
    const recording made{{{"P21", "a name"}, sample_period::of_text("3.5 us")}, {1, 1, 3, 3}};
    EXPECT_EQ(read_text(write(made, "a.vcd", file_format::vcd)),
              "$version tamrix $end\n$comment period 3.5 us $end\n$timescale 100 ns $end\n"
              "$scope module capture $end\n$var wire 1 ! P21 $end\n$var wire 1 \" a_name $end\n$upscope $end\n"
              "$enddefinitions $end\n#0\n$dumpvars\n1!\n0\"\n$end\n#70\n1\"\n#140\n");
}

TEST_F(vcd, is_read_by_tokens)
{
    const auto loaded = read_body("#0 $dumpvars 0! b101 bus $end #2\n1!\r\n#3\tb1 bus $comment #9 $end 0! #4");
    EXPECT_EQ(loaded.samples, (samples{10, 10, 11, 2}));
    EXPECT_EQ(loaded.head.names, (std::vector<std::string>{"A", "B[0]", "B[1]", "B[2]"}));
    EXPECT_EQ(loaded.head.period, sample_period::of_text("100 ns"));
}

TEST_F(vcd, without_a_closing_time_has_its_last_values_for_a_sample)
{
    EXPECT_EQ(read_body("#0 0! b000 bus #2 1! #5 b1x1 bus").samples, (samples{0, 0, 1, 1, 1, 11}));
    EXPECT_EQ(read_body("#0 0! b000 bus #2 1! #5").samples, (samples{0, 0, 1, 1, 1}));
}

TEST_F(vcd, begins_with_its_first_time)
{
    EXPECT_EQ(read_body("#1000000000 1! #1000000002 0! #1000000003").samples, (samples{1, 1, 0}));
}

TEST_F(vcd, says_how_many_values_are_no_levels)
{
    const auto source = open_capture(folder.write("x.vcd", text_of("#0 x! bz01 bus #1")), file_format::vcd);
    EXPECT_EQ(load_capture(*source).samples, (samples{2}));
    EXPECT_EQ(source->remarks(), std::vector<std::string>{"2 values are neither 0 nor 1; they are taken as 0"});
}

TEST_F(vcd, of_more_than_eight_channels_is_taken_with_a_choice)
{
    std::string text = "$timescale 1 us $end ";
    for (int i = 0; i < 16; ++i) text += "$var reg 1 c" + std::to_string(i) + " D" + std::to_string(i) + " $end ";
    const std::string path = folder.write("wide.vcd", text + "$enddefinitions $end #0 1c15 1c0 #1 1c9 #2");
    const auto first = open_capture(path, file_format::vcd);
    EXPECT_EQ(first->left_out().size(), 8u);
    EXPECT_EQ(first->left_out().front(), "D8");
    EXPECT_EQ(load_capture(*first).samples, (samples{1, 1}));
    const auto chosen = read(path, file_format::vcd, {{"D15", "D9"}, {}, {"up"}});
    EXPECT_EQ(chosen.samples, (samples{1, 3}));
    EXPECT_EQ(chosen.head.names, (std::vector<std::string>{"up", "D9"}));
    EXPECT_THROW(read(path, file_format::vcd, {{"D16"}, {}, {}}), file_error);
}

TEST_F(vcd, that_is_damaged_says_where_and_why)
{
    const auto fault = [&](const std::string& content) { return fault_of(content, file_format::vcd); };
    EXPECT_EQ(fault(""), ":1: end of the file where $enddefinitions was expected");
    EXPECT_EQ(fault("$date\nx"), ":2: end of the file where $end was expected");
    EXPECT_EQ(fault("boot\n"), ":1: \"boot\" where a section was expected");
    EXPECT_EQ(fault("$timescale 3 ns $end"),
              ":1: $timescale \"3 ns\" where 1, 10 or 100 and a unit from fs to s was expected");
    EXPECT_EQ(fault("$comment Acquisition with 8/8 channels at 0 Hz $end"),
              ":1: rate \"0 Hz\" where a rate above 0 was expected");
    EXPECT_EQ(fault("META samplerate: 0\n"), ":1: rate \"0\" where a rate above 0 was expected");
    EXPECT_EQ(fault("$var wire 10000 ! A $end"), ":1: 0 channels and 10000 more where at most 1024 was expected");
    EXPECT_EQ(fault("$var wire 1 ! $end"), ":1: $var \"wire 1 !\" where kind, size, code and name was expected");
    EXPECT_EQ(fault("$enddefinitions $end"), ": no channel");
    EXPECT_EQ(fault(text_of("#0 0! #1 2!")), ":5: value \"2\" where 0, 1, x or z was expected");
    EXPECT_EQ(fault(text_of("#0 0!\n#x")), ":6: time \"#x\" where a whole number was expected");
    EXPECT_EQ(fault(text_of("#7 0!\n#5")), ":6: time 5 where none before 7 was expected");
    EXPECT_EQ(fault(text_of("#0 0?")), ":5: value of \"?\" where a declared variable was expected");
    EXPECT_EQ(fault(text_of("#0 0! #1 1!\n#4294967297")),
              ":6: time 4294967297 where at most 4294967296 samples was expected");
    EXPECT_EQ(fault(text_of("#0 0! #1 1!\n#4294967295")), "more than 16777216 samples");
    EXPECT_EQ(fault(text_of("0!")), ":5: end of the file where a time was expected");
}

}  // namespace
}  // namespace tamrix::tests
