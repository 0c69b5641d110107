#include "forms/controls.h"

#include "base/errors.h"
#include "base/utf8.h"
#include "forms/form.h"

#include <algorithm>

namespace tamrix::forms {

namespace {

/// True where a character begins, or the text ends.
bool at_character(std::string_view text, std::size_t at)
{
    return at >= text.size() || (static_cast<unsigned char>(text[at]) & 0xC0U) != 0x80U;
}

/// Bytes of the whole characters with which both begin.
std::size_t same_at_start(std::string_view one, std::string_view other)
{
    const auto differs = std::mismatch(one.begin(), one.end(), other.begin(), other.end());
    auto same = static_cast<std::size_t>(differs.first - one.begin());
    while (same > 0 && (!at_character(one, same) || !at_character(other, same))) --same;
    return same;
}

/// Bytes of the whole characters with which both end.
std::size_t same_at_end(std::string_view one, std::string_view other)
{
    const auto differs = std::mismatch(one.rbegin(), one.rend(), other.rbegin(), other.rend());
    auto same = static_cast<std::size_t>(differs.first - one.rbegin());
    while (same > 0 && !at_character(one, one.size() - same)) --same;
    return same;
}

}  // namespace

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
    if (usable() && !readout()) assign(text_ + filtered(typed));
}

void text_box::enter(std::string_view typed)
{
    if (!usable() || readout()) return;
    const std::size_t before = same_at_start(text_, typed);
    const std::string_view rest = typed.substr(before);
    const std::size_t behind = same_at_end(std::string_view{text_}.substr(before), rest);
    const std::string_view fresh = rest.substr(0, rest.size() - behind);
    assign(std::string{typed.substr(0, before)} + filtered(fresh) + std::string{rest.substr(fresh.size())});
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
