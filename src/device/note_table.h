// Which rows each device note has: the memories of the device, their addresses there and in the buffer.
#pragma once

#include "device/note_figures.h"

#include <array>
#include <cstdint>
#include <span>
#include <string_view>

namespace tamrix::notes {

/// An address: a figure in hexadecimal, or digits to show unchanged.
struct address {
    std::string_view digits{};
    figure value{};

    constexpr address() = default;
    constexpr address(const char* as_it_stands) : digits{as_it_stands} {}
    constexpr address(const figure& computed) : value{computed} {}
    constexpr address(std::int64_t number) : value{number} {}
};

/// Where a memory lies. A text is shown unchanged, with its blanks.
struct place {
    enum class kind : std::uint8_t { none, one_address, range, text };
    kind what = kind::none;
    address from{}, to{};
    std::string_view text{};
};

constexpr place nowhere{};
constexpr place at(const address& one) { return {.what = place::kind::one_address, .from = one}; }
constexpr place range(const address& from, const address& to)
{
    return {.what = place::kind::range, .from = from, .to = to};
}
constexpr place as_text(std::string_view words) { return {.what = place::kind::text, .text = words}; }

struct memory {
    int label = 0;  // a message; 0 if it has a name instead
    place device{}, buffer{};
    std::string_view name{};
    bool starts_in_label = false;  // the label ends with the first address of the device
};

struct note {
    std::uint8_t number = 0;
    bool long_rows = false;  // longer than the rows for which the heading is made
    std::array<memory, 4> memories{};
    std::size_t count = 0;

    std::span<const memory> rows() const { return std::span{memories}.first(count); }
};

/// Null for a number without a box.
const note* find_note(std::uint8_t number);

}  // namespace tamrix::notes
