#include "editing/cursor.h"

#include <algorithm>

namespace tamrix::editing {

void cursor::resize(std::size_t bytes)
{
    bytes_ = bytes;
    address_ = bytes == 0 ? 0 : std::min(address_, bytes - 1);
    anchor_.reset();
    second_digit_ = false;
}

void cursor::choose(column side)
{
    side_ = side;
    second_digit_ = false;
}

byte_range cursor::selection() const
{
    if (!anchor_) return {};
    const auto [first, last] = std::minmax(*anchor_, address_);
    return {first, last - first + 1};
}

byte_range cursor::selection_or_byte() const
{
    if (bytes_ == 0) return {};
    return anchor_ ? selection() : byte_range{address_, 1};
}

void cursor::go_to(std::size_t address, bool extend)
{
    if (bytes_ == 0) return;
    if (!extend) {
        anchor_.reset();
    } else if (!anchor_) {
        anchor_ = address_;
    }
    address_ = std::min(address, bytes_ - 1);
    second_digit_ = false;
}

std::size_t cursor::row_target(cursor_step to, std::size_t page) const
{
    const std::size_t in_row = address_ % bytes_in_row;
    const std::size_t by =
        (to == cursor_step::up || to == cursor_step::down ? 1 : std::max<std::size_t>(page, 1)) * bytes_in_row;
    if (to == cursor_step::up || to == cursor_step::page_up) return address_ >= by ? address_ - by : in_row;
    const std::size_t last = bytes_ - 1;
    if (by <= last - address_) return address_ + by;
    const std::size_t last_row = last - last % bytes_in_row;
    return std::min(last, last_row + in_row);
}

void cursor::move(cursor_step to, bool extend, std::size_t page)
{
    if (bytes_ == 0) return;
    const std::size_t row = address_ - address_ % bytes_in_row;
    switch (to) {
    case cursor_step::left: return go_to(address_ == 0 ? 0 : address_ - 1, extend);
    case cursor_step::right: return go_to(address_ + 1, extend);
    case cursor_step::row_start: return go_to(row, extend);
    case cursor_step::row_end: return go_to(row + bytes_in_row - 1, extend);
    case cursor_step::first: return go_to(0, extend);
    case cursor_step::last: return go_to(bytes_ - 1, extend);
    case cursor_step::up:
    case cursor_step::down:
    case cursor_step::page_up:
    case cursor_step::page_down: return go_to(row_target(to, page), extend);
    }
}

void cursor::select_all() { select({0, bytes_}); }

void cursor::select(byte_range range)
{
    const byte_range inside = within(range, bytes_);
    if (inside.empty()) return;
    address_ = inside.first;
    anchor_ = inside.end() - 1;
    second_digit_ = false;
}

void cursor::digit_typed()
{
    anchor_.reset();
    if (second_digit_) return advance();
    second_digit_ = true;
}

void cursor::character_typed() { advance(); }

void cursor::advance() { go_to(address_ + 1); }

}  // namespace tamrix::editing
