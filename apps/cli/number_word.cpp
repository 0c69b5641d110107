#include "cli/number_word.h"

#include "cli/console.h"

#include <charconv>

namespace tamrix::cli {

std::optional<std::int32_t> number_in(std::string_view word, std::int32_t least, std::int32_t most)
{
    std::int32_t number = 0;
    const auto [end, error] = std::from_chars(word.data(), word.data() + word.size(), number);
    const bool whole = error == std::errc{} && end == word.data() + word.size();
    if (!whole || number < least || number > most) return std::nullopt;
    return number;
}

std::int32_t checked_number(const std::string& option, const std::string& word, std::int32_t least, std::int32_t most)
{
    const std::optional<std::int32_t> number = number_in(word, least, most);
    if (!number) {
        refuse(option + " " + word + ": a number from " + std::to_string(least) + " to " + std::to_string(most) +
               " is expected");
    }
    return *number;
}

}  // namespace tamrix::cli
