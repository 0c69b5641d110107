#include "verify/characters.h"

#include "base/arith.h"

namespace tamrix {

std::string character_name(int character)
{
    if (character == characters::end) return "the end of the file";
    if (character > ' ' && character < 0x7F) return "character " + std::string{static_cast<char>(character)};
    return "character " + arith::hex_fixed(static_cast<std::uint64_t>(character), 2);
}

}  // namespace tamrix
