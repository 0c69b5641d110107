#include "editing/clipboard_texts.h"

#include "base/ascii.h"
#include "files/byte_source.h"
#include "files/hex_digits.h"
#include "image/image_files.h"
#include "verify/verification.h"

#include <algorithm>
#include <optional>

namespace tamrix::editing {

namespace {

constexpr std::size_t bytes_in_array_line = 12;
constexpr std::string_view blanks = " \t\r\n";

void append_digits(std::string& text, std::uint8_t byte)
{
    char digits[2];
    hex_digits::encode_number(byte, 2, digits);
    text.append(digits, 2);
}

std::string as_text(std::span<const std::uint8_t> bytes) { return {bytes.begin(), bytes.end()}; }

class text_target final : public byte_target {
public:
    void write(std::span<const std::uint8_t> bytes) override { text += as_text(bytes); }
    std::string text;
};

class run_of_bytes final : public data_taker {
public:
    void take(std::uint64_t address, std::span<const std::uint8_t> taken) override
    {
        if (!bytes.empty() && address != next_) has_gaps = true;
        bytes.insert(bytes.end(), taken.begin(), taken.end());
        next_ = address + taken.size();
    }
    std::vector<std::uint8_t> bytes;
    bool has_gaps = false;

private:
    std::uint64_t next_ = 0;
};

pasted_bytes bytes_of_records(std::string_view text)
{
    memory_source from{{reinterpret_cast<const std::uint8_t*>(text.data()), text.size()}};
    run_of_bytes data;
    const verification found = verifier_of("intel")(from, "the clipboard", data);
    if (found.damaged()) return {{}, found.remarks.front().text()};
    if (data.has_gaps) return {{}, "The records have gaps; save them as a file and load that."};
    return {std::move(data.bytes), {}};
}

/// What begins with the `at`th letter, for an error: a word, or what there is of it.
std::string word_at(std::string_view text, std::size_t at)
{
    constexpr std::size_t most = 12;
    const std::string_view rest = text.substr(at);
    return std::string{rest.substr(0, std::min(rest.find_first_of(blanks), most))};
}

/// "0x55, 0xAA" and "55AA 00": pairs of digits, with what may be between bytes.
pasted_bytes bytes_of_digits(std::string_view text)
{
    pasted_bytes result;
    for (std::size_t at = 0; at < text.size();) {
        if (blanks.find(text[at]) != std::string_view::npos || text[at] == ',' || text[at] == ';') {
            ++at;
            continue;
        }
        if (text[at] == '0' && at + 1 < text.size() && ascii::lower(text[at + 1]) == 'x') at += 2;
        const auto* digits = reinterpret_cast<const std::uint8_t*>(text.data() + at);
        const int byte = text.size() - at < 2 ? -1 : hex_digits::byte(digits);
        if (byte < 0) return {{}, "\"" + word_at(text, at) + "\" is no byte in hexadecimal."};
        result.bytes.push_back(static_cast<std::uint8_t>(byte));
        at += 2;
    }
    return result;
}

/// What is between the braces of an array, or the whole text.
std::string_view inside_of_array(std::string_view text)
{
    const auto open = text.find('{'), close = text.rfind('}');
    if (open == std::string_view::npos || close == std::string_view::npos || close < open) return text;
    return text.substr(open + 1, close - open - 1);
}

}  // namespace

std::string hexadecimal_text(std::span<const std::uint8_t> bytes)
{
    std::string text;
    text.reserve(bytes.size() * 3);
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (i > 0) text += i % bytes_in_row == 0 ? '\n' : ' ';
        append_digits(text, bytes[i]);
    }
    return text;
}

std::string characters_text(std::span<const std::uint8_t> bytes)
{
    std::string text = as_text(bytes);
    for (char& letter : text) {
        if (!is_printable(static_cast<std::uint8_t>(letter))) letter = '.';
    }
    return text;
}

std::string c_array_text(std::span<const std::uint8_t> bytes)
{
    std::string text = "const unsigned char bytes[" + std::to_string(bytes.size()) + "] = {";
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        text += i % bytes_in_array_line == 0 ? "\n    0x" : " 0x";
        append_digits(text, bytes[i]);
        if (i + 1 < bytes.size()) text += ',';
    }
    return text + "\n};\n";
}

std::string intel_hex_text(std::span<const std::uint8_t> bytes, std::size_t address)
{
    memory_image image;
    image.take(address, bytes);
    text_target target;
    image_writer_of("intel")(image, {.record_bytes = bytes_in_row}, target);
    std::erase(target.text, '\r');  // a text on the clipboard has the line ends of the system
    return std::move(target.text);
}

pasted_bytes bytes_of_text(std::string_view text, column side)
{
    if (text.empty()) return {{}, "There is no text on the clipboard."};
    if (side == column::characters) return {{text.begin(), text.end()}, {}};
    const std::string_view trimmed = ascii::trimmed(text, blanks);
    pasted_bytes result = trimmed.starts_with(':') ? bytes_of_records(text) : bytes_of_digits(inside_of_array(trimmed));
    if (result.bytes.empty() && result.trouble.empty()) result.trouble = "There are no bytes on the clipboard.";
    return result;
}

}  // namespace tamrix::editing
