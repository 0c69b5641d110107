// One reader under libFuzzer; FUZZ_READER, given by the build, is its name. The first bytes of the input set the
// dialog's choices, the rest is the file.
#include "formats/byte_selection.h"
#include "formats/formats.h"
#include "pld/jedec.h"
#include "pld/svf.h"
#include "session/session.h"
#include "silent_shell.h"

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>

#include <fcntl.h>
#include <unistd.h>

namespace {

using namespace tamrix;

constexpr std::string_view reader = FUZZ_READER;
constexpr std::size_t choices = 8;

/// What all runs share: a plug-in with a small device, and a file in memory.
struct bench {
    silent_shell shell;
    std::string name = "tamrix-fuzz-" + std::to_string(::getpid());
    session plug_in{shell, name + "-"};
    transfer_variables transfer;
    pld_variables pld;
    std::string folder = "/dev/shm/" + name + "-";
    std::string path = folder + "file";

    bench()
    {
        auto& blocks = plug_in.blocks;
        blocks.attachsmall(0);
        blocks.buflength(0) = 0x1000;
        blocks.wordmode(0) = 2;
        blocks.attachbig(ibuffer_bytes(0x1000));
        transfer.fname = path;
    }
    ~bench()
    {
        ::unlink(path.c_str());
        ::unlink((folder + "pldtmp.svf").c_str());
    }
    void write(const std::uint8_t* data, std::size_t size) const
    {
        const int file = ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC, 0600);
        if (file < 0 || ::write(file, data, size) != static_cast<ssize_t>(size)) std::abort();
        ::close(file);
    }
};

bench& the_bench()
{
    static bench one;
    return one;
}

void choose(session& plug_in, transfer_variables& at, const std::uint8_t* data)
{
    const byte_selection& from = byte_selections[data[0] % byte_selections.size()];
    const byte_selection& to = byte_selections[data[1] % byte_selections.size()];
    plug_in.blocks.tlength(0) = data[2] * 16;
    at = {.bufstart = data[3] * 32,
          .filestart = data[4] % 4 == 0 ? data[5] : 0,
          .loadlength = data[6] % 2 == 0 ? 0x2000 : data[7],
          .filestep = from.step,
          .filephase = from.phase,
          .bufstep = to.step,
          .bufphase = to.phase,
          .fname = at.fname};
    plug_in.blocks.MainRtstr(0) = "";
}

/// A failed load must say why, and a good one must not.
void check(bool failed, const diagnostic& why_it_failed)
{
    if (failed != !why_it_failed.empty()) std::abort();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size < choices) return 0;
    bench& b = the_bench();
    b.write(data + choices, size - choices);
    choose(b.plug_in, b.transfer, data);
    if (reader == "jedec") {
        read_jedec(b.plug_in, b.pld, b.transfer.why_it_failed, b.path);
        return 0;
    }
    if (reader == "svf") {
        read_svf(b.transfer.why_it_failed, b.path, b.folder);
        return 0;
    }
    for (const format& one : formats()) {
        if (one.name != reader) continue;
        transfer_job job{.plug_in = b.plug_in,
                         .transfer = b.transfer,
                         .clear = static_cast<clear_option>(data[4] % 3),
                         .progress = [](double) {}};
        const status outcome = run_guarded(job, one.read);
        check(outcome == status::failed, b.transfer.why_it_failed);
        one.measure(b.path);
        detect_format(b.path);
        return 0;
    }
    std::abort();  // no such reader
}
