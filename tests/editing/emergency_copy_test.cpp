// The emergency copy step by step.
#include "editing/copied_document.h"
#include "support/temp_files.h"

#include <csignal>
#include <fstream>
#include <numeric>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>

namespace tamrix::tests {
namespace {

using editing::abandoned_copies;
using editing::document;

struct emergency_copy : testing::Test {
    temp_folder temporary{};
    std::string folder = temporary.path("copies");
    std::unique_ptr<copied_document> f = std::make_unique<copied_document>(folder, 8192);

    auto loading(unsigned start) const
    {
        return [this, start] {
            const auto bytes = random_bytes(f->buffers.buffer().size(), start);
            return std::ranges::copy(bytes, f->buffers.buffer().begin()), true;
        };
    }
    void load(unsigned start) const { f->edited.watch("Paste", loading(start)); }
    std::uintmax_t bytes_in_folder() const
    {
        std::uintmax_t sum = 0;
        for (const auto& one : files_in(folder)) sum += std::filesystem::file_size(one);
        return sum;
    }
    /// The program dies and another one starts.
    void expect_recovered(const std::vector<std::uint8_t>& all, const std::string& device)
    {
        f.reset();
        const auto found = abandoned_copies(folder);
        ASSERT_EQ(found.size(), 1u);
        EXPECT_EQ(found[0].fault, "");
        EXPECT_EQ(found[0].state.device, device);
        EXPECT_EQ(editing::recover(found[0]), all);
    }
};

TEST_F(emergency_copy, has_what_is_not_saved_for_the_next_start)
{
    f->edited.load("boot \xC3\xA4.hex", loading(1));
    f->type(9000, 7);
    f->wait();
    const auto all = f->all();
    const auto time = f->now;
    f->type(5, 5);
    f.reset();
    const auto found = abandoned_copies(folder);
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].state, (editing::copy_state{"largest", "boot \xC3\xA4.hex", 9001, 9001}));
    EXPECT_LT(time - found[0].time, std::chrono::seconds{3});
    EXPECT_EQ(editing::recover(found[0]), all);
    EXPECT_TRUE(abandoned_copies(folder).empty()) << "another start is not offered the same";
    editing::discard(found[0]);
    EXPECT_TRUE(files_in(folder).empty());
}

TEST_F(emergency_copy, is_not_there_while_all_is_saved)
{
    EXPECT_EQ(f->wait(), 0);
    load(1);
    f->edited.saved();
    f->wait();
    EXPECT_TRUE(files_in(folder).empty());
    f->type(1, 1);
    f->wait();
    EXPECT_EQ(files_in(folder).size(), 1u);
    f->edited.saved();
    f->wait(1);
    EXPECT_TRUE(files_in(folder).empty());
    f->type(1, 2);
    f->wait();
    const auto all = f->all();
    expect_recovered(all, "largest");
}

TEST_F(emergency_copy, goes_with_a_clean_end)
{
    load(1);
    f->wait();
    f->copy.withdraw();
    EXPECT_TRUE(files_in(folder).empty());
    load(2);
    EXPECT_EQ(f->copy.work(f->now += std::chrono::seconds{1}), false);
    EXPECT_EQ(f->copy.work(f->now += std::chrono::seconds{3}), true);
    f->copy.withdraw();
    EXPECT_TRUE(files_in(folder).empty()) << "not even the one in the making";
}

TEST_F(emergency_copy, works_in_slices_and_is_whole_after_the_last_one)
{
    load(1);
    f->copy.work(f->now);
    f->now += std::chrono::seconds{2};
    EXPECT_TRUE(f->copy.work(f->now));
    EXPECT_TRUE(abandoned_copies(folder).empty());
    EXPECT_EQ(files_in(folder).size(), 1u);
    EXPECT_FALSE(f->copy.has_state());
    f->type(3, 3);
    f->type(8999, 3);
    f->wait(1);
    EXPECT_TRUE(f->copy.has_state());
    const auto all = f->all();
    EXPECT_FALSE(f->copy.work(f->now)) << "nothing more to do";
    f->now += std::chrono::seconds{9};
    const auto before = bytes_in_folder();
    EXPECT_EQ(f->wait(), 0);
    EXPECT_EQ(bytes_in_folder(), before);
    expect_recovered(all, "largest");
}

TEST_F(emergency_copy, is_of_one_program_while_it_lives)
{
    load(1);
    f->wait();
    EXPECT_TRUE(abandoned_copies(folder).empty());
    copied_document other{folder};
    other.type(1, 1);
    other.wait();
    EXPECT_EQ(files_in(folder).size(), 2u);
    const auto all = f->all();
    expect_recovered(all, "largest");
}

TEST_F(emergency_copy, has_the_bytes_that_a_smaller_buffer_does_not_show)
{
    load(1);
    f->wait();
    f->edited.change_device("small");
    f->type(50, 50);
    f->wait();
    const auto all = f->all();
    ASSERT_EQ(all.size(), 9001u);
    const auto found_device = f->edited.device();
    expect_recovered(all, found_device);
    const auto found = abandoned_copies(folder);
    copied_document next{folder};
    next.edited.restore(found[0].state.device, found[0].state.file, editing::recover(found[0]));
    EXPECT_EQ(next.all(), all);
    EXPECT_TRUE(next.edited.changed());
    next.edited.change_device("largest");
    EXPECT_EQ(next.edited.bytes()[9000], all[9000]);
}

