// Filled shapes on a picture, such as lamps and marks. They are above what was drawn there, and clearing the picture
// leaves them.
#pragma once

#include "forms/canvas.h"

#include <deque>
#include <optional>

namespace tamrix::forms {

class shape {
public:
    explicit shape(picture& surface);
    ~shape();
    shape(const shape&) = delete;
    shape& operator=(const shape&) = delete;

    property<bool> visible;
    property<outline> kind;
    property<area> place;
    /// Empty: transparent.
    property<std::optional<colour>> fill;
    property<colour> border;

    /// Draws nothing while it is hidden.
    void draw_on(canvas& target) const;

private:
    picture& surface_;
};

/// A control array of shapes, by index from 0. Of two that overlap the one with the higher index is in front.
class shape_array {
public:
    shape_array(picture& surface, int count);

    /// Throws subscript_error for an index without a shape.
    shape& operator()(int index);
    int count() const { return static_cast<int>(shapes_.size()); }

private:
    std::deque<shape> shapes_;
};

}  // namespace tamrix::forms
