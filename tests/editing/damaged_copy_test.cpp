// Emergency copies that end early or have other bytes.
#include "editing/closed_copy.h"
#include "editing/copied_document.h"
#include "support/temp_files.h"

#include <algorithm>

#include <gtest/gtest.h>

namespace tamrix::tests {
namespace {

struct known_copy {
    temp_folder temporary{};
    std::string folder = temporary.path("copies");
    std::vector<std::uint8_t> file{};
    std::vector<std::size_t> ends{};  // of the commits
    std::vector<std::vector<std::uint8_t>> states{};

    known_copy()
    {
        copied_document f{folder, 4096};
        f.edited.change_device("odd");
        for (int i = 0; i < 4; ++i) {
            const auto bytes = random_bytes(300, static_cast<unsigned>(i));
            f.edited.replace(static_cast<std::size_t>(i) * 350, bytes, "Paste");
            if (i == 3) f.edited.change_device("small");
            f.wait();
            file = read_bytes(files_in(folder).at(0).string());
            ends.push_back(file.size());
            states.push_back(f.all());
        }
    }
    void put(std::span<const std::uint8_t> content) const
    {
        std::filesystem::remove_all(folder);
        std::filesystem::create_directory(folder);
        temporary.write("copies/unsaved-1-abcdef.copy", content);
    }
};

TEST(damaged_copy, gives_the_last_whole_state_at_every_length)
{
    const known_copy known;
    for (std::size_t length = 0; length <= known.file.size(); ++length) {
        const auto torn = std::span{known.file}.first(length);
        const auto commits =
            static_cast<std::size_t>(std::ranges::upper_bound(known.ends, length) - known.ends.begin());
        const auto last = editing::find_commit(torn);
        ASSERT_EQ(last.has_value(), commits > 0) << length;
        if (last) {
            ASSERT_EQ(last->end, known.ends[commits - 1]) << length;
            ASSERT_EQ(editing::bytes_of(*last, torn), known.states[commits - 1]) << length;
        }
    }
}

TEST(damaged_copy, gives_a_state_that_was_whole_whichever_byte_is_another)
{
    known_copy known;
    for (std::size_t at = 0; at < known.file.size(); ++at) {
        const std::uint8_t former = std::exchange(known.file[at], static_cast<std::uint8_t>(known.file[at] ^ 0x55));
        const auto commits = static_cast<std::size_t>(std::ranges::upper_bound(known.ends, at) - known.ends.begin());
        const auto last = editing::find_commit(known.file);
        ASSERT_EQ(last.has_value(), commits > 0) << at;
        if (last) {
            ASSERT_EQ(editing::bytes_of(*last, known.file), known.states[commits - 1]) << at;
        }
        known.file[at] = former;
    }
}

TEST(damaged_copy, is_named_with_the_reason_and_can_be_discarded)
{
    const known_copy known;
    known.put(std::span{known.file}.first(100));
    {
        const auto found = editing::abandoned_copies(known.folder);
        ASSERT_EQ(found.size(), 1u);
        EXPECT_NE(found[0].fault.find("damaged"), std::string::npos);
        EXPECT_THROW(editing::recover(found[0]), std::runtime_error);
        editing::discard(found[0]);
    }
    EXPECT_TRUE(editing::abandoned_copies(known.folder).empty());
    known.put(known.file);
    const auto found = editing::abandoned_copies(known.folder);
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].fault, "");
    std::filesystem::resize_file(found[0].path, 9);
    EXPECT_THROW(editing::recover(found[0]), std::runtime_error) << "damaged after it was found";
}

TEST(damaged_copy, is_not_believed_when_it_is_larger_than_any_buffer)
{
    const auto copy_of = [](const editing::copy_state& state) {
        editing::copy_records records;
        records.add_value(0, SIZE_MAX, 7);
        records.add_bytes(SIZE_MAX - 1, std::array<std::uint8_t, 9>{});
        records.commit(state, {});
        return records.take();
    };
    const auto fits = copy_of({"a", "b", 5, 9});
    const auto last = editing::find_commit(fits);
    ASSERT_TRUE(last);
    EXPECT_EQ(editing::bytes_of(*last, fits), std::vector<std::uint8_t>(9, 7));
    EXPECT_FALSE(editing::find_commit(copy_of({"a", "b", 5, editing::longest_copy_bytes + 1})));
    EXPECT_FALSE(editing::find_commit(copy_of({"a", "b", 10, 9})));
    EXPECT_TRUE(editing::find_commit(copy_of({std::string(99'999, 'x'), "b", 5, 9}))) << "a name is cut off";
}

TEST(damaged_copy, in_the_making_goes_when_its_program_is_gone)
{
    const known_copy known;
    known.temporary.write("copies/unsaved-1-abcdef.coming", std::span{known.file});
    known.temporary.write("copies/notes.txt", "not a copy");
    const auto found = editing::abandoned_copies(known.folder);
    EXPECT_EQ(found.size(), 1u);
    EXPECT_EQ(files_in(known.folder).size(), 2u);
}

/// What the fuzz target does with an input: records that nobody has looked at, closed by a commit.
int replay_copies(const std::string& kind)
{
    const std::filesystem::path folder = std::filesystem::path{TAMRIX_FUZZ_FOLDER} / kind / "emergency_copy";
    int examples = 0;
    for (const auto& path : files_in(folder.string())) {
        SCOPED_TRACE(path.string());
        const auto input = read_bytes(path.string());
        for (const auto& file : {input, closed_copy(input, {"device", "file", 100, 5000})}) {
            if (const auto last = editing::find_commit(file)) {
                EXPECT_EQ(editing::bytes_of(*last, file).size(), last->state.length);
            }
        }
        ++examples;
    }
    return examples;
}

TEST(damaged_copy, examples_of_the_fuzz_target_have_a_defined_outcome) { EXPECT_GE(replay_copies("seeds"), 3); }

TEST(damaged_copy, stays_mended_where_something_was_found) { replay_copies("found"); }

}  // namespace
}  // namespace tamrix::tests
