#include "chips/command.h"

#include "chips/library.h"

#include <fstream>

namespace tamrix::sim {
namespace {

constexpr const char* usage = "usage: tamrix-chips check FILE...\n"
                              "       tamrix-chips generate FILE... --out LIBRARY [--out LIBRARY]\n"
                              "       tamrix-chips coverage FILE...\n"
                              "\n"
                              "A FILE is a chip file, or a folder of them (*.chip).\n";

struct request {
    std::string command;
    std::vector<std::filesystem::path> files, outputs;
};

bool read_words(const std::vector<std::string>& words, request& into)
{
    if (words.size() < 2) return false;
    into.command = words[0];
    for (std::size_t i = 1; i < words.size(); ++i) {
        std::error_code ignored;
        if (words[i] == "--out") {
            if (++i == words.size()) return false;
            into.outputs.emplace_back(words[i]);
        } else if (std::filesystem::is_directory(words[i], ignored)) {
            for (const auto& file : chip_files(words[i])) into.files.push_back(file);
        } else {
            into.files.emplace_back(words[i]);
        }
    }
    const bool writes = into.command == "generate";
    const bool known = writes || into.command == "check" || into.command == "coverage";
    return known && !into.files.empty() && writes != into.outputs.empty();
}

void write(const std::filesystem::path& file, const std::string& text)
{
    std::error_code ignored;  // a folder that cannot be made shows when the file is written
    if (file.has_parent_path()) std::filesystem::create_directories(file.parent_path(), ignored);
    std::ofstream out{file, std::ios::binary};
    if (!out.write(text.data(), static_cast<std::streamsize>(text.size())).flush())
        throw chip_error{file.string(), 0, "the file cannot be written"};
}

std::string answer(const request& asked)
{
    const auto chips = load_chips(asked.files);
    std::size_t devices = 0;
    for (const auto& at : chips) devices += 1 + at.aliases.size();
    if (asked.command == "check")
        return std::to_string(chips.size()) + " chips, " + std::to_string(devices) + " devices\n";
    const auto sets = make_all_vectors(chips);
    if (asked.command == "coverage") return coverage_text(chips, sets);
    const auto text = library_text(chips, sets);
    for (const auto& file : asked.outputs) write(file, text);
    return std::to_string(devices) + " devices, " + std::to_string(text.size()) + " bytes\n";
}

}  // namespace

command_result run_chips_command(const std::vector<std::string>& words)
{
    command_result result;
    try {
        request asked;
        if (read_words(words, asked))
            result.out = answer(asked);
        else
            result = {2, {}, usage};
    } catch (const std::exception& failed) {
        result = {1, {}, std::string{"tamrix-chips: "} + failed.what() + "\n"};
    }
    return result;
}

}  // namespace tamrix::sim
