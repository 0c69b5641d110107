// Panels with a text each, at the foot of a form, in a row or two.
#pragma once

#include "forms/control.h"

#include <string>
#include <vector>

namespace tamrix::forms {

/// Panels are numbered from 1; their texts are UTF-8. A number without a panel throws subscript_error.
class status_bar final : public control {
public:
    status_bar(form& owner, int panels) : status_bar{owner, panels, panels} {}
    /// The first row has so many of the panels, the second one the others.
    status_bar(form& owner, int panels, int in_first_row);
    void accept(control_visitor& visitor) override { visitor.visit(*this); }

    int panels() const { return static_cast<int>(texts_.size()); }
    int in_first_row() const { return in_first_row_; }
    const std::string& text(int panel) const { return texts_[place_of(panel)]; }
    void text(int panel, std::string words);

private:
    std::size_t place_of(int panel) const;

    std::vector<std::string> texts_;
    int in_first_row_;
};

}  // namespace tamrix::forms
