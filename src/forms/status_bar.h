// A row of panels with a text each, at the foot of a form.
#pragma once

#include "forms/control.h"

#include <string>
#include <vector>

namespace tamrix::forms {

/// Panels are numbered from 1; their texts are UTF-8. A number without a panel throws subscript_error.
class status_bar final : public control {
public:
    status_bar(form& owner, int panels);
    void accept(control_visitor& visitor) override { visitor.visit(*this); }

    int panels() const { return static_cast<int>(texts_.size()); }
    const std::string& text(int panel) const { return texts_[place_of(panel)]; }
    void text(int panel, std::string words);

private:
    std::size_t place_of(int panel) const;

    std::vector<std::string> texts_;
};

}  // namespace tamrix::forms
