// POSIX only: how names of shared memory go away with their users.
#include "tamrix/named_memory.h"

#include "blocks/clsMemMapped.h"
#include "blocks/named_memory_fixture.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include <fcntl.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tamrix {
namespace {

using tests::child_process;
using tests::foreign_object;
using tests::line_end;
using tests::named_memory_objects;
using tests::plain_object;
using tests::shared_objects;
using names = std::vector<std::string>;

TEST_F(named_memory_objects, that_nobody_made_cannot_be_opened) { EXPECT_EQ(named_memory::open(name), 0); }

TEST_F(named_memory_objects, are_created_once_with_zero_bytes)
{
    const auto first = named_memory::create(name, 40);
    ASSERT_NE(first, 0);
    EXPECT_EQ(named_memory::create(name, 40), 0) << "the name is taken";

    auto* bytes = static_cast<std::uint8_t*>(named_memory::map(first));
    ASSERT_NE(bytes, nullptr);
    const std::size_t reach = named_memory::reach_bytes(first);
    EXPECT_EQ(reach, 4096u) << "whole pages can be reached";
    for (std::size_t i = 0; i < reach; ++i) ASSERT_EQ(bytes[i], 0) << i;
    EXPECT_TRUE(named_memory::unmap(bytes, reach));
    named_memory::close(first, name);
}

TEST_F(named_memory_objects, reach_as_far_as_their_last_page)
{
    for (const auto& [length, reach] :
         {std::pair{1u, 4096u}, {4096u, 4096u}, {4097u, 8192u}, {33000u, 36864u}, {131072u, 131072u}}) {
        const auto file = named_memory::create(name, length);
        EXPECT_EQ(named_memory::reach_bytes(file), reach) << length;
        named_memory::close(file, name);
    }
    EXPECT_EQ(named_memory::reach_bytes(0), 0u);
}

TEST_F(named_memory_objects, have_a_handle_that_is_never_0)
{
    // The lowest free descriptor would be 0 here.
    child_process other{[&](const line_end&) {
        ::close(STDIN_FILENO);
        const auto created = named_memory::create(name, 40);
        const auto opened = named_memory::open(name);
        const bool good = created > STDERR_FILENO && opened > STDERR_FILENO;
        named_memory::close(opened, name);
        named_memory::close(created, name);
        return good ? 0 : 1;
    }};
    EXPECT_EQ(other.wait(), 0);
}

TEST_F(named_memory_objects, lose_their_name_with_the_last_user)
{
    const auto first = named_memory::create(name, 40);
    const auto second = named_memory::open(name);
    const auto third = named_memory::open(name);
    ASSERT_NE(second, 0);
    ASSERT_NE(third, 0);
    named_memory::close(first, name);
    EXPECT_EQ(shared_objects(prefix), names{name}) << "its maker may leave before the others";
    named_memory::close(third, name);
    EXPECT_EQ(shared_objects(prefix), names{name});
    named_memory::close(second, name);
    EXPECT_EQ(shared_objects(prefix), names{});
    EXPECT_EQ(named_memory::open(name), 0);
}

TEST_F(named_memory_objects, lose_their_name_with_the_last_process)
{
    const auto own = named_memory::create(name, 40);
    child_process other{[&](const line_end& parent) {
        const auto file = named_memory::open(name);
        parent.signal();
        parent.wait_for_signal();
        named_memory::close(file, name);
        return file != 0 ? 0 : 1;
    }};
    ASSERT_TRUE(other.line().wait_for_signal());
    named_memory::close(own, name);
    EXPECT_EQ(shared_objects(prefix), names{name});
    other.line().signal();
    EXPECT_EQ(other.wait(), 0);
    EXPECT_EQ(shared_objects(prefix), names{});
}

TEST_F(named_memory_objects, that_a_crashed_process_left_count_as_not_there)
{
    child_process other{[&](const line_end& parent) {
        const auto file = named_memory::create(name, 40);
        static_cast<std::uint8_t*>(named_memory::map(file))[0] = 77;
        parent.signal();
        parent.wait_for_signal();
        return 0;
    }};
    ASSERT_TRUE(other.line().wait_for_signal());
    const auto meanwhile = named_memory::open(name);
    EXPECT_NE(meanwhile, 0) << "it lives as long as the process";
    named_memory::close(meanwhile, name);
    other.crash();

    EXPECT_EQ(shared_objects(prefix), names{name}) << "nobody could remove the name";
    EXPECT_EQ(named_memory::open(name), 0);
    EXPECT_EQ(shared_objects(prefix), names{}) << "looking at it swept it away";
}

TEST_F(named_memory_objects, that_a_crashed_process_left_are_made_afresh_by_the_next_user)
{
    child_process other{[&](const line_end& parent) {
        clsMemMapped block{prefix};
        block.OpenAndMapMemoryBlock("object", 40);
        static_cast<std::uint8_t*>(block.BaseAddress())[0] = 77;
        parent.signal();
        parent.wait_for_signal();
        return 0;
    }};
    ASSERT_TRUE(other.line().wait_for_signal());
    other.crash();

    clsMemMapped block{prefix};
    ASSERT_TRUE(block.OpenAndMapMemoryBlock("object", 5000));
    EXPECT_EQ(block.reach_bytes(), 8192u) << "the size is the new user's";
    EXPECT_EQ(static_cast<std::uint8_t*>(block.BaseAddress())[0], 0) << "and so is the content";
}

TEST_F(named_memory_objects, survive_a_crash_of_one_of_two_users)
{
    clsMemMapped own{prefix};
    ASSERT_TRUE(own.OpenAndMapMemoryBlock("object", 40));
    child_process other{[&](const line_end& parent) {
        const auto file = named_memory::open(name);
        static_cast<std::uint8_t*>(named_memory::map(file))[0] = 77;
        parent.signal();
        parent.wait_for_signal();
        return 0;
    }};
    ASSERT_TRUE(other.line().wait_for_signal());
    other.crash();
    clsMemMapped later{prefix};
    ASSERT_TRUE(later.OpenAndMapMemoryBlock("object", 40));
    EXPECT_EQ(static_cast<std::uint8_t*>(later.BaseAddress())[0], 77);
}

TEST_F(named_memory_objects, made_by_other_means_are_opened_as_they_stand_and_never_removed)
{
    plain_object made_elsewhere{name, 5000};
    made_elsewhere.bytes()[4999] = 42;
    {
        const auto file = named_memory::open(name);
        ASSERT_NE(file, 0);
        EXPECT_EQ(named_memory::reach_bytes(file), 8192u);
        named_memory::close(file, name);
        EXPECT_EQ(shared_objects(prefix), names{name});

        clsMemMapped block{prefix};
        ASSERT_TRUE(block.OpenAndMapMemoryBlock("object", 40));
        EXPECT_EQ(static_cast<std::uint8_t*>(block.BaseAddress())[4999], 42);
    }
    EXPECT_EQ(shared_objects(prefix), names{name});
    EXPECT_EQ(named_memory::create(name, 40), 0);
    EXPECT_EQ(shared_objects(prefix), names{name}) << "a create that fails removes nothing";
}

TEST_F(named_memory_objects, of_another_user_are_neither_opened_nor_removed)
{
    for (const mode_t rights : {0666, 0666 | S_ISVTX}) {
        const foreign_object taken{name, rights};
        EXPECT_EQ(named_memory::open(name), 0);
        EXPECT_EQ(named_memory::create(name, 40), 0);
        EXPECT_EQ(named_memory::open_or_create(name, 40), 0);
        EXPECT_EQ(shared_objects(prefix), names{name}) << "also one that its user's crash left is not ours to remove";
    }
}

TEST_F(named_memory_objects, of_root_are_not_opened_by_others)
{
    plain_object made_elsewhere{name, 5000};
    EXPECT_EQ(::chmod(("/dev/shm/" + name).c_str(), 0666), 0);
    child_process other{[&](const line_end&) {
        const bool root = ::geteuid() == 0;
        if (root && ::setuid(65534) != 0) return 2;
        const auto file = named_memory::open_or_create(name, 40);
        named_memory::close(file, name);
        return (file == 0) == root ? 0 : 1;  // without root it is an object of our own
    }};
    EXPECT_EQ(other.wait(), 0);
}

TEST_F(named_memory_objects, without_a_byte_cannot_be_mapped)
{
    const plain_object empty{name, 0};
    const auto file = named_memory::open(name);
    ASSERT_NE(file, 0);
    EXPECT_EQ(named_memory::map(file), nullptr);
    named_memory::close(file, name);
}

TEST_F(named_memory_objects, ignore_that_nothing_is_closed_or_unmapped)
{
    named_memory::close(0, name);
    EXPECT_FALSE(named_memory::unmap(nullptr, 4096));
    EXPECT_EQ(named_memory::map(0), nullptr);
}

TEST_F(named_memory_objects, that_another_process_is_still_making_are_waited_for)
{
    // Stops in the middle of what create() does: the name exists and is held, the length is still to come.
    child_process other{[&](const line_end& parent) {
        const int file = ::shm_open(("/" + name).c_str(), O_RDWR | O_CREAT | O_EXCL, S_IRUSR | S_IWUSR | S_ISVTX);
        ::flock(file, LOCK_SH);
        parent.signal();
        ::usleep(20'000);  // time for the other side to look
        const bool made = ::ftruncate(file, 40) == 0;
        parent.wait_for_signal();
        named_memory::close(file, name);
        return made ? 0 : 1;
    }};
    ASSERT_TRUE(other.line().wait_for_signal());
    clsMemMapped block{prefix};
    EXPECT_TRUE(block.OpenAndMapMemoryBlock("object", 40));
    EXPECT_EQ(block.reach_bytes(), 4096u);
    other.line().signal();
    EXPECT_EQ(other.wait(), 0);
}

}  // namespace
}  // namespace tamrix
