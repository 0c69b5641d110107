#include "chips/chip.h"

#include "base/ascii.h"

#include <algorithm>
#include <fstream>
#include <set>
#include <sstream>

namespace tamrix::sim {
namespace {

std::string content(const std::filesystem::path& file)
{
    std::ifstream in{file, std::ios::binary};
    std::ostringstream text;
    if (!in || !(text << in.rdbuf())) throw chip_error{file.string(), 0, "the file cannot be read"};
    return text.str();
}

void note_name(std::set<std::string>& names, const chip& of, const std::string& name)
{
    if (!names.insert(ascii::lowered(name)).second)
        throw chip_error{of.file, of.line, "there is a chip " + name + " already"};
}

}  // namespace

std::vector<chip> read_chips(std::string_view text, std::string_view file)
{
    std::vector<chip> chips;
    for (auto& stanza : parse_chips(text, file)) {
        auto plan = std::make_shared<const circuit>(compile(stanza));
        chips.push_back({stanza.file, stanza.line, stanza.name, stanza.description, stanza.aliases, std::move(plan)});
    }
    return chips;
}

std::vector<chip> load_chips(const std::vector<std::filesystem::path>& files)
{
    std::vector<chip> all;
    std::set<std::string> names;
    for (const auto& file : files) {
        for (auto& read : read_chips(content(file), file.filename().string())) {
            note_name(names, read, read.name);
            for (const auto& alias : read.aliases) note_name(names, read, alias);
            all.push_back(std::move(read));
        }
    }
    return all;
}

std::vector<std::filesystem::path> chip_files(const std::filesystem::path& folder)
{
    std::vector<std::filesystem::path> files;
    std::error_code failed;
    for (std::filesystem::directory_iterator at{folder, failed}, end; !failed && at != end; at.increment(failed))
        if (at->path().extension() == ".chip") files.push_back(at->path());
    if (failed) throw chip_error{folder.string(), 0, "the folder cannot be read"};
    std::ranges::sort(files);
    return files;
}

const chip* find_chip(const std::vector<chip>& chips, std::string_view name)
{
    const auto wanted = ascii::lowered(name);
    const auto found = std::ranges::find_if(chips, [&](const chip& at) {
        return ascii::lowered(at.name) == wanted ||
               std::ranges::any_of(at.aliases, [&](const auto& alias) { return ascii::lowered(alias) == wanted; });
    });
    return found == chips.end() ? nullptr : &*found;
}

}  // namespace tamrix::sim
