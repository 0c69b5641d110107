// The vector library under libFuzzer: the first byte of the input picks the device that is looked for, the rest behind
// the eighth is the file.
#include "session/session.h"
#include "silent_shell.h"
#include "ttl/library/library.h"

#include <cstdint>
#include <cstdlib>
#include <stdexcept>
#include <string>
#include <vector>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using namespace tamrix;

constexpr std::size_t choices = 8;

/// What all runs share: a plug-in and a library in memory.
struct bench {
    silent_shell shell;
    std::string name = "tamrix-fuzz-" + std::to_string(::getpid());
    session plug_in{shell, name + "-"};
    ttl_variables ttl;
    std::string folder = "/dev/shm/" + name + "/";

    bench()
    {
        plug_in.blocks.attachsmall(0);
        plug_in.blocks.modeltype(0) = 40;
        plug_in.syspath = folder;
        ::mkdir(folder.c_str(), 0700);
        ::mkdir((folder + "lib").c_str(), 0700);
    }
    ~bench()
    {
        ::unlink(path().c_str());
        ::rmdir((folder + "lib").c_str());
        ::rmdir(folder.c_str());
    }
    std::string path() const { return folder + "lib/test.lib"; }
    void write(const std::uint8_t* data, std::size_t size) const
    {
        const int file = ::open(path().c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
        if (file < 0 || ::write(file, data, size) != static_cast<ssize_t>(size)) std::abort();
        ::close(file);
    }
};

/// A change may be refused, but not crash.
template <class Change>
void attempt(Change change)
{
    try {
        change();
    } catch (const std::runtime_error&) {
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < choices) return 0;
    static bench b;
    static const std::string names[] = {"7400", "TEN", "1234567890AB", ""};
    const std::string& name = names[data[0] % 4];
    b.write(data + choices, size - choices);
    std::vector<std::string> list = read_directory(b.plug_in).names;
    if (list.size() > 3000) std::abort();
    fetch_device(b.plug_in, b.ttl, name);
    auto& ttl = b.ttl;
    if (ttl.ttlcnt > 255 || ttl.ttlcnt < 0 || ttl.ttlpin > 99 || ttl.ttlpin < 0) std::abort();
    attempt([&] {
        ttl.ttlname = name;
        ttl.ttlpin = 4;
        ttl.ttlcnt = 2;
        ttlinsert(b.plug_in, ttl, list, {"01GV"});
    });
    attempt([&] { ttldelete(b.plug_in, name, 1); });
    return 0;
}
