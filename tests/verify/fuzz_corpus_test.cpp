// Replays the first examples of the fuzz target and everything that it ever found: a byte for the format, one for the
// source's pace, then the file.
#include "support/temp_files.h"
#include "verify/verify_fixture.h"

#include <gtest/gtest.h>

namespace tamrix::tests {
namespace {

int replay_examples(const std::string& kind)
{
    constexpr const char* names[] = {"binary", "intel", "motorola", "tektronix", "holtek", "emc", "intel16", "texas"};
    int examples = 0;
    const std::filesystem::path folder = std::filesystem::path{TAMRIX_FUZZ_FOLDER} / kind / "verify";
    if (!std::filesystem::exists(folder)) return 0;
    for (const auto& entry : std::filesystem::directory_iterator{folder}) {
        SCOPED_TRACE(entry.path());
        const std::string input = read_text(entry.path().string());
        const char* const format = names[static_cast<unsigned char>(input.at(0)) % std::size(names)];
        const std::size_t pace = static_cast<unsigned char>(input.at(1)) + std::size_t{1};
        const reading slow = verify(format, input.substr(2), pace), fast = verify(format, input.substr(2));
        EXPECT_EQ(slow.remarks(), fast.remarks());
        EXPECT_EQ(slow.bytes, fast.bytes);
        ++examples;
    }
    return examples;
}

TEST(verify_corpus, has_an_example_of_every_format) { EXPECT_GE(replay_examples("seeds"), 8); }

TEST(verify_corpus, stays_mended_where_something_was_found) { replay_examples("found"); }

}  // namespace
}  // namespace tamrix::tests
