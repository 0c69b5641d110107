// The text of a JEDEC file, from STX to ETX, with its checksum.
#pragma once

#include "verify/characters.h"
#include "verify/verification.h"

#include <cstdint>
#include <optional>
#include <string>

namespace tamrix {

class jedec_text {
public:
    static constexpr int stx = 2, etx = 3;
    static constexpr int over = characters::end;

    jedec_text(byte_source& from, const std::string& name, verification& result)
        : in_{from}, name_{name}, result_{result}
    {}

    /// Passes over STX. False for a file without text.
    bool open();
    /// The next character; `over` at ETX and at the end of the file, again and again.
    int next()
    {
        const int one = at_end_ ? over : in_.get();
        if (one <= etx) return special(one);
        sum_ += static_cast<std::uint32_t>(one);
        parity_bits_ += static_cast<std::uint32_t>(one >> 7);
        return one;
    }
    int peek() { return at_end_ ? over : in_.peek(); }
    /// Characters "0" and "1" that come next, up to `most`; perhaps not all of them, since a block of the source ends.
    std::span<const std::uint8_t> next_bits(std::size_t most);
    /// The characters up to the "*", which is passed over.
    std::string to_star(bool any_letters);
    /// After the last field: looks at the checksum. None where it is missing or cannot be read.
    std::optional<std::uint16_t> close();
    std::uint16_t checksum() const { return static_cast<std::uint16_t>(sum_ - 0x80 * parity_bits_); }

    std::uint64_t line() const { return in_.line(); }
    void remark(std::uint64_t line, std::string found, std::string expected)
    {
        result_.add({.file = name_, .line = line, .found = std::move(found), .expected = std::move(expected)});
    }
    /// For a field that ends with the text.
    void remark_no_star() { remark(line(), end_name(), "*"); }

private:
    int special(int one);
    std::string end_name() const { return etx_seen_ ? "the end of the text" : character_name(characters::end); }
    std::optional<std::uint16_t> stated_checksum();
    void look_after_checksum();

    characters in_;
    const std::string& name_;
    verification& result_;
    std::uint32_t sum_ = 0, parity_bits_ = 0;
    bool stx_seen_ = false;
    bool etx_seen_ = false;
    bool at_end_ = false;  // of the text
};

}  // namespace tamrix