TEST_F(emergency_copy, follows_a_change_of_device_or_file_alone)
{
    f->edited.load("other.hex", loading(2));
    f->edited.load("the same elsewhere.hex", [] { return true; });
    f->type(1, 1);
    f->edited.saved();
    f->edited.undo();
    f->wait();
    f->edited.undo();
    f->wait();
    EXPECT_EQ(editing::find_commit(read_bytes(files_in(folder).at(0).string()))->state.file, "other.hex");
    f->edited.change_device("whole");
    f->wait();
    const auto all = f->all();
    f.reset();
    const auto found = abandoned_copies(folder);
    ASSERT_EQ(found.size(), 1u);
    EXPECT_EQ(found[0].state, (editing::copy_state{"whole", "other.hex", 8192, 9001}));
    EXPECT_EQ(editing::recover(found[0]), all);
}

TEST_F(emergency_copy, follows_bytes_that_are_dropped_and_come_back)
{
    load(1);
    f->edited.change_device("small");
    f->wait();
    const auto before = f->all();
    f->edited.fill(0, 100, 0x33, document::unseen::is_dropped);
    f->wait();
    f->edited.change_device("odd");
    f->wait();
    f->edited.undo();
    f->edited.undo();
    f->wait();
    EXPECT_EQ(f->all(), before);
    expect_recovered(before, "small");
}

TEST_F(emergency_copy, begins_anew_when_it_is_much_longer_than_what_it_holds)
{
    load(1);
    std::uintmax_t longest = 0;
    for (int i = 0; i < 400; ++i) {
        f->edited.fill(0, 9001, static_cast<std::uint8_t>(i));
        load(static_cast<unsigned>(i));
        f->wait();
        longest = std::max(longest, bytes_in_folder());
    }
    EXPECT_LT(longest, 1'200'000u);
    EXPECT_GT(longest, 1'000'000u);
    EXPECT_EQ(files_in(folder).size(), 1u);
    const auto all = f->all();
    expect_recovered(all, "largest");
}

TEST_F(emergency_copy, says_once_that_its_folder_cannot_be_written)
{
    std::ofstream{folder} << "a file in its place";
    load(1);
    f->wait(60);
    EXPECT_NE(f->copy.take_error().find(folder), std::string::npos);
    f->type(1, 1);
    f->wait(60);
    EXPECT_EQ(f->copy.take_error(), "");
    std::filesystem::remove(folder);
    f->wait(40);
    const auto all = f->all();
    expect_recovered(all, "largest");
}

TEST_F(emergency_copy, keeps_the_last_whole_state_on_a_full_disk)
{
    load(1);
    f->wait();
    const auto all = f->all();
    const auto before = std::signal(SIGXFSZ, SIG_IGN);
    rlimit usual{};
    getrlimit(RLIMIT_FSIZE, &usual);
    rlimit small = usual;
    small.rlim_cur = bytes_in_folder() + 3000;
    setrlimit(RLIMIT_FSIZE, &small);
    load(2);
    f->wait(5);
    EXPECT_NE(f->copy.take_error(), "");
    EXPECT_EQ(files_in(folder).size(), 1u);
    EXPECT_EQ(bytes_in_folder(), small.rlim_cur - 3000) << "what was not finished does not fill the disk";
    const auto file = read_bytes(files_in(folder)[0].string());
    const auto last = editing::find_commit(file);
    ASSERT_TRUE(last);
    EXPECT_EQ(editing::bytes_of(*last, file), all);
    setrlimit(RLIMIT_FSIZE, &usual);
    std::signal(SIGXFSZ, before);
    f->wait(60);
    const auto later = f->all();
    expect_recovered(later, "largest");
}

TEST_F(emergency_copy, writes_on_when_the_clock_is_set_back)
{
    load(1);
    f->copy.work(f->now);
    f->now -= std::chrono::hours{1};
    f->wait(1);
    const auto all = f->all();
    expect_recovered(all, "largest");
}

TEST_F(emergency_copy, has_no_lock_on_a_file_that_is_gone)
{
    load(1);
    f->wait();
    const std::string path = files_in(folder).at(0).string();
    const editing::locked_file opened{::open(path.c_str(), O_RDWR | O_CLOEXEC)};
    f->edited.saved();
    f->wait();
    EXPECT_FALSE(opened.lock()) << "another program may have opened it a moment before";
}

TEST_F(emergency_copy, of_several_programs_the_newest_comes_first)
{
    for (const int hour : {2, 3, 1}) {
        copied_document one{folder};
        one.now += std::chrono::hours{hour};
        one.type(1, static_cast<std::uint8_t>(hour));
        one.wait();
    }
    std::vector<int> hours;
    for (const auto& one : abandoned_copies(folder)) hours.push_back(editing::recover(one)[1]);
    EXPECT_EQ(hours, (std::vector{3, 2, 1}));
    EXPECT_TRUE(abandoned_copies(temporary.path("missing")).empty());
}

}  // namespace
}  // namespace tamrix::tests
