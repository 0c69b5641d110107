#include "capture/capture_bench.h"

namespace tamrix::tests {
namespace {

using namespace capture;

class capture_files : public capture_bench {};

TEST_F(capture_files, hold_random_captures)
{
    std::mt19937 random{20};
    for (int round = 0; round < 300; ++round) {
        const auto made = random_recording(random, random() % 3000, 1 + random() % 8);
        for (const file_format format : {file_format::raw, file_format::vcd, file_format::csv}) {
            reading_options options;
            if (format == file_format::raw) options = {{}, made.head.period, made.head.names};
            const auto loaded = read(write(made, "capture", format), format, options);
            ASSERT_EQ(loaded.samples, made.samples) << made.head.period->text();
            ASSERT_EQ(loaded.head.names, made.head.names);
            ASSERT_EQ(loaded.head.period, made.head.period);
        }
    }
}

TEST_F(capture_files, longer_than_a_piece_are_whole)
{
    std::mt19937 random{21};
    for (const std::size_t length : {std::size_t{1} << 18, (std::size_t{1} << 18) + 1, std::size_t{1'500'000}}) {
        const auto made = random_recording(random, length, 8);
        for (const file_format format : {file_format::raw, file_format::vcd, file_format::csv}) {
            EXPECT_EQ(read(write(made, "long", format), format).samples, made.samples);
        }
    }
}

TEST_F(capture_files, that_are_stopped_leave_the_old_content_and_nothing_else)
{
    std::mt19937 random{22};
    const auto made = random_recording(random, 2'000'000, 8);
    const std::string path = folder.write("kept", "old");
    for (const file_format format : {file_format::raw, file_format::vcd, file_format::csv}) {
        double share = 0;
        const auto half = [&](double now) { return (share = now) < 0.5; };
        EXPECT_THROW(write_capture(*source_of(made), path, format, half), stopped);
        EXPECT_LT(share, 0.9);
        EXPECT_EQ(read_text(path), "old");
    }
    EXPECT_THROW(write_capture(*source_of(made), path, file_format::sr, [](double) { return false; }), stopped);
    EXPECT_EQ(read_text(path), "old");
    const auto files = std::filesystem::directory_iterator{folder.path("")};
    EXPECT_EQ(std::distance(begin(files), end(files)), 1);
}

TEST_F(capture_files, that_have_times_need_a_period)
{
    const recording made{{{"A"}, {}}, {0, 1}};
    try {
        write(made, "none", file_format::vcd);
        FAIL();
    } catch (const file_error& error) {
        EXPECT_EQ(error.why().text(),
                  folder.path("none") + ": no time from one sample to the next where a period or a rate was expected");
    }
    EXPECT_FALSE(std::filesystem::exists(folder.path("none")));
}

TEST_F(capture_files, are_loaded_up_to_a_length)
{
    const recording made{{{"A"}, {}}, std::vector<std::uint8_t>(101)};
    EXPECT_NO_THROW(load_capture(*source_of(made), {}, 101));
    EXPECT_THROW(load_capture(*source_of(made), {}, 100), file_error);
    EXPECT_EQ(load_capture(*source_of(made, 90, 50)).samples.size(), 11u);
    EXPECT_EQ(load_capture(*source_of(made, 200)).samples.size(), 0u);
}

TEST_F(capture_files, say_their_format_by_extension_and_content)
{
    const auto format = [](std::string_view path, std::string_view head) {
        return format_of_file(path, {reinterpret_cast<const std::uint8_t*>(head.data()), head.size()});
    };
    EXPECT_EQ(format("a.VCD", ""), file_format::vcd);
    EXPECT_EQ(format("a.dump", "\n $date today"), file_format::vcd);
    EXPECT_EQ(format("a.bin", "$"), file_format::raw);
    EXPECT_EQ(format("a.zip", "PK\x03\x04"), file_format::sr);
    EXPECT_EQ(format("a.raw", "$date"), file_format::raw);
    EXPECT_EQ(format("a", ""), file_format::raw);
}

}  // namespace
}  // namespace tamrix::tests
