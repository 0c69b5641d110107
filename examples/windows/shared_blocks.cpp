// The blocks by which host and plug-in share their state, between two processes, by the system's calls alone.
//   shared_blocks.exe          makes all 62 for instance 3, fills them, and starts itself a second time
//   shared_blocks.exe second   opens them by name, checks sizes and contents, and answers in each
// Build it, in the folder of the package:
//   i686-w64-mingw32-g++ -std=c++20 -I include samples/shared_blocks.cpp -o shared_blocks.exe -static
#include "tamrix/blocks.h"

#include <cstdio>
#include <cstring>
#include <string>
#include <vector>

#include <windows.h>

namespace {

constexpr int instance = 3;
constexpr std::int32_t buffer_bytes = 100000;
constexpr unsigned char question = 0x5A, answer = 0xA5;

struct named_block {
    std::string object;
    std::uint32_t bytes;
};

std::vector<named_block> all_blocks()
{
    std::vector<named_block> all;
    for (const tamrix::block_info& one : tamrix::small_blocks)
        all.push_back({tamrix::small_block_object(one.name, instance), one.mapped_bytes});
    all.push_back({tamrix::big_block_object("ibuffer"), std::uint32_t(tamrix::ibuffer_bytes(buffer_bytes))});
    all.push_back({tamrix::big_block_object("ibuffer66"), tamrix::big_blocks[1].mapped_bytes});
    return all;
}

/// Each block has contents of its own, so that no two can be taken for one.
unsigned char byte_at(std::size_t block, std::size_t index, unsigned char mark)
{
    return static_cast<unsigned char>(mark ^ (block * 7 + index));
}

void fill(unsigned char* at, std::size_t block, std::size_t bytes, unsigned char mark)
{
    for (std::size_t i = 0; i < bytes; ++i) at[i] = byte_at(block, i, mark);
}

bool holds(const unsigned char* at, std::size_t block, std::size_t bytes, unsigned char mark)
{
    std::size_t i = 0;
    while (i < bytes && at[i] == byte_at(block, i, mark)) ++i;
    return i == bytes;
}

/// Bytes that a view reaches: whole pages of 4096.
std::size_t reach(const void* at)
{
    MEMORY_BASIC_INFORMATION region{};
    return ::VirtualQuery(at, &region, sizeof region) != 0 ? region.RegionSize : 0;
}

int fail(const named_block& block, const char* why)
{
    std::printf("%s: %s\n", block.object.c_str(), why);
    return 1;
}

int check_and_answer(std::size_t number, const named_block& block)
{
    const HANDLE mapping = ::OpenFileMappingA(FILE_MAP_ALL_ACCESS, FALSE, block.object.c_str());
    if (mapping == nullptr) return fail(block, "is not there");
    auto* const at = static_cast<unsigned char*>(::MapViewOfFile(mapping, FILE_MAP_ALL_ACCESS, 0, 0, 0));
    int wrong = 0;
    if (at == nullptr || reach(at) != (block.bytes + 4095) / 4096 * 4096) {
        wrong = fail(block, "has another size");
    } else if (!holds(at, number, block.bytes, question)) {
        wrong = fail(block, "has other contents");
    } else {
        fill(at, number, block.bytes, answer);
    }
    ::UnmapViewOfFile(at);
    ::CloseHandle(mapping);
    return wrong;
}

int second_process()
{
    const auto all = all_blocks();
    int wrong = 0;
    for (std::size_t i = 0; i < all.size(); ++i) wrong += check_and_answer(i, all[i]);
    std::printf("The second process found %zu of %zu blocks as they should be.\n", all.size() - std::size_t(wrong),
                all.size());
    std::fflush(stdout);
    return wrong;
}

/// Runs this program once more; true where that ends well.
bool run_second_process()
{
    char path[MAX_PATH] = {};
    ::GetModuleFileNameA(nullptr, path, MAX_PATH);
    std::string command = "\"" + std::string{path} + "\" second";
    STARTUPINFOA start{};
    start.cb = sizeof start;
    PROCESS_INFORMATION started{};
    if (::CreateProcessA(path, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr, &start, &started) == 0)
        return false;
    ::WaitForSingleObject(started.hProcess, INFINITE);
    DWORD result = 1;
    ::GetExitCodeProcess(started.hProcess, &result);
    ::CloseHandle(started.hThread);
    ::CloseHandle(started.hProcess);
    return result == 0;
}

int first_process()
{
    const auto all = all_blocks();
    std::vector<HANDLE> mappings;  // a block lives as long as somebody has it open
    std::vector<unsigned char*> views;
    for (const named_block& one : all) {
        mappings.push_back(
            ::CreateFileMappingA(INVALID_HANDLE_VALUE, nullptr, PAGE_READWRITE, 0, one.bytes, one.object.c_str()));
        views.push_back(static_cast<unsigned char*>(::MapViewOfFile(mappings.back(), FILE_MAP_ALL_ACCESS, 0, 0, 0)));
        if (views.back() == nullptr) return fail(one, "cannot be made");
        fill(views.back(), views.size() - 1, one.bytes, question);
    }
    int wrong = run_second_process() ? 0 : 1;
    for (std::size_t i = 0; i < all.size(); ++i) {
        if (!holds(views[i], i, all[i].bytes, answer)) wrong += fail(all[i], "has no answer in it");
        ::UnmapViewOfFile(views[i]);
        ::CloseHandle(mappings[i]);
    }
    if (wrong == 0) std::puts("The first process found the answer in each.");
    return wrong;
}

}  // namespace

int main(int count, char** words)
{
    const bool second = count > 1 && std::strcmp(words[1], "second") == 0;
    return (second ? second_process() : first_process()) == 0 ? 0 : 1;
}
