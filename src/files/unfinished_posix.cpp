#include "files/unfinished.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <climits>
#include <cstddef>
#include <cstring>

#include <dirent.h>
#include <fcntl.h>
#include <sched.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace tamrix {

namespace {

constexpr std::array ending_signals{SIGHUP, SIGINT, SIGTERM, SIGPIPE};

/// A handler may only read memory that is whole at any moment, so that the names have fixed places.
struct place {
    enum : int { free, in_work, held };
    std::atomic<int> state{free};
    char path[PATH_MAX];
};
std::array<place, 16> places;

std::atomic<int> holding{0};
std::atomic<bool> ending{false};
thread_local int held_by_this_thread = 0;
static_assert(std::atomic<int>::is_always_lock_free && std::atomic<bool>::is_always_lock_free, "a handler needs them");

sigset_t set_of_signals()
{
    sigset_t all;
    ::sigemptyset(&all);
    for (const int signal : ending_signals) ::sigaddset(&all, signal);
    return all;
}

bool is_dot_name(const char* name) { return std::strcmp(name, ".") == 0 || std::strcmp(name, "..") == 0; }

/// The system's call itself: the library's functions for folders take memory, which a handler may not.
void empty_folder(int folder)
{
    struct entry {
        ino64_t file;
        off64_t next;
        unsigned short length;
        unsigned char kind;
        char name[1];
    };
    alignas(entry) char entries[4096];
    for (;;) {
        const long got = ::syscall(SYS_getdents64, folder, entries, sizeof entries);
        if (got <= 0) return;
        for (long at = 0; at < got;) {
            const auto* const one = reinterpret_cast<const entry*>(entries + at);
            at += one->length;
            if (is_dot_name(one->name) || ::unlinkat(folder, one->name, 0) == 0) continue;
            const int inner = ::openat(folder, one->name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
            if (inner < 0) continue;
            empty_folder(inner);
            ::close(inner);
            ::unlinkat(folder, one->name, AT_REMOVEDIR);
        }
    }
}

/// Other threads may still make files in a folder, but not without end: they wait or are done.
void remove_folder(const char* path)
{
    constexpr int most_attempts = 1000;
    for (int attempt = 0; attempt < most_attempts; ++attempt) {
        const int folder = ::open(path, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
        if (folder < 0) return;
        empty_folder(folder);
        ::close(folder);
        if (::rmdir(path) == 0) return;
        ::sched_yield();
    }
}

void remove_all_unfinished()
{
    for (const place& one : places) {
        if (one.state != place::held) continue;
        if (::unlink(one.path) != 0 && errno != ENOENT) remove_folder(one.path);
    }
}

extern "C" void end_by_signal(int signal)
{
    if (ending.exchange(true)) return;  // another thread is at it
    while (holding != 0) ::sched_yield();
    remove_all_unfinished();
    struct sigaction usual {};
    usual.sa_handler = SIG_DFL;
    ::sigaction(signal, &usual, nullptr);
    const sigset_t all = set_of_signals();
    ::pthread_sigmask(SIG_UNBLOCK, &all, nullptr);
    ::raise(signal);
}

}  // namespace

ending_held::ending_held()
{
    if (++held_by_this_thread > 1) return;
    const sigset_t all = set_of_signals();
    ::pthread_sigmask(SIG_BLOCK, &all, &before_);
    ++holding;
    if (!ending) return;
    --holding;
    for (;;) ::pause();  // the handler ends the program
}

ending_held::~ending_held()
{
    if (--held_by_this_thread > 0) return;
    --holding;
    ::pthread_sigmask(SIG_SETMASK, &before_, nullptr);
}

void unfinished::hold(const std::string& path)
{
    release();
    if (path.size() >= PATH_MAX) return;
    for (std::size_t i = 0; i < places.size(); ++i) {
        int expected = place::free;
        if (!places[i].state.compare_exchange_strong(expected, place::in_work)) continue;
        std::copy_n(path.c_str(), path.size() + 1, places[i].path);
        places[i].state = place::held;
        place_ = static_cast<int>(i);
        return;
    }
}

void unfinished::release()
{
    if (place_ >= 0) places[static_cast<std::size_t>(place_)].state = place::free;
    place_ = -1;
}

void remove_unfinished_at_signals()
{
    struct sigaction ours {};
    ours.sa_handler = end_by_signal;
    ours.sa_mask = set_of_signals();
    for (const int signal : ending_signals) {
        struct sigaction now {};
        if (::sigaction(signal, nullptr, &now) == 0 && now.sa_handler != SIG_IGN) ::sigaction(signal, &ours, nullptr);
    }
}

}  // namespace tamrix
