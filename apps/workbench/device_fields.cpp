#include "workbench/device_fields.h"

#include "host/preset_text.h"

#include <array>
#include <cstdio>
#include <exception>
#include <sstream>
#include <string_view>
#include <vector>

namespace tamrix::workbench {

namespace {

constexpr device_field device_fields[] = {
    {"name", "Name", "", "The name in the list. The plug-in gets it too."},
    {"maker", "Maker", "", "Who makes it; may be empty. The load dialog offers some formats by the maker."},
};
constexpr device_field memory_fields[] = {
    {"words", "Length", "words", "How many words the device has, at least 1; of a logic device its fuses."},
    {"word-bytes", "Width of a word", "bytes", "1 for a memory of 8 bits, 2 for one of 16 bits."},
    {"spare-units", "After the main area", "× 16 bytes", "Further memory that follows the words in the buffer."},
    {"buffer-bytes", "Buffer", "bytes", "The size of the buffer. Empty: as large as the device needs."},
};
constexpr device_field note_fields[] = {
    {"note", "Note", "",
     "The note on where its memories lie in the buffer, 1 to 25; 0 for none; 128 more for external supply."},
    {"option-0", "Option 0", "", "What note 2 calculates with: data memory less one, in units of 64."},
    {"option-1", "Option 1", "", "What the notes 18 and 25 calculate with: the kind of auxiliary memory."},
    {"option-2", "Option 2", "", "No note uses it; the plug-in gets it."},
    {"option-3", "Option 3", "", "What note 2 calculates with: program memory in units of 256."},
    {"vcc-high", "VCC high", "", "What the notes 16 and 22 calculate with: a length."},
};
constexpr device_field pin_fields[] = {
    {"pins", "Number of pins", "", "How many pins the package has."},
    {"vcc-pin", "VCC pin", "", "The pin of the supply, from 1; 0 for none."},
    {"gnd-pin", "GND pin", "", "The pin of the ground, from 1; 0 for none."},
};
constexpr device_field programming_fields[] = {
    {"algorithm", "Algorithm", "", "The name of the way in which it is programmed, such as EPROM; GAL has fuses."},
    {"vcc", "VCC", "V", "The supply while it is programmed, such as 6.50."},
    {"vpp", "VPP", "V", "The voltage that programs, such as 13.00; 0 for none."},
    {"pulse-us", "Pulse", "µs", "How long a pulse lasts that programs."},
    {"retries", "Retries", "", "How often a word is programmed again that does not hold."},
    {"page", "Page", "", "Bytes of a page; of a logic device the fuses of a row."},
    {"mode", "Mode", "", "The variant of the algorithm; most have only 0."},
    {"family", "Family class", "", "2 for a device whose maker has file formats of its own; else 0."},
};
constexpr field_group groups[] = {field_group::device, field_group::memory, field_group::note, field_group::pins,
                                  field_group::programming};
constexpr const char* clear_words[] = {"ff", "00", "none"};  // in the order of host::clear_choice

bool is_text(std::string_view key) { return key == "name" || key == "maker" || key == "algorithm"; }

std::string text_in(const field_texts& texts, const std::string& key)
{
    const auto found = texts.find(key);
    return found != texts.end() ? found->second : std::string{};
}

/// Numbers of words and bytes read better in hexadecimal.
std::string hexadecimal(std::int64_t value)
{
    std::array<char, 24> text{};
    std::snprintf(text.data(), text.size(), "0x%llX", static_cast<unsigned long long>(value));
    return text.data();
}

/// What was expected in the place of the values of a stanza; empty if they are right. The reader says
/// "device:2: word-bytes 300 where a number from 1 to 255 was expected".
std::string expected_in(const std::string& lines)
{
    try {
        host::parse_presets("device x\n" + lines, "device");
        return {};
    } catch (const std::exception& error) {
        const std::string why = error.what();
        const std::string before = " where ", after = " was expected";
        const auto start = why.rfind(before) + before.size();
        return why.substr(start, why.rfind(after) - start);
    }
}

std::string line_of(const std::string& key, const std::string& value)
{
    return value.empty() ? std::string{} : key + " " + value + "\n";
}

std::string expected_name(const std::string& name, const std::function<bool(const std::string&)>& is_taken)
{
    if (name.empty()) return "a name";
    if (is_taken(name)) return "a name that no other device has";
    return {};
}

std::string expected_number(const std::string& key, const std::string& value)
{
    const std::string line = line_of(key, value);
    if (const std::string expected = expected_in(line); !expected.empty()) return expected;
    if (key == "words" && host::parse_presets("device x\n" + line, "device").at(0).words == 0)
        return "a number from 1 on";
    return {};
}

}  // namespace

std::span<const device_field> fields_of(field_group group)
{
    switch (group) {
    case field_group::device: return device_fields;
    case field_group::memory: return memory_fields;
    case field_group::note: return note_fields;
    case field_group::pins: return pin_fields;
    case field_group::programming: break;
    }
    return programming_fields;
}

field_texts texts_of(const host::device_preset& device)
{
    field_texts texts{{"word-bytes", "1"}, {"vcc", "5.00"}, {"vpp", "0.00"}, {"pulse-us", "100"}, {"retries", "1"}};
    for (const field_group group : groups)
        for (const device_field& field : fields_of(group))
            if (!is_text(field.key)) texts.try_emplace(field.key, "0");
    // Those with their default are missing here.
    std::istringstream lines{host::print_presets(std::vector{device})};
    for (std::string line; std::getline(lines, line);) {
        std::istringstream words{line};
        std::string key, value;
        words >> key >> std::ws;
        std::getline(words, value);
        if (key != "device" && key != "clear") texts[key] = value;
    }
    texts["name"] = device.name;
    texts["words"] = hexadecimal(device.words);
    texts["buffer-bytes"] =
        device.buffer_bytes == host::image_bytes(device) ? std::string{} : hexadecimal(device.buffer_bytes);
    return texts;
}

std::optional<wrong_field> find_wrong_field(const field_texts& texts,
                                            const std::function<bool(const std::string& name)>& is_taken)
{
    for (const field_group group : groups) {
        for (const device_field& field : fields_of(group)) {
            const std::string key = field.key, value = text_in(texts, key);
            std::string expected;
            if (is_text(key) && value.find('#') != std::string::npos) expected = "a text without #";
            if (expected.empty() && key == "name") expected = expected_name(value, is_taken);
            if (expected.empty() && !is_text(key)) expected = expected_number(key, value);
            if (!expected.empty()) return wrong_field{key, expected};
        }
    }
    const std::string sizes = line_of("words", text_in(texts, "words")) +
                              line_of("word-bytes", text_in(texts, "word-bytes")) +
                              line_of("spare-units", text_in(texts, "spare-units"));
    if (const std::string expected = expected_in(sizes); !expected.empty()) return wrong_field{"words", expected};
    const std::string expected = expected_in(sizes + line_of("buffer-bytes", text_in(texts, "buffer-bytes")));
    if (!expected.empty()) return wrong_field{"buffer-bytes", expected};
    return std::nullopt;
}

host::device_preset device_of(const field_texts& texts, host::clear_choice clear)
{
    std::string stanza = "device " + text_in(texts, "name") + "\n";
    for (const auto& [key, value] : texts)
        if (key != "name") stanza += line_of(key, value);
    stanza += line_of("clear", clear_words[static_cast<std::size_t>(clear)]);
    return host::parse_presets(stanza, "device").at(0);
}

}  // namespace tamrix::workbench
