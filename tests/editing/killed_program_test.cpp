// Programs that are killed while they edit: the next one is offered a state that was there, and a recent one.
#include "editing/copied_document.h"
#include "image/crc32.h"
#include "support/temp_files.h"

#include <atomic>
#include <csignal>
#include <cstring>
#include <iostream>
#include <new>
#include <random>

#include <gtest/gtest.h>
#include <sched.h>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

namespace tamrix::tests {
namespace {

using namespace std::chrono_literals;
using editing::document;

std::uint32_t sum_of_state(const std::string& device, std::size_t shown, std::span<const std::uint8_t> all)
{
    crc32 sum;
    const std::string name = device + ' ' + std::to_string(shown) + ' ';
    sum.add({reinterpret_cast<const std::uint8_t*>(name.data()), name.size()});
    sum.add(all);
    return sum.value();
}

/// What a program that is going to be killed did, in memory that outlives it. Times are its own, in milliseconds.
struct diary {
    struct state {
        std::uint32_t sum;
        bool changed;
        std::int64_t since;
    };
    std::atomic<std::int64_t> now{0};
    std::atomic<bool> in_slice{false};
    std::atomic<std::size_t> count{0};
    std::array<state, 100'000> states{};

    bool was_there_lately(const auto& is_it) const
    {
        const std::size_t last = count;
        for (std::size_t i = 0; i < last; ++i) {
            const std::int64_t until = i + 1 < last ? states[i + 1].since : now.load();
            if (is_it(states[i]) && until >= now - std::int64_t{10'000}) return true;
        }
        return false;
    }
};

struct shared_diary {
    void* memory = mmap(nullptr, sizeof(diary), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0);
    diary& book = *new (memory) diary;
    ~shared_diary() { munmap(memory, sizeof(diary)); }
};

/// Edits at random with a clock that is faster than the real one.
class doomed_program {
public:
    doomed_program(const std::string& folder, diary& book, unsigned start)
        : f_{folder, 40'000}, book_{book}, random_{start}
    {
        f_.buffers.devices["huge"] = {150'000, 0xFF};
        f_.edited.change_device("huge");
        write_down();
    }
    [[noreturn]] void run()
    {
        for (std::int64_t timer = 0;;) {
            pass(static_cast<std::int64_t>(below(400)));
            act();
            write_down();
            if (book_.now < timer) continue;
            timer = book_.now + 1000;
            while (slice()) {
                pass(5);
                if (below(3) > 0) continue;
                act();
                write_down();
            }
        }
    }

private:
    std::size_t below(std::size_t end) { return random_() % end; }
    void pass(std::int64_t milliseconds) { book_.now += milliseconds; }
    bool slice()
    {
        book_.in_slice = true;
        const bool more = f_.copy.work(editing::wall_time{1h * 1000 + book_.now.load() * 1ms});
        book_.in_slice = false;
        return more;
    }
    void write_down()
    {
        if (book_.count == book_.states.size()) _exit(1);
        const document& edited = f_.edited;
        book_.states[book_.count] = {sum_of_state(edited.device(), edited.bytes().size(), f_.all()), edited.changed(),
                                     book_.now};
        ++book_.count;
    }
    void act()
    {
        document& edited = f_.edited;
        const std::size_t length = edited.bytes().size(), address = below(length), kind = below(40);
        const auto rest = below(4) == 0 ? document::unseen::is_dropped : document::unseen::stays;
        if (kind < 25) {
            f_.type(address, static_cast<std::uint8_t>(random_()));
        } else if (kind < 28) {
            edited.fill(address, below(length - address), static_cast<std::uint8_t>(random_()), rest);
        } else if (kind < 30) {
            const auto file = random_bytes(length, static_cast<unsigned>(random_()));
            edited.watch(
                "Load", [&] { return std::ranges::copy(file, f_.buffers.buffer().begin()), true; }, rest);
        } else if (kind < 32) {
            constexpr std::array names{"huge", "small", "largest"};
            edited.change_device(names[below(names.size())]);
        } else if (kind < 36) {
            edited.undo();
        } else if (kind < 39) {
            edited.redo();
        } else if (below(3) == 0) {
            edited.saved();
        }
    }

    copied_document f_;
    diary& book_;
    std::mt19937 random_;
};

/// Half of the moments are in the middle of a slice. How much was done until then does not depend on the machine.
void kill_at_random(pid_t child, const diary& book, std::mt19937& random, bool in_slice)
{
    const std::size_t least = 2 + random() % 60;
    while (book.count < least) usleep(100);
    usleep(static_cast<useconds_t>(random() % 2000));
    if (in_slice) {
        while (!book.in_slice) sched_yield();
    }
    kill(child, SIGKILL);
    int status = 0;
    waitpid(child, &status, 0);
    ASSERT_TRUE(WIFSIGNALED(status)) << "it was to be killed";
}

TEST(killed_program, leaves_a_state_that_was_there_in_its_last_ten_seconds)
{
    std::mt19937 random{5};
    int copies = 0, in_slices = 0;
    for (unsigned run = 0; run < 100; ++run) {
        const temp_folder temporary;
        const std::string folder = temporary.path("copies");
        const shared_diary shared;
        const pid_t child = fork();
        ASSERT_GE(child, 0);
        if (child == 0) doomed_program{folder, shared.book, run}.run();
        kill_at_random(child, shared.book, random, run % 2 == 0);
        in_slices += shared.book.in_slice;
        const auto found = editing::abandoned_copies(folder);
        ASSERT_LE(found.size(), 1u);
        if (found.empty()) {
            ASSERT_TRUE(shared.book.was_there_lately([](const diary::state& one) { return !one.changed; })) << run;
            continue;
        }
        ++copies;
        const auto all = editing::recover(found[0]);
        const std::uint32_t sum = sum_of_state(found[0].state.device, found[0].state.shown, all);
        ASSERT_TRUE(shared.book.was_there_lately([&](const diary::state& one) { return one.sum == sum; })) << run;
    }
    std::cout << "    " << copies << " copies, " << in_slices << " killed in a slice\n";
    EXPECT_GT(copies, 50);
    EXPECT_GT(in_slices, 10);
}

}  // namespace
}  // namespace tamrix::tests
