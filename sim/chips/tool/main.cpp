// The `tamrix-chips` command: checks chip files, writes the vector library, tells how much of it finds what.
#include "chips/library.h"

#include <cstdio>
#include <fstream>

namespace {

using namespace tamrix::sim;

constexpr const char* usage = "usage: tamrix-chips check FILE...\n"
                              "       tamrix-chips generate FILE... --out LIBRARY [--out LIBRARY]\n"
                              "       tamrix-chips coverage FILE...\n"
                              "\n"
                              "A FILE is a chip file, or a folder of them (*.chip).\n";

struct request {
    std::string command;
    std::vector<std::filesystem::path> files, outputs;
};

bool read_words(int count, char** words, request& into)
{
    if (count < 3) return false;
    into.command = words[1];
    for (int i = 2; i < count; ++i) {
        const std::string word = words[i];
        if (word == "--out") {
            if (++i == count) return false;
            into.outputs.emplace_back(words[i]);
        } else if (std::filesystem::is_directory(word)) {
            for (const auto& file : chip_files(word)) into.files.push_back(file);
        } else {
            into.files.emplace_back(word);
        }
    }
    const bool writes = into.command == "generate";
    return (writes || into.command == "check" || into.command == "coverage") && writes != into.outputs.empty();
}

void write(const std::filesystem::path& file, const std::string& text)
{
    if (file.has_parent_path()) std::filesystem::create_directories(file.parent_path());
    std::ofstream out{file, std::ios::binary};
    if (!out.write(text.data(), static_cast<std::streamsize>(text.size())).flush())
        throw chip_error{file.string(), 0, "the file cannot be written"};
}

void run(const request& asked)
{
    const auto chips = load_chips(asked.files);
    std::size_t devices = 0;
    for (const auto& at : chips) devices += 1 + at.aliases.size();
    if (asked.command == "check") {
        std::printf("%zu chips, %zu devices\n", chips.size(), devices);
        return;
    }
    const auto sets = make_all_vectors(chips);
    if (asked.command == "coverage") {
        std::fputs(coverage_text(chips, sets).c_str(), stdout);
        return;
    }
    const auto text = library_text(chips, sets);
    for (const auto& file : asked.outputs) write(file, text);
    std::printf("%zu devices, %zu bytes\n", devices, text.size());
}

}  // namespace

int main(int count, char** words)
{
    request asked;
    try {
        if (!read_words(count, words, asked)) {
            std::fputs(usage, stderr);
            return 2;
        }
        run(asked);
    } catch (const std::exception& failed) {
        std::fprintf(stderr, "tamrix-chips: %s\n", failed.what());
        return 1;
    }
    return 0;
}
