// Times loads through the plug-in's load dialog, and copies of the same file into shared memory to compare them with.
// bench_loads FILE ROUNDS FOLDER prints "NAME MILLISECONDS" for every run; the kinds take turns. FOLDER, with its
// separator, gets the temporary image.
#include "cli/attached_plug_in.h"
#include "transfer/file_io.h"
#include "transfer/readfile.h"
#include "transfer/rwfile/binary.h"

#include <cstdio>
#include <cstdlib>
#include <functional>
#include <span>
#include <string>
#include <vector>

#include <fcntl.h>
#include <sys/mman.h>
#include <unistd.h>

namespace tamrix {

namespace {

class bench {
public:
    bench(std::string file, std::string folder) : file_{std::move(file)}, folder_{std::move(folder)} {}

    void round()
    {
        copy_with_writes();
        load_into_new_buffer();
        load_into_used_buffer();
        load_by_bytes();
    }

private:
    void report(const char* name, double started)
    {
        std::printf("%s %.3f\n", name, 1000 * (screen_.seconds() - started));
    }

    std::int64_t length() const { return input_file{file_}.length(); }

    /// What `cp FILE /dev/shm/` does: reads parts and writes them to a new object.
    void copy_with_writes()
    {
        const std::string object = "/bench-" + std::to_string(::getpid());
        std::vector<std::uint8_t> part(std::size_t{128} << 10);
        const double started = screen_.seconds();
        input_file in{file_};
        const int out = ::shm_open(object.c_str(), O_CREAT | O_RDWR | O_TRUNC, 0600);
        for (std::int64_t at = 0; at < in.length(); at += static_cast<std::int64_t>(part.size())) {
            const std::size_t count = in.read_at(at, part);
            if (::write(out, part.data(), count) != static_cast<ssize_t>(count)) std::abort();
        }
        report("copy", started);
        ::close(out);
        ::shm_unlink(object.c_str());
    }

    void set_device(cli::attached_plug_in& plug_in, std::int64_t words, std::int64_t buflength)
    {
        plug_in.blocks.value<std::int32_t>("tlength") = static_cast<std::int32_t>(words);
        plug_in.blocks.value<std::uint8_t>("wordmode") = 1;
        plug_in.attach_buffer(static_cast<std::int32_t>(buflength));
    }

    void load(cli::attached_plug_in& plug_in, const std::function<void(readfile&)>& settings, const char* name)
    {
        plug_in.screen.person = [&](forms::form& shown) {
            auto& dialog = dynamic_cast<readfile&>(shown);
            settings(dialog);
            dialog.accept();
        };
        std::string file = file_, folder = folder_;
        std::int16_t binary = 0;
        const double started = screen_.seconds();
        if (!plug_in.methods.readfile0(file, binary, folder).ok() || plug_in.state.rformat != 0) std::abort();
        report(name, started);
    }

    /// The first load of a host: the buffer's pages are taken while it runs.
    void load_into_new_buffer()
    {
        cli::attached_plug_in plug_in{0};
        plug_in.blocks.value<std::int32_t>("tlength") = static_cast<std::int32_t>(length());
        plug_in.blocks.value<std::uint8_t>("wordmode") = 1;
        plug_in.blocks.create_buffer(static_cast<std::int32_t>(length()));
        std::int16_t num = plug_in.blocks.num();
        if (!plug_in.methods.buffercomopt(num).ok()) std::abort();
        load(
            plug_in, [](readfile& dialog) { dialog.rfileOption1(1).click(); }, "load_new");
    }

    void load_into_used_buffer()
    {
        cli::attached_plug_in plug_in{0};
        set_device(plug_in, length(), length());
        for (std::uint8_t& byte : plug_in.blocks.buffer()) byte = 1;
        load(
            plug_in, [](readfile& dialog) { dialog.rfileOption1(1).click(); }, "load_used_00");
        load(
            plug_in, [](readfile& dialog) { dialog.rfileOption1(0).click(); }, "load_used_ff");
    }

    /// A size below that of the device sends the load of a large image down its path byte by byte.
    void load_by_bytes()
    {
        cli::attached_plug_in plug_in{0};
        set_device(plug_in, large_image_bytes, large_chunk_bytes);
        const std::string most = "7FFFFFF";
        load(
            plug_in, [&](readfile& dialog) { dialog.rfileText3.enter(most); }, "bytes");
        load(
            plug_in, [&](readfile& dialog) { dialog.rfilecombo1.pick(1); }, "bytes_even");
    }

    std::string file_, folder_;
    cli::shell screen_;
};

}  // namespace

}  // namespace tamrix

int main(int count, char** words)
{
    if (count != 4) {
        std::fputs("usage: bench_loads FILE ROUNDS FOLDER/\n", stderr);
        return 2;
    }
    tamrix::bench run{words[1], words[3]};
    for (int round = std::atoi(words[2]); round > 0; --round) run.round();
}
