// The strict reader of JEDEC files: a field after the other, then the file as a whole.
#pragma once

#include "verify/jedec.h"
#include "verify/jedec_text.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tamrix {

class jedec_verifier {
public:
    jedec_verifier(byte_source& from, const std::string& name) : text_{from, name, result_} {}
    jedec_reading read();

private:
    void read_header();
    bool read_field();
    void read_value();
    void set_value(std::optional<std::uint64_t>& value, char which, std::uint64_t number);
    void read_rows();
    void read_bits(std::uint64_t fuse);
    void read_vector();
    void read_default();
    void read_pins();
    void read_checksum();
    void read_kept(char letter);
    std::optional<std::uint64_t> leading_number(std::string& digits);
    void look_at_whole();
    std::string pins_expected() const;
    void finish_fuses();

    void remark(std::string found, std::string expected) { text_.remark(line_, std::move(found), std::move(expected)); }
    /// A count of 0 limits nothing: there would be no row then.
    std::uint64_t fuse_limit() const
    {
        return result_.stated_count.value_or(0) != 0 ? *result_.stated_count : fuse_map::most_fuses;
    }

    static constexpr std::uint8_t not_given = 2;

    jedec_reading result_;
    jedec_text text_;
    std::uint64_t line_ = 1;  // of the field in work
    std::vector<std::uint8_t>& fuses_ = result_.map.fuses;
    std::uint64_t rows_ = 0, last_vector_ = 0, checksum_line_ = 0;
    std::optional<std::uint64_t> stated_pins_, stated_vectors_;
};

}  // namespace tamrix
