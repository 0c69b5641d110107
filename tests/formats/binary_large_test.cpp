// Images that do not fit the mapping: the chunks, and the crossed addresses of the byte path.
#include "formats/binary.h"
#include "load_fixture.h"
#include "transfer/writefile.h"

#include <gtest/gtest.h>

#include <fstream>

namespace tamrix::tests {
namespace {

using bytes_of = std::vector<std::uint8_t>;

constexpr device large{.buflength = 0x8400000,
                       .tlength = 0x10800000,
                       .wordmode = 1,
                       .spare_units = 0,
                       .family = 0,
                       .clear = 2,
                       .maker = {}};

/// A file with `marks` at their offsets and zeros elsewhere; sparse, so it costs no disk.
std::string sparse_file(const temp_folder& files, std::int64_t length,
                        const std::vector<std::pair<std::int64_t, char>>& marks)
{
    const std::string path = files.write("large.bin", "");
    std::filesystem::resize_file(path, static_cast<std::uintmax_t>(length));
    std::fstream file{path, std::ios::in | std::ios::out | std::ios::binary};
    for (const auto& [at, mark] : marks) file.seekp(at).put(mark);
    return path;
}

char byte_at(const std::string& path, std::int64_t offset)
{
    std::ifstream file{path, std::ios::binary};
    return static_cast<char>(file.seekg(offset).get());
}

struct large_fixture : load_fixture {
    large_fixture() : load_fixture{large} { syspath = files.path(""); }
    std::string image() const { return files.path("tmpbuf.bin"); }
    temp_folder files;
};

TEST(read_binary_large, a_small_file_makes_an_image_of_one_chunk_with_its_margin)
{
    large_fixture f;
    EXPECT_EQ(f.load(f.files.write("a.bin", "abc"), {.clear = 1}), status::done);
    EXPECT_EQ(std::filesystem::file_size(f.image()), 0x8400000u + 2200u);
    EXPECT_EQ(f.bytes(0, 4), (bytes_of{'a', 'b', 'c', 0}));
    EXPECT_EQ(byte_at(f.image(), 2), 'c');
}

TEST(read_binary_large, FF_behind_the_file_begins_one_byte_late)
{
    large_fixture f;
    f.load(f.files.write("a.bin", "abc"), {.clear = 0});
    EXPECT_EQ(f.bytes(2, 4), (bytes_of{'c', 0x00, 0xFF, 0xFF}));
    EXPECT_EQ(f.buffer(0x8400000), 0xFF);
    EXPECT_EQ(f.buffer(0x8400001), 0x00);
}

TEST(read_binary_large, two_chunks_land_one_behind_the_other_and_the_buffer_shows_the_start)
{
    large_fixture f;
    const std::int64_t chunk = large_chunk_bytes;
    const std::string file =
        sparse_file(f.files, chunk + 10, {{0, 'A'}, {chunk - 1, 'B'}, {chunk, 'C'}, {chunk + 9, 'D'}});
    EXPECT_EQ(f.load(file, {.clear = 0}), status::done);
    EXPECT_EQ(std::filesystem::file_size(f.image()), 2u * 0x8400000u + 2200u);
    for (const auto& [at, mark] : {std::pair{std::int64_t{0}, 'A'},
                                   {chunk - 1, 'B'},
                                   {chunk, 'C'},
                                   {chunk + 9, 'D'},
                                   {chunk + 10, '\0'},
                                   {chunk + 11, '\xFF'}}) {
        EXPECT_EQ(byte_at(f.image(), at), mark) << at;
    }
    EXPECT_EQ(f.buffer(0), 'A');
    EXPECT_EQ(f.buffer(chunk), 'C');  // the margin shows the start of the next chunk
}

TEST(read_binary_large, chunks_behind_the_device_are_not_read)
{
    large_fixture f;
    const std::string file = sparse_file(f.files, 4 * large_chunk_bytes, {});
    EXPECT_EQ(f.load(file, {.clear = 1}), status::done);
    EXPECT_EQ(std::filesystem::file_size(f.image()), 2u * 0x8400000u + 2200u);
}

TEST(read_binary_large, chunks_report_progress_and_let_messages_pass_twice_each)
{
    large_fixture f;
    f.load(sparse_file(f.files, large_chunk_bytes + 10, {}), {.clear = 0});
    EXPECT_EQ(f.shell.pumps(), 4);
    EXPECT_EQ(f.shell.progress(), (std::vector<double>{20, 40, 60, 80, 100}));
}

TEST(read_binary_large, the_byte_path_walks_the_source_by_the_buffers_steps)
{
    large_fixture f;
    const std::string file = f.files.write("a.bin", "0123456789");
    // From file: even bytes (step 2). To buffer: normal, from address 3.
    EXPECT_EQ(f.load(file, {.to_buffer = "3", .from_mode = 1}), status::done);
    EXPECT_EQ(read_text(f.image()), (std::string{'3', '\0', '4', '\0', '5', '\0', '6', '\0', '7'}));
    EXPECT_EQ(f.bytes(0, 10), (bytes_of{'0', '1', '2', '3', '4', '5', '6', '7', '8', '9'}));
}

TEST(read_binary_large, the_byte_path_reports_progress_after_each_hundredth)
{
    large_fixture f;
    f.load(f.files.write("a.bin", std::string(400, 'a')), {.from_mode = 1});
    const std::vector<double> shown = f.shell.progress();
    ASSERT_EQ(shown.size(), 100u);
    for (std::size_t i = 1; i < 100; ++i) EXPECT_DOUBLE_EQ(shown[i - 1], 100.0 * static_cast<double>(2 * i) / 201);
    EXPECT_EQ(shown.back(), 100);
}

TEST(read_binary_large, the_byte_path_adds_the_phases_to_the_crossed_sides)
{
    large_fixture f;
    const std::string file = f.files.write("a.bin", "0123456789");
    // From file: odd bytes (step 2, phase 1) from 2 on; to buffer: third of four (step 4, phase 2).
    f.load(file, {.from_file = "2", .from_mode = 2, .to_mode = 5});
    const std::string image = read_text(f.image());
    EXPECT_EQ(image.size(), 10u);  // four bytes, at 3, 5, 7 and 9
    EXPECT_EQ(image[3], '2');
    EXPECT_EQ(image[5], '6');
    EXPECT_EQ(image[7], '\0');  // source address 10 is beyond the file
}

TEST(read_binary_large, the_byte_path_agrees_with_single_bytes_across_its_window)
{
    large_fixture f;
    const bytes_of content = random_bytes(3 << 20);
    const std::string file = f.files.write("a.bin", content);
    f.load(file, {.to_buffer = "5", .size = "2F0000", .from_mode = 0});
    const bytes_of image = read_bytes(f.image());
    ASSERT_EQ(image.size(), 0x2F0000u);
    EXPECT_TRUE(std::equal(image.begin(), image.end(), content.begin() + 5));
    EXPECT_EQ(f.shell.pumps(), 101);
}

TEST(read_binary_large, a_start_behind_the_file_is_refused_before_the_image_is_touched)
{
    large_fixture f;
    f.files.write("tmpbuf.bin", "old");
    EXPECT_EQ(f.load(f.files.write("a.bin", "abc"), {.from_file = "4"}), status::rejected);
    EXPECT_EQ(read_text(f.image()), "old");
}

TEST(read_binary_large, a_folder_that_cannot_hold_the_image_is_a_failure_that_names_it)
{
    large_fixture f;
    f.syspath = f.files.path("missing/");
    EXPECT_EQ(f.load(f.files.write("a.bin", "abc"), {.clear = 0}), status::failed);
    EXPECT_EQ(f.variables.transfer.why_it_failed.text(), f.files.path("missing/tmpbuf.bin") + ": no such file");
}

TEST(read_binary_large, the_length_in_words_and_the_buffer_choose_the_path)
{
    const auto makes_an_image = [](std::int32_t words, std::uint8_t word_bytes, std::int32_t buffer_bytes) {
        load_fixture f{{.tlength = words, .wordmode = word_bytes}};
        f.session.blocks.buflength(0) = buffer_bytes;
        const temp_folder files;
        f.syspath = files.path("");
        EXPECT_EQ(f.load(files.write("a.bin", "abc"), {.clear = 2}), status::done);
        return std::filesystem::exists(files.path("tmpbuf.bin"));
    };
    EXPECT_TRUE(makes_an_image(0x10800000, 1, 0x8400000));
    EXPECT_TRUE(makes_an_image(0x10800000, 2, 0x8400000));
    EXPECT_FALSE(makes_an_image(0x107FFFFF, 1, 0x8400000));
    EXPECT_FALSE(makes_an_image(0x8400000, 2, 0x8400000)) << "as many bytes, in half as many words";
    EXPECT_FALSE(makes_an_image(0x10800000, 1, 0x83FFFFF));
}

TEST(write_binary_large, the_length_in_bytes_and_the_buffer_choose_the_path)
{
    const auto copies_the_image = [](std::int32_t words, std::uint8_t word_bytes, std::int32_t buffer_bytes) {
        plug_in_fixture f{{.tlength = words, .wordmode = word_bytes}};
        f.session.blocks.buflength(0) = buffer_bytes;
        const temp_folder files;
        files.write("tmpbuf.bin", "");
        f.shell.on_next_dialog([](forms::form& shown) {
            auto& dialog = dynamic_cast<writefile&>(shown);
            dialog.wfileText2.enter("3");
            dialog.okcom.click();
        });
        std::string out = files.path("out.bin"), folder = files.path("");
        EXPECT_TRUE(f.methods.wfile(out, folder).ok());
        EXPECT_EQ(f.variables.transfer.rformat, 0);
        return std::filesystem::file_size(out) == 0;  // as the image, and not three bytes of the buffer
    };
    EXPECT_TRUE(copies_the_image(0x10800000, 1, 0x8400000));
    EXPECT_TRUE(copies_the_image(0x8400000, 2, 0x8400000)) << "as many bytes, in half as many words";
    EXPECT_FALSE(copies_the_image(0x107FFFFF, 1, 0x8400000));
    EXPECT_FALSE(copies_the_image(0x10800000, 1, 0x83FFFFF));
}

TEST(write_binary_large, the_image_is_copied_whole_and_the_buffer_shows_its_start)
{
    large_fixture f;
    const std::int64_t chunk = large_chunk_bytes;
    f.load(sparse_file(f.files, chunk + 10, {{0, 'A'}, {chunk + 9, 'D'}}), {.clear = 0});
    f.buffer(0) = 'x';
    f.shell.on_next_dialog([](forms::form& shown) { dynamic_cast<writefile&>(shown).okcom.click(); });
    std::string out = f.files.path("out.bin"), folder = f.syspath;
    const std::size_t shown_before = f.shell.progress().size();
    EXPECT_TRUE(f.methods.wfile(out, folder).ok());
    EXPECT_EQ(f.variables.transfer.rformat, 0);
    EXPECT_EQ(std::filesystem::file_size(out), 2u * 0x8400000u + 2200u);
    EXPECT_EQ(byte_at(out, 0), 'A');
    EXPECT_EQ(byte_at(out, chunk + 9), 'D');
    EXPECT_EQ(f.buffer(0), 'A');
    const std::vector<double> saved{f.shell.progress().begin() + static_cast<std::ptrdiff_t>(shown_before),
                                    f.shell.progress().end()};
    EXPECT_EQ(saved, (std::vector<double>{20, 40, 60, 80, 100}));
}

TEST(write_binary_large, an_empty_image_writes_an_empty_file)
{
    large_fixture f;
    f.files.write("tmpbuf.bin", "");
    f.shell.on_next_dialog([](forms::form& shown) { dynamic_cast<writefile&>(shown).okcom.click(); });
    std::string out = f.files.path("out.bin"), folder = f.syspath;
    f.methods.wfile(out, folder);
    EXPECT_EQ(f.variables.transfer.rformat, 0);
    EXPECT_EQ(std::filesystem::file_size(out), 0u);
}

TEST(write_binary_large, without_an_image_the_save_fails)
{
    large_fixture f;
    f.shell.on_next_dialog([](forms::form& shown) { dynamic_cast<writefile&>(shown).okcom.click(); });
    std::string out = f.files.path("out.bin"), folder = f.files.path("");
    f.methods.wfile(out, folder);
    EXPECT_EQ(f.variables.transfer.rformat, 1);
    EXPECT_EQ(f.variables.transfer.why_it_failed.found, "no such file");
}

}  // namespace
}  // namespace tamrix::tests
