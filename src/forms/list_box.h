// An open list, of which one entry or none is selected.
#pragma once

#include "forms/control.h"

#include <functional>
#include <string>
#include <vector>

namespace tamrix::forms {

class list_box : public control {
public:
    using control::control;
    void accept(control_visitor& visitor) override { visitor.visit(*this); }
    /// Raised when the selection changes, whoever changed it, and when a person picks the selected entry again.
    std::function<void()> on_click;

    const std::vector<std::string>& items() const { return items_; }
    /// Replaces the entries. The selection keeps its index if the new list reaches that far.
    void items(std::vector<std::string> entries);
    /// Removes an entry. A selection after it stays with its entry, a selection of it ends; neither raises on_click.
    /// Throws subscript_error outside the list.
    void remove(int entry);

    /// -1 while nothing is selected.
    int index() const { return index_; }
    /// Selects by program. Throws subscript_error outside -1 and the list.
    void index(int value);
    /// The selected entry; empty while nothing is selected.
    std::string text() const;

    /// The person's click on an entry.
    void pick(int value);

private:
    bool has(int entry) const { return entry >= 0 && entry < static_cast<int>(items_.size()); }

    std::vector<std::string> items_;
    int index_ = -1;
};

}  // namespace tamrix::forms
