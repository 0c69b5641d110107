// Times the logic IC test on the simulated programmer. bench_logic FOLDER prints "NAME MILLISECONDS" for one run of
// each kind; FOLDER, with its separator, gets a library of 500 devices in its folder lib.
#include "cli/simulated_socket.h"
#include "host/data_folder.h"
#include "ttl/library/library.h"

#include <cstdio>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

namespace tamrix {

namespace {

constexpr std::size_t devices = 500;

/// Of the processor, for this program.
double milliseconds() { return 1000.0 * static_cast<double>(std::clock()) / CLOCKS_PER_SEC; }

/// The shipped library, filled up; what was in it is last in the file.
void make_library(session& state, ttl_variables& ttl)
{
    std::filesystem::create_directories(state.syspath + "lib");
    std::filesystem::copy_file(host::data_folder() + "/lib/test.lib", state.syspath + "lib/test.lib",
                               std::filesystem::copy_options::overwrite_existing);
    std::vector<std::string> names = read_directory(state).names;
    const std::vector<std::string> rows{"00H00HGH00H00V", "11L11LGL11L11V"};
    ttl.ttlpin = 14;
    ttl.ttlcnt = 3;
    while (names.size() < devices) {
        ttl.ttlname = "X" + std::to_string(1000 + names.size());
        ttlinsert(state, ttl, names, rows);
    }
}

/// The name in the last record of the file.
std::string last_device(const std::string& folder)
{
    std::ifstream file{folder + "lib/test.lib", std::ios::binary};
    const std::string text{std::istreambuf_iterator<char>{file}, {}};
    const std::string name = text.substr(text.rfind("\r\n$") + 3, 12);
    return name.substr(0, name.find(' '));
}

void time_load(session& state, ttl_variables& ttl, const std::string& name, const char* label)
{
    const double started = milliseconds();
    fetch_device(state, ttl, name);
    std::printf("%s %.3f\n", label, milliseconds() - started);
    if (ttl.ttlpin == 14 && name[0] == 'X') std::abort();  // it was not the last one
}

void time_auto_find(cli::attached_plug_in& plug_in)
{
    std::string folder = host::data_folder() + "/";
    plug_in.state.hardware.device();  // makes the chip, which is not part of the search
    const double started = milliseconds();
    if (!plug_in.methods.mnutestautofind0(folder).ok()) std::abort();
    std::printf("auto_find %.3f\n", milliseconds() - started);
    std::printf("auto_find_devices %zu\n", read_directory(plug_in.state).names.size());
}

}  // namespace

}  // namespace tamrix

int main(int count, char** words)
{
    using namespace tamrix;
    if (count != 2) {
        std::fputs("usage: bench_logic FOLDER/\n", stderr);
        return 2;
    }
    cli::attached_plug_in plug_in{0};
    const cli::simulated_socket socket{plug_in, {.chip = "74181"}};
    plug_in.state.syspath = words[1];
    make_library(plug_in.state, plug_in.variables.ttl);
    time_load(plug_in.state, plug_in.variables.ttl, last_device(words[1]), "load_last");
    time_auto_find(plug_in);
}
