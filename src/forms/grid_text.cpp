#include "forms/grid_text.h"

#include "forms/form.h"

#include <algorithm>
#include <utility>

namespace tamrix::forms {

/// Text and selection change together, so that a handler never sees one without the other.
void grid_text::assign(std::string value, int start, int length)
{
    const bool other_text = value != text_;
    if (other_text) text_ = std::move(value);
    const int size = static_cast<int>(text_.size());
    start = std::clamp(start, 0, size);
    length = std::clamp(length, 0, size - start);
    const bool other_selection = start != start_ || length != length_;
    start_ = start;
    length_ = length;
    if (other_text || other_selection) changed();
    if (other_selection) raise(on_select);
}

void grid_text::text(std::string value) { assign(std::move(value), start_, length_); }

std::string grid_text::selected() const
{
    return text_.substr(static_cast<std::size_t>(start_), static_cast<std::size_t>(length_));
}

void grid_text::select(int start, int length) { assign(text_, start, length); }

void grid_text::replace_selection(std::string_view letters)
{
    std::string edited = text_;
    edited.replace(static_cast<std::size_t>(start_), static_cast<std::size_t>(length_), letters);
    assign(std::move(edited), start_ + static_cast<int>(letters.size()), 0);
}

void grid_text::key_down(grid_key key)
{
    if (!usable() || (on_key_down && on_key_down(key))) return;
    const bool edits = key == grid_key::backspace || key == grid_key::remove || key == grid_key::enter;
    if (!edits) {
        move(key);
    } else if (!locked()) {
        edit(key);
    }
}

void grid_text::type(char32_t letter)
{
    if (!usable() || (on_key_press && on_key_press(letter)) || locked()) return;
    if (letter >= U' ' && letter <= U'~') replace_selection(std::string(1, static_cast<char>(letter)));
}

void grid_text::press(point where, int offset)
{
    if (!usable()) return;
    if (on_press) on_press(where);
    select(std::min(offset, last_place()));
}

void grid_text::move(grid_key key)
{
    switch (key) {
    case grid_key::left: return select(length_ > 0 ? start_ : start_ - 1);
    case grid_key::right: return select(std::min(length_ > 0 ? start_ + length_ : start_ + 1, last_place()));
    case grid_key::up: return select(by_lines(-1));
    case grid_key::down: return select(by_lines(1));
    case grid_key::page_up: return select(by_lines(-page_rows()));
    case grid_key::page_down: return select(by_lines(page_rows()));
    case grid_key::home: return select(line_start(start_));
    case grid_key::end: return select(line_end(start_));
    default: return;
    }
}

void grid_text::edit(grid_key key)
{
    if (key == grid_key::enter) return replace_selection("\n");
    if (length_ == 0 && key == grid_key::backspace) {
        if (start_ == 0) return;
        select(start_ - 1, 1);
    } else if (length_ == 0) {
        select(start_, 1);
    }
    replace_selection("");
}

/// The place `count` lines further down in the same column, or in the nearest one that the line has.
int grid_text::by_lines(int count) const
{
    const int column = start_ - line_start(start_);
    int at = start_;
    for (; count < 0 && line_start(at) > 0; ++count) at = line_start(at) - 1;
    for (; count > 0 && line_end(at) < last_place(); --count) at = line_end(at) + 1;
    return std::min(line_start(at) + column, line_end(at));
}

int grid_text::line_start(int offset) const
{
    if (offset <= 0) return 0;
    const auto feed = text_.rfind('\n', static_cast<std::size_t>(offset) - 1);
    return feed == std::string::npos ? 0 : static_cast<int>(feed) + 1;
}

int grid_text::line_end(int offset) const
{
    const auto feed = text_.find('\n', static_cast<std::size_t>(offset));
    return static_cast<int>(feed == std::string::npos ? text_.size() : feed);
}

/// The furthest place that a person can reach.
int grid_text::last_place() const
{
    const int size = static_cast<int>(text_.size());
    return text_.ends_with('\n') ? size - 1 : size;
}

}  // namespace tamrix::forms
