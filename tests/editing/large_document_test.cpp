// The largest buffer: what a step takes of memory and of time.
#include "editing/copied_document.h"
#include "support/temp_files.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <ctime>
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
    std::vector<std::uint64_t> some(1 << 18);
    for (auto& one : some) one = random();
    const std::span from{reinterpret_cast<const std::uint8_t*>(some.data()), some.size() * sizeof some[0]};
    for (; !bytes.empty(); bytes = bytes.subspan(std::min(from.size(), bytes.size())))
        std::ranges::copy(from.first(std::min(from.size(), bytes.size())), bytes.begin());
}

/// Milliseconds of the processor: other programs take their time as well.
double timed(auto&& action)
{
    const std::clock_t start = std::clock();
    action();
    return 1000.0 * static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

void timed(const char* what, auto&& action) { std::cout << "    " << what << ": " << timed(action) << " ms\n"; }

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
    edited.undo();
    edited.saved();
    timed("load, over content", [&] { edited.load("a.bin", load(second)); });
    EXPECT_FALSE(edited.changed());
    edited.undo();
    edited.saved();
    edited.redo();
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

TEST(large_document, is_copied_in_slices)
{
    const temp_folder temporary;
    const mapped_buffer buffer;
    fill_at_random(buffer.bytes().first(largest_buffer / 2), 1);
    editing::document edited{[&](const std::string&) { return buffer.bytes(); }};
    std::optional<editing::emergency_copy> copy{std::in_place, temporary.path("copies"), edited};
    edited.on_bytes = [&](std::size_t address, std::size_t length) { copy->note(address, length); };
    edited.change_device("largest");
    edited.replace(5, std::array<std::uint8_t, 1>{5}, "Typing");
    editing::wall_time now{std::chrono::hours{1}};
    copy->work(now);
    now += std::chrono::seconds{3};
    std::vector<double> slices;
    for (bool more = true; more;) slices.push_back(timed([&] { more = copy->work(now); }));
    std::ranges::sort(slices);
    std::cout << "    " << slices.size() << " slices: half below " << slices[slices.size() / 2] << " ms, longest "
              << slices.back() << " ms\n";
    EXPECT_GT(slices.size(), 100u);
    copy.reset();
    const auto found = editing::abandoned_copies(temporary.path("copies"));
    ASSERT_EQ(found.size(), 1u);
    EXPECT_TRUE(std::ranges::equal(editing::recover(found[0]), edited.bytes()));
    EXPECT_LT(std::filesystem::file_size(found[0].path), largest_buffer / 2 + largest_buffer / 100);
}

}  // namespace
}  // namespace tamrix::tests
