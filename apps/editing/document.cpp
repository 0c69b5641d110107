#include "editing/document.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace tamrix::editing {

document::document(buffer_maker make_buffer, std::size_t history_bytes)
    : make_buffer_{std::move(make_buffer)}, history_{history_bytes}
{}

void document::require_inside(std::size_t address, std::size_t length) const
{
    if (address > bytes_.size() || length > bytes_.size() - address)
        throw std::out_of_range{"The buffer ends before these bytes."};
}

void document::report_state() const
{
    if (on_state) on_state();
}

void document::report_bytes(std::size_t address, std::size_t end) const
{
    if (on_bytes && end > address) on_bytes(address, end - address);
}

void document::report_bytes(const kept_bytes& changed) const
{
    changed.visit_ranges([this](std::size_t first, std::size_t end) { report_bytes(first, end); });
}

void document::replace(std::size_t address, std::span<const std::uint8_t> bytes, std::string_view name, typed how)
{
    require_inside(address, bytes.size());
    const std::span target = bytes_.subspan(address, bytes.size());
    const bool is_digit = bytes.size() == 1;
    step* first_digit = how == typed::second_digit && is_digit ? history_.half_typed(address, name) : nullptr;
    step made{.name = std::string{name}};
    if (!std::ranges::equal(target, bytes)) made.bytes.add(address, target);
    std::ranges::copy(bytes, target.begin());
    if (first_digit == nullptr) {
        const bool is_step = finish(std::move(made), unseen::stays);
        if (is_step && is_digit && how == typed::whole_bytes) history_.typed_first_digit();
        return;
    }
    saved_.follow(made.bytes, whole());
    const bool as_before = first_digit->bytes.runs().front().piece.equals(target);
    if (as_before) {
        has_content_ = has_content_ && !first_digit->begins_content;
        history_.drop_newest();
    }
    history_.close();
    report_bytes(made.bytes);
    report_state();
}

void document::replace_each(std::span<const std::size_t> addresses, std::span<const std::uint8_t> bytes,
                            std::string_view name)
{
    for (const std::size_t address : addresses) require_inside(address, bytes.size());
    step made{.name = std::string{name}};
    for (const std::size_t address : addresses) {
        const std::span target = bytes_.subspan(address, bytes.size());
        if (std::ranges::equal(target, bytes)) continue;
        made.bytes.add(address, target);
        std::ranges::copy(bytes, target.begin());
    }
    finish(std::move(made), unseen::stays);
}

void document::fill(std::size_t address, std::size_t length, std::uint8_t value, unseen rest)
{
    require_inside(address, length);
    const std::span target = bytes_.subspan(address, length);
    step made{.name = "Fill"};
    if (!kept_piece{value, length}.equals(target)) made.bytes.add(address, target);
    std::ranges::fill(target, value);
    finish(std::move(made), rest);
}

void document::take_back(kept_bytes former)
{
    kept_bytes written = differences(std::move(former), bytes_);
    written.copy_to(bytes_);
    report_bytes(written);
}

bool document::watch(std::string_view name, const std::function<bool()>& action, unseen rest)
{
    return watch_step({.name = std::string{name}}, action, rest);
}

bool document::load(const std::string& file, const std::function<bool()>& action)
{
    step made{.name = "Load"};
    if (file != file_) made.file = file;
    if (!watch_step(std::move(made), action, unseen::is_dropped, after::is_saved)) return false;
    saved();
    return true;
}

bool document::watch_step(step made, const std::function<bool()>& action, unseen rest, after state)
{
    kept_bytes former;
    former.add(0, bytes_);
    bool is_kept = false;
    try {
        watching_ = true;
        is_kept = action();
        watching_ = false;
    } catch (...) {
        watching_ = false;
        take_back(std::move(former));
        throw;
    }
    if (!is_kept) {
        take_back(std::move(former));
        return false;
    }
    made.bytes = differences(std::move(former), bytes_);
    if (made.file) std::swap(file_, *made.file);
    finish(std::move(made), rest, state);
    return true;
}

/// The bytes have changed already; `made` has the former ones.
bool document::finish(step made, unseen rest, after state)
{
    if (state == after::is_saved) {
        saved_.clear();
    } else {
        saved_.follow(made.bytes, whole());
    }
    report_bytes(made.bytes);
    if (rest == unseen::is_dropped && !hidden_.empty()) {
        made.rest = dropped_rest{.number = ++last_rest_};
        exchange_rest(*made.rest);
    }
    const bool is_step = !made.bytes.empty() || made.rest || made.file;
    if (is_step) {
        made.begins_content = !has_content_;
        history_.add(std::move(made));
    } else {
        history_.close();
    }
    has_content_ = true;
    report_state();
    return is_step;
}

