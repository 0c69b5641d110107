#include "editing/numbers.h"

#include "files/hex_digits.h"

namespace tamrix::editing {

bool number_at(std::span<const std::uint8_t> bytes, std::size_t address, int bits, byte_order order,
               std::uint64_t& number)
{
    const auto count = static_cast<std::size_t>(bits / 8);
    if (address > bytes.size() || bytes.size() - address < count) return false;
    number = 0;
    for (std::size_t i = 0; i < count; ++i) {
        number = number << 8 | bytes[address + (order == byte_order::big_endian ? i : count - 1 - i)];
    }
    return true;
}

std::string decimal_text(std::uint64_t number, int bits)
{
    std::string text = std::to_string(number);
    const std::uint64_t sign = std::uint64_t{1} << (bits - 1);
    if ((number & sign) == 0) return text;
    const auto extended = static_cast<std::int64_t>((number ^ sign) - sign);
    return text + " (" + std::to_string(extended) + ")";
}

std::string hexadecimal_number(std::uint64_t number, int bits)
{
    std::string text(static_cast<std::size_t>(2 + bits / 4), '0');
    text[1] = 'x';
    hex_digits::encode_number(number, bits / 4, text.data() + 2);
    return text;
}

}  // namespace tamrix::editing
