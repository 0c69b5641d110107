// Where a person is in the bytes, in which column, and what is selected.
#pragma once

#include "editing/byte_range.h"

#include <cstddef>
#include <optional>

namespace tamrix::editing {

enum class column { hexadecimal, characters };

/// Rows have 16 bytes.
inline constexpr std::size_t bytes_in_row = 16;

enum class cursor_step { left, right, up, down, page_up, page_down, row_start, row_end, first, last };

/// The cursor is on a byte, as in a table, and what is selected reaches from one byte to another, both included.
class cursor {
public:
    /// The bytes have this length now; the cursor stays as near as it can, and nothing is selected.
    void resize(std::size_t bytes);

    /// 0 where there are no bytes.
    std::size_t address() const { return address_; }
    column side() const { return side_; }
    void choose(column side);
    /// Whether the next digit is the second one of the byte.
    bool in_second_digit() const { return second_digit_; }

    /// Empty where nothing is selected.
    byte_range selection() const;
    /// What is selected, or the byte at the cursor; empty only where there are no bytes.
    byte_range selection_or_byte() const;

    /// An address beyond the last one is the last one. With `extend` the selection reaches from where it began to
    /// there.
    void go_to(std::size_t address, bool extend = false);
    /// A step of rows stays in its column; one that would leave the bytes ends at the first or the last row. `page` is
    /// the number of rows in sight.
    void move(cursor_step to, bool extend, std::size_t page);
    void select_all();
    /// The cursor is on the first byte of it then.
    void select(byte_range range);
    void select_nothing() { anchor_.reset(); }

    /// A digit was typed: the first one is the upper half of its byte, and after the second one the cursor goes on.
    void digit_typed();
    /// A character was typed: the cursor goes on.
    void character_typed();

private:
    void advance();
    std::size_t row_target(cursor_step to, std::size_t page) const;

    std::size_t bytes_ = 0;
    std::size_t address_ = 0;
    std::optional<std::size_t> anchor_{};  // the other end of what is selected
    column side_ = column::hexadecimal;
    bool second_digit_ = false;
};

}  // namespace tamrix::editing
