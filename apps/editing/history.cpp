#include "editing/history.h"

#include <string_view>
#include <utility>

namespace tamrix::editing {

std::size_t step::memory() const
{
    std::size_t bytes_of_all = sizeof(step) + name.capacity() + bytes.memory();
    if (rest) bytes_of_all += rest->bytes.memory() + rest->saved.memory();
    return bytes_of_all;
}

void history::limit()
{
    while (memory_ > most_bytes_ && undo_.size() > 1) {
        memory_ -= undo_.front().counted;
        undo_.pop_front();
    }
}

void history::add(step made)
{
    for (const step& gone : redo_) memory_ -= gone.counted;
    redo_.clear();
    made.bytes.release_spare_memory();
    undo_.push_back(std::move(made));
    count(undo_.back());
    half_typed_ = false;
    limit();
}

void history::count(step& one)
{
    memory_ -= one.counted;
    one.counted = one.memory();
    memory_ += one.counted;
}

void history::undone()
{
    redo_.push_back(std::move(undo_.back()));
    undo_.pop_back();
    half_typed_ = false;
    count(redo_.back());
    limit();
}

void history::redone()
{
    undo_.push_back(std::move(redo_.back()));
    redo_.pop_back();
    half_typed_ = false;
    count(undo_.back());
    limit();
}

void history::drop_newest()
{
    memory_ -= undo_.back().counted;
    undo_.pop_back();
    half_typed_ = false;
}

void history::forget()
{
    undo_.clear();
    redo_.clear();
    memory_ = 0;
    half_typed_ = false;
}

step* history::half_typed(std::size_t address, std::string_view name)
{
    if (!half_typed_ || undo_.empty()) return nullptr;
    step& newest = undo_.back();
    const bool same = newest.bytes.runs().front().address == address && newest.name == name;
    return same ? &newest : nullptr;
}

}  // namespace tamrix::editing
