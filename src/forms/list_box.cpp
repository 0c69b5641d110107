#include "forms/list_box.h"

#include "base/errors.h"
#include "forms/form.h"

#include <utility>

namespace tamrix::forms {

void list_box::items(std::vector<std::string> entries)
{
    items_ = std::move(entries);
    if (!has(index_)) index_ = -1;
    changed();
}

void list_box::remove(int entry)
{
    if (!has(entry)) throw subscript_error{"no list entry " + std::to_string(entry)};
    items_.erase(items_.begin() + entry);
    if (entry == index_) {
        index_ = -1;
    } else if (entry < index_) {
        --index_;
    }
    changed();
}

void list_box::index(int value)
{
    if (value != -1 && !has(value)) throw subscript_error{"no list entry " + std::to_string(value)};
    if (value == index_) return;
    index_ = value;
    changed();
    raise(on_click);
}

std::string list_box::text() const { return has(index_) ? items_[static_cast<std::size_t>(index_)] : std::string{}; }

void list_box::pick(int value)
{
    if (!usable()) return;
    if (value == index_) {
        raise(on_click);
    } else {
        index(value);
    }
}

}  // namespace tamrix::forms
