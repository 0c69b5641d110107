#include "sim/library/options.h"

#include "base/ascii.h"
#include "chips/chip.h"
#include "sim/test_board.h"
#include "sim/wiring.h"

#include <charconv>
#include <stdexcept>

namespace tamrix::sim {

namespace {

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

class entry_reader {
public:
    entry_reader(std::string_view entry, library_options& into) : entry_{entry}, into_{into} {}

    /// True where the entry is one that also a programmer in use takes.
    bool is_change()
    {
        if (entry_ == "no faults") {
            into_.faults.clear();
            into_.no_faults = true;
            return true;
        }
        if (entry_ == "no signals") {
            into_.signals.clear();
            into_.no_signals = true;
            return true;
        }
        if (const auto text = behind("signal")) return into_.signals.emplace_back(*text), true;
        if (const auto fault = behind("fault")) return into_.faults.emplace_back(*fault), true;
        if (const auto name = behind("socket")) return into_.socket = std::string{*name}, true;
        if (const auto folder = behind("chips")) return into_.chips_folder = *folder, true;
        return false;
    }
    bool is_option()
    {
        if (const auto number = behind("model")) return into_.model = number_of(entry_, *number, 0, 255), true;
        if (const auto number = behind("generation"))
            return into_.generation = number_of(entry_, *number, 0, 255), true;
        if (const auto number = behind("ram banks"))
            return into_.memory_banks = number_of(entry_, *number, 1, 16), true;
        if (const auto number = behind("speed")) return into_.speed = number_of(entry_, *number, 0.001, 1e6), true;
        if (const auto file = behind("transcript")) return into_.transcript_file = *file, true;
        if (const auto number = behind("instance"))
            return into_.host_instance = number_of(entry_, *number, 0, 32767), true;
        return false;
    }
    [[noreturn]] void refuse(const char* expected) const
    {
        throw std::invalid_argument{"option \"" + std::string{entry_} + "\": " + expected + " was expected"};
    }

private:
    std::optional<std::string_view> behind(std::string_view word) const
    {
        if (entry_ != word && !entry_.starts_with(std::string{word} + ' ')) return std::nullopt;
        return ascii::trimmed(entry_.substr(word.size()));
    }

    std::string_view entry_;
    library_options& into_;
};

template <class take>
library_options read_entries(std::string_view text, take&& take_entry)
{
    library_options found;
    while (!text.empty()) {
        const auto end = text.find_first_of(";\n");
        const std::string_view entry = ascii::trimmed(text.substr(0, end));
        if (!entry.empty()) take_entry(entry_reader{entry, found});
        text = end == std::string_view::npos ? std::string_view{} : text.substr(end + 1);
    }
    return found;
}

}  // namespace

library_options read_options(std::string_view text)
{
    return read_entries(text, [](entry_reader entry) {
        if (entry.is_change() || entry.is_option()) return;
        entry.refuse(
            "model, generation, ram banks, fault, no faults, signal, no signals, socket, chips, speed, transcript or "
            "instance");
    });
}

library_options read_changes(std::string_view text)
{
    return read_entries(text, [](entry_reader entry) {
        if (!entry.is_change()) entry.refuse("fault, no faults, signal, no signals, socket or chips");
    });
}

std::unique_ptr<part> part_named(std::string_view name, int model, const std::string& chips_folder)
{
    if (name == "empty") return nullptr;
    if (name == "test board") return std::make_unique<test_board>(wiring{model});
    const std::string what = "socket \"" + std::string{name} + "\": ";
    if (chips_folder.empty()) {
        throw std::invalid_argument{what + "empty or test board was expected, or an entry \"chips FOLDER\""};
    }
    const auto chips = load_chips(chip_files(chips_folder));
    const chip* const found = find_chip(chips, name);
    if (found == nullptr) throw std::invalid_argument{what + "empty, test board or a chip was expected"};
    return make_part(*found);
}

part_shelf shelf_of(const std::string& chips_folder)
{
    if (chips_folder.empty()) return {};
    return shelf_of_folder(chips_folder);
}

}  // namespace tamrix::sim
