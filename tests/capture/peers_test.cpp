// Other tools hold the same samples: what is written here they read, and what they write is read here.
#include "capture/capture_bench.h"

namespace tamrix::tests {
namespace {

using namespace capture;

class capture_peers : public capture_bench {
protected:
    recording random_of_rate(std::mt19937& random, const sample_period& period, unsigned channels)
    {
        auto made = random_recording(random, 500 + random() % 1500, channels);
        made.head.period = period;
        return made;
    }
    /// As raw samples by the peer, a byte each for up to eight channels.
    std::vector<std::uint8_t> raw_by_sigrok(const std::string& input)
    {
        run("sigrok-cli " + input + " -O binary -o peer.bin");
        auto bytes = read_bytes(folder.path("peer.bin"));
        // The peer puts a line with the rate ahead of them.
        const std::string_view all{reinterpret_cast<const char*>(bytes.data()), bytes.size()};
        const std::size_t line = all.starts_with("META samplerate: ") ? all.find('\n') + 1 : 0;
        bytes.erase(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(line));
        return bytes;
    }
};

TEST_F(capture_peers, sigrok_reads_the_vcd_that_is_written)
{
    std::mt19937 random{30};
    for (unsigned channels = 1; channels <= 8; ++channels) {
        // In units of 100 ns, of which the peer takes one sample each.
        for (const unsigned units : {1u, 34u, 35u}) {
            const auto period = *sample_period::of_picoseconds(units * 100'000);
            const auto made = random_of_rate(random, period, channels);
            write(made, "own.vcd", file_format::vcd);
            EXPECT_EQ(raw_by_sigrok("-i own.vcd -I vcd:downsample=" + std::to_string(units)), made.samples)
                << channels << " " << units;
        }
    }
}

TEST_F(capture_peers, sigrok_reads_the_session_that_is_written)
{
    std::mt19937 random{33};
    for (unsigned channels = 1; channels <= 8; ++channels) {
        const auto made = random_of_rate(random, *sample_period::of_hertz(294117), channels);
        write(made, "own.sr", file_format::sr);
        EXPECT_EQ(raw_by_sigrok("-i own.sr"), made.samples) << channels;
    }
    run("sigrok-cli --show -i own.sr");
    EXPECT_NE(read_text(folder.path("said")).find("Samplerate: 294117\nChannels: 8\n- P21: logic"), std::string::npos);
}

TEST_F(capture_peers, vcd2fst_reads_the_vcd_that_is_written)
{
    std::mt19937 random{31};
    for (const char* const text : {"3.5 us", "100 ns", "1/3000000 s", "1/7 s", "12 ps"}) {
        const auto made = random_of_rate(random, *sample_period::of_text(text), 1 + random() % 8);
        write(made, "own.vcd", file_format::vcd);
        run("vcd2fst own.vcd own.fst && fst2vcd own.fst -o back.vcd");
        const auto loaded = read(folder.path("back.vcd"), file_format::vcd, {{}, made.head.period, {}});
        EXPECT_EQ(loaded.samples, made.samples) << text;
        EXPECT_EQ(loaded.head.names, made.head.names);
    }
}

constexpr std::uint64_t rates[] = {1000, 12500, 285714, 294118, 1'000'000, 3'000'000, 24'000'000, 100'000'000};

/// Random samples of up to 16 channels through the peer, which writes them as `output`; then they are read here.
class sigrok_files : public capture_peers, public testing::WithParamInterface<const char*> {};

TEST_P(sigrok_files, of_several_rates_and_channels_are_read_byte_for_byte)
{
    const std::string word = GetParam();
    const file_format format = *format_of_word(word);
    std::mt19937 random{32};
    for (const std::uint64_t rate : rates) {
        const unsigned channels = 1 + random() % 16;
        const unsigned bytes = channels > 8 ? 2 : 1;
        const auto low = random_capture(random, 1500), high = random_capture(random, 1500);
        std::vector<std::uint8_t> raw, expected;
        for (std::size_t i = 0; i < low.size(); ++i) {
            raw.push_back(low[i]);
            if (bytes > 1) raw.push_back(high[i]);
            expected.push_back(static_cast<std::uint8_t>(low[i] & ((1u << std::min(channels, 8u)) - 1)));
        }
        folder.write("in.bin", raw);
        std::filesystem::remove(folder.path("peer." + word));
        run("sigrok-cli -i in.bin -I binary:numchannels=" + std::to_string(channels) +
            ":samplerate=" + std::to_string(rate) + (word == "sr" ? "" : " -O " + word) + " -o peer." + word);
        const auto source = open_capture(folder.path("peer." + word), format);
        EXPECT_EQ(load_capture(*source).samples, expected) << channels << " channels, " << rate << " Hz";
        EXPECT_EQ(source->head().period, sample_period::of_hertz(rate));
        EXPECT_EQ(source->left_out().size(), channels > 8 ? channels - 8 : 0);
    }
}

INSTANTIATE_TEST_SUITE_P(all, sigrok_files, testing::Values("vcd", "csv", "sr"),
                         [](const auto& info) { return std::string{info.param}; });

}  // namespace
}  // namespace tamrix::tests