void document::exchange(step& one)
{
    one.bytes.exchange(bytes_);
    saved_.follow(one.bytes, whole());
    report_bytes(one.bytes);
    if (one.rest) exchange_rest(*one.rest);
    if (one.file) std::swap(file_, *one.file);
}

void document::exchange_rest(dropped_rest& rest)
{
    kept_bytes saved = saved_.take_from(bytes_.size(), whole());
    std::swap(hidden_, rest.bytes);
    std::swap(rest_, rest.number);
    if (rest.save == saves_) saved_.put_back(rest.saved, whole());
    rest.saved = std::move(saved);
    rest.save = saves_;
    report_bytes(bytes_.size(), hidden_.end());
}

/// Puts the bytes where the new buffer is. Returns where those bytes end that were there before.
std::size_t document::place(const std::string& device, std::span<std::uint8_t> buffer, kept_bytes shown)
{
    shown.add(std::move(hidden_));
    const std::size_t end = shown.end();
    hidden_ = shown.take_from(buffer.size());
    shown.copy_to(buffer);
    bytes_ = buffer;
    device_ = device;
    return end;
}

/// Returns whether the buffer has the length that is expected.
bool document::enter(const std::string& device, std::size_t expected_length)
{
    const bool is_blank = !has_content_ && !changed();
    kept_bytes shown;
    if (!is_blank) shown.add(0, bytes_);
    const std::span<std::uint8_t> buffer = make_buffer_(device);
    if (is_blank) hidden_ = {};
    const std::size_t known = place(device, buffer, std::move(shown));
    if (on_device) on_device();
    report_bytes(known, bytes_.size());
    return bytes_.size() == expected_length;
}

void document::change_device(const std::string& name)
{
    const other_device before{device_, bytes_.size()};
    const bool has_same_length = enter(name, before.buffer_bytes);
    if (before.name == name) {
        if (!has_same_length) history_.forget();
        history_.close();
    } else if (!before.name.empty()) {
        step made{.name = "Device"};
        made.device = before;
        history_.add(std::move(made));
    }
    report_state();
}

void document::moved(std::span<std::uint8_t> bytes)
{
    if (bytes.size() != bytes_.size()) throw std::invalid_argument{"The same bytes have another length."};
    bytes_ = bytes;
}

void document::restore(const std::string& device, const std::string& file, std::span<const std::uint8_t> all)
{
    kept_bytes shown;
    shown.add(0, all);
    const std::span<std::uint8_t> buffer = make_buffer_(device);
    hidden_ = {};
    place(device, buffer, std::move(shown));
    file_ = file;
    saved_.clear();
    ++saves_;
    rest_ = ++last_rest_;
    has_content_ = true;
    history_.forget();
    if (on_device) on_device();
    report_bytes(0, whole().length());
    report_state();
}

/// Returns whether the steps on both sides still fit.
bool document::carry_out(step& one, bool content_after)
{
    if (one.device) {
        other_device here{device_, bytes_.size()};
        const bool fits = enter(one.device->name, one.device->buffer_bytes);
        *one.device = std::move(here);
        return fits;
    }
    exchange(one);
    if (one.begins_content) has_content_ = content_after;
    return true;
}

void document::undo()
{
    if (!can_undo()) return;
    if (carry_out(history_.next_undo(), false)) {
        history_.undone();
    } else {
        history_.forget();
    }
    report_state();
}

void document::redo()
{
    if (!can_redo()) return;
    if (carry_out(history_.next_redo(), true)) {
        history_.redone();
    } else {
        history_.forget();
    }
    report_state();
}

void document::saved()
{
    saved_.clear();
    ++saves_;
    saved_rest_ = rest_;
    history_.close();
    report_state();
}

void document::saved_as(const std::string& file)
{
    file_ = file;
    saved();
}

std::vector<bool> document::differs_from_saved(std::size_t address, std::size_t length) const
{
    std::vector<bool> differ;
    if (address < bytes_.size())
        differ = saved_.differences(address, bytes_.subspan(address, std::min(length, bytes_.size() - address)));
    differ.resize(length);
    return differ;
}

}  // namespace tamrix::editing
