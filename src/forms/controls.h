// The controls that forms are made of.
#pragma once

#include "forms/control.h"

#include <cstddef>
#include <cstdint>
#include <deque>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace tamrix::forms {

/// A line of text. A label before a box carries the box's mnemonic.
class label : public control {
public:
    using control::control;
    void accept(control_visitor& visitor) override { visitor.visit(*this); }
    property<std::string> caption{*this};
};

/// A titled border around other controls.
class frame : public control {
public:
    using control::control;
    void accept(control_visitor& visitor) override { visitor.visit(*this); }
    property<std::string> caption{*this};
};

/// Captions may hold one "&" before their mnemonic letter.
class button : public control {
public:
    using control::control;
    void accept(control_visitor& visitor) override { visitor.visit(*this); }
    property<std::string> caption{*this};
    std::function<void()> on_click;

    void click();
};

/// One line of text, UTF-8.
class text_box : public control {
public:
    using control::control;
    void accept(control_visitor& visitor) override { visitor.visit(*this); }
    /// A display of the program's: nobody types into it, and the Tab key passes by. Its centred letters have
    /// `readout_ink` on the colour of selected text. Set before the form is shown.
    property<bool> readout{*this, false};
    static constexpr std::uint32_t readout_ink = 0xFF8080;  // 0xRRGGBB
    /// Assigning raises on_change.
    std::string text() const { return text_; }
    void text(std::string_view value);

    /// Returns whether a typed character is taken; others are dropped with a beep. Empty takes all.
    std::function<bool(char32_t key)> accepts;
    std::function<void()> on_change;
    /// The box lost the keyboard focus.
    std::function<void()> on_leave;
    /// The Enter key. A box without this leaves it to the form.
    std::function<void()> on_enter_key;

    /// The part of `typed` that passes the filter; beeps if something is dropped.
    std::string filtered(std::string_view typed) const;
    /// Types or pastes at the end of the text.
    void type(std::string_view typed);
    /// Replaces the whole text. The renderer calls it with the text of its widget after an edit. Characters that were
    /// at either end before and are still there were not typed now, so the filter does not see them.
    void enter(std::string_view typed);
    void leave();
    void press_enter();

private:
    void assign(std::string value);

    std::string text_;
};

/// A closed list of which one entry is shown. `index` is -1 while nothing is chosen.
class combo_box : public control {
public:
    using control::control;
    void accept(control_visitor& visitor) override { visitor.visit(*this); }
    property<std::vector<std::string>> items{*this};
    std::function<void()> on_click;

    int index() const { return index_; }
    /// Chooses by program; raises on_click if the index changes. Throws subscript_error outside -1 and the list.
    void index(int value);
    void pick(int value);

private:
    int index_ = -1;
};

class option_group;

/// One of the mutually exclusive options of a group.
class option : public control {
public:
    option(form& owner, option_group& group, int index) : control{owner}, group_{group}, index_{index} {}
    void accept(control_visitor& visitor) override { visitor.visit(*this); }
    property<std::string> caption{*this};

    int index() const { return index_; }
    option_group& group() const { return group_; }
    bool value() const;
    /// Selects by program; raises the group's click.
    void select();
    void click();

private:
    option_group& group_;
    int index_;
};

/// A control array of options, by index from 0. At most one is selected.
class option_group {
public:
    option_group(form& owner, int count);
    option_group(const option_group&) = delete;
    option_group& operator=(const option_group&) = delete;

    std::function<void(int index)> on_click;

    /// Throws subscript_error for an index without an option.
    option& operator()(int index);
    int count() const { return static_cast<int>(options_.size()); }
    /// The selected index; -1 if there is none.
    int selected() const { return selected_; }

private:
    friend class option;
    void select(int index);

    std::deque<option> options_;
    int selected_ = -1;
};

/// A bar from 0 to 100. A value outside is drawn as the nearest end.
class progress_bar : public control {
public:
    using control::control;
    void accept(control_visitor& visitor) override { visitor.visit(*this); }
    property<double> value{*this, 0.0};
};

/// Ticks every `interval_ms` milliseconds of the shell's clock while enabled; does not tick at 0.
class timer : public control {
public:
    explicit timer(form& owner) : control{owner} { enabled = false; }
    void accept(control_visitor& visitor) override { visitor.visit(*this); }
    property<int> interval_ms{*this, 0};
    std::function<void()> on_tick;

    bool running() const { return enabled() && interval_ms() > 0; }
    void tick();
};

}  // namespace tamrix::forms
