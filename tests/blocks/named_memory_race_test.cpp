// POSIX only: processes that make and release one name of shared memory at once.
#include "blocks/clsMemMapped.h"
#include "blocks/named_memory_fixture.h"
#include "tamrix/named_memory.h"

#include <gtest/gtest.h>

#include <atomic>
#include <new>
#include <string>
#include <thread>

#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tamrix {
namespace {

using tests::child_process;
using tests::line_end;
using tests::named_memory_objects;

/// Memory that a process shares with the children it makes later, and with nobody else.
template <class T>
class family_memory {
public:
    family_memory()
        : memory_{new (::mmap(nullptr, sizeof(T), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0)) T{}}
    {}
    ~family_memory() { ::munmap(memory_, sizeof(T)); }
    family_memory(const family_memory&) = delete;
    T* operator->() const { return memory_; }

private:
    T* memory_;
};

struct race_track {
    std::atomic<int> arrived, failures;

    /// Both processes go on from here together.
    void meet(int round)
    {
        ++arrived;
        while (arrived.load() < 2 * round) std::this_thread::yield();
    }
};

/// True where the name is that of the object that the handle opened.
bool is_named(named_memory::handle file, const std::string& name)
{
    struct stat own = {}, named = {};
    return ::fstat(file, &own) == 0 && ::stat(("/dev/shm/" + name).c_str(), &named) == 0 && own.st_ino == named.st_ino;
}

/// Opens or creates the object, says whether the other process reached the same memory, and lets go.
int run_race(const std::string& prefix, race_track& track, int rounds)
{
    int meeting = 0;
    for (int round = 0; round < rounds; ++round) {
        clsMemMapped block{prefix};
        track.meet(++meeting);
        const bool mapped = block.OpenAndMapMemoryBlock("object", 40);
        if (mapped) ++std::atomic_ref<int>{*static_cast<int*>(block.BaseAddress())};
        track.meet(++meeting);
        if (!mapped || std::atomic_ref<int>{*static_cast<int*>(block.BaseAddress())}.load() != 2) ++track.failures;
        track.meet(++meeting);
        block.UnMapFile();
        track.meet(++meeting);
        if (::access(("/dev/shm/" + prefix + "object").c_str(), F_OK) == 0) ++track.failures;
    }
    return 0;
}

TEST_F(named_memory_objects, that_two_processes_make_at_once_are_one_and_leave_nothing)
{
    const family_memory<race_track> track;
    child_process first{[&](const line_end&) { return run_race(prefix, *track.operator->(), 300); }};
    child_process second{[&](const line_end&) { return run_race(prefix, *track.operator->(), 300); }};
    EXPECT_EQ(first.wait(), 0);
    EXPECT_EQ(second.wait(), 0);
    EXPECT_EQ(track->failures.load(), 0);
}

TEST_F(named_memory_objects, can_always_be_opened_and_keep_their_name_while_other_processes_come_and_go)
{
    const auto come_and_go = [&](const line_end&) {
        int failures = 0;
        for (int round = 0; round < 2000; ++round) {
            clsMemMapped block{prefix};
            if (!block.OpenAndMapMemoryBlock("object", 40) || !is_named(block.hFile(), name)) ++failures;
        }
        return failures == 0 ? 0 : 1;
    };
    child_process first{come_and_go}, second{come_and_go}, third{come_and_go};
    EXPECT_EQ(first.wait(), 0);
    EXPECT_EQ(second.wait(), 0);
    EXPECT_EQ(third.wait(), 0);
}

}  // namespace
}  // namespace tamrix
