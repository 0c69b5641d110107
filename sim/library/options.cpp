#include "sim/library/options.h"

#include "sim/test_board.h"
#include "sim/wiring.h"

#include <charconv>
#include <stdexcept>

namespace tamrix::sim {

namespace {

std::string_view trimmed(std::string_view text)
{
    constexpr std::string_view blanks = " \t\r";
    const auto first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

template <class number>
number number_of(std::string_view entry, std::string_view text, number lowest, number highest)
{
    number value{};
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc{} || end != text.data() + text.size() || !(value >= lowest) || !(value <= highest)) {
        throw std::invalid_argument{"option \"" + std::string{entry} + "\": a number from " + std::to_string(lowest) +
                                    " to " + std::to_string(highest) + " was expected"};
    }
    return value;
}

void read_entry(std::string_view entry, library_options& into)
{
    const auto rest_of = [entry](std::string_view word) { return trimmed(entry.substr(word.size())); };
    const auto starts = [entry](std::string_view word) {
        return entry == word || entry.starts_with(std::string{word} + ' ');
    };
    if (starts("model")) {
        into.model = number_of(entry, rest_of("model"), 0, 255);
    } else if (starts("ram banks")) {
        into.memory_banks = number_of(entry, rest_of("ram banks"), 1, 16);
    } else if (starts("speed")) {
        into.speed = number_of(entry, rest_of("speed"), 0.001, 1e6);
    } else if (starts("fault")) {
        into.faults.emplace_back(rest_of("fault"));
    } else if (starts("socket")) {
        into.socket = rest_of("socket");
    } else if (starts("transcript")) {
        into.transcript_file = rest_of("transcript");
    } else {
        throw std::invalid_argument{"option \"" + std::string{entry} +
                                    "\": model, ram banks, fault, socket, speed or transcript was expected"};
    }
}

}  // namespace

library_options read_options(std::string_view text)
{
    library_options found;
    while (!text.empty()) {
        const auto end = text.find_first_of(";\n");
        const std::string_view entry = trimmed(text.substr(0, end));
        if (!entry.empty()) read_entry(entry, found);
        text = end == std::string_view::npos ? std::string_view{} : text.substr(end + 1);
    }
    return found;
}

std::unique_ptr<part> part_named(std::string_view name, int model)
{
    if (name == "empty") return nullptr;
    if (name == "test board") return std::make_unique<test_board>(wiring{model}.contacts());
    throw std::invalid_argument{"socket \"" + std::string{name} + "\": empty or test board was expected"};
}

}  // namespace tamrix::sim
