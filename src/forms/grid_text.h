// Lines of letters of one width with a caret among them, in which the program decides what each key does.
#pragma once

#include "forms/canvas.h"
#include "forms/control.h"

#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

namespace tamrix::forms {

/// The keys that are no letters.
enum class grid_key : std::uint8_t {
    left,
    right,
    up,
    down,
    page_up,
    page_down,
    home,
    end,
    backspace,
    insert,
    remove,
    enter,
};

/// An ASCII text. A place in it is an offset from 0 at which each line feed counts one; the line feed at the very end
/// opens no further line. The caret is the start of the selection, which may be empty.
///
/// A key goes to on_key_down, a letter to on_key_press. If the handler returns true, that is all. Otherwise the
/// key does what it does in any text; in a locked one keys move the caret and change nothing.
class grid_text : public control {
public:
    static constexpr int cell_width = 120, cell_height = 215;  // of one letter in a press, in twips

    using control::control;
    void accept(control_visitor& visitor) override { visitor.visit(*this); }
    property<colour> background{*this, 0xFFFFFF};
    property<bool> locked{*this, false};
    /// The number of lines that are seen at least; Page Up and Page Down move by as many.
    property<int> page_rows{*this, 12};

    std::function<bool(grid_key key)> on_key_down;
    std::function<bool(char32_t letter)> on_key_press;
    /// The button of the mouse went down, before the caret moves. In twips from the upper left corner of the text.
    std::function<void(point where)> on_press;
    /// Raised after the selection has changed, whoever changed it.
    std::function<void()> on_select;

    const std::string& text() const { return text_; }
    /// Replaces the text. The selection stays, as far as the new text reaches.
    void text(std::string value);
    int selection_start() const { return start_; }
    int selection_length() const { return length_; }
    std::string selected() const;
    /// Limits both ends to the text.
    void select(int start, int length = 0);
    /// Replaces the selection by `letters` and puts the caret after them.
    void replace_selection(std::string_view letters);

    void key_down(grid_key key);
    void type(char32_t letter);
    /// `offset` is the place next to the mouse, to which the caret goes.
    void press(point where, int offset);
    /// True if keys have an effect here.
    bool takes_keys() const { return usable() && (on_key_down || on_key_press); }

private:
    void assign(std::string value, int start, int length);
    void move(grid_key key);
    void edit(grid_key key);
    int by_lines(int count) const;
    int line_start(int offset) const;
    int line_end(int offset) const;
    int last_place() const;

    std::string text_;
    int start_ = 0, length_ = 0;
};

}  // namespace tamrix::forms
