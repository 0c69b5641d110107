// Files opened, read and written: what each call yields, and the reason where it fails.
#include "files/file_io.h"

#include "support/temp_files.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <functional>

namespace tamrix::tests {
namespace {

using bytes_of = std::vector<std::uint8_t>;

struct files_on_disk : testing::Test {
    static std::string why(const std::function<void()>& work)
    {
        try {
            work();
        } catch (const file_error& error) {
            return error.why().found;
        }
        return "no failure";
    }

    temp_folder files;
};

TEST_F(files_on_disk, that_cannot_be_opened_say_why)
{
    EXPECT_EQ(why([&] { input_file{files.path("missing")}; }), "no such file");
    EXPECT_EQ(why([&] { input_file{files.path("no/folder")}; }), "no such file");
    EXPECT_EQ(why([&] { input_file{files.path("")}; }), "a directory where a file was expected");
    EXPECT_EQ(why([&] { output_file{files.path("no/folder")}; }), "no such file");
    EXPECT_EQ(why([&] { output_file{files.path("")}; }), "a directory where a file was expected");
    EXPECT_EQ(why([&] { file_image{files.path("missing")}; }), "no such file");
}

TEST_F(files_on_disk, name_the_file_in_the_text_of_a_failure)
{
    const std::string path = files.path("missing");
    try {
        const input_file file{path};
        FAIL() << "it is not there";
    } catch (const file_error& error) {
        EXPECT_EQ(error.what(), path + ": no such file");
        EXPECT_EQ(error.why().file, path);
    }
}

TEST(file_error_from_the_system, has_its_own_words_for_the_usual_reasons)
{
    EXPECT_EQ((file_error{"x", ENOENT}.why().found), "no such file");
    EXPECT_EQ((file_error{"x", EACCES}.why().found), "permission denied");
    EXPECT_EQ((file_error{"x", EISDIR}.why().found), "a directory where a file was expected");
    EXPECT_FALSE((file_error{"x", ENOSPC}.why().found.empty()));
    EXPECT_NE((file_error{"x", ENOSPC}.why().found), (file_error{"x", ENOENT}.why().found));
}

TEST_F(files_on_disk, are_read_at_any_offset_as_far_as_they_go)
{
    input_file file{files.write("file", "abcdef")};
    EXPECT_EQ(file.length(), 6);
    bytes_of target(4, '?');
    EXPECT_EQ(file.read_at(1, target), 4u);
    EXPECT_EQ(target, (bytes_of{'b', 'c', 'd', 'e'}));
    EXPECT_EQ(file.read_at(4, target), 2u);
    EXPECT_EQ(target, (bytes_of{'e', 'f', 'd', 'e'})) << "the rest of the target stays";
    EXPECT_EQ(file.read_at(6, target), 0u);
    EXPECT_EQ(file.read_at(std::int64_t{1} << 40, target), 0u);
}

TEST_F(files_on_disk, read_as_zero_behind_their_end)
{
    input_file file{files.write("file", "abc")};
    bytes_of target(4, '?');
    file.read_zero_padded(2, target);
    EXPECT_EQ(target, (bytes_of{'c', 0, 0, 0}));
    file.read_zero_padded(100, target);
    EXPECT_EQ(target, (bytes_of{0, 0, 0, 0}));
}

TEST_F(files_on_disk, are_emptied_and_written_on_and_over)
{
    const std::string path = files.write("file", "what was there before");
    output_file file{path};
    file.write(bytes_of{'a', 'b', 'c', 'd'});
    file.write_at(1, bytes_of{'X'});
    file.write(bytes_of{'Y'});
    file.close();
    EXPECT_EQ(read_text(path), "aXYd");
}

TEST_F(files_on_disk, have_a_gap_of_zeros_where_nothing_was_written)
{
    output_file file{files.path("file")};
    file.write_at(3, bytes_of{'d'});
    file.close();
    EXPECT_EQ(read_bytes(files.path("file")), (bytes_of{0, 0, 0, 'd'}));
}

TEST_F(files_on_disk, as_an_image_are_followed_by_zeros)
{
    for (const std::size_t length : {std::size_t{0}, std::size_t{1}, std::size_t{4096}, std::size_t{3} << 20}) {
        const bytes_of content = random_bytes(length);
        const file_image image{files.write("file", content)};
        ASSERT_EQ(image.bytes().size(), length);
        EXPECT_TRUE(std::ranges::equal(image.bytes(), content));
        const std::uint8_t* behind = image.bytes().data() + length;
        EXPECT_TRUE(std::all_of(behind, behind + file_image::slack_bytes, [](auto byte) { return byte == 0; }));
    }
}

TEST_F(files_on_disk, are_made_only_where_they_are_missing)
{
    const std::string path = files.write("file", "abc");
    EXPECT_TRUE(exists_or_is_made(path));
    EXPECT_EQ(read_text(path), "abc");
    EXPECT_TRUE(exists_or_is_made(files.path("fresh")));
    EXPECT_EQ(read_text(files.path("fresh")), "");
    EXPECT_FALSE(exists_or_is_made(files.path("no/folder")));
}

TEST_F(files_on_disk, have_a_time_only_where_they_are_there)
{
    EXPECT_FALSE(file_time_text(files.write("file", "")).empty());
    EXPECT_EQ(file_time_text(files.path("missing")), "");
}

}  // namespace
}  // namespace tamrix::tests
