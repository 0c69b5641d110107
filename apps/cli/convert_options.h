// What `tamrix convert` was asked for, checked word by word.
#pragma once

#include "cli/console.h"
#include "cli/image_options.h"
#include "cli/input_word.h"

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace CLI {
class App;
}

namespace tamrix::cli {

/// The words of the command line as typed; none for an option that was not given.
struct convert_words {
    std::vector<std::string> files;  // the last of them is OUT
    image_words image;
    std::optional<std::string> record_bytes;
    std::optional<std::string> from, to, from_mode, to_mode, clear;
    std::optional<std::string> device_words, word_bytes, spare_units, buffer_bytes;
    std::optional<std::string> to_buffer, from_file, file_size, save_from, save_size;
    std::optional<std::string> language;
};

/// Addresses and sizes are in bytes. The dialogs get their values as hexadecimal texts, as a person would type them.
struct convert_options {
    std::vector<input_word> inputs;
    std::string in;  // where the device takes it: the path of the only one
    std::string out;
    image_options image;
    std::optional<std::int64_t> record_bytes;
    bool needs_device = false;       // an option of the device, the load or the format asks for its buffer
    std::optional<int> from, to;     // option indices of the formats
    int from_mode = 0, to_mode = 0;  // indices of the byte selections
    int clear = 0;                   // index of the clear option
    std::optional<std::int64_t> device_words, word_bytes, spare_units, buffer_bytes;
    std::optional<std::int64_t> to_buffer, from_file, file_size, save_from, save_size;
    std::int32_t language = 0;  // offset of the catalogue
};

inline constexpr std::array<std::string_view, 7> mode_names{"normal", "even", "odd", "1of4", "2of4", "3of4", "4of4"};
inline constexpr std::array<std::string_view, 3> clear_names{"ff", "00", "none"};

/// The name of the argument that takes all files; a help shows convert_usage for it.
inline constexpr const char* convert_files = "IN-AND-OUT";
inline constexpr std::string_view convert_usage = "IN... OUT";
void add_convert_options(CLI::App& command, convert_words& words, const std::string& end_of_help);
/// Throws command_error, "--to-buffer 12G: not a hexadecimal number".
convert_options check(const convert_words& words);
/// The index of the format that `word` names, of those that can be loaded; none if there is no word. Throws
/// command_error.
std::optional<int> format_to_load(const std::optional<std::string>& word);
/// The offset of the language that `word` names by its code or its offset; 0 if none was given. Throws command_error.
std::int32_t check_language(const std::optional<std::string>& word);

}  // namespace tamrix::cli
