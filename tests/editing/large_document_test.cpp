// The largest buffer: what a step takes of memory and of time.
#include "editing/document.h"

#include <array>
#include <chrono>
#include <cstring>
#include <iostream>
#include <random>

#include <gtest/gtest.h>
#include <malloc.h>
#include <sys/mman.h>

namespace tamrix::tests {
namespace {

constexpr std::size_t largest_buffer = std::size_t{264} << 20;

/// As shared memory has it: outside of what the program allocates.
class mapped_buffer {
public:
    mapped_buffer() : memory_{mmap(nullptr, largest_buffer, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0)}
    {}
    ~mapped_buffer() { munmap(memory_, largest_buffer); }
    mapped_buffer(const mapped_buffer&) = delete;
    mapped_buffer& operator=(const mapped_buffer&) = delete;
    std::span<std::uint8_t> bytes() const { return {static_cast<std::uint8_t*>(memory_), largest_buffer}; }

private:
    void* memory_;
};

void fill_at_random(std::span<std::uint8_t> bytes, std::uint64_t start)
{
    std::mt19937_64 random{start};
    for (std::size_t at = 0; at + 8 <= bytes.size(); at += 8) {
        const std::uint64_t eight = random();
        std::memcpy(bytes.data() + at, &eight, sizeof eight);
    }
}

template <class F>
double timed(const char* what, F&& action)
{
    const auto start = std::chrono::steady_clock::now();
    action();
    const std::chrono::duration<double, std::milli> took = std::chrono::steady_clock::now() - start;
    std::cout << "    " << what << ": " << took.count() << " ms\n";
    return took.count();
}

std::size_t allocated()
{
    const struct mallinfo2 now = mallinfo2();
    return now.uordblks + now.hblkhd;
}

TEST(large_document, takes_little_memory_for_a_thousand_edits)
{
    const mapped_buffer buffer;
    fill_at_random(buffer.bytes(), 1);
    const std::size_t before = allocated();
    editing::document edited{[&](const std::string&) { return buffer.bytes(); }};
    edited.change_device("largest");
    std::mt19937_64 random{2};
    timed("1000 edits", [&] {
        for (int i = 0; i < 1000; ++i) {
            const std::size_t address = random() % largest_buffer;
            edited.replace(address, std::array{static_cast<std::uint8_t>(~edited.bytes()[address])}, "Typing");
        }
    });
    constexpr std::size_t most = 10'000'000;
    std::cout << "    own figure " << edited.memory() << ", really " << allocated() - before << " bytes\n";
    EXPECT_LT(edited.memory(), most);
    EXPECT_LT(allocated() - before, most);
    EXPECT_GT(edited.memory(), (allocated() - before) / 2) << "the figure is an honest one";
}

TEST(large_document, watches_a_load_and_undoes_it)
{
    const mapped_buffer buffer;
    editing::document edited{[&](const std::string&) { return buffer.bytes(); }, std::size_t{1} << 30};
    edited.change_device("largest");
    timed("watch, blank, no change", [&] { edited.watch("Load", [] { return true; }); });
    std::vector<std::uint8_t> first(buffer.bytes().size()), second(buffer.bytes().size());
    fill_at_random(first, 1);
    fill_at_random(second, 2);
    const auto load = [&](const std::vector<std::uint8_t>& file) {
        return [&] { return std::ranges::copy(file, buffer.bytes().begin()), true; };
    };
    timed("copying alone", [&] { load(first)(); });
    std::ranges::fill(buffer.bytes(), std::uint8_t{0});
    timed("watch, into blank", [&] { edited.watch("Load", load(first)); });
    timed("saved", [&] { edited.saved(); });
    timed("watch, over content", [&] { edited.watch("Load", load(second)); });
    timed("watch, no change", [&] { edited.watch("Load", [] { return true; }); });
    std::cout << "    " << (edited.memory() >> 20) << " MiB\n";
    timed("undo", [&] { edited.undo(); });
    EXPECT_FALSE(edited.changed());
    EXPECT_TRUE(std::ranges::equal(edited.bytes(), first));
    timed("redo", [&] { edited.redo(); });
    EXPECT_TRUE(std::ranges::equal(edited.bytes(), second));
    timed("fill", [&] { edited.fill(0, largest_buffer, 0xFF); });
    timed("undo of fill", [&] { edited.undo(); });
    EXPECT_TRUE(std::ranges::equal(edited.bytes(), second));
    timed("undo", [&] { edited.undo(); });
    EXPECT_TRUE(std::ranges::equal(edited.bytes(), first));
    timed("changed device", [&] { edited.change_device("other"); });
}

}  // namespace
}  // namespace tamrix::tests
