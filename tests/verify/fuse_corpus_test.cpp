// Replays the first examples of the fuzz targets for fuse files and SVF files, and what fuzzing ever found: a byte for
// the size of pieces, then the file.
#include "verify/jedec.h"
#include "verify/jedec_writer.h"
#include "verify/memory_reading.h"
#include "verify/svf.h"

#include <filesystem>
#include <fstream>
#include <iterator>

#include <gtest/gtest.h>

namespace tamrix::tests {
namespace {

std::vector<std::string> fed_to(const std::string& target)
{
    std::vector<std::string> all;
    for (const char* kind : {"seeds", "found"}) {
        const auto folder = std::filesystem::path{TAMRIX_FUZZ_FOLDER} / kind / target;
        if (!std::filesystem::exists(folder)) continue;
        for (const auto& entry : std::filesystem::directory_iterator{folder}) {
            std::ifstream file{entry.path(), std::ios::binary};
            all.emplace_back(std::istreambuf_iterator<char>{file}, std::istreambuf_iterator<char>{});
        }
    }
    return all;
}

TEST(fuse_corpus, of_jedec_files_is_read_alike_in_pieces_and_sound_ones_come_back)
{
    int sound = 0;
    for (const std::string& input : fed_to("verify_jedec")) {
        const std::string text = input.substr(1);
        piecemeal_source whole{text}, pieces{text, static_cast<unsigned char>(input[0]) + std::size_t{1}};
        const auto held = verify_jedec(whole, "file");
        EXPECT_EQ(texts_of(verify_jedec(pieces, "file")), texts_of(held));
        if (held.damaged()) continue;
        ++sound;
        const std::string written = jedec_file(held.map, 32);
        piecemeal_source from{written};
        const auto again = verify_jedec(from, "written");
        EXPECT_EQ(texts_of(again), texts{});
        EXPECT_EQ(again.map.fuses, held.map.fuses);
    }
    EXPECT_GE(sound, 2);
}

TEST(fuse_corpus, of_svf_files_is_read_alike_in_pieces)
{
    int sound = 0;
    for (const std::string& input : fed_to("verify_svf")) {
        const std::string text = input.substr(1);
        piecemeal_source whole{text}, pieces{text, static_cast<unsigned char>(input[0]) + std::size_t{1}};
        const auto held = verify_svf(whole, "file");
        EXPECT_EQ(texts_of(verify_svf(pieces, "file")), texts_of(held));
        if (!held.damaged()) ++sound;
    }
    EXPECT_GE(sound, 2);
}

}  // namespace
}  // namespace tamrix::tests
