#include "cli/input_word.h"

#include "base/arith.h"
#include "base/native_path.h"
#include "cli/console.h"
#include "cli/convert_options.h"
#include "formats/byte_selection.h"

#include <algorithm>
#include <filesystem>
#include <string_view>
#include <system_error>

namespace tamrix::cli {

namespace {

constexpr std::int64_t highest_address = 0xFFFFFFFF;

void place(input_word& made, const std::string& word, std::string_view text)
{
    const std::size_t colon = text.find(':');
    std::string_view digits = text.substr(0, colon);
    if (digits.starts_with("0x") || digits.starts_with("0X")) digits.remove_prefix(2);
    const auto address = arith::parse_hex(digits);
    if (!address || *address > highest_address) refuse(word + ": after @ an address up to 0xFFFFFFFF is expected");
    made.address = static_cast<std::uint64_t>(*address);
    if (colon == std::string_view::npos) return;
    const auto choice = std::ranges::find(mode_names, text.substr(colon + 1));
    if (choice == mode_names.end())
        refuse(word + ": after the colon one of even, odd, 1of4, 2of4, 3of4, 4of4 is expected");
    const byte_selection& bytes = byte_selections.at(static_cast<std::size_t>(choice - mode_names.begin()));
    made.step = static_cast<std::uint64_t>(bytes.step);
    made.phase = static_cast<std::uint64_t>(bytes.phase);
}

}  // namespace

input_word checked_input(const std::string& word)
{
    const std::size_t at = word.rfind('@');
    std::error_code none;
    if (at == std::string::npos || at == 0 || std::filesystem::exists(native_path(word), none)) return {.path = word};
    input_word made{.path = word.substr(0, at)};
    place(made, word, std::string_view{word}.substr(at + 1));
    return made;
}

}  // namespace tamrix::cli
