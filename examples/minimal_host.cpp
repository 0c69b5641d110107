// The smallest host: loads a file into a buffer of 64 KiB through the plug-in's load dialog, tells the outcome.
// Build it:  g++ -std=c++20 -I include examples/minimal_host.cpp -o minimal_host
// Run it:    LD_LIBRARY_PATH=build/release/bin ./minimal_host FILE
#include "tamrix/blocks.h"
#include "tamrix/clstamrix.h"
#include "tamrix/named_memory.h"
#include "tamrix/text_heap.h"

#include <cstdio>
#include <map>

#include <dlfcn.h>

using namespace tamrix;

struct block {  // of shared memory; its name goes away with its last user
    block(const std::string& name, std::uint32_t length_bytes) : object{name}, file{named_memory::open(name)}
    {
        if (file == 0) file = named_memory::create(name, length_bytes);
        bytes = named_memory::map(file);
    }
    ~block() { named_memory::close(file, object); }
    std::string object;
    named_memory::handle file;
    void* bytes;
};

int main(int, char** arguments)
{
    void* library = dlopen("libtamrix.so", RTLD_NOW);
    if (library == nullptr) return std::puts(dlerror()), 1;
    const auto create = reinterpret_cast<decltype(&tamrix_create)>(dlsym(library, "tamrix_create"));
    const auto destroy = reinterpret_cast<decltype(&tamrix_destroy)>(dlsym(library, "tamrix_destroy"));
    const auto text_of = reinterpret_cast<decltype(&tamrix_text_get)>(dlsym(library, "tamrix_text_get"));

    std::int16_t num = 0, intel = 1;
    std::int32_t buffer_bytes = 0x10000;
    std::map<std::string_view, block> blocks;
    for (const block_info& one : small_blocks)
        blocks.try_emplace(one.name, small_block_object(one.name, num), one.mapped_bytes);
    block buffer{big_block_object("ibuffer"), static_cast<std::uint32_t>(ibuffer_bytes(buffer_bytes))};

    Clstamrix* plug_in = create();
    plug_in->bufcomopt(num);
    *static_cast<std::int32_t*>(blocks.at("buflength").bytes) = buffer_bytes;
    *static_cast<std::int32_t*>(blocks.at("tlength").bytes) = buffer_bytes;  // the device: 64 K words ...
    *static_cast<std::uint8_t*>(blocks.at("wordmode").bytes) = 1;            // ... of one byte
    plug_in->buffercomopt(num);

    std::string file{arguments[1]}, folder{"./"};
    const reply outcome = plug_in->readfile0(file, intel, folder);
    const std::uint32_t told = *static_cast<std::uint32_t*>(blocks.at("MainRtstr").bytes);
    std::puts(outcome.ok() ? text_of(told, nullptr) : outcome.error.c_str());
    for (int i = 0; i < 16; ++i) std::printf("%02X ", static_cast<std::uint8_t*>(buffer.bytes)[i]);
    std::puts("");
    plug_in->freesharebufferopt();
    destroy(plug_in);
}
