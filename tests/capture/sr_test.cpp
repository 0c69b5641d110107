#include "capture/capture_bench.h"

#include <map>

#include <zip.h>

namespace tamrix::tests {
namespace {

using namespace capture;

class sr : public capture_bench {
protected:
    using entries = std::map<std::string, std::string>;
    static entries sound()
    {
        return {{"version", "2"},
                {"metadata", "[device 1]\ncapturefile=logic-1\ntotal probes=2\nsamplerate=1 MHz\nprobe1=A\nprobe2=B\n"
                             "unitsize=1\n"},
                {"logic-1", std::string("\1\2\3", 3)}};
    }
    static entries with(const std::string& name, const std::string& content)
    {
        entries all = sound();
        all[name] = content;
        return all;
    }
    static entries with_setting(const std::string& old, const std::string& fresh)
    {
        entries all = sound();
        auto& text = all["metadata"];
        text.replace(text.find(old), old.size(), fresh);
        return all;
    }
    std::string zipped(const entries& all)
    {
        const std::string path = folder.path("made.sr");
        zip_t* const archive = zip_open(path.c_str(), ZIP_CREATE | ZIP_TRUNCATE, nullptr);
        for (const auto& [name, content] : all) {
            zip_file_add(archive, name.c_str(), zip_source_buffer(archive, content.data(), content.size(), 0), 0);
        }
        EXPECT_EQ(zip_close(archive), 0);
        return read_text(path);
    }
    std::string fault(const entries& all) { return fault_of(zipped(all), file_format::sr); }
};

TEST_F(sr, holds_random_captures)
{
    std::mt19937 random{40};
    for (int round = 0; round < 100; ++round) {
        auto made = random_recording(random, random() % 3000, 1 + random() % 8);
        made.head.period = sample_period::of_hertz(1 + random() % 100'000'000);
        made.head.names[0] = "a\\b=c";
        const auto loaded = read(write(made, "a.sr", file_format::sr), file_format::sr);
        ASSERT_EQ(loaded.samples, made.samples);
        ASSERT_EQ(loaded.head.names, made.head.names);
        ASSERT_EQ(loaded.head.period, made.head.period);
    }
}

TEST_F(sr, is_read_in_one_piece_or_in_several)
{
    EXPECT_EQ(fault(sound()), "");
    entries pieces = sound();
    pieces.erase("logic-1");
    for (int i = 1; i <= 11; ++i) pieces["logic-1-" + std::to_string(i)] = std::string(1, static_cast<char>(i));
    const auto loaded = read(folder.write("a.sr", zipped(pieces)), file_format::sr);
    EXPECT_EQ(loaded.samples, (std::vector<std::uint8_t>{1, 2, 3, 0, 1, 2, 3, 0, 1, 2, 3}));
}

TEST_F(sr, that_is_damaged_says_why)
{
    EXPECT_EQ(fault_of("no zip", file_format::sr),
              ": no zip file, or a damaged one where a sigrok session was expected");
    EXPECT_EQ(fault(with("version", "3")), ": version \"3\" where 2 was expected");
    EXPECT_EQ(fault({{"version", "2"}}), ": no entry metadata where a sigrok session was expected");
    EXPECT_EQ(fault(with_setting("1 MHz", "0 Hz")), ": rate \"0 Hz\" where a rate above 0 was expected");
    EXPECT_EQ(fault(with_setting("probes=2", "probes=10000")), ": total probes \"10000\" where 1 to 1024 was expected");
    EXPECT_EQ(fault(with_setting("probes=2", "probes=9")),
              ": 9 channels where at most 8 for each byte of unitsize 1 was expected");
    EXPECT_EQ(fault(with_setting("unitsize=1", "unitsize=0")), ": unitsize \"0\" where 1 to 128 was expected");
    EXPECT_EQ(fault(with_setting("unitsize=1", "unitsize=2")),
              ": logic-1 of 3 bytes where a multiple of 2 was expected");
    EXPECT_EQ(fault(with_setting("=logic-1", "=../outside")),
              ": capturefile \"../outside\" where the name of an entry was expected");
    EXPECT_EQ(fault(with_setting("=logic-1", "=logic-2")), ": no entry \"logic-2\" where the samples was expected");
    EXPECT_EQ(fault(with("metadata", std::string(2 << 20, ' '))),
              ": metadata of 2097152 bytes where at most 1048576 was expected");
    EXPECT_EQ(fault(with("logic-1", std::string(20 << 20, '\0'))), "more than 16777216 samples");
}

TEST_F(sr, that_announces_more_than_it_has_is_refused)
{
    std::string content = zipped(sound());
    // The length in the list at the end of the archive, where the entry's name comes 22 bytes after it.
    const std::size_t name = content.rfind("logic-1");
    for (std::size_t i = 0; i < 4; ++i) content[name - 22 + i] = static_cast<char>(0xFE);
    EXPECT_NE(fault_of(content, file_format::sr), "");
    content.resize(content.size() / 2);
    EXPECT_NE(fault_of(content, file_format::sr), "");
}

}  // namespace
}  // namespace tamrix::tests
