// Times loads through the plug-in's load dialog, and copies of the same file into shared memory to compare them with.
// bench_loads FILE JEDEC_FILE ROUNDS FOLDER prints "NAME MILLISECONDS" for every run; the kinds take turns. FOLDER,
// with its separator, gets the temporary image.
#include "cli/attached_plug_in.h"
#include "files/file_io.h"
#include "formats/binary.h"
#include "transfer/readfile.h"
#include "transfer/writefile.h"

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
    explicit bench(std::span<char*> words)
        : file_{words[0]}, intel_{words[1]}, motorola_{words[2]}, jedec_{words[3]}, folder_{words[4]}
    {}

    void run()
    {
        copy_with_writes();
        load_into_new_buffer();
        load_into_used_buffer();
        load_by_bytes();
        load_text(intel_, 1, "load_intel");
        load_text(motorola_, 2, "load_motorola");
        save_text("saved.hex", 1, "save_intel");
        save_text("saved.s19", 2, "save_motorola");
        load_fuses();
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
        if (!plug_in.methods.readfile0(file, binary, folder).ok() || plug_in.variables.transfer.rformat != 0)
            std::abort();
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

    /// Into a buffer in use, after a clear to 0xFF.
    void load_text(std::string file, std::int16_t format, const char* name)
    {
        cli::attached_plug_in plug_in{0};
        set_device(plug_in, length(), length());
        plug_in.screen.person = [](forms::form& shown) { shown.accept(); };
        std::string folder = folder_;
        const double started = screen_.seconds();
        if (!plug_in.methods.readfile0(file, format, folder).ok() || plug_in.variables.transfer.rformat != 0)
            std::abort();
        report(name, started);
    }

    /// The image from a buffer that holds it, into a new file.
    void save_text(const std::string& name, int format, const char* label)
    {
        cli::attached_plug_in plug_in{0};
        set_device(plug_in, length(), length());
        constexpr int word_bytes = 16;  // so that the words are few enough for text formats
        plug_in.blocks.value<std::int32_t>("tlength") = static_cast<std::int32_t>(length() / word_bytes);
        plug_in.blocks.value<std::uint8_t>("wordmode") = word_bytes;
        load(
            plug_in, [](readfile& dialog) { dialog.rfileOption1(1).click(); }, "load_to_save");
        plug_in.screen.person = [&](forms::form& shown) {
            auto& dialog = dynamic_cast<writefile&>(shown);
            dialog.wfileOption2(format).click();
            if (!dialog.wfileOption2(format).value()) std::abort();
            dialog.accept();
        };
        std::string file = folder_ + name, folder = folder_;
        const double started = screen_.seconds();
        if (!plug_in.methods.wfile(file, folder).ok() || plug_in.variables.transfer.rformat != 0) std::abort();
        report(label, started);
        ::unlink(file.c_str());
    }

    /// A character a fuse, into a buffer in use.
    void load_fuses()
    {
        constexpr std::int32_t fuses = 1000000;
        cli::attached_plug_in plug_in{0};
        set_device(plug_in, fuses, fuses);
        const double started = screen_.seconds();
        if (!plug_in.methods.readpldfile(jedec_).ok() || !plug_in.variables.transfer.why_it_failed.empty())
            std::abort();
        report("jedec", started);
    }

    std::string file_, intel_, motorola_, jedec_, folder_;
    cli::shell screen_;
};

}  // namespace

}  // namespace tamrix

int main(int count, char** words)
{
    constexpr int words_needed = 5;
    if (count != words_needed + 1) {
        std::fputs("usage: bench_loads IMAGE INTEL_FILE MOTOROLA_FILE JEDEC_FILE FOLDER/\n", stderr);
        return 2;
    }
    tamrix::bench{{words + 1, words_needed}}.run();
}
