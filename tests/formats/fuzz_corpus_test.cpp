// Replays the first examples of the fuzz targets and everything that fuzzing ever found: eight bytes of choices, then
// the file.
#include "formats/formats.h"
#include "load_fixture.h"
#include "pld/jedec.h"
#include "pld/svf.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace tamrix::tests {
namespace {

constexpr std::size_t choices = 8;

/// Every reader of the folder `kind` with its files; there is one folder a reader.
std::vector<std::pair<std::string, std::string>> corpus(const std::string& kind)
{
    std::vector<std::pair<std::string, std::string>> all;
    const std::filesystem::path folder = std::filesystem::path{TAMRIX_FUZZ_FOLDER} / kind;
    if (!std::filesystem::exists(folder)) return all;
    for (const auto& entry : std::filesystem::recursive_directory_iterator{folder}) {
        if (entry.is_regular_file())
            all.emplace_back(entry.path().parent_path().filename().string(), entry.path().string());
    }
    return all;
}

/// Loads a file with every byte selection; the status must be defined, and a failure must say why.
void replay(const std::string& reader, const std::string& path)
{
    if (reader == "library") return;           // tests/ttl replays it
    if (reader.starts_with("verify")) return;  // tests/verify replays it
    if (reader == "emergency_copy") return;    // tests/editing replays it
    SCOPED_TRACE(path);
    temp_folder files;
    const std::string content = read_text(path).substr(choices);
    std::string file = files.write("file", content), folder = files.path("");
    load_fixture f;
    if (reader == "jedec") return read_jedec(f.session, f.variables.pld, f.variables.transfer.why_it_failed, file);
    if (reader == "svf") return static_cast<void>(read_svf(f.variables.transfer.why_it_failed, file, folder));
    const auto table = formats();
    const auto found = std::ranges::find(table, reader, &format::name);
    ASSERT_NE(found, table.end()) << "no such reader";
    found->measure(file);
    for (int mode = 0; mode < 49; ++mode) {
        load_fixture fresh;
        const int index = static_cast<int>(found - table.begin());
        const status outcome = fresh.load(file, {.format = index, .from_mode = mode % 7, .to_mode = mode / 7});
        EXPECT_TRUE(outcome == status::done || outcome == status::failed);
        EXPECT_EQ(outcome == status::failed, !fresh.variables.transfer.why_it_failed.empty());
    }
}

TEST(fuzz_corpus, every_reader_has_examples_and_takes_them)
{
    const auto examples = corpus("seeds");
    for (const format& one : formats()) {
        EXPECT_TRUE(std::ranges::any_of(examples, [&](const auto& example) { return example.first == one.name; }))
            << one.name;
    }
    for (const auto& [reader, path] : examples) replay(reader, path);
}

TEST(fuzz_corpus, what_was_found_once_stays_mended)
{
    const auto found = corpus("found");
    ASSERT_FALSE(found.empty()) << "the folder is missing";
    for (const auto& [reader, path] : found) replay(reader, path);
}

}  // namespace
}  // namespace tamrix::tests
