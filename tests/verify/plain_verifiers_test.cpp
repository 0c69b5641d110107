#include "verify/plain_verifiers.h"
#include "verify/random_files.h"
#include "verify/verify_fixture.h"

#include <gtest/gtest.h>

namespace tamrix::tests {
namespace {

using plain_routine = plain_reading (*)(const std::string&);
using random_routine = random_file (*)(std::mt19937&);

struct both {
    const char* format;
    plain_routine plainly;
    random_routine make;
};

class plain_verifiers : public testing::TestWithParam<both> {
protected:
    void compare(const std::string& content) const
    {
        const plain_reading plain = GetParam().plainly(content);
        const reading read = verify(GetParam().format, content);
        ASSERT_EQ(read.lines(), plain.lines) << content << read.remarks();
        ASSERT_EQ(read.bytes, plain.bytes) << content;
        std::uint64_t in_segments = 0;
        for (const memory_segment& one : read.found.segments.all()) in_segments += one.length;
        ASSERT_EQ(in_segments, plain.bytes.size()) << content;
    }
};

TEST_P(plain_verifiers, agree_on_sound_files)
{
    std::mt19937 random{1};
    for (int i = 0; i < 300; ++i) {
        const random_file file = GetParam().make(random);
        ASSERT_EQ(verify(GetParam().format, file.content).remarks(), "") << file.content;
        ASSERT_EQ(verify(GetParam().format, file.content).bytes, file.bytes);
        compare(file.content);
    }
}

TEST_P(plain_verifiers, agree_on_damaged_files)
{
    std::mt19937 random{2};
    for (int i = 0; i < 1500; ++i) {
        compare(damaged_text(GetParam().make(random).content, random));
        if (HasFatalFailure()) return;
    }
}

TEST_P(plain_verifiers, agree_wherever_a_block_of_the_source_ends)
{
    std::mt19937 random{3};
    for (int i = 0; i < 100; ++i) {
        const std::string content = damaged_text(GetParam().make(random).content, random);
        const reading at_once = verify(GetParam().format, content);
        for (const std::size_t step : {1, 7, 64}) {
            const reading read = verify(GetParam().format, content, step);
            ASSERT_EQ(read.remarks(), at_once.remarks()) << content;
            ASSERT_EQ(read.bytes, at_once.bytes);
        }
    }
}

/// Longer than a block, so that its end is at any place of a line.
TEST_P(plain_verifiers, agree_on_files_of_many_blocks)
{
    std::mt19937 random{4};
    const bool intel = std::string_view{GetParam().format} == "intel";
    std::string content;
    for (unsigned address = 0; address < 0x8000; address += 16) {
        content += (intel ? intel_record(0, address, counted(16)) : motorola_record(1, address, counted(16))) + "\r\n";
    }
    const std::string end = (intel ? intel_record(1, 0, {}) : motorola_record(9, 0, {})) + "\r\n";
    for (int i = 0; i < 6; ++i) {
        std::string blanks;
        for (int line = 0; line < 5; ++line) blanks += std::string(random() % 40'000, ' ') + "\n";
        compare(blanks + damaged_text(blanks + content + end, random));
        if (HasFatalFailure()) return;
    }
}

INSTANTIATE_TEST_SUITE_P(of, plain_verifiers,
                         testing::Values(both{"intel", read_intel_plainly, random_intel_file},
                                         both{"motorola", read_motorola_plainly, random_motorola_file}),
                         [](const auto& info) { return std::string{info.param.format}; });

}  // namespace
}  // namespace tamrix::tests
