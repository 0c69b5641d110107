#include "chips/library.h"

#include <algorithm>
#include <cstdio>

namespace tamrix::sim {
namespace {

constexpr std::size_t longest_line = 3000;  // what a reader keeps of a line
constexpr std::string_view header_start = "$KSM0000000";

std::string upper(std::string_view text)
{
    std::string made{text};
    for (auto& c : made)
        if (c >= 'a' && c <= 'z') c = static_cast<char>(c - 'a' + 'A');
    return made;
}

std::string digits(const char* format, std::size_t value)
{
    char text[16];
    std::snprintf(text, sizeof text, format, static_cast<unsigned>(value));
    return text;
}

std::vector<library_entry> sorted_entries(const std::vector<chip>& chips)
{
    std::vector<library_entry> made;
    for (std::size_t i = 0; i < chips.size(); ++i) {
        made.push_back({chips[i].name, &chips[i], i});
        for (const auto& alias : chips[i].aliases) made.push_back({alias, &chips[i], i});
    }
    std::ranges::sort(made, {}, [](const library_entry& at) { return upper(at.name); });
    return made;
}

[[noreturn]] void refuse(const library_entry& at, const std::string& text)
{
    throw chip_error{at.from->file, at.from->line, text};
}

std::string header(const std::vector<library_entry>& entries)
{
    std::string line{header_start};
    line += digits("%04X", entries.size());
    for (const auto& at : entries) {
        line += static_cast<char>(at.name.size());
        const auto earlier = upper(line).find(upper(at.name));
        if (earlier != std::string::npos)
            refuse(at, "the name " + at.name + " stands inside a name before it in the library");
        line += at.name;
    }
    line += '*';
    if (line.size() >= longest_line) throw chip_error{"library", 1, "the list of names is longer than 2999 characters"};
    return line + "\r\n";
}

std::string record(const library_entry& at, const vector_set& set)
{
    auto name = at.name;
    name.resize(12, ' ');
    auto line = "$" + name + digits("%02X", set.rows.size() + 1) + '\2' + digits("%02u", set.pins);
    for (const auto& row : set.rows) line += static_cast<char>(set.pins) + row;
    line += '*';
    if (set.rows.empty() || set.rows.size() > 254 || line.size() > longest_line)
        refuse(at, "the vectors of " + at.name + " do not fit a record");
    return line + "\r\n";
}

/// Chips in the same package with the same supply pins: one can sit in the other's place.
std::vector<rival> rivals_of(const std::vector<chip>& chips, const chip& own)
{
    std::vector<rival> made;
    for (const auto& other : chips) {
        const auto& plan = *other.plan;
        if (&other != &own && plan.pins.size() == own.plan->pins.size() && plan.vcc == own.plan->vcc &&
            plan.gnd == own.plan->gnd)
            made.push_back({other.name, other.plan});
    }
    return made;
}

std::string percent(std::size_t part, std::size_t whole)
{
    char text[32];
    std::snprintf(text, sizeof text, "%.2f %%",
                  whole == 0 ? 100.0 : 100.0 * static_cast<double>(part) / static_cast<double>(whole));
    return text;
}

}  // namespace

std::vector<vector_set> make_all_vectors(const std::vector<chip>& chips)
{
    std::vector<vector_set> sets;
    for (const auto& at : chips) sets.push_back(make_vectors(at.name, at.plan, rivals_of(chips, at)));
    return sets;
}

std::string library_text(const std::vector<chip>& chips, const std::vector<vector_set>& sets)
{
    const auto entries = sorted_entries(chips);
    auto text = header(entries);
    for (const auto& at : entries) text += record(at, sets[at.set]);
    return text + "end-ksm\r\n";
}

std::string coverage_text(const std::vector<chip>& chips, const std::vector<vector_set>& sets)
{
    std::string text = "device       pins  rows  faults  found\n";
    std::size_t devices = 0, faults = 0, found = 0;
    for (std::size_t i = 0; i < chips.size(); ++i) {
        const auto& set = sets[i];
        char line[96];
        std::snprintf(line, sizeof line, "%-11s  %4zu  %4zu  %6zu  %5zu  %s\n", chips[i].name.c_str(), set.pins,
                      set.rows.size(), set.faults, set.found, percent(set.found, set.faults).c_str());
        text += line;
        for (const auto& at : set.missed)
            text +=
                "    missed: " + at.pin + (at.high ? " stuck at 1, and open: " : " stuck at 0: ") + at.reason + "\n";
        for (const auto& twin : set.twins) text += "    passes as well: " + twin + "\n";
        const auto copies = 1 + chips[i].aliases.size();
        devices += copies;
        faults += copies * set.faults;
        found += copies * set.found;
    }
    return text + std::to_string(devices) + " devices, " + std::to_string(found) + " of " + std::to_string(faults) +
           " faults found, " + percent(found, faults) + "\n";
}

}  // namespace tamrix::sim
