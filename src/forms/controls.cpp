#include "forms/controls.h"

#include "base/errors.h"
#include "base/utf8.h"
#include "forms/form.h"

namespace tamrix::forms {

control::control(form& owner) : owner_{owner} { owner.controls_.push_back(this); }

void control::changed()
{
    if (form_view* view = owner_.view(); view != nullptr) view->control_changed(*this);
}

void button::click()
{
    if (usable()) raise(on_click);
}

void text_box::assign(std::string value)
{
    if (value == text_) return;
    text_ = std::move(value);
    changed();
    raise(on_change);
}

void text_box::text(std::string_view value) { assign(std::string{value}); }

std::string text_box::filtered(std::string_view typed) const
{
    if (!accepts) return std::string{typed};
    std::string kept;
    bool dropped = false;
    for (std::size_t at = 0; at < typed.size();) {
        const utf8::character next = utf8::decode(typed, at);
        if (accepts(next.code)) {
            kept += typed.substr(at, next.length);
        } else {
            dropped = true;
        }
        at += next.length;
    }
    if (form_view* view = owner().view(); dropped && view != nullptr) view->beep();
    return kept;
}

void text_box::type(std::string_view typed)
{
    if (usable()) assign(text_ + filtered(typed));
}

void text_box::enter(std::string_view typed)
{
    if (usable()) assign(filtered(typed));
}

void text_box::leave()
{
    if (usable()) raise(on_leave);
}

void text_box::press_enter()
{
    if (usable()) raise(on_enter_key);
}

void combo_box::index(int value)
{
    if (value < -1 || value >= static_cast<int>(items().size())) {
        throw subscript_error{"no list entry " + std::to_string(value)};
    }
    if (value == index_) return;
    index_ = value;
    changed();
    raise(on_click);
}

void combo_box::pick(int value)
{
    if (usable()) index(value);
}

bool option::value() const { return group_.selected() == index_; }

void option::select() { group_.select(index_); }

void option::click()
{
    if (usable()) group_.select(index_);
}

option_group::option_group(form& owner, int count)
{
    for (int index = 0; index < count; ++index) options_.emplace_back(owner, *this, index);
}

option& option_group::operator()(int index)
{
    if (index < 0 || index >= count()) throw subscript_error{"no option " + std::to_string(index)};
    return options_[static_cast<std::size_t>(index)];
}

void option_group::select(int index)
{
    if (index == selected_) return;
    const int before = std::exchange(selected_, index);
    if (before >= 0) (*this)(before).changed();
    (*this)(index).changed();
    if (on_click) on_click(index);
}

void timer::tick()
{
    if (running()) raise(on_tick);
}

}  // namespace tamrix::forms
